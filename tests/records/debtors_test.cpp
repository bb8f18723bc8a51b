#include "support/expect_error.hpp"
#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectError;
using testing::Filler;
using testing::tildes;

const Date afternoon = Date::of(2007, 3, 5, 14, 7, 9);

// clang-format off

TEST(Debtors, WriteExactlyTheseElements) {
    testing::expectWritten({
        {[](Store& s) {
             s.AddDebtor({u"D&1", u"N", u"C", u"R", u"P", u"1", u"2", u"a@b", u"L1", u"L2", u"L3", u"L4", u"Ci", u"PC",
                          u"SP", u"ZA", u"TR", u"A&B", u"20", u"PM", u"T", 0.00004, 12.5, -12.34567, 0.50004, 2,
                          3, 4, 5, 6, -1, 1, afternoon, true});
         },
         R"(<Debtor DebtorID="D&amp;1" Name="N" DebtorCategoryID="C" RepCode="R" ContactName="P" ContactNumber="1" ContactNumber2="2" EMailAddress="a@b" AddressLine1="L1" AddressLine2="L2" AddressLine3="L3" AddressLine4="L4" City="Ci" PostalCode="PC" StateProvince="SP" CountryCode="ZA" TaxReference="TR" CurrencyCode="A&amp;B" PriceList="20" PaymentMethodID="PM" Terms="T" CreditLimit=" 0" DiscountPercent=" 12.5" Balance="-12.3457" Ageing1=" .5" Ageing2=" 2" Ageing3=" 3" Ageing4=" 4" Ageing5=" 5" Ageing6=" 6" Ageing7="-1" OnHold="1" DateOfData="2007-03-05T14:07:09" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtor({u"D"}); }, R"(<Debtor DebtorID="D"/>)"},
        {[](Store& s) {
             s.AddDebtor({.strDebtorID = u"D", .strCountryCode = u"", .strCurrencyCode = u"ZA", .strPriceList = u"none",
                          .strPaymentMethodID = u"", .dblCreditLimit = -0.01, .dblDiscountPercent = 100.01,
                          .intBlnOnHold = 2});
         },
         R"(<Debtor DebtorID="D"/>)"},
        {[](Store& s) {
             s.AddDebtor({.strDebtorID = u"D", .strPriceList = u"None", .dblCreditLimit = 0, .dblDiscountPercent = 100,
                          .intBlnOnHold = 0});
         },
         R"(<Debtor DebtorID="D" PriceList="None" CreditLimit=" 0" DiscountPercent=" 100" OnHold="0"/>)"},
        {[](Store& s) { s.AddDebtorCategory({u"C", u"D&E", true}); },
         R"(<DebtorCategory DebtorCategoryID="C" Description="D&amp;E" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtorCategoryLink({u"C", -1, true}); },
         R"(<DebtorCategoryLink DebtorCategoryID="C" ProductCategoryID="-1" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddDebtorStaff({u"a@b", u"D", u"p'w", u"N", u"L1", u"L2", u"L3", u"L4", u"Ci", u"PC", u"SP", u"ZA",
                               u"1", u"2", u"I", u"S", u"S1", u"S2", u"S3", u"S4", u"SC", u"SS", u"SP", u"ZW", u"3",
                               u"4", 0, u"H", u"LL", 1, u"T", true});
         },
         R"(<DebtorStaff EMailAddress="a@b" DebtorID="D" Password="p&#39;w" Name="N" AddressLine1="L1" AddressLine2="L2" AddressLine3="L3" AddressLine4="L4" City="Ci" PostalCode="PC" StateProvince="SP" CountryCode="ZA" ContactNumber="1" ContactNumber2="2" IDNumber="I" ShippingContact="S" ShippingAddressLine1="S1" ShippingAddressLine2="S2" ShippingAddressLine3="S3" ShippingAddressLine4="S4" ShippingCity="SC" ShippingStateProvince="SS" ShippingPostalCode="SP" ShippingCountryCode="ZW" ShippingContactNumber="3" ShippingContactNumber2="4" SendOrderProgressEmail="0" PasswordHint="H" LeisureLinkNumber="LL" CanSeeBalances="1" TaxReference="T" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddDebtorStaff({.strEMailAddress = u"a@b", .strDebtorID = u"D", .strCountryCode = u"",
                               .strShippingCountryCode = u"", .intBlnCanSeeBalances = -2});
         },
         R"(<DebtorStaff EMailAddress="a@b" DebtorID="D"/>)"},
        {[](Store& s) { s.AddDebtorProduct({u"D", u"S&U", u"X", u"Y", afternoon, 0.00019, 0.00019, true}); },
         R"(<DebtorProduct DebtorID="D" SKU="S&amp;U" DebtorSKU="X" Description="Y" LastPurchaseDate="2007-03-05T14:07:09" LastPurchasePrice=" .0002" LastPurchaseQuantity=" .00019" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtorProduct({u"D", u"S"}); }, R"(<DebtorProduct DebtorID="D" SKU="S"/>)"},
        {[](Store& s) {
             s.AddDebtorOpenItem({u"D", u"R", u"T", afternoon, Date::of(2007, 4, 1), u"X", -1.00004, -0.00004, u"ZAR",
                                  true});
         },
         R"(<DebtorOpenItem DebtorID="D" ReferenceNumber="R" TransactionType="T" TransactionDate="2007-03-05T14:07:09" DueDate="2007-04-01T00:00:00" Description="X" Amount="-1" OutstandingAmount=" 0" CurrencyCode="ZAR" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtorOpenItem({u"D", u"R"}); }, R"(<DebtorOpenItem DebtorID="D" ReferenceNumber="R"/>)"},
    });
}

