#include "support/records.hpp"

namespace quill1xml {
namespace {

using testing::expectRefused;
using testing::expectWritten;

const std::u16string x10(10, u'x');
const std::u16string x11(11, u'x');
const std::u16string x50(50, u'x');
const std::u16string x51(51, u'x');

TEST(GeneralMasters, WriteExactlyTheseElements) {
    expectWritten({
        {[](Store& s) { s.AddTax({.strTaxCode = u"VAT"}); },
         R"(<Tax TaxCode="VAT" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {[](Store& s) {
             s.AddTax({u"V&T", u"Caf\u00E9 \u2013 <15%>", 15, true, u"ZA", u"W&C", true, 0.123456});
         },
         R"(<Tax TaxCode="V&amp;T" Description="Caf&#233; - &#60;15%&#62;" Rate=" 15" CountryCode="ZA" StateProvinceCode="W&C" Deleted="1" UsePOSRebate="1" POSRebateRate=" .1235"/>)"},
        {[](Store& s) { s.AddTax({.strTaxCode = u"A", .dblRate = 100}); },
         R"(<Tax TaxCode="A" Rate=" 100" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {[](Store& s) { s.AddTax({.strTaxCode = u"A", .dblRate = 100.01}); },
         R"(<Tax TaxCode="A" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {[](Store& s) { s.AddTax({.strTaxCode = u"A", .dblRate = -0.5}); },
         R"(<Tax TaxCode="A" UsePOSRebate="0" POSRebateRate=" 0"/>)"},
        {[](Store& s) {
             s.AddMobileUser({u"12345678901234567890", u"", u"a@b", x51, true});
         },
         R"(<MobileUser GUID="12345678901234567890" Description="" Email="a@b" Active="1"/>)"},
        {[](Store& s) {
             s.AddTradingCountry({u"ZA", true});
         },
         R"(<TradingCountry CountryCode="ZA" Deleted="1"/>)"},
        {[](Store& s) { s.AddTradingCountry({u"StringDefault"}); }, R"(<TradingCountry/>)"},
        {[](Store& s) {
             s.AddPaymentMethod({.strPaymentMethodID = u"CREDIT", .intBlnCard = 0, .strPaymentUse = u"business"});
         },
         R"(<PaymentMethod PaymentMethodID="CREDIT" Card="0"/>)"},
        {[](Store& s) {
             s.AddPaymentMethod({u"P", u"N", 1, u"O", 2, u"D", true, u"Business", 1, u"G", u"M"});
         },
         R"(<PaymentMethod PaymentMethodID="P" Name="N" OnlineGateway="1" Overview="O" DefaultAccount="D" Deleted="1" PaymentUse="Business" AllowBudgetAccountPurchases="1" PaymentGatewayCode="G" MerchantID="M"/>)"},
        {[](Store& s) {
             s.AddMessage({u"M1", u"D", u"T", true});
         },
         R"(<Message MessageID="M1" Description="D" MessageText="T" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddSalesRep({u"R", u"Name", u"p'w", false});
         },
         R"(<SalesRep RepCode="R" RepName="Name" Password="p&#39;w"/>)"},
        {[](Store& s) { s.AddPaymentOption({.lngOptionID = 3}); }, R"(<PaymentOption OptionID="3"/>)"},
        {[](Store& s) {
             s.AddPaymentOption({-3, 12, 0.5, 12.5, 0, -0.25, 1e15, true});
         },
         R"(<PaymentOption OptionID="-3" PaymentPeriod="12" FinanceCost="0.5" MonthlyAdmin="1E+15" FinancePercent="-0.25" InterestRate="12.5" AnnualInterest="0" Deleted="1"/>)"},
        {[](Store& s) {
             s.AddMailTo({x51, u"N", u"E", u"D", false, 0});
         },
         R"(<MailTo Name="N" Designation="D" EMail="E" MailUs="0"/>)"},
        {[](Store& s) { s.AddCurrency({.strCurrencyCode = u"USD"}); },
         R"(<Currency CurrencyCode="USD" ExchangeRate=" 1"/>)"},
        {[](Store& s) { s.AddAgeing({}); }, R"(<Ageing/>)"},
        {[](Store& s) {
             s.AddAgeing({.strAgeing2Description = u"30", .strAgeing7Description = u"180", .blnDeleted = true});
         },
         R"(<Ageing Ageing2Description="30" Ageing7Description="180" Deleted="1"/>)"},
    });
    EXPECT_NE(testing::writtenBy([](Store& s) { s.AddTax({x10, x50}); }).find("Description"), std::string::npos);
    EXPECT_EQ(testing::writtenBy([](Store& s) { s.AddTax({x10, x51}); }).find("Description"), std::string::npos);
}

TEST(GeneralMasters, RefuseBadKeysInTheirOwnWords) {
    const char* tax = "The TaxCode may not be less than 1 or more than 10 characters in length.";
    const std::u16string x21(21, u'x');
    const std::u16string x33(33, u'x');
    expectRefused({
        {[](Store& s) { s.AddTax({}); }, applicationError, "Quill1XML.Store.AddTax()", tax},
        {[](Store& s) { s.AddTax({x11}); }, applicationError, "Quill1XML.Store.AddTax()", tax},
        {[&](Store& s) { s.AddMobileUser({x33}); }, applicationError, "Quill1XML.Store.AddTax()",
         "GUID may not be less than 1 or more than 10 characters in length."},
        {[](Store& s) { s.AddPaymentMethod({x11}); }, applicationError, "Quill1XML.Store.AddPaymentMethod()",
         "The PaymentMethodID may not be less than 1 or more than 4 characters in length."},
        {[](Store& s) { s.AddMessage({x11}); }, applicationError, "Quill1XML.Store.AddMessage()",
         "The MessageID may not be less than 1 or more than 10 characters in length."},
        {[&](Store& s) { s.AddSalesRep({x21}); }, applicationError, "Quill1XML.Store.AddSalesRep()",
         "The RepCode may not be less than 1 or more than 20 characters in length."},
        {[](Store& s) { s.AddPaymentOption(); }, applicationError, "Quill1XML.Store.AddPaymentOption()",
         "The option ID may not be equal to 0."},
        {[](Store& s) { s.AddCurrency({x11}); }, applicationError, "Quill1XML.Store.AddCurrency()",
         "The CurrencyCode may not be less than 1 or more than 10 characters in length."},
        {[](Store& s) { s.AddCurrency({.strCurrencyCode = u"A", .dblExchangeRate = 1e15}); }, 6, "Quill1XML",
         "Overflow: the amount is beyond the range of currency"},
    });
}

TEST(GeneralMasters, LogFailuresUnderTheirOwnCaptions) {
    const struct {
        testing::Call call;
        const char16_t* caption;
    } cases[] = {
        {[](Store& s) { s.AddTax({}); }, u"\r\nError Description: The TaxCode"},
        {[](Store& s) { s.AddSalesRep({}); }, u"\r\nError RepName: The RepCode"},
        {[](Store& s) { s.AddPaymentOption({}); }, u"\r\nError RepName: The option"},
        {[](Store& s) { s.AddMailTo({.strRepCode = u"R"}); }, u"\r\nError MailToCode:  Disk full"},
    };
    for (const auto& c : cases) {
        testing::FakeEnvironment fake;
        fake.files->full = true;
        Store store(fake.environment());
        EXPECT_THROW(c.call(store), Error);
        EXPECT_NE(fake.log->entries.back().find(c.caption), std::u16string::npos)
            << testing::utf8(fake.log->entries.back());
    }
}

}  // namespace
}  // namespace quill1xml
