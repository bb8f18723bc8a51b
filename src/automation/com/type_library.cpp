#include "automation/com/type_library.hpp"

#include "automation/com/module.hpp"
#include "platform/windows/errors.hpp"

#include <utility>
#include <vector>

namespace quill1xml::automation {
namespace {

using Descriptions = std::vector<std::pair<GUID, com::ComPtr<ITypeInfo>>>;

Descriptions load() {
    com::ComPtr<ITypeLib> library;
    platform::check(LoadTypeLibEx(moduleFile().c_str(), REGKIND_NONE, library.put()));
    Descriptions descriptions;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        com::ComPtr<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        platform::check(library->GetTypeInfo(i, info.put()));
        platform::check(info->GetTypeAttr(&attributes));
        descriptions.emplace_back(attributes->guid, info);
        info->ReleaseTypeAttr(attributes);
    }
    return descriptions;
}

}  // namespace

com::ComPtr<ITypeInfo> typeInfoOf(const GUID& id) {
    // Never let go: when the process ends, the system's library may end before ours.
    static const Descriptions& descriptions = *new Descriptions(load());
    for (const auto& [described, info] : descriptions) {
        if (described == id) return info;
    }
    platform::check(TYPE_E_ELEMENTNOTFOUND);
    return {};
}

}  // namespace quill1xml::automation