TEST(Debtors, CapTheirTexts) {
    testing::expectEscapedCaps({
        {[](Store& s, Filler t) {
             s.AddDebtor({t.key(50), t(150), t(10), t(20), t(150), t(30), t(30), t(255), t(50), t(50), t(50), t(50),
                          t(50), t(20), t(30), t(3), t(50), t(3), u"0", t(10), t(10)});
         },
         50 + 150 + 10 + 20 + 150 + 30 + 30 + 255 + 4 * 50 + 50 + 20 + 30 + 3 + 50 + 3 + 10 + 10,
         R"(<Debtor DebtorID="~"/>)"},
        {[](Store& s, Filler t) { s.AddDebtorCategory({t.key(10), t(255)}); }, 10 + 255,
         R"(<DebtorCategory DebtorCategoryID="~"/>)"},
        {[](Store& s, Filler t) {
             s.AddDebtorStaff({t.key(255), t.key(50), t(50), t(150), t(50), t(50), t(50), t(50), t(50), t(20), t(30),
                               t(3), t(50), t(50), t(30), t(150), t(50), t(50), t(50), t(50), t(50), t(30), t(20),
                               t(3), t(30), t(30), -1, t(255), t(50), -1, t(50)});
         },
         255 + 50 + 50 + 150 + 4 * 50 + 50 + 20 + 30 + 3 + 50 + 50 + 30 + 150 + 4 * 50 + 50 + 30 + 20 + 3 + 30 + 30 +
             255 + 50 + 50,
         R"(<DebtorStaff EMailAddress="~" DebtorID="~"/>)"},
        {[](Store& s, Filler t) { s.AddDebtorProduct({u"D", t.key(255), t(255), t(255), {}, 0, 0}); },
         255 + 255 + 255,
         R"(<DebtorProduct DebtorID="D" SKU="~" LastPurchasePrice=" 0" LastPurchaseQuantity=" 0"/>)"},
        {[](Store& s, Filler t) {
             s.AddDebtorOpenItem({u"D", t.key(30), t(20), {}, {}, t(255), mostNegative, mostNegative, t(3)});
         },
         30 + 20 + 255 + 3, R"(<DebtorOpenItem DebtorID="D" ReferenceNumber="~"/>)"},
    });
}

TEST(Debtors, RefuseBadKeysInTheirOwnWords) {
    const char* debtor = "The DebtorID may not be less than 1 or more than 50 characters in length.";
    const char* category = "The DebtorCategoryID may not be less than 1 or more than 10 characters in length.";
    const char* email = "The EMailAddress may not be less than 1 or more than 255 characters in length.";
    const char* sku = "The SKU may not be less than 1 or more than 255 characters in length.";
    const char* reference = "The ReferenceNumber may not be less than 1 or more than 30 characters in length.";
    testing::expectBadKeys({
        {[](Store& s) { s.AddDebtor({tildes(51)}); }, "AddDebtor", debtor},
        {[](Store& s) { s.AddDebtorCategory({tildes(11)}); }, "AddDebtorCategory", category},
        {[](Store& s) { s.AddDebtorCategoryLink({u"", -2}); }, "AddDebtorCategoryLink", category},
        {[](Store& s) { s.AddDebtorCategoryLink({u"C", -2}); }, "AddDebtorCategoryLink",
         "The Product Category ID must be a positive integer."},
        {[](Store& s) { s.AddDebtorStaff({u"", u""}); }, "AddDebtorStaff", email},
        {[](Store& s) { s.AddDebtorStaff({tildes(256), u""}); }, "AddDebtorStaff", email},
        {[](Store& s) { s.AddDebtorStaff({u"E", u""}); }, "AddDebtorStaff", debtor},
        {[](Store& s) { s.AddDebtorProduct({u"", u"S"}); }, "AddDebtorProduct", debtor},
        {[](Store& s) { s.AddDebtorProduct({u"D", u""}); }, "AddDebtorProduct", sku},
        {[](Store& s) { s.AddDebtorProduct({u"D", tildes(256)}); }, "AddDebtorProduct", sku},
        {[](Store& s) { s.AddDebtorOpenItem({u"", u"R"}); }, "AddDebtorOpenItem", debtor},
        {[](Store& s) { s.AddDebtorOpenItem({u"D", u""}); }, "AddDebtorOpenItem", reference},
        {[](Store& s) { s.AddDebtorOpenItem({u"D", tildes(31)}); }, "AddDebtorOpenItem", reference},
        {[](Store& s) { s.LockDebtor(); }, "LockDebtor",
         "No Debtor has been created, or the current Debtor has already been Locked."},
    });
}

// clang-format on

TEST(Debtors, AreOpenFromTheCallUntilTheLock) {
    const Text open = u"A new Debtor may not be added if an existing one is still unlocked.";
    const Text notOpen = u"No Debtor has been created";
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
    expectError(add(tildes(51)), applicationError, u"The DebtorID");
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
