// The exports of the DLL.

#include "automation/com/automation_object.hpp"
#include "automation/com/entity_objects.hpp"
#include "automation/com/failure.hpp"
#include "automation/com/guid.hpp"
#include "automation/com/registration.hpp"

#include <string_view>

namespace {

using namespace quill1xml;
using namespace quill1xml::automation;

class ClassFactory final : public ComObject<IClassFactory> {
public:
    ClassFactory(const Class& of, const Identity& identity) : class_(of), identity_(identity) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        if (result == nullptr) return E_POINTER;
        *result = nullptr;
        return guarded(IID_IClassFactory, nullptr, [&]() -> HRESULT {
            if (outer != nullptr) return CLASS_E_NOAGGREGATION;
            auto object = class_.create(serverEnvironment());
            const auto made =
                com::ComPtr<IDispatch>::attach(new AutomationObject(class_, identity_, std::move(object)));
            return made->QueryInterface(id, result);
        });
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        return guarded(IID_IClassFactory, nullptr, [&] { lock != FALSE ? lockModule() : unlockModule(); });
    }

private:
    void* find(REFIID id) noexcept override {
        return id == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
    }

    const Class& class_;
    const Identity& identity_;
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return guarded(IID_IClassFactory, nullptr, [&]() -> HRESULT {
        for (const Class* each : classes()) {
            const Identity* const identity = findIdentity(each->name);
            if (identity == nullptr || guidOf(identity->coclass) != classId) continue;
            keepModule();
            const auto factory = com::ComPtr<IClassFactory>::attach(new ClassFactory(*each, *identity));
            return factory->QueryInterface(id, result);
        }
        return CLASS_E_CLASSNOTAVAILABLE;
    });
}

STDAPI DllCanUnloadNow() { return isModuleLocked() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
    return guarded(IID_IUnknown, nullptr, [] { return registerServer(HKEY_LOCAL_MACHINE); });
}

STDAPI DllUnregisterServer() {
    return guarded(IID_IUnknown, nullptr, [] { return unregisterServer(HKEY_LOCAL_MACHINE); });
}

/// regsvr32 /n /i:user for the current user, without a parameter for the machine.
STDAPI DllInstall(BOOL install, PCWSTR commandLine) {
    const std::wstring_view scope = commandLine != nullptr ? commandLine : L"";
    if (!scope.empty() && scope != L"user") return E_INVALIDARG;
    return guarded(IID_IUnknown, nullptr, [&] {
        HKEY const root = scope.empty() ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        return install != FALSE ? registerServer(root) : unregisterServer(root);
    });
}
