// Collections as hosts meet them that declare them As Collection.
#include "hosts/client.hpp"

namespace quill1xml {

/// The interface of hosts that declare an object As Collection. Not in an unnamed namespace: compilers would conclude
/// that nothing implements it.
struct DeclaredCollection : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Item(VARIANT* index, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* item, VARIANT* key, VARIANT* before, VARIANT* after) = 0;
    virtual HRESULT STDMETHODCALLTYPE Count(long* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE Remove(VARIANT* index) = 0;
    virtual HRESULT STDMETHODCALLTYPE NewEnum(IUnknown** result) = 0;
};

inline constexpr IID iidCollection = {0xA4C46780, 0x499F, 0x101B, {0xBB, 0x78, 0x00, 0xAA, 0x00, 0x38, 0x3C, 0xBB}};

namespace {

using namespace testing;
using com::ComPtr;
using com::query;

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
    for (const IID& id :
         {IID_IDispatch, iidCollection, automation::guidOf(automation::collectionId), IID_ISupportErrorInfo}) {
        const auto other = query<IUnknown>(identity.get(), id);
        ASSERT_TRUE(other);
        EXPECT_EQ(query<IUnknown>(other.get(), IID_IUnknown).get(), identity.get());
        EXPECT_EQ(query<DeclaredCollection>(other.get(), iidCollection).get(), collection.get());
    }
    EXPECT_FALSE(query<IUnknown>(identity.get(), IID_IProvideClassInfo));
    const auto support = query<ISupportErrorInfo>(identity.get(), IID_ISupportErrorInfo);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(iidCollection), S_OK);

    EXPECT_EQ(typeIdOf(collection.get()), automation::guidOf(automation::collectionId));
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(collection->GetTypeInfo(0, english, info.put()), S_OK);
    const std::pair<const char16_t*, DISPID> ids[] = {
        {u"Item", 0}, {u"Add", 1}, {u"Count", 2}, {u"Remove", 3}, {u"_NewEnum", -4}};
    for (const auto& [name, id] : ids) {
        EXPECT_EQ(idOf(collection.get(), name), id) << toUtf8(name);
        auto* wanted = const_cast<wchar_t*>(com::wide(name));
        DISPID described = DISPID_UNKNOWN;
        EXPECT_EQ(info->GetIDsOfNames(&wanted, 1, &described), S_OK) << toUtf8(name);
        EXPECT_EQ(described, id) << toUtf8(name);
    }
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
    for (Sink* sink : {&removed, &kept}) callDeclared(collection.get(), u"Add", {dispatch(sink)});
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

}  // namespace
}  // namespace quill1xml
