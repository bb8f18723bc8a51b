#include "store/schema_source.hpp"

#include "text/numbers.hpp"
#include "text/url.hpp"

#include <utility>

namespace quill1xml::store {
namespace {

constexpr Text documentNamespace = u"WebStore";

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

std::shared_ptr<ports::Schema> compile(ports::Xml& xml, const std::string& content, Text name) {
    ports::ParseError error;
    auto document = xml.parseBytes(content, ports::SourceEncoding::declared, error);
    if (document == nullptr) broken(name, error.reason, error.line);
    refuseReferences(*document, name);
    auto schema = xml.compile(std::move(document), documentNamespace, error);
    if (schema == nullptr) broken(name, error.reason, error.line);
    return schema;
}

}  // namespace

SchemaSource::Found SchemaSource::ask(ports::Http& http, Text url) {
    constexpr int ok = 200;
    constexpr int notModified = 304;
    const bool known = schema_ != nullptr;
    if (known && validators_.empty() && sendings_ > 0 && asked_) return {.name = {}, .content = {}, .same = true};
    ports::HttpReply reply = http.get(url, known ? validators_ : ports::Validators());
    asked_ = true;
    if (known && reply.status == notModified) return {.name = {}, .content = {}, .same = true};
    std::u16string name = printableUrl(url);
    if (reply.status == ok) {
        validators_ = std::move(reply.validators);
        return {.name = std::move(name), .content = std::move(reply.body), .same = false};
    }
    name.append(u" (HTTP status ");
    appendInteger(name, reply.status);
    throw runtimeError(RuntimeError::fileNotFound, name.append(u")"));
}

SchemaSource::Found SchemaSource::find(const ports::Environment& environment, Text location) {
    if (isHttpUrl(location)) return ask(*environment.http, location);
    ports::Files& files = *environment.files;
    const std::u16string file = isFileUrl(location) ? files.fileOfUrl(location) : std::u16string(location);
    const auto version = files.version(file);
    if (schema_ != nullptr && version && version == version_) return {.name = {}, .content = {}, .same = true};
    const Bytes bytes = files.readBytes(file);
    version_ = version;
    const std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (schema_ != nullptr && content == content_) return {.name = {}, .content = {}, .same = true};
    return {.name = std::u16string(location), .content = std::string(content), .same = false};
}

std::shared_ptr<ports::Schema> SchemaSource::load(const ports::Environment& environment, Text location) {
    if (location.empty()) {
        throw runtimeError(RuntimeError::invalidProcedureCall, u"no schema source was given to Create, Send or XML");
    }
    if (location != location_) {
        schema_.reset();
        location_ = location;
    }
    Found found = find(environment, location);
    if (schema_ != nullptr && (found.same || found.content == content_)) return schema_;
    schema_.reset();
    schema_ = compile(*environment.xml, found.content, found.name);
    content_ = std::move(found.content);
    return schema_;
}

}  // namespace quill1xml::store
