#include "exchange/send_order.hpp"

#include "records/record.hpp"
#include "store/packets.hpp"

namespace quill1xml::exchange {
namespace {

using namespace records;

// clang-format off
constexpr const Record* order[] = {
    &AddTax, &AddCurrency, &AddTradingCountry,
    &AddSimpleCourier, &AddSimpleCourierZone, &AddSimpleCourierRate, &AddLocalCourier, &AddLocalCourierService,
    &AddInternationalCourier, &AddInternationalCourierService, &AddInternationalCourierRate, &AddInternationalCourierZone,
    &AddProductType, &AddProductGroup, &AddProductCategory, &AddProduct, &AddProductLinking, &AddProductPOSRebate,
    &AddProductCategoryLink, &AddDebtorCategoryLink,
    &AddDimensionTypes, &AddDimensions, &AddDimensionValues, &AddDimensionProducts,
    &AddSalesRep, &AddMailTo, &AddDebtorCategory, &AddDebtor, &AddDebtorStaff, &AddDebtorOpenItem, &AddDebtorPrice,
    &AddDiscountMatrix, &AddTavDiscountMatrix, &AddDebtorDiscountMatrix, &AddProductDiscountMatrix,
    &AddProductDiscountPrice,
    &AddPaymentMethod, &AddMessage,
    &AddOrder,
    &AddSupplier, &AddGLAccount, &AddCashFlow,
    &AddOpenItemHeaderLayout, &AddOpenItemHeader, &AddOpenItemDetailLayout, &AddOpenItemDetail,
    &AddExternalOrder, &AddExternalOrderLineItem, &AddDebtorProduct, &AddAgeing,
    &AddOrderDocument, &AddOrderStages, &AddOrderStageLink, &AddOrderDocumentLink,
    &AddCustomerBalanceDescriptions, &AddDebtorStatementHeader, &AddDebtorStatementLines, &AddTransactionHistoryHeader,
    &AddTransactionHistoryLines, &AddTransactionHistory, &AddTransactionHistoryLink,
    &AddUDF, &AddTransactionDocumentLink, &AddPaymentOption, &AddMobileUser};
// clang-format on

}  // namespace

std::vector<std::u16string> sendOrder(const store::State& state) {
    std::vector<std::u16string> kinds{store::kindText(store::firstPacket)};
    for (const Record* record : order) kinds.push_back(store::kindText(record->packet(state, 1)));
    return kinds;
}

}  // namespace quill1xml::exchange
