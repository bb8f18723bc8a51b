// The terminal that the user sits at.
#pragma once

#include <cstddef>
#include <string>

namespace quill1xml::cli {

bool outputIsTerminal();

/// Whether another program reads standard output.
bool outputIsPipe();

bool errorOutputIsTerminal();

/// The width of the terminal on standard output, in columns; 80 where it is not known.
std::size_t terminalWidth();

/// Asks for a line that does not show while it is typed, on the terminal wherever standard input comes from.
/// Throws std::runtime_error when there is no terminal, or nothing is typed.
std::string askUnseen(const std::string& prompt);

}  // namespace quill1xml::cli
