// The structure products are sorted into: types, groups, user-defined fields, categories, dimensions.

#include "records/record.hpp"

namespace quill1xml::records {
namespace {

constexpr std::u16string_view attributeDisplays[] = {u"Bullet", u"Numbered"};
constexpr std::u16string_view categoryDisplays[] = {u"ImageRich", u"TextOnly", u"ImageRichDetailed", u"ProductBoxImage",
                                                    u"ImageRichRule"};

/// Oddity: -1 and 0 pass, whatever the message says.
constexpr RowDeclaration productCategoryId = key("ProductCategoryID", "lngProductCategoryID", atLeast(-1), integerText,
                                                 u"The Product Category ID must be a positive integer.");

}  // namespace

// clang-format off

const Record AddProductType = record<arguments::AddProductType>(u"ProductType", [] { return rows(
    key      ("ProductTypeID",         "strProductTypeID",        length(1, 10),             escaped,
              u"The Product Type ID may not be less than 1 or more than 10 characters in length."),
    attribute("TypeDescription",       "strTypeDescription",      notDefault && atMost(100), escaped),
    attribute("SingularDescription",   "strSingularDescription",  notDefault && atMost(100), escaped),
    attribute("Rank",                  "lngRank",                 atLeast(0),                integerText),
    attribute("AllowRatings",          "intBlnAllowRatings",      noOrYes,                   integerText),
    attribute("AttributesHeading",     "strAttributesHeading",    notDefault && atMost(50),  escaped),
    numbered<1, 4>(
        attribute("Attribute#Caption", "strAttribute#Caption",    notDefault && atMost(50),  escaped)),
    attribute("LinkedProductHeading",  "strLinkedProductHeading", notDefault && atMost(100), escaped),
    attribute("LinkedProductMessage",  "strLinkedProductMessage", notDefault && atMost(100), escaped),
    deleted,
    attribute("AttributeDisplay",      "strAttributeDisplay",     oneOf(attributeDisplays),  escaped)); });

const Record AddProductGroup = record<arguments::AddProductGroup>(u"ProductGroup", [] { return rows(
    key      ("ProductGroupID", "strProductGroupID", length(1, 20),             escaped,
              u"The Product Group ID may not be less than 1 or more than 20 characters in length."),
    attribute("Description",    "strDescription",    notDefault && atMost(255), escaped),
    deleted,
    attribute("TavSMtrxCol",    "TavSMtrxCol",       always,                    integerText)); });

// Oddity: the source names another method.
const Record AddUDF = record<arguments::AddUDF>(u"UserDefinedField", [] { return rows(
    key      ("FieldName",    "strFieldName",    length(1, 50),             escaped,
              u"The Field Name may not be less than 1 or more than 50 characters in length."),
    attribute("Description",  "strDescription",  notDefault && atMost(255), escaped),
    attribute("DefaultValue", "strDefaultValue", notDefault && atMost(255), escaped),
    attribute("FieldType",    "intFieldType",    always,                    integerText),
    attribute("FieldSize",    "intFieldSize",    always,                    integerText),
    attribute("ForceValue",   "blnForceValue",   always,                    flag),
    deleted); },
    {.source = u"Quill1XML.Store.AddProductGroup()"});

// Oddity: a zero commencement date is left out, a zero expiry date is written.
const Record AddProductCategory = record<arguments::AddProductCategory>(u"ProductCategory", [] { return rows(
    productCategoryId,
    attribute("Description",                 "strDescription",                 notDefault && atMost(255), escaped),
    attribute("ParentID",                    "lngParentID",                    atLeast(-1),               integerText),
    attribute("CommenceDate",                "dtmCommence",                    dateGiven,                 dateText),
    attribute("ExpiryDate",                  "dtmExpiry",                      always,                    dateText),
    attribute("DisplayType",                 "strDisplayType",                 oneOf(categoryDisplays),   asGiven),
    attribute("Message",                     "strMessage",                     notDefault,                escaped),
    attribute("PageSize",                    "intPageSize",                    above(0),                  integerText),
    attribute("Rank",                        "lngRank",                        above(-1),                 integerText),
    attribute("ShowMessageAboveDescription", "intblnShowMessageAboveCategory", noOrYes,                   integerText),
    deleted,
    attribute("SubCategoryColumns",          "intSubCategoryColumns",          otherThan(0),              integerText),
    otherwise(fixed("SubCategoryColumns",                                      always,                    u"3")),
    attribute("DisplaySKUCode",              "intblnDisplaySKUCode",           atLeast(0),                integerText),
    attribute("VisibleToAll",                "intblnVisibleToAll",             atLeast(0),                integerText),
    attribute("PageTitle",                   "strPageTitle",                   notEmpty,                  escaped)); });

const Record AddProductCategoryLink = record<arguments::AddProductCategoryLink>(
    u"ProductCategoryLink", [] { return rows(
    key      ("SKU",       "strSKU",       length(1, 255),           escaped,
              u"The SKU may not be less than 1 or more than 255 characters in length."),
    productCategoryId,
    attribute("FlashType", "strFlashType", notDefault && atMost(20), escaped),
    attribute("Ranking",   "lngRanking",   atLeast(-1),              integerText),
    deleted); });

// Oddity: the message names another value than the description, and a description that is not given is written as
// "StringDefault".
const Record AddDimensionTypes = record<arguments::AddDimensionTypes>(u"DimensionTypes", [] { return rows(
    attribute("DimensionType",             "intDimensionType",         always,                      integerText),
    key      ("Description",               "strDescription",           length(1, 50),               escaped,
              u"The DimensionType may not be less than 1 or more than 50 characters in length."),
    numbered<1, 3>(
        attribute("DimensionDescription#", "strDimensionDescription#", when("blnDeleted", isFalse), escaped)),
    deleted); });

// Oddity: the message names 4 characters where 50 are allowed.
const Record AddDimensions = record<arguments::AddDimensions>(u"Dimensions", [] { return rows(
    attribute("DimensionID",          "intDimensionID",          always,         integerText),
    key      ("DimensionDescription", "strDimensionDescription", length(1, 50),  escaped,
              u"The DimensionDescription may not be less than 1 or more than 4 characters in length."),
    attribute("DimensionType",        "intDimensionType",        always,         integerText),
    key      ("ProductCode",          "strProductCode",          length(1, 255), escaped,
              u"The ProductCode may not be less than 1 or more than 255 characters in length."),
    deleted); });

const Record AddDimensionValues = record<arguments::AddDimensionValues>(u"DimensionValues", [] { return rows(
    attribute("DimensionNumber",  "intDimensionNumber", always,        integerText),
    attribute("DimensionID",      "intDimensionID",     always,        integerText),
    attribute("DimensionType",    "intDimensionType",   always,        integerText),
    attribute("DimensionLevel",   "intDimensionLevel",  always,        integerText),
    key      ("DimensionValue",   "strDimensionValue",  length(1, 50), escaped,
              u"The DimensionValue may not be less than 1 or more than 50 characters in length."),
    deleted,
    attribute("DimensionRanking", "dblRanking",         otherThan(0),  numberText)); });

// Oddity: the message names another value than the product code.
const Record AddDimensionProducts = record<arguments::AddDimensionProducts>(u"DimensionProducts", [] { return rows(
    attribute("DimensionID",          "intDimensionID",        always,         integerText),
    attribute("DimensionType",        "intDimensionType",      always,         integerText),
    attribute("DimensionMappingID",   "intDimensionMappingID", always,         integerText),
    numbered<1, 3>(
        attribute("DimensionNumber#", "intDimensionNumber#",   always,         integerText)),
    key      ("ProductCode",          "strProductCode",        length(1, 255), escaped,
              u"The DimensionValue may not be less than 1 or more than 255 characters in length."),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
