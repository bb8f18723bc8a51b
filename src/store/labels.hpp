// The fixed texts of the event log's entries: every method, internal operation and class stands here.
#pragma once

#include "quill1xml/arguments.hpp"

#include <string_view>

namespace quill1xml::store {

/// The fixed texts of the entries of one method or operation.
struct Label {
    std::string_view text{};                           ///< the last line
    std::string_view caption = "Error Description: ";  ///< what stands before the description
    std::string_view member{};                         ///< goes on the last line, with the suffix
    std::string_view suffix = ".Get";
};

namespace labels {

// ---- Methods. Several name another method than the one running: they are promises to whoever reads the log.

/// The label of a method that does not have the usual one, "Method: Quill1XML.Store.<name>()".
template <class Arguments>
inline constexpr Label own{};

template <>
inline constexpr Label own<arguments::SetTempFilePath>{"Method: Quill1XML.Store.TempFilePath"};
template <>
inline constexpr Label own<arguments::SetStoreID>{"Method: Quill1XML.Store.SetStoreID"};
template <>
inline constexpr Label own<arguments::SetPacketSize>{"Method: Quill1XML.Store.SetPacketSize"};
template <>
inline constexpr Label own<arguments::CustomerXML>{"Method: Quill1XML.Store.XML()"};
template <>
inline constexpr Label own<arguments::QuoteXML>{"Method: Quill1XML.Store.XML()"};
template <>
inline constexpr Label own<arguments::EncodeString>{"Method: Quill1XML.EncodeString()"};
template <>
inline constexpr Label own<arguments::FormatDate>{"Method: Quill1IO.FormatDate()"};
template <>
inline constexpr Label own<arguments::SendImage>{"Method: Quill1XML.StoreImage.Send()"};
template <>
inline constexpr Label own<arguments::ReceiveQuotations>{"Method: Quill1XML.Store.ReceiveQuotes()"};
template <>
inline constexpr Label own<arguments::Quotations>{"Method: Quill1XML.Store.Quotes()"};
template <>
inline constexpr Label own<arguments::AddExternalOrderLineItem>{"Method: Quill1XML.Store.AddExternalOrder()"};
template <>
inline constexpr Label own<arguments::AddSalesRep>{.caption = "Error RepName: "};
template <>
inline constexpr Label own<arguments::AddPaymentOption>{.caption = "Error RepName: "};
template <>
inline constexpr Label own<arguments::AddMailTo>{.caption = "Error MailToCode:  "};

/// The label of a method by its arguments.
template <class Arguments>
inline constexpr Label of{};

constexpr Label orUsual(Label label, std::string_view usual) {
    if (label.text.empty()) label.text = usual;
    return label;
}

#define METHOD(dispid, Result, Name, summary) \
    template <>                               \
    inline constexpr Label of<arguments::Name> = orUsual(own<arguments::Name>, "Method: Quill1XML.Store." #Name "()");
#include "quill1xml/methods/all.def"

// ---- Operations inside methods

inline constexpr Label appendToTempFile{"Method: Quill1XML.Store.AppendToTempFile()"};
inline constexpr Label encodeImage{"Method: Quill1XML.Store.EncodeImage()"};
inline constexpr Label load{"Method: Quill1XML.Store.Load()"};
inline constexpr Label validate{"Method: Quill1XML.Store.Validate()"};
inline constexpr Label sendFile{"Method: Quill1XML.Store.SendFile()"};

// ---- Classes of downloaded records: the name of a property or of what makes its collection follows

inline constexpr std::string_view customer = "Method: Quill1XML.Customer.";
inline constexpr std::string_view order = "Method: Quill1XML.Order.";
inline constexpr std::string_view orderLineItem = "Method: Quill1XML.OrderLineItem.";
inline constexpr std::string_view quotation = "Method: Quill1XML.Quotation.";
inline constexpr std::string_view quotationLineItem = "Method: Quill1XML.QuoteLineItem.";
inline constexpr std::string_view userDefinedField = "Method: Quill1XML.UserDefinedField.";

}  // namespace labels
}  // namespace quill1xml::store
