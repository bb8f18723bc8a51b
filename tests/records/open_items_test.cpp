#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::Filler;
using testing::tildes;

// clang-format off

TEST(OpenItems, WriteExactlyTheseElements) {
    testing::expectWritten({
        {[](Store& s) {
             s.AddOpenItemHeaderLayout({u"I&J", u"&c", u"&d", u"c2", u"d2", u"c3", u"d3", u"c4", u"d4", u"c5", u"d5",
                                        u"c6", u"d6", u"c7", u"d7", u"c8", u"d8", u"c9", u"d9", u"c10", u"d10",
                                        u"c11", u"d11", u"c12", u"d12", u"c13", u"d13", u"c14", u"d14", u"c15",
                                        u"d15", true});
         },
         R"(<OpenItemHeaderLayout ItemType="I&amp;J" Caption1="&amp;c" DataType1="&amp;d" Caption2="c2" DataType2="d2" Caption3="c3" DataType3="d3" Caption4="c4" DataType4="d4" Caption5="c5" DataType5="d5" Caption6="c6" DataType6="d6" Caption7="c7" DataType7="d7" Caption8="c8" DataType8="d8" Caption9="c9" DataType9="d9" Caption10="c10" DataType10="d10" Caption11="c11" DataType11="d11" Caption12="c12" DataType12="d12" Caption13="c13" DataType13="d13" Caption14="c14" DataType14="d14" Caption15="c15" DataType15="d15" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddOpenItemDetailLayout({.strItemType = u"I", .strCaption1 = u"<1>", .strDataType1 = u"<t",
                                        .strCaption3 = u"", .strDataType14 = u"d", .strCaption15 = u"c"});
         },
         R"(<OpenItemDetailLayout ItemType="I" Caption1="&#60;1&#62;" DataType1="&#60;t" Caption3="" DataType14="d" Caption15="c"/>)"},
        {[](Store& s) {
             s.AddOpenItemHeader({u"D", u"R", u"I", u"a", u"b", u"c", u"d", u"e", u"f", u"g", u"h", u"i", u"j", u"k",
                                  u"l", u"m", u"", u"o&", true});
         },
         R"(<OpenItemHeader DebtorID="D" ReferenceNumber="R" ItemType="I" Value1="a" Value2="b" Value3="c" Value4="d" Value5="e" Value6="f" Value7="g" Value8="h" Value9="i" Value10="j" Value11="k" Value12="l" Value13="m" Value14="" Value15="o&amp;" Deleted="1"/>)"},
        {[](Store& s) { s.AddOpenItemDetail({u"D&", u"R&", u"I&", 1, u"StringDefault", u"v&"}); },
         R"(<OpenItemDetail DebtorID="D&amp;" ReferenceNumber="R&amp;" ItemType="I&amp;" RowNumber="1" Value2="v&amp;"/>)"},
    });
    testing::expectEscapedCaps({
        {[](Store& s, Filler t) { s.AddOpenItemHeaderLayout({t.key(30)}); }, 30,
         R"(<OpenItemHeaderLayout ItemType="~"/>)"},
        {[](Store& s, Filler t) { s.AddOpenItemDetail({t.key(50), t.key(30), t.key(30), 7}); }, 50 + 30 + 30,
         R"(<OpenItemDetail DebtorID="~" ReferenceNumber="~" ItemType="~" RowNumber="7"/>)"},
    });
}

TEST(OpenItems, RefuseBadKeysInTheirOwnWords) {
    const char* debtor = "The DebtorID may not be less than 1 or more than 50 characters in length.";
    const char* reference = "The Reference Number may not be less than 1 or more than 30 characters in length.";
    const char* type = "The Item Type may not be less than 1 or more than 30 characters in length.";
    testing::expectBadKeys({
        {[](Store& s) { s.AddOpenItemHeaderLayout({tildes(31)}); }, "AddOpenItemHeaderLayout", type},
        {[](Store& s) { s.AddOpenItemDetailLayout({u""}); }, "AddOpenItemDetailLayout", type},
        {[](Store& s) { s.AddOpenItemHeader({tildes(51), u"R", u"I"}); }, "AddOpenItemHeader", debtor},
        {[](Store& s) { s.AddOpenItemHeader({u"D", u"", tildes(31)}); }, "AddOpenItemHeader", reference},
        {[](Store& s) { s.AddOpenItemHeader({u"D", u"R", u""}); }, "AddOpenItemHeader", type},
        {[](Store& s) { s.AddOpenItemDetail({}); }, "AddOpenItemDetail", debtor},
        {[](Store& s) { s.AddOpenItemDetail({u"D", tildes(31), u"I", 0}); }, "AddOpenItemDetail", reference},
        {[](Store& s) { s.AddOpenItemDetail({u"D", u"R", tildes(31), 0}); }, "AddOpenItemDetail", type},
        {[](Store& s) { s.AddOpenItemDetail({u"D", u"R", u"I", 0}); }, "AddOpenItemDetail",
         "The Row Number must be greater than 0."},
    });
}

TEST(OpenItems, FillPacketsIndependently) {
    const auto files = testing::filesWrittenBy([](Store& s) {
        s.SetPacketSize({2});
        for (int i = 0; i < 3; ++i) s.AddOpenItemHeaderLayout({u"I"});
        s.AddOpenItemDetailLayout({u"I"});
        s.AddOpenItemHeader({u"D", u"R", u"I"});
        s.AddOpenItemDetail({u"D", u"R", u"I", 1});
    });
    std::string names;
    for (const auto& [name, text] : files) names += name.substr(10) + " ";
    EXPECT_EQ(names, "OpenItemDetail1.tmp OpenItemDetailLayout1.tmp OpenItemHeader1.tmp OpenItemHeaderLayout1.tmp "
                     "OpenItemHeaderLayout2.tmp ");
}

// clang-format on

}  // namespace
}  // namespace quill1xml
