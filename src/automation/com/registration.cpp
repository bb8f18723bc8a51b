#include "automation/com/registration.hpp"

#include "automation/classes.hpp"
#include "automation/com/guid.hpp"
#include "automation/com/module.hpp"
#include "automation/identity.hpp"

#include <objbase.h>

#include <string>
#include <vector>

namespace quill1xml::automation {
namespace {

constexpr bool is64Bit = sizeof(void*) == 8;
constexpr const wchar_t* ownPlatform = is64Bit ? L"\\0\\win64" : L"\\0\\win32";
constexpr const wchar_t* otherPlatform = is64Bit ? L"\\0\\win32" : L"\\0\\win64";

/// The system's own marshaller of dispinterfaces.
constexpr const wchar_t* dispatchProxy = L"{00020420-0000-0000-C000-000000000046}";

std::wstring wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

std::wstring braced(std::string_view id) {
    wchar_t text[39];
    StringFromGUID2(guidOf(id), text, 39);
    return text;
}

std::wstring version() { return std::to_wstring(libraryMajor) + L'.' + std::to_wstring(libraryMinor); }

// Where things stand, below the root of all classes.
const std::wstring classesKey = L"Software\\Classes\\";
std::wstring classKey(const Identity& identity) { return classesKey + L"CLSID\\" + braced(identity.coclass); }
std::wstring interfaceKey(std::string_view id) { return classesKey + L"Interface\\" + braced(id); }
std::wstring libraryKey() { return classesKey + L"TypeLib\\" + braced(libraryId); }
std::wstring libraryVersionKey() { return libraryKey() + L'\\' + version(); }

/// The name that scripts create objects by, and the one with the version.
std::wstring programId(const Identity& identity) { return wide(libraryName) + L'.' + wide(identity.className); }
std::wstring versionedProgramId(const Identity& identity) {
    return programId(identity) + L'.' + std::to_wstring(libraryMajor);
}

class Writer {
public:
    explicit Writer(HKEY scope) : scope_(scope) {}

    /// Sets a value, the key's own where the name is null.
    void set(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
        const LSTATUS status = RegSetKeyValueW(scope_, key.c_str(), name, REG_SZ, text.c_str(),
                                               static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
        if (status != ERROR_SUCCESS && SUCCEEDED(result_)) result_ = HRESULT_FROM_WIN32(status);
    }

    void remove(const std::wstring& key) {
        const LSTATUS status = RegDeleteTreeW(scope_, key.c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND && SUCCEEDED(result_)) {
            result_ = HRESULT_FROM_WIN32(status);
        }
    }

    /// Removes a key that has nothing below it.
    void removeEmpty(const std::wstring& key) const { RegDeleteKeyW(scope_, key.c_str()); }

    bool exists(const std::wstring& key) const {
        HKEY opened = nullptr;
        if (RegOpenKeyExW(scope_, key.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) return false;
        RegCloseKey(opened);
        return true;
    }

    HRESULT result() const { return result_; }

private:
    HKEY scope_;
    HRESULT result_ = S_OK;
};

void setInterface(Writer& registry, std::string_view id, const std::wstring& name) {
    const std::wstring key = interfaceKey(id);
    registry.set(key, nullptr, name);
    registry.set(key + L"\\ProxyStubClsid32", nullptr, dispatchProxy);
    registry.set(key + L"\\TypeLib", nullptr, braced(libraryId));
    registry.set(key + L"\\TypeLib", L"Version", version());
}

void setClass(Writer& registry, const Identity& identity, const std::wstring& file) {
    const std::wstring title = wide(libraryName) + L' ' + wide(identity.className);
    const std::wstring key = classKey(identity);
    registry.set(key, nullptr, title);
    registry.set(key + L"\\InprocServer32", nullptr, file);
    registry.set(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    registry.set(key + L"\\ProgID", nullptr, versionedProgramId(identity));
    registry.set(key + L"\\VersionIndependentProgID", nullptr, programId(identity));
    registry.set(key + L"\\TypeLib", nullptr, braced(libraryId));
    registry.set(key + L"\\Version", nullptr, version());

    registry.set(classesKey + versionedProgramId(identity), nullptr, title);
    registry.set(classesKey + versionedProgramId(identity) + L"\\CLSID", nullptr, braced(identity.coclass));
    registry.set(classesKey + programId(identity), nullptr, title);
    registry.set(classesKey + programId(identity) + L"\\CLSID", nullptr, braced(identity.coclass));
    registry.set(classesKey + programId(identity) + L"\\CurVer", nullptr, versionedProgramId(identity));

    setInterface(registry, identity.members, L'_' + wide(identity.className));
    if (!identity.events.empty()) setInterface(registry, identity.events, L'_' + wide(identity.className) + L"Events");
}

}  // namespace

HRESULT registerServer(HKEY scope) {
    Writer registry(scope);
    const std::wstring file = moduleFile();
    for (const Identity& identity : identities) setClass(registry, identity, file);
    registry.set(libraryVersionKey(), nullptr, wide(libraryName));
    registry.set(libraryVersionKey() + ownPlatform, nullptr, file);
    registry.set(libraryVersionKey() + L"\\FLAGS", nullptr, L"0");
    registry.set(libraryVersionKey() + L"\\HELPDIR", nullptr, file.substr(0, file.rfind(L'\\')));
    return registry.result();
}

HRESULT unregisterServer(HKEY scope) {
    Writer registry(scope);
    for (const Identity& identity : identities) {
        registry.remove(classKey(identity));
        registry.remove(interfaceKey(identity.members));
        if (!identity.events.empty()) registry.remove(interfaceKey(identity.events));
    }
    registry.remove(libraryVersionKey() + ownPlatform);
    if (registry.exists(libraryVersionKey() + otherPlatform)) return registry.result();
    for (const Identity& identity : identities) {
        registry.remove(classesKey + versionedProgramId(identity));
        registry.remove(classesKey + programId(identity));
    }
    registry.remove(libraryVersionKey());
    registry.removeEmpty(libraryKey());
    return registry.result();
}

}  // namespace quill1xml::automation
