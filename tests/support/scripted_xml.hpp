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
class ScriptedXml : public platform::Xml {
public:
    platform::ParseError parseError;                 ///< of store documents
    platform::ParseError validateError;              ///< of store documents
    std::vector<std::u16string> schemas;             ///< the locations asked for
    std::map<std::u16string, std::u16string> files;  ///< what load finds
    std::map<std::u16string, std::u16string> saved;  ///< what documents saved

    std::unique_ptr<platform::Document> parse(std::u16string text, std::shared_ptr<platform::Schema> schema,
                                              platform::ParseError& error) override {
        if (schema == nullptr) return real_->parse(std::move(text), nullptr, error);
        error = parseError;
        if (error) return nullptr;
        auto document = real_->parse(text, nullptr, error);
        return document ? std::make_unique<Scripted>(*this, std::move(document), text) : nullptr;
    }

    std::unique_ptr<platform::Document> load(Text fileName, std::shared_ptr<platform::Schema> schema,
                                             platform::ParseError& error) override {
        return parse(files[std::u16string(fileName)], std::move(schema), error);
    }

    std::shared_ptr<platform::Schema> loadSchema(Text location) override {
        schemas.emplace_back(location);
        return std::make_shared<platform::Schema>();
    }

private:
    class Scripted : public platform::Document {
    public:
        Scripted(ScriptedXml& script, std::unique_ptr<platform::Document> document, Text text)
            : script_(script), document_(std::move(document)), text_(text) {}
        std::shared_ptr<platform::Element> root() const override { return document_->root(); }
        std::vector<std::shared_ptr<platform::Element>> select(Text path) const override {
            return document_->select(path);
        }
        std::u16string xml() const override { return text_; }
        void save(Text fileName) const override { script_.saved[std::u16string(fileName)] = text_; }
        platform::ParseError validate() override { return script_.validateError; }

    private:
        ScriptedXml& script_;
        std::unique_ptr<platform::Document> document_;
        std::u16string text_;
    };

    std::shared_ptr<platform::Xml> real_ = platform::systemEnvironment().xml;
};

/// The other fakes with a scripted parser.
struct ScriptedEnvironment : FakeEnvironment {
    std::shared_ptr<ScriptedXml> xml = std::make_shared<ScriptedXml>();

    platform::Environment environment() const { return {files, log, clock, http, xml, system}; }
};

/// The last lines of the log's entries: which method reported, in order.
inline std::vector<std::string> labels(const FakeLog& log) {
    std::vector<std::string> lines;
    for (const std::u16string& entry : log.entries) lines.push_back(utf8(entry.substr(entry.rfind(u'\n') + 1)));
    return lines;
}

}  // namespace quill1xml::testing
