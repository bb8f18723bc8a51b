// What shoppers did, as the store hands it out: the forms that ask for it and the documents that answer.
#pragma once

#include "document.hpp"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// A kind of download.
struct Download {
    const char* endpoint;
    const char* element;       ///< the records it answers
    const char* keyAttribute;  ///< what tells two of them apart
};

inline constexpr Download customers{"/customers", "DebtorStaff", "EMailAddress"};
inline constexpr Download orders{"/orders", "Order", "OrderNumber"};
inline constexpr Download quotations{"/quotations", "Quote", "QuoteNumber"};

/// The fields of "name=value&name=value". Clients insert values as they are, so nothing is decoded, and a value that
/// contains "&" ends there. Of two fields with one name the first counts.
std::map<std::string, std::string> readForm(std::string_view body);

/// The store id that a form asks for. Throws a Refusal when it has none.
std::int32_t storeIdIn(const std::map<std::string, std::string>& form);

/// A store document with those records, a list as Storage gives it, created now.
std::string downloadDocument(std::int32_t storeId, const Json& records);

/// The records whose attribute has that value.
Json recordsWith(const Json& records, const char* attribute, const std::string& value);

}  // namespace quill1xml::sandbox
