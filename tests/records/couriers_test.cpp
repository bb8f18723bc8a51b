#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectWritten;
using testing::Filler;
using testing::tildes;

// clang-format off

TEST(Couriers, WriteExactlyTheseElements) {
    expectWritten({
        {[](Store& s) { s.AddSimpleCourier({.strCourierCode = u"POST", .strWeightUnitDescription = u"kg"}); },
         R"(<SimpleCourier CourierCode="POST" WeightUnitDescription="kg" InsuranceAmount=" 0" InsurancePercentage=" 0" WeightBreakUnit=" 0" InsuranceOffered="0"/>)"},
        {[](Store& s) { s.AddSimpleCourier({u"P&O", u"N&1", u"T&1", u"M&1", 12.345678, 2.00006, 0.5, 100.00006,
                                            3.00006, u"k&g", 4.00006, 1.23456, true, 10.123456, 1.000001, 1, 0.123456,
                                            7.000001}); },
         R"(<SimpleCourier CourierCode="P&amp;O" CourierName="N&amp;1" DisplayText="T&amp;1" RateCalculationMethod="M&amp;1" BaseRate=" 12.3457" UnitRate=" 2.0001" UnitBreak=" .5" ExtraRate=" 4.0001" ExtraBreak=" 1.23456" FreeShippingThreshold=" 100.0001" ZeroWeightCharge=" 3.0001" WeightUnitDescription="k&amp;g" Deleted="1" InsuranceAmount=" 10.123456" InsurancePercentage=" 1.000001" WeightBreakUnit=" .123456" PercentAmount=" 7.000001" InsuranceOffered="1"/>)"},
        {[](Store& s) { s.AddSimpleCourier({.strCourierCode = u"A", .dblBaseRate = -0.5, .dblUnitRate = 0,
                                            .strWeightUnitDescription = u"", .dblInsuranceAmount = -1,
                                            .dblInsurancePercentage = -1, .intInsuranceOffered = -1,
                                            .dblWeightBreakUnit = -1}); },
         R"(<SimpleCourier CourierCode="A" UnitRate=" 0" WeightUnitDescription="" InsuranceOffered="-1"/>)"},
        {[](Store& s) { s.AddSimpleCourierZone({u"POST", u"ZA"}); },
         R"(<SimpleCourierZone CourierCode="POST" CountryCode="ZA" StateProvinceCode="" City=""/>)"},
        {[](Store& s) { s.AddSimpleCourierZone({u"P&O", u"Z&A", u"W&C", true, u"C&T"}); },
         R"(<SimpleCourierZone CourierCode="P&amp;O" CountryCode="Z&A" StateProvinceCode="W&C" City="C&T" Deleted="1"/>)"},
        {[](Store& s) { s.AddSimpleCourierRate({u"POST"}); }, R"(<SimpleCourierRate CourierCode="POST"/>)"},
        {[](Store& s) { s.AddSimpleCourierRate({u"P&O", -2.123456, 0, true}); },
         R"(<SimpleCourierRate CourierCode="P&amp;O" WeightBreak="-2.123456" Rate=" 0" Deleted="1"/>)"},
        {[](Store& s) { s.AddLocalCourier({u"Z&A", u"C&1", u"N&1", u"U&1", true}); },
         R"(<LocalCourier CountryCode="Z&A" CourierCode="C&amp;1" CourierName="N&amp;1" TrackingURL="U&amp;1" Deleted="1"/>)"},
        {[](Store& s) { s.AddLocalCourierService({.strCountryCode = u"ZA", .strCourierCode = u"C",
                                                  .strServiceCode = u"S", .strServiceName = notGiven,
                                                  .intInsuranceOffered = 2}); },
         R"(<LocalCourierService CountryCode="ZA" CourierCode="C" ServiceCode="S"/>)"},
        {[](Store& s) { s.AddLocalCourierService({u"Z&A", u"C&1", u"S&1", u"N&1", u"D&1", u"R&1", 0.123456, 0,
                                                  12.345678, 2, 1.5, 3, 1, true, true}); },
         R"(<LocalCourierService CountryCode="Z&A" CourierCode="C&amp;1" ServiceCode="S&amp;1" ServiceName="N&amp;1" DisplayText="D&amp;1" RateCalculationMethod="R&amp;1" InitialRate="0.123456" InitialBreak="0" ExtraRate="12.345678" ExtraBreak="2" InsurancePercentageOfValue="1.5" InsuranceMinimumRate="3" InsuranceOffered="1" Activate="1" Deleted="1"/>)"},
        {[](Store& s) { s.AddInternationalCourier({u"Z&A", u"C&1", u"N&1", u"U&1", true}); },
         R"(<InternationalCourier CountryCode="Z&A" CourierCode="C&amp;1" CourierName="N&amp;1" TrackingURL="U&amp;1" Deleted="1"/>)"},
        {[](Store& s) { s.AddInternationalCourierService({.strCountryCode = u"ZA", .strCourierCode = u"C",
                                                          .strServiceCode = u"S", .dblWeightBreakUnit = 0}); },
         R"(<InternationalCourierService CountryCode="ZA" CourierCode="C" ServiceCode="S" ServiceName=""/>)"},
        {[](Store& s) { s.AddInternationalCourierService({u"Z&A", u"C&1", u"S&1", u"N&1", u"D&1", 0.25, 0, 1.5, 0,
                                                          true, true}); },
         R"(<InternationalCourierService CountryCode="Z&A" CourierCode="C&amp;1" ServiceCode="S&amp;1" ServiceName="N&amp;1" DisplayText="D&amp;1" WeightBreakUnit="0.25" InsurancePercentageOfValue="0" InsuranceMinimumRate="1.5" InsuranceOffered="0" Activate="1" Deleted="1"/>)"},
        {[](Store& s) { s.AddInternationalCourierZone({u"C&1", u"Z&A", u"U&S"}); },
         R"(<InternationalCourierZone CourierCode="C&amp;1" CountryCode="Z&A" DestinationCountry="U&amp;S" DeliveryZone=""/>)"},
        {[](Store& s) { s.AddInternationalCourierZone({u"C", u"ZA", u"US", u"Z&1", true});
                        s.AddInternationalCourierZone({u"C", u"ZA", u"US", notGiven}); },
         R"(<InternationalCourierZone CourierCode="C" CountryCode="ZA" DestinationCountry="US" DeliveryZone="Z&amp;1" Deleted="1"/><InternationalCourierZone CourierCode="C" CountryCode="ZA" DestinationCountry="US"/>)"},
        {[](Store& s) { s.AddInternationalCourierRate({u"C&1", u"Z&A", u"S&1", u"Z&1", 0.5, 1.25, true});
                        s.AddInternationalCourierRate({u"C", u"ZA", u"S", u"Z", 0, 0}); },
         R"(<InternationalCourierRate CourierCode="C&amp;1" CountryCode="Z&A" ServiceCode="S&amp;1" DeliveryZone="Z&amp;1" WeightBreak="0.5" Rate="1.25" Deleted="1"/><InternationalCourierRate CourierCode="C" CountryCode="ZA" ServiceCode="S" DeliveryZone="Z"/>)"},
    });
}

