"use strict";
const byId = id => document.getElementById(id);
const search = byId("search"), found = byId("found"), contents = byId("contents"), theme = byId("theme");

/* A page from a file may have no storage. */
const kept = {
    get(key) { try { return localStorage.getItem(key); } catch { return null; } },
    set(key, value) { try { localStorage.setItem(key, value); } catch { /* for this visit only */ } },
};

/* Light or dark as the system has it, or as was chosen here. */
const root = document.documentElement;
const isDark = () => (root.dataset.theme || (matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light")) === "dark";
const showTheme = () => { theme.textContent = isDark() ? "Light" : "Dark"; };
if (kept.get("theme")) root.dataset.theme = kept.get("theme");
theme.onclick = () => {
    root.dataset.theme = isDark() ? "light" : "dark";
    kept.set("theme", root.dataset.theme);
    showTheme();
};
theme.hidden = false;
showTheme();

/* One call in three notations becomes three tabs. */
const languages = { json: "Job line", vbscript: "VBScript, VBA", cpp: "C++" };
const languageOf = pre => (pre?.tagName === "PRE" && /language-(json|vbscript|cpp)/.exec(pre.firstChild.className)?.[1]) || null;
const groups = [];
for (const first of document.querySelectorAll("main pre")) {
    if (!languageOf(first) || languageOf(first.previousElementSibling)) continue;
    const group = [];
    for (let pre = first; languageOf(pre); pre = pre.nextElementSibling) group.push(pre);
    if (group.length < 2) continue;
    const tabs = document.createElement("div");
    tabs.className = "tabs";
    tabs.setAttribute("role", "tablist");
    for (const pre of group) {
        const tab = document.createElement("button");
        tab.type = "button";
        tab.setAttribute("role", "tab");
        tab.dataset.language = languageOf(pre);
        tab.textContent = languages[tab.dataset.language];
        tab.onclick = () => { kept.set("language", tab.dataset.language); choose(tab.dataset.language); };
        tabs.append(tab);
    }
    first.before(tabs);
    groups.push({ tabs, group });
}
function choose(language) {
    for (const { tabs, group } of groups) {
        const shown = group.find(pre => languageOf(pre) === language) || group[0];
        for (const pre of group) pre.hidden = pre !== shown;
        for (const tab of tabs.children) tab.setAttribute("aria-selected", String(tab.dataset.language === languageOf(shown)));
    }
}
choose(kept.get("language") || "json");

for (const pre of document.querySelectorAll("main pre")) {
    const copy = document.createElement("button");
    copy.type = "button";
    copy.textContent = "Copy";
    copy.onclick = async () => {
        await navigator.clipboard.writeText(pre.firstChild.textContent);
        copy.textContent = "Copied";
        setTimeout(() => { copy.textContent = "Copy"; }, 1500);
    };
    pre.append(copy);
}

/* Names of members lead to them. */
const sections = [...document.querySelectorAll("main section")];
const names = new Set(sections.map(section => section.id));
for (const code of document.querySelectorAll("main p code, main td:last-child code, main li code")) {
    const name = code.textContent;
    if (!names.has(name) || code.closest("a") || code.closest("section").id === name) continue;
    const link = document.createElement("a");
    link.href = "#" + name;
    code.replaceWith(link);
    link.append(code);
}

for (const paragraph of document.querySelectorAll("main p")) {
    for (const text of [...paragraph.childNodes].filter(node => node.nodeType === Node.TEXT_NODE)) {
        const words = text.data.split(/\b([A-Z][a-z]+(?:[A-Z][A-Za-z]*))\b/);
        if (!words.some(word => names.has(word) && word !== paragraph.closest("section").id)) continue;
        text.replaceWith(...words.map(word => {
            if (!names.has(word) || word === paragraph.closest("section").id) return word;
            const link = document.createElement("a");
            link.href = "#" + word;
            link.textContent = word;
            return link;
        }));
    }
}

/* Every word must be there; the title counts most, then names in code, then the text. */
const plain = text => text.toLowerCase().normalize("NFD").replace(/[\u0300-\u036f]/g, "");
const index = sections.map((section, order) => {
    const title = section.firstElementChild.firstChild.textContent;
    const text = [...section.children].slice(1).filter(element => element.tagName !== "PRE").map(element => element.textContent).join(" ").replace(/\s+/g, " ");
    const codes = [...section.querySelectorAll("td:nth-child(-n+2) code")].map(code => code.textContent).join(" ");
    return { id: section.id, order, title, text, inTitle: plain(title), inCodes: plain(codes), inText: plain(text) };
});
function score(entry, words) {
    let sum = 0;
    for (const word of words) {
        if (entry.inTitle === word) sum += 100;
        else if (entry.inTitle.startsWith(word)) sum += 40;
        else if (entry.inTitle.includes(word)) sum += 25;
        else if (entry.inCodes.split(" ").includes(word)) sum += 12;
        else if (entry.inCodes.includes(word)) sum += 6;
        else if (entry.inText.includes(word)) sum += 2;
        else return 0;
    }
    return sum;
}
function marked(text, words) {
    const element = document.createElement("small");
    const lower = plain(text);
    const at = Math.max(0, Math.min(...words.map(word => lower.indexOf(word)).filter(place => place >= 0)) - 40);
    const piece = (at > 0 && Number.isFinite(at) ? "…" : "") + text.slice(Number.isFinite(at) ? at : 0).slice(0, 140);
    const pattern = new RegExp("(" + words.map(word => word.replace(/[.*+?^${}()|[\]\\]/g, "\\$&")).join("|") + ")", "i");
    for (const [i, part] of piece.split(pattern).entries()) {
        if (i % 2 === 0) { element.append(part); continue; }
        const mark = document.createElement("mark");
        mark.textContent = part;
        element.append(mark);
    }
    return element;
}
let chosen = -1;
function show() {
    const words = plain(search.value).split(/\s+/).filter(Boolean);
    found.hidden = words.length === 0;
    contents.hidden = words.length > 0;
    found.replaceChildren();
    chosen = -1;
    if (words.length === 0) return;
    const hits = index.map(entry => ({ entry, rank: score(entry, words) })).filter(hit => hit.rank > 0)
        .sort((a, b) => b.rank - a.rank || a.entry.order - b.entry.order).slice(0, 60);
    for (const { entry } of hits) {
        const item = document.createElement("li"), link = document.createElement("a"), name = document.createElement("b");
        link.href = "#" + entry.id;
        name.textContent = entry.title;
        link.append(name, marked(entry.text, words));
        item.append(link);
        found.append(item);
    }
    if (hits.length === 0) found.innerHTML = '<li class="none">Nothing found.</li>';
}
search.oninput = show;
search.onkeydown = event => {
    const links = found.querySelectorAll("a");
    if (event.key === "Escape") { search.value = ""; show(); return; }
    if (links.length === 0 || !["ArrowDown", "ArrowUp", "Enter"].includes(event.key)) return;
    event.preventDefault();
    if (event.key === "Enter") { links[Math.max(chosen, 0)].click(); return; }
    links[chosen]?.classList.remove("chosen");
    chosen = (chosen + (event.key === "ArrowDown" ? 1 : links.length - 1) + (chosen < 0 && event.key === "ArrowUp" ? 1 : 0)) % links.length;
    links[chosen].classList.add("chosen");
    links[chosen].scrollIntoView({ block: "nearest" });
};
document.addEventListener("keydown", event => {
    if (event.key === "/" && document.activeElement !== search) { event.preventDefault(); search.focus(); }
});
search.hidden = false;

/* "?q=words" begins with a search, and the table of contents shows where one is. */
const asked = new URLSearchParams(location.search).get("q");
if (asked) { search.value = asked; show(); }
const links = new Map([...contents.querySelectorAll("a")].map(link => [link.hash.slice(1), link]));
let here = null;
function follow() {
    const current = sections.findLast(section => section.getBoundingClientRect().top < 120 && links.has(section.id));
    const link = links.get(current?.id);
    if (!link || link === here) return;
    here?.classList.remove("here");
    here = link;
    here.classList.add("here");
    if (!contents.hidden) here.scrollIntoView({ block: "nearest" });
}
/* What was put together above has moved the place that the address names. */
addEventListener("load", () => byId(decodeURIComponent(location.hash.slice(1)))?.scrollIntoView());
addEventListener("scroll", () => requestAnimationFrame(follow), { passive: true });
follow();
