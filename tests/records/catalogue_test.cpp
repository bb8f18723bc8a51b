#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectWritten;
using testing::Filler;
using testing::tildes;

// clang-format off

TEST(Catalogue, WritesExactlyTheseElements) {
    const Date start = Date::of(2007, 3, 5, 14, 7, 9);
    const Date end = Date::of(2008, 12, 31);
    expectWritten({
        {[](Store& s) { s.AddProductType({.strProductTypeID = u"T", .lngRank = -1, .intBlnAllowRatings = 2,
                                          .strAttributeDisplay = u"bullet"}); },
         R"(<ProductType ProductTypeID="T"/>)"},
        {[](Store& s) { s.AddProductType({u"T&1", u"D&1", u"S&1", 0, 1, u"H&1", u"C&1", u"C&2", u"C&3", u"C&4",
                                          u"L&1", u"M&1", true, u"Numbered"}); },
         R"(<ProductType ProductTypeID="T&amp;1" TypeDescription="D&amp;1" SingularDescription="S&amp;1" Rank="0" AllowRatings="1" AttributesHeading="H&amp;1" Attribute1Caption="C&amp;1" Attribute2Caption="C&amp;2" Attribute3Caption="C&amp;3" Attribute4Caption="C&amp;4" LinkedProductHeading="L&amp;1" LinkedProductMessage="M&amp;1" Deleted="1" AttributeDisplay="Numbered"/>)"},
        {[](Store& s) { s.AddProductType({.strProductTypeID = u"T", .strAttributeDisplay = u"Bullet"}); },
         R"(<ProductType ProductTypeID="T" AttributeDisplay="Bullet"/>)"},
        {[](Store& s) { s.AddProductGroup({u"G"}); }, R"(<ProductGroup ProductGroupID="G" TavSMtrxCol="0"/>)"},
        {[](Store& s) { s.AddProductGroup({u"G&1", u"D&1", true, -7}); },
         R"(<ProductGroup ProductGroupID="G&amp;1" Description="D&amp;1" Deleted="1" TavSMtrxCol="-7"/>)"},
        {[](Store& s) { s.AddUDF({u"F"}); },
         R"(<UserDefinedField FieldName="F" FieldType="0" FieldSize="0" ForceValue="0"/>)"},
        {[](Store& s) { s.AddUDF({u"F&1", u"D&1", 2, 30, true, u"V&1", true}); },
         R"(<UserDefinedField FieldName="F&amp;1" Description="D&amp;1" DefaultValue="V&amp;1" FieldType="2" FieldSize="30" ForceValue="1" Deleted="1"/>)"},
        {[](Store& s) { s.AddProductCategory({0}); },
         R"(<ProductCategory ProductCategoryID="0" ExpiryDate="1899-12-30T00:00:00" SubCategoryColumns="3"/>)"},
        {[](Store& s) { s.AddProductCategory({.lngProductCategoryID = -1, .lngParentID = -1,
                                              .strDisplayType = u"imageRich", .intPageSize = 0, .lngRank = 0,
                                              .intblnShowMessageAboveCategory = 2, .intSubCategoryColumns = 0,
                                              .intblnDisplaySKUCode = 0, .intblnVisibleToAll = 2}); },
         R"(<ProductCategory ProductCategoryID="-1" ParentID="-1" ExpiryDate="1899-12-30T00:00:00" Rank="0" SubCategoryColumns="3" DisplaySKUCode="0" VisibleToAll="2"/>)"},
        {[&](Store& s) { s.AddProductCategory({9, u"D&1", 4, start, end, u"ImageRichRule", u"M&1", 20, 1, true, 0, 4,
                                               1, 0, u"P&1"}); },
         R"(<ProductCategory ProductCategoryID="9" Description="D&amp;1" ParentID="4" CommenceDate="2007-03-05T14:07:09" ExpiryDate="2008-12-31T00:00:00" DisplayType="ImageRichRule" Message="M&amp;1" PageSize="20" Rank="1" ShowMessageAboveDescription="0" Deleted="1" SubCategoryColumns="4" DisplaySKUCode="1" VisibleToAll="0" PageTitle="P&amp;1"/>)"},
        {[](Store& s) { s.AddProductCategoryLink({u"A1", 5}); },
         R"(<ProductCategoryLink SKU="A1" ProductCategoryID="5" Ranking="-1"/>)"},
        {[](Store& s) { s.AddProductCategoryLink({u"A&1", -1, u"F&1", 3, true});
                        s.AddProductCategoryLink({.strSKU = u"A", .lngRanking = -2}); },
         R"(<ProductCategoryLink SKU="A&amp;1" ProductCategoryID="-1" FlashType="F&amp;1" Ranking="3" Deleted="1"/><ProductCategoryLink SKU="A" ProductCategoryID="0"/>)"},
        {[](Store& s) { s.AddDimensionTypes({1, u"Size", u"Small"}); },
         R"(<DimensionTypes DimensionType="1" Description="Size" DimensionDescription1="Small" DimensionDescription2="StringDefault" DimensionDescription3="StringDefault"/>)"},
        {[](Store& s) { s.AddDimensionTypes({-1, u"S&1", u"", u"D&2", u"D&3"});
                        s.AddDimensionTypes({1, u"Size", u"Small", u"Medium", u"Large", true}); },
         R"(<DimensionTypes DimensionType="-1" Description="S&amp;1" DimensionDescription1="" DimensionDescription2="D&amp;2" DimensionDescription3="D&amp;3"/><DimensionTypes DimensionType="1" Description="Size" Deleted="1"/>)"},
        {[](Store& s) { s.AddDimensions({7, u"D&1", 2, u"P&1", true}); },
         R"(<Dimensions DimensionID="7" DimensionDescription="D&amp;1" DimensionType="2" ProductCode="P&amp;1" Deleted="1"/>)"},
        {[](Store& s) { s.AddDimensionValues({1, 2, 3, 4, u"V&1", true, 0.5});
                        s.AddDimensionValues({1, 2, 3, 4, u"V", false, -1});
                        s.AddDimensionValues({1, 2, 3, 4, u"V"}); },
         R"(<DimensionValues DimensionNumber="1" DimensionID="2" DimensionType="3" DimensionLevel="4" DimensionValue="V&amp;1" Deleted="1" DimensionRanking="0.5"/><DimensionValues DimensionNumber="1" DimensionID="2" DimensionType="3" DimensionLevel="4" DimensionValue="V" DimensionRanking="-1"/><DimensionValues DimensionNumber="1" DimensionID="2" DimensionType="3" DimensionLevel="4" DimensionValue="V"/>)"},
        {[](Store& s) { s.AddDimensionProducts({1, 2, 3, u"P", 4}); },
         R"(<DimensionProducts DimensionID="1" DimensionType="2" DimensionMappingID="3" DimensionNumber1="4" DimensionNumber2="-1" DimensionNumber3="-1" ProductCode="P"/>)"},
        {[](Store& s) { s.AddDimensionProducts({1, 2, 3, u"P&1", 4, 5, 6, true}); },
         R"(<DimensionProducts DimensionID="1" DimensionType="2" DimensionMappingID="3" DimensionNumber1="4" DimensionNumber2="5" DimensionNumber3="6" ProductCode="P&amp;1" Deleted="1"/>)"},
    });
    for (const Text display : {u"ImageRich", u"TextOnly", u"ImageRichDetailed", u"ProductBoxImage"}) {
        const auto xml = testing::writtenBy([&](Store& s) { s.AddProductCategory({.strDisplayType = display}); });
        EXPECT_NE(xml.find(" DisplayType=\"" + testing::utf8(display) + "\""), std::string::npos) << xml;
    }
}

