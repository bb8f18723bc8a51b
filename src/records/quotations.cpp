// Quotations: built over several calls and written by LockQuote.

#include "records/parameter_list.hpp"
#include "records/record.hpp"
#include "store/perform.hpp"

#include <utility>

namespace quill1xml {
namespace records {
namespace {

void openQuote(store::State& store, const Record&, std::u16string_view startTag) { store.openQuote = startTag; }

void addLine(store::State& store, const Record&, std::u16string_view element) {
    store.quoteLines.append(u"\r\n").append(element);
}

}  // namespace

// clang-format off

const Record AddQuotation = record<QuotationList>(u"Quote", [] { return rows(
    key      ("QuoteNumber",    "QuoteNumber",    atLeast(1),                 integerText,
              u"The Quotation Number must be a positive integer."),
    attribute("QuoteDate",      "QuoteDate",      dateGiven,                  dateText),
    attribute("EMailAddress",   "EMail",          notDefault && atMost(255),  escapedAll),
    attribute("ContactName",    "ContactName",    notDefault && atMost(150),  escapedAll),
    attribute("ContactNumber",  "ContactNumber",  notDefault && atMost(50),   escaped),
    attribute("ContactNumber2", "ContactNumber2", notDefault && atMost(50),   escaped),
    numbered<1, 4>(
        attribute("AddressLine#", "AddressLine#", notDefault && atMost(50),   escaped)),
    attribute("City",           "City",           notDefault && atMost(50),   escapedAll),
    attribute("PostalCode",     "PostalCode",     notDefault && atMost(20),   escaped),
    attribute("StateProvince",  "StateProvince",  notDefault && atMost(30),   escaped),
    attribute("CountryCode",    "CountryCode",    length(1, 3),               escaped),
    attribute("AdditionalInfo", "AdditionalInfo", notDefault && atMost(1000), escapedAll),
    attribute("NearestPort",    "NearestPort",    notDefault && atMost(50),   escaped),
    attribute("NearestAirport", "NearestAirport", notDefault && atMost(50),   escaped),
    attribute("Currency",       "QuoteCurrency",  notDefault && atMost(50),   escaped),
    attribute("DeliveryMethod", "DeliveryMethod", notDefault && atMost(50),   escaped),
    attribute("DebtorID",       "DebtorID",       notDefault && atMost(50),   escaped),
    attribute("Exported",       "BlnExported",    noOrYes,                    integerText)); },
    {.end = u">", .carriesStoreId = true, .delivery = openQuote});

const Record AddQuoteLineItem = record<arguments::AddQuoteLineItem>(u"QuoteLineItem", [] { return rows(
    attribute("SKU",         "strSKU",         notDefault && length(1, 255), escaped),
    attribute("Quantity",    "lngQuantity",    above(-1),                    integerText),
    attribute("Description", "strDescription", notDefault && atMost(100),    escapedAll)); },
    {.parent = u"Quote", .delivery = addLine});

// clang-format on

}  // namespace records

namespace store {

void perform(State& state, const arguments::AddQuotation& arguments) {
    state.lastFailure.clear();
    if (!state.openQuote.empty()) {
        // Oddity: the source names the order method.
        throw Error(applicationError, u"Quill1XML.Store.AddOrder()",
                    u"A new Quote may not be added if an existing one is still unlocked.");
    }
    records::TextStore texts;
    const auto quote = records::readParameterList<QuotationList>(state, arguments.strXMLParameterList, texts);
    records::write(state, records::AddQuotation, &quote);
}

void perform(State& state, const arguments::LockQuote&) {
    if (state.openQuote.empty()) {
        // Oddity: the source is spelled so.
        throw Error(applicationError, u"Quill1XML.Store.LockQuoter()",
                    u"No Quote has been created, or the current Quote has already been Locked.");
    }
    const std::u16string quote =
        u"\r\n" + std::exchange(state.openQuote, {}) + std::exchange(state.quoteLines, {}) + u"</Quote>";
    records::appendToPacket(state, records::AddQuotation, quote);
}

}  // namespace store
}  // namespace quill1xml
