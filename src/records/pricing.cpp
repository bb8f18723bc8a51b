// Special prices and discounts, most of them by quantity break.

#include "records/debtor_rows.hpp"
#include "records/record.hpp"

namespace quill1xml::records {
namespace {

constexpr RowDeclaration debtorCategoryId =
    key("DebtorCategoryID", "strDebtorCategoryID", length(1, 10), escaped,
        u"The DebtorCategoryID may not be less than 1 or more than 10 characters in length.");
constexpr RowDeclaration productGroupId =
    key("ProductGroupID", "strProductGroupID", length(1, 20), escaped,
        u"The ProductGroupID may not be less than 1 or more than 20 characters in length.");
constexpr RowDeclaration sku = key("SKU", "strSKU", length(1, 255), escaped,
                                   u"The SKU may not be less than 1 or more than 255 characters in length.");

}  // namespace

// clang-format off

// Oddity: both dates are written even when they are zero, and the source of the date check names another method.
const Record AddDebtorPrice = record<arguments::AddDebtorPrice>(u"DebtorPrice", [] { return rows(
    debtorId,
    sku,
    numbered<1, 10>(
        attribute("Price#",            "dblPrice#",                   atLeast(0),    currencyStrText)),
    numbered<1, 10>(
        attribute("Quantity#",         "lngQuantity#",                atLeast(0),    integerText)),
    deleted,
    attribute("UseLowestSellingPrice", "intBlnUseLowestSellingPrice", otherThan(-1), integerText),
    check    ("dtmEndDate", notBefore("dtmStartDate"),
              u"The Customer End Date ({dtmEndDate}) may not be before the Start Date ({dtmStartDate}).",
              u"Quill1XML.Store.AddProductPromotion()"),
    attribute("StartDate",             "dtmStartDate",                always,        dateText),
    attribute("EndDate",               "dtmEndDate",                  always,        dateText),
    attribute("EnableDateRange",       "intblnEnableDateRange",       otherThan(-1), integerText),
    numbered<1, 10>(
        attribute("DiscountType#",     "strDiscountType#",            notDefault,    asGiven))); });

const Record AddDiscountMatrix = record<arguments::AddDiscountMatrix>(u"DiscountMatrix", [] { return rows(
    debtorCategoryId,
    productGroupId,
    numbered<1, 3>(
        attribute("DiscountPercent#", "dblDiscountPercent#", atLeast(0), strText)),
    numbered<1, 3>(
        attribute("ProductQuantity#", "lngProductQuantity#", atLeast(0), integerText)),
    numbered<1, 3>(
        attribute("DiscountType#",    "strDiscountType#",    notDefault, asGiven)),
    attribute("MaxDiscount",          "dblMaxDiscount",      atLeast(0), strText),
    deleted); });

const Record AddTavDiscountMatrix = record<arguments::AddTavDiscountMatrix>(u"TavDiscountMatrix", [] { return rows(
    attribute("idDrDiscMx", "idDrDiscMx", always, integerText),
    attribute("XPos",       "xPos",       always, integerText),
    attribute("YPos",       "yPos",       always, integerText),
    attribute("Percentage", "Percentage", always, currencyStrText),
    deleted); });

const Record AddDebtorDiscountMatrix = record<arguments::AddDebtorDiscountMatrix>(
    u"DebtorDiscountMatrix", [] { return rows(
    debtorId,
    productGroupId,
    attribute("BasicDiscountPercent", "dblBasicDiscountPercent", between(0, 100), strText),
    numbered<1, 3>(
        attribute("DiscountPercent#", "dblDiscountPercent#",     atLeast(0),      strText)),
    numbered<1, 3>(
        attribute("ProductQuantity#", "lngProductQuantity#",     atLeast(0),      integerText)),
    deleted,
    numbered<1, 3>(
        attribute("DiscountType#",    "strDiscountType#",        notDefault,      asGiven))); });

// Oddity: the percentages are rounded to currency, unlike those of the other matrices.
const Record AddProductDiscountMatrix = record<arguments::AddProductDiscountMatrix>(
    u"ProductDiscountMatrix", [] { return rows(
    debtorCategoryId,
    sku,
    numbered<1, 3>(
        attribute("DiscountPercent#", "dblDiscountPercent#", atLeast(0), currencyStrText)),
    numbered<1, 3>(
        attribute("ProductQuantity#", "lngProductQuantity#", atLeast(0), integerText)),
    deleted,
    numbered<1, 3>(
        attribute("DiscountType#",    "strDiscountType#",    notDefault, asGiven))); });

const Record AddProductDiscountPrice = record<arguments::AddProductDiscountPrice>(
    u"ProductDiscountPrice", [] { return rows(
    attribute("SKU",           "strSKU",       always,     escaped),
    numbered<1, 10>(
        attribute("Price#",    "dblPrice#",    atLeast(0), currencyStrText)),
    numbered<1, 10>(
        attribute("Quantity#", "lngQuantity#", atLeast(0), integerText)),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
