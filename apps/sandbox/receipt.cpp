#include "receipt.hpp"

#include "escape.hpp"

#include <utility>

namespace quill1xml::sandbox {

Refusal::Refusal(std::int32_t number, std::string source, std::string description)
    : number_(number), source_(std::move(source)), description_(std::move(description)) {}

Refusal::Refusal(RefusalNumber number, std::string source, std::string description)
    : Refusal(static_cast<std::int32_t>(number), std::move(source), std::move(description)) {}

std::string Refusal::receipt() const {
    return "<Receipt><Error Number=\"" + std::to_string(number_) + "\" Source=\"" + escaped(source_) +
           "\" Description=\"" + escaped(description_) + "\"/></Receipt>";
}

std::string acceptedReceipt(std::int64_t importNumber) {
    return "<Receipt ImportNumber=\"" + std::to_string(importNumber) +
           "\"><Error Number=\"0\" Source=\"\" Description=\"\"/></Receipt>";
}

std::string acceptedReceipt() { return "<Receipt><Error Number=\"0\" Source=\"\" Description=\"\"/></Receipt>"; }

}  // namespace quill1xml::sandbox
