#include "quill1xml/text.hpp"
#include "text/declared_encoding.hpp"
#include "text/reply_text.hpp"
#include "text/url.hpp"
#include "text/wildcard.hpp"

#include <gtest/gtest.h>

namespace quill1xml::platform {
namespace {

using namespace std::string_literals;

TEST(ReplyText, MarkThenCharsetThenDeclarationDecide) {
    const std::string latinDeclaration = "<?xml version='1.0' encoding = 'ISO-8859-1'?>";
    const std::u16string latinText = u"<?xml version='1.0' encoding = 'ISO-8859-1'?>";
    const struct {
        std::string contentType;
        std::string body;
        std::u16string expected;
    } cases[] = {
        {"", "", u""},
        {"", "\xC3\xA9", u"\u00E9"},
        {"text/xml", "\xE9", u"\uFFFD"},
        {"text/xml; charset=iso-8859-1", "\xEF\xBB\xBF\xC3\xA9", u"\u00E9"},
        {"text/xml; charset=utf-8", "\xFF\xFE\xAC\x20"s, u"\u20AC"},
        {"", "\xFE\xFF\0a\x20\xAC"s, u"a\u20AC"},
        {"", "\xFF\xFE\xAC\x20\x20"s, u"\u20AC\uFFFD"},
        {"text/xml; charset=ISO-8859-1", "\x80\xE9", u"\u0080\u00E9"},
        {"text/xml;Charset = x; charset=\"windows-1252\"; q=1", "\x80\x81\xE9", u"\u20AC\u0081\u00E9"},
        {"text/xml; charset=utf-16", "\0a\x20\xAC"s, u"a\u20AC"},
        {"text/xml; charset=utf-16", "a\0\xAC\x20"s, u"a\u20AC"},
        {"text/xml; charset=utf-16le", "\0a"s, u"\u6100"},
        {"text/xml; charset=utf-16be", "a\0"s, u"\u6100"},
        {"text/xml; charset=klingon", "\xC3\xA9", u"\u00E9"},
        {"text/xml", latinDeclaration + "\xE9", latinText + u"\u00E9"},
        {"text/xml; charset=utf-8", latinDeclaration + "\xC3\xA9", latinText + u"\u00E9"},
        {"", "<?xml encoding=\"utf-16\"?>\xC3\xA9", u"<?xml encoding=\"utf-16\"?>\u00E9"},
        {"", "<\0a\0"s, u"<a"},
        {"", "\0<\0a"s, u"<a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(replyText({200, c.contentType, c.body}), toUtf8(c.expected)) << c.contentType << " | " << c.body;
    }
}

TEST(Url, IsShownWithoutSecrets) {
    const struct {
        const char16_t* url;
        const char16_t* shown;
    } cases[] = {
        {u"http://u:p@host/a?b#c", u"http://host/a"},
        {u"HTTPS://host:80", u"HTTPS://host:80/"},
        {u"http://host?q=a@b/c", u"http://host/"},
        {u"http://host/a@b", u"http://host/a@b"},
    };
    for (const auto& c : cases) EXPECT_EQ(toUtf8(printableUrl(c.url)), toUtf8(c.shown));
}

TEST(DeclaredEncoding, IsReadFromADeclarationAlone) {
    const struct {
        const char* document;
        const char* expected;
    } cases[] = {
        {"<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>", "UTF-8"},
        {"<?xml version='1.0'\tencoding\n=\r'x' standalone='yes'?>", "x"},
        {"<?xml version='1.0'?><a encoding='x'/>", ""},
        {" <?xml encoding='x'?>", ""},
        {"<a encoding='x'/>", ""},
        {"<?xml encoding", ""},
        {"<?xml encoding=", ""},
        {"<?xml encoding='x", ""},
        {"<?xml encoding=x?>", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(declaredEncoding(c.document), c.expected) << c.document;
}

TEST(Wildcard, MatchesWholeNames) {
    const struct {
        const char16_t* pattern;
        const char16_t* name;
        bool exact;
        bool ignoringCase;
    } cases[] = {
        {u"", u"", true, true},
        {u"", u"a", false, false},
        {u"*", u"", true, true},
        {u"?", u"", false, false},
        {u"a?c", u"abc", true, true},
        {u"a?c", u"ac", false, false},
        {u"a*", u"a", true, true},
        {u"*.xml", u"a.xml.xml", true, true},
        {u"*.xml", u"a.xmlx", false, false},
        {u"*a*b*c", u"xaaybbc", true, true},
        {u"*a*b*c", u"xbac", false, false},
        {u"a**?", u"ab", true, true},
        {u"a.x", u"aXx", false, false},
        {u"P*.XML", u"p1.xml", false, true},
        {u"\u00C9*", u"\u00E9a", false, true},
        {u"\u00D7", u"\u00F7", false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(matchesWildcard(c.name, c.pattern, false), c.exact) << testing::PrintToString(c.pattern);
        EXPECT_EQ(matchesWildcard(c.name, c.pattern, true), c.ignoringCase) << testing::PrintToString(c.pattern);
    }
}

}  // namespace
}  // namespace quill1xml::platform
