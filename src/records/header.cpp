// The start of a store document: the root element with the store's settings, and the envelope with the sender's
// credentials.

#include "records/record.hpp"
#include "records/words.hpp"
#include "store/document_head.hpp"
#include "store/going_on.hpp"
#include "store/packets.hpp"
#include "store/perform.hpp"

namespace quill1xml::records {
namespace {

constexpr std::u16string_view statuses[] = {u"Open", u"Closed", u"Suspended"};
constexpr std::u16string_view businessModes[] = {u"Public", u"Mixed", u"Business"};
constexpr std::u16string_view siteTypes[] = {u"ArticlesOnly", u"Selling", u"CatalogueOnly"};
constexpr std::u16string_view showCaseDisplays[] = {u"ImageRich", u"TextOnly", u"ImageRichDetailed"};
constexpr std::u16string_view priceDisplays[] = {u"TaxExclusive", u"TaxInclusive", u"Both"};

/// Oddity: the texts of stock levels and categories go with the method of stock on hand, whatever they hold themselves.
constexpr Condition withStockMethod = when("strQuantityOnHandMethod", notBlank);

}  // namespace

// clang-format off

const Record Create = record<arguments::Create>(u"Store", [] { return rows(
    key      ("StoreID",                  "lngStoreID",                    atLeast(1),                 integerText,
              u"Store ID {lngStoreID} is not valid."),
    attribute("ShortName",                "strShortName",                  notDefault && atMost(30),   escaped),
    attribute("Name",                     "strName",                       notDefault && atMost(255),  escaped),
    attribute("TemplateID",               "lngTemplateID",                 above(0),                   integerText),
    attribute("RepCode",                  "strRepCode",                    notDefault && atMost(20),   escaped),
    attribute("ShortDescription",         "strShortDescription",           notDefault && atMost(80),   escaped),
    attribute("LongDescription",          "strLongDescription",            notDefault,                 escaped),
    attribute("AddressLine1",             "strAddressLine1",               notDefault && atMost(50),   escaped),
    attribute("AddressLine2",             "strAddressLine2",               notDefault && atMost(50),   escaped),
    attribute("City",                     "strCity",                       notDefault && atMost(50),   escaped),
    attribute("StateProvince",            "strStateProvince",              notDefault && atMost(30),   escaped),
    attribute("PostalCode",               "strPostalCode",                 notDefault && atMost(20),   escaped),
    attribute("CountryCode",              "strCountryCode",                atMost(3),                  escaped),
    attribute("Telephone",                "strTelephone",                  notDefault && atMost(50),   escaped),
    attribute("Fax",                      "strFax",                        notDefault && atMost(50),   escaped),
    attribute("EMailAddress",             "strEmailAddress",               notDefault && atMost(255),  escaped),
    attribute("StoreURL",                 "strStoreURL",                   notDefault && atMost(255),  escaped),
    attribute("DateCreated",              "dtmCreated",                    dateGiven,                  dateText),
    attribute("TestStore",                "intBlnTestStore",               noOrYes,                    integerText),
    attribute("CallBack",                 "intBlnCallBack",                noOrYes,                    integerText),
    attribute("CallBackID",               "strCallBackID",                 notDefault && atMost(100),  escaped),
    attribute("LeisureLinkID",            "strLeisureLinkID",              notDefault && atMost(4),    escaped),
    attribute("WebSafeID",                "strWebSafeID",                  notDefault && atMost(50),   escaped),
    attribute("ChargeForFraudInsurance",  "intBlnChargeForFraudInsurance", noOrYes,                    integerText),
    attribute("SourceApplication",        "strSourceApplication",          notDefault && atMost(50),   escaped),
    attribute("Status",                   "strStatus",                     oneOf(statuses),            asGiven),
    attribute("AllowPasswordEMail",       "intBlnAllowPasswordEMail",      noOrYes,                    integerText),
    attribute("BusinessMode",             "strBusinessMode",               oneOf(businessModes),       asGiven),
    attribute("CompanyRegistration",      "strCompanyRegistration",        notDefault && atMost(255),  escaped),
    attribute("TaxNumber",                "strTaxNumber",                  notDefault && atMost(255),  escaped),
    attribute("CurrencyCode",             "strCurrencyCode",               length(3, 3),               asGiven),
    attribute("CustomerNotification",     "intBlnCustomerNotification",    noOrYes,                    integerText),
    attribute("DeliveryDateActive",       "intBlnDeliveryDateActive",      noOrYes,                    integerText),
    attribute("DeliveryTaxCode",          "strDeliveryTaxCode",            notDefault && length(1, 10), escaped),
    attribute("SiteType",                 "strSiteType",                   oneOf(siteTypes),           asGiven),
    attribute("ForceLogin",               "intBlnForceLogin",              noOrYes,                    integerText),
    attribute("PageSize",                 "intPageSize",                   above(1),                   integerText),
    attribute("ShowCasePageSize",         "intShowCasePageSize",           above(1),                   integerText),
    attribute("ShowCaseDisplayType",      "strShowCaseDisplayType",        oneOf(showCaseDisplays),    asGiven),
    attribute("StartPage",                "strStartPage",                  notDefault && atMost(50),   escaped),
    attribute("NewDays",                  "intNewDays",                    atLeast(0),                 integerText),
    attribute("ShopBySKUInputRows",       "intShopBySKUInputRows",         atLeast(0),                 integerText),
    attribute("QuickShop",                "intBlnQuickShop",               noOrYes,                    integerText),
    attribute("PriceDisplay",             "strPriceDisplay",               oneOf(priceDisplays),       asGiven),
    attribute("PriceList",                "strPriceList",                  oneOf(priceLists),          asGiven),
    attribute("TerminalID",               "strTerminalID",                 notDefault && atMost(255),  escaped),
    attribute("SaveSearchStrings",        "intBlnSaveSearchStrings",       noOrYes,                    integerText),
    attribute("SendOfflineCardDetails",   "intBlnSendOfflineCardDetails",  noOrYes,                    integerText),
    attribute("SchemeID",                 "lngSchemeID",                   atLeast(1),                 integerText),
    attribute("CustomBrandingHTML",       "strCustomBrandingHTML",         notDefault,                 escaped),
    attribute("AllowAppointmentRequests", "intBlnAllowAppointmentRequests", noOrYes,                   integerText),
    attribute("MaximumOrderValue",        "dblMaximumOrderValue",          atLeast(0),                 currencyStrText),
    attribute("AllowOpenItems",           "intBlnAllowOpenItems",          noOrYes,                    integerText),
    attribute("AllowOpenItemPayments",    "intBlnAllowOpenItemPayments",   noOrYes,                    integerText),
    fixed    ("LogoImage",                when("strLogoImageFile", notDefault) || when("strLogoImageURL", notDefault),
              u"Logo.jpg"),
    attribute("LogoImageFile",            "strLogoImageFile",              notDefault,                 fileContent),
    attribute("LogoImageURL",             "strLogoImageURL",               notDefault,                 escaped),
    attribute("NumberOfTaxLevels",        "intNumberOfTaxLevels",          atLeast(0),                 integerText),
    attribute("CompoundTaxCalculation",   "intBlnCompoundTaxCalculation",  noOrYes,                    integerText)); },
    {.isRoot = true, .afterName = u" xmlns=\"WebStore\"", .end = u""});

const Record AddAdditionalParameters = record<arguments::AddAdditionalParameters>(u"Store", [] { return rows(
    attribute("DeleteAllUploadData",           "blnDeleteAllUploadData",              isTrue,        flag),
    attribute("DeleteDiscountMatrix",          "blnDeleteDiscountMatrix",             isTrue,        flag),
    attribute("DeleteProductCategory",         "blnDeleteProductCategory",            isTrue,        flag),
    attribute("DeleteProductCategoryLink",     "blnDeleteProductCategoryLink",        isTrue,        flag),
    attribute("ChargeTaxOnShipping",           "intblnChargeTaxOnShipping",           noOrYes,       integerText),
    attribute("EnableShipping",                "intblnEnableShipping",                noOrYes,       integerText),
    attribute("DeleteProductDiscountPrice",    "blnDeleteProductDiscountPrice",       isTrue,        flag),
    attribute("DisplayProductRecommendation",  "intblnDisplayProductRecommendation",  noOrYes,       integerText),
    attribute("DaysAfterDueNotice",            "intDaysAfterDueNotice",               atLeast(0),    integerText),
    attribute("FollowUpDaysDueNotice",         "intFollowUpDaysDueNotice",            atLeast(0),    integerText),
    attribute("NumberFollowUpNotices",         "intNumberFollowUpNotices",            atLeast(0),    integerText),
    attribute("DaysTillOrderPurge",            "intDaysTillOrderPurge",               atLeast(0),    integerText),
    attribute("FinancialYearStartDate",        "dtmFinancialYearStartDate",           dateGiven,     dateText),
    attribute("UsesSimpleCouriers",            "intblnUsesSimpleCouriers",            noOrYes,       integerText),
    attribute("StockOnHandMethod",             "strQuantityOnHandMethod",             notDefault,    asGiven),
    attribute("AddressBarPicture",             "strAddressBarPicURL",                 notDefault,    asGiven),
    attribute("SalesOrdersReserveQty",         "intblnSalesOrdersReserveQty",         noOrYes,       integerText),
    attribute("AllowNegativeQty",              "intblnAllowNegativeQty",              noOrYes,       integerText),
    attribute("MaxDeliveryWeight",             "dblMaxDeliveryWeight",                otherThan(-1), currencyStrText),
    attribute("AllowOfflineOrders",            "intAllowOfflineOrders",               otherThan(-1), integerText),
    attribute("SortNumerically",               "intSortNumerically",                  otherThan(-1), integerText),
    attribute("PrintPrescription",             "intblnPrintPrescription",             otherThan(-1), integerText),
    attribute("DebtorCanChangeBillingAddress", "intblnDebtorCanChangeBillingAddress", otherThan(-1), integerText),
    attribute("StockLevelDisplayMethod",       "strStockLevelDisplayMethod",          withStockMethod, escaped),
    attribute("StockAboveZeroMessage",         "strAboveZeroMessage",                 withStockMethod, escaped),
    attribute("StockBelowZeroMessage",         "strBelowZeroMessage",                 withStockMethod, escaped),
    attribute("CategoryHTML",                  "strCategoryHTML",                     withStockMethod, escaped),
    attribute("AllowDropDown",                 "intblnAllowCSSDropDown",              otherThan(-1), integerText),
    attribute("UseQuotesAsOrders",             "intQuotesAsOrders",                   otherThan(-1), integerText),
    attribute("SendNewCustomerEmails",         "intblnSendNewCustomerEmails",         always,        integerText),
    attribute("DebtorIDLogin",                 "intblnDebtorIDLogin",                 always,        integerText),
    attribute("ViewOpenItemsAsStatement",      "intblnViewOpenItemsAsStatement",      always,        integerText),
    attribute("AllowSalesRepLogin",            "intBlnAllowSRLogin",                  always,        integerText),
    attribute("RemoveStatementData",           "intblnRemoveStatementData",           otherThan(-1), integerText)); },
    {.isRoot = true});

const Record AddEnvelope = record<arguments::AddEnvelope>(u"Envelope", [] { return rows(
    check    ("strUserName", notEmpty, u"Username cannot be an empty string"),
    attribute("DateCreated",    "",                  always,     currentDateText),
    attribute("UserName",       "strUserName",       always,     escaped),
    attribute("Password",       "strPassword",       always,     escaped),
    attribute("DestinationURL", "strDestinationURL", notDefault, escaped),
    attribute("DocumentNumber", "lngDocumentNumber", above(0),   integerText),
    attribute("VersionNumber",  "strVersion_Number", notEmpty,   asGiven)); });

// clang-format on

}  // namespace quill1xml::records

