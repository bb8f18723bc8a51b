#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::Filler;
using testing::tildes;

const Date day = Date::of(2007, 3, 5);
const Date due = Date::of(2007, 4, 1, 23, 59, 59);

// clang-format off

TEST(Statements, WriteExactlyTheseElements) {
    testing::expectWritten({
        {[](Store& s) { s.AddCustomerBalanceDescriptions({u"a", u"b", u"c", u"d", u"e", u"f", u"g&", true}); },
         R"(<CustomerBalanceDescriptions Balance1Description="a" Balance2Description="b" Balance3Description="c" Balance4Description="d" Balance5Description="e" Balance6Description="f" Balance7Description="g&amp;" Deleted="1"/>)"},
        {[](Store& s) { s.AddCustomerBalanceDescriptions(); }, R"(<CustomerBalanceDescriptions/>)"},
        {[](Store& s) {
             s.AddDebtorStatementHeader({u"D", day, -1.00004, -0.00004, 1, 2, 3, 4, 5, -6, 7.00016, u"ZAR", u"<",
                                        true});
         },
         R"(<DebtorStatementHeader DebtorID="D" StatementDate="2007-03-05T00:00:00" OpeningBalance="-1" ClosingBalance=" 0" Ageing1=" 1" Ageing2=" 2" Ageing3=" 3" Ageing4=" 4" Ageing5=" 5" Ageing6="-6" Ageing7=" 7.0002" CurrencyCode="ZAR" Message="&#60;" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtorStatementHeader({.strDebtorID = u"D", .strCurrencyCode = u"ZA"}); },
         R"(<DebtorStatementHeader DebtorID="D" StatementDate="1899-12-30T00:00:00"/>)"},
        {[](Store& s) { s.AddDebtorStatementLines({u"D", day, 1, due, u"R", u"X", 0.00004, 0.25004, -0.25004, true}); },
         R"(<DebtorStatementLines DebtorID="D" StatementDate="2007-03-05T00:00:00" LineNumber="1" TransactionDate="2007-04-01T23:59:59" ReferenceNumber="R" Description="X" Debit=" 0" Credit=" .25" Balance="-.25" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtorStatementLines({u"D", day, 2, {}, u"", u"StringDefault", -0.01, -5}); },
         R"(<DebtorStatementLines DebtorID="D" StatementDate="2007-03-05T00:00:00" LineNumber="2" ReferenceNumber=""/>)"},
        {[](Store& s) {
             s.AddTransactionHistory({u"D", u"N&", u"T", day, u"R", u"X", -1.50004, -1.00004, -0.00004, true});
         },
         R"(<TransactionHistory DebtorID="D" DocumentNumber="N&amp;" TransactionType="T" TransactionDate="2007-03-05T00:00:00" ReferenceNumber="R" Description="X" Amount="-1.5" TaxAmount="-1" OutstandingAmount=" 0" Deleted="1"/>)"},
        {[](Store& s) { s.AddTransactionHistory({u"D", u"N"}); },
         R"(<TransactionHistory DebtorID="D" DocumentNumber="N"/>)"},
        {[](Store& s) {
             s.AddTransactionHistoryHeader({u"N", u"D", day, due, 1, u"P", u"C", u"1", u"2", u"3", u"4", u"Ci", u"PC",
                                            u"SP", u"ZA", -100.00004, -1.00004, -0.00004, u"M", true});
         },
         R"(<TransactionHistoryHeader DocumentNumber="N" DebtorID="D" DocumentDate="2007-03-05T00:00:00" DueDate="2007-04-01T23:59:59" OrderNumber="1" PurchaseNumber="P" ContactName="C" AddressLine1="1" AddressLine2="2" AddressLine3="3" AddressLine4="4" City="Ci" PostalCode="PC" StateProvince="SP" CountryCode="ZA" SubTotal="-100" TaxAmount="-1" Total=" 0" Message="M" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddTransactionHistoryHeader({.strDocumentNumber = u"N", .strDebtorID = u"D", .strCountryCode = u""});
         },
         R"(<TransactionHistoryHeader DocumentNumber="N" DebtorID="D"/>)"},
        {[](Store& s) {
             s.AddTransactionHistoryLines({u"N", 1, u"S", u"X", -0.00019, u"g", -0.00019, 0, -0.50004, -0.00004, true});
         },
         R"(<TransactionHistoryLines DocumentNumber="N" LineNumber="1" SKU="S" Description="X" Quantity="-.00019" UnitOfMeasure="g" Price="-.0002" DiscountPercent=" 0" TaxAmount="-.5" LineTotal=" 0" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddTransactionHistoryLines({.strDocumentNumber = u"N", .lngLineNumber = 1, .dblDiscountPercent = 101});
         },
         R"(<TransactionHistoryLines DocumentNumber="N" LineNumber="1"/>)"},
        {[](Store& s) { s.AddTransactionHistoryLink({u"D", u"N", u"L&", -1.00004, true}); },
         R"(<TransactionHistoryLink DebtorID="D" DocumentNumber="N" LinkedDocumentNumber="L&amp;" Amount="-1" Deleted="1"/>)"},
        {[](Store& s) { s.AddTransactionHistoryLink({u"D", u"N", u"L"}); },
         R"(<TransactionHistoryLink DebtorID="D" DocumentNumber="N" LinkedDocumentNumber="L"/>)"},
    });
}

