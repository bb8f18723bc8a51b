// A job tried out: everything that is wrong with it is told, nothing is sent, and nothing is touched but a folder.
#pragma once

#include "command_line/check_report.hpp"
#include "command_line/job.hpp"

#include <string>

namespace quill1xml::cli {

struct CheckOptions {
    std::string keep{};  ///< an empty folder for the packet files; a temporary one without it
    CheckReport::Options report{};
};

/// Reads a job to its end, plays it and reports to `out`. Sending, fetching and image methods are not carried out.
/// Returns the exit status: 1 when there are errors, or the job cannot be tried on, 130 when the process was asked to
/// end, else 0. Throws std::runtime_error when the folder cannot be used, or the job cannot be kept.
int checkJob(const ports::Environment& environment, const Streams& streams, const CheckOptions& options = {});

}  // namespace quill1xml::cli
