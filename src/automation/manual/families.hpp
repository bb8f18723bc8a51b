// Numbered names, such as strAddressLine1 to strAddressLine4.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml::automation {

bool hasNumber(std::string_view name);

/// The text with "#" for every number in it.
std::string patternOf(std::string_view text);

/// "shipping address line 1" of "strShippingAddressLine1": what a name says, without the letters that tell its type,
/// with its numbers or without.
std::string wordsOf(std::string_view name, bool withNumbers);

/// The words with a capital at their beginning and a point at their end.
std::string sentence(std::string words);

}  // namespace quill1xml::automation
