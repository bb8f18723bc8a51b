// Objects over downloaded elements as values of members.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/entities.hpp"

#include <vector>

namespace quill1xml::automation {

/// Objects as a collection of their nodes and of the host's objects over them.
Value toValue(std::vector<Customer>&& items);
Value toValue(std::vector<Order>&& items);
Value toValue(std::vector<Quotation>&& items);
Value toValue(std::vector<OrderLineItem>&& items);
Value toValue(std::vector<QuotationLineItem>&& items);
Value toValue(std::vector<UserDefinedField>&& items);

}  // namespace quill1xml::automation
