// What the parameters of the methods mean.
#pragma once

#include "automation/classes.hpp"

#include <string>

namespace quill1xml::automation {

/// A sentence without an end: its meaning, then what its value must meet. Of a family of numbered parameters it is
/// asked for any one.
std::string meaningOf(const Member& member, const Parameter& parameter, bool ofFamily);

/// What a property or a method of a class is or does: its summary, and for a property of a downloaded object what its
/// name says.
std::string aboutMember(const Class& of, const Member& member);

/// "strPriceDisplay: TaxExclusive, TaxInclusive, Both." for each parameter of a record that takes one of a few words;
/// empty for none.
std::string wordLists(const Member& member);

}  // namespace quill1xml::automation
