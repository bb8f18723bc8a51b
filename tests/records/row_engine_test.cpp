// The engine of the record tables, on made-up tables.
#include "quill1xml/text.hpp"
#include "records/record.hpp"
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"

#include <gtest/gtest.h>

namespace quill1xml {

struct Made {
    Text strName{notGiven};
    Text strOther{notGiven};
    Long lngFirst{-1};
    Double dblPrice1{-1};
    Double dblPrice2{-1};
    Double dblPrice10{-1};
    Date dtmStart{};
    Date dtmEnd{};
};
QUILL1XML_BEGIN_TABLE(Made, "AddMade")
QUILL1XML_ENTRY(Text, strName, false)
QUILL1XML_ENTRY(Text, strOther, false)
QUILL1XML_ENTRY(Long, lngFirst, false)
QUILL1XML_ENTRY(Double, dblPrice1, false)
QUILL1XML_ENTRY(Double, dblPrice2, false)
QUILL1XML_ENTRY(Double, dblPrice10, false)
QUILL1XML_ENTRY(Date, dtmStart, false)
QUILL1XML_ENTRY(Date, dtmEnd, false)
QUILL1XML_END_TABLE(Made)

namespace records {
namespace {

/// The element that a record writes, in UTF-8.
std::string written(const Record& record, const Made& values) {
    const testing::FakeEnvironment fake;
    store::State state(fake.environment());
    TextBuffer out;
    appendElement(out, record, {state, &values});
    return toUtf8(out.view());
}

// clang-format off
constexpr Record chain = record<Made>(u"Chain", [] { return rows(
    attribute("A", "strName", atMost(3), asGiven),
    otherwise(attribute("A", "strOther", atMost(3), asGiven)),
    otherwise(fixed("A", always, u"none"))); });

constexpr Record combined = record<Made>(u"Combined", [] { return rows(
    attribute("All", "strName", notDefault && atMost(3), asGiven),
    attribute("Any", "strName", when("strOther", notDefault) || when("lngFirst", above(0)), escaped)); });

constexpr Record family = record<Made>(u"Family", [] { return rows(
    numbered<1, 2>(
        blankBeforeEquals(attribute("P#", "dblPrice#", atLeast(0), strText))),
    numbered<10, 10>(
        attribute("P#x", "dblPrice#", above(-1), numberText))); },
    {.afterName = u" ", .end = u" />"});

constexpr Record checked = record<Made>(u"Checked", [] { return rows(
    attribute("Before", "strOther", notDefault, asGiven),
    check    ("dtmEnd", notBefore("dtmStart"), u"{dtmEnd} is before {dtmStart}", u"Elsewhere()"),
    key      ("First", "lngFirst", between(1, 9), integerText, u"Not {lngFirst}."),
    otherwise(attribute("Never", "strName", always, asGiven))); });
// clang-format on

TEST(RowEngine, WritesWhatTheRowsSay) {
    const struct {
        const Record& record;
        Made values;
        const char* expected;
    } cases[] = {
        {chain, {.strName = u"abcd", .strOther = u"x"}, R"(<Chain A="x"/>)"},
        {chain, {.strName = u"abcd"}, R"(<Chain A="none"/>)"},
        // A row goes by the one before it alone.
        {chain, {.strName = u"abc", .strOther = u"x"}, R"(<Chain A="abc" A="none"/>)"},
        {combined, {}, "<Combined/>"},
        {combined, {.strName = u"ab&"}, R"(<Combined All="ab&"/>)"},
        {combined, {.strName = u"abcd", .strOther = u"<"}, R"(<Combined Any="abcd"/>)"},
        {combined, {.strName = u"a&b", .lngFirst = 1}, R"(<Combined All="a&b" Any="a&amp;b"/>)"},
        {family, {}, "<Family  />"},
        {family, {.dblPrice1 = 0, .dblPrice2 = .5, .dblPrice10 = -.5}, R"(<Family  P1 =" 0" P2 =" .5" P10x="-0.5" />)"},
        {checked, {.lngFirst = 9}, R"(<Checked First="9"/>)"},
    };
    for (const auto& c : cases) EXPECT_EQ(written(c.record, c.values), c.expected);
}

TEST(RowEngine, RefusesWhereTheCheckStands) {
    const auto late = testing::errorOf([] { written(checked, {.lngFirst = 0}); });
    EXPECT_EQ(late->source(), u"Quill1XML.Store.AddMade()");
    EXPECT_EQ(late->description(), u"Not 0.");
    const auto early = testing::errorOf([] { written(checked, {.lngFirst = 0, .dtmStart = {2}, .dtmEnd = {1}}); });
    EXPECT_EQ(early->source(), u"Elsewhere()");
    EXPECT_EQ(early->description(), u"1899-12-31T00:00:00 is before 1900-01-01T00:00:00");
}

}  // namespace
}  // namespace records
}  // namespace quill1xml
