// Ledger masters: suppliers, cash flow, general-ledger accounts.

#include "records/record.hpp"

namespace quill1xml::records {

// clang-format off

const Record AddSupplier = record<arguments::AddSupplier>(u"Supplier", [] { return rows(
    key      ("SupplierID",        "strSupplierID",        length(1, 15),            escaped,
              u"The Supplier ID may not be less than 1 or more than 15 characters in length."),
    attribute("Description",       "strDescription",       notDefault && atMost(40), escaped),
    attribute("ContactName",       "strContactName",       notDefault && atMost(20), escaped),
    attribute("ContactNumber",     "strContactNumber",     notDefault && atMost(20), escaped),
    attribute("Terms",             "strTerms",             notDefault && atMost(10), escaped),
    attribute("CreditLimit",       "dblCreditLimit",       atLeast(0),               currencyStrText),
    attribute("Balance",           "dblBalance",           notLowest,                currencyStrText),
    attribute("LastPODate",        "dtmLastPO",            dateGiven,                dateText),
    attribute("LastPOAmount",      "dblLastPOAmount",      atLeast(0),               currencyStrText),
    attribute("LastPaymentDate",   "dtmLastPayment",       dateGiven,                dateText),
    attribute("LastPaymentAmount", "dblLastPaymentAmount", atLeast(0),               currencyStrText),
    attribute("DateOfData",        "dtmData",              dateGiven,                dateText),
    deleted); });

// Oddity: the source has a small f, and an amount that is not given is written as -1.
const Record AddCashFlow = record<arguments::AddCashFlow>(u"CashFlow", [] { return rows(
    key      ("SummaryCode",            "strSummaryCode",            length(1, 50),            escaped,
              u"The Summary Code may not be less than 1 or more than 50 characters in length."),
    attribute("Source",                 "strSource",                 notDefault && atMost(3),  escaped),
    attribute("FinancialPeriodEndDate", "dtmFinancialPeriodEndDate", dateGiven,                dateText),
    attribute("AccountNumber",          "strAccountNumber",          notDefault && atMost(50), escaped),
    attribute("Amount",                 "dblAmount",                 notLowest,                numberText),
    attribute("HeadingSequence",        "intHeadingSequence",        otherThan(-1),            integerText),
    deleted); },
    {.source = u"Quill1XML.Store.AddCashflow()"});

const Record AddGLAccount = record<arguments::AddGLAccount>(u"GLAccount", [] { return rows(
    key      ("GLAccountID",       "strGLAccountID",       length(1, 15),            escaped,
              u"The GLAccount ID may not be less than 1 or more than 15 characters in length."),
    attribute("Description",       "strDescription",       notDefault && atMost(40), escaped),
    attribute("Amount",            "dblAmount",            notLowest,                numberText),
    attribute("DateOfData",        "dtmData",              dateGiven,                dateText),
    deleted,
    attribute("FinancialCategory", "strFinancialCategory", notDefault && atMost(50), escaped)); });

// clang-format on

}  // namespace quill1xml::records
