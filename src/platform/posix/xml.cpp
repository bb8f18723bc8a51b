#include "platform/posix/files.hpp"
#include "platform/posix/parts.hpp"
#include "platform/posix/xml_document.hpp"
#include "platform/posix/xml_valid_document.hpp"
#include "text/utf.hpp"

#include <utility>

#include <libxml/parser.h>

namespace quill1xml::platform {
namespace {

std::string_view bytesOf(const Bytes& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

std::string_view withoutMark(std::string_view utf8) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (utf8.starts_with(mark)) utf8.remove_prefix(mark.size());
    return utf8;
}

class LibXml final : public Xml {
public:
    LibXml() { xmlInitParser(); }

    std::unique_ptr<Document> parse(std::span<const Text> pieces, std::shared_ptr<Schema> schema,
                                    ParseError& error) override {
        std::string utf8;
        std::size_t size = 0;
        for (const Text piece : pieces) size += piece.size();
        utf8.reserve(size);
        bool wellFormed = true;
        for (const Text piece : pieces) wellFormed = appendUtf8(utf8, piece) && wellFormed;
        if (!wellFormed) {
            error = {};
            error.code = XML_ERR_INVALID_CHAR;
            error.reason = u"The text holds half a surrogate pair, which is no character";
            return nullptr;
        }
        const auto xsd = std::dynamic_pointer_cast<const XsdSchema>(std::move(schema));
        auto valid = xsd ? parseValid(withoutMark(utf8), xsd) : nullptr;
        if (valid == nullptr) return parseUtf8(withoutMark(utf8), xsd, error);
        error = {};
        return valid;
    }

    std::unique_ptr<Document> parseBytes(std::string bytes, SourceEncoding encoding, ParseError& error) override {
        if (encoding == SourceEncoding::utf8) return parseUtf8(withoutMark(bytes), nullptr, error);
        TreeOwner tree = parseTree(bytes, encoding, error);
        return tree ? makeDocument(std::move(tree), nullptr, {}) : nullptr;
    }

    std::unique_ptr<Document> load(Text fileName, std::shared_ptr<Schema> schema, ParseError& error) override {
        TreeOwner tree;
        try {
            tree = parseTree(bytesOf(readBytes(fileName)), SourceEncoding::declared, error);
        } catch (const Error& failure) {
            error = {};
            error.code = XML_IO_LOAD_ERROR;
            error.reason = failure.description();
        }
        if (error) error.url = fileName;
        return tree ? makeDocument(std::move(tree), std::dynamic_pointer_cast<XsdSchema>(schema), fileName) : nullptr;
    }

    std::shared_ptr<Schema> compile(std::unique_ptr<Document> schema, Text, ParseError& error) override {
        return XsdSchema::compile(std::move(schema), error);
    }
};

}  // namespace

std::shared_ptr<Xml> makeXml() { return std::make_shared<LibXml>(); }

}  // namespace quill1xml::platform
