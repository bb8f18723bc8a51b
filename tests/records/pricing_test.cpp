#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectWritten;
using testing::Filler;
using testing::tildes;

// clang-format off

const Date start = Date::of(2007, 3, 5, 14, 7, 9);

TEST(Pricing, WritesExactlyTheseElements) {
    expectWritten({
        {[](Store& s) { s.AddDebtorPrice({u"D", u"A"}); },
         R"(<DebtorPrice DebtorID="D" SKU="A" StartDate="1899-12-30T00:00:00" EndDate="1899-12-30T00:00:00"/>)"},
        {[](Store& s) { s.AddDebtorPrice({u"D&1", u"A&1", 1.00006, 2, 3, 4, 5, 6, 7, 8, 9, 10.00006, 11, 12, 13, 14,
                                          15, 16, 17, 18, 19, 20, true, 0, start, start, 1, u"P&1", u"P2", u"P3",
                                          u"P4", u"P5", u"P6", u"P7", u"P8", u"P9", u"P10"}); },
         R"(<DebtorPrice DebtorID="D&amp;1" SKU="A&amp;1" Price1=" 1.0001" Price2=" 2" Price3=" 3" Price4=" 4" Price5=" 5" Price6=" 6" Price7=" 7" Price8=" 8" Price9=" 9" Price10=" 10.0001" Quantity1="11" Quantity2="12" Quantity3="13" Quantity4="14" Quantity5="15" Quantity6="16" Quantity7="17" Quantity8="18" Quantity9="19" Quantity10="20" Deleted="1" UseLowestSellingPrice="0" StartDate="2007-03-05T14:07:09" EndDate="2007-03-05T14:07:09" EnableDateRange="1" DiscountType1="P&1" DiscountType2="P2" DiscountType3="P3" DiscountType4="P4" DiscountType5="P5" DiscountType6="P6" DiscountType7="P7" DiscountType8="P8" DiscountType9="P9" DiscountType10="P10"/>)"},
        {[](Store& s) { s.AddDebtorPrice({.strDebtorID = u"D", .strSKU = u"A", .dblPrice1 = -0.5, .dblPrice2 = 0,
                                          .lngQuantity1 = -2, .lngQuantity2 = 0, .intBlnUseLowestSellingPrice = -2,
                                          .dtmEndDate = start, .intblnEnableDateRange = 2}); },
         R"(<DebtorPrice DebtorID="D" SKU="A" Price2=" 0" Quantity2="0" UseLowestSellingPrice="-2" StartDate="1899-12-30T00:00:00" EndDate="2007-03-05T14:07:09" EnableDateRange="2"/>)"},
        {[](Store& s) { s.AddDiscountMatrix({u"C", u"G"}); },
         R"(<DiscountMatrix DebtorCategoryID="C" ProductGroupID="G" MaxDiscount=" 0"/>)"},
        {[](Store& s) { s.AddDiscountMatrix({u"C&1", u"G&1", 1.123456, 0, 300, 4, 0, 6, true, u"P&1", u"P2", u"P3",
                                             7.123456});
                        s.AddDiscountMatrix({.strDebtorCategoryID = u"C", .strProductGroupID = u"G",
                                             .dblMaxDiscount = -1}); },
         R"(<DiscountMatrix DebtorCategoryID="C&amp;1" ProductGroupID="G&amp;1" DiscountPercent1=" 1.123456" DiscountPercent2=" 0" DiscountPercent3=" 300" ProductQuantity1="4" ProductQuantity2="0" ProductQuantity3="6" DiscountType1="P&1" DiscountType2="P2" DiscountType3="P3" MaxDiscount=" 7.123456" Deleted="1"/><DiscountMatrix DebtorCategoryID="C" ProductGroupID="G"/>)"},
        {[](Store& s) { s.AddTavDiscountMatrix({7, 1, 2, {125000}}); },
         R"(<TavDiscountMatrix idDrDiscMx="7" XPos="1" YPos="2" Percentage=" 12.5"/>)"},
        {[](Store& s) { s.AddTavDiscountMatrix({-7, 0, -2, {-5000}, true}); },
         R"(<TavDiscountMatrix idDrDiscMx="-7" XPos="0" YPos="-2" Percentage="-.5" Deleted="1"/>)"},
        {[](Store& s) { s.AddDebtorDiscountMatrix({u"D", u"G", 100.5});
                        s.AddDebtorDiscountMatrix({u"D", u"G", -0.5}); },
         R"(<DebtorDiscountMatrix DebtorID="D" ProductGroupID="G"/><DebtorDiscountMatrix DebtorID="D" ProductGroupID="G"/>)"},
        {[](Store& s) { s.AddDebtorDiscountMatrix({u"D&1", u"G&1", 100, 1.123456, 0, 300, 4, 0, 6, true, u"P&1",
                                                   u"P2", u"P3"}); },
         R"(<DebtorDiscountMatrix DebtorID="D&amp;1" ProductGroupID="G&amp;1" BasicDiscountPercent=" 100" DiscountPercent1=" 1.123456" DiscountPercent2=" 0" DiscountPercent3=" 300" ProductQuantity1="4" ProductQuantity2="0" ProductQuantity3="6" Deleted="1" DiscountType1="P&1" DiscountType2="P2" DiscountType3="P3"/>)"},
        {[](Store& s) { s.AddProductDiscountMatrix({u"C", u"A"}); },
         R"(<ProductDiscountMatrix DebtorCategoryID="C" SKU="A"/>)"},
        {[](Store& s) { s.AddProductDiscountMatrix({u"C&1", u"A&1", 1.123456, 0, 300, 4, 0, 6, true, u"P&1", u"P2",
                                                    u"P3"}); },
         R"(<ProductDiscountMatrix DebtorCategoryID="C&amp;1" SKU="A&amp;1" DiscountPercent1=" 1.1235" DiscountPercent2=" 0" DiscountPercent3=" 300" ProductQuantity1="4" ProductQuantity2="0" ProductQuantity3="6" Deleted="1" DiscountType1="P&1" DiscountType2="P2" DiscountType3="P3"/>)"},
        {[](Store& s) { s.AddProductDiscountPrice({}); }, R"(<ProductDiscountPrice SKU=""/>)"},
        {[](Store& s) { s.AddProductDiscountPrice({u"A&1", 1.00006, 2, 3, 4, 5, 6, 7, 8, 9, 0, 11, 12, 13, 14, 15, 16,
                                                   17, 18, 19, 0, true}); },
         R"(<ProductDiscountPrice SKU="A&amp;1" Price1=" 1.0001" Price2=" 2" Price3=" 3" Price4=" 4" Price5=" 5" Price6=" 6" Price7=" 7" Price8=" 8" Price9=" 9" Price10=" 0" Quantity1="11" Quantity2="12" Quantity3="13" Quantity4="14" Quantity5="15" Quantity6="16" Quantity7="17" Quantity8="18" Quantity9="19" Quantity10="0" Deleted="1"/>)"},
    });
}

