// Fetched documents, nodes of the host and the objects over them.
#include "hosts/client.hpp"

#include "automation/classes.hpp"

namespace quill1xml {
namespace {

using namespace testing;
using automation::findIdentity;
using automation::guidOf;
using com::query;

/// The text of a download without the time at which it was made.
std::string withoutTime(std::string text) {
    constexpr std::string_view before = "DateCreated=\"";
    const std::size_t at = text.find(before);
    return at == std::string::npos
               ? text
               : text.erase(at + before.size(), text.find('"', at + before.size()) - at - before.size());
}

/// Expects of an automation value what the library itself has: the same type, the same content.
struct SameAs {
    const VARIANT& actual;

    void operator()(std::monostate) const { EXPECT_EQ(actual.vt, VT_EMPTY); }
    void operator()(Long number) const { EXPECT_TRUE(actual.vt == VT_I4 && actual.lVal == number) << number; }
    void operator()(Integer number) const { EXPECT_TRUE(actual.vt == VT_I2 && actual.iVal == number) << number; }
    void operator()(Double number) const { EXPECT_TRUE(actual.vt == VT_R8 && actual.dblVal == number) << number; }
    void operator()(Date date) const { EXPECT_TRUE(actual.vt == VT_DATE && actual.date == date.days) << date.days; }
    void operator()(const std::u16string& text) const {
        EXPECT_EQ(withoutTime(textOf(actual)), withoutTime(toUtf8(text)));
    }
    void operator()(const Bytes&) const { ADD_FAILURE(); }
    void operator()(const Document& document) const {
        EXPECT_EQ(withoutTime(textOf(mustCall(actual.pdispVal, u"xml").get())), withoutTime(toUtf8(document.xml())));
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
    const auto native = storeClass.create(ports::systemEnvironment());
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

TEST_F(Client, NodesBecomeObjects) {
    const auto select = [](const char16_t* path) {
        return nodes(
            u"<Store><Order OrderNumber='7'><OrderLineItem LineNumber='1' Price='2.5'/><OrderLineItem "
            u"LineNumber='2'/></Order><Order OrderNumber='7'/>words<!-- none --></Store>",
            path);
    };
    const auto store = server.create("Store");
    // Not registered, the classes are those of the server itself.
    const auto unregistered = mustCall(store.get(), u"Orders", {select(u"Store/Order")});
    EXPECT_EQ(mustCall(invoke(unregistered->pdispVal, DISPID_VALUE, {1}).value->pdispVal, u"OrderNumber")->lVal, 7);

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
    const Arg noNode = dispatch(store.get());
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
        {store.get(), u"Orders", {noNode}, 0x800A000D, "Type mismatch: lstOrders"},
        {order.get(), u"Initialise", {select(u"Store")}, 0x800A000D, "Type mismatch: rcdOrder"},
        {order.get(), u"Initialise", {noNode}, 0x800A000D, "Type mismatch: rcdOrder"},
        {order.get(), u"OrderNumber", {}, 0x800A005B, "Object variable or With block variable not set"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = call(c.object, c.member, c.args);
        EXPECT_EQ(static_cast<std::uint32_t>(outcome.code), c.code) << c.description;
        EXPECT_EQ(outcome.description, c.description);
    }

    // What is no element becomes an object, too, that has nothing to read.
    const auto document = platform::createObject<IDispatch>(platform::documentClass3, IID_IDispatch);
    const auto others = mustCall(store.get(), u"Orders", {select(u"//text() | //comment()")});
    EXPECT_EQ(mustCall(others->pdispVal, u"Count")->lVal, 2);
    mustCall(order.get(), u"Initialise", {dispatch(document.get())});
    const auto text = mustCall(others->pdispVal, u"Item", {1});
    for (IDispatch* const other : {text->pdispVal, order.get()}) {
        EXPECT_EQ(call(other, u"EMailAddress").code, static_cast<std::int32_t>(0x800A005B));
        EXPECT_EQ(call(other, u"LineItems").code, static_cast<std::int32_t>(0x800A005B));
    }
}

}  // namespace
}  // namespace quill1xml
