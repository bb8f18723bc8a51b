#include "command_line/nearest.hpp"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <vector>

namespace quill1xml::cli {
namespace {

/// How many letters must be put in, taken out or exchanged to turn one name into the other.
std::size_t distance(std::string_view from, std::string_view to) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char c : from) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 0; i < to.size(); ++i) {
            const std::size_t exchanged = diagonal + (lower(c) == lower(to[i]) ? 0 : 1);
            diagonal = row[i + 1];
            row[i + 1] = std::min({exchanged, row[i] + 1, row[i + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates) {
    const auto nearest =
        std::ranges::min_element(candidates, {}, [&](auto candidate) { return distance(name, candidate); });
    return nearest == candidates.end() ? std::string_view{} : *nearest;
}

}  // namespace quill1xml::cli
