#include "platform/windows/errors.hpp"
#include "platform/windows/files.hpp"
#include "platform/windows/parts.hpp"
#include "platform/windows/text_encoding.hpp"
#include "platform/windows/xml_parsing.hpp"
#include "quill1xml/text.hpp"
#include "text/declared_encoding.hpp"

namespace quill1xml::platform {
namespace {

/// A document's text without the encoding in its declaration, where some versions leave it.
std::u16string withoutEncoding(std::u16string text) {
    constexpr Text name = u" encoding=";
    const std::size_t start = text.find(name);
    const std::size_t value = start + name.size();
    if (!text.starts_with(u"<?xml ") || start >= text.find(u"?>")) return text;
    return text.erase(start, text.find(text[value], value + 1) + 1 - start);
}

class MsxmlDocument final : public Document {
public:
    MsxmlDocument(com::ComPtr<IXMLDOMDocument2> document, std::shared_ptr<MsxmlSchema> schema, Text url)
        : document_(std::move(document)), schema_(std::move(schema)), url_(url) {}

    std::shared_ptr<Element> root() const override { return wrapNode(rootNode().get()); }

    std::vector<std::shared_ptr<Element>> select(Text path) const override {
        std::size_t slash = path.find(u'/');
        std::vector<com::ComPtr<IXMLDOMNode>> level{rootNode()};
        if (!hasName(level.front().get(), path.substr(0, slash))) return {};
        while (slash != Text::npos) {
            path.remove_prefix(slash + 1);
            slash = path.find(u'/');
            std::vector<com::ComPtr<IXMLDOMNode>> next;
            for (const auto& parent : level) {
                for (auto& node : childElements(parent.get())) {
                    if (hasName(node.get(), path.substr(0, slash))) next.push_back(std::move(node));
                }
            }
            level = std::move(next);
        }
        std::vector<std::shared_ptr<Element>> elements;
        for (const auto& node : level) elements.push_back(wrapNode(node.get()));
        return elements;
    }

    std::u16string xml() const override {
        com::Bstr buffer;
        check(document_->get_xml(buffer.put()), document_);
        return withoutEncoding(std::u16string(buffer.text()));
    }

    void save(Text fileName) const override {
        std::u16string text = xml();
        const std::u16string declared = encoding();
        if (!declared.empty()) {
            // It follows the version, the first quoted value.
            const std::size_t afterVersion = text.find(u'"', text.find(u'"') + 1) + 1;
            text.insert(afterVersion, u" encoding=\"" + declared + u"\"");
        }
        writeBytes(fileName, encodeXml(text, declared));
    }

    ParseError validate() override {
        if (!schema_) return {};
        com::ComPtr<IXMLDOMParseError> source;
        check(document_->validate(source.put()), document_);
        ParseError error = source ? parseErrorOf(source.get()) : ParseError();
        if (error) error.url = url_;
        return error;
    }

    std::string utf8() const override { return toUtf8(xml()); }

    com::ComPtr<IXMLDOMDocument2> document() const { return document_; }

private:
    com::ComPtr<IXMLDOMNode> rootNode() const {
        com::ComPtr<IXMLDOMElement> element;
        check(document_->get_documentElement(element.put()), document_);
        return com::ComPtr<IXMLDOMNode>(element.get());
    }

    /// The encoding in the XML declaration; empty when it declares none.
    std::u16string encoding() const {
        com::ComPtr<IXMLDOMNode> declaration;
        com::Bstr content;
        check(document_->get_firstChild(declaration.put()), document_);
        if (!hasName(declaration.get(), u"xml")) return {};
        check(declaration->get_text(content.put()), declaration);
        return toUtf16(declaredEncoding("<?xml " + toUtf8(content.text())));
    }

    com::ComPtr<IXMLDOMDocument2> document_;
    std::shared_ptr<MsxmlSchema> schema_;
    std::u16string url_;
};

std::unique_ptr<Document> wrap(com::ComPtr<IXMLDOMDocument2> document, std::shared_ptr<MsxmlSchema> schema, Text url) {
    if (!document) return nullptr;
    return std::make_unique<MsxmlDocument>(std::move(document), std::move(schema), url);
}

class Msxml final : public Xml {
public:
    std::unique_ptr<Document> parse(std::span<const Text> pieces, std::shared_ptr<Schema> schema,
                                    ParseError& error) override {
        auto attached = std::dynamic_pointer_cast<MsxmlSchema>(schema);
        std::vector<Text> text(pieces.begin(), pieces.end());
        if (!text.empty() && text.front().starts_with(u'\uFEFF')) text.front().remove_prefix(1);
        auto document = parseText(com::Bstr(text), classFor(attached.get()), attached.get(), error);
        return wrap(std::move(document), std::move(attached), {});
    }

    std::unique_ptr<Document> parseBytes(std::string bytes, SourceEncoding encoding, ParseError& error) override {
        if (encoding == SourceEncoding::declared) {
            const std::span source(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            return wrap(platform::parseBytes(source, nullptr, error), nullptr, {});
        }
        const std::size_t mark = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
        const com::Bstr text = com::Bstr::fromUtf8(std::string_view(bytes).substr(mark));
        std::string().swap(bytes);
        return wrap(parseText(text, documentClass3, nullptr, error), nullptr, {});
    }

    std::unique_ptr<Document> load(Text fileName, std::shared_ptr<Schema> schema, ParseError& error) override {
        auto attached = std::dynamic_pointer_cast<MsxmlSchema>(schema);
        com::ComPtr<IXMLDOMDocument2> document;
        try {
            document = platform::parseBytes(readBytes(fileName), attached.get(), error);
        } catch (const Error& failure) {
            error.code = failure.number();
            error.reason = failure.description();
        }
        if (error) error.url = fileName;
        return wrap(std::move(document), std::move(attached), fileName);
    }

    std::shared_ptr<Schema> compile(std::unique_ptr<Document> schema, Text targetNamespace,
                                    ParseError& error) override {
        return compileMsxmlSchema(dynamic_cast<const MsxmlDocument&>(*schema).document(), targetNamespace, error);
    }
};

}  // namespace

IDispatch* documentDispatch(const Document& document) {
    return dynamic_cast<const MsxmlDocument&>(document).document().get();
}

std::shared_ptr<Xml> makeXml() { return std::make_shared<Msxml>(); }

}  // namespace quill1xml::platform
