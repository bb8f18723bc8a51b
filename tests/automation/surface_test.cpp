// The methods of Store on every surface: the same set everywhere, under the numbers that hosts were compiled against.

#include "automation/catalogue.hpp"
#include "automation/manual.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/text.hpp"
#include "records/record.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>

namespace quill1xml::automation {
namespace {

// A number is never changed or reused; a new method comes last in its family.
constexpr const char* promisedMethods =
    "1 SetTempFilePath 2 SetStoreID 3 SetPacketSize 4 CleanupTempFiles "
    "11 Create 12 AddAdditionalParameters 13 AddEnvelope "
    "21 XML 22 CustomerXML 23 QuoteXML 24 Save "
    "31 XMLEncode 32 XMLDecode 33 EncodeString 34 FormatDate 35 ReadBinData "
    "41 Send 42 SendTempFile 43 SendImage "
    "51 ReceiveCustomers 52 ReceiveOrders 53 ReceiveQuotations 54 ReceiveOfflineProductList "
    "61 Orders 62 Customers 63 Quotations "
    "101 AddTax 102 AddMobileUser 103 AddTradingCountry 104 AddPaymentMethod 105 AddMessage 106 AddSalesRep "
    "107 AddPaymentOption 108 AddMailTo 109 AddCurrency 110 AddAgeing "
    "201 AddSimpleCourier 202 AddSimpleCourierZone 203 AddSimpleCourierRate 204 AddLocalCourier "
    "205 AddLocalCourierService 206 AddInternationalCourier 207 AddInternationalCourierService "
    "208 AddInternationalCourierZone 209 AddInternationalCourierRate "
    "301 AddProductType 302 AddProductGroup 303 AddUDF 304 AddProductCategory 305 AddProductCategoryLink "
    "306 AddDimensionTypes 307 AddDimensions 308 AddDimensionValues 309 AddDimensionProducts "
    "401 AddProduct 402 AddProductAdditional 403 AddProductPOSRebate 404 AddProductAttribute "
    "405 AddProductPromotion 406 AddProductImage 407 AddProductLinking 408 LockProduct "
    "501 AddDebtorPrice 502 AddDiscountMatrix 503 AddTavDiscountMatrix 504 AddDebtorDiscountMatrix "
    "505 AddProductDiscountMatrix 506 AddProductDiscountPrice "
    "601 AddSupplier 602 AddCashFlow 603 AddGLAccount "
    "701 AddOrder 702 AddOrderUDFValue 703 AddOrderLineItem 704 LockOrder 721 UpdateOrder 722 AddExternalOrder "
    "723 AddExternalOrderLineItem 724 LockExternalOrder 741 AddQuotation 742 AddQuoteLineItem 743 LockQuote "
    "801 AddOrderDocument 802 AddOrderStages 803 AddOrderDocumentLink 804 AddTransactionDocumentLink "
    "805 AddOrderStageLink "
    "901 AddOpenItemHeaderLayout 902 AddOpenItemDetailLayout 903 AddOpenItemHeader 904 AddOpenItemDetail "
    "1001 AddDebtor 1002 AddDebtorCategory 1003 AddDebtorCategoryLink 1004 AddDebtorStaff 1005 AddDebtorProduct "
    "1006 AddDebtorOpenItem 1007 LockDebtor "
    "1101 AddCustomerBalanceDescriptions 1102 AddDebtorStatementHeader 1103 AddDebtorStatementLines "
    "1104 AddTransactionHistory 1105 AddTransactionHistoryHeader 1106 AddTransactionHistoryLines "
    "1107 AddTransactionHistoryLink ";

TEST(Surface, KeepsItsNumbers) {
    std::map<Long, std::string> methods;
    for (const Member& member : storeClass().members) {
        EXPECT_TRUE(methods.emplace(member.dispid, member.name).second) << member.name << " reuses a number";
    }
    std::map<Long, std::string> promised;
    std::istringstream promises(promisedMethods);
    Long number = 0;
    for (std::string name; promises >> number >> name;) promised[number] = name;
    EXPECT_EQ(methods, promised);
    for (const Class* each : classes()) {
        std::set<Long> numbers;
        for (const Member& member : each->members) EXPECT_TRUE(numbers.insert(member.dispid).second) << member.name;
    }
}

TEST(Surface, IsInTheManual) {
    const std::string text = manual();
    for (const Class* each : classes()) {
        EXPECT_NE(text.find("\n## " + std::string(each->name) + "\n"), std::string::npos) << each->name;
        for (const Member& member : each->members) {
            EXPECT_NE(text.find("\n### " + std::string(member.name) + "\n"), std::string::npos) << member.name;
            for (const Parameter& parameter : member.parameters) {
                EXPECT_NE(text.find("| `" + std::string(parameter.name) + "` | "), std::string::npos) << parameter.name;
            }
        }
    }
}

TEST(Surface, IsInBothSchemas) {
    const std::string xsd = storeSchema(SchemaDialect::xsd);
    const std::string xdr = storeSchema(SchemaDialect::xdr);
    std::set<std::string> elements;
    for (const Member& member : storeClass().members) {
        if (member.record == nullptr) continue;
        const std::string element = toUtf8(member.record->element);
        elements.insert(element);
        const auto xsdElement = xsd.find("<xs:element name=\"" + element + "\">");
        const auto xdrElement = xdr.find("<ElementType name=\"" + element + "\"");
        ASSERT_NE(xsdElement, std::string::npos) << element;
        ASSERT_NE(xdrElement, std::string::npos) << element;
        const std::string inXsd = xsd.substr(xsdElement, xsd.find("</xs:element>\n", xsdElement) - xsdElement);
        const std::string inXdr = xdr.substr(xdrElement, xdr.find("</ElementType>", xdrElement) - xdrElement);
        for (const records::Row& row : member.record->rows) {
            if (!row.writes()) continue;
            const std::string name = "name=\"" + toUtf8(row.name()) + "\"";
            EXPECT_NE(inXsd.find("<xs:attribute " + name), std::string::npos) << element << ' ' << name;
            EXPECT_NE(inXdr.find("<AttributeType " + name), std::string::npos) << element << ' ' << name;
        }
    }
    const auto count = [](const std::string& text, const std::string& tag) {
        std::size_t found = 0;
        for (std::size_t i = 0; (i = text.find(tag, i)) != std::string::npos; ++i) ++found;
        return found;
    };
    EXPECT_EQ(count(xsd, "\n  <xs:element name="), elements.size());
    EXPECT_EQ(count(xdr, "<ElementType "), elements.size());
}

TEST(Surface, FindsNamesWhateverTheirCase) {
    const Member* tax = findMember(storeClass(), "aDDtAX");
    ASSERT_NE(tax, nullptr);
    EXPECT_EQ(tax->name, "AddTax");
    EXPECT_EQ(findParameter(*tax, "DBLRATE"), 2);
    EXPECT_EQ(findParameter(*tax, "dblRat"), -1);
    EXPECT_EQ(findMember(storeClass(), "AddTaxe"), nullptr);
}

}  // namespace
}  // namespace quill1xml::automation
