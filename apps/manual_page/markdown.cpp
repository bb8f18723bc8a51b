#include "manual_page/markdown.hpp"

#include <new>

#include <md4c-html.h>

namespace quill1xml::manual_page {
namespace {

struct Output {
    std::string html{};
    bool complete = true;
};

/// Called from C, which knows no exceptions.
void append(const MD_CHAR* text, MD_SIZE size, void* to) noexcept {
    auto& output = *static_cast<Output*>(to);
    try {
        output.html.append(text, size);
    } catch (const std::bad_alloc&) {
        output.complete = false;
    }
}

void replaceAll(std::string& text, std::string_view what, std::string_view with) {
    for (std::size_t i = 0; (i = text.find(what, i)) != std::string::npos; i += with.size()) {
        text.replace(i, what.size(), with);
    }
}

/// Makes "docs/on-windows.md" the place "#on-windows" of the page.
void linkChapters(std::string& html) {
    constexpr std::string_view opening = "href=\"";
    for (std::size_t i = 0; (i = html.find(opening, i)) != std::string::npos;) {
        i += opening.size();
        const std::size_t end = html.find('"', i);
        const std::string_view target = std::string_view(html).substr(i, end - i);
        if (target.starts_with("http") || !target.ends_with(".md")) continue;
        const std::size_t folder = target.rfind('/');
        std::string name("#");
        name += target.substr(folder == std::string_view::npos ? 0 : folder + 1);
        name.resize(name.size() - 3);
        html.replace(i, end - i, name);
    }
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string html(text);
    replaceAll(html, "&", "&amp;");
    replaceAll(html, "<", "&lt;");
    replaceAll(html, ">", "&gt;");
    return html;
}

std::string htmlOf(std::string_view markdown) {
    Output output;
    const int status = md_html(markdown.data(), static_cast<MD_SIZE>(markdown.size()), &append, &output,
                               MD_FLAG_TABLES | MD_FLAG_NOHTML, 0);
    if (status != 0 || !output.complete) throw std::bad_alloc();
    // Wide tables are moved sideways by themselves, not with the page.
    replaceAll(output.html, "<table>", "<div class=\"table\"><table>");
    replaceAll(output.html, "</table>", "</table></div>");
    replaceAll(output.html, "<em>Extension.</em>", "<span class=\"badge\">Extension</span>");
    linkChapters(output.html);
    return std::move(output.html);
}

}  // namespace quill1xml::manual_page
