#include "records/rendering.hpp"

#include "store/file_encoding.hpp"
#include "store/state.hpp"
#include "text/blanks.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

#include <cstdlib>

namespace quill1xml::records {

void appendEncoded(TextBuffer& out, const Call& call, Text text, bool allExtended) {
    char16_t* const to = out.room((text.size() + 1) * XmlText::longestReplacement);
    out.endAt(call.store.xmlText.write(to, text, allExtended));
}

namespace {

using Out = TextBuffer;

void appendWhole(Out& out, std::int64_t value) { out.endAt(writeInteger(out.room(longestNumber), value)); }

template <class Number>
void appendStrForm(Out& out, Number value) {
    out.endAt(writeStrText(out.room(longestNumber), value));
}

void appendAsGiven(Out& out, const Call& call, Field field) { out.append(call.text(field)); }

void appendApostrophesDoubled(Out& out, const Call& call, Field field) {
    for (const char16_t c : call.text(field)) {
        out.push(c);
        if (c == u'\'') out.push(c);
    }
}

void appendEscaped(Out& out, const Call& call, Field field) { appendEncoded(out, call, call.text(field), false); }

void appendEscapedAll(Out& out, const Call& call, Field field) { appendEncoded(out, call, call.text(field), true); }

void appendTrimmedEscaped(Out& out, const Call& call, Field field) {
    appendEncoded(out, call, trimBlanks(call.text(field)), false);
}

/// Characters 2 to 37: a GUID without its braces.
void appendGuidBody(Out& out, const Call& call, Field field) {
    const Text text = call.text(field);
    if (!text.empty()) out.append(text.substr(1, 36));
}

void appendIntegerFromText(Out& out, const Call& call, Field field) {
    appendWhole(out, toLong(call.text(field), call.store.decimalSeparator));
}

void appendStrFromText(Out& out, const Call& call, Field field) {
    appendStrForm(out, toDouble(call.text(field), call.store.decimalSeparator));
}

void appendIntegerText(Out& out, const Call& call, Field field) {
    appendWhole(out, static_cast<std::int64_t>(call.number(field)));
}

void appendAbsoluteInteger(Out& out, const Call& call, Field field) {
    appendWhole(out, std::abs(static_cast<std::int64_t>(call.number(field))));
}

void appendNumber(Out& out, const Call& call, Field field) {
    out.endAt(writeNumberText(out.room(longestNumber), call.number(field), call.store.decimalSeparator));
}

void appendStr(Out& out, const Call& call, Field field) { appendStrForm(out, call.number(field)); }

void appendCurrencyStr(Out& out, const Call& call, Field field) { appendStrForm(out, call.currency(field)); }

void appendDate(Out& out, const Call& call, Field field) {
    out.endAt(writeDateText(out.room(dateTextSize), call.date(field)));
}

void appendCurrentDate(Out& out, const Call& call, Field) {
    out.endAt(writeDateText(out.room(dateTextSize), call.store.environment.clock->now()));
}

void appendFileContent(Out& out, const Call& call, Field field) {
    out.append(store::encodeImage(call.store, call.text(field)));
}

}  // namespace

constinit const Rendering asGiven{&appendAsGiven, AttributeType::text, "as given, not escaped"};
constinit const Rendering apostrophesDoubled{&appendApostrophesDoubled, AttributeType::text,
                                             "every apostrophe doubled, not escaped"};
constinit const Rendering escaped{&appendEscaped, AttributeType::text, "escaped"};
constinit const Rendering escapedAll{&appendEscapedAll, AttributeType::text, "escaped, with all extended characters"};
constinit const Rendering trimmedEscaped{&appendTrimmedEscaped, AttributeType::text, "trimmed, then escaped"};
constinit const Rendering guidBody{&appendGuidBody, AttributeType::text, "characters 2 to 37, not escaped"};
constinit const Rendering integerFromText{&appendIntegerFromText, AttributeType::integer,
                                          "the text read as a whole number"};
constinit const Rendering strFromText{&appendStrFromText, AttributeType::number, "the text read as a number, Str text"};
constinit const Rendering integerText{&appendIntegerText, AttributeType::integer, "integer text"};
constinit const Rendering flag{&appendIntegerText, AttributeType::flag, "0 or 1"};
constinit const Rendering absoluteInteger{&appendAbsoluteInteger, AttributeType::integer, "its absolute value"};
constinit const Rendering numberText{&appendNumber, AttributeType::localNumber, "number text"};
constinit const Rendering strText{&appendStr, AttributeType::number, "Str text"};
constinit const Rendering currencyStrText{&appendCurrencyStr, AttributeType::number, "Str text, rounded to 4 decimals"};
constinit const Rendering dateText{&appendDate, AttributeType::dateTime, "date text"};
constinit const Rendering currentDateText{&appendCurrentDate, AttributeType::dateTime, "the current date and time"};
constinit const Rendering fileContent{&appendFileContent, AttributeType::base64, "the file's bytes in base64"};

}  // namespace quill1xml::records
