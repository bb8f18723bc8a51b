// The members of the objects as late-bound hosts meet them: names, arguments, results, errors, lifetimes.
#include "hosts/client.hpp"

#include <windows.h>

#include <olectl.h>
#include <psapi.h>

namespace quill1xml {
namespace {

using namespace testing;
using automation::findIdentity;
using automation::guidOf;
using com::ComPtr;
using com::query;

TEST_F(Client, NamesAreFoundInAnyCase) {
    const auto store = server.create("Store");
    struct Case {
        std::vector<const wchar_t*> names;
        std::vector<DISPID> ids;
        HRESULT result;
    };
    const Case cases[] = {
        {{L"AddTax"}, {101}, S_OK},
        {{L"ADDTAX", L"DBLRATE", L"strtaxcode"}, {101, 2, 0}, S_OK},
        {{L"SetTempFilePath"}, {1}, S_OK},
        {{L"AddTax", L"dblRating", L"dblRate"}, {101, DISPID_UNKNOWN, 2}, DISP_E_UNKNOWNNAME},
        {{L"AddTaxes", L"dblRate"}, {DISPID_UNKNOWN, DISPID_UNKNOWN}, DISP_E_UNKNOWNNAME},
        {{L""}, {DISPID_UNKNOWN}, DISP_E_UNKNOWNNAME},
    };
    for (const Case& c : cases) {
        std::vector<wchar_t*> names;
        for (const wchar_t* name : c.names) names.push_back(const_cast<wchar_t*>(name));
        std::vector<DISPID> ids(names.size());
        EXPECT_EQ(store->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), english, ids.data()),
                  c.result);
        EXPECT_EQ(ids, c.ids);
    }
}

TEST_F(Client, ArgumentsArriveHoweverTheyArePassed) {
    const Arg missing = Arg::missing();
    const Arg empty = Arg::of(VT_EMPTY);
    long number = 15;
    VARIANT variant = com::Variant(Text(u"ZA")).detach();
    const Arg numberReference = Arg::of(VT_BYREF | VT_I4, [&](VARIANT& v) { v.plVal = &number; });
    const Arg variantReference = Arg::of(VT_BYREF | VT_VARIANT, [&](VARIANT& v) { v.pvarVal = &variant; });
    const Arg textReference = Arg::of(VT_BYREF | VT_BSTR, [&](VARIANT& v) { v.pbstrVal = &variant.bstrVal; });
    const Arg amount = Arg::of(VT_CY, [](VARIANT& v) { v.cyVal.int64 = 125000; });
    const Arg noText = Arg::of(VT_BSTR);
    const Arg unsignedNotSent = Arg::of(VT_UI4, [](VARIANT& v) { v.ulVal = 0xFFFFFFFF; });

    struct Case {
        const char16_t* member;
        Args args;
        const char* written;
        NamedArgs named{};
        LCID locale = english;
    };
    // clang-format off
    const Case cases[] = {
        {u"AddTax", {u"VAT", u"D", 15, true, u"ZA", u"WC", true, 2.5},
         R"(<Tax TaxCode="VAT" Description="D" Rate=" 15" CountryCode="ZA" StateProvinceCode="WC" Deleted="1" UsePOSRebate="1" POSRebateRate=" 2.5"/>)"},
        {u"AddTax", {u"VAT"}, R"(<Tax TaxCode="VAT" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {u"AddTax", {u"VAT", missing, missing, missing, u"ZA"},
         R"(<Tax TaxCode="VAT" CountryCode="ZA" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {u"AddTax", {u"VAT", empty, empty, empty, empty, noText, empty, empty},
         R"(<Tax TaxCode="VAT" StateProvinceCode="" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {u"AddTax", {u"VAT"}, R"(<Tax TaxCode="VAT" Rate=" 15" CountryCode="ZA" UsePOSRebate="0" POSRebateRate=" 0"/>)",
         {{u"strCountryCode", u"ZA"}, {u"dblrate", 15}}},
        {u"AddTax", {}, R"(<Tax TaxCode="VAT" Deleted="1" UsePOSRebate="0" POSRebateRate=" 0"/>)",
         {{u"blnDeleted", true}, {u"dblRate", missing}, {u"strTaxCode", u"VAT"}}},
        {u"AddTax", {textReference, variantReference, numberReference},
         R"(<Tax TaxCode="ZA" Description="ZA" Rate=" 15" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {u"AddTax", {12, 34.5, u"15.25", -1, true, amount, u"True", amount},
         R"(<Tax TaxCode="12" Description="34.5" Rate=" 15.25" CountryCode="True" StateProvinceCode="12.5" Deleted="1" UsePOSRebate="1" POSRebateRate=" 12.5"/>)"},
        {u"AddTax", {12, 34.5, u"15,25"},
         R"(<Tax TaxCode="12" Description="34,5" Rate=" 15.25" UsePOSRebate="0" POSRebateRate=" 0"/>)", {}, german},
        {u"AddTradingCountry", {empty, empty}, R"(<TradingCountry CountryCode=""/>)"},
        {u"AddPaymentOption", {3.0, u"12"}, R"(<PaymentOption OptionID="3" PaymentPeriod="12"/>)"},
        {u"AddMailTo", {u"R", missing, missing, missing, missing, 1}, R"(<MailTo RepCode="R" MailUs="1"/>)"},
        {u"AddCurrency", {u"ZAR"}, R"(<Currency CurrencyCode="ZAR" ExchangeRate=" 1"/>)"},
        {u"AddProductType", {u"T"}, R"(<ProductType ProductTypeID="T"/>)", {{u"intBlnAllowRatings", unsignedNotSent}}},
    };
    // clang-format on
    for (const Case& c : cases) {
        const TempFolder folder;
        const auto store = server.create("Store");
        mustCall(store.get(), u"SetTempFilePath", {folder.name(u"").c_str()});
        const Outcome outcome = call(store.get(), c.member, c.args, c.named, c.locale);
        EXPECT_EQ(outcome.result, S_OK) << outcome.description;
        const std::u16string kind(c.member + 3);
        EXPECT_EQ(packet(folder, u"WebStore" + kind + u"1.tmp"), c.written);
    }
    VariantClear(&variant);
}

