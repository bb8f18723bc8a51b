// The environment of a job that is only tried out.
#pragma once

#include "command_line/trial_files.hpp"
#include "quill1xml/ports.hpp"

#include <memory>

namespace quill1xml::cli {

/// The real environment with other files, without a network and without a log.
ports::Environment trialEnvironment(const ports::Environment& real, std::shared_ptr<TrialFiles> files);

}  // namespace quill1xml::cli
