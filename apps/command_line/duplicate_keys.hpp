// Keys that come twice among any number of them.
#pragma once

#include "command_line/temporary.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quill1xml::cli {

/// Keys are kept in temporary files without a name, so that memory stays as it is however many there are.
class DuplicateKeys {
public:
    /// Called for each key that was added before, in the order of lines for up to 65536 keys.
    using Found = std::function<void(const std::u16string& key, std::size_t line, std::size_t firstLine)>;

    /// Throws std::runtime_error when a file cannot be written.
    void add(std::u16string_view key, std::size_t line);

    /// Tells what came twice and forgets all keys. Throws std::runtime_error when a file cannot be read.
    void tell(const Found& found);

private:
    struct Entry;

    void tellPart(std::uint64_t part, std::uint64_t parts, const Found& found);
    std::u16string keyAt(std::uint64_t place, std::size_t size);

    TemporaryFile entries_;
    TemporaryFile keys_;
    std::uint64_t count_ = 0;
    std::uint64_t place_ = 0;  ///< of the next key
};

}  // namespace quill1xml::cli
