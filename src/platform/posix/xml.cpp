#include "platform/posix/files.hpp"
#include "platform/posix/parts.hpp"
#include "platform/posix/xml_document.hpp"
#include "text/declared_encoding.hpp"
#include "text/utf.hpp"

#include <new>
#include <utility>

#include <libxml/parser.h>

namespace quill1xml::platform {
namespace {

std::string_view bytesOf(const Bytes& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

/// Bytes of UTF-8 as a count of UTF-16 units.
Long utf16Length(std::string_view utf8) {
    Long length = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<std::uint8_t>(c);
        if ((byte & 0xC0) != 0x80) length += byte >= 0xF0 ? 2 : 1;
    }
    return length;
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
        return parseUtf8(utf8, schema, error);
    }

    std::unique_ptr<Document> parseBytes(std::string bytes, SourceEncoding encoding, ParseError& error) override {
        if (encoding == SourceEncoding::utf8) return parseUtf8(bytes, nullptr, error);
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

private:
    static std::unique_ptr<Document> parseUtf8(std::string_view utf8, const std::shared_ptr<Schema>& schema,
                                               ParseError& error) {
        constexpr std::string_view mark = "\xEF\xBB\xBF";
        if (utf8.starts_with(mark)) utf8.remove_prefix(mark.size());
        TreeOwner tree = parseTree(utf8, SourceEncoding::utf8, error);
        if (!tree) {
            error.filePosition = utf16Length(utf8.substr(0, static_cast<std::size_t>(error.filePosition)));
            return nullptr;
        }
        // The declaration did not matter for reading, but it does for saving.
        const std::string encoding(declaredEncoding(utf8));
        if (!encoding.empty() && (tree->encoding = xmlStrdup(BAD_CAST encoding.c_str())) == nullptr) {
            throw std::bad_alloc();
        }
        return makeDocument(std::move(tree), std::dynamic_pointer_cast<XsdSchema>(schema), {});
    }
};

}  // namespace

std::shared_ptr<Xml> makeXml() { return std::make_shared<LibXml>(); }

}  // namespace quill1xml::platform
