// The server as hosts that call it late-bound or compile against its type library meet it.

#include "hosts/client.hpp"

#include "automation/catalogue.hpp"
#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/xml_parsing.hpp"
#include "support/temp_folder.hpp"

#include <olectl.h>

#include <cstdlib>
#include <optional>
#include <set>

namespace quill1xml {
namespace {

using namespace testing;
using automation::findIdentity;
using automation::guidOf;
using com::ComPtr;
using com::query;

class Client : public ::testing::Test {
protected:
    Client() { EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK); }
    ~Client() override { CoUninitialize(); }

    LoadedServer server;
};

/// Packet files are UTF-16 with a byte-order mark.
std::string packet(const TempFolder& folder, Text name) {
    const std::string bytes = folder.bytes(name);
    std::u16string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             static_cast<unsigned char>(bytes[i + 1]) << 8));
    }
    return toUtf8(text);
}

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

/// The thread's error object: "source|description", empty when there is none.
std::string toldToThread() {
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return {};
    com::Bstr source;
    com::Bstr description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    return toUtf8(source.text()) + '|' + toUtf8(description.text());
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
    EXPECT_EQ(toldToThread(), "Quill1XML.Store.AddPaymentOption()|The option ID may not be equal to 0.");

    const auto support = query<ISupportErrorInfo>(store.get(), IID_ISupportErrorInfo);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(guidOf(findIdentity("Store")->members)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IProvideClassInfo2), S_FALSE);
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

TEST_F(Client, ConnectionPointsAreListed) {
    Sink sinks[2];
    const auto store = server.create("Store");
    const auto container = query<IConnectionPointContainer>(store.get(), IID_IConnectionPointContainer);
    const auto point = storeEvents(store.get());
    IID events;
    EXPECT_EQ(point->GetConnectionInterface(&events), S_OK);
    EXPECT_EQ(events, guidOf(findIdentity("Store")->events));
    ComPtr<IConnectionPointContainer> owner;
    EXPECT_EQ(point->GetConnectionPointContainer(owner.put()), S_OK);
    EXPECT_EQ(owner.get(), container.get());
    // An identity of its own.
    EXPECT_NE(query<IUnknown>(point.get(), IID_IUnknown).get(), query<IUnknown>(store.get(), IID_IUnknown).get());
    EXPECT_TRUE(query<IConnectionPoint>(point.get(), IID_IConnectionPoint));
    ComPtr<IConnectionPoint> none;
    EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, none.put()), static_cast<HRESULT>(CONNECT_E_NOCONNECTION));

    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
    ULONG fetched = 0;
    IConnectionPoint* listed[2] = {};
    EXPECT_EQ(points->Next(2, listed, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 1u);
    EXPECT_EQ(ComPtr<IConnectionPoint>::attach(listed[0]).get(), point.get());
    EXPECT_EQ(points->Skip(1), S_FALSE);

    DWORD cookies[2] = {};
    for (int i = 0; i < 2; ++i) ASSERT_EQ(point->Advise(&sinks[i], &cookies[i]), S_OK);
    EXPECT_NE(cookies[0], cookies[1]);
    EXPECT_EQ(point->Advise(point.get(), &cookies[0]), static_cast<HRESULT>(CONNECT_E_CANNOTCONNECT));
    ComPtr<IEnumConnections> connections;
    ComPtr<IEnumConnections> second;
    ASSERT_EQ(point->EnumConnections(connections.put()), S_OK);
    ASSERT_EQ(connections->Skip(1), S_OK);
    ASSERT_EQ(connections->Clone(second.put()), S_OK);
    CONNECTDATA data{};
    EXPECT_EQ(second->Next(1, &data, nullptr), S_OK);
    EXPECT_EQ(ComPtr<IUnknown>::attach(data.pUnk).get(), &sinks[1]);
    EXPECT_EQ(data.dwCookie, cookies[1]);
    EXPECT_EQ(connections->Reset(), S_OK);
    EXPECT_EQ(connections->Skip(2), S_OK);
    EXPECT_EQ(connections->Next(1, &data, &fetched), S_FALSE);
}

/// The identity that an object's type library gives it.
GUID typeIdOf(IDispatch* object) {
    ComPtr<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(object->GetTypeInfo(0, english, info.put()), S_OK);
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const GUID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
}

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