TEST(Statements, CapTheirTexts) {
    testing::expectEscapedCaps({
        {[](Store& s, Filler t) {
             s.AddCustomerBalanceDescriptions({t(50), t(50), t(50), t(50), t(50), t(50), t(50)});
         },
         7 * 50, R"(<CustomerBalanceDescriptions/>)"},
        {[](Store& s, Filler t) {
             s.AddDebtorStatementHeader({.strDebtorID = u"D", .strCurrencyCode = t(3), .strMessage = t(1000)});
         },
         3 + 1000, R"(<DebtorStatementHeader DebtorID="D" StatementDate="1899-12-30T00:00:00"/>)"},
        {[](Store& s, Filler t) { s.AddDebtorStatementLines({u"D", day, 1, {}, t(30), t(255), 0, 0}); },
         30 + 255, R"(<DebtorStatementLines DebtorID="D" StatementDate="2007-03-05T00:00:00" LineNumber="1" Debit=" 0" Credit=" 0"/>)"},
        {[](Store& s, Filler t) { s.AddTransactionHistory({u"D", t.key(50), t(20), {}, t(30), t(255)}); },
         50 + 20 + 30 + 255, R"(<TransactionHistory DebtorID="D" DocumentNumber="~"/>)"},
        {[](Store& s, Filler t) {
             s.AddTransactionHistoryHeader({u"N", u"D", {}, {}, 0, t(50), t(150), t(50), t(50), t(50), t(50), t(50),
                                            t(20), t(30), t(3), mostNegative, mostNegative, mostNegative, t(1000)});
         },
         50 + 150 + 4 * 50 + 50 + 20 + 30 + 3 + 1000, R"(<TransactionHistoryHeader DocumentNumber="N" DebtorID="D"/>)"},
        {[](Store& s, Filler t) { s.AddTransactionHistoryLines({u"N", 1, t(255), t(255), mostNegative, t(20)}); },
         255 + 255 + 20, R"(<TransactionHistoryLines DocumentNumber="N" LineNumber="1"/>)"},
        {[](Store& s, Filler t) { s.AddTransactionHistoryLink({u"D", u"N", t.key(50)}); },
         50, R"(<TransactionHistoryLink DebtorID="D" DocumentNumber="N" LinkedDocumentNumber="~"/>)"},
    });
}

TEST(Statements, RefuseBadKeysInTheirOwnWords) {
    const char* debtor = "The DebtorID may not be less than 1 or more than 50 characters in length.";
    const char* document = "The DocumentNumber may not be less than 1 or more than 50 characters in length.";
    const char* linked = "The LinkedDocumentNumber may not be less than 1 or more than 50 characters in length.";
    const char* line = "The Line Number must be a positive integer.";
    testing::expectBadKeys({
        {[](Store& s) { s.AddDebtorStatementHeader({u""}); }, "AddDebtorStatementHeader", debtor},
        {[](Store& s) { s.AddDebtorStatementLines({u"", day, 0}); }, "AddDebtorStatementLines", debtor},
        {[](Store& s) { s.AddDebtorStatementLines({u"D", day, 0}); }, "AddDebtorStatementLines", line},
        {[](Store& s) { s.AddTransactionHistory({u"", u""}); }, "AddTransactionHistory", debtor},
        {[](Store& s) { s.AddTransactionHistory({u"D", tildes(51)}); }, "AddTransactionHistory", document},
        {[](Store& s) { s.AddTransactionHistoryHeader({u"", u""}); }, "AddTransactionHistoryHeader", document},
        {[](Store& s) { s.AddTransactionHistoryHeader({u"N", u""}); }, "AddTransactionHistoryHeader", debtor},
        {[](Store& s) { s.AddTransactionHistoryLines({u"", 0}); }, "AddTransactionHistoryLines", document},
        {[](Store& s) { s.AddTransactionHistoryLines({u"N", 0}); }, "AddTransactionHistoryLines", line},
        {[](Store& s) { s.AddTransactionHistoryLink({u"", u"", u""}); }, "AddTransactionHistoryLink", debtor},
        {[](Store& s) { s.AddTransactionHistoryLink({u"D", u"", u""}); }, "AddTransactionHistoryLink", document},
        {[](Store& s) { s.AddTransactionHistoryLink({u"D", u"N", u""}); }, "AddTransactionHistoryLink", linked},
        {[](Store& s) { s.AddTransactionHistoryLink({u"D", u"N", tildes(51)}); }, "AddTransactionHistoryLink", linked},
    });
}

// clang-format on

}  // namespace
}  // namespace quill1xml
