// What is wrong with packet files that wait to be sent.
#pragma once

#include "quill1xml/types.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml {

struct Problem {
    enum class Severity : std::uint8_t {
        warning,
        error,  ///< a Send would fail
    };

    enum class Code : std::uint8_t {
        notWellFormed,  ///< a record, or a file, that does not load
        notValid,       ///< refused by the schema
        torn,           ///< the last record is not all there
        notSent,        ///< Send would delete the file unsent
        schema,         ///< the schema cannot be used
    };

    Severity severity = Severity::error;
    Code code{};
    std::u16string packet{};   ///< the file's name without folder; empty where it is no file's problem
    std::size_t record = 0;    ///< its number in the file, from 1; 0 for the file as a whole
    std::u16string element{};  ///< of the record
    std::vector<std::pair<std::u16string, std::u16string>> key{};  ///< attributes and values that tell the record
    std::u16string attribute{};                                    ///< at fault; empty where it is not known
    std::u16string value{};                                        ///< of the attribute as it is written, shortened
    std::u16string reason{};
};

/// A line for people: "WebStoreTax1.tmp, record 2: Tax TaxCode="V2": CountryCode="a&b": ...".
std::u16string describe(const Problem& problem);

}  // namespace quill1xml