TEST(Catalogue, LeavesOutTextsBeyondTheirCaps) {
    testing::expectCaps({
        {[](Store& s, Filler f) { s.AddProductType({f.key(10), f(100), f(100), -1, -1, f(50), f(50), f(50), f(50),
                                                    f(50), f(100), f(100)}); },
         10 + 4 * 100 + 5 * 50, R"(<ProductType ProductTypeID="~"/>)"},
        {[](Store& s, Filler f) { s.AddProductGroup({f.key(20), f(255)}); },
         20 + 255, R"(<ProductGroup ProductGroupID="~" TavSMtrxCol="0"/>)"},
        {[](Store& s, Filler f) { s.AddUDF({f.key(50), f(255), 0, 0, false, f(255)}); },
         50 + 255 + 255, R"(<UserDefinedField FieldName="~" FieldType="0" FieldSize="0" ForceValue="0"/>)"},
        {[](Store& s, Filler f) { s.AddProductCategory({.lngProductCategoryID = 1, .strDescription = f(255),
                                                        .strMessage = f.key(1000)}); },
         255 + 1000, R"(<ProductCategory ProductCategoryID="1" ExpiryDate="1899-12-30T00:00:00" Message="~" SubCategoryColumns="3"/>)"},
        {[](Store& s, Filler f) { s.AddProductCategoryLink({f.key(255), 1, f(20)}); },
         255 + 20, R"(<ProductCategoryLink SKU="~" ProductCategoryID="1" Ranking="-1"/>)"},
        {[](Store& s, Filler f) { s.AddDimensionTypes({1, f.key(50), u""});
                                  s.AddDimensions({1, f.key(50), 2, f.key(255)}); },
         50 + 50 + 255, R"(<DimensionTypes DimensionType="1" Description="~" DimensionDescription1="" DimensionDescription2="StringDefault" DimensionDescription3="StringDefault"/><Dimensions DimensionID="1" DimensionDescription="~" DimensionType="2" ProductCode="~"/>)"},
        {[](Store& s, Filler f) { s.AddDimensionProducts({1, 2, 3, f.key(255), 4});
                                  s.AddDimensionValues({1, 2, 3, 4, f.key(50)}); },
         255 + 50, R"(<DimensionProducts DimensionID="1" DimensionType="2" DimensionMappingID="3" DimensionNumber1="4" DimensionNumber2="-1" DimensionNumber3="-1" ProductCode="~"/><DimensionValues DimensionNumber="1" DimensionID="2" DimensionType="3" DimensionLevel="4" DimensionValue="~"/>)"},
    });
}

