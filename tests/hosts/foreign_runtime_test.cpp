// A host that brings the compiler's run-time library as a DLL of its own.
#include "hosts/client.hpp"

namespace quill1xml {
namespace {

using namespace testing;

TEST(ForeignRuntime, ErrorsStillArrive) {
    // 64-bit code keeps its unwind tables with the system.
    if (sizeof(void*) == 4) {
        ASSERT_NE(LoadLibraryW(L"libgcc_s_dw2-1.dll"), nullptr);
    }
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    const TempFolder folder;
    // Under another name the server starts anew, whatever the process has loaded before.
    const auto copy = folder.path() / "fresh.dll";
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::filesystem::copy_file(std::filesystem::path(program).replace_filename(L"Quill1XML.dll"), copy);
    HMODULE const module = LoadLibraryW(copy.c_str());
    ASSERT_NE(module, nullptr);
    {
        const auto entry = reinterpret_cast<decltype(&DllGetClassObject)>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
        com::ComPtr<IClassFactory> factory;
        com::ComPtr<IDispatch> store;
        entry(automation::guidOf(automation::findIdentity("Store")->coclass), IID_IClassFactory, factory.putVoid());
        ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, store.putVoid()), S_OK);
        const auto expectRefusal = [&store] {
            const Outcome refused = call(store.get(), u"AddTax", {u"VAT123456789"});
            EXPECT_EQ(refused.code, applicationError);
            EXPECT_EQ(refused.source, "Quill1XML.Store.AddTax()");
            EXPECT_EQ(refused.description, "The TaxCode may not be less than 1 or more than 10 characters in length.");
        };
        expectRefusal();
        // Nobody listens there.
        const Outcome failed = call(store.get(), u"ReceiveOrders", {1, u"u", u"p", u"http://127.0.0.1:1/orders"});
        EXPECT_EQ(HRESULT_FACILITY(failed.code), FACILITY_INTERNET);
        EXPECT_EQ(failed.source, "Quill1XML");
        EXPECT_TRUE(failed.description.starts_with("127.0.0.1: ")) << failed.description;
        expectRefusal();
        EXPECT_EQ(call(store.get(), u"AddPaymentOption", {u"99999999999"}).description, "Overflow: lngOptionID");
    }
    FreeLibrary(module);
    CoUninitialize();
}

}  // namespace
}  // namespace quill1xml