TEST_F(Exchange, EventsReachEverySinkWhateverOneDoes) {
    const TempFolder folder;
    auto store = server.create("Store");
    mustCall(store.get(), u"SetTempFilePath", {folder.name(u"").c_str()});
    mustCall(store.get(), u"Create", {toUtf16(std::getenv("QUILL1XML_SCHEMA")).c_str(), 1});
    mustCall(store.get(), u"AddAdditionalParameters");
    mustCall(store.get(), u"AddEnvelope", {u"demo", u"demo", (url + u"/upload").c_str()});
    mustCall(store.get(), u"AddCurrency", {u"ZAR"});
    mustCall(store.get(), u"AddTax", {u"VAT", Arg::missing(), 15});

    auto point = storeEvents(store.get());
    int failures = 0;
    DWORD failingCookie = 0;
    Sink failing([&](DISPID, const DISPPARAMS&) {
        // Leaves with the second event, in which it is still called.
        if (++failures == 2) point->Unadvise(failingCookie);
        return E_FAIL;
    });
    std::vector<std::string> heard;
    Sink listening([&](DISPID id, const DISPPARAMS& given) {
        EXPECT_EQ(id, 1);
        EXPECT_EQ(given.cArgs, 2u);
        EXPECT_EQ(given.rgvarg[0].vt, VT_I4);
        heard.push_back(textOf(given.rgvarg[1]) + ' ' + std::to_string(given.rgvarg[0].lVal));
        if (heard.size() == 3) {
            // The host lets go of everything: the call under way keeps the object.
            store = nullptr;
            point = nullptr;
            EXPECT_FALSE(server.canUnload());
        }
        return S_OK;
    });
    DWORD listeningCookie = 0;
    ASSERT_EQ(point->Advise(&failing, &failingCookie), S_OK);
    ASSERT_EQ(point->Advise(&listening, &listeningCookie), S_OK);
    IDispatch* const sender = store.get();
    const auto result = mustCall(sender, u"Send");
    EXPECT_EQ(failures, 2);
    const std::vector<std::string> expected = {"WebStore1.tmp 1", "WebStoreTax1.tmp 2", "WebStoreCurrency1.tmp 3"};
    EXPECT_EQ(heard, expected);
    EXPECT_EQ(textOf(result.get()), "WebStore1.tmp 1,WebStoreTax1.tmp 2,WebStoreCurrency1.tmp 3");
    EXPECT_TRUE(server.canUnload());
}

/// Registered for the machine as long as it lives.
struct Registration {
    explicit Registration(const LoadedServer& of) : server(of) { EXPECT_EQ(server.install(true, L""), S_OK); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { server.install(false, L""); }
    const LoadedServer& server;
};

/// Expects of an automation value what the library itself has: the same type, the same content.
struct SameAs {
    const VARIANT& actual;

