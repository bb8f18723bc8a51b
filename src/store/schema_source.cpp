#include "store/schema_source.hpp"

#include "text/numbers.hpp"
#include "text/url.hpp"

#include <utility>

namespace quill1xml::store {
namespace {

constexpr Text documentNamespace = u"WebStore";

struct Source {
    std::u16string name;  ///< as it may be shown
    std::string content;
};

Source fetch(ports::Http& http, Text url) {
    constexpr int ok = 200;
    ports::HttpReply reply = http.get(url);
    std::u16string name = printableUrl(url);
    if (reply.status == ok) return {std::move(name), std::move(reply.body)};
    name.append(u" (HTTP status ");
    appendInteger(name, reply.status);
    throw runtimeError(RuntimeError::fileNotFound, name.append(u")"));
}

Source read(const ports::Environment& environment, Text location) {
    if (isHttpUrl(location)) return fetch(*environment.http, location);
    ports::Files& files = *environment.files;
    const Bytes bytes = files.readBytes(isFileUrl(location) ? files.fileOfUrl(location) : std::u16string(location));
    return {std::u16string(location), std::string(bytes.begin(), bytes.end())};
}

[[noreturn]] void broken(Text name, Text reason, Long line) {
    std::u16string description = u"The schema ";
    description.append(name).append(u" cannot be used: ").append(reason);
    if (line != 0) {
        description.append(u" (line ");
        appendInteger(description, line);
        description.push_back(u')');
    }
    throw Error(applicationError, u"Quill1XML.Store.Load()", description);
}

/// Refuses a schema that would fetch another document.
void refuseReferences(const ports::Document& schema, Text name) {
    for (const auto& element : schema.root()->children()) {
        const std::u16string qualified = element->name();
        const Text local = Text(qualified).substr(qualified.find(u':') + 1);
        const bool refers = local == u"include" || local == u"import" || local == u"redefine";
        if (refers && element->attribute(u"schemaLocation")) {
            broken(name, u"it refers to another schema document; put all declarations into one", element->line());
        }
    }
}

}  // namespace

std::shared_ptr<ports::Schema> loadSchema(const ports::Environment& environment, Text location) {
    if (location.empty()) {
        throw runtimeError(RuntimeError::invalidProcedureCall, u"no schema source was given to Create, Send or XML");
    }
    Source source = read(environment, location);
    ports::Xml& xml = *environment.xml;
    ports::ParseError error;
    auto document = xml.parseBytes(std::move(source.content), ports::SourceEncoding::declared, error);
    if (document == nullptr) broken(source.name, error.reason, error.line);
    refuseReferences(*document, source.name);
    auto schema = xml.compile(std::move(document), documentNamespace, error);
    if (schema == nullptr) broken(source.name, error.reason, error.line);
    return schema;
}

}  // namespace quill1xml::store
