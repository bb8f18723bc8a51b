#include "automation/com/type_library.hpp"

#include "automation/com/module.hpp"
#include "platform/windows/errors.hpp"

namespace quill1xml::automation {

com::ComPtr<ITypeInfo> typeInfoOf(const GUID& id) {
    com::ComPtr<ITypeLib> library;
    com::ComPtr<ITypeInfo> info;
    platform::check(LoadTypeLibEx(moduleFile().c_str(), REGKIND_NONE, library.put()));
    platform::check(library->GetTypeInfoOfGuid(id, info.put()));
    return info;
}

}  // namespace quill1xml::automation
