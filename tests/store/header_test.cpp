// The order in which the head of a store document is given, and what a failure leaves of it.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

namespace quill1xml {
namespace {

using testing::expectError;
using testing::labels;
using testing::ScriptedEnvironment;

class Header : public ::testing::Test {
protected:
    Header() { store_.SetTempFilePath({u"T"}); }

    ScriptedEnvironment fake_;
    Store store_{fake_.environment()};
};

TEST_F(Header, TakesItsCallsInOneOrder) {
    const Text again = u"A new store has already been created.";
    const Text notYet = u"This function can only be called after the store has been created.";
    expectError([&] { store_.AddAdditionalParameters(); }, applicationError, notYet);
    store_.AddTax({.strTaxCode = u"A"});
    const auto refused = testing::errorOf([&] { store_.Create({u"schema", 0}); });
    EXPECT_EQ(refused->number(), applicationError);
    EXPECT_EQ(refused->source(), u"Quill1XML.Store.Create()");
    EXPECT_EQ(refused->description(), u"Store ID 0 is not valid.");
    EXPECT_TRUE(fake_.files->texts.empty()) << "the packets go before the number is looked at";

    store_.Create({u"schema", 5});
    EXPECT_TRUE(fake_.files->texts.empty()) << "nothing is written yet";
    store_.AddTax({.strTaxCode = u"A"});
    expectError([&] { store_.Create({u"schema", 6}); }, applicationError, again);
    EXPECT_TRUE(fake_.files->texts.empty()) << "the packets go before the second call is refused";

    fake_.files->full = true;
    expectError([&] { store_.AddAdditionalParameters(); }, 61, u"WebStore1.tmp");
    fake_.files->full = false;
    store_.AddAdditionalParameters({.blnDeleteAllUploadData = true});
    expectError([&] { store_.AddAdditionalParameters(); }, applicationError, notYet);
    store_.Create({u"schema", 7});
    EXPECT_EQ(labels(*fake_.log).back(), "Method: Quill1XML.Store.AddAdditionalParameters()");
}

TEST_F(Header, BeginsTheFirstPacketAnew) {
    store_.Create({u"schema", 5});
    store_.AddEnvelope({u"early", u"p"});
    store_.AddAdditionalParameters();
    store_.AddEnvelope({u"u", u"p"});
    const std::string packet = testing::utf8(fake_.files->texts[u"T\\WebStore1.tmp"]);
    EXPECT_THAT(packet, ::testing::StartsWith("<Store xmlns=\"WebStore\" StoreID=\"5\""));
    EXPECT_THAT(packet, ::testing::Not(::testing::HasSubstr("early")));
}

/// A setting that cannot be written ends Create, but the store's number has been taken by then.
TEST_F(Header, KeepsTheStoreNumberWhenALaterSettingFails) {
    expectError([&] { store_.Create({.lngStoreID = 5, .strLogoImageFile = u"none"}); }, 53, u"none");
    expectError(
        [&] { store_.Create({.strWebStoreSchemaSource = u"schema", .lngStoreID = 6, .dblMaximumOrderValue = 1e15}); },
        6, u"currency");
    store_.AddEnvelope({u"u", u"p"});
    store_.AddTax({.strTaxCode = u"A"});
    fake_.http->reply(R"(<Receipt ImportNumber="1"><Error Number="0"/></Receipt>)");
    store_.SendTempFile({u"Tax", u"http://shop"});
    EXPECT_THAT(fake_.http->requests.at(0).body,
                ::testing::StartsWith("<Store xmlns=\"WebStore\" StoreID=\"6\">\r\n<Envelope "));
}

}  // namespace
}  // namespace quill1xml
