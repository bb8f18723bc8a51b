#include "platform/declared_encoding.hpp"
#include "platform/posix/files.hpp"
#include "platform/posix/http.hpp"
#include "platform/posix/parts.hpp"
#include "platform/posix/xml_document.hpp"
#include "quill1xml/text.hpp"
#include "text/letter_case.hpp"

#include <algorithm>

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

bool startsWith(Text text, Text prefix) { return equalIgnoringCase(text.substr(0, prefix.size()), prefix); }

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// The file name in what follows "file://": the host, which may only be this one, is left out.
std::u16string fileOfUrl(Text afterScheme) {
    constexpr Text thisHost = u"localhost/";
    if (startsWith(afterScheme, thisHost)) afterScheme.remove_prefix(thisHost.size() - 1);
    const std::string encoded = toUtf8(afterScheme);
    std::string name;
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        const bool escape = encoded[i] == '%' && i + 2 < encoded.size() && hexDigit(encoded[i + 1]) >= 0 &&
                            hexDigit(encoded[i + 2]) >= 0;
        name.push_back(escape ? static_cast<char>(hexDigit(encoded[i + 1]) << 4 | hexDigit(encoded[i + 2]))
                              : encoded[i]);
        if (escape) i += 2;
    }
    return toUtf16(name);
}

class LibXml final : public Xml {
public:
    explicit LibXml(std::shared_ptr<CurlHttp> http) : http_(std::move(http)) { xmlInitParser(); }

    std::unique_ptr<Document> parse(std::u16string text, std::shared_ptr<Schema> schema, ParseError& error) override {
        const std::string utf8 = toUtf8(Text(text).substr(text.starts_with(u'\uFEFF') ? 1 : 0));
        std::u16string().swap(text);
        TreeOwner tree = parseTree(utf8, SourceEncoding::utf8, error);
        if (!tree) {
            error.filePosition =
                utf16Length(std::string_view(utf8).substr(0, static_cast<std::size_t>(error.filePosition)));
            return nullptr;
        }
        // The declaration did not matter for reading, but it does for saving.
        const std::string encoding(declaredEncoding(utf8));
        if (!encoding.empty()) tree->encoding = xmlStrdup(BAD_CAST encoding.c_str());
        return makeDocument(std::move(tree), std::dynamic_pointer_cast<XsdSchema>(schema), {});
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

    std::shared_ptr<Schema> loadSchema(Text location) override {
        constexpr Text fileScheme = u"file://";
        if (startsWith(location, u"http://") || startsWith(location, u"https://")) return fetchSchema(location);
        const Bytes bytes = readBytes(startsWith(location, fileScheme) ? fileOfUrl(location.substr(fileScheme.size()))
                                                                       : std::u16string(location));
        return std::make_shared<XsdSchema>(bytesOf(bytes), location);
    }

private:
    std::shared_ptr<Schema> fetchSchema(Text url) {
        constexpr int ok = 200;
        const HttpReply reply = http_->get(url);
        const std::u16string name = printableUrl(url);
        if (reply.status != ok) {
            throw runtimeError(RuntimeError::fileNotFound,
                               name + u" (HTTP status " + toUtf16(std::to_string(reply.status)) + u")");
        }
        return std::make_shared<XsdSchema>(reply.body, name);
    }

    std::shared_ptr<CurlHttp> http_;
};

}  // namespace

std::shared_ptr<Xml> makeXml(std::shared_ptr<CurlHttp> http) { return std::make_shared<LibXml>(std::move(http)); }

}  // namespace quill1xml::platform
