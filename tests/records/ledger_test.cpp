#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectWritten;
using testing::Filler;
using testing::tildes;

// clang-format off

TEST(Ledger, WritesExactlyTheseElements) {
    const Date day = Date::of(2007, 3, 5);
    const Date next = Date::of(2007, 3, 6);
    const Date time = Date::of(2007, 3, 7, 14, 7, 9);
    expectWritten({
        {[](Store& s) { s.AddSupplier({u"S1"}); }, R"(<Supplier SupplierID="S1"/>)"},
        {[](Store& s) { s.AddSupplier({.strSupplierID = u"S1", .dblCreditLimit = 0, .dblBalance = -250,
                                       .dblLastPOAmount = -0.5}); },
         R"(<Supplier SupplierID="S1" CreditLimit=" 0" Balance="-250"/>)"},
        {[&](Store& s) { s.AddSupplier({u"S&1", u"D&1", u"C&1", u"N&1", u"T&1", 1.00006, -4.00006, day, 2.00006, next,
                                        3.00006, time, true}); },
         R"(<Supplier SupplierID="S&amp;1" Description="D&amp;1" ContactName="C&amp;1" ContactNumber="N&amp;1" Terms="T&amp;1" CreditLimit=" 1.0001" Balance="-4.0001" LastPODate="2007-03-05T00:00:00" LastPOAmount=" 2.0001" LastPaymentDate="2007-03-06T00:00:00" LastPaymentAmount=" 3.0001" DateOfData="2007-03-07T14:07:09" Deleted="1"/>)"},
        {[](Store& s) { s.AddCashFlow({u"C", notGiven, {}, notGiven}); },
         R"(<CashFlow SummaryCode="C" Amount="-1"/>)"},
        {[&](Store& s) { s.AddCashFlow({u"C&1", u"S&1", time, u"A&1", 0.123456, 0, true});
                         s.AddCashFlow({u"C", u"", {}, u"", mostNegative, -2}); },
         R"(<CashFlow SummaryCode="C&amp;1" Source="S&amp;1" FinancialPeriodEndDate="2007-03-07T14:07:09" AccountNumber="A&amp;1" Amount="0.123456" HeadingSequence="0" Deleted="1"/><CashFlow SummaryCode="C" Source="" AccountNumber="" HeadingSequence="-2"/>)"},
        {[](Store& s) { s.AddGLAccount({u"1000"}); }, R"(<GLAccount GLAccountID="1000"/>)"},
        {[](Store& s) { s.AddGLAccount({.strGLAccountID = u"1000", .dblAmount = 0}); },
         R"(<GLAccount GLAccountID="1000" Amount="0"/>)"},
        {[&](Store& s) { s.AddGLAccount({u"G&1", u"D&1", -0.123456, time, true, u"F&1"}); },
         R"(<GLAccount GLAccountID="G&amp;1" Description="D&amp;1" Amount="-0.123456" DateOfData="2007-03-07T14:07:09" Deleted="1" FinancialCategory="F&amp;1"/>)"},
    });
}

TEST(Ledger, LeavesOutTextsBeyondTheirCaps) {
    testing::expectCaps({
        {[](Store& s, Filler f) { s.AddSupplier({f.key(15), f(40), f(20), f(20), f(10)}); },
         15 + 40 + 20 + 20 + 10, R"(<Supplier SupplierID="~"/>)"},
        {[](Store& s, Filler f) { s.AddCashFlow({f.key(50), f(3), {}, f(50)}); },
         50 + 3 + 50, R"(<CashFlow SummaryCode="~" Amount="-1"/>)"},
        {[](Store& s, Filler f) { s.AddGLAccount({f.key(15), f(40), mostNegative, {}, false, f(50)}); },
         15 + 40 + 50, R"(<GLAccount GLAccountID="~"/>)"},
    });
}

TEST(Ledger, RefusesBadKeysInItsOwnWords) {
    testing::expectBadKeys({
        {[](Store& s) { s.AddSupplier({tildes(16)}); }, "AddSupplier",
         "The Supplier ID may not be less than 1 or more than 15 characters in length."},
        {[](Store& s) { s.AddCashFlow({tildes(51)}); }, "AddCashflow",
         "The Summary Code may not be less than 1 or more than 50 characters in length."},
        {[](Store& s) { s.AddGLAccount({tildes(16)}); }, "AddGLAccount",
         "The GLAccount ID may not be less than 1 or more than 15 characters in length."},
    });
}

// clang-format on

}  // namespace
}  // namespace quill1xml
