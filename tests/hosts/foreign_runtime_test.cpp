// A host that brings the compiler's run-time library as a DLL of its own.
#include "hosts/client.hpp"

namespace quill1xml {
namespace {

using namespace testing;

/// A copy of the server under another name: it starts anew, whatever the process has loaded before.
class FreshServer {
public:
    FreshServer() {
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        const auto copy = folder_.path() / "fresh.dll";
        std::filesystem::copy_file(std::filesystem::path(program).replace_filename(L"Quill1XML.dll"), copy);
        module_ = LoadLibraryW(copy.c_str());
    }
    FreshServer(const FreshServer&) = delete;
    FreshServer& operator=(const FreshServer&) = delete;
    ~FreshServer() { FreeLibrary(module_); }

    com::ComPtr<IDispatch> store() const {
        const auto entry = reinterpret_cast<decltype(&DllGetClassObject)>(
            reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject")));
        com::ComPtr<IClassFactory> factory;
        com::ComPtr<IDispatch> object;
        entry(automation::guidOf(automation::findIdentity("Store")->coclass), IID_IClassFactory, factory.putVoid());
        factory->CreateInstance(nullptr, IID_IDispatch, object.putVoid());
        return object;
    }

private:
    TempFolder folder_;
    HMODULE module_ = nullptr;
};

TEST(ForeignRuntime, ErrorsStillArrive) {
    // Beside the tests in the 32-bit build only: 64-bit code keeps its unwind tables with the system.
    if (sizeof(void*) == 4) {
        ASSERT_NE(LoadLibraryW(L"libgcc_s_dw2-1.dll"), nullptr);
    }
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    {
        const FreshServer server;
        const auto store = server.store();
        const Outcome refused = call(store.get(), u"AddTax", {u"VAT123456789"});
        EXPECT_EQ(refused.code, static_cast<std::int32_t>(0x80040000));
        EXPECT_EQ(refused.description, "The TaxCode may not be less than 1 or more than 10 characters in length.");
        EXPECT_EQ(call(store.get(), u"AddPaymentOption", {u"99999999999"}).description, "Overflow: lngOptionID");
    }
    CoUninitialize();
}

}  // namespace
}  // namespace quill1xml
