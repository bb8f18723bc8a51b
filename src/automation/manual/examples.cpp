#include "automation/manual/examples.hpp"

#include "automation/manual/parameter_lists.hpp"
#include "quill1xml/arguments.hpp"

#include <algorithm>

namespace quill1xml::automation {
namespace {

struct Example {
    std::string_view method;
    const void* arguments;
};

/// The one example of an argument struct.
template <class Arguments>
const void* kept(const Arguments& given) {
    static const Arguments arguments = given;
    return &arguments;
}

Text orderExample() {
    static const std::u16string list = parameterList("AddOrder", {{"OrderNumber", "1001"},
                                                                  {"Order", "2024-06-01T14:30:00"},
                                                                  {"EMailAddress", "ann@customer.example"},
                                                                  {"ShippingContactName", "Ann Lee"},
                                                                  {"ShippingAddressLine1", "12 Park Row"},
                                                                  {"ShippingCity", "Leeds"},
                                                                  {"ShippingCountryCode", "GB"},
                                                                  {"OrderStatus", "Confirmed"},
                                                                  {"ShippingCost", "4.9"},
                                                                  {"BlnOnlinePaymentUsed", "1"}});
    return list;
}

Text quotationExample() {
    static const std::u16string list = parameterList("AddQuotation", {{"QuoteNumber", "301"},
                                                                      {"QuoteDate", "2024-06-01"},
                                                                      {"EMail", "ann@customer.example"},
                                                                      {"ContactName", "Ann Lee"},
                                                                      {"City", "Leeds"},
                                                                      {"CountryCode", "GB"},
                                                                      {"AdditionalInfo", "With our logo, please."}});
    return list;
}

}  // namespace

const void* exampleArguments(const Member& method) {
    static const Example examples[] = {
#define EXAMPLE(Name, ...) {#Name, kept(arguments::Name{__VA_ARGS__})},
#include "automation/manual/examples.def"
#undef EXAMPLE
    };
    const auto found = std::ranges::find(examples, method.name, &Example::method);
    return found == std::end(examples) ? nullptr : found->arguments;
}

}  // namespace quill1xml::automation
