// An XML parser for store documents whose failures a test writes, and whose documents keep the text they came from.
#pragma once

#include "support/fake_environment.hpp"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml::testing {

/// Parses with the system's parser. A document that comes with a schema is a store document: it follows the script.
class ScriptedXml : public ports::Xml {
public:
    ports::ParseError parseError;                    ///< of store documents
    ports::ParseError validateError;                 ///< of store documents
    std::map<std::u16string, std::u16string> files;  ///< what load finds
    std::map<std::u16string, std::u16string> saved;  ///< what documents saved
    int compiles = 0;                                ///< of schemas

    std::unique_ptr<ports::Document> parse(std::span<const Text> pieces, std::shared_ptr<ports::Schema> schema,
                                           ports::ParseError& error) override {
        if (schema == nullptr) return real_->parse(pieces, nullptr, error);
        error = parseError;
        if (error) return nullptr;
        std::u16string text;
        for (const Text piece : pieces) text += piece;
        auto document = real_->parse(pieces, nullptr, error);
        return document ? std::make_unique<Scripted>(*this, std::move(document), text) : nullptr;
    }

    std::unique_ptr<ports::Document> parseBytes(std::string bytes, ports::SourceEncoding encoding,
                                                ports::ParseError& error) override {
        return real_->parseBytes(std::move(bytes), encoding, error);
    }

    std::unique_ptr<ports::Document> load(Text fileName, std::shared_ptr<ports::Schema> schema,
                                          ports::ParseError& error) override {
        return parse({{files[std::u16string(fileName)]}}, std::move(schema), error);
    }

    std::shared_ptr<ports::Schema> compile(std::unique_ptr<ports::Document>, Text, ports::ParseError&) override {
        ++compiles;
        return std::make_shared<ports::Schema>();
    }

private:
    class Scripted : public ports::Document {
    public:
        Scripted(ScriptedXml& script, std::unique_ptr<ports::Document> document, Text text)
            : script_(script), document_(std::move(document)), text_(text) {}
        std::shared_ptr<ports::Element> root() const override { return document_->root(); }
        std::vector<std::shared_ptr<ports::Element>> select(Text path) const override {
            return document_->select(path);
        }
        std::u16string xml() const override { return text_; }
        std::string utf8() const override { return toUtf8(text_); }
        void save(Text fileName) const override { script_.saved[std::u16string(fileName)] = text_; }
        ports::ParseError validate() override { return script_.validateError; }

    private:
        ScriptedXml& script_;
        std::unique_ptr<ports::Document> document_;
        std::u16string text_;
    };

    std::shared_ptr<ports::Xml> real_ = ports::systemEnvironment().xml;
};

/// Any file but "none" is a schema; those asked for are remembered.
class SchemaFiles : public FakeFiles {
public:
    std::vector<std::u16string> schemas;
    Bytes readBytes(Text fileName) override {
        if (fileName == u"none" || bytes.contains(std::u16string(fileName))) return FakeFiles::readBytes(fileName);
        schemas.emplace_back(fileName);
        return {'<', 'a', '/', '>'};
    }
};

/// The other fakes with a scripted parser.
struct ScriptedEnvironment : FakeEnvironment {
    std::shared_ptr<ScriptedXml> xml = std::make_shared<ScriptedXml>();
    std::shared_ptr<SchemaFiles> schemaFiles = std::make_shared<SchemaFiles>();

    ScriptedEnvironment() { files = schemaFiles; }

    ports::Environment environment() const { return {files, log, clock, http, xml, system}; }
};

/// The last lines of the log's entries: which method reported, in order.
inline std::vector<std::string> labels(const FakeLog& log) {
    std::vector<std::string> lines;
    for (const std::u16string& entry : log.entries) lines.push_back(utf8(entry.substr(entry.rfind(u'\n') + 1)));
    return lines;
}

}  // namespace quill1xml::testing
