// General masters: tax codes, currencies, countries, contacts, messages, payment, captions.

#include "records/record.hpp"

namespace quill1xml::records {
namespace {

constexpr std::u16string_view paymentUses[] = {u"DebtorsOnly", u"All", u"Business"};

}  // namespace

// clang-format off

const Record AddTax = record<arguments::AddTax>(u"Tax", [] { return rows(
    key      ("TaxCode",           "strTaxCode",           length(1, 10),            escaped,
              u"The TaxCode may not be less than 1 or more than 10 characters in length."),
    attribute("Description",       "strDescription",       notDefault && atMost(50), escaped),
    attribute("Rate",              "dblRate",              between(0, 100),          strText),
    attribute("CountryCode",       "strCountryCode",       notDefault,               asGiven),
    attribute("StateProvinceCode", "strStateProvinceCode", notDefault,               asGiven),
    deleted,
    attribute("UsePOSRebate",      "blnUsePOSRebate",      always,                   flag),
    attribute("POSRebateRate",     "dblPOSRebateRate",     always,                   currencyStrText)); });

// Oddity: source and message name another method and another limit.
const Record AddMobileUser = record<arguments::AddMobileUser>(u"MobileUser", [] { return rows(
    key      ("GUID",        "strGUID",        length(1, 32),            escaped,
              u"GUID may not be less than 1 or more than 10 characters in length."),
    attribute("Description", "strDescription", notDefault && atMost(50), escaped),
    attribute("Email",       "strEmail",       notDefault && atMost(50), escaped),
    attribute("Mobile",      "strMobile",      notDefault && atMost(50), escaped),
    attribute("Active",      "blnActive",      isTrue,                   flag)); },
    {.source = u"Quill1XML.Store.AddTax()"});

const Record AddTradingCountry = record<arguments::AddTradingCountry>(u"TradingCountry", [] { return rows(
    attribute("CountryCode", "strCountryCode", notDefault, asGiven),
    deleted); });

// Oddity: the message names 4 characters where 10 are allowed.
const Record AddPaymentMethod = record<arguments::AddPaymentMethod>(u"PaymentMethod", [] { return rows(
    key      ("PaymentMethodID",             "strPaymentMethodID",        length(1, 10),             escaped,
              u"The PaymentMethodID may not be less than 1 or more than 4 characters in length."),
    attribute("Name",                        "strName",                   notDefault && atMost(100), escaped),
    attribute("OnlineGateway",               "intBlnOnlineGateway",       noOrYes,                   integerText),
    attribute("Overview",                    "strOverview",               notDefault,                escaped),
    attribute("Card",                        "intBlnCard",                noOrYes,                   integerText),
    attribute("DefaultAccount",              "strDefaultAccount",         notDefault && atMost(20),  escaped),
    deleted,
    attribute("PaymentUse",                  "strPaymentUse",             oneOf(paymentUses),        asGiven),
    attribute("AllowBudgetAccountPurchases", "intBudgetAccountPurchases", noOrYes,                   integerText),
    attribute("PaymentGatewayCode",          "strPaymentGatewayCode",     notDefault,                escaped),
    attribute("MerchantID",                  "strMerchantID",             notDefault,                escaped)); });

const Record AddMessage = record<arguments::AddMessage>(u"Message", [] { return rows(
    key      ("MessageID",   "strMessageID",   length(1, 10),            escaped,
              u"The MessageID may not be less than 1 or more than 10 characters in length."),
    attribute("Description", "strDescription", notDefault && atMost(50), escaped),
    attribute("MessageText", "strMessageText", notDefault,               escaped),
    deleted); });

const Record AddSalesRep = record<arguments::AddSalesRep>(u"SalesRep", [] { return rows(
    key      ("RepCode",  "strRepCode",  length(1, 20),            escaped,
              u"The RepCode may not be less than 1 or more than 20 characters in length."),
    attribute("RepName",  "strRepName",  notDefault && atMost(50), escaped),
    attribute("Password", "strPassword", notDefault && atMost(50), escaped),
    deleted); });

const Record AddPaymentOption = record<arguments::AddPaymentOption>(u"PaymentOption", [] { return rows(
    key      ("OptionID",       "lngOptionID",       otherThan(0),  integerText,
              u"The option ID may not be equal to 0."),
    attribute("PaymentPeriod",  "lngPaymentPeriod",  otherThan(0),  integerText),
    attribute("FinanceCost",    "dblFinanceCost",    otherThan(0),  numberText),
    attribute("MonthlyAdmin",   "dblMonthlyAdmin",   otherThan(0),  numberText),
    attribute("FinancePercent", "dblFinancePercent", otherThan(0),  numberText),
    attribute("InterestRate",   "dblInterestRate",   otherThan(0),  numberText),
    attribute("AnnualInterest", "lngAnnualInterest", otherThan(-1), integerText),
    deleted); });

const Record AddMailTo = record<arguments::AddMailTo>(u"MailTo", [] { return rows(
    attribute("RepCode",     "strRepCode",     notDefault && atMost(50), escaped),
    attribute("Name",        "strName",        notDefault && atMost(50), escaped),
    attribute("Designation", "strDesignation", notDefault && atMost(50), escaped),
    attribute("EMail",       "strEmail",       notDefault && atMost(50), escaped),
    deleted,
    attribute("MailUs",      "intMailUs",      otherThan(-1),            integerText)); });

const Record AddCurrency = record<arguments::AddCurrency>(u"Currency", [] { return rows(
    key      ("CurrencyCode", "strCurrencyCode", length(1, 10),            escaped,
              u"The CurrencyCode may not be less than 1 or more than 10 characters in length."),
    attribute("Description",  "strDescription",  notDefault && atMost(50), escaped),
    attribute("ExchangeRate", "dblExchangeRate", always,                   currencyStrText),
    attribute("Symbol",       "strSymbol",       notDefault,               escaped),
    deleted); });

const Record AddAgeing = record<arguments::AddAgeing>(u"Ageing", [] { return rows(
    numbered<1, 7>(
        attribute("Ageing#Description", "strAgeing#Description", notDefault && atMost(50), escaped)),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
