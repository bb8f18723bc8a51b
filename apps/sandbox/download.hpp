// What shoppers did, as the store hands it out: the forms that ask for it and the documents that answer.
#pragma once

#include "storage.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// A kind of download.
struct Download {
    const char* endpoint;
    const char* element;  ///< the records it answers
};

inline constexpr Download customers{"/customers", "DebtorStaff"};
inline constexpr Download orders{"/orders", "Order"};
inline constexpr Download quotations{"/quotations", "Quote"};

/// The fields of "name=value&name=value". Clients insert values as they are, so nothing is decoded, and a value that
/// contains "&" ends there. Of two fields with one name the first counts.
std::map<std::string, std::string> readForm(std::string_view body);

/// The store id that a form asks for. Throws a Refusal when it has none.
std::int32_t storeIdIn(const std::map<std::string, std::string>& form);

/// A store document, created now, with the records that stand in the store; only those of a customer if one is given.
std::string downloadDocument(Storage& storage, const Download& download, std::int32_t storeId,
                             const std::optional<std::string>& customer = std::nullopt);

}  // namespace quill1xml::sandbox