namespace quill1xml::store {
void perform(State& state, const arguments::Create& arguments) {
    useDefaultFolder(state);
    refuseUnfinished(state, records::Create.source());
    run(state, arguments::CleanupTempFiles{});
    if (!state.storeElement.empty()) {
        throw Error(applicationError, records::Create.source(), u"A new store has already been created.");
    }
    run(state, arguments::SetStoreID{arguments.lngStoreID});
    state.schemaSource = arguments.strWebStoreSchemaSource;

    // A valid number makes the head, whatever becomes of the settings after it.
    if (arguments.lngStoreID >= 1) state.documentHead = rootTag(arguments.lngStoreID);
    TextBuffer element;
    records::appendElement(element, records::Create, {state, &arguments});
    state.storeElement = element.view();
}

void perform(State& state, const arguments::AddAdditionalParameters& arguments) {
    if (state.storeElement.empty()) {
        throw Error(applicationError, records::AddAdditionalParameters.source(),
                    u"This function can only be called after the store has been created.");
    }
    TextBuffer text;
    text.append(state.storeElement);
    records::appendAttributes(text, records::AddAdditionalParameters, {state, &arguments});
    // Oddity: the blank before the bracket.
    text.append(u" >");
    startAnew(state, firstPacket, text.view());
    state.storeElement.clear();
}

void perform(State& state, const arguments::AddEnvelope& arguments) {
    TextBuffer envelope;
    records::appendElement(envelope, records::AddEnvelope, {state, &arguments});
    appendEnvelope(state.documentHead, envelope.view());
    append(state, firstPacket, envelope.view());
}

}  // namespace quill1xml::store
