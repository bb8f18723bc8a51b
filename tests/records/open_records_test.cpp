// Records that are built over several calls: when they are open, and what becomes of them when a call fails.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"

#include <gtest/gtest.h>

namespace quill1xml {
namespace {

using testing::expectError;
using testing::utf8;

TEST(Products, StayClosedAfterARefusalAndAfterALostWrite) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    store.SetTempFilePath({u"P"});
    EXPECT_THROW(store.AddProduct({u""}), Error);
    store.AddProduct({u"A"});
    fake.files->full = true;
    EXPECT_THROW(store.LockProduct(), Error);
    fake.files->full = false;
    EXPECT_THROW(store.LockProduct(), Error);
    EXPECT_TRUE(fake.files->texts.empty());
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
