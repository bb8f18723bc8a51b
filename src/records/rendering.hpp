// How an attribute's value is written.
#pragma once

#include "quill1xml/error.hpp"
#include "store/parameters.hpp"
#include "text/text_buffer.hpp"

#include <string_view>

namespace quill1xml::store {
struct State;
}

namespace quill1xml::records {

/// A parameter of the call that is being written.
struct Field {
    ParameterType type = ParameterType::text;
    std::uint16_t offset = 0;
    bool present = false;  ///< false for attributes that no parameter feeds
};

/// One call: the argument struct and the store it was made on.
struct Call {
    store::State& store;
    const void* arguments;

    Text text(Field field) const { return value<Text>(field); }

    Date date(Field field) const { return value<Date>(field); }

    /// Of any numeric field. Throws error 6 beyond the range.
    Currency currency(Field field) const {
        return field.type == ParameterType::currency ? value<Currency>(field) : Currency::fromDouble(number(field));
    }

    /// Of any numeric, date or flag field; true is 1.
    double number(Field field) const {
        switch (field.type) {
            case ParameterType::integer:
            case ParameterType::variantInteger: return value<Integer>(field);
            case ParameterType::longInteger: return value<Long>(field);
            case ParameterType::floating: return value<Double>(field);
            case ParameterType::boolean: return value<Boolean>(field) ? 1 : 0;
            case ParameterType::date: return value<Date>(field).days;
            case ParameterType::currency: return static_cast<double>(value<Currency>(field).tenThousandths) / 10000;
            case ParameterType::text:
            case ParameterType::variantText:
            case ParameterType::node:
            case ParameterType::nodeList: break;
        }
        throw runtimeError(RuntimeError::internalError, u"a text was read as a number");
    }

private:
    template <class Value>
    const Value& value(Field field) const {
        return *reinterpret_cast<const Value*>(static_cast<const unsigned char*>(arguments) + field.offset);
    }
};

/// What a schema says of a value.
enum class AttributeType : std::uint8_t {
    text,
    integer,
    number,       ///< "." as point, a leading blank allowed
    localNumber,  ///< with the decimal separator of the user's settings
    dateTime,
    flag,  ///< 0 or 1
    base64,
};

struct Rendering {
    void (*append)(TextBuffer& out, const Call& call, Field field);
    AttributeType valueType;
    std::string_view description;  ///< for the manual
};

/// Appends an encoded text.
void appendEncoded(TextBuffer& out, const Call& call, Text text, bool allExtended);

extern const Rendering asGiven;
extern const Rendering apostrophesDoubled;
extern const Rendering escaped;
extern const Rendering escapedAll;
extern const Rendering trimmedEscaped;
extern const Rendering guidBody;
extern const Rendering integerText;
extern const Rendering absoluteInteger;
extern const Rendering integerFromText;
extern const Rendering strFromText;
extern const Rendering flag;
extern const Rendering numberText;
extern const Rendering strText;
extern const Rendering currencyStrText;
extern const Rendering dateText;
extern const Rendering currentDateText;
extern const Rendering fileContent;

}  // namespace quill1xml::records
