// How hosts find the classes: registration for the machine, for a user, and none.
#include "hosts/client.hpp"

#include "automation/classes.hpp"

#include <set>

namespace quill1xml {
namespace {

using namespace testing;
using automation::findIdentity;
using automation::guidOf;
using com::ComPtr;

/// Creates an object of every class by name, through whatever COM knows.
void expectCreatableByName(bool creatable) {
    for (const automation::Class* each : automation::classes()) {
        const std::u16string name = u"Quill1XML." + toUtf16(each->name);
        CLSID classId{};
        ComPtr<IDispatch> object;
        HRESULT result = CLSIDFromProgID(com::wide(name.c_str()), &classId);
        if (SUCCEEDED(result)) {
            result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid());
        }
        EXPECT_EQ(SUCCEEDED(result), creatable) << each->name;
        if (!object) continue;
        EXPECT_EQ(typeIdOf(object.get()), guidOf(findIdentity(each->name)->members)) << each->name;
    }
}

/// Adds every value below a key, as a line with the key's name.
void list(HKEY scope, const std::wstring& key, std::set<std::wstring>& lines) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(scope, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return;
    wchar_t name[512];
    wchar_t data[512];
    for (DWORD i = 0, size = 512; RegEnumKeyExW(opened, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
         ++i, size = 512) {
        list(scope, key + L'\\' + name, lines);
    }
    for (DWORD i = 0, size = 512, bytes = sizeof data;
         RegEnumValueW(opened, i, name, &size, nullptr, nullptr, reinterpret_cast<BYTE*>(data), &bytes) == 0;
         ++i, size = 512, bytes = sizeof data) {
        lines.insert(key + L'|' + name + L'=' + std::wstring(data, bytes / sizeof(wchar_t)).c_str());
    }
    RegCloseKey(opened);
}

const std::wstring classesKey = L"Software\\Classes\\";

std::wstring idKey(const wchar_t* place, std::string_view id) {
    wchar_t text[39];
    StringFromGUID2(guidOf(id), text, 39);
    return classesKey + place + text;
}

/// Where the type library of the other bitness stands.
std::wstring otherPlatformKey() {
    return idKey(L"TypeLib\\", automation::libraryId) + L"\\1.0\\0\\" + (sizeof(void*) == 8 ? L"win32" : L"win64");
}

/// All that the registry holds of the server.
std::set<std::wstring> registered(HKEY scope) {
    std::set<std::wstring> lines;
    list(scope, idKey(L"TypeLib\\", automation::libraryId), lines);
    for (const automation::Identity& identity : automation::identities) {
        const std::wstring program = classesKey + com::wide((u"Quill1XML." + toUtf16(identity.className)).c_str());
        list(scope, program, lines);
        list(scope, program + L".1", lines);
        list(scope, idKey(L"CLSID\\", identity.coclass), lines);
        list(scope, idKey(L"Interface\\", identity.members), lines);
        if (!identity.events.empty()) list(scope, idKey(L"Interface\\", identity.events), lines);
    }
    return lines;
}

TEST_F(Client, RegistersForTheMachine) {
    expectCreatableByName(false);
    ASSERT_EQ(server.install(true, L""), S_OK);
    EXPECT_EQ(server.install(true, L""), S_OK);
    expectCreatableByName(true);
    ComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(guidOf(automation::libraryId), 1, 0, 0, library.put()), S_OK);
    wchar_t* programId = nullptr;
    EXPECT_EQ(ProgIDFromCLSID(guidOf(findIdentity("Store")->coclass), &programId), S_OK);
    EXPECT_STREQ(programId, L"Quill1XML.Store.1");
    CoTaskMemFree(programId);
    CLSID classId{};
    EXPECT_EQ(CLSIDFromProgID(L"Quill1XML.Store.1", &classId), S_OK);
    EXPECT_EQ(classId, guidOf(findIdentity("Store")->coclass));
    EXPECT_EQ(server.install(false, L""), S_OK);
    expectCreatableByName(false);
    EXPECT_EQ(server.install(false, L""), S_OK);
    EXPECT_EQ(server.install(true, L"everyone"), E_INVALIDARG);
}

TEST_F(Client, RegistersForTheUserAlone) {
    const std::set<std::wstring> nothing;
    ASSERT_EQ(server.install(true, L""), S_OK);
    const auto forMachine = registered(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(forMachine.count(idKey(L"CLSID\\", findIdentity("Store")->coclass) +
                               L"\\InprocServer32|ThreadingModel=Apartment"),
              1u);
    EXPECT_EQ(registered(HKEY_CURRENT_USER), nothing);
    ASSERT_EQ(server.install(false, nullptr), S_OK);
    EXPECT_EQ(registered(HKEY_LOCAL_MACHINE), nothing);

    ASSERT_EQ(server.install(true, L"user"), S_OK);
    EXPECT_EQ(registered(HKEY_CURRENT_USER), forMachine);
    EXPECT_EQ(registered(HKEY_LOCAL_MACHINE), nothing);

    // What both bitnesses share stays for the other one.
    const std::wstring other = otherPlatformKey();
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, other.c_str(), nullptr, REG_SZ, L"", 2), ERROR_SUCCESS);
    EXPECT_EQ(server.install(false, L"user"), S_OK);
    const auto left = registered(HKEY_CURRENT_USER);
    EXPECT_EQ(left.count(classesKey + L"Quill1XML.Store\\CurVer|=Quill1XML.Store.1"), 1u);
    EXPECT_EQ(left.count(other + L"|="), 1u);
    ASSERT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, other.c_str()), ERROR_SUCCESS);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(server.install(false, L"user"), S_OK);
        EXPECT_EQ(registered(HKEY_CURRENT_USER), nothing);
    }
}

