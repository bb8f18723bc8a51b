#include "quill1xml/text.hpp"

#include <gtest/gtest.h>

namespace quill1xml {
namespace {

TEST(Utf, ValidTextSurvivesBothWays) {
    const std::u16string text = u"A\u00E9\u0416\u20AC\U0001F4A1";
    EXPECT_EQ(toUtf8(text), "A\xC3\xA9\xD0\x96\xE2\x82\xAC\xF0\x9F\x92\xA1");
    EXPECT_EQ(toUtf16(toUtf8(text)), text);

    // Long texts go in blocks and in pieces, which end anywhere.
    for (const char16_t* const character : {u"\u007F", u"\u0080", u"\u20AC", u"\U0001F4A1"}) {
        for (std::size_t before = 0; before < 1100; before += before < 70 ? 1 : 13) {
            std::u16string mixed(before, u'x');
            mixed.append(character).append(u"0123456789abcdefghijklmnopqrstuvwxyz");
            std::string expected(before, 'x');
            expected.append(toUtf8(character)).append("0123456789abcdefghijklmnopqrstuvwxyz");
            ASSERT_EQ(toUtf8(mixed), expected) << before;
            ASSERT_EQ(toUtf16(expected), mixed) << before;
        }
    }
}

TEST(Utf, WhatIsNotValidBecomesTheReplacementCharacter) {
    const struct {
        const char* bytes;
        std::u16string expected;
    } cases[] = {
        {"a\xFF"
         "b",
         u"a\uFFFDb"},
        {"\xC3", u"\uFFFD"},                                // truncated
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond U+10FFFF
    };
    for (const auto& c : cases) EXPECT_EQ(toUtf16(c.bytes), c.expected);
    EXPECT_EQ(toUtf8(std::u16string{u'a', char16_t{0xD800}, u'b'}),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(toUtf8(std::u16string{char16_t{0xDC00}}), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace quill1xml