TEST(Pricing, AcceptsKeysOfFullLength) {
    testing::expectCaps({
        {[](Store& s, Filler f) { s.AddDebtorPrice({f.key(50), f.key(255)}); },
         50 + 255, R"(<DebtorPrice DebtorID="~" SKU="~" StartDate="1899-12-30T00:00:00" EndDate="1899-12-30T00:00:00"/>)"},
        {[](Store& s, Filler f) { s.AddDiscountMatrix({f.key(10), f.key(20)}); },
         10 + 20, R"(<DiscountMatrix DebtorCategoryID="~" ProductGroupID="~" MaxDiscount=" 0"/>)"},
    });
}

TEST(Pricing, RefusesBadKeysInItsOwnWords) {
    const char* debtor = "The DebtorID may not be less than 1 or more than 50 characters in length.";
    const char* category = "The DebtorCategoryID may not be less than 1 or more than 10 characters in length.";
    const char* group = "The ProductGroupID may not be less than 1 or more than 20 characters in length.";
    const char* sku = "The SKU may not be less than 1 or more than 255 characters in length.";
    testing::expectBadKeys({
        {[](Store& s) { s.AddDebtorPrice({tildes(51)}); }, "AddDebtorPrice", debtor},
        {[](Store& s) { s.AddDebtorPrice({u"D", tildes(256)}); }, "AddDebtorPrice", sku},
        {[](Store& s) { s.AddDebtorPrice({.strDebtorID = u"D", .strSKU = u"A", .dtmStartDate = start,
                                          .dtmEndDate = {start.days - 1}}); },
         "AddProductPromotion",
         "The Customer End Date (2007-03-04T14:07:09) may not be before the Start Date (2007-03-05T14:07:09)."},
        {[](Store& s) { s.AddDiscountMatrix({tildes(11)}); }, "AddDiscountMatrix", category},
        {[](Store& s) { s.AddDiscountMatrix({u"C", tildes(21)}); }, "AddDiscountMatrix", group},
        {[](Store& s) { s.AddDebtorDiscountMatrix({tildes(51)}); }, "AddDebtorDiscountMatrix", debtor},
        {[](Store& s) { s.AddDebtorDiscountMatrix({u"D", u""}); }, "AddDebtorDiscountMatrix", group},
        {[](Store& s) { s.AddProductDiscountMatrix({u""}); }, "AddProductDiscountMatrix", category},
        {[](Store& s) { s.AddProductDiscountMatrix({u"C", u""}); }, "AddProductDiscountMatrix", sku},
    });
}

// clang-format on

}  // namespace
}  // namespace quill1xml
