// The names of packet files, and which records share them.
#include "quill1xml/store.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

namespace quill1xml {
namespace {

/// The packet files, by name, that calls leave in folder "T".
std::map<std::string, std::string> filesWrittenBy(const std::function<void(Store&)>& calls) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    calls(store);
    std::map<std::string, std::string> files;
    for (const auto& [name, text] : fake.files->texts) files[testing::utf8(name)] = testing::utf8(text);
    return files;
}

TEST(Packets, OfOpenItemsFillIndependently) {
    const auto files = filesWrittenBy([](Store& s) {
        s.SetPacketSize({2});
        for (int i = 0; i < 3; ++i) s.AddOpenItemHeaderLayout({u"I"});
        s.AddOpenItemDetailLayout({u"I"});
        s.AddOpenItemHeader({u"D", u"R", u"I"});
        s.AddOpenItemDetail({u"D", u"R", u"I", 1});
    });
    std::string names;
    for (const auto& [name, text] : files) names += name.substr(10) + " ";
    EXPECT_EQ(names,
              "OpenItemDetail1.tmp OpenItemDetailLayout1.tmp OpenItemHeader1.tmp OpenItemHeaderLayout1.tmp "
              "OpenItemHeaderLayout2.tmp ");
}

TEST(Packets, OfDocumentLinksFillTogether) {
    const auto files = filesWrittenBy([](Store& s) {
        s.SetPacketSize({2});
        s.AddOrderDocumentLink({1});
        s.AddTransactionDocumentLink({u"A"});
        s.AddTransactionDocumentLink({u"B"});
        s.AddOrderStageLink({1, 1});
        s.AddOrderDocumentLink({2});
        s.AddOrderDocumentLink({3});
    });
    EXPECT_EQ(files,
              (std::map<std::string, std::string>{
                  {"T\\WebStoreOrderDocumentLink1.tmp", R"(<OrderDocumentLink OrderNumber="1"/>)"},
                  {"T\\WebStoreTransactionDocumentLink1.tmp", R"(<TransactionDocumentLink DocumentNumber="A"/>)"},
                  {"T\\WebStoreTransactionDocumentLink2.tmp", R"(<TransactionDocumentLink DocumentNumber="B"/>)"},
                  {"T\\WebStoreOrderDocumentLink2.tmp", R"(<OrderDocumentLink OrderNumber="2"/>)"},
                  {"T\\WebStoreOrderDocumentLink3.tmp", R"(<OrderDocumentLink OrderNumber="3"/>)"},
                  {"T\\WebStoreOrderStageLink1.tmp", R"(<OrderStageLink FieldLinkID="1" OrderNumber ="1"/>)"}}));
}

// Images are not counted: all of them go into one file.
TEST(Packets, OfImagesNeverFill) {
    const auto files = filesWrittenBy([](Store& s) {
        s.SetPacketSize({2});
        for (int i = 0; i < 5; ++i) s.AddProductImage({u"A", u"a", 1, 0});
    });
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files.begin()->first, "T\\WebStoreProductImage1.tmp");
}

TEST(Packets, OfOrdersAndQuotationsAreTheStoresOwn) {
    const auto files = filesWrittenBy([](Store& s) {
        s.SetStoreID({12});
        s.SetPacketSize({2});
        for (int i = 0; i < 3; ++i) {
            s.AddOrder({testing::orderList({})});
            s.LockOrder();
        }
        s.AddQuotation({testing::quotationList({})});
        s.LockQuote();
    });
    std::string names;
    for (const auto& [name, text] : files) names += name.substr(10) + " ";
    EXPECT_EQ(names, "Order12_1.tmp Order12_2.tmp Quote12_1.tmp ");
}

}  // namespace
}  // namespace quill1xml
