// Records that are built over several calls: when they are open, and what becomes of them when a call fails.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"

#include <gtest/gtest.h>

namespace quill1xml {
namespace {

using testing::expectError;
using testing::utf8;

/// A record that stays open until it is locked.
struct Built {
    const char* name;
    void (*refused)(Store& store);
    void (*add)(Store& store);
    void (*addChild)(Store& store);
    void (*lock)(Store& store);
    const char* child;  ///< how it begins
};

const Built builtRecords[] = {
    {"Product", [](Store& store) { store.AddProduct({u""}); }, [](Store& store) { store.AddProduct({u"A"}); },
     [](Store& store) { store.AddProductAttribute({1}); }, [](Store& store) { store.LockProduct(); },
     "<ProductAttribute"},
    {"Order",
     [](Store& store) {
         store.AddOrder({testing::orderList({{u"OrderNumber", u"0"}})});
     },
     [](Store& store) { store.AddOrder({testing::orderList({})}); },
     [](Store& store) { store.AddOrderLineItem({.lngLineNumber = 1}); }, [](Store& store) { store.LockOrder(); },
     "<OrderLineItem"},
    {"Order with field values",
     [](Store& store) {
         store.AddOrder({testing::orderList({{u"OrderNumber", u"x"}})});
     },
     [](Store& store) { store.AddOrder({testing::orderList({})}); },
     [](Store& store) {
         store.AddOrderUDFValue({1, u"F", u"V"});
     },
     [](Store& store) { store.LockOrder(); }, "<UserDefinedFieldValue"},
    {"Quotation",
     [](Store& store) {
         store.AddQuotation({testing::quotationList({{u"QuoteNumber", u"0"}})});
     },
     [](Store& store) { store.AddQuotation({testing::quotationList({})}); },
     [](Store& store) {
         store.AddQuoteLineItem({u"A", 1, u"d"});
     },
     [](Store& store) { store.LockQuote(); }, "<QuoteLineItem"},
};

TEST(BuiltRecords, StayClosedAfterARefusalAndAfterALostWrite) {
    for (const Built& built : builtRecords) {
        SCOPED_TRACE(built.name);
        testing::FakeEnvironment fake;
        Store store(fake.environment());
        store.SetTempFilePath({u"P"});
        EXPECT_THROW(built.refused(store), Error);
        EXPECT_THROW(built.lock(store), Error);
        built.add(store);
        built.addChild(store);
        fake.files->full = true;
        EXPECT_THROW(built.lock(store), Error);
        fake.files->full = false;
        EXPECT_THROW(built.lock(store), Error);
        EXPECT_TRUE(fake.files->texts.empty());
        // Its children are lost with it, and those of one record are not in the next.
        built.add(store);
        built.lock(store);
        ASSERT_EQ(fake.files->texts.size(), 1u);
        const std::u16string& packet = fake.files->texts.begin()->second;
        EXPECT_EQ(utf8(packet).find(built.child), std::string::npos);
        built.add(store);
        built.addChild(store);
        built.lock(store);
        const std::size_t child = utf8(packet).find(built.child);
        EXPECT_NE(child, std::string::npos);
        built.add(store);
        built.lock(store);
        EXPECT_EQ(utf8(packet).rfind(built.child), child);
    }
}

// What the parser says of it differs from system to system.
TEST(Orders, RefuseAListThatIsNoXml) {
    const auto error = testing::errorOf([] { Store(testing::FakeEnvironment().environment()).AddOrder({u"<List"}); });
    ASSERT_TRUE(error);
    EXPECT_NE(error->number(), 0);
    EXPECT_FALSE(error->description().empty());
}

TEST(ExternalOrders, StayOpenUntilTheyAreLocked) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    EXPECT_THROW(store.AddExternalOrder({u""}), Error);
    fake.files->full = true;
    EXPECT_THROW(store.AddExternalOrder({u"123456789012345678901"}), Error);
    fake.files->full = false;
    EXPECT_THROW(store.AddExternalOrder({u"2"}), Error);
    EXPECT_NE(utf8(fake.log->entries.back()).find("Error Description: A new External Order may not be"),
              std::string::npos);
    EXPECT_THROW(store.AddExternalOrderLineItem({1}), Error);  // the number is too long for lines
    EXPECT_TRUE(fake.log->entries.back().ends_with(u"Method: Quill1XML.Store.AddExternalOrder()"));
    store.LockExternalOrder();
    store.AddExternalOrder({u"2"});
    store.AddExternalOrderLineItem({1});
}

TEST(Debtors, AreOpenFromTheCallUntilTheLock) {
    const Text open = u"A new Debtor may not be added if an existing one is still unlocked.";
    const Text notOpen = u"No Debtor has been created";
    const std::u16string longId(51, u'x');
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    const auto add = [&](Text id) { return [&store, id] { store.AddDebtor({id}); }; };
    const auto lock = [&] { store.LockDebtor(); };

    store.AddDebtor({u"A"});
    EXPECT_EQ(testing::errorOf(add(u"B"))->source(), u"Quill1XML.Store.AddDebtor()");
    expectError(add(u"B"), applicationError, open);
    store.AddDebtorCategory({u"C"});
    lock();
    expectError(lock, applicationError, notOpen);
    EXPECT_EQ(fake.files->texts[u"C:\\WebStoreDebtor1.tmp"], u"<Debtor DebtorID=\"A\"/>");

    // A refused key and a failed write leave the debtor open, an empty id does not.
    expectError(add(longId), applicationError, u"The DebtorID");
    expectError(add(u"B"), applicationError, open);
    lock();
    fake.files->full = true;
    expectError(add(u"B"), 61, u"");
    lock();
    expectError(add(u""), applicationError, u"The DebtorID");
    expectError(lock, applicationError, notOpen);
}

}  // namespace
}  // namespace quill1xml
