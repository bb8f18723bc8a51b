#include "style.hpp"

namespace quill1xml::sandbox {

std::string_view styleSheet() {
    return R"css(
:root { color-scheme: light dark; --ink: #1f1d1a; --soft: #6a635a; --line: #e7e1d8; --ground: #faf8f4; --card: #fff;
  --mark: #0b6353; --tint: #e3f0ec; --good: #17703a; --low: #9a5b00; --bad: #a8261c; --shade: 0 1px 2px #1f1d1a14, 0 6px 20px #1f1d1a0d; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #f1ece4; --soft: #aaa195; --line: #38342e; --ground: #151412; --card: #1f1d1a;
    --mark: #7fd3bf; --tint: #1c332d; --good: #7dd69c; --low: #f0b860; --bad: #ff9d92; --shade: 0 1px 2px #0006; }
}
* { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; }
body { margin: 0; background: var(--ground); color: var(--ink); font: 16px/1.5 "Inter", system-ui, -apple-system, "Segoe UI", "Noto Sans", sans-serif; }
a { color: var(--mark); text-underline-offset: .18em; text-decoration-thickness: 1px; }
a:hover { text-decoration-thickness: 2px; }
:focus-visible { outline: 3px solid var(--mark); outline-offset: 2px; border-radius: .25rem; }
code, pre, .code { font-family: ui-monospace, "SF Mono", "DejaVu Sans Mono", monospace; font-size: .86em; }
.inner { max-width: 76rem; margin: 0 auto; padding-inline: 1.25rem; }
.skip { position: absolute; left: -99rem; }
.skip:focus { left: 1rem; top: 1rem; background: var(--card); padding: .5rem 1rem; z-index: 1; }
header { background: var(--card); border-bottom: 1px solid var(--line); }
.brand { display: flex; flex-wrap: wrap; gap: 1rem 2rem; align-items: center; padding-top: 1.5rem; padding-bottom: 1rem; }
.brand > div { flex: 1 1 22rem; }
.shop { margin: 0; font-size: 1.65rem; font-weight: 700; line-height: 1.2; letter-spacing: -.015em; }
.shop a { color: inherit; text-decoration: none; }
.tagline { margin: .3rem 0 0; color: var(--soft); }
form { display: flex; flex: 0 1 24rem; gap: .5rem; }
input[type=search] { flex: 1; min-width: 0; font: inherit; color: inherit; background: var(--ground); border: 1px solid var(--soft); border-radius: .6rem; padding: .5rem .8rem; }
button { font: inherit; font-weight: 600; color: var(--card); background: var(--mark); border: 0; border-radius: .6rem; padding: .5rem 1.1rem; cursor: pointer; }
.tabs { display: flex; flex-wrap: wrap; gap: 0 1.5rem; margin-block: 0; padding-block: 0; list-style: none; }
.tabs a { display: block; padding: .55rem 0; color: var(--soft); text-decoration: none; border-bottom: 3px solid transparent; }
.tabs a:hover { color: var(--ink); }
.tabs [aria-current] { color: var(--ink); font-weight: 600; border-color: var(--mark); }
.about { display: flex; flex-wrap: wrap; gap: .2rem 1.5rem; padding-top: .7rem; color: var(--soft); font-size: .88rem; }
.about details[open] { flex-basis: 100%; }
summary { cursor: pointer; }
.addresses { display: grid; grid-template-columns: repeat(auto-fill, minmax(27rem, 1fr)); gap: .1rem 2rem; margin: .6rem 0; padding: 0; list-style: none; }
.addresses code { color: var(--ink); }
main { padding-top: 1rem; padding-bottom: 3rem; }
h1 { margin: 1rem 0 .8rem; font-size: 1.5rem; line-height: 1.25; letter-spacing: -.01em; overflow-wrap: anywhere; }
h2 { display: flex; align-items: baseline; gap: .7rem; margin: 2.4rem 0 .8rem; font-size: 1.2rem; letter-spacing: -.01em; }
h1 small, h2 small, h3 small { margin-left: .3rem; color: var(--soft); font-size: .9rem; font-weight: 400; letter-spacing: 0; }
h2 .more { margin-left: auto; font-size: .9rem; font-weight: 400; }
h3 { margin: 1.6rem 0 .6rem; font-size: 1rem; }
h3 a { color: inherit; }
.hint, .soft { color: var(--soft); }
.card { background: var(--card); border: 1px solid var(--line); border-radius: .9rem; box-shadow: var(--shade); }
.hint { padding: 1.1rem 1.3rem; margin: 0; border: 1px dashed var(--line); border-radius: .9rem; }
.wide { overflow-x: auto; }
table { width: 100%; border-collapse: collapse; font-size: .93rem; }
caption { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
th, td { padding: .55rem 1rem; text-align: left; vertical-align: top; overflow-wrap: break-word; }
td:last-child { overflow-wrap: anywhere; }
tr > * + * { padding-left: .4rem; }
tbody tr + tr > * { border-top: 1px solid var(--line); }
thead th { color: var(--soft); font-size: .8rem; font-weight: 600; border-bottom: 1px solid var(--line); white-space: nowrap; }
tbody th { width: 14rem; font-weight: 400; color: var(--soft); }
tbody tr:hover { background: var(--ground); }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.chips { display: flex; flex-wrap: wrap; gap: .5rem; margin: .8rem 0 1.1rem; padding: 0; list-style: none; }
.chips a { display: block; padding: .3rem .9rem; border: 1px solid var(--line); border-radius: 2rem; background: var(--card); color: var(--ink); text-decoration: none; font-size: .93rem; }
.chips a:hover { border-color: var(--mark); }
.chips [aria-current] { background: var(--mark); border-color: var(--mark); color: var(--card); font-weight: 600; }
.badge { display: inline-block; padding: .05rem .6rem; border-radius: 2rem; background: var(--tint); color: var(--mark); font-size: .85rem; font-weight: 600; white-space: nowrap; }
.badge.good { background: transparent; box-shadow: inset 0 0 0 1px currentColor; color: var(--good); }
.badge.bad { background: transparent; box-shadow: inset 0 0 0 1px currentColor; color: var(--bad); }
.shelf { display: grid; grid-template-columns: repeat(auto-fill, minmax(11.5rem, 1fr)); gap: 1.1rem; margin: 0; padding: 0; list-style: none; }
.shelf li { position: relative; display: flex; flex-direction: column; overflow: hidden; }
.shelf li:hover { border-color: var(--mark); }
.shelf .text { display: flex; flex-direction: column; flex: 1; padding: .8rem 1rem 1rem; }
.shelf a { color: inherit; font-weight: 600; line-height: 1.35; text-decoration: none; overflow-wrap: anywhere; }
.shelf a::after { content: ""; position: absolute; inset: 0; }
.picture { display: grid; place-items: center; aspect-ratio: 4 / 3; background: var(--tint); color: var(--mark); font-size: 2.6rem; font-weight: 700; }
.picture img { width: 100%; height: 100%; object-fit: contain; }
.picture.photo { background: #fff; border-bottom: 1px solid var(--line); }
.price { margin: auto 0 0; padding-top: .6rem; font-size: 1.15rem; font-weight: 700; font-variant-numeric: tabular-nums; }
.tax, .stock, .sku { margin: 0; color: var(--soft); font-size: .84rem; }
.stock::before { content: "● "; font-size: .7em; vertical-align: .15em; }
.stock.some { color: var(--good); } .stock.few { color: var(--low); } .stock.none { color: var(--bad); }
.sheet { display: grid; grid-template-columns: minmax(0, 18rem) minmax(0, 1fr); gap: 1.5rem; align-items: start; margin-top: 1rem; }
.sheet .picture { border-radius: .9rem; border: 1px solid var(--line); overflow: hidden; }
.name { margin: 0 0 .4rem; font-size: 1.3rem; font-weight: 700; line-height: 1.3; }
.count { color: var(--soft); font-size: .85em; }
[aria-current] .count { color: inherit; }
.card > summary { padding: .7rem 1.2rem; }
.kinds { margin: .8rem 0 1.1rem; }
.long { max-height: 14rem; overflow: auto; white-space: pre-wrap; }
pre { margin: 0; padding: 1rem 1.2rem; overflow: auto; max-height: 32rem; white-space: pre-wrap; overflow-wrap: anywhere; }
.pages { display: flex; flex-wrap: wrap; gap: .4rem 1.2rem; justify-content: center; margin-top: 1.4rem; color: var(--soft); }
.crumbs { margin: 1.2rem 0 0; color: var(--soft); font-size: .92rem; }
footer { border-top: 1px solid var(--line); color: var(--soft); font-size: .88rem; }
footer .inner { padding-top: 1.2rem; padding-bottom: 2rem; }
@media (max-width: 44rem) { .sheet, .addresses { grid-template-columns: minmax(0, 1fr); } .shelf { grid-template-columns: repeat(2, minmax(0, 1fr)); } }
)css";
}

}  // namespace quill1xml::sandbox