    void operator()(std::monostate) const { EXPECT_EQ(actual.vt, VT_EMPTY); }
    void operator()(Long number) const { EXPECT_TRUE(actual.vt == VT_I4 && actual.lVal == number) << number; }
    void operator()(Integer number) const { EXPECT_TRUE(actual.vt == VT_I2 && actual.iVal == number) << number; }
    void operator()(Double number) const { EXPECT_TRUE(actual.vt == VT_R8 && actual.dblVal == number) << number; }
    void operator()(Date date) const { EXPECT_TRUE(actual.vt == VT_DATE && actual.date == date.days) << date.days; }
    void operator()(const std::u16string& text) const { EXPECT_EQ(textOf(actual), toUtf8(text)); }
    void operator()(const Bytes&) const { ADD_FAILURE(); }
    void operator()(const Document& document) const {
        EXPECT_EQ(textOf(mustCall(actual.pdispVal, u"xml").get()), toUtf8(document.xml()));
    }
    void operator()(const automation::Collection& collection) const {
        ASSERT_EQ(actual.vt, VT_DISPATCH);
        ASSERT_EQ(mustCall(actual.pdispVal, u"Count")->lVal, static_cast<long>(collection.nodes.size()));
        for (std::size_t i = 0; i < collection.nodes.size(); ++i) {
            const auto item = mustCall(actual.pdispVal, u"Item", {static_cast<int>(i) + 1});
            const auto object = collection.itemClass->create(*collection.environment);
            for (const automation::Member& member : collection.itemClass->members) {
                automation::Arguments arguments(member);
                if (member.kind == automation::MemberKind::method) {
                    arguments.setNodes(0, {collection.nodes[i]});
                    member.invoke(object.get(), arguments.data());
                    continue;
                }
                SCOPED_TRACE(member.name);
                const auto value = mustCall(item->pdispVal, toUtf16(member.name).c_str());
                std::visit(SameAs{value.get()}, member.invoke(object.get(), arguments.data()));
            }
        }
    }
};

TEST_F(Exchange, DownloadsComeInEveryForm) {
    const automation::Class& storeClass = automation::storeClass();
    const auto native = storeClass.create(platform::systemEnvironment());
    const auto store = server.create("Store");
    const std::pair<const char16_t*, const char16_t*> downloads[] = {
        {u"ReceiveCustomers", u"/customers"}, {u"ReceiveOrders", u"/orders"}, {u"ReceiveQuotations", u"/quotations"}};
    const Registration registration(server);
    for (const auto& [method, place] : downloads) {
        const std::u16string address = url + place;
        for (const char16_t* form : {u"Collection", u"XMLDOMDocument", u"XMLString"}) {
            const auto result = mustCall(store.get(), method, {1, u"demo", u"demo", address.c_str(), form});
            const automation::Member& member = *automation::findMember(storeClass, toUtf8(method));
            automation::Arguments arguments(member);
            arguments.setWhole(0, 1);
            for (const std::size_t i : {1u, 2u}) arguments.setText(i, u"demo");
            arguments.setText(3, address);
            arguments.setText(4, form);
            std::visit(SameAs{result.get()}, member.invoke(native.get(), arguments.data()));
        }
    }
}

/// Nodes of a document, as hosts pass them.
Arg nodes(const char16_t* xml, const char16_t* path) {
    const auto document =
        platform::createObject<IXMLDOMDocument2>(platform::documentClass3, platform::iidXmlDomDocument2);
    mustCall(document.get(), u"loadXML", {xml});
    com::Variant list = mustCall(document.get(), u"selectNodes", {path});
    return Arg::of(VT_DISPATCH, [&](VARIANT& place) { place = list.detach(); });
}

TEST_F(Client, NodesBecomeObjects) {
    const auto select = [](const char16_t* path) {
        return nodes(
            u"<Store><Order OrderNumber='7'><OrderLineItem LineNumber='1' Price='2.5'/><OrderLineItem "
            u"LineNumber='2'/></Order><Order OrderNumber='7'/></Store>",
            path);
    };
    const auto store = server.create("Store");
    Outcome unregistered = call(store.get(), u"Orders", {select(u"Store/Order")});
    EXPECT_EQ(unregistered.code, static_cast<std::int32_t>(0x800A01AD)) << unregistered.description;

    const Registration registration(server);
    const auto orders = mustCall(store.get(), u"Orders", {select(u"Store/Order")});
    IDispatch* const collection = orders->pdispVal;
    EXPECT_EQ(mustCall(collection, u"count")->lVal, 2);
    const auto first = invoke(collection, DISPID_VALUE, {1});
    EXPECT_EQ(mustCall(first.value->pdispVal, u"OrderNumber")->lVal, 7);
    // An index for a property without parameters is for its collection.
    const auto line = mustCall(first.value->pdispVal, u"LineItems", {1});
    EXPECT_EQ(mustCall(line->pdispVal, u"Price")->dblVal, 2.5);
    EXPECT_EQ(typeIdOf(line->pdispVal), guidOf(findIdentity("OrderLineItem")->members));
    EXPECT_EQ(mustCall(mustCall(store.get(), u"Orders", {select(u"Store/None")})->pdispVal, u"Count")->lVal, 0);

    const auto references = [&] { return first.value->pdispVal->AddRef(), first.value->pdispVal->Release(); };
    const ULONG before = references();
    {
        const auto enumerator =
            query<IEnumVARIANT>(invoke(collection, DISPID_NEWENUM, {}).value->punkVal, IID_IEnumVARIANT);
        ULONG fetched = 0;
        com::Variant items[2];
        for (com::Variant& item : items) {
            EXPECT_EQ(enumerator->Next(1, item.put(), &fetched), S_OK);
            EXPECT_EQ(mustCall(item->pdispVal, u"OrderNumber")->lVal, 7);
        }
        EXPECT_EQ(items[0]->pdispVal, first.value->pdispVal);
        com::Variant none;
        EXPECT_EQ(enumerator->Next(1, none.put(), &fetched), S_FALSE);
    }
    EXPECT_EQ(references(), before);

    const auto order = server.create("Order");
    const Arg nothing = Arg::of(VT_DISPATCH);
    mustCall(order.get(), u"Initialise", {nothing});
    struct Case {
        IDispatch* object;
        const char16_t* member;
        Args args;
        std::uint32_t code;
        const char* description;
    };
    const Case cases[] = {
        {collection, u"Item", {0}, 0x800A0009, "Subscript out of range"},
        {collection, u"Item", {3}, 0x800A0009, "Subscript out of range"},
        {collection, u"Item", {Arg::of(VT_NULL)}, 0x800A000D, "Type mismatch: Index"},
        {first.value->pdispVal, u"LineItems", {3}, 0x800A0009, "Subscript out of range"},
        {store.get(), u"Orders", {nothing}, 0x800A005B, "Object variable or With block variable not set: lstOrders"},
        {store.get(), u"Orders", {u"x"}, 0x800A000D, "Type mismatch: lstOrders"},
        {order.get(), u"Initialise", {select(u"Store")}, 0x800A000D, "Type mismatch: rcdOrder"},
        {order.get(), u"OrderNumber", {}, 0x800A005B, "Object variable or With block variable not set"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = call(c.object, c.member, c.args);
        EXPECT_EQ(static_cast<std::uint32_t>(outcome.code), c.code) << c.description;
        EXPECT_EQ(outcome.description, c.description);
    }
}

class DeclaredCollections : public Client {
protected:
    /// The orders 1 and 2.
    ComPtr<DeclaredCollection> orders() const {
        const auto store = server.create("Store");
        const Arg both = nodes(u"<Store><Order OrderNumber='1'/><Order OrderNumber='2'/></Store>", u"Store/Order");
        return query<DeclaredCollection>(mustCall(store.get(), u"Orders", {both})->pdispVal, iidCollection);
    }

    Registration registration{server};
};

std::string shown(const VARIANT& item) {
    if (item.vt == VT_I4) return std::to_string(item.lVal);
    return item.vt == VT_DISPATCH ? std::to_string(mustCall(item.pdispVal, u"OrderNumber")->lVal) : textOf(item);
}

ComPtr<IEnumVARIANT> enumeratorOf(DeclaredCollection* collection) {
    IUnknown* made = nullptr;
    EXPECT_EQ(collection->NewEnum(&made), S_OK);
    return query<IEnumVARIANT>(ComPtr<IUnknown>::attach(made).get(), IID_IEnumVARIANT);
}

/// The items as "For Each" meets them.
std::string listed(DeclaredCollection* collection) {
    const auto enumerator = enumeratorOf(collection);
    std::string result;
    com::Variant item;
    long count = 0;
    for (; enumerator->Next(1, item.put(), nullptr) == S_OK; ++count)
        result += (count > 0 ? " " : "") + shown(item.get());
    long counted = -1;
    EXPECT_EQ(collection->Count(&counted), S_OK);
    EXPECT_EQ(counted, count);
    return result;
}

TEST_F(DeclaredCollections, HaveOneIdentityAndTheIdsOfTheInterface) {
    const auto collection = orders();
    ASSERT_TRUE(collection);
    const auto identity = query<IUnknown>(collection.get(), IID_IUnknown);
    for (const IID& id : {IID_IDispatch, iidCollection, IID_ISupportErrorInfo}) {
        const auto other = query<IUnknown>(identity.get(), id);
        ASSERT_TRUE(other);
        EXPECT_EQ(query<IUnknown>(other.get(), IID_IUnknown).get(), identity.get());
        EXPECT_EQ(query<DeclaredCollection>(other.get(), iidCollection).get(), collection.get());
    }
    EXPECT_FALSE(query<IUnknown>(identity.get(), IID_IProvideClassInfo));
    const auto support = query<ISupportErrorInfo>(identity.get(), IID_ISupportErrorInfo);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(iidCollection), S_OK);

    const std::pair<const char16_t*, DISPID> ids[] = {
        {u"Item", 0}, {u"Add", 1}, {u"Count", 2}, {u"Remove", 3}, {u"_NewEnum", -4}};
    for (const auto& [name, id] : ids) EXPECT_EQ(idOf(collection.get(), name), id) << toUtf8(name);
    EXPECT_EQ(call(collection.get(), u"Add", {u"a"}, {{u"After", 1}, {u"key", u"k"}}).result, S_OK);
    EXPECT_EQ(listed(collection.get()), "1 a 2");
    EXPECT_EQ(textOf(invoke(collection.get(), 0, {u"k"}).value.get()), "a");
    EXPECT_EQ(invoke(collection.get(), 2, {1}).code, static_cast<std::int32_t>(0x800A01C2));
    EXPECT_EQ(invoke(collection.get(), 4, {}).result, DISP_E_MEMBERNOTFOUND);
}

/// Calls by place in the vtable; what is left out is marked as missing. The description is the thread's.
Outcome callDeclared(DeclaredCollection* collection, Text method, Args args) {
    args.resize(4, Arg::missing());
    const auto at = [&](std::size_t i) { return const_cast<VARIANT*>(&args[i].get()); };
    Outcome outcome;
    outcome.result = method == u"Item"  ? collection->Item(at(0), outcome.value.put())
                     : method == u"Add" ? collection->Add(at(0), at(1), at(2), at(3))
                                        : collection->Remove(at(0));
    if (FAILED(outcome.result)) outcome.code = outcome.result, outcome.description = toldToThread();
    return outcome;
}

TEST_F(DeclaredCollections, KeepTheirItemsWhicheverWayTheyAreCalled) {
    const Arg missing = Arg::missing();
    VARIANT two = com::Variant(2L).detach();
    const Arg reference = Arg::of(VT_BYREF | VT_VARIANT, [&](VARIANT& v) { v.pvarVal = &two; });
    const Arg noText = Arg::of(VT_BSTR);
    struct Case {
        const char16_t* method;
        Args args;
        const char* after;  ///< the items then
        std::uint32_t code = 0;
        const char* outcome = "";  ///< the item or the description
    };
    const Case cases[] = {
        {u"Item", {reference}, "1 2", 0, "2"},
        {u"Add", {u"a"}, "1 2 a"},
        {u"Add", {u"b", u"Key"}, "1 2 a b"},
        {u"Add", {u"c", missing, 1}, "c 1 2 a b"},
        {u"Add", {7, noText, missing, u"KEY"}, "c 1 2 a b 7"},
        {u"Item", {u""}, "c 1 2 a b 7", 0, "7"},
        {u"Item", {u"keY"}, "c 1 2 a b 7", 0, "b"},
        {u"Item", {6.0}, "c 1 2 a b 7", 0, "7"},
        {u"Item", {0}, "c 1 2 a b 7", 0x800A0009, "Subscript out of range"},
        {u"Item", {7}, "c 1 2 a b 7", 0x800A0009, "Subscript out of range"},
        {u"Item", {u"1"}, "c 1 2 a b 7", 0x800A0005, "Invalid procedure call or argument"},
        {u"Item", {}, "c 1 2 a b 7", 0x800A01C1, "Argument not optional: Index"},
        {u"Add", {}, "c 1 2 a b 7", 0x800A01C1, "Argument not optional: Item"},
        {u"Add",
         {u"d", u"kEy"},
         "c 1 2 a b 7",
         0x800A01C9,
         "This key is already associated with an element of this collection"},
        {u"Add", {u"d", 5}, "c 1 2 a b 7", 0x800A000D, "Type mismatch: Key"},
        {u"Add", {u"d", missing, 1, 1}, "c 1 2 a b 7", 0x800A0005, "Invalid procedure call or argument"},
        {u"Add", {u"d", missing, 7}, "c 1 2 a b 7", 0x800A0009, "Subscript out of range"},
        {u"Add", {u"d", missing, missing, 0}, "c 1 2 a b 7", 0x800A0009, "Subscript out of range"},
        {u"Add", {u"d", missing, u"d"}, "c 1 2 a b 7", 0x800A0005, "Invalid procedure call or argument"},
        {u"Remove", {reference}, "c 2 a b 7"},
        {u"Remove", {u"key"}, "c 2 a 7"},
        {u"Remove", {u"key"}, "c 2 a 7", 0x800A0005, "Invalid procedure call or argument"},
        {u"Remove", {5}, "c 2 a 7", 0x800A0009, "Subscript out of range"},
        {u"Add", {u"e", u"key", missing, 4}, "c 2 a 7 e"},
    };
    for (const bool declared : {false, true}) {
        const auto collection = orders();
        for (const Case& c : cases) {
            const Outcome outcome =
                declared ? callDeclared(collection.get(), c.method, c.args) : call(collection.get(), c.method, c.args);
            SCOPED_TRACE(toUtf8(c.method) + (declared ? " declared, " : " late-bound, ") + c.after + ", " + c.outcome);
            EXPECT_EQ(static_cast<std::uint32_t>(outcome.code), c.code);
            if (c.code != 0) {
                EXPECT_EQ(outcome.description, (declared ? "Quill1XML|" : "") + std::string(c.outcome));
            } else {
                EXPECT_EQ(outcome.value->vt == VT_EMPTY ? "" : shown(outcome.value.get()), c.outcome);
            }
            EXPECT_EQ(listed(collection.get()), c.after);
        }
    }
}

TEST_F(DeclaredCollections, HoldTheirItemsUntilTheyAreRemoved) {
    // Outlive the collection.
    Sink removed;
    Sink kept;
    const auto collection = orders();
    const auto argument = [](Sink& sink) {
        return Arg::of(VT_DISPATCH,
                       [&](VARIANT& place) { place = com::Variant(static_cast<IDispatch*>(&sink)).detach(); });
    };
    for (Sink* sink : {&removed, &kept}) callDeclared(collection.get(), u"Add", {argument(*sink)});
    EXPECT_EQ(removed.references, 1u);
    const auto enumerator = enumeratorOf(collection.get());
    callDeclared(collection.get(), u"Remove", {3});
    EXPECT_EQ(callDeclared(collection.get(), u"Item", {3}).value->pdispVal, &kept);
    // An enumeration under way goes on over what there was.
    com::Variant item;
    EXPECT_EQ(enumerator->Skip(2), S_OK);
    EXPECT_EQ(enumerator->Next(1, item.put(), nullptr), S_OK);
    EXPECT_EQ(item->pdispVal, &removed);
}

/// What the type library says of a member or an event.
void expectDescribed(ITypeInfo* info, UINT index, Long dispid, std::string_view name, INVOKEKIND kind,
                     automation::ResultType result, std::span<const Parameter> parameters) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(info->GetFuncDesc(index, &function), S_OK);
    com::Bstr names[64];
    BSTR raw[64] = {};
    UINT count = 0;
    EXPECT_EQ(info->GetNames(function->memid, raw, 64, &count), S_OK);
    for (UINT i = 0; i < count; ++i) *names[i].put() = raw[i];
    EXPECT_EQ(function->memid, dispid);
    EXPECT_EQ(function->invkind, kind);
    constexpr VARTYPE results[] = {VT_VOID, VT_I4, VT_I2, VT_R8, VT_DATE, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_VARIANT};
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, results[static_cast<std::size_t>(result)]) << name;
    // The library keeps one spelling of names that differ in case only.
    EXPECT_EQ(_wcsicmp(names[0].get(), com::wide(toUtf16(name).c_str())), 0) << name;
    ASSERT_EQ(count, parameters.size() + 1) << name;
    ASSERT_EQ(static_cast<std::size_t>(function->cParams), parameters.size()) << name;
    constexpr VARTYPE types[] = {VT_BSTR, VT_I2,      VT_I4,      VT_R8,       VT_BOOL,    VT_DATE,
                                 VT_CY,   VT_VARIANT, VT_VARIANT, VT_DISPATCH, VT_DISPATCH};
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const ELEMDESC& described = function->lprgelemdescParam[i];
        EXPECT_EQ(_wcsicmp(names[i + 1].get(), com::wide(toUtf16(parameters[i].name).c_str())), 0) << name;
        EXPECT_EQ((described.paramdesc.wParamFlags & PARAMFLAG_FOPT) == 0, parameters[i].required)
            << name << ' ' << parameters[i].name;
        if (described.tdesc.vt != VT_VARIANT || parameters[i].required) {
            EXPECT_EQ(described.tdesc.vt, types[static_cast<std::size_t>(parameters[i].type)]) << parameters[i].name;
        }
    }
    info->ReleaseFuncDesc(function);
}