TEST(Couriers, AcceptKeysOfFullLength) {
    testing::expectCaps({
        {[](Store& s, Filler f) { s.AddSimpleCourier({.strCourierCode = f.key(20),
                                                      .strWeightUnitDescription = f.key(20)}); },
         20 + 20, R"(<SimpleCourier CourierCode="~" WeightUnitDescription="~" InsuranceAmount=" 0" InsurancePercentage=" 0" WeightBreakUnit=" 0" InsuranceOffered="0"/>)"},
        {[](Store& s, Filler f) { s.AddLocalCourier({f.key(5), f.key(20)}); },
         5 + 20, R"(<LocalCourier CountryCode="~" CourierCode="~"/>)"},
        {[](Store& s, Filler f) { s.AddInternationalCourierZone({f.key(20), f.key(5), f.key(20), notGiven}); },
         20 + 5 + 20, R"(<InternationalCourierZone CourierCode="~" CountryCode="~" DestinationCountry="~"/>)"},
        {[](Store& s, Filler f) { s.AddInternationalCourierRate({f.key(20), f.key(5), f.key(20), f.key(20)}); },
         20 + 5 + 20 + 20, R"(<InternationalCourierRate CourierCode="~" CountryCode="~" ServiceCode="~" DeliveryZone="~"/>)"},
    });
}

