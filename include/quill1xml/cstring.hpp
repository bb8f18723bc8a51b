// CString: a string builder that holds one byte per character.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml {

/// Accumulates text in a single-byte code page. It does not log errors.
class CString {
public:
    /// A builder with Windows-1252.
    CString();

    /// A builder with the given code page, such as that of the system: systemEnvironment().system->codePage().
    explicit CString(const CodePage& codePage);

    /// Appends text. Throws error 6 (Overflow), and appends nothing, when a character has no byte in the code page.
    void concat(Text s);

    /// The number of characters held.
    Long length() const;

    /// The characters held.
    std::u16string text() const;

    /// Empties the builder.
    void reset();

private:
    CodePage codePage_;
    Bytes bytes_;
};

}  // namespace quill1xml