/// The value that a host compiled against the library passes for a parameter it leaves out.
Arg compiledDefault(const ELEMDESC& described) {
    if ((described.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0) {
        Arg result = Arg::of(VT_EMPTY);
        VariantCopy(const_cast<VARIANT*>(&result.get()), &described.paramdesc.pparamdescex->varDefaultValue);
        return result;
    }
    return described.tdesc.vt == VT_VARIANT ? Arg::missing() : Arg::of(described.tdesc.vt);
}

TEST_F(Client, TheTypeLibraryDescribesEveryMember) {
    for (const automation::Class* each : automation::classes()) {
        const auto object = server.create(each->name);
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(object->GetTypeInfo(0, english, info.put()), S_OK);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->guid, guidOf(findIdentity(each->name)->members));
        EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
        ASSERT_EQ(attributes->cFuncs, each->members.size());
        info->ReleaseTypeAttr(attributes);
        for (UINT i = 0; i < each->members.size(); ++i) {
            const automation::Member& member = each->members[i];
            expectDescribed(info.get(), i, member.dispid, member.name,
                            member.kind == automation::MemberKind::method ? INVOKE_FUNC : INVOKE_PROPERTYGET,
                            member.result, member.parameters);
        }

        ComPtr<ITypeInfo> coclass;
        const auto provider = query<IProvideClassInfo2>(object.get(), IID_IProvideClassInfo2);
        ASSERT_EQ(provider->GetClassInfo(coclass.put()), S_OK);
        GUID sourceId;
        EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &sourceId),
                  each->events.empty() ? E_INVALIDARG : S_OK);
        if (each->events.empty()) continue;
        int flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> source;
        ASSERT_EQ(coclass->GetImplTypeFlags(1, &flags), S_OK);
        EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
        ASSERT_EQ(coclass->GetRefTypeOfImplType(1, &reference), S_OK);
        ASSERT_EQ(coclass->GetRefTypeInfo(reference, source.put()), S_OK);
        ASSERT_EQ(source->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->guid, sourceId);
        source->ReleaseTypeAttr(attributes);
        for (UINT i = 0; i < each->events.size(); ++i) {
            const automation::Event& event = each->events[i];
            expectDescribed(source.get(), i, event.dispid, event.name, INVOKE_FUNC, automation::ResultType::nothing,
                            event.parameters);
        }
    }
}

