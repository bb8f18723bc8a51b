// Objects over downloaded elements as values of the catalogue.
#pragma once

#include "automation/catalogue.hpp"
#include "quill1xml/entities.hpp"

#include <vector>

namespace quill1xml::automation {

/// Objects as a collection of their nodes, which the host's side makes objects of again. The label is that of the
/// operation that makes the objects.
Value toValue(std::vector<Customer>&& items, std::string_view label = "Method: Quill1XML.Store.Customers()");
Value toValue(std::vector<Order>&& items, std::string_view label = "Method: Quill1XML.Store.Orders()");
Value toValue(std::vector<Quotation>&& items, std::string_view label = "Method: Quill1XML.Store.Quotes()");
Value toValue(std::vector<OrderLineItem>&& items, std::string_view label);
Value toValue(std::vector<QuotationLineItem>&& items, std::string_view label);
Value toValue(std::vector<UserDefinedField>&& items, std::string_view label);

}  // namespace quill1xml::automation
