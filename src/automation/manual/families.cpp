#include "automation/manual/families.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace quill1xml::automation {
namespace {

/// What the names spell in another way than sentences do.
constexpr std::pair<std::string_view, std::string_view> spellings[] = {
    {"E mail", "e-mail"}, {"email", "e-mail"}, {"state province", "state or province"}, {"SKU code", "SKU"}};

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
char small(char c) { return isCapital(c) ? static_cast<char>(c - 'A' + 'a') : c; }

enum class Kind : std::uint8_t { small, capital, digit, end };

Kind kindOf(char c) {
    if (isCapital(c)) return Kind::capital;
    return isDigit(c) ? Kind::digit : Kind::small;
}

/// Small letters before the first capital tell the type, and so does a flag's "Bln" behind them.
std::string_view withoutPrefix(std::string_view name) {
    const auto capital = std::ranges::find_if(name, isCapital);
    if (capital == name.end()) return name;
    name.remove_prefix(static_cast<std::size_t>(capital - name.begin()));
    if (name.starts_with("Bln") && name.size() > 3) name.remove_prefix(3);
    return name;
}

}  // namespace

bool hasNumber(std::string_view name) { return std::ranges::any_of(name, isDigit); }

std::string patternOf(std::string_view text) {
    std::string pattern;
    for (const char c : text) {
        if (!isDigit(c)) {
            pattern += c;
        } else if (!pattern.ends_with('#')) {
            pattern += '#';
        }
    }
    return pattern;
}

std::string wordsOf(std::string_view name, bool withNumbers) {
    const std::string_view bare = withoutPrefix(name);
    const auto kindAt = [bare](std::size_t i) { return i < bare.size() ? kindOf(bare[i]) : Kind::end; };
    std::string words;
    for (std::size_t i = 0; i < bare.size(); ++i) {
        const Kind kind = kindAt(i);
        const Kind before = i > 0 ? kindAt(i - 1) : Kind::end;
        if (kind == Kind::digit && !withNumbers) continue;
        const bool afterAbbreviation = before == Kind::capital && kindAt(i + 1) == Kind::small;
        const bool begins = before != Kind::end && kind != before && kind != Kind::small;
        if (begins || (kind == Kind::capital && afterAbbreviation) || (kind == Kind::small && before == Kind::digit)) {
            words += ' ';
        }
        const bool abbreviated = kindAt(i + 1) == Kind::capital || before == Kind::capital;
        words += kind == Kind::capital && !(abbreviated && !afterAbbreviation) ? small(bare[i]) : bare[i];
    }
    for (const auto& [spelled, meant] : spellings) {
        const std::size_t at = words.find(spelled);
        if (at != std::string::npos) words.replace(at, spelled.size(), meant);
    }
    return words;
}

std::string sentence(std::string words) {
    if (words.front() >= 'a' && words.front() <= 'z') words.front() = static_cast<char>(words.front() - 'a' + 'A');
    return words + ".";
}

}  // namespace quill1xml::automation
