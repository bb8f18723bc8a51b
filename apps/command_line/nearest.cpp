#include "command_line/nearest.hpp"

#include "command_line/harmless_text.hpp"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace quill1xml::cli {
namespace {

/// Comparing costs the product of the lengths.
constexpr std::size_t longestName = 100;

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

/// How many letters must be put in, taken out or exchanged to turn one name into the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char c : from) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 0; i < to.size(); ++i) {
            const std::size_t exchanged = diagonal + (c == to[i] ? 0 : 1);
            diagonal = row[i + 1];
            row[i + 1] = std::min({exchanged, row[i] + 1, row[i + 1] + 1});
        }
    }
    return row.back();
}

using Words = std::vector<std::string>;

/// In small letters: "AddUDFValue" is add, udf, value.
Words wordsOf(std::string_view name) {
    const auto isCapital = [name](std::size_t i) {
        return i < name.size() && std::isupper(static_cast<unsigned char>(name[i])) != 0;
    };
    Words words;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool insideAbbreviation = i > 0 && isCapital(i - 1) && (isCapital(i + 1) || i + 1 == name.size());
        if (words.empty() || (isCapital(i) && !insideAbbreviation)) words.emplace_back();
        words.back() += lower(name[i]);
    }
    return words;
}

/// Takes from the words the one that is meant, or those that it abbreviates. Returns how many it took.
std::size_t take(Words& words, const std::string& meant) {
    if (const auto found = std::ranges::find(words, meant); found != words.end()) {
        words.erase(found);
        return 1;
    }
    const auto abbreviated = std::search(words.begin(), words.end(), meant.begin(), meant.end(),
                                         [](const std::string& word, char letter) { return word.front() == letter; });
    if (meant.size() < 2 || abbreviated == words.end()) return 0;
    words.erase(abbreviated, abbreviated + static_cast<std::ptrdiff_t>(meant.size()));
    return meant.size();
}

/// What tells two names apart, the smaller the nearer: the words of the first that the second lacks, then the letters
/// to change in those that they do not share.
std::pair<std::size_t, std::size_t> difference(Words words, std::string_view candidate) {
    Words others = wordsOf(candidate);
    std::erase_if(others, [&words](const std::string& word) { return take(words, word) != 0; });
    const auto joined = [](const Words& all) { return std::accumulate(all.begin(), all.end(), std::string()); };
    return {words.size(), distance(joined(words), joined(others))};
}

}  // namespace

std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates) {
    if (candidates.empty() || name.size() > longestName) return {};
    const Words words = wordsOf(name);
    return *std::ranges::min_element(candidates, {},
                                     [&](std::string_view candidate) { return difference(words, candidate); });
}

std::string unknownName(std::string_view name, std::span<const std::string_view> candidates) {
    const std::string_view nearest = nearestName(name, candidates);
    std::string text = excerpt(name);
    if (!nearest.empty()) text.append(" (did you mean ").append(nearest).append("?)");
    return text;
}

}  // namespace quill1xml::cli
