// The head of a store document: the root start tag with the store's settings, and the envelope.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::expectError;
using testing::labels;
using testing::ScriptedEnvironment;
using testing::utf8;

class Header : public ::testing::Test {
protected:
    Header() { store_.SetTempFilePath({u"T"}); }

    std::string mainFile() { return utf8(fake_.files->texts[u"T\\WebStore1.tmp"]); }

    /// The settings that a start tag shows, without what stands in every one.
    std::string settings(const arguments::Create& create, const arguments::AddAdditionalParameters& more = {}) {
        Store store(fake_.environment());
        store.SetTempFilePath({u"T"});
        store.Create(create);
        store.AddAdditionalParameters(more);
        std::string text = mainFile();
        for (const char* part : {"<Store xmlns=\"WebStore\"",
                                 " StockLevelDisplayMethod=\"\" StockAboveZeroMessage=\"\" "
                                 "StockBelowZeroMessage=\"\" CategoryHTML=\"\"",
                                 " SendNewCustomerEmails=\"0\" DebtorIDLogin=\"0\" ViewOpenItemsAsStatement=\"0\" "
                                 "AllowSalesRepLogin=\"0\"",
                                 " >"}) {
            const std::size_t at = text.find(part);
            if (at != std::string::npos) text.erase(at, std::string(part).size());
        }
        return text;
    }

    ScriptedEnvironment fake_;
    Store store_{fake_.environment()};
};

TEST_F(Header, HoldsEverySettingInItsPlace) {
    const Date day = Date::of(2006, 1, 2, 3, 4, 5);
    fake_.files->bytes[u"logo"] = {'f', 'o', 'o', 'b'};
    arguments::Create c{u"schema", 5,      u"a&",   u"b<", 1,       u"c",       u"d",    u"e", u"f",     u"g",
                        u"h",      u"i",   u"j",    u"ZA", u"k",    u"l",       u"m",    u"n", day,      0,
                        1,         u"o",   u"p",    u"q",  0,       u"r",       u"Open", 1,    u"Mixed", u"s",
                        u"t",      u"R&D", 0,       1,     u"u",    u"Selling", 0,       2,    3,        u"TextOnly",
                        u"v",      0,      7,       1,     u"Both", u"20",      u"w",    0,    1,        1,
                        u"x",      0,      0.00004, 1,     0,       u"logo",    u"y\"",  0,    1};
    arguments::AddAdditionalParameters a{true,  true, true,   true,   0, 1,  true, 0, 0,     7, 8, 9,
                                         day,   1,    u"<&>", u"p&q", 0, 1,  12.5, 2, -2,    0, 1, u"l&",
                                         u"m<", u"n", u"o",   3,      0, -1, 1,    2, 32767, 1};
    store_.Create(c);
    store_.AddAdditionalParameters(a);
    EXPECT_EQ(
        mainFile(),
        R"(<Store xmlns="WebStore" StoreID="5" ShortName="a&amp;" Name="b&#60;" TemplateID="1" RepCode="c")"
        R"( ShortDescription="d" LongDescription="e" AddressLine1="f" AddressLine2="g" City="h" StateProvince="i")"
        R"( PostalCode="j" CountryCode="ZA" Telephone="k" Fax="l" EMailAddress="m" StoreURL="n")"
        R"( DateCreated="2006-01-02T03:04:05" TestStore="0" CallBack="1" CallBackID="o" LeisureLinkID="p")"
        R"( WebSafeID="q" ChargeForFraudInsurance="0" SourceApplication="r" Status="Open" AllowPasswordEMail="1")"
        R"( BusinessMode="Mixed" CompanyRegistration="s" TaxNumber="t" CurrencyCode="R&D" CustomerNotification="0")"
        R"( DeliveryDateActive="1" DeliveryTaxCode="u" SiteType="Selling" ForceLogin="0" PageSize="2")"
        R"( ShowCasePageSize="3" ShowCaseDisplayType="TextOnly" StartPage="v" NewDays="0" ShopBySKUInputRows="7")"
        R"( QuickShop="1" PriceDisplay="Both" PriceList="20" TerminalID="w" SaveSearchStrings="0")"
        R"( SendOfflineCardDetails="1" SchemeID="1" CustomBrandingHTML="x" AllowAppointmentRequests="0")"
        R"( MaximumOrderValue=" 0" AllowOpenItems="1" AllowOpenItemPayments="0" LogoImage="Logo.jpg")"
        R"( LogoImageFile="Zm9vYg==" LogoImageURL="y&quot;" NumberOfTaxLevels="0" CompoundTaxCalculation="1")"
        R"( DeleteAllUploadData="1" DeleteDiscountMatrix="1" DeleteProductCategory="1" DeleteProductCategoryLink="1")"
        R"( ChargeTaxOnShipping="0" EnableShipping="1" DeleteProductDiscountPrice="1")"
        R"( DisplayProductRecommendation="0" DaysAfterDueNotice="0" FollowUpDaysDueNotice="7")"
        R"( NumberFollowUpNotices="8" DaysTillOrderPurge="9" FinancialYearStartDate="2006-01-02T03:04:05")"
        R"( UsesSimpleCouriers="1" StockOnHandMethod="<&>" AddressBarPicture="p&q" SalesOrdersReserveQty="0")"
        R"( AllowNegativeQty="1" MaxDeliveryWeight=" 12.5" AllowOfflineOrders="2" SortNumerically="-2")"
        R"( PrintPrescription="0" DebtorCanChangeBillingAddress="1" StockLevelDisplayMethod="l&amp;")"
        R"( StockAboveZeroMessage="m&#60;" StockBelowZeroMessage="n" CategoryHTML="o" AllowDropDown="3")"
        R"( UseQuotesAsOrders="0" SendNewCustomerEmails="-1" DebtorIDLogin="1" ViewOpenItemsAsStatement="2")"
        R"( AllowSalesRepLogin="32767" RemoveStatementData="1" >)");
}

