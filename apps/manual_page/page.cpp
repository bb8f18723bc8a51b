#include "manual_page/page.hpp"

#include "automation/classes.hpp"
#include "automation/manual/manual.hpp"
#include "automation/manual/subjects.hpp"
#include "manual_page/markdown.hpp"
#include "manual_page/sections.hpp"
#include "manual_page/texts.hpp"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace quill1xml::manual_page {
namespace {

std::string_view partNamed(std::string_view name) {
    const auto found = std::ranges::find(parts(), name, &Part::name);
    if (found == parts().end()) throw std::logic_error("nothing is built in under " + std::string(name));
    return found->text;
}

/// The HTML of a title, which Markdown takes for a paragraph.
std::string inlineHtml(const std::string& title) {
    std::string html = htmlOf(title);
    constexpr std::string_view begin = "<p>";
    constexpr std::string_view end = "</p>\n";
    return html.substr(begin.size(), html.size() - begin.size() - end.size());
}

std::string link(const std::string& id, const std::string& text) { return "<a href=\"#" + id + "\">" + text + "</a>"; }

std::string article(const Section& section) {
    const std::string heading = "h" + std::to_string(section.level);
    return "<section id=\"" + section.id + "\">\n<" + heading + ">" + inlineHtml(section.title) +
           "<a class=\"place\" href=\"#" + section.id + "\" aria-label=\"Link to here\">#</a></" + heading + ">\n" +
           htmlOf(section.body) + "</section>\n";
}

/// What the page consists of, and its table of contents.
struct Content {
    std::string contents{};
    std::string articles{};
};

void addChapter(Content& content, const Part& chapter) {
    const std::string_view id = chapter.name.substr(0, chapter.name.rfind('.'));
    const std::vector<Section> sections = sectionsOf(chapter.text, id, 2);
    if (sections.empty()) throw std::logic_error("a chapter without a heading");
    std::string parts;
    for (const Section& section : sections) {
        if (&section != &sections[0]) parts += "<li>" + link(section.id, inlineHtml(section.title)) + "</li>\n";
        content.articles += article(section);
    }
    const std::string title = link(sections[0].id, inlineHtml(sections[0].title));
    content.contents += parts.empty() ? "<p>" + title + "</p>\n"
                                      : "<details><summary>" + title + "</summary><ul>\n" + parts + "</ul></details>\n";
}

/// In the reference the names themselves are the places.
std::string placeOf(const Section& section) {
    constexpr std::string_view event = "Event ";
    const std::string_view title = section.title;
    return std::string(title.starts_with(event) ? title.substr(event.size()) : title);
}

void addReference(Content& content, const std::string& manual) {
    std::vector<Section> sections = sectionsOf(manual, "reference", 3);
    std::string_view subject;
    std::string_view of;
    content.contents += "<h2>" + link("reference", "Reference") + "</h2>\n<ul>\n";
    for (Section& section : sections) {
        if (section.level > 1) section.id = placeOf(section);
        if (section.level == 2) of = section.title;
        // Members of other classes may be named as those of Store.
        if (section.level == 3 && of != automation::storeClass().name) section.id = std::string(of) + "." + section.id;
        content.articles += article(section);
        const automation::Member* const method = automation::findMember(automation::storeClass(), section.title);
        const bool ofStore = section.level == 3 && of == automation::storeClass().name && method != nullptr;
        if (ofStore && automation::subjectOf(*method) != subject) {
            subject = automation::subjectOf(*method);
            content.contents.append("</ul>\n<h3>").append(subject).append("</h3>\n<ul>\n");
        }
        if (section.level == 2 && of == automation::cstringClass().name)
            content.contents += "</ul>\n<h3>Other classes</h3>\n<ul>\n";
        if (ofStore || section.level == 2)
            content.contents += "<li>" + link(section.id, escaped(section.title)) + "</li>\n";
    }
    content.contents += "</ul>\n";
}

}  // namespace

std::string page() {
    Content content;
    content.contents += "<h2>Guide</h2>\n";
    for (const Part& part : parts()) {
        if (part.name.ends_with(".md")) addChapter(content, part);
    }
    const std::string manual = automation::manual();
    addReference(content, manual);

    std::string html(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<title>Quill1XML manual</title>\n<style>\n");
    html.append(partNamed("page.css"))
        .append(
            "</style>\n</head>\n<body>\n<nav>\n<header><a class=\"name\" href=\"#top\">"
            "Quill1XML</a><button id=\"theme\" type=\"button\" hidden>Dark</button></header>\n"
            "<input id=\"search\" type=\"search\" placeholder=\"Search\" aria-label=\"Search the manual\" "
            "autocomplete=\"off\" spellcheck=\"false\" hidden>\n<ol id=\"found\" hidden></ol>\n<div "
            "id=\"contents\">\n");
    html.append(content.contents).append("</div>\n</nav>\n<main id=\"top\">\n").append(content.articles);
    html.append("</main>\n<script>\n").append(partNamed("page.js")).append("</script>\n</body>\n</html>\n");
    return html;
}

}  // namespace quill1xml::manual_page
