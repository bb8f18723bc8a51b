// XML from strangers, through libxml2: nothing is fetched, no entities, bounded depth and size.
#pragma once

#include <libxml/tree.h>
#include <libxml/xmlschemas.h>

#include <memory>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

struct FreeDocument {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};
using XmlDocument = std::unique_ptr<xmlDoc, FreeDocument>;

/// Parses UTF-8, whatever encoding the text declares. Throws a Refusal of that source when it is not well-formed or has
/// a document type declaration.
XmlDocument parseXml(std::string_view utf8, std::string_view source);

/// The value of an attribute without namespace, in UTF-8; empty when there is none.
std::string attributeValue(const xmlNode* element, const char* name);

std::string_view localName(const xmlNode* node);
std::string_view namespaceOf(const xmlNode* node);

/// An XML Schema, compiled once. Documents may be checked against it on several threads.
class XmlSchema {
public:
    /// Throws std::runtime_error, or a Refusal of the source "Schema", when the schema itself is broken.
    explicit XmlSchema(std::string_view xsd);

    /// Throws a Refusal with the first failure and its line.
    void check(xmlDoc* document) const;

private:
    struct FreeSchema {
        void operator()(xmlSchema* schema) const noexcept { xmlSchemaFree(schema); }
    };
    XmlDocument text_;  ///< the compiled form points into it
    std::unique_ptr<xmlSchema, FreeSchema> schema_;
};

}  // namespace quill1xml::sandbox
