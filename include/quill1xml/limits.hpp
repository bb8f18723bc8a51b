// What the library gives up on by itself, on Linux; on Windows the system's own HTTP client and parser have their
// limits.
#pragma once

#include <chrono>
#include <cstddef>

namespace quill1xml::limits {

inline constexpr std::chrono::seconds connect{30};   ///< until the connection to a server stands
inline constexpr std::chrono::seconds silence{300};  ///< of an exchange, in both directions
inline constexpr std::size_t replyMiB = 256;         ///< of all that comes in, headers and redirects too
inline constexpr std::size_t headersMiB = 1;         ///< of the headers of an exchange
inline constexpr int redirects = 5;                  ///< that are followed
inline constexpr std::size_t attributes = 10'000;    ///< of a tag
inline constexpr std::size_t bytesInMiB = std::size_t{1024} * 1024;

}  // namespace quill1xml::limits
