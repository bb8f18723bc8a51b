// Products: built over several calls and written by LockProduct, and the free-standing product records.

#include "records/record.hpp"
#include "store/packets.hpp"
#include "store/perform.hpp"

namespace quill1xml::records {
namespace {

constexpr std::u16string_view linkedGroupTypes[] = {u"Parent", u"None", u"Child"};

constexpr std::u16string_view badSku = u"The SKU may not be less than 1 or more than 255 characters in length.";

/// An image file's name.
constexpr Condition imageFile = notDefault && atMost(150) && imageName;

void refuseOpenProduct(const Call& call, const Record& record) {
    if (call.store.openProduct.empty()) return;
    throw Error(applicationError, record.source(),
                u"A new product may not be added if an existing one is still unlocked.");
}

/// The start tag stays in its buffer, which becomes the open product.
void openProduct(store::State& store, const Record&, std::u16string_view) { store.openProduct.swap(store.element); }

void finishStartTag(store::State& store, const Record&, std::u16string_view rest) { store.openProduct.append(rest); }

void addAttribute(store::State& store, const Record&, std::u16string_view element) {
    store.productAttributes.append(u"\r\n").append(element);
}

void addPromotion(store::State& store, const Record&, std::u16string_view element) {
    store.productPromotions.append(u"\r\n").append(element);
}

/// Oddity: images are not counted into packets, all of them go to one file.
void appendToImagePacket(store::State& store, const Record& record, std::u16string_view element) {
    store::append(store, record.packet(store, 1), element);
}

}  // namespace

// clang-format off

const Record AddProduct = record<arguments::AddProduct>(u"Product", [] { return rows(
    key      ("SKU",                   "strSKU",                   length(1, 255),             escaped, badSku),
    attribute("ProductTypeID",         "strProductTypeID",         length(1, 10),              escaped),
    attribute("Description",           "strDescription",           notDefault && atMost(255),  trimmedEscaped),
    attribute("Ranking",               "lngRanking",               atLeast(0),                 integerText),
    attribute("ThumbNail",             "strThumbNail",             imageFile,                  escaped),
    attribute("ThumbNailFile",         "strThumbNailFile",         notDefault,                 fileContent),
    attribute("ThumbNailURL",          "strThumbNailURL",          notDefault,                 escaped),
    attribute("LargeImage",            "strLargeImage",            imageFile,                  escaped),
    attribute("LargeImageFile",        "strLargeImageFile",        notDefault,                 fileContent),
    attribute("LargeImageURL",         "strLargeImageURL",         notDefault,                 escaped),
    attribute("ShowProduct",           "intBlnShowProduct",        noOrYes,                    integerText),
    attribute("ShippingPeriod",        "strShippingPeriod",        notDefault && atMost(30),   escaped),
    attribute("FullDescription",       "strFullDescription",       notDefault,                 escaped),
    attribute("ProductGroupID",        "strProductGroupID",        notDefault && length(1, 20), escaped),
    attribute("TaxCode",               "strTaxCode",               length(1, 10),              escaped),
    attribute("Weight",                "dblWeight",                atLeast(0),                 currencyStrText),
    attribute("Volume",                "dblVolume",                atLeast(0),                 currencyStrText),
    attribute("DateCreated",           "dtmCreated",               dateGiven,                  dateText),
    deleted,
    attribute("DeliveryRequired",      "intBlnDeliveryRequired",   noOrYes,                    integerText),
    attribute("QuantityOnHand",        "strLngQuantityOnHand",     notDefault,                 integerFromText),
    attribute("AverageCost",           "dblAverageCost",           atLeast(0),                 currencyStrText),
    attribute("LastCost",              "dblLastCost",              atLeast(0),                 currencyStrText),
    attribute("DateOfData",            "dtmData",                  dateGiven,                  dateText),
    attribute("LinkedGroupNumber",     "lngLinkedGroupNumber",     atLeast(0),                 integerText),
    attribute("LinkedGroupType",       "strLinkedGroupType",       oneOf(linkedGroupTypes),    asGiven),
    attribute("AllowCustomerDiscount", "blnAllowCustomerDiscount", always,                     flag),
    // Oddity: unlike other amounts all twenty prices are always there, empty where a level has none.
    numbered<1, 20>(
        attribute("Price#",            "dblPrice#",                atLeast(0),                 currencyStrText),
        otherwise(fixed("Price#",      always,                     u""))),
    numbered<1, 4>(
        attribute("Attribute#Description", "strAttribute#Description", notDefault && atMost(50), escaped)),
    numbered<1, 3>(
        attribute("ChargeTax#",        "intblnChargeTax#",         noOrYes,                    integerText)),
    attribute("StoreQuantityOnHand",   "strdblStoreQuantityOnHand", notDefault,                strFromText),
    attribute("UnitOfMeasure",         "strUnitOfMeasure",         notDefault,                 escaped),
    attribute("ShowUnitOfMeasure",     "intShowUnitOfMeasure",     always,                     integerText),
    attribute("PurchaseOrderDate",     "dtePurchaseOrderDate",     always,                     dateText),
    attribute("BarCode",               "strBarCode",               notEmpty,                   escaped)); },
    {.end = u"", .prologue = refuseOpenProduct, .delivery = openProduct});

const Record AddProductAdditional = record<arguments::AddProductAdditional>(u"Product", [] { return rows(
    attribute("QtyOnPO",        "dblQtyOnPO",    otherThan(0),  strText),
    numbered<1, 20>(
        attribute("PriceIncl#", "dblPriceIncl#", otherThan(-1), strText)),
    attribute("TavSMtrxCol",    "TavSMtrxCol",   always,        integerText)); },
    {.end = u">", .continuesStartTag = true, .delivery = finishStartTag});

// Oddity: both blanks around the attributes.
const Record AddProductPOSRebate = record<arguments::AddProductPOSRebate>(u"ProductPOSRebate", [] { return rows(
    key      ("SKU",   "strSKU",   length(1, 255), escaped, badSku),
    attribute("AB",    "blnAB",    always,         flag),
    attribute("BC",    "blnBC",    always,         flag),
    attribute("MB",    "blnMB",    always,         flag),
    attribute("NB",    "blnNB",    always,         flag),
    attribute("NL",    "blnNL",    always,         flag),
    attribute("NU",    "blnNU",    always,         flag),
    attribute("NS",    "blnNS",    always,         flag),
    attribute("NT",    "blnNT",    always,         flag),
    attribute("ON",    "blnON",    always,         flag),
    attribute("PE",    "blnPE",    always,         flag),
    attribute("QC",    "blnQC",    always,         flag),
    attribute("SK",    "blnSK",    always,         flag),
    attribute("YT",    "blnYT",    always,         flag),
    attribute("Other", "blnOther", always,         flag)); },
    {.afterName = u" ", .end = u" />"});

const Record AddProductAttribute = record<arguments::AddProductAttribute>(u"ProductAttribute", [] { return rows(
    key      ("ProductAttributeNumber", "lngProductAttributeNumber", atLeast(1),                integerText,
              u"The Product Attribute Number {lngProductAttributeNumber} is not valid."),
    attribute("Description",            "strDescription",            notDefault && atMost(100), escaped),
    attribute("MultiMediaFileName",     "strMultiMediaFileName",     notDefault && atMost(150), escaped),
    attribute("MultiMediaFile",         "strMultiMediaFile",         notDefault,                fileContent),
    attribute("MultiMediaURL",          "strMultiMediaURL",          notDefault,                escaped),
    deleted); },
    {.parent = u"Product", .delivery = addAttribute});

const Record AddProductPromotion = record<arguments::AddProductPromotion>(u"ProductPromotion", [] { return rows(
    check    ("dtmEnd", notBefore("dtmStart"),
              u"The Product Promotion End Date ({dtmEnd}) may not be before the Start Date ({dtmStart})."),
    attribute("StartDate", "dtmStart", always,     dateText),
    attribute("EndDate",   "dtmEnd",   always,     dateText),
    attribute("Price",     "dblPrice", atLeast(0), strText),
    deleted); },
    {.parent = u"Product", .delivery = addPromotion});

const Record AddProductImage = record<arguments::AddProductImage>(u"ProductImage", [] { return rows(
    key      ("ProductCode", "strProdCode", length(1, 255), escaped,
              u"The product code may not be less than 1 or more than 255 characters in length."),
    key      ("FileName",    "strFileName", length(1, 255), escaped,
              u"The file name may not be less than 1 or more than 255 characters in length."),
    key      ("Rank",        "intRank",     atLeast(1),     integerText, u"Image must have a ranking"),
    attribute("Deleted",     "blnDeleted",  always,         absoluteInteger)); },
    {.delivery = appendToImagePacket});

// Oddity: the method's name is part of the description, and the source is the library's.
const Record AddProductLinking = record<arguments::AddProductLinking>(u"ProductLinking", [] { return rows(
    key      ("ParentProductID", "strParentCode", length(1, 255), escaped,
              u"Quill1XML.Store.AddProductLinking(): The product parent code may not be less than 1 or more than 255 "
              u"characters in length."),
    key      ("ProductID",       "strProdCode",   length(1, 255), escaped,
              u"Quill1XML.Store.AddProductLinking(): The product code may not be less than 1 or more than 255 "
              u"characters in length."),
    attribute("Heading",         "strHeading",    notEmpty,       escaped),
    attribute("Ranking",         "lngRanking",    always,         integerText),
    deleted); },
    {.source = u"Quill1XML"});

// clang-format on

}  // namespace quill1xml::records

namespace quill1xml::store {

void perform(State& state, const arguments::LockProduct&) {
    if (state.openProduct.empty()) {
        throw Error(applicationError, u"Quill1XML.Store.LockProduct()",
                    u"No product has been created, or the current Product has already been Locked.");
    }
    // Closed before it is written: a product whose write fails is lost.
    TextBuffer& product = state.element;
    product.clear();
    product.swap(state.openProduct);
    product.append(state.productAttributes);
    product.append(state.productPromotions);
    product.append(u"</Product>");
    state.productAttributes.clear();
    state.productPromotions.clear();
    records::appendToPacket(state, records::AddProduct, product.view());
}

}  // namespace quill1xml::store
