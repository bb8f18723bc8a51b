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
        // The host may call in an event.
        mustCall(store.get(), u"SetStoreID", {1});
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

/// A node list that calls back when it is asked for its length, as a request does that dispatches the host's messages.
class CallingList final : public IXMLDOMNodeList {
public:
    explicit CallingList(std::function<HRESULT()> length) : length_(std::move(length)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        const bool known = id == guidOf("2933bf82-7b36-11d2-b20e-00c04f983e60");
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_item(long, IXMLDOMNode**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_length(long* length) override {
        *length = 0;
        return length_();
    }
    HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get__newEnum(IUnknown**) override { return E_NOTIMPL; }

private:
    std::function<HRESULT()> length_;
};

TEST_F(Client, ACallIsRefusedWhileAnotherIsUnderWay) {
    const auto store = server.create("Store");
    Outcome inside;
    CallingList list([&] {
        inside = call(store.get(), u"AddTax", {u"VAT"});
        return E_ABORT;
    });
    EXPECT_EQ(call(store.get(), u"Orders", {dispatch(&list)}).code, static_cast<std::int32_t>(E_ABORT));
    EXPECT_EQ(static_cast<std::uint32_t>(inside.code), 0x800A0046);
    EXPECT_EQ(inside.description,
              "Permission denied: a call into this object is under way; call again when it has returned");
    EXPECT_EQ(textOf(mustCall(store.get(), u"XMLEncode", {u"a"}).get()), "a");
}

}  // namespace
}  // namespace quill1xml
