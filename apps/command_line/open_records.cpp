#include "command_line/open_records.hpp"

#include "quill1xml/text.hpp"

#include <utility>

namespace quill1xml::cli {

std::string OpenRecords::lockOf(Text element) { return "Lock" + toUtf8(element); }

std::string OpenRecords::Lost::text() const {
    return "this " + toUtf8(element) + " is never locked, and is not published: " + lockOf(element) + " is missing";
}

void OpenRecords::after(std::size_t line) {
    std::map<std::u16string, Begun> open;
    for (std::u16string& element : store_.openRecords()) {
        const auto former = open_.find(element);
        const Begun begun = former == open_.end() ? Begun{line} : former->second;
        open.emplace(std::move(element), begun);
    }
    open_ = std::move(open);
}

std::vector<OpenRecords::Lost> OpenRecords::lost() {
    std::vector<Lost> lost;
    for (auto& [element, begun] : open_) {
        if (!std::exchange(begun.told, true)) lost.push_back({element, begun.line});
    }
    return lost;
}

}  // namespace quill1xml::cli
