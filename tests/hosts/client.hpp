// An automation host in C++: loads the server, calls it late-bound and hears its events.
#pragma once

#include "automation/com/guid.hpp"
#include "automation/identity.hpp"
#include "platform/windows/com_support.hpp"
#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/xml_parsing.hpp"
#include "quill1xml/text.hpp"
#include "support/temp_folder.hpp"

#include <windows.h>

#include <objbase.h>
#include <ocidl.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml::testing {

/// The DLL beside the test program, loaded as long as this lives.
class LoadedServer {
public:
    LoadedServer() : module_(LoadLibraryW(L"Quill1XML.dll")) { EXPECT_NE(module_, nullptr); }
    LoadedServer(const LoadedServer&) = delete;
    LoadedServer& operator=(const LoadedServer&) = delete;
    ~LoadedServer() { FreeLibrary(module_); }

    com::ComPtr<IClassFactory> factory(REFCLSID classId) const {
        com::ComPtr<IClassFactory> result;
        entry<decltype(DllGetClassObject)>("DllGetClassObject")(classId, IID_IClassFactory, result.putVoid());
        return result;
    }

    /// A new object of a class; empty, and a failure of the test, when there is none.
    com::ComPtr<IDispatch> create(std::string_view className) const {
        com::ComPtr<IDispatch> object;
        const auto maker = factory(automation::guidOf(automation::findIdentity(className)->coclass));
        EXPECT_TRUE(maker && SUCCEEDED(maker->CreateInstance(nullptr, IID_IDispatch, object.putVoid())));
        return object;
    }

    bool canUnload() const { return entry<decltype(DllCanUnloadNow)>("DllCanUnloadNow")() == S_OK; }

    HRESULT install(bool install, const wchar_t* scope) const {
        return entry<HRESULT WINAPI(BOOL, const wchar_t*)>("DllInstall")(install ? TRUE : FALSE, scope);
    }

private:
    template <class Function>
    Function* entry(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    HMODULE module_;
};

/// An argument as hosts pass it. Copies share the value.
class Arg {
public:
    Arg(const char16_t* text) : value_(std::make_shared<com::Variant>(Text(text))) {}
    Arg(int number) : value_(std::make_shared<com::Variant>(static_cast<long>(number))) {}
    Arg(bool flag) : value_(std::make_shared<com::Variant>(flag)) {}
    Arg(double number) : Arg(VT_R8) { value_->put()->dblVal = number, value_->put()->vt = VT_R8; }

    /// A value of the type, all of whose bytes are zero; fill may set them.
    static Arg of(VARTYPE type, const std::function<void(VARIANT&)>& fill = {}) {
        Arg result(0);
        VARIANT& value = *result.value_->put();
        value = {};
        value.vt = type;
        if (fill) fill(value);
        return result;
    }

    static Arg missing() {
        return of(VT_ERROR, [](VARIANT& value) { value.scode = DISP_E_PARAMNOTFOUND; });
    }

    const VARIANT& get() const { return value_->get(); }

private:
    std::shared_ptr<com::Variant> value_;
};

using Args = std::vector<Arg>;
using NamedArgs = std::vector<std::pair<std::u16string, Arg>>;

/// What a call came to. The texts are those of EXCEPINFO; the object of the thread must agree.
struct Outcome {
    HRESULT result = S_OK;
    com::Variant value{};
    std::int32_t code = 0;
    std::string source{};
    std::string description{};
    UINT faulty = ~0u;
};

inline DISPID idOf(IDispatch* object, const char16_t* member) {
    auto* name = const_cast<wchar_t*>(com::wide(member));
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), S_OK) << toUtf8(member);
    return id;
}

constexpr LCID english = 0x0409;
constexpr LCID german = 0x0407;

/// Calls by DISPID; named arguments by theirs.
inline Outcome invoke(IDispatch* object, DISPID id, const Args& args, const std::vector<DISPID>& named = {},
                      LCID locale = english, WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET) {
    // The array is counted from the last argument; the named ones stand before those given by place.
    std::vector<VARIANT> values;
    for (auto arg = args.rbegin(); arg != args.rend(); ++arg) values.push_back(arg->get());
    std::vector<DISPID> names(named.rbegin(), named.rend());
    DISPPARAMS given{values.data(), names.data(), static_cast<UINT>(values.size()), static_cast<UINT>(names.size())};
    Outcome outcome;
    EXCEPINFO details{};
    outcome.result =
        object->Invoke(id, IID_NULL, locale, flags, &given, outcome.value.put(), &details, &outcome.faulty);
    outcome.code = static_cast<std::int32_t>(details.scode);
    com::Bstr source;
    com::Bstr description;
    *source.put() = details.bstrSource;
    *description.put() = details.bstrDescription;
    outcome.source = toUtf8(source.text());
    outcome.description = toUtf8(description.text());
    return outcome;
}

