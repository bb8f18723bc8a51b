#include "html.hpp"

#include <algorithm>
#include <cctype>

namespace quill1xml::sandbox {
namespace {

constexpr std::string_view zeroDate = "1899-12-30";
constexpr std::string_view midnight = "T00:00:00";

bool isDecimal(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && std::ranges::all_of(text, [](char c) { return (c >= '0' && c <= '9') || c == '.'; }) &&
           std::ranges::count(text, '.') <= 1;
}

}  // namespace

std::string inAddress(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0) {
            out += c;
        } else {
            out += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return out;
}

std::string address(std::string_view path, const Parameters& parameters) {
    std::string out(path);
    char separator = '?';
    for (const auto& [name, value] : parameters) {
        if (value.empty()) continue;
        out += separator + std::string(name) + '=' + inAddress(value);
        separator = '&';
    }
    return out;
}

std::string recordAddress(std::int64_t id) { return "/records/" + std::to_string(id); }

std::string imageAddress(std::string_view folder, std::string_view name) {
    return "/images/" + inAddress(folder) + '/' + inAddress(name);
}

std::string link(std::string_view address, std::string_view text) {
    return "<a href=\"" + escaped(address) + "\">" + escaped(text) + "</a>";
}

std::string attributeOf(const Json& attributes, const char* name) {
    return attributes.is_object() ? attributes.value(name, std::string()) : std::string();
}

std::string shownTime(std::string_view time) {
    if (time.starts_with(zeroDate)) return {};
    if (time.ends_with('Z')) time.remove_suffix(1);
    if (time.ends_with(midnight)) time.remove_suffix(midnight.size());
    std::string shown(time);
    if (const std::size_t t = shown.find('T'); t == zeroDate.size()) shown[t] = ' ';
    return shown;
}

std::string shownNumber(std::string_view number) {
    std::string shown(number.substr(std::min(number.find_first_not_of(' '), number.size())));
    if (!isDecimal(shown)) return shown;
    const std::size_t sign = shown.starts_with('-') ? 1 : 0;
    if (shown.substr(sign).starts_with('.')) shown.insert(sign, 1, '0');
    return shown;
}

std::string shownAmount(std::string_view number) {
    std::string shown = shownNumber(number);
    if (!isDecimal(shown)) return shown;
    const std::size_t point = shown.find('.');
    if (point == std::string::npos) return shown + ".00";
    return shown.size() - point < 3 ? shown.append(3 - (shown.size() - point), '0') : shown;
}

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string out;
    for (const std::string& text : texts) {
        if (text.empty()) continue;
        if (!out.empty()) out += separator;
        out += text;
    }
    return out;
}

Table::Table(std::string_view caption, std::vector<Column> columns) : caption_(caption), columns_(std::move(columns)) {}

void Table::row(const std::vector<std::string>& cells) {
    rows_ += "<tr>";
    for (std::size_t i = 0; i < columns_.size(); ++i)
        rows_ += (columns_[i].isNumber ? "<td class=\"number\">" : "<td>") + cells.at(i) + "</td>";
    rows_ += "</tr>\n";
}

std::string Table::html() const {
    std::string html = "<div class=\"card wide\"><table>\n<caption>" + escaped(caption_) + "</caption>\n<thead><tr>";
    for (const Column& column : columns_)
        html += std::string("<th scope=\"col\"") + (column.isNumber ? " class=\"number\">" : ">") +
                escaped(column.heading) + "</th>";
    return html + "</tr></thead>\n<tbody>\n" + rows_ + "</tbody>\n</table></div>\n";
}

}  // namespace quill1xml::sandbox
