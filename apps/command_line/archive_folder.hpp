// The folder of an archive, looked at before anything is exchanged: what a server has accepted cannot be taken back.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/types.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace quill1xml::cli {

/// The folder that a call with these arguments archives in; empty when it does not.
std::u16string archiveFolder(const automation::Member& method, const nlohmann::json& values);

/// Throws the error that saving into the folder would fail with, when it is missing or may not be written to. Nothing
/// is done for an empty name.
void requireArchive(Text folder);

}  // namespace quill1xml::cli