TEST_F(Client, ResultsHaveTheirTypes) {
    const TempFolder folder;
    const auto store = server.create("Store");
    EXPECT_EQ(textOf(mustCall(store.get(), u"XMLEncode", {u"a&b"}).get()), "a&amp;b");
    EXPECT_EQ(mustCall(store.get(), u"ReadBinData", {folder.create(u"f", std::string("\0\xFF", 2)).c_str()}).bytes(),
              std::string("\0\xFF", 2));
    EXPECT_EQ(mustCall(store.get(), u"SetStoreID", {7})->vt, VT_EMPTY);

    const Arg noon = Arg::of(VT_DATE, [](VARIANT& v) { v.date = 45351.5; });
    for (const Arg& date : {noon, Arg(45351.5), Arg(u"2024-02-29 12:00:00")}) {
        EXPECT_EQ(textOf(mustCall(store.get(), u"FormatDate", {date}).get()), "2024-02-29T12:00:00");
    }

    // A property answers to either way of asking, as does a method.
    const auto builder = server.create("CString");
    constexpr WORD ways[] = {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_METHOD | DISPATCH_PROPERTYGET};
    long expected = 0;
    for (const WORD flags : ways) {
        EXPECT_EQ(invoke(builder.get(), idOf(builder.get(), u"concat"), {u"ab"}, {}, english, flags).result, S_OK);
        const Outcome length = invoke(builder.get(), idOf(builder.get(), u"length"), {}, {}, english, flags);
        EXPECT_EQ(length.value->vt, VT_I4);
        EXPECT_EQ(length.value->lVal, expected += 2);
    }
    EXPECT_EQ(textOf(mustCall(builder.get(), u"text").get()), "ababab");
    EXPECT_EQ(invoke(builder.get(), idOf(builder.get(), u"length"), {1}, {}, english, DISPATCH_PROPERTYPUT).result,
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(builder.get(), 99, {}).result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(Client, ErrorsKeepNumberSourceAndDescription) {
    const auto store = server.create("Store");
    const Arg missing = Arg::missing();
    const Arg null = Arg::of(VT_NULL);
    const Arg bytes = Arg::of(VT_ARRAY | VT_UI1, [](VARIANT& v) { v.parray = SafeArrayCreateVector(VT_UI1, 0, 2); });
    constexpr UINT any = ~0u;
    struct Case {
        const char16_t* member;
        Args args;
        std::uint32_t code;
        const char* description;
        UINT faulty = any;
        std::vector<DISPID> named{};
        const char* source = "Quill1XML";
    };
    // clang-format off
    const Case cases[] = {
        {u"AddTax", {u""}, 0x80040000, "The TaxCode may not be less than 1 or more than 10 characters in length.", any, {},
         "Quill1XML.Store.AddTax()"},
        {u"AddPaymentOption", {}, 0x80040000, "The option ID may not be equal to 0.", any, {},
         "Quill1XML.Store.AddPaymentOption()"},
        {u"AddTax", {u"A", missing, u"x", false}, 0x800A000D, "Type mismatch: dblRate", 1},
        {u"AddTax", {null}, 0x800A000D, "Type mismatch: strTaxCode", 0},
        {u"AddTax", {u"A", bytes}, 0x800A000D, "Type mismatch: strDescription", 0},
        {u"AddTax", {u"A", u"x"}, 0x800A000D, "Type mismatch: dblRate", 0, {2}},
        {u"AddPaymentOption", {u"99999999999"}, 0x800A0006, "Overflow: lngOptionID", 0},
        {u"AddMailTo", {u"R", 40000}, 0x800A0006, "Overflow: intMailUs", 0, {5}},
        {u"AddTax", {}, 0x800A01C1, "Argument not optional: strTaxCode"},
        {u"AddTax", {missing}, 0x800A01C1, "Argument not optional: strTaxCode"},
        {u"AddTradingCountry", {u"ZA", false, 1}, 0x800A01C2, "Wrong number of arguments or invalid property assignment"},
        {u"AddTax", {u"A", 1}, 0x800A01C0, "Named argument not found", any, {8}},
        {u"AddTax", {u"A", u"B"}, 0x800A01C0, "Named argument not found", any, {0}},
        {u"AddTax", {u"A", u"B", u"C"}, 0x800A01C0, "Named argument not found", any, {1, 1}},
    };
    // clang-format on
    for (const Case& c : cases) {
        const DISPID id = idOf(store.get(), c.member);
        const Outcome outcome = invoke(store.get(), id, c.args, c.named);
        EXPECT_EQ(outcome.result, DISP_E_EXCEPTION) << c.description;
        EXPECT_EQ(static_cast<std::uint32_t>(outcome.code), c.code) << c.description;
        EXPECT_EQ(outcome.source, c.source);
        EXPECT_EQ(outcome.description, c.description);
        EXPECT_EQ(toldToThread(), std::string(c.source) + '|' + c.description);
        EXPECT_TRUE(c.faulty == any || c.faulty == outcome.faulty) << c.description << ' ' << outcome.faulty;
    }

    // Without a place for details the code itself is the result.
    DISPPARAMS none{};
    EXPECT_EQ(store->Invoke(idOf(store.get(), u"AddPaymentOption"), IID_NULL, english, DISPATCH_METHOD, &none, nullptr,
                            nullptr, nullptr),
              static_cast<HRESULT>(0x80040000));
    // Hosts ask this before they look at the error object.
    const auto support = query<ISupportErrorInfo>(store.get(), IID_ISupportErrorInfo);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(guidOf(findIdentity("Store")->members)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IProvideClassInfo2), S_FALSE);
    EXPECT_EQ(toldToThread(), "Quill1XML.Store.AddPaymentOption()|The option ID may not be equal to 0.");
}

TEST_F(Client, NoCallLeavesTheErrorOfAnEarlierOne) {
    const auto store = server.create("Store");
    const auto builder = server.create("CString");
    const auto point = storeEvents(store.get());
    const auto factory = server.factory(guidOf(findIdentity("CString")->coclass));
    ComPtr<IUnknown> object;
    const std::function<void()> calls[] = {
        [&] { mustCall(builder.get(), u"length"); },
        [&] { idOf(store.get(), u"AddTax"); },
        [&] { EXPECT_EQ(point->Unadvise(9), static_cast<HRESULT>(CONNECT_E_NOCONNECTION)); },
        [&] { EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()), S_OK); },
    };
    for (const auto& each : calls) {
        EXPECT_EQ(call(store.get(), u"AddTax", {u""}).code, applicationError);
        each();
        EXPECT_EQ(toldToThread(), "") << &each - calls;
    }
}