// A host compiled against the library fills in its defaults: they must mean what leaving out means.
TEST_F(Client, CompiledDefaultsMeanLeftOut) {
    unsigned written = 0;
    for (const automation::Member& member : automation::storeClass().members) {
        // The envelope holds the time.
        if (member.record == nullptr || member.name == "AddEnvelope") continue;
        std::string packets[2];
        for (const bool compiled : {false, true}) {
            const TempFolder folder;
            const auto store = server.create("Store");
            ComPtr<ITypeInfo> info;
            ASSERT_EQ(store->GetTypeInfo(0, english, info.put()), S_OK);
            mustCall(store.get(), u"SetTempFilePath", {folder.name(u"").c_str()});
            FUNCDESC* function = nullptr;
            const auto index = static_cast<UINT>(&member - automation::storeClass().members.data());
            ASSERT_EQ(info->GetFuncDesc(index, &function), S_OK);
            Args args;
            for (std::size_t i = 0; i < member.parameters.size(); ++i) {
                if (member.parameters[i].required) {
                    args.push_back(1);
                } else {
                    args.push_back(compiled ? compiledDefault(function->lprgelemdescParam[i]) : Arg::missing());
                }
            }
            info->ReleaseFuncDesc(function);
            const Outcome outcome = invoke(store.get(), member.dispid, args);
            std::string& result = packets[compiled ? 1 : 0];
            result = outcome.description;
            for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
                result += packet(folder, file.path().filename().u16string());
            }
        }
        EXPECT_EQ(packets[1], packets[0]) << member.name;
        if (!packets[0].empty()) ++written;
    }
    EXPECT_GE(written, 10u);
}

TEST(Module, IsLoadedAndUnloadedOverAndOver) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    for (int round = 0; round < 50; ++round) {
        {
            const LoadedServer server;
            EXPECT_EQ(call(server.create("Store").get(), u"AddTax", {u""}).code, applicationError);
            EXPECT_TRUE(server.canUnload());
        }
        ASSERT_EQ(GetModuleHandleW(L"Quill1XML.dll"), nullptr) << round;
    }
    CoUninitialize();
}

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
    const std::wstring other =
        idKey(L"TypeLib\\", automation::libraryId) + L"\\1.0\\0\\" + (sizeof(void*) == 8 ? L"win32" : L"win64");
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
    EXPECT_TRUE(DeactivateActCtx(0, cookie));
    ReleaseActCtx(context);
    CoUninitialize();
}

}  // namespace
}  // namespace quill1xml