/// What the event log knows of its source: the file with its messages, the types of its entries.
struct EventSource {
    std::wstring file;
    DWORD types = 0;

    static EventSource registered() {
        constexpr const wchar_t* key = L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\Quill1XML";
        EventSource source;
        wchar_t file[MAX_PATH] = {};
        DWORD bytes = sizeof file;
        RegGetValueW(HKEY_LOCAL_MACHINE, key, L"EventMessageFile", RRF_RT_REG_SZ, nullptr, file, &bytes);
        source.file = file;
        bytes = sizeof source.types;
        RegGetValueW(HKEY_LOCAL_MACHINE, key, L"TypesSupported", RRF_RT_REG_DWORD, nullptr, &source.types, &bytes);
        return source;
    }
};

TEST_F(Client, TheEventLogFindsItsMessages) {
    ASSERT_EQ(server.install(true, L""), S_OK);
    const EventSource own = EventSource::registered();
    EXPECT_EQ(own.types, static_cast<DWORD>(EVENTLOG_ERROR_TYPE));
    HMODULE const messages = LoadLibraryExW(own.file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(messages, nullptr);
    wchar_t name[] = L"entry";
    DWORD_PTR texts[] = {reinterpret_cast<DWORD_PTR>(name)};
    wchar_t shown[64] = {};
    FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, messages, 0, 0, shown, 64,
                   reinterpret_cast<va_list*>(texts));
    EXPECT_STREQ(shown, L"entry\r\n");
    FreeLibrary(messages);

    // The other bitness goes on writing entries when this one has gone.
    const std::wstring other = otherPlatformKey();
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, other.c_str(), nullptr, REG_SZ, L"other.dll", 20), ERROR_SUCCESS);
    EXPECT_EQ(server.install(false, L""), S_OK);
    EXPECT_EQ(EventSource::registered().file, L"other.dll");
    EXPECT_EQ(EventSource::registered().types, own.types);
    ASSERT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, other.c_str()), ERROR_SUCCESS);
    EXPECT_EQ(server.install(false, L""), S_OK);
    EXPECT_EQ(EventSource::registered().file, L"");
    EXPECT_EQ(EventSource::registered().types, 0u);
}

TEST(Manifest, MakesObjectsWithoutRegistration) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    expectCreatableByName(false);
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto manifest = std::filesystem::path(program).replace_filename(L"Quill1XML.Server.manifest");
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.lpSource = manifest.c_str();
    HANDLE const context = CreateActCtxW(&request);
    ASSERT_NE(context, INVALID_HANDLE_VALUE);
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(context, &cookie));
    expectCreatableByName(true);
    const auto expectMarshalled = [](std::string_view id) {
        CLSID marshaller{};
        EXPECT_EQ(CoGetPSClsid(guidOf(id), &marshaller), S_OK) << id;
        EXPECT_EQ(marshaller, guidOf("00020420-0000-0000-c000-000000000046")) << id;
    };
    expectMarshalled(automation::collectionId);
    for (const automation::Identity& identity : automation::identities) {
        expectMarshalled(identity.members);
        if (!identity.events.empty()) expectMarshalled(identity.events);
        const std::u16string name = u"Quill1XML." + toUtf16(identity.className);
        wchar_t* versioned = nullptr;
        EXPECT_EQ(ProgIDFromCLSID(guidOf(identity.coclass), &versioned), S_OK);
        EXPECT_STREQ(versioned, com::wide((name + u".1").c_str()));
        CoTaskMemFree(versioned);
    }
    EXPECT_TRUE(DeactivateActCtx(0, cookie));
    ReleaseActCtx(context);
    CoUninitialize();
}

}  // namespace
}  // namespace quill1xml