TEST_F(Client, ReferencesAreBalanced) {
    EXPECT_TRUE(server.canUnload());
    Sink kept;
    Sink left;
    {
        auto store = server.create("Store");
        EXPECT_FALSE(server.canUnload());
        const auto identity = query<IUnknown>(store.get(), IID_IUnknown);
        for (const IID& id : {IID_IDispatch, IID_IProvideClassInfo, IID_IProvideClassInfo2, IID_ISupportErrorInfo,
                              IID_IConnectionPointContainer, guidOf(findIdentity("Store")->members)}) {
            const auto other = query<IUnknown>(store.get(), id);
            ASSERT_TRUE(other);
            EXPECT_EQ(query<IUnknown>(other.get(), IID_IUnknown).get(), identity.get());
        }
        EXPECT_FALSE(query<IUnknown>(store.get(), IID_IMarshal));
        EXPECT_FALSE(query<IUnknown>(server.create("CString").get(), IID_IConnectionPointContainer));

        const auto point = storeEvents(store.get());
        DWORD cookie = 0;
        DWORD keptCookie = 0;
        EXPECT_EQ(point->Advise(&left, &cookie), S_OK);
        EXPECT_EQ(point->Advise(&kept, &keptCookie), S_OK);
        EXPECT_EQ(left.references, 1u);
        EXPECT_EQ(point->Unadvise(cookie), S_OK);
        EXPECT_EQ(left.references, 0u);
        EXPECT_EQ(point->Unadvise(cookie), static_cast<HRESULT>(CONNECT_E_NOCONNECTION));
        EXPECT_EQ(kept.references, 1u);
    }
    // The object let go of its sink when it went itself.
    EXPECT_EQ(kept.references, 0u);
    EXPECT_TRUE(server.canUnload());

    const auto factory = server.factory(guidOf(findIdentity("Store")->coclass));
    ComPtr<IDispatch> object;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, object.putVoid()), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IMarshal, object.putVoid()), E_NOINTERFACE);
    EXPECT_FALSE(server.factory(IID_IUnknown));
}

