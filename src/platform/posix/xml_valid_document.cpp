#include "platform/posix/xml_valid_document.hpp"

#include "platform/posix/files.hpp"
#include "platform/posix/xml_document.hpp"
#include "platform/posix/xml_one_pass.hpp"
#include "quill1xml/text.hpp"
#include "text/declared_encoding.hpp"

#include <new>
#include <utility>

namespace quill1xml::platform {
namespace {

class ValidDocument final : public Document {
public:
    ValidDocument(std::string_view source, std::string text, std::shared_ptr<const XsdSchema> schema)
        : source_(source), text_(std::move(text)), schema_(std::move(schema)) {}

    std::shared_ptr<Element> root() const override { return whole().root(); }

    std::vector<std::shared_ptr<Element>> select(Text path) const override { return whole().select(path); }

    std::u16string xml() const override { return toUtf16(text_); }

    std::string utf8() const override { return text_; }

    void save(Text fileName) const override {
        if (!declaredEncoding(source_).empty()) return whole().save(fileName);
        writeBytes(fileName, text_);
    }

    ParseError validate() override { return {}; }

private:
    const Document& whole() const {
        if (whole_ == nullptr) {
            ParseError error;
            whole_ = parseUtf8(source_, schema_, error);
            // It was parsed before.
            if (whole_ == nullptr) throw std::bad_alloc();
        }
        return *whole_;
    }

    std::string source_;
    std::string text_;
    std::shared_ptr<const XsdSchema> schema_;
    mutable std::unique_ptr<Document> whole_;
};

}  // namespace

std::unique_ptr<Document> parseValid(std::string_view document, std::shared_ptr<const XsdSchema> schema) {
    auto text = textIfValid(document, *schema);
    if (!text) return nullptr;
    return std::make_unique<ValidDocument>(document, *std::move(text), std::move(schema));
}

}  // namespace quill1xml::platform
