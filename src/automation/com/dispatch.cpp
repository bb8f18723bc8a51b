#include "automation/com/dispatch.hpp"

#include "automation/com/conversion.hpp"
#include "automation/com/failure.hpp"

#include <algorithm>
#include <cwchar>

namespace quill1xml::automation {
namespace {

Text textOf(const wchar_t* name) { return com::asText(name, std::wcslen(name)); }

bool isNamed(const Parameter& parameter, const wchar_t* name) {
    for (const char c : parameter.name) {
        const wchar_t given = *name++;
        // Most hosts write names as they are declared.
        if (given != static_cast<wchar_t>(c) && asciiLower(given) != static_cast<wchar_t>(asciiLower(c))) return false;
    }
    return *name == L'\0';
}

/// The parameter of that name, or -1. Most hosts give names in the order of the parameters: where the next one is
/// expected is looked at first.
int findParameter(const Member& member, const wchar_t* name, std::size_t expected) {
    const bool there = expected < member.parameters.size() && isNamed(member.parameters[expected], name);
    return there ? static_cast<int>(expected) : findParameter(member, textOf(name));
}

}  // namespace

HRESULT idsOfNames(const Class& of, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    return guarded(IID_IDispatch, nullptr, [&]() -> HRESULT {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        if (names == nullptr || ids == nullptr) return E_POINTER;
        std::fill_n(ids, count, DISPID_UNKNOWN);
        const Member* const member = count > 0 ? findMember(of, textOf(names[0])) : nullptr;
        if (member == nullptr) return DISP_E_UNKNOWNNAME;
        ids[0] = member->dispid;
        // The parameters of the member follow.
        std::size_t next = 0;
        for (UINT i = 1; i < count; ++i) {
            ids[i] = findParameter(*member, names[i], next);
            next = static_cast<std::size_t>(ids[i]) + 1;
        }
        return std::find(ids + 1, ids + count, DISPID_UNKNOWN) == ids + count ? S_OK : DISP_E_UNKNOWNNAME;
    });
}

HRESULT invokeUnbound(const Invocation& invocation, const std::function<HRESULT(const Member&)>& body) noexcept {
    return guarded(invocation.interfaceId, invocation.details, [&]() -> HRESULT {
        const DISPPARAMS* const given = invocation.given;
        if (invocation.reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        if (given == nullptr || given->cNamedArgs > given->cArgs) return E_INVALIDARG;
        const auto& members = invocation.of.members;
        const auto member = std::ranges::find(members, invocation.id, &Member::dispid);
        // Script hosts cannot tell a property from a method without parameters and ask for either.
        if (member == members.end() || (invocation.flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (invocation.result != nullptr) VariantInit(invocation.result);
        return body(*member);
    });
}

HRESULT invokeMember(const Invocation& invocation,
                     const std::function<com::Variant(const Member&, const Arguments&)>& call) noexcept {
    return invokeUnbound(invocation, [&](const Member& member) -> HRESULT {
        const auto& [of, interfaceId, id, reserved, locale, flags, given, result, details, faulty] = invocation;
        const bool forItem = member.parameters.empty() && member.result == ResultType::collection && given->cArgs > 0;
        Arguments arguments(member);
        bind(arguments, member, forItem ? DISPPARAMS{} : *given, locale, faulty);
        com::Variant value = call(member, arguments);
        if (forItem) {
            return value->pdispVal->Invoke(DISPID_VALUE, IID_NULL, locale, flags, given, result, details, faulty);
        }
        if (result != nullptr) *result = value.detach();
        return S_OK;
    });
}

}  // namespace quill1xml::automation