inline Outcome call(IDispatch* object, const char16_t* member, const Args& args = {}, const NamedArgs& named = {},
                    LCID locale = english) {
    std::vector<wchar_t*> names = {const_cast<wchar_t*>(com::wide(member))};
    Args all = args;
    for (const auto& [name, arg] : named) {
        names.push_back(const_cast<wchar_t*>(com::wide(name.c_str())));
        all.push_back(arg);
    }
    std::vector<DISPID> ids(names.size());
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), locale, ids.data()), S_OK)
        << toUtf8(member);
    return invoke(object, ids[0], all, {ids.begin() + 1, ids.end()}, locale);
}

/// As call, for a call that must succeed.
inline com::Variant mustCall(IDispatch* object, const char16_t* member, const Args& args = {}) {
    Outcome outcome = call(object, member, args);
    EXPECT_EQ(outcome.result, S_OK) << toUtf8(member) << ": " << outcome.description;
    return std::move(outcome.value);
}

inline std::string textOf(const VARIANT& value) {
    EXPECT_EQ(value.vt, VT_BSTR);
    return value.vt == VT_BSTR ? toUtf8(com::asText(value.bstrVal, SysStringLen(value.bstrVal))) : std::string();
}

/// Hears events and counts its references. It belongs to the test, whoever lets go of it.
class Sink final : public IDispatch {
public:
    /// What the sink does when it is called, and its answer.
    using Reaction = std::function<HRESULT(DISPID id, const DISPPARAMS& given)>;

    explicit Sink(Reaction reaction = {}) : reaction_(std::move(reaction)) {}
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() { EXPECT_EQ(references, 0u); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        if (*result == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return reaction_ ? reaction_(id, *given) : S_OK;
    }

    ULONG references = 0;

private:
    Reaction reaction_;
};

/// The connection point of a Store's events.
inline com::ComPtr<IConnectionPoint> storeEvents(IDispatch* store) {
    com::ComPtr<IConnectionPoint> point;
    const auto container = com::query<IConnectionPointContainer>(store, IID_IConnectionPointContainer);
    EXPECT_EQ(
        container->FindConnectionPoint(automation::guidOf(automation::findIdentity("Store")->events), point.put()),
        S_OK);
    return point;
}

/// Loads the server for each test.
class Client : public ::testing::Test {
protected:
    Client() { EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK); }
    ~Client() override { CoUninitialize(); }

    LoadedServer server;
};

/// Beside a web store, which the environment names.
class Exchange : public Client {
protected:
    void SetUp() override {
        const char* const store = std::getenv("QUILL1XML_STORE_URL");
        ASSERT_NE(store, nullptr) << "run beside a web store";
        url = toUtf16(store);
    }

    std::u16string url;
};

/// Registered for the machine as long as it lives.
struct Registration {
    explicit Registration(const LoadedServer& of) : server(of) { EXPECT_EQ(server.install(true, L""), S_OK); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { server.install(false, L""); }
    const LoadedServer& server;
};

/// Packet files are UTF-16 with a byte-order mark.
inline std::string packet(const TempFolder& folder, Text name) {
    const std::string bytes = folder.bytes(name);
    std::u16string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             static_cast<unsigned char>(bytes[i + 1]) << 8));
    }
    return toUtf8(text);
}

/// The thread's error object: "source|description", empty when there is none.
inline std::string toldToThread() {
    com::ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return {};
    com::Bstr source;
    com::Bstr description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    return toUtf8(source.text()) + '|' + toUtf8(description.text());
}

/// The identity that an object's type library gives it.
inline GUID typeIdOf(IDispatch* object) {
    com::ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(object->GetTypeInfo(0, english, info.put()), S_OK);
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const GUID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
}

/// An object as hosts pass it.
inline Arg dispatch(IDispatch* object) {
    return Arg::of(VT_DISPATCH, [&](VARIANT& place) { place = com::Variant(object).detach(); });
}

/// Nodes of a document, as hosts pass them.
inline Arg nodes(const char16_t* xml, const char16_t* path) {
    const auto document =
        platform::createObject<IXMLDOMDocument2>(platform::documentClass3, platform::iidXmlDomDocument2);
    mustCall(document.get(), u"loadXML", {xml});
    com::Variant list = mustCall(document.get(), u"selectNodes", {path});
    return Arg::of(VT_DISPATCH, [&](VARIANT& place) { place = list.detach(); });
}

}  // namespace quill1xml::testing