TEST(Catalogue, RefusesBadKeysInItsOwnWords) {
    const char* category = "The Product Category ID must be a positive integer.";
    testing::expectBadKeys({
        {[](Store& s) { s.AddProductType({tildes(11)}); }, "AddProductType",
         "The Product Type ID may not be less than 1 or more than 10 characters in length."},
        {[](Store& s) { s.AddProductGroup({tildes(21)}); }, "AddProductGroup",
         "The Product Group ID may not be less than 1 or more than 20 characters in length."},
        {[](Store& s) { s.AddUDF({tildes(51)}); }, "AddProductGroup",
         "The Field Name may not be less than 1 or more than 50 characters in length."},
        {[](Store& s) { s.AddProductCategory({-2}); }, "AddProductCategory", category},
        {[](Store& s) { s.AddProductCategoryLink({tildes(256), -2}); }, "AddProductCategoryLink",
         "The SKU may not be less than 1 or more than 255 characters in length."},
        {[](Store& s) { s.AddProductCategoryLink({u"A", -2}); }, "AddProductCategoryLink", category},
        {[](Store& s) { s.AddDimensionTypes({1, tildes(51), u"D"}); }, "AddDimensionTypes",
         "The DimensionType may not be less than 1 or more than 50 characters in length."},
        {[](Store& s) { s.AddDimensions({1, tildes(51), 2, u""}); }, "AddDimensions",
         "The DimensionDescription may not be less than 1 or more than 4 characters in length."},
        {[](Store& s) { s.AddDimensions({1, u"D", 2, tildes(256)}); }, "AddDimensions",
         "The ProductCode may not be less than 1 or more than 255 characters in length."},
        {[](Store& s) { s.AddDimensionValues({1, 2, 3, 4, tildes(51)}); }, "AddDimensionValues",
         "The DimensionValue may not be less than 1 or more than 50 characters in length."},
        {[](Store& s) { s.AddDimensionProducts({1, 2, 3, tildes(256), 4}); }, "AddDimensionProducts",
         "The DimensionValue may not be less than 1 or more than 255 characters in length."},
    });
}

// clang-format on

}  // namespace
}  // namespace quill1xml
