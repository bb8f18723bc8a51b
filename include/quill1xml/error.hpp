// The one exception type of the library.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace quill1xml {

/// A failure as an automation host sees it: number, source and description.
class Error : public std::exception {
public:
    Error(std::int32_t number, std::u16string_view source, std::u16string_view description);

    std::int32_t number() const noexcept { return number_; }
    const std::u16string& source() const noexcept { return source_; }
    const std::u16string& description() const noexcept { return description_; }

    /// The description in UTF-8.
    const char* what() const noexcept override { return what_.c_str(); }

private:
    std::int32_t number_;
    std::u16string source_;
    std::u16string description_;
    std::string what_;
};

/// The number of every error that the library raises by its own rules (hexadecimal 80040000).
inline constexpr std::int32_t applicationError = -2147221504;

/// The run-time errors that automation hosts know by number.
enum class RuntimeError : std::int32_t {
    invalidProcedureCall = 5,
    overflow = 6,
    outOfMemory = 7,
    subscriptOutOfRange = 9,
    typeMismatch = 13,
    internalError = 51,
    fileNotFound = 53,
    deviceIo = 57,
    diskFull = 61,
    tooManyFiles = 67,
    permissionDenied = 70,
    pathFileAccess = 75,
    pathNotFound = 76,
    objectNotSet = 91,
    cannotCreateObject = 429,
    automationError = 440,
    unknownMember = 438,
    namedArgumentNotFound = 448,
    argumentNotOptional = 449,
    wrongArgumentCount = 450,
    keyInUse = 457,
};

/// A run-time error with its usual text, followed by ": " and the detail where one is given.
Error runtimeError(RuntimeError error, std::u16string_view detail = {});

}  // namespace quill1xml
