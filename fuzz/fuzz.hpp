// What the fuzz targets share: a world without a way out, and what counts as a find.
//
// A target takes bytes and may fail with the library's Error only. Any other exception ends the process, and so does an
// internal error that a method has reported, since that is another exception in disguise.
#pragma once

#include "quill1xml/text.hpp"
#include "support/scripted_xml.hpp"

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace quill1xml::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// The first line, and what comes after it.
inline std::pair<std::string_view, std::string_view> firstLine(std::string_view text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    return {text.substr(0, end), text.substr(std::min(end + 1, text.size()))};
}

[[noreturn]] inline void find(const std::string& what) {
    std::fprintf(stderr, "find: %s\n", what.c_str());
    std::abort();
}

/// The system's parser, whose documents are never written to disk.
class DiskFreeXml : public testing::ScriptedXml {
public:
    std::u16string archive;  ///< the folder that every saved document must stay in, where one is given

    std::unique_ptr<ports::Document> parse(std::span<const Text> pieces, std::shared_ptr<ports::Schema> schema,
                                           ports::ParseError& error) override {
        return diskFree(ScriptedXml::parse(pieces, std::move(schema), error));
    }

    std::unique_ptr<ports::Document> parseBytes(std::string bytes, ports::SourceEncoding encoding,
                                                ports::ParseError& error) override {
        return diskFree(ScriptedXml::parseBytes(std::move(bytes), encoding, error));
    }

private:
    class DiskFree : public ports::Document {
    public:
        DiskFree(const DiskFreeXml& xml, std::unique_ptr<ports::Document> document)
            : xml_(xml), document_(std::move(document)) {}
        std::shared_ptr<ports::Element> root() const override { return document_->root(); }
        std::vector<std::shared_ptr<ports::Element>> select(Text path) const override {
            return document_->select(path);
        }
        std::u16string xml() const override { return document_->xml(); }
        std::string utf8() const override { return document_->utf8(); }
        void save(Text fileName) const override {
            if (xml_.archive.empty()) return;
            const std::u16string start = xml_.archive + u"\\WebStore";
            const bool inside = fileName.starts_with(start) && fileName.find(u"..") == Text::npos &&
                                fileName.find_first_of(u"\\/", start.size()) == Text::npos;
            if (!inside) find("leaves the archive: " + toUtf8(fileName));
        }
        ports::ParseError validate() override { return document_->validate(); }

    private:
        const DiskFreeXml& xml_;
        std::unique_ptr<ports::Document> document_;
    };

    std::unique_ptr<ports::Document> diskFree(std::unique_ptr<ports::Document> document) const {
        return document ? std::make_unique<DiskFree>(*this, std::move(document)) : nullptr;
    }
};

struct World : testing::FakeEnvironment {
    std::shared_ptr<DiskFreeXml> xml = std::make_shared<DiskFreeXml>();

    ports::Environment environment() const { return {files, log, clock, http, xml, system}; }

    /// Requires that no method has met an exception that it does not know.
    void inspect() const {
        for (const std::u16string& entry : log->entries) {
            for (const std::u16string_view text : {u"Internal error", u"Out of memory"}) {
                const bool own = entry.starts_with(u"\r\nError Number: 51. \r\nError Source: Quill1XML. \r\n") ||
                                 entry.starts_with(u"\r\nError Number: 7. \r\nError Source: Quill1XML. \r\n");
                if (own && entry.find(text) != std::u16string::npos) find(toUtf8(entry));
            }
        }
    }
};

/// Runs a step that may end in an Error.
template <class Step>
void attempt(const Step& step) {
    try {
        step();
    } catch (const Error&) {
    }
}

}  // namespace quill1xml::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
