// Fetching what shoppers did, as JSON, XML or a table.
#pragma once

#include "command_line/exchanges.hpp"
#include "command_line/record_table.hpp"

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace quill1xml::cli {

/// What can be fetched.
struct Download {
    std::string_view name;    ///< on the command line
    std::string_view about;   ///< for its help
    std::string_view method;  ///< of Store
    bool byCustomer;          ///< takes a customer's address instead of a user and a password
    bool holdsCards;          ///< the numbers of credit cards may stand in what comes
    RecordTable table;
};

std::span<const Download> downloads();

enum class Format : std::uint8_t { json, xml, table };

/// All texts are UTF-8.
struct FetchOptions {
    std::string url{};
    Long store = 0;
    std::string user{};
    std::string password{};
    std::string email{};    ///< of the customer, where the download is byCustomer
    std::string archive{};  ///< a folder for the reply, without a separator at its end; empty for none
    Format format = Format::json;
    std::size_t width = 0;     ///< of a table, as for layOut
    bool outputStays = false;  ///< what is written stays somewhere, unlike in a pipe
};

/// Writes what was fetched to out, or the error to err and then nothing to out; before that a warning to err when
/// numbers of credit cards may come to stay in the output or the archive. Returns the exit status: 0, or 1 after an
/// error.
int fetch(Exchanges& exchanges, const Download& download, const FetchOptions& options, std::ostream& out,
          std::ostream& err);

}  // namespace quill1xml::cli
