#include "text/xml_text.hpp"

#include "support/text_printer.hpp"
#include "text/windows_1252.hpp"

#include <random>

namespace quill1xml {
namespace {

using testing::utf8;

const XmlText& windowsText() {
    static const XmlText text(windows1252);
    return text;
}

std::u16string encode(Text text, bool all) {
    std::u16string out;
    windowsText().encode(out, text, all);
    return out;
}

std::u16string decode(Text text, bool all) {
    std::u16string out;
    windowsText().decode(out, text, all);
    return out;
}

std::u16string latin(Text text) {
    std::u16string out;
    encodeLatin(out, text);
    return out;
}

/// The definition: steps that each replace every occurrence in the whole text, in this order.
std::u16string step(std::u16string text, Text from, Text to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::u16string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::u16string reference(int n) {
    const std::string digits = std::to_string(n);
    return u"&#" + std::u16string(digits.begin(), digits.end()) + u";";
}

std::u16string code(int n) { return {windows1252[static_cast<std::size_t>(n)]}; }

std::u16string encodeByStep(std::u16string text, bool all) {
    const std::pair<Text, Text> steps[] = {{u"&", u"&amp;"}, {u"\"", u"&quot;"},     {u"'", u"&#39;"}, {u"<", u"&#60;"},
                                           {u">", u"&#62;"}, {u"\u00E9", u"&#233;"}, {u"\u2013", u"-"}};
    for (const auto& [from, to] : steps) text = step(text, from, to);
    for (int n = 128; all && n <= 255; ++n) text = step(text, code(n), reference(n));
    for (const int n : {145, 146, 147, 148}) text = step(text, code(n), n < 147 ? u"&#39;" : u"&quot;");
    return text;
}

std::u16string decodeByStep(std::u16string text, bool all) {
    const std::pair<Text, Text> steps[] = {{u"&amp;", u"&"}, {u"&quot;", u"\""},     {u"&#39;", u"'"}, {u"&#60;", u"<"},
                                           {u"&#62;", u">"}, {u"&#233;", u"\u00E9"}, {u"&apos;", u"'"}};
    for (const auto& [from, to] : steps) text = step(text, from, to);
    for (int n = 128; all && n <= 255; ++n) text = step(text, reference(n), code(n));
    return text;
}

/// A text of pieces that references are made of, whole ones among them, and of every kind of character.
std::u16string randomText(std::mt19937& random) {
    static constexpr Text pieces[] = {
        u"&",      u"&",      u"&#",     u";",      u"#",          u"amp;", u"&amp;", u"&amp;", u"quot;",  u"&#39;",
        u"&#60;",  u"&#62;",  u"&#233;", u"&apos;", u"&lt;",       u"&gt;", u"1",     u"2",     u"128;",   u"147;",
        u"&#255;", u"&#127;", u"256;",   u"0",      u"\"",         u"'",    u"<",     u">",     u"\u00E9", u"\u2013",
        u"\u201C", u"\u2019", u"\u00D7", u"\u0416", u"\U0001F4A1", u"x",    u"am",    u"p;"};
    std::u16string text;
    for (auto length = random() % 24; length > 0; --length) {
        const auto choice = random() % (std::size(pieces) + 8);
        if (choice < std::size(pieces)) {
            text.append(pieces[choice]);
        } else {
            text += code(static_cast<int>(random() % 256));
        }
    }
    return text;
}

TEST(XmlText, OnePassAgreesWithTheSteps) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        std::mt19937 random(seed);
        for (int i = 0; i < 1'000 && !HasFailure(); ++i) {
            const std::u16string text = randomText(random);
            SCOPED_TRACE(utf8(text));
            for (const bool all : {false, true}) {
                EXPECT_EQ(encode(text, all), encodeByStep(text, all));
                EXPECT_EQ(decode(text, all), decodeByStep(text, all));
                EXPECT_EQ(decode(encode(text, all), all), decodeByStep(encodeByStep(text, all), all));
            }
        }
    }
}

TEST(XmlText, IsEncodedAsTheServerReadsIt) {
    const struct {
        const char16_t* text;
        const char16_t* expected;
        const char16_t* all;
    } cases[] = {
        {u"", u"", u""},
        {u"Tom & \"Jerry\" <b>", u"Tom &amp; &quot;Jerry&quot; &#60;b&#62;",
         u"Tom &amp; &quot;Jerry&quot; &#60;b&#62;"},
        {u"caf\u00E9 \u2013 bar", u"caf&#233; - bar", u"caf&#233; - bar"},
        {u"a&#39;b", u"a&amp;#39;b", u"a&amp;#39;b"},
        {u"\u201Cx\u201D \u2018y\u2019", u"&quot;x&quot; &#39;y&#39;", u"&#147;x&#148; &#145;y&#146;"},
        {u"\u20AC \u00FF \u0081 \u0416", u"\u20AC \u00FF \u0081 \u0416", u"&#128; &#255; &#129; \u0416"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(encode(c.text, false), c.expected);
        EXPECT_EQ(encode(c.text, true), c.all);
    }
    EXPECT_EQ(latin(u"\u00DCn\u00EFcode \u00D7 2"), u"&#220;n&#239;code \u00D7 2");
    EXPECT_EQ(latin(u"<a b='1' c=\"&\"> \u00C0\u00FF\u00F7\u00BF\u0100"),
              u"&lt;a b=&apos;1&apos; c=&quot;&amp;&quot;&gt; &#192;&#255;\u00F7\u00BF\u0100");
}

TEST(XmlText, IsDecodedAsFarAsItsStepsGo) {
    const struct {
        const char16_t* text;
        const char16_t* expected;
        const char16_t* all;
    } cases[] = {
        {u"&amp;#60;&amp;amp;", u"<&amp;", u"<&amp;"},
        {u"&lt; &gt; &amp;lt;", u"&lt; &gt; &lt;", u"&lt; &gt; &lt;"},
        {u"&quot;&#39;&apos;&#60;&#62;&#233;", u"\"''<>\u00E9", u"\"''<>\u00E9"},
        {u"&#147;&amp;#128;&#129;", u"&#147;&#128;&#129;", u"\u201C\u20AC\u0081"},
        {u"&#127;&#256;&#0128;&#x80;&#12;", u"&#127;&#256;&#0128;&#x80;&#12;", u"&#127;&#256;&#0128;&#x80;&#12;"},
        {u"&AMP;&&amp", u"&AMP;&&amp", u"&AMP;&&amp"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(decode(c.text, false), c.expected);
        EXPECT_EQ(decode(c.text, true), c.all);
    }
}

/// The numbers are those of the bytes, so another code page writes and reads others.
TEST(XmlText, GoesByTheCodePage) {
    CodePage page = windows1252;
    for (std::size_t byte = 0xC0; byte < page.size(); ++byte) page[byte] = static_cast<char16_t>(0x0410 + byte - 0xC0);
    const XmlText cyrillic(page);
    std::u16string text;
    cyrillic.encode(text, u"\u0410\u044F \u00E9", true);
    EXPECT_EQ(text, u"&#192;&#255; &#233;");
    std::u16string back;
    cyrillic.decode(back, text, true);
    EXPECT_EQ(back, u"\u0410\u044F \u00E9");
}

}  // namespace
}  // namespace quill1xml
