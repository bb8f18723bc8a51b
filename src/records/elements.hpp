// The elements of a store document, put together from the records that write them.
#pragma once

#include "records/record.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::records {

/// What a schema says of an attribute.
struct AttributeModel {
    std::string name;
    bool required = false;
    AttributeType type = AttributeType::text;
    bool mayBeEmpty = false;                 ///< an empty value stands for none, whatever the type
    std::uint32_t minimum = 0;               ///< characters of a text
    std::optional<std::uint32_t> maximum{};  ///< characters of a text
    std::vector<std::string> words{};        ///< the only values allowed; empty for no such limit
};

struct ElementModel {
    std::string name;
    std::string parent;  ///< empty for the root and for elements directly below it
    bool isRoot = false;
    std::vector<AttributeModel> attributes;

    const AttributeModel* find(std::string_view attribute) const;
};

/// Every record, in the order of the method declarations.
std::span<const Record* const> allRecords();

/// Every element: the root first, then the others in the order of the method declarations.
const std::vector<ElementModel>& elements();

}  // namespace quill1xml::records
