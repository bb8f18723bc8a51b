#include "automation/manual/notation.hpp"

#include "quill1xml/text.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

#include <algorithm>

namespace quill1xml::automation {
namespace {

constexpr std::size_t lineWidth = 96;

std::string numberText(double value) {
    std::u16string text;
    appendNumberText(text, value, u".");
    return toUtf8(text);
}

/// "2024-06-01", and the time of day where there is one, after the separator.
std::string dateText(Date date, char separator) {
    std::u16string text;
    appendDateText(text, date);
    std::string utf8 = toUtf8(text);
    utf8[10] = separator;
    if (utf8.ends_with("00:00:00")) utf8.resize(10);
    return utf8;
}

std::string cppDate(Date date) {
    const CalendarTime time = toCalendar(date);
    std::string text("quill1xml::Date::of(");
    const int parts[] = {time.year, time.month, time.day, time.hour, time.minute, time.second};
    const bool midnight = time.hour == 0 && time.minute == 0 && time.second == 0;
    for (const int part : std::span(parts).first(midnight ? 3 : 6)) {
        if (!text.ends_with('(')) text += ", ";
        text += std::to_string(part);
    }
    return text + ")";
}

std::string scriptText(std::string_view text) {
    std::string quoted("\"");
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

std::string textLiteral(Notation notation, const std::string& text) {
    if (notation == Notation::script) return scriptText(text);
    if (notation == Notation::job) return jsonText(text);
    std::string literal;
    for (const std::string& piece : pieces(text)) {
        literal += (literal.empty() ? "u" : "\n    u") + jsonText(piece);
    }
    return literal.empty() ? "u\"\"" : literal;
}

std::string dateLiteral(Notation notation, Date date) {
    switch (notation) {
        case Notation::job: return "\"" + dateText(date, 'T') + "\"";
        case Notation::script: return "#" + dateText(date, ' ') + "#";
        case Notation::cpp: break;
    }
    return cppDate(date);
}

std::string flagLiteral(Notation notation, bool flag) {
    if (notation == Notation::script) return flag ? "True" : "False";
    return flag ? "true" : "false";
}

bool isGiven(const Member& member, const Parameter& parameter, const void* arguments) {
    const auto differs = [&]<class Value>(const Value& value) { return value != defaultOf<Value>(member, parameter); };
    if (parameter.required) return true;
    switch (parameter.type) {
        case ParameterType::text:
        case ParameterType::variantText: return differs(valueOf<Text>(arguments, parameter));
        case ParameterType::integer:
        case ParameterType::variantInteger: return differs(valueOf<Integer>(arguments, parameter));
        case ParameterType::longInteger: return differs(valueOf<Long>(arguments, parameter));
        case ParameterType::floating: return differs(valueOf<Double>(arguments, parameter));
        case ParameterType::boolean: return differs(valueOf<Boolean>(arguments, parameter));
        case ParameterType::date: return differs(valueOf<Date>(arguments, parameter));
        case ParameterType::currency: return differs(valueOf<Currency>(arguments, parameter));
        case ParameterType::node:
        case ParameterType::nodeList: break;
    }
    return false;
}

/// The arguments, separated and broken into lines.
std::string joined(const std::vector<std::string>& arguments, std::size_t used, std::string_view lineBreak) {
    std::string text;
    for (const std::string& argument : arguments) {
        if (!text.empty()) text += ",";
        if (used + argument.size() + 2 > lineWidth && !text.empty()) {
            text += lineBreak;
            used = 4;
        } else if (!text.empty()) {
            text += " ";
        }
        text += argument;
        used += argument.size() + 2;
    }
    return text;
}

bool takesNodes(const Member& member) {
    return std::ranges::any_of(member.parameters, [](const Parameter& parameter) {
        return parameter.type == ParameterType::node || parameter.type == ParameterType::nodeList;
    });
}

std::string jobCall(const Member& member, const void* arguments) {
    std::string text;
    for (const Parameter& parameter : member.parameters) {
        if (!isGiven(member, parameter, arguments)) continue;
        text += (text.empty() ? "\"" : ",\"") + std::string(parameter.name) +
                "\":" + literal(Notation::job, parameter, arguments);
    }
    return "{\"" + std::string(member.name) + "\":{" + text + "}}";
}

/// Where a received document holds the elements.
std::string_view path(const Parameter& parameter) {
    if (parameter.name == "lstCustomer") return "\"Store/DebtorStaff\"";
    return parameter.name == "lstOrders" ? "\"Store/Order\"" : "\"Store/Quote\"";
}

/// A long text goes into a variable first: lines of a script are short, and few may be continued.
std::string scriptArgument(const Parameter& parameter, const void* arguments, std::string& before) {
    if (parameter.type == ParameterType::nodeList) return "document.selectNodes(" + std::string(path(parameter)) + ")";
    std::string text = literal(Notation::script, parameter, arguments);
    if (text.size() <= lineWidth) return text;
    for (const std::string& piece : pieces(toUtf8(valueOf<Text>(arguments, parameter)))) {
        before += (before.empty() ? "list = " : "list = list & ") + scriptText(piece) + "\n";
    }
    return "list";
}

std::string scriptCall(const Member& member, const void* arguments) {
    std::string before;
    std::vector<std::string> given;
    std::size_t count = 0;
    for (const Parameter& parameter : member.parameters) {
        const bool here = isGiven(member, parameter, arguments);
        given.push_back(here ? scriptArgument(parameter, arguments, before) : std::string());
        if (here) count = given.size();
    }
    given.resize(count);
    const bool object = member.result == ResultType::collection || member.result == ResultType::received;
    const bool function = member.result != ResultType::nothing;
    std::string text = std::string(!function ? "" : object ? "Set result = " : "result = ") + "store.";
    text.append(member.name).append(function ? "(" : given.empty() ? "" : " ");
    text += joined(given, text.size(), " _\n    ");
    return before + text + (function ? ")" : "");
}

std::string cppCall(const Member& member, const void* arguments) {
    std::vector<std::string> given;
    for (const Parameter& parameter : member.parameters) {
        if (!isGiven(member, parameter, arguments)) continue;
        given.push_back("." + std::string(parameter.name) + " = " + literal(Notation::cpp, parameter, arguments));
    }
    std::string text(member.result == ResultType::nothing ? "store." : "const auto result = store.");
    text.append(member.name).append("(");
    if (given.empty()) return text + ");";
    return text + "{" + joined(given, text.size(), "\n    ") + "});";
}

}  // namespace

std::vector<std::string> pieces(const std::string& text) {
    std::vector<std::string> all;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = text.size();
        if (end - begin > lineWidth - 10) {
            const std::size_t blank = text.rfind(' ', begin + lineWidth - 10);
            if (blank != std::string::npos && blank > begin) end = blank + 1;
        }
        all.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return all;
}

std::string jsonText(std::string_view text) {
    std::string quoted("\"");
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + "\"";
}

std::string literal(Notation notation, const Parameter& parameter, const void* arguments) {
    switch (parameter.type) {
        case ParameterType::text:
        case ParameterType::variantText: return textLiteral(notation, toUtf8(valueOf<Text>(arguments, parameter)));
        case ParameterType::integer:
        case ParameterType::variantInteger: return std::to_string(valueOf<Integer>(arguments, parameter));
        case ParameterType::longInteger: return std::to_string(valueOf<Long>(arguments, parameter));
        case ParameterType::floating: return numberText(valueOf<Double>(arguments, parameter));
        case ParameterType::boolean: return flagLiteral(notation, valueOf<Boolean>(arguments, parameter));
        case ParameterType::date: return dateLiteral(notation, valueOf<Date>(arguments, parameter));
        case ParameterType::currency: {
            const auto amount = static_cast<double>(valueOf<Currency>(arguments, parameter).tenThousandths) / 10000;
            return notation == Notation::cpp ? "quill1xml::Currency::fromDouble(" + numberText(amount) + ")"
                                             : numberText(amount);
        }
        case ParameterType::node:
        case ParameterType::nodeList: break;
    }
    return {};
}

std::string callText(Notation notation, const Member& member, const void* arguments) {
    if (takesNodes(member) && notation != Notation::script) return {};
    switch (notation) {
        case Notation::job: return jobCall(member, arguments);
        case Notation::script: return scriptCall(member, arguments);
        case Notation::cpp: break;
    }
    return cppCall(member, arguments);
}

}  // namespace quill1xml::automation
