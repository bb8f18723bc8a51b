#include "platform/ports.hpp"
#include "platform/posix/xml_one_pass.hpp"
#include "platform/posix/xml_parsing.hpp"
#include "platform/posix/xml_writing.hpp"
#include "quill1xml/text.hpp"
#include "store/schema_source.hpp"
#include "support/expect_error.hpp"
#include "support/loopback_server.hpp"
#include "support/temp_folder.hpp"
#include "support/text_printer.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <set>

#include <libxml/xmlmemory.h>

namespace quill1xml::platform {
namespace {

using testing::expectError;
using testing::httpReply;
using testing::LoopbackServer;
using testing::utf8;

class PosixXmlTest : public ::testing::Test {
protected:
    /// Why a document is refused, whether it is to be valid or not.
    ParseError failure(Text text) {
        ParseError error;
        ParseError sameError;
        EXPECT_FALSE(xml_->parse({{text}}, nullptr, error));
        EXPECT_FALSE(xml_->parse({{text}}, anything_, sameError));
        EXPECT_EQ(sameError.reason, error.reason);
        EXPECT_EQ(sameError.filePosition, error.filePosition);
        return error;
    }

    std::shared_ptr<Xml> xml_ = systemEnvironment().xml;
    testing::TempFolder folder_;
    std::shared_ptr<Schema> anything_ = store::SchemaSource().load(
        systemEnvironment(), folder_.create(u"any.xsd",
                                            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                                            "<xs:element name='a'/></xs:schema>"));
};

TEST_F(PosixXmlTest, UndeclaredPrefixesAreRefused) {
    for (const Text text : {u"<p:a/>", u"<a p:x='1'/>"}) EXPECT_TRUE(failure(text)) << utf8(text);
}

TEST_F(PosixXmlTest, DocumentsAreWrittenAsTheLibraryWritesThem) {
    const auto anything = std::dynamic_pointer_cast<XsdSchema>(anything_);
    const struct {
        std::string document;
        bool plain;
    } cases[] = {
        {"<a b='&amp;&lt;&gt;&quot;&apos;&#9;&#10;&#13;' "
         "c=''>&amp;&lt;&gt;\"'\t\n&#13;x<d></d><e/>\u00E9\U0001F4A1</a>",
         true},
        {"<a xmlns:p='v&amp;w' p:b='1'><p:c xmlns='u'><e xmlns=''/></p:c><d xml:lang='en'/></a>", true},
        {"<a b='&#38;#38;&#x26;amp;&#38;'>&#38;#38;&#x26;amp;<b></b>\r\n \r</a>\n\n", true},
        {"<a xmlns='it&apos;s'/>", false},
        {"<a><!-- b --></a>", false},
        {"<a><b><![CDATA[<]]></b></a>", false},
        {"<a><?b c?></a>", false},
        {"<a/><!-- b -->", false},
        {"<!DOCTYPE a><a/>", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.document);
        ParseError error;
        const TreeOwner tree = parseTree(c.document, SourceEncoding::utf8, error);
        ASSERT_TRUE(tree);
        std::string written = "before";
        EXPECT_EQ(appendPlainTree(written, *tree), c.plain);
        xmlChar* expected = nullptr;
        xmlDocDumpMemoryEnc(tree.get(), &expected, nullptr, "UTF-8");
        const std::string withDeclaration = reinterpret_cast<const char*>(expected);
        xmlFree(expected);
        const std::string plain = c.plain ? withDeclaration.substr(withDeclaration.find('\n') + 1) : "";
        EXPECT_EQ(written, "before" + plain);
        EXPECT_EQ(textIfValid(c.document, *anything).value_or(""), plain);
    }
}

TEST_F(PosixXmlTest, AValidDocumentIsWhatAnyOtherIs) {
    for (const Text text : {
             u"<a/>",
             u"<?xml version='1.0'?>\n<a x='1'><b/></a>\n",
             u"<?xml version='1.0' encoding='UTF-8'?><a x='\u00E9'>\u20AC</a>",
             u"<?xml version='1.0' encoding='iso-8859-1'?><a x='\u00E9\u20AC'><b y='&#233;&lt;'/>\u00FF</a>",
             u"<?xml version='1.0' encoding='UTF-16'?><a x='\u0416'/>",
             u"<?xml version='1.0' standalone='yes'?><a xmlns:p='urn:p' p:x='1'><p:b xmlns='urn:q'><b/></p:b></a>",
             u"<a><!-- no pass --><b x='1'/><b x='2'/><![CDATA[<b/>]]></a>",
         }) {
        SCOPED_TRACE(utf8(text));
        std::vector<std::string> seen[2];
        for (const bool valid : {false, true}) {
            ParseError error;
            const Text pieces[] = {text.substr(0, 3), u"", text.substr(3, 7),
                                   text.substr(std::min<std::size_t>(10, text.size()))};
            const auto document = text.size() < 10 ? xml_->parse({{text}}, valid ? anything_ : nullptr, error)
                                                   : xml_->parse(pieces, valid ? anything_ : nullptr, error);
            ASSERT_TRUE(document) << utf8(error.reason);
            EXPECT_FALSE(document->validate());
            const std::u16string name = folder_.name(u"saved.xml");
            auto& values = seen[valid ? 1 : 0];
            document->save(name);
            values = {utf8(document->xml()), document->utf8(), folder_.bytes(u"saved.xml")};
            // What is asked for after a save is there all the same, and stays when it is asked for again.
            for (int again = 0; again < 2; ++again) {
                for (const Text path : {u"a", u"a/b", u"a/p:b/b", u"b"}) {
                    for (const auto& element : document->select(path)) {
                        values.push_back(utf8(element->name()) + '=' + utf8(element->attribute(u"x").value_or(u"-")));
                    }
                }
            }
            document->save(name);
            values.push_back(folder_.bytes(u"saved.xml"));
        }
        EXPECT_EQ(seen[1], seen[0]);
    }
    // The parser takes a null character for the end.
    EXPECT_TRUE(failure(std::u16string(u"<a/>\0<b", 7)));
}

TEST_F(PosixXmlTest, ErrorsSayWhere) {
    // Positions are those just behind what the parser took in before it gave up.
    const struct {
        Text text;
        Long line;
        Long linePosition;
        Long filePosition;
        Text sourceText;
    } cases[] = {
        {u"<a>\n<b x=1/></a>", 2, 6, 9, u"<b x=1/></a>"},
        {u"<a>\r\n<\u00E9\U0001F4A1></a>", 2, 9, 14, u"<\u00E9\U0001F4A1></a>"},
        {u"<a>\n\n <b></c></a>", 3, 9, 13, u" <b></c></a>"},
        {u"<a>&none;</a>", 1, 10, 9, u"<a>&none;</a>"},
        {u"<a/>\n?", 2, 1, 5, u"?"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(utf8(c.text));
        const ParseError error = failure(c.text);
        EXPECT_EQ(error.line, c.line);
        EXPECT_EQ(error.linePosition, c.linePosition);
        EXPECT_EQ(error.filePosition, c.filePosition);
        EXPECT_EQ(error.sourceText, c.sourceText);
        EXPECT_EQ(error.url, u"");
    }
    const std::u16string longLine = u"<a>" + std::u16string(5000, u'\u00E9') + u"< " + std::u16string(5000, u'\u00E9');
    EXPECT_EQ(failure(longLine + u"\n").sourceText.size(), 100u);  // 100 bytes on either side
    EXPECT_TRUE(
        failure(u"<a u='1' Password='" + std::u16string(300, u'x') + u"<").sourceText.starts_with(u"Password='x"));
    EXPECT_EQ(failure(std::u16string(70'000, u'\n') + u"<a><").line, 70'001);
}

TEST_F(PosixXmlTest, DepthIsBoundedAndSizeIsNot) {
    const auto nested = [](int depth) {
        std::u16string text;
        for (int i = 0; i < depth; ++i) text += u"<a>";
        for (int i = 0; i < depth; ++i) text += u"</a>";
        return text;
    };
    ParseError error;
    EXPECT_TRUE(xml_->parse({{Text(nested(256))}}, nullptr, error)) << utf8(error.reason);
    EXPECT_EQ(failure(nested(257)).reason, u"Elements are nested more than 256 levels deep");

    const std::u16string image(11'000'000, u'A');
    const auto document = xml_->parse({{u"<a x='", image, u"'>", image, u"</a>"}}, nullptr, error);
    ASSERT_TRUE(document) << utf8(error.reason);
    EXPECT_TRUE(document->root()->attribute(u"x") == image);
}

TEST_F(PosixXmlTest, WhatWouldTakeHoursIsRefused) {
    const auto many = [](Text before, int count) {
        std::u16string text;
        for (int i = 0; i < count; ++i) text.append(before).append(toUtf16(std::to_string(i))).append(u"='b'");
        return text;
    };
    const std::u16string attributes = many(u" a", 10'001);
    EXPECT_EQ(failure(u"<a" + attributes + u"/>").reason, u"A tag has more than 10000 attributes");
    // Behind a mistake the parser goes on.
    EXPECT_EQ(failure(u"<a b \"> <a" + attributes + u"/>").reason, u"A tag has more than 10000 attributes");
    EXPECT_EQ(failure(u"<a" + many(u" xmlns:a", 40) + u"><a" + many(u" xmlns:b", 40) + u"/></a>").reason,
              u"More than 64 namespaces are declared");
    std::u16string tags = u"<a>";
    for (int i = 0; i < 100; ++i) tags += u"<a" + many(u" a", 2000) + u"/>";
    EXPECT_EQ(failure(tags).reason, u"Too many tags have hundreds of attributes");
    EXPECT_EQ(failure(u"<a><a" + many(u"/><a b", 100'001)).reason, u"There are more than 100000 different names");
    const std::u16string choices(70'000, u'|');
    EXPECT_EQ(failure(u"<!DOCTYPE a [<!ATTLIST a b (" + choices + u") #IMPLIED>]><a/>").reason,
              u"The document type is longer than 64 KiB");
    ParseError error;
    const std::u16string quoted = u"<!--<a" + attributes + u"--><a" + many(u" a", 10'000) + u"><![CDATA[<a" +
                                  attributes + u"]]><?a <a" + attributes + u"?></a>";
    EXPECT_TRUE(xml_->parse({{Text(quoted)}}, nullptr, error)) << utf8(error.reason);
}

int untilFailure = 0;  ///< the allocation of the parser to fail, counted from 1; 0 for none

bool fails() { return untilFailure > 0 && --untilFailure == 0; }

/// Puts the allocations of libxml2 under the test's control. What a shortage leaves half made is never freed: all that
/// is not free stays known, so that it is not taken for a leak.
class FailingParser {
public:
    FailingParser() {
        xmlMemSetup(
            &release, [](std::size_t size) { return known(fails() ? nullptr : std::malloc(size)); }, &reallocate,
            [](const char* text) { return static_cast<char*>(known(fails() ? nullptr : strdup(text))); });
    }
    ~FailingParser() { xmlMemSetup(std::free, std::malloc, std::realloc, strdup); }

private:
    static std::set<void*>& all() {
        static auto& memory = *new std::set<void*>;
        return memory;
    }
    static void* known(void* memory) {
        if (memory != nullptr) all().insert(memory);
        return memory;
    }
    static void release(void* memory) {
        all().erase(memory);
        std::free(memory);
    }
    static void* reallocate(void* memory, std::size_t size) {
        if (fails()) return nullptr;
        all().erase(memory);
        return known(std::realloc(memory, size));
    }
};

TEST_F(PosixXmlTest, WithoutMemoryNothingIsEmptied) {
    const FailingParser failing;
    for (const std::shared_ptr<Schema>& schema : {std::shared_ptr<Schema>(), anything_}) {
        constexpr Text text = u"<?xml version='1.0' encoding='UTF-8'?><a b='x' c='&amp;&#60;' d='\n'><e>f</e></a>";
        for (int allocation = 1;; ++allocation) {
            bool enough = true;
            untilFailure = allocation;
            try {
                ParseError error;
                const auto document = xml_->parse({{text}}, schema, error);
                ASSERT_TRUE(document) << utf8(error.reason);
                EXPECT_FALSE(document->validate()) << allocation;
                EXPECT_EQ(document->root()->attribute(u"b"), u"x") << allocation;
                EXPECT_EQ(document->root()->attribute(u"c"), u"&<") << allocation;
                EXPECT_EQ(document->root()->attribute(u"d"), u" ") << allocation;
                EXPECT_TRUE(document->utf8().ends_with("d=\" \"><e>f</e></a>\n")) << allocation;
            } catch (const std::bad_alloc&) {
                enough = false;
            }
            if (untilFailure > 0) {
                EXPECT_TRUE(enough);
                EXPECT_GT(allocation, 30);
                untilFailure = 0;
                break;
            }
        }
    }
}

TEST_F(PosixXmlTest, DocumentTypesBringNothingIn) {
    EXPECT_EQ(failure(u"<!DOCTYPE a [<!ENTITY e 'x'>]><a/>").reason, u"Entity declarations are not accepted");
    EXPECT_EQ(failure(u"<!DOCTYPE a [<!ATTLIST a x CDATA 'x'>]><a/>").reason, u"Default attributes are not accepted");

    LoopbackServer server([](const std::string&) { return httpReply("200 OK", "", "<!ENTITY e 'x'>"); });
    const std::u16string type = u"<!DOCTYPE a SYSTEM 'http://" + server.address() + u"/a.dtd'>";
    ParseError error;
    EXPECT_TRUE(xml_->parse({{type, u"<a/>"}}, nullptr, error)) << utf8(error.reason);
    failure(type + u"<a>&e;</a>");
    failure(type + u"<a x='&e;'/>");
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(PosixXmlTest, FilesMayUseAnyKnownEncoding) {
    // Values of a character that has the bytes of "<".
    std::u16string tag = u"<?xml version='1.0'?><a";
    for (int i = 0; i <= 10'000; ++i) tag += u" a" + toUtf16(std::to_string(i)) + u"='\u3C3C'";
    const auto wide = [](Text text, std::size_t width, std::size_t place) {
        std::string bytes;
        for (const char16_t c : text) {
            std::string unit(width, '\0');
            unit[place] = static_cast<char>(c);
            unit[place ^ 1] = static_cast<char>(c >> 8);
            bytes += unit;
        }
        return bytes;
    };
    const struct {
        std::string bytes;
        bool loads;
    } cases[] = {
        // More attributes than are compared with each other.
        {wide(u"\uFEFF" + tag + u"/>", 2, 0), false},
        {wide(tag + u"/>", 2, 1), false},
        {wide(tag + u"/>", 4, 0), false},
        {wide(u"\uFEFF<!--" + tag + u"--><a/>", 2, 1), true},
        {"<?xml version='1.0' encoding='iso-8859-15'?><a x='\xA4'/>", true},
        {"<?xml version='1.0' encoding='shift_jis'?><a x='\xA4'/>", true},
        {"<?xml version='1.0' encoding='klingon'?><a/>", false},
        {std::string("<a/>\0<b", 7), false},
    };
    for (const auto& c : cases) {
        ParseError error;
        EXPECT_EQ(xml_->load(folder_.create(u"file.xml", c.bytes), nullptr, error) != nullptr, c.loads)
            << c.bytes.substr(0, 100);
        EXPECT_EQ(static_cast<bool>(error), !c.loads) << utf8(error.reason);
    }
}

constexpr const char* rowsSchema = R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" targetNamespace="WebStore"
    elementFormDefault="qualified">
  <xs:element name="Store"><xs:complexType><xs:sequence>
    <xs:element name="Row" maxOccurs="unbounded"><xs:complexType>
      <xs:attribute name="n" type="xs:int"/>
    </xs:complexType></xs:element>
  </xs:sequence></xs:complexType></xs:element>
</xs:schema>)";

TEST_F(PosixXmlTest, ValidationErrorsSayWhere) {
    const auto schema = store::SchemaSource().load(systemEnvironment(), folder_.create(u"rows.xsd", rowsSchema));
    std::string text = "<Store xmlns='WebStore'>\n";
    for (int line = 2; line <= 100'000; ++line) text += line == 70'000 ? "<Row n='seventy'/>\n" : "<Row n='1'/>\n";
    const std::u16string name = folder_.create(u"rows.xml", text + "</Store>");
    ParseError error;
    const auto document = xml_->load(name, schema, error);
    ASSERT_TRUE(document);
    error = document->validate();
    EXPECT_EQ(error.line, 70'000);
    EXPECT_NE(error.reason.find(u"seventy"), std::u16string::npos) << utf8(error.reason);
    EXPECT_NE(error.sourceText.find(u"n=\"seventy\""), std::u16string::npos) << utf8(error.sourceText);
    EXPECT_EQ(error.url, name);
}

TEST_F(PosixXmlTest, DocumentsDoNotChooseTheirSchema) {
    const auto schema = store::SchemaSource().load(systemEnvironment(), folder_.create(u"rows.xsd", rowsSchema));
    const std::u16string other = folder_.create(
        u"other.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='Other'/></xs:schema>");
    ParseError error;
    const auto document = xml_->parse({{u"<Other xmlns:i='http://www.w3.org/2001/XMLSchema-instance' "
                                        u"i:noNamespaceSchemaLocation='",
                                        Text(other), u"'/>"}},
                                      schema, error);
    EXPECT_NE(document->validate().code, 0);
}

TEST_F(PosixXmlTest, SchemasComeFromFilesAndUrls) {
    LoopbackServer server([](const std::string& request) {
        return request.starts_with("GET /rows.xsd?") ? httpReply("200 OK", "", rowsSchema)
                                                     : httpReply("404 Not Found", "", rowsSchema);
    });
    folder_.create(u"rows \u00E9.xsd", rowsSchema);
    const std::u16string path = folder_.path().u16string();
    for (const std::u16string& location :
         {path + u"/rows \u00E9.xsd", u"file://" + path + u"/rows%20%c3%A9.xsd",
          u"FILE://localhost" + path + u"/rows \u00E9.xsd", u"HTTP://" + server.address() + u"/rows.xsd?v=1"}) {
        ParseError error;
        const auto document = xml_->parse({{u"<Store xmlns='WebStore'><Row n='x'/></Store>"}},
                                          store::SchemaSource().load(systemEnvironment(), location), error);
        EXPECT_NE(document->validate().code, 0) << utf8(location);
    }
    expectError([&] { store::SchemaSource().load(systemEnvironment(), u"file://" + path + u"/none.xsd"); }, 53,
                path + u"/none.xsd");
    expectError(
        [&] { store::SchemaSource().load(systemEnvironment(), u"http://u:secret@" + server.address() + u"/none.xsd"); },
        53, u": http://" + server.address() + u"/none.xsd");
}

TEST_F(PosixXmlTest, ASchemaStandsAlone) {
    folder_.create(u"rows.xsd", rowsSchema);
    const std::u16string name =
        folder_.create(u"outer.xsd",
                       "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='WebStore'>\n"
                       "<xs:include schemaLocation='rows.xsd'/></xs:schema>");
    expectError([&] { store::SchemaSource().load(systemEnvironment(), name); }, applicationError,
                u"another schema document");
    expectError([&] { store::SchemaSource().load(systemEnvironment(), name); }, applicationError, u"(line 2)");
    const std::string start = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' targetNamespace='WebStore'>";
    const std::u16string redefines =
        folder_.create(u"outer.xsd", start + "<xs:redefine schemaLocation='rows.xsd'/></xs:schema>");
    expectError([&] { store::SchemaSource().load(systemEnvironment(), redefines); }, applicationError,
                u"another schema document");
    // A namespace that is only named is fetched from nowhere.
    const std::u16string names = folder_.create(
        u"outer.xsd", start + "<xs:import namespace='urn:other'/><xs:element name='Store'/></xs:schema>");
    EXPECT_TRUE(store::SchemaSource().load(systemEnvironment(), names));
}

}  // namespace
}  // namespace quill1xml::platform
