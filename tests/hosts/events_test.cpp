// Connection points and the events that come through them.
#include "hosts/client.hpp"

#include <olectl.h>

#include <cstdlib>

namespace quill1xml {
namespace {

using namespace testing;
using automation::findIdentity;
using automation::guidOf;
using com::ComPtr;
using com::query;

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

}  // namespace
}  // namespace quill1xml
