#include "platform/windows/create_object.hpp"
#include "platform/windows/document_type.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/source_text.hpp"
#include "platform/windows/text_encoding.hpp"
#include "store/schema_source.hpp"
#include "support/expect_error.hpp"
#include "support/text_printer.hpp"

#include <gtest/gtest.h>

#include <thread>

namespace quill1xml::platform {
namespace {

using testing::expectError;
using testing::utf8;

TEST(DomNodes, ElementsOfAnyVersionAreTakenAndNothingElse) {
    for (const char16_t* const version : {u"MSXML2.DOMDocument", u"MSXML2.DOMDocument.6.0"}) {
        const auto document = createObject<IXMLDOMDocument2>(version, iidXmlDomDocument2);
        VARIANT_BOOL loaded = VARIANT_FALSE;
        document->loadXML(com::Bstr(u"<a x='1'>text</a>").get(), &loaded);
        com::ComPtr<IXMLDOMElement> root;
        com::ComPtr<IXMLDOMNode> text;
        document->get_documentElement(root.put());
        root->get_firstChild(text.put());

        const auto element = wrapNode(root.get());
        EXPECT_EQ(element->attribute(u"x"), u"1");
        EXPECT_EQ(com::query<IUnknown>(unwrap(*element), IID_IUnknown).get(),
                  com::query<IUnknown>(root.get(), IID_IUnknown).get());
        expectError([&] { wrapNode(text.get()); }, 13, u"");
        expectError([&] { wrapNode(document.get()); }, 13, u"");
    }
    expectError([] { wrapNode(nullptr); }, 13, u"");
}

TEST(DomNodes, AThreadWithoutComIsTold) {
    std::thread([] {
        ParseError error;
        expectError([&] { systemEnvironment().xml->parse({{u"<a/>"}}, nullptr, error); }, CO_E_NOTINITIALIZED,
                    u"has not initialised COM");
    }).join();
    expectError([] { createObject<IUnknown>(u"Quill1XML.NoSuchClass", IID_IUnknown); }, 429,
                u"Quill1XML.NoSuchClass: ");
    expectError([] { createObject<IUnknown>(u"Quill1XML.NoSuchClass", IID_IUnknown); }, 429, u" (0x800401F3)");
}

TEST(DocumentType, DeclarationsAreFoundInAnyEncoding) {
    const struct {
        const char16_t* document;
        bool expected;
    } cases[] = {
        {u"<!DOCTYPE a [<!ENTITY x 'y'>]><a/>", true},
        {u"<!DOCTYPE a [<!ENTITY % x SYSTEM 'y'> %x;]><a/>", true},
        {u"<!DOCTYPE a [<!ATTLIST a x CDATA 'y'>]><a/>", true},
        {u" <?xml version='1.0'?>\r\n<!-- <a> --><?p >?>\t<!DOCTYPE a [<!ENTITY x 'y'>]><a/>", true},
        {u"<!DOCTYPE a><a/>", false},
        {u"<!-- <!DOCTYPE a [<!ENTITY x 'y'>]> --><a/>", false},
        {u"<a><![CDATA[<!DOCTYPE a [<!ENTITY x 'y'>]>]]></a>", false},
        {u"<!-- <!DOCTYPE a [<!ENTITY x 'y'>]>", false},
        {u"", false},
    };
    for (const auto& c : cases) {
        const Text document(c.document);
        EXPECT_EQ(hasDeclarations(document), c.expected) << utf8(document);
        for (const Text mark : {u"", u"\uFEFF"}) {
            const std::u16string marked = std::u16string(mark) + std::u16string(document);
            const std::string narrow = toUtf8(marked);
            Bytes low;
            Bytes high;
            for (const char16_t unit : marked) {
                low.insert(low.end(), {static_cast<std::uint8_t>(unit & 0xFF), static_cast<std::uint8_t>(unit >> 8)});
                high.insert(high.end(), {static_cast<std::uint8_t>(unit >> 8), static_cast<std::uint8_t>(unit & 0xFF)});
            }
            EXPECT_EQ(hasDeclarations(Bytes(narrow.begin(), narrow.end())), c.expected) << narrow;
            // Without a mark only the first character tells UTF-16, so it has to be markup.
            if (mark.empty() && !document.starts_with(u'<')) continue;
            EXPECT_EQ(hasDeclarations(low), c.expected) << narrow;
            EXPECT_EQ(hasDeclarations(high), c.expected) << narrow;
        }
    }
}

TEST(EncodedXml, WhatAnEncodingLacksBecomesAReference) {
    const struct {
        const char16_t* encoding;
        std::string expected;
    } cases[] = {
        {u"", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1"},
        {u"UTF-8", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1"},
        {u"utf-16", std::string("\xFF\xFE\xE9\0\xAC\x20\x3D\xD8\xA1\xDC", 10)},
        {u"ISO-8859-1", "\xE9&#8364;&#128161;"},
        {u"windows-1252", "\xE9\x80&#128161;"},
        {u"US-ASCII", "&#233;&#8364;&#128161;"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(encodeXml(u"\u00E9\u20AC\U0001F4A1", c.encoding), c.expected) << utf8(c.encoding);
    }
    const std::pair<const char16_t*, const char*> eastern[] = {{u"Shift_JIS", "\x93\xFA\x96{&#128161;"},
                                                               {u"GB2312", "\xC8\xD5\xB1\xBE&#128161;"},
                                                               {u"Big5", "\xA4\xE9\xA5\xBB&#128161;"},
                                                               {u"EUC-KR", "\xEC\xED\xDC\xE2&#128161;"}};
    for (const auto& [encoding, bytes] : eastern) {
        EXPECT_EQ(encodeXml(u"\u65E5\u672C\U0001F4A1", encoding), bytes) << utf8(encoding);
    }
    for (const char16_t* const unknown : {u"klingon", u"windows-932", u"windows-", u"windows-1", u"iso-8859-1x"}) {
        expectError([&] { encodeXml(u"a", unknown); }, 440, unknown);
    }
}

TEST(Excerpts, AreShortAndNameTheValueTheyStartIn) {
    const std::u16string filler(300, u'x');
    const auto around = [](const std::u16string& before, const std::u16string& after) {
        return excerpt(before + after, before.size());
    };
    EXPECT_EQ(around(filler, u"|" + filler), filler.substr(0, 100) + u"|" + filler.substr(0, 99));
    EXPECT_EQ(around(u"<e u='\"' Password=\"" + filler, u"|" + filler),
              u"Password=\"" + filler.substr(0, 100) + u"|" + filler.substr(0, 99));
    const std::u16string value = u"ord='" + filler.substr(0, 95);
    EXPECT_EQ(around(u"<e u='1' Passw" + value, u"|" + filler), u"Passw" + value + u"|" + filler.substr(0, 99));
    EXPECT_EQ(around(u"<e u='1'>isn't" + filler, u"|" + filler), filler.substr(0, 100) + u"|" + filler.substr(0, 99));
}

}  // namespace
}  // namespace quill1xml::platform
