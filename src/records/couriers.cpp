// Couriers: simple couriers with zones and rates, local couriers, international couriers.

#include "records/record.hpp"

namespace quill1xml::records {
namespace {

constexpr RowDeclaration courierCode =
    key("CourierCode", "strCourierCode", length(1, 20), escaped,
        u"The CourierCode may not be less than 1 or more than 20 characters in length.");
constexpr RowDeclaration serviceCode =
    key("ServiceCode", "strServiceCode", length(1, 20), escaped,
        u"The ServiceCode may not be less than 1 or more than 20 characters in length.");
constexpr RowDeclaration countryCode =
    key("CountryCode", "strCountryCode", length(1, 5), asGiven,
        u"The CountryCode may not be less than 1 or more than 5 characters in length.");

/// Of couriers and their services. Oddity: the message names 20 characters where 5 are allowed.
constexpr RowDeclaration homeCountryCode =
    key("CountryCode", "strCountryCode", length(1, 5), asGiven,
        u"The CountryCode may not be less than 1 or more than 20 characters in length.");

// clang-format off

constexpr auto courierRows = [] { return rows(
    homeCountryCode,
    courierCode,
    attribute("CourierName", "strCourierName", notDefault, escaped),
    attribute("TrackingURL", "strTrackingURL", notDefault, escaped),
    deleted); };

}  // namespace

// Oddity: the weight unit is refused, not left out, when it is not given, with a message that speaks of its length
// alone.
const Record AddSimpleCourier = record<arguments::AddSimpleCourier>(u"SimpleCourier", [] { return rows(
    courierCode,
    attribute("CourierName",           "strCourierName",           notDefault,               escaped),
    attribute("DisplayText",           "strDisplayText",           notDefault,               escaped),
    attribute("RateCalculationMethod", "strRateCalculationMethod", notDefault,               escaped),
    attribute("BaseRate",              "dblBaseRate",              atLeast(0),               currencyStrText),
    attribute("UnitRate",              "dblUnitRate",              atLeast(0),               currencyStrText),
    attribute("UnitBreak",             "dblUnitBreak",             atLeast(0),               strText),
    attribute("ExtraRate",             "dblExtraRate",             atLeast(0),               currencyStrText),
    attribute("ExtraBreak",            "dblExtraBreak",            atLeast(0),               strText),
    attribute("FreeShippingThreshold", "dblFreeShippingThreshold", atLeast(0),               currencyStrText),
    attribute("ZeroWeightCharge",      "dblZeroWeightCharge",      atLeast(0),               currencyStrText),
    key      ("WeightUnitDescription", "strWeightUnitDescription", notDefault && atMost(20), escaped,
              u"The WeightUnitDescription may not be more than 20 characters in length."),
    deleted,
    attribute("InsuranceAmount",       "dblInsuranceAmount",       atLeast(0),               strText),
    attribute("InsurancePercentage",   "dblInsurancePercentage",   atLeast(0),               strText),
    attribute("WeightBreakUnit",       "dblWeightBreakUnit",       atLeast(0),               strText),
    attribute("PercentAmount",         "dblPercentAmount",         atLeast(0),               strText),
    attribute("InsuranceOffered",      "intInsuranceOffered",      always,                   integerText)); });

const Record AddSimpleCourierZone = record<arguments::AddSimpleCourierZone>(u"SimpleCourierZone", [] { return rows(
    courierCode,
    countryCode,
    attribute("StateProvinceCode", "strStateProvinceCode", always, asGiven),
    attribute("City",              "strCity",              always, asGiven),
    deleted); });

const Record AddSimpleCourierRate = record<arguments::AddSimpleCourierRate>(u"SimpleCourierRate", [] { return rows(
    courierCode,
    attribute("WeightBreak", "dblWeightBreak", otherThan(-1), strText),
    attribute("Rate",        "dblRate",        otherThan(-1), strText),
    deleted); });

const Record AddLocalCourier = record<arguments::AddLocalCourier>(u"LocalCourier", courierRows);

const Record AddLocalCourierService = record<arguments::AddLocalCourierService>(
    u"LocalCourierService", [] { return rows(
    homeCountryCode,
    courierCode,
    serviceCode,
    attribute("ServiceName",                "strServiceName",                notDefault, escaped),
    attribute("DisplayText",                "strDisplayText",                notDefault, escaped),
    attribute("RateCalculationMethod",      "strRateCalculationMethod",      notDefault, escaped),
    attribute("InitialRate",                "dblInitialRate",                atLeast(0), numberText),
    attribute("InitialBreak",               "dblInitialBreak",               atLeast(0), numberText),
    attribute("ExtraRate",                  "dblExtraRate",                  atLeast(0), numberText),
    attribute("ExtraBreak",                 "dblExtraBreak",                 atLeast(0), numberText),
    attribute("InsurancePercentageOfValue", "dblInsurancePercentageOfValue", atLeast(0), numberText),
    attribute("InsuranceMinimumRate",       "dblInsuranceMinimumRate",       atLeast(0), numberText),
    attribute("InsuranceOffered",           "intInsuranceOffered",           noOrYes,    integerText),
    attribute("Activate",                   "blnActivated",                  isTrue,     flag),
    deleted); });

const Record AddInternationalCourier = record<arguments::AddInternationalCourier>(u"InternationalCourier", courierRows);

const Record AddInternationalCourierService = record<arguments::AddInternationalCourierService>(
    u"InternationalCourierService", [] { return rows(
    homeCountryCode,
    courierCode,
    serviceCode,
    attribute("ServiceName",                "strServiceName",                notDefault, escaped),
    attribute("DisplayText",                "strDisplayText",                notDefault, escaped),
    attribute("WeightBreakUnit",            "dblWeightBreakUnit",            above(0),   numberText),
    attribute("InsurancePercentageOfValue", "dblInsurancePercentageOfValue", atLeast(0), numberText),
    attribute("InsuranceMinimumRate",       "dblInsuranceMinimumRate",       atLeast(0), numberText),
    attribute("InsuranceOffered",           "intInsuranceOffered",           noOrYes,    integerText),
    attribute("Activate",                   "blnActivated",                  isTrue,     flag),
    deleted); });

const Record AddInternationalCourierZone = record<arguments::AddInternationalCourierZone>(
    u"InternationalCourierZone", [] { return rows(
    courierCode,
    countryCode,
    key      ("DestinationCountry", "strDestinationCountry", length(1, 20), escaped,
              u"The DestinationCountryCode may not be less than 1 or more than 20 characters in length."),
    attribute("DeliveryZone",       "strDeliveryZone",       notDefault,    escaped),
    deleted); });

const Record AddInternationalCourierRate = record<arguments::AddInternationalCourierRate>(
    u"InternationalCourierRate", [] { return rows(
    courierCode,
    countryCode,
    serviceCode,
    key      ("DeliveryZone", "strDeliveryZone", length(1, 20), escaped,
              u"The DeliveryZone may not be less than 1 or more than 20 characters in length."),
    attribute("WeightBreak",  "dblWeightBreak",  above(0),      numberText),
    attribute("Rate",         "dblRate",         above(0),      numberText),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
