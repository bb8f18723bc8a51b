// The store schema, derived from the declarations of the records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quill1xml {

enum class SchemaDialect {
    xsd,  ///< XML Schema 1.0
    xdr,  ///< XML-Data Reduced
};

/// The schema of store documents as a complete XML document in UTF-8.
std::string storeSchema(SchemaDialect dialect);

/// The names of the attributes that every record of this element must have, in document order, in UTF-8. Empty for
/// elements without a key and for names that are no record.
std::vector<std::string> keyAttributes(std::string_view element);

}  // namespace quill1xml
