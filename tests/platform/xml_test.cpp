#include "platform/ports.hpp"
#include "store/schema_source.hpp"
#include "support/expect_error.hpp"
#include "support/temp_folder.hpp"
#include "support/text_printer.hpp"

#include <gmock/gmock.h>

#include <stdexcept>

namespace quill1xml::platform {
namespace {

using ::testing::ElementsAre;
using testing::expectError;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using testing::utf8;

class XmlTest : public ::testing::Test {
protected:
    std::unique_ptr<Document> parse(Text text, std::shared_ptr<Schema> schema = nullptr) {
        ParseError error;
        auto document = xml_->parse({{text}}, std::move(schema), error);
        if (!document) throw std::runtime_error("does not parse: " + utf8(error.reason));
        EXPECT_EQ(error.code, 0);
        return document;
    }

    std::shared_ptr<Xml> xml_ = systemEnvironment().xml;
    testing::TempFolder folder_;
};

/// The values of an attribute, "-" where it is absent.
std::vector<std::u16string> values(const std::vector<std::shared_ptr<Element>>& elements, Text name) {
    std::vector<std::u16string> result;
    for (const auto& element : elements) result.push_back(element->attribute(name).value_or(u"-"));
    return result;
}

TEST_F(XmlTest, AttributesAreReadByTheirExactName) {
    const auto root = parse(
                          u"<a x=\"1 &lt;&amp;&quot;&#233;&#x20AC;&#10;\u00E9\U0001F4A1\" X=\"\" p:x='2' xml:lang='en' "
                          u"\u00E9='3' xmlns:p='urn:p' xmlns='urn:a'/>")
                          ->root();
    const struct {
        const char16_t* name;
        std::optional<std::u16string> expected;
    } cases[] = {
        {u"x", u"1 <&\"\u00E9\u20AC\n\u00E9\U0001F4A1"},
        {u"X", u""},
        {u"p:x", u"2"},
        {u"xml:lang", u"en"},
        {u"\u00E9", u"3"},
        {u"xmlns", u"urn:a"},
        {u"xmlns:p", u"urn:p"},
        {u"xmlns:q", std::nullopt},
        {u"lang", std::nullopt},
        {u"q:x", std::nullopt},
        {u"xx", std::nullopt},
        {u"\u00E8", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(root->attribute(c.name), c.expected) << utf8(c.name);
}

TEST_F(XmlTest, PathsGoByQualifiedNamesWhateverTheNamespace) {
    const auto document = parse(
        u"<?xml version='1.0'?><!-- first --><Store xmlns='WebStore' xmlns:p='urn:p'>\n"
        u"<Order n='1'><Line n='1.1'/>text<Line n='1.2'/><p:Line n='1.3'/></Order>"
        u"<p:Order n='2' xmlns='urn:other'><Line n='2.1'/></p:Order><Order n='3' xmlns=''><Line "
        u"n='3.1'/><Order/></Order>"
        u"</Store>");
    EXPECT_THAT(values(document->select(u"Store"), u"n"), ElementsAre(u"-"));
    EXPECT_THAT(values(document->select(u"Store/Order"), u"n"), ElementsAre(u"1", u"3"));
    EXPECT_THAT(values(document->select(u"Store/Order/Line"), u"n"), ElementsAre(u"1.1", u"1.2", u"3.1"));
    EXPECT_THAT(values(document->select(u"Store/p:Order/Line"), u"n"), ElementsAre(u"2.1"));
    for (const Text path : {u"Order", u"Store/Line", u"store/Order", u"Store/order", u"Stor"}) {
        EXPECT_THAT(document->select(path), IsEmpty()) << utf8(path);
    }
    const auto orders = document->root()->children(u"Order");
    ASSERT_THAT(orders, SizeIs(2));
    EXPECT_THAT(values(orders[0]->children(u"Line"), u"n"), ElementsAre(u"1.1", u"1.2"));
    EXPECT_THAT(values(orders[0]->children(u"p:Line"), u"n"), ElementsAre(u"1.3"));
}

TEST_F(XmlTest, AnElementKeepsItsDocumentAlive) {
    auto document = parse(u"<a><b x='1'/></a>");
    const auto element = document->select(u"a/b").at(0);
    document.reset();
    EXPECT_EQ(element->attribute(u"x"), u"1");
}

TEST_F(XmlTest, TextIsParsedWhateverEncodingItDeclares) {
    for (const Text encoding : {u"UTF-8", u"UTF-16", u"iso-8859-1"}) {
        const auto text = u"<?xml version='1.0' encoding='" + std::u16string(encoding) + u"'?><a x='\u00E9\u0416'/>";
        EXPECT_EQ(parse(text)->root()->attribute(u"x"), u"\u00E9\u0416") << utf8(encoding);
    }
    EXPECT_EQ(parse(u"\uFEFF<a x='1'/>")->root()->attribute(u"x"), u"1");
}

TEST_F(XmlTest, WhatIsNotWellFormedIsRefused) {
    std::u16string deep;
    for (int i = 0; i < 20'000; ++i) deep += u"<a>";
    for (int i = 0; i < 20'000; ++i) deep += u"</a>";
    std::u16string bomb = u"<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxx'>";
    for (char16_t i = u'1'; i <= u'9'; ++i) {
        const std::u16string inner = std::u16string(u"&e") + static_cast<char16_t>(i - 1) + u";";
        bomb += std::u16string(u"<!ENTITY e") + i + u" '" + inner + inner + inner + inner + inner + inner + u"'>";
    }
    const std::u16string secret = folder_.create(u"secret", "secret");
    const std::u16string cases[] = {
        u"",
        u"<a>",
        u"<a/><b/>",
        std::u16string(u"<a/>\0<b", 7),
        u"<a><b></a></b>",
        u"<a x='1' x='2'/>",
        u"<a x='<'/>",
        u"<a>&unknown;</a>",
        bomb + u"]><a x='&e9;'/>",
        u"<!DOCTYPE a [<!ENTITY e SYSTEM '" + secret + u"'>]><a>&e;</a>",
        u"<!DOCTYPE a [<!ENTITY % e SYSTEM '" + secret + u"'> %e;]><a/>",
        deep,
    };
    for (const auto& text : cases) {
        ParseError error;
        EXPECT_FALSE(xml_->parse({{text}}, nullptr, error)) << utf8(text.substr(0, 100));
        EXPECT_NE(error.code, 0) << utf8(text.substr(0, 100));
        EXPECT_NE(error.reason, u"") << utf8(text.substr(0, 100));
    }
}

TEST_F(XmlTest, SerialisedTextReadsTheSame) {
    const Text value = u"<&>\"'\t\n\r\u00E9\u20AC\U0001F4A1";
    const auto text = parse(
                          u"<?xml version='1.0' encoding='iso-8859-1'?>"
                          u"<a x='&lt;&amp;>&quot;&apos;&#9;&#10;&#13;\u00E9\u20AC\U0001F4A1'><!--c--><b/></a>")
                          ->xml();
    EXPECT_EQ(text.find(u"encoding"), std::u16string::npos) << utf8(text);
    const auto again = parse(text);
    EXPECT_EQ(again->root()->attribute(u"x"), value);
    EXPECT_THAT(again->select(u"a/b"), SizeIs(1));
}

TEST_F(XmlTest, SavedDocumentsKeepTheirEncoding) {
    const struct {
        Text declaration;
        std::string expected;  // bytes of the value
    } cases[] = {
        {u"", "\xC3\xA9"},
        {u"<?xml version='1.0'?>", "\xC3\xA9"},
        {u"<?xml version='1.0' encoding='UTF-8'?>", "\xC3\xA9"},
        {u"<?xml version='1.0' encoding='iso-8859-1'?>", "=\"\xE9\""},
        {u"<?xml version='1.0' encoding='UTF-16'?>", std::string("\xE9\0", 2)},
    };
    for (const auto& c : cases) {
        const std::u16string name = folder_.name(u"saved.xml");
        parse(std::u16string(c.declaration) + u"<a x='\u00E9'/>")->save(name);
        EXPECT_THAT(folder_.bytes(u"saved.xml"), HasSubstr(c.expected)) << utf8(c.declaration);
        ParseError error;
        const auto document = xml_->load(name, nullptr, error);
        ASSERT_TRUE(document) << utf8(error.reason);
        EXPECT_EQ(document->root()->attribute(u"x"), u"\u00E9");
    }
    expectError([&] { parse(u"<a/>")->save(folder_.name(u"no\\folder\\file")); }, 76, u"folder");
}

TEST_F(XmlTest, FilesThatDoNotLoadAreReportedWithTheirName) {
    const std::u16string names[] = {folder_.name(u"missing.xml"), folder_.name(u"no\\folder.xml"),
                                    folder_.create(u"broken.xml", "<a>"), folder_.create(u"empty.xml", ""),
                                    folder_.create(u"bytes.xml", "<a x='\xE9'/>")};
    for (const auto& name : names) {
        ParseError error;
        EXPECT_FALSE(xml_->load(name, nullptr, error)) << utf8(name);
        EXPECT_NE(error.code, 0) << utf8(name);
        EXPECT_NE(error.reason, u"") << utf8(name);
        EXPECT_NE(error.url, u"") << utf8(name);
    }
}

TEST_F(XmlTest, HalfASurrogatePairIsNoCharacter) {
    for (const Text text : {u"<a x='\xD83D'/>", u"<a>\xDE00</a>"}) {
        ParseError error;
        EXPECT_EQ(xml_->parse({{text}}, nullptr, error), nullptr);
        EXPECT_NE(error.code, 0);
    }
}

TEST_F(XmlTest, SchemasThatAreMissingOrBrokenAreErrors) {
    const std::u16string missing = folder_.name(u"missing.xsd");
    expectError([&] { store::SchemaSource().load(systemEnvironment(), missing); }, 53, missing);
    expectError([&] { store::SchemaSource().load(systemEnvironment(), folder_.name(u"no\\folder.xsd")); }, 76,
                folder_.name(u"no"));
    for (const char* const text : {"", "<xs:schema", "<a/>", "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"}) {
        const std::u16string broken = folder_.create(u"broken.xsd", text);
        expectError([&] { store::SchemaSource().load(systemEnvironment(), broken); }, applicationError, broken);
    }
}

}  // namespace
}  // namespace quill1xml::platform