TEST_F(Header, LeavesOutWhatIsNotGivenOrBreaksItsLimit) {
    const std::u16string x30(30, u'x');
    const std::u16string x31(31, u'x');
    const std::u16string x11(11, u'x');
    const struct {
        arguments::Create create;
        std::string expected;
    } cases[] = {
        {{.lngStoreID = 1}, R"( StoreID="1")"},
        {{.lngStoreID = 1, .strShortName = x30}, R"( StoreID="1" ShortName=")" + utf8(x30) + "\""},
        {{.lngStoreID = 1, .strShortName = x31, .strName = u""}, R"( StoreID="1" Name="")"},
        {{.lngStoreID = 1, .strCountryCode = u""}, R"( StoreID="1" CountryCode="")"},
        {{.lngStoreID = 1, .strCountryCode = u"ZAFR"}, R"( StoreID="1")"},
        {{.lngStoreID = 1, .strLeisureLinkID = u"12345", .strStatus = u"open", .strCurrencyCode = u"ZA"},
         R"( StoreID="1")"},
        {{.lngStoreID = 1, .intBlnTestStore = 2, .intBlnCallBack = -1, .intPageSize = 1}, R"( StoreID="1")"},
        {{.lngStoreID = 1, .intBlnTestStore = 0}, R"( StoreID="1" TestStore="0")"},
        {{.lngStoreID = 1, .strDeliveryTaxCode = u"", .strPriceList = u"21"}, R"( StoreID="1")"},
        {{.lngStoreID = 1, .strDeliveryTaxCode = x11, .strPriceList = u"None"}, R"( StoreID="1" PriceList="None")"},
        {{.lngStoreID = 1, .lngTemplateID = -1, .lngSchemeID = 0, .dblMaximumOrderValue = -0.5}, R"( StoreID="1")"},
        {{.lngStoreID = 1, .strLogoImageURL = u""}, R"( StoreID="1" LogoImage="Logo.jpg" LogoImageURL="")"},
        {{.lngStoreID = 1, .strLogoImageFile = u""}, R"( StoreID="1" LogoImage="Logo.jpg" LogoImageFile="")"},
    };
    for (const auto& c : cases) EXPECT_EQ(settings(c.create), c.expected);

    EXPECT_EQ(settings({.lngStoreID = 1}, {.intblnEnableShipping = 2, .intDaysAfterDueNotice = -1}), R"( StoreID="1")");
    EXPECT_EQ(settings({.lngStoreID = 1}, {.strQuantityOnHandMethod = u"  ", .strCategoryHTML = u"x"}),
              R"( StoreID="1" StockOnHandMethod="  ")");
    EXPECT_EQ(settings({.lngStoreID = 1}, {.dblMaxDeliveryWeight = -2, .intAllowOfflineOrders = -1}),
              R"( StoreID="1" MaxDeliveryWeight="-2")");
}

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

TEST_F(Header, EndsWithTheEnvelope) {
    const struct {
        arguments::AddEnvelope envelope;
        const char* expected;
    } cases[] = {
        {{u"u&1", u""},
         R"(<Envelope DateCreated="2007-03-05T14:07:09" UserName="u&amp;1" Password="" VersionNumber="2.0.00"/>)"},
        {{u"u", u"p<", u"http://shop/?a=1&b=2", 4, u"3\u00E9&"},
         R"(<Envelope DateCreated="2007-03-05T14:07:09" UserName="u" Password="p&#60;" DestinationURL="http://shop/?a=1&amp;b=2" DocumentNumber="4" VersionNumber="3)"
         "\u00E9&\"/>"},
        {{u"u", u"p", u"", -1, u""},
         R"(<Envelope DateCreated="2007-03-05T14:07:09" UserName="u" Password="p" DestinationURL=""/>)"},
    };
    for (const auto& c : cases) {
        fake_.files->texts[u"T\\WebStore1.tmp"] = u"<Store>";
        store_.AddEnvelope(c.envelope);
        EXPECT_EQ(mainFile(), std::string("<Store>") + c.expected);
    }
    const auto refused = testing::errorOf([&] { store_.AddEnvelope({u"", u"x"}); });
    EXPECT_EQ(refused->number(), applicationError);
    EXPECT_EQ(refused->source(), u"Quill1XML.Store.AddEnvelope()");
    EXPECT_EQ(refused->description(), u"Username cannot be an empty string");
    EXPECT_THAT(labels(*fake_.log), ElementsAre("Method: Quill1XML.Store.AddEnvelope()"));
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
