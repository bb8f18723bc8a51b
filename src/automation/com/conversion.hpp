// Between the variants of hosts and the values of members.
#pragma once

#include "automation/classes.hpp"
#include "platform/windows/com_support.hpp"

#include <windows.h>

namespace quill1xml::automation {

/// Sets the arguments that a host gave, by place or by name, where a named argument's DISPID is its parameter's index.
/// Values are coerced as the host's locale has it. What the host left out keeps its default: the mark for a missing
/// argument, and for an optional parameter an empty variant too.
///
/// Throws error 13, 6, 91, 448, 449 or 450; faulty, where it is not null, receives the place of an argument that does
/// not fit.
void bind(Arguments& arguments, const Member& member, const DISPPARAMS& given, LCID locale, UINT* faulty);

/// Whether the arguments that a host named stand in the order of their parameters, the last one first, as in the calls
/// of most: then none is given twice.
bool isInOrder(const DISPPARAMS& given);

/// The index of the parameter that the argument at a place of the host's array is for. Throws error 448 or 450.
std::size_t parameterAt(UINT place, const Member& member, const DISPPARAMS& given, bool inOrder);

/// Whether a value is the mark for an argument that the host left out.
bool isMissing(const VARIANT& value);

/// A result or an event argument.
com::Variant toVariant(const Value& value);

}  // namespace quill1xml::automation
