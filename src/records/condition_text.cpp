#include "records/condition_text.hpp"

#include "quill1xml/text.hpp"
#include "text/numbers.hpp"

#include <limits>

namespace quill1xml::records {
namespace {

std::string inDigits(double value) {
    std::u16string text;
    appendNumberText(text, value, u".");
    return toUtf8(text);
}

std::string lengthText(const Test& test) {
    const bool open = test.maximum == std::numeric_limits<std::uint32_t>::max();
    if (open) return "not empty";
    if (test.minimum == test.maximum) return "exactly " + std::to_string(test.maximum) + " characters";
    if (test.minimum == 0) return "at most " + std::to_string(test.maximum) + " characters";
    return std::to_string(test.minimum) + " to " + std::to_string(test.maximum) + " characters";
}

}  // namespace

std::string textOf(const Test& test) {
    switch (test.kind) {
        case Test::Kind::notDefault: return "given";
        case Test::Kind::length: return lengthText(test);
        case Test::Kind::oneOf: {
            std::string words;
            for (const auto word : test.words) {
                words.append(words.empty() ? "one of " : ", ").append("\"").append(toUtf8(word)).append("\"");
            }
            return words;
        }
        case Test::Kind::notBlank: return "not blank";
        case Test::Kind::imageName: return "ends in .gif, .jpg or .jpeg";
        case Test::Kind::range:
            if (test.high == std::numeric_limits<double>::infinity()) return inDigits(test.low) + " or more";
            return inDigits(test.low) + " to " + inDigits(test.high);
        case Test::Kind::above: return "above " + inDigits(test.low);
        case Test::Kind::otherThan: return "not " + inDigits(test.low);
        case Test::Kind::notLowest: return "not the most negative number";
        case Test::Kind::given: return "given";
        case Test::Kind::isTrue: return "True";
        case Test::Kind::isFalse: return "False";
        case Test::Kind::notBefore: return "not before ";
    }
    return {};
}

std::string_view parameterAt(std::span<const Parameter> parameters, Field field) {
    const auto found = std::ranges::find(parameters, field.offset, &Parameter::offset);
    return field.present && found != parameters.end() ? found->name : std::string_view();
}

}  // namespace quill1xml::records
