#include "command_line/record_table.hpp"

#include "command_line/harmless_text.hpp"
#include "command_line/objects.hpp"
#include "command_line/text_table.hpp"
#include "quill1xml/text.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

#include <array>
#include <charconv>
#include <optional>
#include <vector>

namespace quill1xml::cli {
namespace {

using automation::Collection;
using automation::ResultType;

/// The number that stands for an absent one.
constexpr int absent = -1;

/// Two to four decimals.
std::u16string amountText(double amount) {
    // Room for the digits of the largest double.
    std::array<char, 330> digits{};
    const char* end =
        std::to_chars(digits.data(), digits.data() + digits.size(), amount, std::chars_format::fixed, 4).ptr;
    for (int spare = 0; spare < 2 && end[-1] == '0'; ++spare) --end;
    return toUtf16({digits.data(), static_cast<std::size_t>(end - digits.data())});
}

/// The control characters of a shopper's text show as blanks.
std::u16string cellText(std::u16string text) {
    for (char16_t& c : text) {
        if (c < u' ' || (c >= u'\u007F' && c < u'\u00A0')) c = u' ';
    }
    return harmless(text);
}

struct Shown {
    std::u16string operator()(const std::u16string& text) const { return cellText(text); }
    std::u16string operator()(Long number) const {
        std::u16string text;
        if (number != absent) appendInteger(text, number);
        return text;
    }
    std::u16string operator()(Integer number) const { return (*this)(Long{number}); }
    std::u16string operator()(Double number) const { return number == absent ? std::u16string() : amountText(number); }
    std::u16string operator()(Date date) const {
        std::u16string text;
        if (date == Date{}) return text;
        appendDateText(text, date);
        text[text.find(u'T')] = u' ';
        return text.substr(0, text.rfind(u':'));
    }
    std::u16string operator()(const auto&) const { return {}; }
};

std::u16string totalOf(const Collection& lines) {
    std::optional<double> total;
    forEachObject(lines, [&total](const Object& line) {
        const double price = std::get<Double>(line.get("Price"));
        const Long quantity = std::get<Long>(line.get("Quantity"));
        if (price != absent && quantity != absent) total = total.value_or(0) + price * quantity;
    });
    return total ? amountText(*total) : std::u16string();
}

std::u16string cellOf(const Object& object, const Column& column) {
    const automation::Value value = object.get(column.property);
    switch (column.show) {
        case Show::value: break;
        case Show::count: return toUtf16(std::to_string(std::get<Collection>(value).nodes.size()));
        case Show::total: return totalOf(std::get<Collection>(value));
    }
    return std::visit(Shown{}, value);
}

Cells cellsOf(const automation::Class& itemClass, const Column& column) {
    switch (automation::findMember(itemClass, column.property)->result) {
        case ResultType::text: return Cells::text;
        case ResultType::date: return Cells::date;
        default: return Cells::number;
    }
}

}  // namespace

std::string recordTable(const Collection& records, const RecordTable& declaration, std::size_t width) {
    std::vector<TableColumn> columns;
    std::vector<TableRow> rows;
    const auto addRow = [&](const Object& object) {
        TableRow& row = rows.emplace_back();
        for (const Column& column : declaration.columns) {
            if (rows.size() == 1) columns.push_back({toUtf16(column.title), cellsOf(object.itemClass(), column)});
            row.push_back(cellOf(object, column));
        }
    };
    forEachObject(records, [&](const Object& record) {
        if (declaration.rows.empty()) {
            addRow(record);
        } else {
            forEachObject(std::get<Collection>(record.get(declaration.rows)), addRow);
        }
    });
    const std::string count =
        std::to_string(rows.size()) + ' ' + std::string(rows.size() == 1 ? declaration.one : declaration.many) + '\n';
    return rows.empty() ? count : layOut(columns, rows, width) + '\n' + count;
}

}  // namespace quill1xml::cli
