// An object of a class as automation hosts see it.
#pragma once

#include "automation/classes.hpp"
#include "automation/com/com_object.hpp"
#include "automation/com/connection_point.hpp"
#include "automation/identity.hpp"
#include "platform/windows/com_support.hpp"

#include <windows.h>

#include <ocidl.h>

#include <memory>

namespace quill1xml::automation {

class AutomationObject final
    : public ComObject<IDispatch, IProvideClassInfo2, ISupportErrorInfo, IConnectionPointContainer> {
public:
    AutomationObject(const Class& of, const Identity& identity, std::shared_ptr<void> object);

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* details, UINT* faulty) override;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** result) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* result) override;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** result) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** result) override;

private:
    void* find(REFIID id) noexcept override;

    const Class& class_;
    const Identity& identity_;
    const IID membersId_;
    const IID eventsId_;  ///< of nothing for a class without events
    ConnectionPoint connectionPoint_;
    std::shared_ptr<void> object_;
    bool busy_ = false;  ///< a call is under way that lets no other in
};

}  // namespace quill1xml::automation
