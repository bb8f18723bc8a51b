// The type library that the DLL carries.
#pragma once

#include "platform/windows/com_support.hpp"

namespace quill1xml::automation {

/// The description of a class or interface, which is read once and then kept. Works without registration. Throws Error.
com::ComPtr<ITypeInfo> typeInfoOf(const GUID& id);

}  // namespace quill1xml::automation
