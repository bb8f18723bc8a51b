#include "automation/manual/parameter_lists.hpp"

#include "automation/manual/attribute_text.hpp"
#include "automation/manual/markdown.hpp"
#include "automation/manual/notation.hpp"
#include "automation/manual/playground.hpp"
#include "quill1xml/text.hpp"
#include "records/record.hpp"
#include "records/words.hpp"
#include "store/parameters.hpp"

#include <algorithm>
#include <stdexcept>

namespace quill1xml::automation {
namespace {

/// The text of a value that is not known, which leaves its attribute out.
std::string_view noValue(ParameterType type) {
    switch (type) {
        case ParameterType::text: return "StringDefault";
        case ParameterType::date: return "1899-12-30T00:00:00";
        default: return "-1";
    }
}

const Member& listMethod(std::string_view method) {
    const Member* const found = findMember(storeClass(), method);
    if (found == nullptr || !takesList(*found)) throw std::logic_error("no method with a list");
    return *found;
}

std::string attributeRow(const records::Record& record, const Parameter& parameter) {
    const auto row = std::ranges::find_if(record.rows, [&](const records::Row& each) {
        return each.field.present && each.field.offset == parameter.offset && each.writes();
    });
    if (row == record.rows.end()) throw std::logic_error("a value of a list that no attribute takes");
    return "| " + code(parameter.name) + " | " + std::string(typeNames[static_cast<std::size_t>(parameter.type)]) +
           " | " + (parameter.required ? code(noValue(parameter.type)) : "leave it out") + " | " +
           code(toUtf8(row->name())) + " | " + cell(conditionText(record, *row)) + " |\n";
}

/// The attribute of a date in an element that the play wrote; empty without one.
std::string datedAttribute(const std::string& element) {
    const std::size_t end = element.find("Date=\"");
    if (end == std::string::npos) return {};
    const std::size_t begin = element.rfind(' ', end) + 1;
    return element.substr(begin, end + 4 - begin);
}

/// What an update sends of an order, under the condition that it has there.
std::string updateRow(std::string_view attribute, std::string_view from) {
    const auto row = std::ranges::find(records::AddOrder.rows, toUtf16(attribute), &records::Row::name);
    if (row == records::AddOrder.rows.end()) throw std::logic_error("orders have no such attribute");
    const bool empty = attribute == "CreditCardPinNumber";
    return "| " + code(attribute) + " | " + std::string(from) + " | " +
           (empty ? "always" : cell(conditionText(records::AddOrder, *row))) + " |\n";
}

}  // namespace

bool takesList(const Member& member) {
    return member.record != nullptr && !member.parameters.empty() &&
           member.parameters.data() != member.record->parameters.data();
}

std::u16string parameterList(std::string_view method, const std::map<std::string_view, std::string_view>& given) {
    const records::Record& record = *listMethod(method).record;
    std::string list = "<" + toUtf8(record.element);
    for (const Parameter& parameter : record.parameters) {
        const auto value = given.find(parameter.name);
        if (value == given.end() && !parameter.required) continue;
        list.append(" ").append(parameter.name).append("='");
        list.append(value == given.end() ? noValue(parameter.type) : value->second).append("'");
    }
    return toUtf16(list + "/>");
}

std::string listSection(const Member& member) {
    const records::Record& record = *member.record;
    std::string out = "The list is one XML element of any name. Each of these attributes must be there, in any order";
    const bool withOption = std::ranges::any_of(record.parameters, [](const auto& each) { return !each.required; });
    out += withOption ? ", but the one that says so" : "";
    out +=
        ". The text under \"no value\" stands for a value that is not known: its attribute is not sent.\n\n"
        "Numbers have the decimal separator of the user's settings, on Linux a point; a comma that is not the "
        "separator groups three digits. `Long` and `Integer` round to the nearest whole number, halves to even. Dates "
        "are written yyyy-MM-dd or yyyy-MM-ddThh:mm:ss. As everywhere in XML, `&`, `<` and the quote around a value "
        "are written as `&amp;`, `&lt;` and `&apos;` or `&quot;`.\n\n"
        "| In the list | Type | No value | Becomes | Written when |\n|---|---|---|---|---|\n";
    for (const Parameter& parameter : record.parameters) out += attributeRow(record, parameter);
    const std::string_view key = record.element == u"Order" ? "OrderNumber" : "QuoteNumber";
    std::string list;
    for (const std::string& piece : pieces(toUtf8(parameterList(member.name, {{key, "1001"}})))) list += piece + "\n";
    return out + "\nThe list to paste:\n\n" + fenced("xml", list);
}

std::string updateSection() {
    std::string out =
        "Writes an element `Order` through `AddOrder` and `LockOrder`. What else the store holds of the order is not "
        "sent. It fails while an order is open; lines and field values that were added while none was open become part "
        "of it.\n\n| Attribute | From | Written when |\n|---|---|---|\n";
    const struct {
        std::string_view attribute;
        std::string_view from;
    } rows[] = {{"OrderNumber", "`lngOrderNumber`"},
                {"WaybillNumber", "`strWaybillNumber`"},
                {"OrderStatus", "`strOrderStatus`"},
                {"CreditCardPinNumber", "always empty"}};
    for (const auto& [attribute, from] : rows) out += updateRow(attribute, from);
    out += "\n| Status | Date that it adds |\n|---|---|\n";
    const Member& update = *findMember(storeClass(), std::string_view("UpdateOrder"));
    for (const Text status : records::orderStatuses) {
        Playground playground;
        const arguments::UpdateOrder arguments{.lngOrderNumber = 1, .strOrderStatus = status};
        playground.call(update, &arguments);
        const std::string date = datedAttribute(playground.written());
        out += "| " + code(toUtf8(status)) + " | " + (date.empty() ? "none" : code(date) + ", the time of the call") +
               " |\n";
    }
    return out + "\nA word in another case adds its date, but sends no status; any other word sends neither.\n\n";
}

}  // namespace quill1xml::automation
