// What a store schema must accept and refuse, whichever dialect it is written in.
#pragma once

#include "automation/catalogue.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/store.hpp"
#include "records/elements.hpp"
#include "store/schema_source.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"
#include "support/temp_folder.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace quill1xml::testing {

/// The generated schema in the hands of the system's parser.
class SchemaJudge {
public:
    explicit SchemaJudge(SchemaDialect dialect)
        : schema_(store::loadSchema(ports::systemEnvironment(),
                                    folder_.create(dialect == SchemaDialect::xsd ? u"WebStore.xsd" : u"WebStore.xdr",
                                                   storeSchema(dialect)))) {}

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

/// Fills every parameter of a record method with something that its conditions let through: words of enumerations, the
/// longest texts.
inline void fill(automation::Arguments& arguments, const automation::Member& member) {
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        const Parameter& parameter = member.parameters[i];
        std::u16string text = u"1";
        for (const records::Row& row : member.record->rows) {
            for (const auto& [test, field, other] : row.conditions()) {
                if (!row.field.present || field.offset != parameter.offset) continue;
                using Kind = records::Test::Kind;
                if (test.kind == Kind::oneOf) text = test.words.front();
                if (test.kind == Kind::imageName) text = u"1.jpg";
                if (test.kind == Kind::length && test.maximum < 1000) text = std::u16string(test.maximum, u'1');
            }
        }
        switch (parameter.type) {
            case ParameterType::text:
            case ParameterType::variantText: arguments.setText(i, text); break;
            case ParameterType::integer:
            case ParameterType::variantInteger:
            case ParameterType::longInteger: arguments.setWhole(i, 1); break;
            case ParameterType::floating: arguments.setDouble(i, 0.5); break;
            case ParameterType::currency: arguments.setCurrency(i, Currency{5000}); break;
            case ParameterType::boolean: arguments.setBoolean(i, true); break;
            case ParameterType::date: arguments.setDate(i, Date::of(2007, 3, 5, 14, 7, 9)); break;
            case ParameterType::node:
            case ParameterType::nodeList: break;
        }
    }
}

/// Calls every record method with all its parameters, in interface order, so that records of several calls are closed
/// by their Lock methods; holds what is written against the schema.
inline void expectEveryRecordAccepted(SchemaDialect dialect) {
    SchemaJudge judge(dialect);
    FakeEnvironment fake;
    fake.files->bytes = {{u"1", {1}}, {u"1.jpg", {1}}};
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    for (const automation::Member& member : automation::storeClass().members) {
        automation::Arguments arguments(member);
        if (member.record == &records::AddOrder) {
            arguments.setText(0, orderList({}));
        } else if (member.record == &records::AddQuotation) {
            arguments.setText(0, quotationList({}));
        } else if (member.record != nullptr && !member.record->shape.isRoot && member.record->element != u"Envelope") {
            fill(arguments, member);
        } else if (!member.name.starts_with("Lock")) {
            continue;
        }
        EXPECT_NO_THROW(member.invoke(&store, arguments.data())) << member.name;
    }
    std::u16string all;
    for (const auto& [name, text] : fake.files->texts) {
        EXPECT_EQ(judge.objection(u"<Store xmlns=\"WebStore\" StoreID=\"1\">" + text + u"</Store>"), "") << utf8(text);
        all += text;
    }
    for (const records::ElementModel& element : records::elements()) {
        if (element.isRoot || element.name == "Envelope") continue;
        EXPECT_NE(all.find(u"<" + toUtf16(element.name) + u" "), std::u16string::npos) << element.name;
    }
}

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
        {u"<Tax TaxCode='A' Description='12345678901234567890123456789012345678901234567890'/>", true},
        {u"<Tax TaxCode='A' Description='123456789012345678901234567890123456789012345678901'/>", false, true},
        {u"<Tax TaxCode='A' Rate=' 12.5' POSRebateRate='-.5'/>", true},
        {u"<Tax TaxCode='A' Rate=' .5' POSRebateRate=' 1.5E-16'/>", true},
        {u"<Tax TaxCode='A' Rate=' 1E+15'/>", true},
        {u"<Tax TaxCode='A' Rate='12,5'/>", false},
        {u"<Tax TaxCode='A' Rate='many'/>", false},
        {u"<Tax TaxCode='A' Rate=''/>", false},
        {u"<Tax TaxCode='A' UsePOSRebate='2'/>", false},
        {u"<Tax TaxCode='A' Deleted='0'/>", false},
        {u"<Tax TaxCode='A' taxCode='A'/>", false},
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