// Some hosts have the processor stop at calculations that are not exact.
TEST_F(Client, TheHostsArithmeticIsItsOwn) {
    const auto store = server.create("Store");
    const unsigned int before = _controlfp(0, 0);
    _controlfp(0, _MCW_EM);
    const Outcome outcome = call(store.get(), u"FormatDate", {45351.4999});
    const unsigned int after = _controlfp(before, _MCW_EM | _MCW_RC);
    EXPECT_EQ(textOf(outcome.value.get()), "2024-02-29T11:59:51");
    EXPECT_EQ(_controlfp(0, 0), before);
    EXPECT_EQ(after & _MCW_EM, before & _MCW_EM);
}

/// What a process can run out of.
struct Resources {
    std::size_t handle = 0;  ///< the number of the next one
    std::size_t slots = 0;   ///< thread-local ones, left
    std::size_t bytes = 0;

    static Resources now() {
        Resources result;
        HANDLE const handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        result.handle = reinterpret_cast<std::size_t>(handle);
        CloseHandle(handle);
        std::vector<DWORD> slots;
        for (DWORD slot; (slot = TlsAlloc()) != TLS_OUT_OF_INDEXES;) slots.push_back(slot);
        for (const DWORD slot : slots) TlsFree(slot);
        result.slots = slots.size();
        PROCESS_MEMORY_COUNTERS memory{};
        GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
        result.bytes = memory.PagefileUsage;
        return result;
    }
};

// Hosts that load and unload the server with each job would soon have used up the process.
TEST(Module, IsLoadedAndUnloadedOverAndOver) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    Resources before;
    for (int round = 0; round < 2000; ++round) {
        const LoadedServer server;
        ASSERT_EQ(call(server.create("Store").get(), u"AddTax", {u""}).code, applicationError);
        EXPECT_TRUE(server.canUnload());
        if (round == 10) before = Resources::now();
    }
    const Resources after = Resources::now();
    EXPECT_LT(after.handle, before.handle + 400);
    EXPECT_EQ(after.slots, before.slots);
    EXPECT_LT(after.bytes, before.bytes + 1'000'000);
    CoUninitialize();
}

}  // namespace
}  // namespace quill1xml
