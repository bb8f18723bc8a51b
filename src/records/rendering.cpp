#include "records/rendering.hpp"

#include "store/file_encoding.hpp"
#include "store/state.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

namespace quill1xml::records {
namespace {

using Out = std::u16string;

void appendAsGiven(Out& out, const Call& call, Field field) { out.append(call.text(field)); }

void appendApostrophesDoubled(Out& out, const Call& call, Field field) {
    for (const char16_t c : call.text(field)) out.append(c == u'\'' ? 2 : 1, c);
}

void appendEscaped(Out& out, const Call& call, Field field) { call.store.xmlText.encode(out, call.text(field), false); }

void appendIntegerText(Out& out, const Call& call, Field field) {
    appendInteger(out, static_cast<std::int64_t>(call.number(field)));
}

void appendNumber(Out& out, const Call& call, Field field) {
    appendNumberText(out, call.number(field), call.store.decimalSeparator);
}

void appendStr(Out& out, const Call& call, Field field) { appendStrText(out, call.number(field)); }

void appendCurrencyStr(Out& out, const Call& call, Field field) { appendStrText(out, call.currency(field)); }

void appendDate(Out& out, const Call& call, Field field) { appendDateText(out, call.date(field)); }

void appendCurrentDate(Out& out, const Call& call, Field) { appendDateText(out, call.store.environment.clock->now()); }

void appendFileContent(Out& out, const Call& call, Field field) {
    out.append(store::encodeImage(call.store, call.text(field)));
}

}  // namespace

constinit const Rendering asGiven{&appendAsGiven, ValueType::text, "as given, not escaped"};
constinit const Rendering apostrophesDoubled{&appendApostrophesDoubled, ValueType::text,
                                             "every apostrophe doubled, not escaped"};
constinit const Rendering escaped{&appendEscaped, ValueType::text, "escaped"};
constinit const Rendering integerText{&appendIntegerText, ValueType::integer, "integer text"};
constinit const Rendering flag{&appendIntegerText, ValueType::flag, "0 or 1"};
constinit const Rendering numberText{&appendNumber, ValueType::localNumber, "number text"};
constinit const Rendering strText{&appendStr, ValueType::number, "Str text"};
constinit const Rendering currencyStrText{&appendCurrencyStr, ValueType::number, "Str text, rounded to 4 decimals"};
constinit const Rendering dateText{&appendDate, ValueType::dateTime, "date text"};
constinit const Rendering currentDateText{&appendCurrentDate, ValueType::dateTime, "the current date and time"};
constinit const Rendering fileContent{&appendFileContent, ValueType::base64, "the file's bytes in base64"};

}  // namespace quill1xml::records
