#include "automation/com/automation_object.hpp"

#include "automation/com/conversion.hpp"
#include "automation/com/dispatch.hpp"
#include "automation/com/enumerator.hpp"
#include "automation/com/failure.hpp"
#include "automation/com/guid.hpp"
#include "automation/com/type_library.hpp"

#include <olectl.h>

#include <utility>

namespace quill1xml::automation {
namespace {

/// Sets a flag as long as it lives.
class Setting {
public:
    Setting(bool& flag, bool value) : flag_(flag), before_(std::exchange(flag, value)) {}
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;
    ~Setting() { flag_ = before_; }

private:
    bool& flag_;
    bool before_;
};

/// An entry of the list of connection points.
struct PointItem {
    com::ComPtr<IConnectionPoint> point;

    void give(IConnectionPoint*& place) const { place = com::ComPtr<IConnectionPoint>(point).detach(); }
};

}  // namespace

AutomationObject::AutomationObject(const Class& of, const Identity& identity, std::shared_ptr<void> object)
    : class_(of),
      identity_(identity),
      membersId_(guidOf(identity.members)),
      eventsId_(identity.events.empty() ? GUID{} : guidOf(identity.events)),
      connectionPoint_(*this, eventsId_),
      object_(std::move(object)) {
    if (class_.connect != nullptr) {
        class_.connect(object_.get(), [this](const Event& event, std::span<const Value> arguments) {
            const Setting callable(busy_, false);
            connectionPoint_.fire(event, arguments);
        });
    }
}

void* AutomationObject::find(REFIID id) noexcept {
    if (id == IID_IDispatch || id == membersId_) return static_cast<IDispatch*>(this);
    if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2) return static_cast<IProvideClassInfo2*>(this);
    if (id == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
    if (id == IID_IConnectionPointContainer && !class_.events.empty()) {
        return static_cast<IConnectionPointContainer*>(this);
    }
    return nullptr;
}

HRESULT AutomationObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    return guarded(membersId_, nullptr, [&] { *count = 1; });
}

HRESULT AutomationObject::GetTypeInfo(UINT index, LCID, ITypeInfo** result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return guarded(membersId_, nullptr, [&] {
        if (index != 0) return DISP_E_BADINDEX;
        *result = typeInfoOf(membersId_).detach();
        return S_OK;
    });
}

HRESULT AutomationObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return idsOfNames(class_, reserved, names, count, ids);
}

HRESULT AutomationObject::Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* given,
                                 VARIANT* result, EXCEPINFO* details, UINT* faulty) {
    // The host may let go of the object in an event that the call raises.
    const com::ComPtr<IDispatch> alive(this);
    return invokeMember({class_, membersId_, id, reserved, locale, flags, given, result, details, faulty},
                        [this](const Member& member, const Arguments& arguments) {
                            // Requests dispatch the thread's messages, which may call again.
                            if (busy_) {
                                throw runtimeError(RuntimeError::permissionDenied,
                                                   u"a call into this object is under way; call again when it has "
                                                   u"returned");
                            }
                            const Setting busy(busy_, class_.exclusive);
                            return toVariant(member.invoke(object_.get(), arguments.data()));
                        });
}

HRESULT AutomationObject::GetClassInfo(ITypeInfo** result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return guarded(IID_IProvideClassInfo, nullptr, [&] { *result = typeInfoOf(guidOf(identity_.coclass)).detach(); });
}

HRESULT AutomationObject::GetGUID(DWORD kind, GUID* result) {
    if (result == nullptr) return E_POINTER;
    *result = GUID_NULL;
    return guarded(IID_IProvideClassInfo2, nullptr, [&] {
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || class_.events.empty()) return E_INVALIDARG;
        *result = eventsId_;
        return S_OK;
    });
}

HRESULT AutomationObject::InterfaceSupportsErrorInfo(REFIID id) {
    return id == membersId_ || id == IID_IDispatch ? S_OK : S_FALSE;
}

HRESULT AutomationObject::EnumConnectionPoints(IEnumConnectionPoints** result) {
    if (result == nullptr) return E_POINTER;
    return guarded(IID_IConnectionPointContainer, nullptr, [&] {
        std::vector<PointItem> points;
        points.push_back({com::ComPtr<IConnectionPoint>(&connectionPoint_)});
        *result = new Enumerator<IEnumConnectionPoints, IConnectionPoint*, PointItem>(IID_IEnumConnectionPoints,
                                                                                      std::move(points));
    });
}

HRESULT AutomationObject::FindConnectionPoint(REFIID id, IConnectionPoint** result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return guarded(IID_IConnectionPointContainer, nullptr, [&]() -> HRESULT {
        if (id != eventsId_) return CONNECT_E_NOCONNECTION;
        *result = com::ComPtr<IConnectionPoint>(&connectionPoint_).detach();
        return S_OK;
    });
}

}  // namespace quill1xml::automation
