// IDispatch over the members of a class, for every object of the server.
#pragma once

#include "automation/classes.hpp"
#include "platform/windows/com_support.hpp"

#include <windows.h>

#include <functional>

namespace quill1xml::automation {

/// IDispatch::GetIDsOfNames: a member and the names of its parameters, whose ids are their indexes.
HRESULT idsOfNames(const Class& of, REFIID reserved, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// The arguments of IDispatch::Invoke, and whose members they are about.
struct Invocation {
    const Class& of;
    const IID& interfaceId;  ///< that errors are reported for
    DISPID id;
    const IID& reserved;
    LCID locale;
    WORD flags;
    DISPPARAMS* given;
    VARIANT* result;
    EXCEPINFO* details;
    UINT* faulty;
};

/// IDispatch::Invoke for a body that takes the host's arguments as they are.
HRESULT invokeUnbound(const Invocation& invocation, const std::function<HRESULT(const Member& member)>& body) noexcept;

/// IDispatch::Invoke: binds the arguments and calls. Arguments to a member that has no parameters and returns a
/// collection are for the collection's default member: order.LineItems(1).
HRESULT invokeMember(
    const Invocation& invocation,
    const std::function<com::Variant(const Member& member, const Arguments& arguments)>& call) noexcept;

}  // namespace quill1xml::automation
