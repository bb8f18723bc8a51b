// XML schemas of libxml2.
#pragma once

#include "platform/posix/xml_parsing.hpp"

#include <libxml/xmlschemas.h>

namespace quill1xml::platform {

class XsdSchema final : public Schema {
public:
    /// Compiles a schema. The name of its location goes into the error, an application error, when it is broken or
    /// refers to further documents.
    XsdSchema(std::string_view schema, Text location);

    /// The first thing in a document that breaks the schema.
    ParseError validate(xmlDoc* document) const;

private:
    struct Free {
        void operator()(xmlSchema* schema) const noexcept { xmlSchemaFree(schema); }
    };

    TreeOwner tree_;  // the compiled schema points into it
    std::unique_ptr<xmlSchema, Free> schema_;
};

}  // namespace quill1xml::platform
