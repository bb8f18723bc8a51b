// What the store answers to an upload: accepted under an import number, or refused and why.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// The numbers under which this store refuses.
enum class RefusalNumber : std::int32_t {
    notWellFormed = 1,
    wrongRoot = 2,
    notValid = 3,
    badRequest = 4,
    login = 5,
    badImage = 6,
    internal = 51,
    onPurpose = 1000,
};

/// Thrown by whatever does not take a request; the sender gets it as a receipt.
class Refusal : public std::exception {
public:
    /// The number must not be 0, which would mean accepted. Source and description are UTF-8.
    Refusal(std::int32_t number, std::string source, std::string description);
    Refusal(RefusalNumber number, std::string source, std::string description);

    const char* what() const noexcept override { return description_.c_str(); }
    std::int32_t number() const noexcept { return number_; }
    const std::string& source() const noexcept { return source_; }

    /// The receipt that says so, an XML document in UTF-8.
    std::string receipt() const;

private:
    std::int32_t number_;
    std::string source_;
    std::string description_;
};

/// The receipt of an accepted store document.
std::string acceptedReceipt(std::int64_t importNumber);

/// The receipt of an accepted request that is no import.
std::string acceptedReceipt();

}  // namespace quill1xml::sandbox
