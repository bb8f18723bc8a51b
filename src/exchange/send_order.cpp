#include "exchange/send_order.hpp"

#include "text/numbers.hpp"

namespace quill1xml::exchange {
namespace {

constexpr Text mainFiles = u"";
constexpr Text orders = u"Order";  // goes on with the store number and "_"

// clang-format off
constexpr Text kinds[] = {
    mainFiles,
    u"Tax", u"Currency", u"TradingCountry",
    u"SimpleCourier", u"SimpleCourierZone", u"SimpleCourierRate", u"LocalCourier", u"LocalCourierService",
    u"InternationalCourier", u"InternationalCourierService", u"InternationalCourierRate", u"InternationalCourierZone",
    u"ProductType", u"ProductGroup", u"ProductCategory", u"Product", u"ProductLinking", u"ProductPOSRebate",
    u"ProductCategoryLink", u"DebtorCategoryLink",
    u"DimensionTypes", u"Dimensions", u"DimensionValues", u"DimensionProducts",
    u"SalesRep", u"MailTo", u"DebtorCategory", u"Debtor", u"DebtorStaff", u"DebtorOpenItem", u"DebtorPrice",
    u"DiscountMatrix", u"TavDiscountMatrix", u"DebtorDiscountMatrix", u"ProductDiscountMatrix",
    u"ProductDiscountPrice",
    u"PaymentMethod", u"Message",
    orders,
    u"Supplier", u"GLAccount", u"CashFlow",
    u"OpenItemHeaderLayout", u"OpenItemHeader", u"OpenItemDetailLayout", u"OpenItemDetail",
    u"ExternalOrder", u"ExternalOrderLineItem", u"DebtorProduct", u"Ageing",
    u"OrderDocument", u"OrderStages", u"OrderStageLink", u"OrderDocumentLink",
    u"CustomerBalanceDescriptions", u"DebtorStatementHeader", u"DebtorStatementLines", u"TransactionHistoryHeader",
    u"TransactionHistoryLines", u"TransactionHistory", u"TransactionHistoryLink",
    u"UserDefinedField", u"TransactionDocumentLink", u"PaymentOption", u"MobileUser"};
// clang-format on

}  // namespace

std::vector<std::u16string> sendOrder(Long storeId) {
    std::vector<std::u16string> names;
    for (const Text kind : kinds) {
        std::u16string& name = names.emplace_back(kind);
        if (kind != orders) continue;
        appendInteger(name, storeId);
        name.push_back(u'_');
    }
    return names;
}

}  // namespace quill1xml::exchange
