#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::Filler;

// clang-format off

TEST(OrderDocuments, WriteExactlyTheseElements) {
    testing::expectWritten({
        {[](Store& s) { s.AddOrderDocument({12, u"T&C", u"5 March", u"C:\\docs", u"a.pdf", u"O'B", true}); },
         R"(<OrderDocument FileLinkID="12" FileTitle="T&amp;C" FileDateTime="5 March" FileName="a.pdf" FileLocation="C:\docs" QCPerson="O&#39;B" Deleted="1"/>)"},
        {[](Store& s) { s.AddOrderDocument({0.5}); }, R"(<OrderDocument FileLinkID="0.5"/>)"},
        {[](Store& s) { s.AddOrderStages({3, u"", true}); },
         R"(<OrderStages FieldLinkID="3" FieldDescription="" Deleted="1"/>)"},
        {[](Store& s) { s.AddOrderDocumentLink({1001, -1.5, true}); },
         R"(<OrderDocumentLink OrderNumber="1001" FileLinkID ="-1.5" Deleted="1"/>)"},
        {[](Store& s) { s.AddOrderDocumentLink({1001}); }, R"(<OrderDocumentLink OrderNumber="1001"/>)"},
        {[](Store& s) { s.AddTransactionDocumentLink({u"O'Brien's & <Co>", 0, true}); },
         R"(<TransactionDocumentLink DocumentNumber="O''Brien''s & <Co>" FileLinkID ="0" Deleted="1"/>)"},
        {[](Store& s) { s.AddTransactionDocumentLink({u"StringDefault"}); },
         R"(<TransactionDocumentLink DocumentNumber="StringDefault"/>)"},
        {[](Store& s) { s.AddOrderStageLink({3, 0.25, true}); },
         R"(<OrderStageLink FieldLinkID="3" OrderNumber ="0.25" Deleted="1"/>)"},
    });
    testing::expectEscapedCaps({
        {[](Store& s, Filler t) { s.AddOrderDocument({1, t(100), t(100), t(255), t(50), t(100)}); },
         100 + 100 + 255 + 50 + 100, R"(<OrderDocument FileLinkID="1"/>)"},
        {[](Store& s, Filler t) { s.AddOrderStages({1, t(100)}); }, 100, R"(<OrderStages FieldLinkID="1"/>)"},
    });
}

TEST(OrderDocuments, RefuseBadKeysInTheirOwnWords) {
    testing::expectBadKeys({
        {[](Store& s) { s.AddOrderDocument({0}); }, "AddOrderDocument", "The FileLinkID may not be less than 1."},
        {[](Store& s) { s.AddOrderStages({0}); }, "AddOrderStages", "The FieldLinkID may not be less than 1."},
        {[](Store& s) { s.AddOrderDocumentLink({-1}); }, "AddOrderDocumentLink", "The Order Number may not be 0."},
        {[](Store& s) { s.AddTransactionDocumentLink({u""}); }, "AddTransactionDocumentLink",
         "The Order Number may not be 0."},
        {[](Store& s) { s.AddOrderStageLink({0}); }, "AddOrderStageLink", "The FieldLinkID may not be 0."},
        {[](Store& s) { s.AddOrderStageLink({1}); }, "AddOrderStageLink", "The OrderNumber may not be 0."},
    });
}

TEST(OrderDocuments, LinksOfBothKindsFillOnePacket) {
    const auto files = testing::filesWrittenBy([](Store& s) {
        s.SetPacketSize({2});
        s.AddOrderDocumentLink({1});
        s.AddTransactionDocumentLink({u"A"});
        s.AddTransactionDocumentLink({u"B"});
        s.AddOrderStageLink({1, 1});
        s.AddOrderDocumentLink({2});
        s.AddOrderDocumentLink({3});
    });
    EXPECT_EQ(files, (std::map<std::string, std::string>{
        {"T\\WebStoreOrderDocumentLink1.tmp", R"(<OrderDocumentLink OrderNumber="1"/>)"},
        {"T\\WebStoreTransactionDocumentLink1.tmp", R"(<TransactionDocumentLink DocumentNumber="A"/>)"},
        {"T\\WebStoreTransactionDocumentLink2.tmp", R"(<TransactionDocumentLink DocumentNumber="B"/>)"},
        {"T\\WebStoreOrderDocumentLink2.tmp", R"(<OrderDocumentLink OrderNumber="2"/>)"},
        {"T\\WebStoreOrderDocumentLink3.tmp", R"(<OrderDocumentLink OrderNumber="3"/>)"},
        {"T\\WebStoreOrderStageLink1.tmp", R"(<OrderStageLink FieldLinkID="1" OrderNumber ="1"/>)"}}));
}

// clang-format on

}  // namespace
}  // namespace quill1xml
