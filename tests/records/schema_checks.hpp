// What a store schema must accept and refuse, whichever dialect it is written in.
#pragma once

#include "quill1xml/ports.hpp"
#include "quill1xml/schema.hpp"
#include "store/schema_source.hpp"
#include "support/temp_folder.hpp"
#include "support/text_printer.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quill1xml::testing {

/// The generated schema in the hands of the system's parser.
class SchemaJudge {
public:
    explicit SchemaJudge(SchemaDialect dialect)
        : schema_(store::SchemaSource().load(
              ports::systemEnvironment(),
              folder_.create(dialect == SchemaDialect::xsd ? u"100% #1.xsd" : u"100% #1.xdr", storeSchema(dialect)))) {}

    /// Why a document is refused; empty when it is valid.
    std::string objection(Text document) {
        ports::ParseError error;
        const auto parsed = xml_->parse({{document}}, schema_, error);
        if (parsed != nullptr) error = parsed->validate();
        return error ? utf8(error.reason) + " (" + utf8(error.sourceText) + ")" : std::string();
    }

private:
    std::shared_ptr<ports::Xml> xml_ = ports::systemEnvironment().xml;
    TempFolder folder_;
    std::shared_ptr<ports::Schema> schema_;
};

/// Documents on either side of what the schema allows.
inline void expectJudgement(SchemaDialect dialect) {
    const struct {
        const char16_t* records;  ///< inside the root
        bool accepted;
        bool inXsdOnly = false;  ///< the reduced dialect cannot say it, or not every parser of it heeds lengths
    } cases[] = {
        {u"", true},
        {u"<Envelope DateCreated='2007-03-05T14:07:09' UserName='u' Password='' VersionNumber='2.0.00'/>", true},
        {u"<Envelope UserName='u'/><Tax TaxCode='A'/><Message MessageID='1'/><Tax TaxCode='B' Deleted='1'/>", true},
        {u"<Envelope UserName='u'/><Envelope UserName='u'/>", false},
        {u"<Tax TaxCode='A'/><Envelope UserName='u'/>", false},
        {u"<Envelope DateCreated='yesterday' UserName='u'/>", false},
        {u"<Envelope UserName='u' DocumentNumber='1.5'/>", false},
        {u"<Tax/>", false},
        {u"<Tax TaxCode=''/>", false, true},
        {u"<Tax TaxCode='1234567890'/>", true},
        {u"<Tax TaxCode='12345678901'/>", false, true},
        {u"<Tax TaxCode='A' Rate=' 1E+15' POSRebateRate=' 1.5E-16'/>", true},
        {u"<Tax TaxCode='A' Rate=' .5' POSRebateRate='-.5'/>", true},
        {u"<Tax TaxCode='A' Rate='12,5'/>", false, true},
        {u"<Tax TaxCode='A' Rate='many'/>", false, true},
        {u"<Tax TaxCode='A' Rate=''/>", false, true},
        {u"<Tax TaxCode='A' UsePOSRebate='2'/>", false},
        {u"<Tax TaxCode='A' Deleted='0'/>", false},
        {u"<Tax TaxCode='A' Colour='red'/>", false},
        {u"<Tax TaxCode='A'>text</Tax>", false},
        {u"<Tax TaxCode='A'><Tax TaxCode='B'/></Tax>", false},
        {u"<Colour Name='red'/>", false},
        {u"<PaymentMethod PaymentMethodID='P' PaymentUse='Business'/>", true},
        {u"<PaymentMethod PaymentMethodID='P' PaymentUse='business'/>", false},
        {u"<PaymentOption OptionID='1' FinanceCost='0.5' InterestRate='-12,25' MonthlyAdmin='1E+15'/>", true},
        {u"<PaymentOption OptionID='one'/>", false},
        {u"<Product SKU='A' Price1='' Price2=' 12.5'/>", true},
        {u"<Product SKU='A' Price1='free'/>", false, true},
    };
    SchemaJudge judge(dialect);
    for (const auto& c : cases) {
        if (c.inXsdOnly && dialect == SchemaDialect::xdr) continue;
        const std::string objection = judge.objection(u"<Store xmlns='WebStore' StoreID='1' Status='Open'>" +
                                                      std::u16string(c.records) + u"</Store>");
        EXPECT_EQ(objection.empty(), c.accepted) << utf8(c.records) << " " << objection;
    }
    for (const Text root : {u"<Store xmlns='WebStore'/>", u"<Store xmlns='WebStore' StoreID='none'/>",
                            u"<Store xmlns='WebStore' StoreID='1' Status='open'/>", u"<Tax xmlns='WebStore'/>"}) {
        EXPECT_NE(judge.objection(root), "") << utf8(root);
    }
}

}  // namespace quill1xml::testing
