#include "quill1xml/json_values.hpp"

#include "quill1xml/text.hpp"
#include "text/base64.hpp"

namespace quill1xml::cli {
namespace {

struct Converter {
    nlohmann::json operator()(std::monostate) const { return nullptr; }
    nlohmann::json operator()(Long number) const { return number; }
    nlohmann::json operator()(const std::u16string& text) const { return toUtf8(text); }
    nlohmann::json operator()(const Bytes& bytes) const {
        std::u16string text;
        appendBase64(text, bytes);
        return toUtf8(text);
    }
};

}  // namespace

nlohmann::json toJson(const automation::Value& value) { return std::visit(Converter{}, value); }

}  // namespace quill1xml::cli
