// What a job loses without an error: the library does as it is told, and people want to know.
#pragma once

#include "automation/classes.hpp"
#include "command_line/open_records.hpp"
#include "quill1xml/store.hpp"

#include <cstddef>
#include <ostream>
#include <set>
#include <string>

namespace quill1xml::cli {

/// Watches the calls of a job on a store, which must outlive it, and warns of values left out, of parts added while
/// nothing is open, of records that are never locked, and of packet files that are never sent.
class Losses {
public:
    /// Warns of the first twenty values left out, and of all when verbose.
    Losses(Store& store, std::ostream& err, bool verbose);
    ~Losses() { store_.onValueLeftOut({}); }
    Losses(const Losses&) = delete;
    Losses& operator=(const Losses&) = delete;

    /// Before a call that stands on a line of the job.
    void before(const automation::Member& method, std::size_t line);

    /// After a call that went well.
    void after() { open_.after(line_); }

    /// Before packets are sent: what is still open is not among them.
    void beforeSending();

    /// When the job is over; the names are those of packet files that were sent.
    void atEnd(const std::set<std::u16string>& sent);

private:
    void leftOut(const LeftOutValue& value);
    std::ostream& warning(std::size_t line);

    Store& store_;
    std::ostream& err_;
    bool verbose_;
    std::size_t line_ = 0;
    bool wrote_ = false;  ///< a record, and so perhaps a packet file
    std::size_t leftOut_ = 0;
    OpenRecords open_;
};

}  // namespace quill1xml::cli
