// Going on with a job whose sending was interrupted.
#pragma once

#include "command_line/job.hpp"

#include <string>

namespace quill1xml::cli {

struct ResumeOptions {
    std::string folder;    ///< of the packet files
    std::string schema{};  ///< empty for the one that the job had
    std::string url{};     ///< empty for the envelope's
};

/// Sends everything that is left in the folder, what SendTempFile is for first, and prints the result as playJob does.
/// The options name the journal. Returns the exit status: 0, or 1 after an error.
int resumeJob(Exchanges& exchanges, const Streams& streams, const JobOptions& options, const ResumeOptions& resume);

}  // namespace quill1xml::cli
