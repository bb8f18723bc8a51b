// When a schema is asked for again, and what is done with the answers.
#include "store/schema_source.hpp"

#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gtest/gtest.h>

namespace quill1xml::store {
namespace {

using testing::expectError;

class SchemaSourceTest : public ::testing::Test {
protected:
    /// Loads from a server that answers so; the validators that it was sent come back.
    std::string ask(Text url, int status, const std::string& body, const std::string& tag = {}) {
        fake_.http->requests.clear();
        fake_.http->replies = {{status, "", body, {.entityTag = tag}}};
        schema_ = source_.load(fake_.environment(), url);
        return fake_.http->requests.empty() ? "not asked" : fake_.http->requests.front().body;
    }

    testing::ScriptedEnvironment fake_;
    SchemaSource source_;
    std::shared_ptr<ports::Schema> schema_;
};

TEST_F(SchemaSourceTest, AServerIsAskedForWhatChanged) {
    constexpr Text url = u"http://shop/a.xsd";
    constexpr Text other = u"http://shop/b.xsd";
    EXPECT_EQ(ask(url, 200, "<a/>", "v1"), "");
    const auto first = schema_;
    EXPECT_EQ(ask(url, 304, ""), "v1");
    EXPECT_EQ(schema_, first);
    EXPECT_EQ(ask(url, 200, "<a/>", "v2"), "v1");
    EXPECT_EQ(schema_, first) << "the same content by another name";
    EXPECT_EQ(ask(url, 200, "<b/>", "v3"), "v2");
    EXPECT_NE(schema_, first);
    EXPECT_EQ(fake_.xml->compiles, 2);

    // Of another address nothing is known yet, and what was known of the first one is forgotten.
    expectError([&] { ask(other, 304, ""); }, 53, u"http://shop/b.xsd (HTTP status 304)");
    EXPECT_EQ(fake_.http->requests.front().body, "");
    EXPECT_EQ(ask(url, 200, "<b/>", "v3"), "");
    EXPECT_EQ(fake_.xml->compiles, 3);

    // A broken one does not leave the last good one in its place.
    expectError([&] { ask(url, 200, "<broken", "v4"); }, applicationError, u"http://shop/a.xsd");
    EXPECT_EQ(ask(url, 200, "<c/>", "v5"), "");
    expectError([&] { ask(url, 404, "<d/>", "v6"); }, 53, u"(HTTP status 404)");
    EXPECT_EQ(ask(url, 304, ""), "v5");
}

TEST_F(SchemaSourceTest, AServerThatTellsNothingIsAskedOncePerSending) {
    constexpr Text url = u"http://shop/a.xsd";
    EXPECT_EQ(ask(url, 200, "<a/>"), "");
    EXPECT_EQ(ask(url, 200, "<a/>"), "") << "outside of a sending it may have changed any time";
    for (int sending = 0; sending < 2; ++sending) {
        const SchemaSource::Sending outer(source_);
        EXPECT_EQ(ask(url, 200, sending == 0 ? "<b/>" : "<c/>"), "") << "it may have changed since the last one";
        const SchemaSource::Sending inner(source_);
        EXPECT_EQ(ask(url, 200, "<d/>"), "not asked");
    }
    EXPECT_EQ(fake_.xml->compiles, 3);
    EXPECT_EQ(ask(url, 200, "<c/>"), "");
    EXPECT_EQ(fake_.xml->compiles, 3);
}

}  // namespace
}  // namespace quill1xml::store
