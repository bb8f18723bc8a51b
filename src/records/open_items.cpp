// Open items: a debtor's items in tables of the host's own making, with up to fifteen columns.

#include "records/debtor_rows.hpp"
#include "records/record.hpp"

namespace quill1xml::records {
namespace {

constexpr RowDeclaration referenceNumber =
    key("ReferenceNumber", "strReferenceNumber", length(1, 30), escaped,
        u"The Reference Number may not be less than 1 or more than 30 characters in length.");
constexpr RowDeclaration itemType = key("ItemType", "strItemType", length(1, 30), escaped,
                                        u"The Item Type may not be less than 1 or more than 30 characters in length.");

}  // namespace

// clang-format off

const Record AddOpenItemHeaderLayout = record<arguments::AddOpenItemHeaderLayout>(
    u"OpenItemHeaderLayout", [] { return rows(
    itemType,
    numbered<1, 15>(
        attribute("Caption#",  "strCaption#",  notDefault, escaped),
        attribute("DataType#", "strDataType#", notDefault, escaped)),
    deleted); });

const Record AddOpenItemDetailLayout = record<arguments::AddOpenItemDetailLayout>(
    u"OpenItemDetailLayout", [] { return rows(
    itemType,
    numbered<1, 15>(
        attribute("Caption#",  "strCaption#",  notDefault, escaped),
        attribute("DataType#", "strDataType#", notDefault, escaped)),
    deleted); });

const Record AddOpenItemHeader = record<arguments::AddOpenItemHeader>(u"OpenItemHeader", [] { return rows(
    debtorId,
    referenceNumber,
    itemType,
    numbered<1, 15>(
        attribute("Value#", "strValue#", notDefault, escaped)),
    deleted); });

const Record AddOpenItemDetail = record<arguments::AddOpenItemDetail>(u"OpenItemDetail", [] { return rows(
    debtorId,
    referenceNumber,
    itemType,
    key("RowNumber", "lngRowNumber", atLeast(1), integerText,
        u"The Row Number must be greater than 0."),
    numbered<1, 15>(
        attribute("Value#", "strValue#", notDefault, escaped)),
    deleted); });

// clang-format on

}  // namespace quill1xml::records