TEST(Couriers, RefuseBadKeysInTheirOwnWords) {
    const char* courier = "The CourierCode may not be less than 1 or more than 20 characters in length.";
    const char* country = "The CountryCode may not be less than 1 or more than 5 characters in length.";
    const char* home = "The CountryCode may not be less than 1 or more than 20 characters in length.";
    const char* service = "The ServiceCode may not be less than 1 or more than 20 characters in length.";
    const char* destination = "The DestinationCountryCode may not be less than 1 or more than 20 characters in length.";
    const char* zone = "The DeliveryZone may not be less than 1 or more than 20 characters in length.";
    const char* unit = "The WeightUnitDescription may not be more than 20 characters in length.";
    const Text x6 = tildes(6);
    const Text x21 = tildes(21);
    testing::expectBadKeys({
        {[=](Store& s) { s.AddSimpleCourier({x21}); }, "AddSimpleCourier", courier},
        {[=](Store& s) { s.AddSimpleCourier({u"POST"}); }, "AddSimpleCourier", unit},
        {[=](Store& s) { s.AddSimpleCourier({.strCourierCode = u"POST", .strWeightUnitDescription = x21}); },
         "AddSimpleCourier", unit},
        {[=](Store& s) { s.AddSimpleCourierZone({u"", x6}); }, "AddSimpleCourierZone", courier},
        {[=](Store& s) { s.AddSimpleCourierZone({u"C", x6}); }, "AddSimpleCourierZone", country},
        {[=](Store& s) { s.AddSimpleCourierRate({x21}); }, "AddSimpleCourierRate", courier},
        {[=](Store& s) { s.AddLocalCourier({x6, x21}); }, "AddLocalCourier", home},
        {[=](Store& s) { s.AddLocalCourier({u"ZA", x21}); }, "AddLocalCourier", courier},
        {[=](Store& s) { s.AddLocalCourierService({x6, x21, x21}); }, "AddLocalCourierService", home},
        {[=](Store& s) { s.AddLocalCourierService({u"ZA", u"C", x21}); }, "AddLocalCourierService", service},
        {[=](Store& s) { s.AddInternationalCourier({u"", x21}); }, "AddInternationalCourier", home},
        {[=](Store& s) { s.AddInternationalCourierService({x6, x21, x21}); }, "AddInternationalCourierService", home},
        {[=](Store& s) { s.AddInternationalCourierService({u"ZA", u"C", x21}); },
         "AddInternationalCourierService", service},
        {[=](Store& s) { s.AddInternationalCourierZone({u"C", x6, x21}); }, "AddInternationalCourierZone", country},
        {[=](Store& s) { s.AddInternationalCourierZone({u"C", u"ZA", x21}); },
         "AddInternationalCourierZone", destination},
        {[=](Store& s) { s.AddInternationalCourierRate({x21, x6, x21, x21}); }, "AddInternationalCourierRate", courier},
        {[=](Store& s) { s.AddInternationalCourierRate({u"C", x6, x21, x21}); },
         "AddInternationalCourierRate", country},
        {[=](Store& s) { s.AddInternationalCourierRate({u"C", u"ZA", x21, x21}); },
         "AddInternationalCourierRate", service},
        {[=](Store& s) { s.AddInternationalCourierRate({u"C", u"ZA", u"S", x21}); },
         "AddInternationalCourierRate", zone},
    });
}

// clang-format on

}  // namespace
}  // namespace quill1xml
