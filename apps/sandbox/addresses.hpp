// Every address that the store answers, in one list: the server, its pages and its help are made of it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// A place of the store. Words in capitals stand for what a client puts there.
struct Address {
    std::string_view method;
    std::string_view path;
    std::string_view what;  ///< what it is for, in a few words
};

std::span<const Address> addresses();

/// The regular expression of the paths of a listed address; each word in capitals is a group. Throws std::logic_error
/// for one that is not in the list.
std::string patternOf(std::string_view method, std::string_view path);

/// The list as a text, one address a line.
std::string addressesText();

}  // namespace quill1xml::sandbox
