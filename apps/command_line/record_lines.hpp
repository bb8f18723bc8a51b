// Which lines of a job wrote a record.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/problem.hpp"
#include "text/tags.hpp"

#include <cstddef>
#include <span>
#include <vector>

namespace quill1xml::cli {

/// A call that went into a record, and its line in the job.
struct RecordCall {
    std::size_t line = 0;
    const automation::Member* method = nullptr;
};

/// The line of the call that gave an element of a record, the nth of its name from 0, and where an attribute is named,
/// that gave the attribute; the line of the last call where that cannot be told.
std::size_t lineOf(std::span<const RecordCall> calls, Text element, std::size_t nth, Text attribute);

/// The records that follow each other in a text, with the calls that wrote them.
class RecordLines {
public:
    /// A record that begins at a place of the text; no calls where nobody knows them.
    void add(std::size_t start, std::span<const RecordCall> calls);

    std::size_t count() const { return records_.size(); }

    /// The line to blame for a problem with a record of the text, which its number tells, or with the text as a whole;
    /// 0 where it is not known.
    std::size_t lineOf(const Problem& problem, Text text) const;

    void clear();

private:
    struct Record {
        std::size_t start;
        std::size_t firstCall;
    };
    std::vector<Record> records_;
    std::vector<RecordCall> calls_;
};

}  // namespace quill1xml::cli
