// A job that is read to its end before it is played.
#pragma once

#include "command_line/temporary.hpp"
#include "quill1xml/types.hpp"

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace quill1xml::cli {

/// Keeps a job in a temporary file, and knows which schema its packets are going to be held to.
class JobAhead {
public:
    /// Reads the job. Throws std::runtime_error when it cannot be kept.
    explicit JobAhead(std::istream& in);

    /// Goes on to the next line; false at the end. Throws std::runtime_error when it cannot be had back.
    bool next(std::string& line);

    /// Of the line that was read last, or of the end.
    std::size_t line() const { return line_; }

    /// Whether it could not be read to its end.
    bool isTorn() const { return torn_; }

    /// What is named to the store by the time that packets of a kind (WebStoreTax) are sent, on this line or a later
    /// one; null where nothing sends them any more.
    const std::u16string* schemaFor(Text kind) const;

private:
    struct Sending {
        std::size_t line;
        std::u16string kind;  ///< empty for all
        std::u16string schema;
    };

    void keep(const std::string& line);
    void note(const std::string& line);

    TemporaryFile lines_;
    std::size_t line_ = 0;
    std::size_t count_ = 0;
    bool torn_ = false;
    std::u16string schema_;
    std::vector<Sending> sendings_;
};

}  // namespace quill1xml::cli
