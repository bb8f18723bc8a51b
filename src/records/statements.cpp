// Statements and transaction history: what a debtor owes, and the documents behind it.

#include "records/debtor_rows.hpp"
#include "records/record.hpp"

namespace quill1xml::records {
namespace {

constexpr RowDeclaration documentNumber =
    key("DocumentNumber", "strDocumentNumber", length(1, 50), escaped,
        u"The DocumentNumber may not be less than 1 or more than 50 characters in length.");
constexpr RowDeclaration lineNumber =
    key("LineNumber", "lngLineNumber", atLeast(1), integerText, u"The Line Number must be a positive integer.");

}  // namespace

// clang-format off

const Record AddCustomerBalanceDescriptions = record<arguments::AddCustomerBalanceDescriptions>(
    u"CustomerBalanceDescriptions", [] { return rows(
    numbered<1, 7>(
        attribute("Balance#Description", "strBalance#Description", notDefault && atMost(50), escaped)),
    deleted); });

const Record AddDebtorStatementHeader = record<arguments::AddDebtorStatementHeader>(
    u"DebtorStatementHeader", [] { return rows(
    debtorId,
    attribute("StatementDate",  "dtmStatementDate",  always,                     dateText),
    attribute("OpeningBalance", "dblOpeningBalance", notLowest,                  currencyStrText),
    attribute("ClosingBalance", "dblClosingBalance", notLowest,                  currencyStrText),
    numbered<1, 7>(
        attribute("Ageing#",    "dblAgeing#",        notLowest,                  currencyStrText)),
    attribute("CurrencyCode",   "strCurrencyCode",   length(3, 3),               escaped),
    attribute("Message",        "strMessage",        notDefault && atMost(1000), escaped),
    deleted); });

const Record AddDebtorStatementLines = record<arguments::AddDebtorStatementLines>(
    u"DebtorStatementLines", [] { return rows(
    debtorId,
    attribute("StatementDate",   "dtmStatementDate",   always,                    dateText),
    lineNumber,
    attribute("TransactionDate", "dtmTransactionDate", dateGiven,                 dateText),
    attribute("ReferenceNumber", "strReferenceNumber", notDefault && atMost(30),  escaped),
    attribute("Description",     "strDescription",     notDefault && atMost(255), escaped),
    attribute("Debit",           "dblDebit",           atLeast(0),                currencyStrText),
    attribute("Credit",          "dblCredit",          atLeast(0),                currencyStrText),
    attribute("Balance",         "dblBalance",         notLowest,                 currencyStrText),
    deleted); });

const Record AddTransactionHistory = record<arguments::AddTransactionHistory>(u"TransactionHistory", [] { return rows(
    debtorId,
    documentNumber,
    attribute("TransactionType",   "strTransactionType",   notDefault && atMost(20),  escaped),
    attribute("TransactionDate",   "dtmTransactionDate",   dateGiven,                 dateText),
    attribute("ReferenceNumber",   "strReferenceNumber",   notDefault && atMost(30),  escaped),
    attribute("Description",       "strDescription",       notDefault && atMost(255), escaped),
    attribute("Amount",            "dblAmount",            notLowest,                 currencyStrText),
    attribute("TaxAmount",         "dblTaxAmount",         notLowest,                 currencyStrText),
    attribute("OutstandingAmount", "dblOutstandingAmount", notLowest,                 currencyStrText),
    deleted); });

const Record AddTransactionHistoryHeader = record<arguments::AddTransactionHistoryHeader>(
    u"TransactionHistoryHeader", [] { return rows(
    documentNumber,
    debtorId,
    attribute("DocumentDate",     "dtmDocumentDate",   dateGiven,                  dateText),
    attribute("DueDate",          "dtmDueDate",        dateGiven,                  dateText),
    attribute("OrderNumber",      "lngOrderNumber",    atLeast(1),                 integerText),
    attribute("PurchaseNumber",   "strPurchaseNumber", notDefault && atMost(50),   escaped),
    attribute("ContactName",      "strContactName",    notDefault && atMost(150),  escaped),
    numbered<1, 4>(
        attribute("AddressLine#", "strAddressLine#",   notDefault && atMost(50),   escaped)),
    attribute("City",             "strCity",           notDefault && atMost(50),   escaped),
    attribute("PostalCode",       "strPostalCode",     notDefault && atMost(20),   escaped),
    attribute("StateProvince",    "strStateProvince",  notDefault && atMost(30),   escaped),
    attribute("CountryCode",      "strCountryCode",    length(1, 3),               escaped),
    attribute("SubTotal",         "dblSubTotal",       notLowest,                  currencyStrText),
    attribute("TaxAmount",        "dblTaxAmount",      notLowest,                  currencyStrText),
    attribute("Total",            "dblTotal",          notLowest,                  currencyStrText),
    attribute("Message",          "strMessage",        notDefault && atMost(1000), escaped),
    deleted); });

const Record AddTransactionHistoryLines = record<arguments::AddTransactionHistoryLines>(
    u"TransactionHistoryLines", [] { return rows(
    documentNumber,
    lineNumber,
    attribute("SKU",             "strSKU",             notDefault && atMost(255), escaped),
    attribute("Description",     "strDescription",     notDefault && atMost(255), escaped),
    attribute("Quantity",        "dblQuantity",        notLowest,                 strText),
    attribute("UnitOfMeasure",   "strUnitOfMeasure",   notDefault && atMost(20),  escaped),
    attribute("Price",           "dblPrice",           notLowest,                 currencyStrText),
    attribute("DiscountPercent", "dblDiscountPercent", between(0, 100),           strText),
    attribute("TaxAmount",       "dblTaxAmount",       notLowest,                 currencyStrText),
    attribute("LineTotal",       "dblLineTotal",       notLowest,                 currencyStrText),
    deleted); });

const Record AddTransactionHistoryLink = record<arguments::AddTransactionHistoryLink>(
    u"TransactionHistoryLink", [] { return rows(
    debtorId,
    documentNumber,
    key      ("LinkedDocumentNumber", "strLinkedDocumentNumber", length(1, 50), escaped,
              u"The LinkedDocumentNumber may not be less than 1 or more than 50 characters in length."),
    attribute("Amount",               "dblAmount",               notLowest,     currencyStrText),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
