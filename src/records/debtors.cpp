// Debtors: accounts, their categories, logins, product codes and unsettled transactions.

#include "records/debtor_rows.hpp"
#include "records/record.hpp"
#include "records/words.hpp"
#include "store/perform.hpp"

namespace quill1xml::records {
namespace {

constexpr RowDeclaration debtorCategoryId =
    key("DebtorCategoryID", "strDebtorCategoryID", length(1, 10), escaped,
        u"The DebtorCategoryID may not be less than 1 or more than 10 characters in length.");

/// Oddity: opens the debtor before its checks; a debtor that is refused later stays open, and an empty id opens none.
void open(const Call& call, const Record& record) {
    if (!call.store.openDebtor.empty()) {
        throw Error(applicationError, record.source(),
                    u"A new Debtor may not be added if an existing one is still unlocked.");
    }
    call.store.openDebtor = static_cast<const arguments::AddDebtor*>(call.arguments)->strDebtorID;
}

}  // namespace

// clang-format off

const Record AddDebtor = record<arguments::AddDebtor>(u"Debtor", [] { return rows(
    debtorId,
    attribute("Name",             "strName",             notDefault && atMost(150), escaped),
    attribute("DebtorCategoryID", "strDebtorCategoryID", notDefault && atMost(10),  escaped),
    attribute("RepCode",          "strRepCode",          notDefault && atMost(20),  escaped),
    attribute("ContactName",      "strContactName",      notDefault && atMost(150), escaped),
    attribute("ContactNumber",    "strContactNumber",    notDefault && atMost(30),  escaped),
    attribute("ContactNumber2",   "strContactNumber2",   notDefault && atMost(30),  escaped),
    attribute("EMailAddress",     "strEMailAddress",     notDefault && atMost(255), escaped),
    numbered<1, 4>(
        attribute("AddressLine#", "strAddressLine#",     notDefault && atMost(50),  escaped)),
    attribute("City",             "strCity",             notDefault && atMost(50),  escaped),
    attribute("PostalCode",       "strPostalCode",       notDefault && atMost(20),  escaped),
    attribute("StateProvince",    "strStateProvince",    notDefault && atMost(30),  escaped),
    attribute("CountryCode",      "strCountryCode",      length(1, 3),              escaped),
    attribute("TaxReference",     "strTaxReference",     notDefault && atMost(50),  escaped),
    attribute("CurrencyCode",     "strCurrencyCode",     length(3, 3),              escaped),
    attribute("PriceList",        "strPriceList",        oneOf(priceLists),         asGiven),
    attribute("PaymentMethodID",  "strPaymentMethodID",  length(1, 10),             escaped),
    attribute("Terms",            "strTerms",            notDefault && atMost(10),  escaped),
    attribute("CreditLimit",      "dblCreditLimit",      atLeast(0),                currencyStrText),
    attribute("DiscountPercent",  "dblDiscountPercent",  between(0, 100),           strText),
    attribute("Balance",          "dblBalance",          notLowest,                 currencyStrText),
    numbered<1, 7>(
        attribute("Ageing#",      "dblAgeing#",          notLowest,                 currencyStrText)),
    attribute("OnHold",           "intBlnOnHold",        noOrYes,                   integerText),
    attribute("DateOfData",       "dtmDateOfData",       dateGiven,                 dateText),
    deleted); },
    {.prologue = open});

const Record AddDebtorCategory = record<arguments::AddDebtorCategory>(u"DebtorCategory", [] { return rows(
    debtorCategoryId,
    attribute("Description", "strDescription", notDefault && atMost(255), escaped),
    deleted); });

const Record AddDebtorCategoryLink = record<arguments::AddDebtorCategoryLink>(u"DebtorCategoryLink", [] { return rows(
    debtorCategoryId,
    key      ("ProductCategoryID", "lngProductCategoryID", atLeast(-1), integerText,
              u"The Product Category ID must be a positive integer."),
    deleted); });

const Record AddDebtorStaff = record<arguments::AddDebtorStaff>(u"DebtorStaff", [] { return rows(
    key      ("EMailAddress",             "strEMailAddress",              length(1, 255),            escaped,
              u"The EMailAddress may not be less than 1 or more than 255 characters in length."),
    debtorId,
    attribute("Password",                 "strPassword",                  notDefault && atMost(50),  escaped),
    attribute("Name",                     "strName",                      notDefault && atMost(150), escaped),
    numbered<1, 4>(
        attribute("AddressLine#",         "strAddressLine#",              notDefault && atMost(50),  escaped)),
    attribute("City",                     "strCity",                      notDefault && atMost(50),  escaped),
    attribute("PostalCode",               "strPostalCode",                notDefault && atMost(20),  escaped),
    attribute("StateProvince",            "strStateProvince",             notDefault && atMost(30),  escaped),
    attribute("CountryCode",              "strCountryCode",               length(1, 3),              escaped),
    attribute("ContactNumber",            "strContactNumber",             notDefault && atMost(50),  escaped),
    attribute("ContactNumber2",           "strContactNumber2",            notDefault && atMost(50),  escaped),
    attribute("IDNumber",                 "strIDNumber",                  notDefault && atMost(30),  escaped),
    attribute("ShippingContact",          "strShippingContact",           notDefault && atMost(150), escaped),
    numbered<1, 4>(
        attribute("ShippingAddressLine#", "strShippingAddressLine#",      notDefault && atMost(50),  escaped)),
    attribute("ShippingCity",             "strShippingCity",              notDefault && atMost(50),  escaped),
    attribute("ShippingStateProvince",    "strShippingStateProvince",     notDefault && atMost(30),  escaped),
    attribute("ShippingPostalCode",       "strShippingPostalCode",        notDefault && atMost(20),  escaped),
    attribute("ShippingCountryCode",      "strShippingCountryCode",       length(1, 3),              escaped),
    attribute("ShippingContactNumber",    "strShippingContactNumber",     notDefault && atMost(30),  escaped),
    attribute("ShippingContactNumber2",   "strShippingContactNumber2",    notDefault && atMost(30),  escaped),
    attribute("SendOrderProgressEmail",   "intBlnSendOrderProgressEmail", noOrYes,                   integerText),
    attribute("PasswordHint",             "strPasswordHint",              notDefault && atMost(255), escaped),
    attribute("LeisureLinkNumber",        "strLeisureLinkNumber",         notDefault && atMost(50),  escaped),
    attribute("CanSeeBalances",           "intBlnCanSeeBalances",         noOrYes,                   integerText),
    attribute("TaxReference",             "strTaxReference",              notDefault && atMost(50),  escaped),
    deleted); });

const Record AddDebtorProduct = record<arguments::AddDebtorProduct>(u"DebtorProduct", [] { return rows(
    debtorId,
    key      ("SKU",                  "strSKU",                  length(1, 255),            escaped,
              u"The SKU may not be less than 1 or more than 255 characters in length."),
    attribute("DebtorSKU",            "strDebtorSKU",            notDefault && atMost(255), escaped),
    attribute("Description",          "strDescription",          notDefault && atMost(255), escaped),
    attribute("LastPurchaseDate",     "dtmLastPurchaseDate",     dateGiven,                 dateText),
    attribute("LastPurchasePrice",    "dblLastPurchasePrice",    atLeast(0),                currencyStrText),
    attribute("LastPurchaseQuantity", "dblLastPurchaseQuantity", atLeast(0),                strText),
    deleted); });

const Record AddDebtorOpenItem = record<arguments::AddDebtorOpenItem>(u"DebtorOpenItem", [] { return rows(
    debtorId,
    key      ("ReferenceNumber",   "strReferenceNumber",   length(1, 30),             escaped,
              u"The ReferenceNumber may not be less than 1 or more than 30 characters in length."),
    attribute("TransactionType",   "strTransactionType",   notDefault && atMost(20),  escaped),
    attribute("TransactionDate",   "dtmTransactionDate",   dateGiven,                 dateText),
    attribute("DueDate",           "dtmDueDate",           dateGiven,                 dateText),
    attribute("Description",       "strDescription",       notDefault && atMost(255), escaped),
    attribute("Amount",            "dblAmount",            notLowest,                 currencyStrText),
    attribute("OutstandingAmount", "dblOutstandingAmount", notLowest,                 currencyStrText),
    attribute("CurrencyCode",      "strCurrencyCode",      length(3, 3),              escaped),
    deleted); });

// clang-format on

}  // namespace quill1xml::records

namespace quill1xml::store {

void perform(State& state, const arguments::LockDebtor&) {
    if (state.openDebtor.empty()) {
        throw Error(applicationError, u"Quill1XML.Store.LockDebtor()",
                    u"No Debtor has been created, or the current Debtor has already been Locked.");
    }
    state.openDebtor.clear();
}

}  // namespace quill1xml::store
