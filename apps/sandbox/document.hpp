// Store documents: what an upload consists of.
#pragma once

#include "xml.hpp"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::sandbox {

/// Keeps the order in which attributes stand in the document.
using Json = nlohmann::ordered_json;

/// The namespace of store documents and of all their elements.
inline constexpr std::string_view storeNamespace = "WebStore";

/// One element under the root of a store document.
struct Record {
    std::string kind;  ///< the element's name
    std::string key;   ///< the values of its key attributes, joined by "|"; empty when it has none
    Json attributes;   ///< an object: name to value
    Json children;     ///< an array of {"element", "attributes", "children"}
    std::string xml;   ///< the element with its children, without namespace
};

/// Who sends a document, from its envelope; empty when it has none.
struct Sender {
    std::string user;
    std::string password;
};

struct StoreDocument {
    std::int64_t storeId = 0;
    std::string user;  ///< the sender's
    Json store;        ///< the attributes of the root element
    std::vector<Record> records;
};

/// The names of the attributes that identify a record of an element.
using KeyAttributes = std::function<std::vector<std::string>(std::string_view element)>;

/// Requires a root element.
Sender senderOf(const xmlDoc* document);

/// An element with its attributes and children, as a Record has them.
std::string elementText(std::string_view name, const Json& attributes, const Json& children);

/// Takes a parsed store document apart, which loses its namespaces. Requires the root that requireStoreRoot asks for.
StoreDocument readStoreDocument(xmlDoc* document, const KeyAttributes& keyAttributes);

/// Throws a Refusal unless the root element is Store in the given namespace, empty for none.
void requireStoreRoot(const xmlDoc* document, std::string_view requiredNamespace, std::string_view source);

}  // namespace quill1xml::sandbox
