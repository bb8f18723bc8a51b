// Text and files as bytes: the string builder and base64.
#include "quill1xml/cstring.hpp"
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"
#include "text/base64.hpp"
#include "text/windows_1252.hpp"

namespace quill1xml {
namespace {

using testing::utf8;

TEST(StringBuilder, HoldsCharactersOfTheCodePage) {
    CString builder(windows1252);
    EXPECT_EQ(builder.length(), 0);
    EXPECT_EQ(builder.text(), u"");
    builder.concat(u"ab");
    builder.concat(u"");
    builder.concat(u"c");
    EXPECT_EQ(builder.length(), 3);
    EXPECT_EQ(builder.text(), u"abc");
    testing::expectError([&] { builder.concat(u"d\u0416"); }, 6, u"Overflow");
    EXPECT_EQ(builder.text(), u"abc") << "a refused text leaves nothing behind";
    builder.reset();
    EXPECT_EQ(builder.length(), 0);
    EXPECT_EQ(builder.text(), u"");

    std::u16string all;
    for (const char16_t character : windows1252) all.push_back(character);
    builder.concat(all);
    EXPECT_EQ(builder.length(), 256);
    EXPECT_EQ(builder.text(), all);
}

TEST(Base64, EncodesTheExamplesOfItsStandard) {
    const struct {
        std::string_view bytes;
        const char* expected;
    } cases[] = {{"", ""},
                 {"f", "Zg=="},
                 {"fo", "Zm8="},
                 {"foo", "Zm9v"},
                 {"foob", "Zm9vYg=="},
                 {"fooba", "Zm9vYmE="},
                 {"foobar", "Zm9vYmFy"},
                 {"\xFB\xFF\xBF", "+/+/"},
                 {{"\0\x10\x83", 3}, "ABCD"}};
    for (const auto& c : cases) {
        std::u16string text;
        appendBase64(text, Bytes(c.bytes.begin(), c.bytes.end()));
        EXPECT_EQ(utf8(text), c.expected);
    }
}

}  // namespace
}  // namespace quill1xml
