// CString: a string builder that holds one byte per character.
#pragma once

#include "quill1xml/types.hpp"

#include <memory>
#include <string>

namespace quill1xml {

namespace platform {
class System;
}

/// Accumulates text in the single-byte ANSI code page (Windows-1252 where the system has none).
/// It does not log errors.
class CString {
public:
    CString();

    /// A builder with the code page of the given system.
    explicit CString(std::shared_ptr<platform::System> system);

    /// Appends text. Throws error 6 (Overflow), and appends nothing, when a character has no byte in the code page.
    void concat(Text s);

    /// The number of characters held.
    Long length() const;

    /// The characters held.
    std::u16string text() const;

    /// Empties the builder.
    void reset();

private:
    std::shared_ptr<platform::System> system_;
    Bytes bytes_;
};

}  // namespace quill1xml
