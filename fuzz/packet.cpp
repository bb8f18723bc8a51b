// A document that is to be sent: the text that is made in one pass against that of its tree.
#include "fuzz.hpp"
#include "platform/posix/xml_document.hpp"
#include "platform/posix/xml_one_pass.hpp"
#include "platform/posix/xml_schema.hpp"
#include "quill1xml/schema.hpp"

using namespace quill1xml;

namespace {

std::shared_ptr<platform::XsdSchema> compiled(std::string schema) {
    const auto xml = ports::systemEnvironment().xml;
    ports::ParseError error;
    auto document = xml->parseBytes(std::move(schema), ports::SourceEncoding::declared, error);
    return std::dynamic_pointer_cast<platform::XsdSchema>(xml->compile(std::move(document), u"WebStore", error));
}

void compare(std::string_view document, const std::shared_ptr<platform::XsdSchema>& schema) {
    const auto text = platform::textIfValid(document, *schema);
    if (!text) return;
    ports::ParseError error;
    const auto tree = platform::parseUtf8(document, schema, error);
    if (tree == nullptr) fuzz::find("not well-formed: " + toUtf8(error.reason));
    if (const ports::ParseError invalid = tree->validate()) fuzz::find("not valid: " + toUtf8(invalid.reason));
    if (tree->utf8() != *text) fuzz::find("not the same:\n" + *text + tree->utf8());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto store = compiled(storeSchema(SchemaDialect::xsd));
    static const auto anything =
        compiled("<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a'/></xs:schema>");
    const std::string_view document = fuzz::textOf(data, size);
    for (const auto& schema : {store, anything}) compare(document, schema);
    return 0;
}
