#include "support/expect_error.hpp"
#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectError;

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
