// Objects over downloaded elements as values of members.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/entities.hpp"
#include "store/labels.hpp"

#include <vector>

namespace quill1xml::automation {

/// Objects as a collection of their nodes, which the host's side makes objects of again. The label is that of the
/// operation that makes the objects.
Value toValue(std::vector<Customer>&& items, std::string_view label = store::labels::of<arguments::Customers>.text);
Value toValue(std::vector<Order>&& items, std::string_view label = store::labels::of<arguments::Orders>.text);
Value toValue(std::vector<Quotation>&& items, std::string_view label = store::labels::of<arguments::Quotations>.text);
Value toValue(std::vector<OrderLineItem>&& items, std::string_view label);
Value toValue(std::vector<QuotationLineItem>&& items, std::string_view label);
Value toValue(std::vector<UserDefinedField>&& items, std::string_view label);

}  // namespace quill1xml::automation
