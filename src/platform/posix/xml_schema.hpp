// XML schemas of libxml2.
#pragma once

#include "platform/posix/xml_parsing.hpp"

#include <libxml/xmlschemas.h>

namespace quill1xml::platform {

/// Throws std::bad_alloc when there is not the memory to compile or to validate: at some places libxml2 does not look
/// whether it got what it asked for, and the process ends.
void requireRoomForSchema();

class XsdSchema final : public Schema {
public:
    struct Free {
        void operator()(xmlSchema* schema) const noexcept { xmlSchemaFree(schema); }
    };
    using Compiled = std::unique_ptr<xmlSchema, Free>;

    /// Compiles a schema document; null, with the error filled, when it is broken.
    static std::shared_ptr<XsdSchema> compile(std::unique_ptr<Document> source, ParseError& error);

    XsdSchema(std::unique_ptr<Document> source, Compiled compiled);

    /// The first thing in a document that breaks the schema.
    ParseError validate(xmlDoc* document) const;

    xmlSchema* compiled() const noexcept { return compiled_.get(); }

private:
    std::unique_ptr<Document> source_;  // the compiled schema points into it
    Compiled compiled_;
};

}  // namespace quill1xml::platform
