#include "text/wildcard.hpp"

#include "text/letter_case.hpp"

namespace quill1xml {
namespace {

char16_t lowerCase(char16_t c) {
    const bool latin = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    return latin ? static_cast<char16_t>(c + 0x20) : asciiLower(c);
}

}  // namespace

bool matchesWildcard(Text name, Text pattern, bool ignoreCase) {
    const auto same = [ignoreCase](char16_t a, char16_t b) {
        return a == b || (ignoreCase && lowerCase(a) == lowerCase(b));
    };
    // Only the last "*" ever needs another try, with one more character in its run.
    std::size_t star = Text::npos;
    std::size_t afterRun = 0;
    std::size_t n = 0;
    std::size_t p = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            afterRun = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || same(pattern[p], name[n]))) {
            ++p;
            ++n;
        } else if (star != Text::npos) {
            p = star + 1;
            n = ++afterRun;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == Text::npos;
}

}  // namespace quill1xml
