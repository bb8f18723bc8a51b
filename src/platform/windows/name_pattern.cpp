#include "platform/windows/name_pattern.hpp"

#include "platform/windows/com_support.hpp"

namespace quill1xml::platform {
namespace {

bool same(char16_t a, char16_t b) {
    return a == b || CompareStringOrdinal(com::wide(&a), 1, com::wide(&b), 1, TRUE) == CSTR_EQUAL;
}

/// How one character of a pattern other than "*" meets a name, of which null is the end.
enum class Meeting { fails, takesCharacter, takesNothing };

Meeting meet(char16_t wanted, bool beforeWildcard, char16_t character) {
    const bool atEnd = character == u'\0';
    if (wanted == u'?') return atEnd || character == u'.' ? Meeting::takesNothing : Meeting::takesCharacter;
    if (atEnd) return wanted == u'.' && beforeWildcard ? Meeting::takesNothing : Meeting::fails;
    return same(wanted, character) ? Meeting::takesCharacter : Meeting::fails;
}

}  // namespace

bool matchesPattern(Text name, Text pattern) {
    const auto at = [](Text text, std::size_t index) { return index < text.size() ? text[index] : u'\0'; };
    // Only the last "*" ever needs another try, with one more character in its run.
    std::size_t star = Text::npos;
    std::size_t afterRun = 0;
    std::size_t n = 0;
    std::size_t p = 0;
    while (p < pattern.size() || n < name.size()) {
        if (at(pattern, p) == u'*') {
            star = p++;
            afterRun = n;
            continue;
        }
        const char16_t next = at(pattern, p + 1);
        const Meeting meeting =
            p < pattern.size() ? meet(pattern[p], next == u'*' || next == u'?', at(name, n)) : Meeting::fails;
        if (meeting != Meeting::fails) {
            ++p;
            n += meeting == Meeting::takesCharacter ? 1 : 0;
        } else if (star != Text::npos && afterRun < name.size()) {
            p = star + 1;
            n = ++afterRun;
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace quill1xml::platform
