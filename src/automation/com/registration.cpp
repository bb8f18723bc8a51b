#include "automation/com/registration.hpp"

#include "automation/classes.hpp"
#include "automation/com/guid.hpp"
#include "automation/com/module.hpp"
#include "automation/identity.hpp"

#include <objbase.h>

#include <optional>
#include <string>

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

/// Where the event log looks up who may write to it; both bitnesses see the same key.
constexpr const wchar_t* eventSourceKey = L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\Quill1XML";

class Writer {
public:
    explicit Writer(HKEY scope) : scope_(scope) {}

    /// Sets a value, the key's own where the name is null.
    void set(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
        set(key, name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }

    void setNumber(const std::wstring& key, const wchar_t* name, DWORD number) {
        set(key, name, REG_DWORD, &number, sizeof number);
    }

    void remove(const std::wstring& key) {
        const LSTATUS status = RegDeleteTreeW(scope_, key.c_str());
        if (status != ERROR_FILE_NOT_FOUND) note(status);
    }

    /// Removes a key that has nothing below it.
    void removeEmpty(const std::wstring& key) const { RegDeleteKeyW(scope_, key.c_str()); }

    /// A key's own value; nothing when there is none.
    std::optional<std::wstring> text(const std::wstring& key) const {
        DWORD bytes = 0;
        if (RegGetValueW(scope_, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        std::wstring value(bytes / sizeof(wchar_t), L'\0');
        if (RegGetValueW(scope_, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &bytes) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        return value.c_str();
    }

    HRESULT result() const { return result_; }

private:
    void set(const std::wstring& key, const wchar_t* name, DWORD type, const void* data, std::size_t bytes) {
        note(RegSetKeyValueW(scope_, key.c_str(), name, type, data, static_cast<DWORD>(bytes)));
    }

    void note(LSTATUS status) {
        if (status != ERROR_SUCCESS && SUCCEEDED(result_)) result_ = HRESULT_FROM_WIN32(status);
    }

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

/// Lets the event log show our entries through the messages in a file. Without it each begins with a complaint.
void setEventSource(Writer& registry, const std::wstring& file) {
    registry.set(eventSourceKey, L"EventMessageFile", file);
    registry.setNumber(eventSourceKey, L"TypesSupported", EVENTLOG_ERROR_TYPE);
}

}  // namespace

HRESULT registerServer(HKEY scope) {
    Writer registry(scope);
    const std::wstring file = moduleFile();
    for (const Identity& identity : identities) setClass(registry, identity, file);
    setInterface(registry, collectionId, L"_Collection");
    registry.set(libraryVersionKey(), nullptr, wide(libraryName));
    registry.set(libraryVersionKey() + ownPlatform, nullptr, file);
    registry.set(libraryVersionKey() + L"\\FLAGS", nullptr, L"0");
    registry.set(libraryVersionKey() + L"\\HELPDIR", nullptr, file.substr(0, file.rfind(L'\\')));
    // Sources of events are the machine's: a user has none of his own.
    if (scope == HKEY_LOCAL_MACHINE) setEventSource(registry, file);
    return registry.result();
}

HRESULT unregisterServer(HKEY scope) {
    Writer registry(scope);
    for (const Identity& identity : identities) {
        registry.remove(classKey(identity));
        registry.remove(interfaceKey(identity.members));
        if (!identity.events.empty()) registry.remove(interfaceKey(identity.events));
    }
    registry.remove(interfaceKey(collectionId));
    registry.remove(libraryVersionKey() + ownPlatform);
    if (const auto otherFile = registry.text(libraryVersionKey() + otherPlatform)) {
        if (scope == HKEY_LOCAL_MACHINE) setEventSource(registry, *otherFile);
        return registry.result();
    }
    if (scope == HKEY_LOCAL_MACHINE) registry.remove(eventSourceKey);
    for (const Identity& identity : identities) {
        registry.remove(classesKey + versionedProgramId(identity));
        registry.remove(classesKey + programId(identity));
    }
    registry.remove(libraryVersionKey());
    registry.removeEmpty(libraryKey());
    return registry.result();
}

}  // namespace quill1xml::automation
