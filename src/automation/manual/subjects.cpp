#include "automation/manual/subjects.hpp"

#include "automation/manual/markdown.hpp"

#include <algorithm>

namespace quill1xml::automation {
namespace {

/// Families have numbers of their own: each begins where the one before it ends.
struct Subject {
    Long first;
    std::string_view name;
};

constexpr Subject subjects[] = {
    {1, "Settings"},
    {11, "Head of a job"},
    {21, "Documents"},
    {31, "Texts and files"},
    {41, "Sending"},
    {51, "Fetching"},
    {101, "General masters"},
    {201, "Couriers"},
    {301, "Catalogue"},
    {401, "Products"},
    {501, "Prices and discounts"},
    {601, "Ledger and suppliers"},
    {701, "Orders"},
    {722, "Orders from elsewhere"},
    {741, "Quotations"},
    {801, "Order documents and stages"},
    {901, "Open items"},
    {1001, "Debtors"},
    {1101, "Statements and history"},
    {firstExtension, "Extensions"},
};

}  // namespace

std::string_view subjectOf(const Member& method) {
    const auto after = std::ranges::upper_bound(subjects, method.dispid, {}, &Subject::first);
    return after == std::begin(subjects) ? std::string_view() : std::prev(after)->name;
}

std::string subjectTable() {
    std::string out = "| Subject | Methods |\n|---|---|\n";
    std::string_view subject;
    for (const Member& method : storeClass().members) {
        const bool begins = subjectOf(method) != subject;
        if (begins) out.append(subject.empty() ? "| " : " |\n| ").append(subject = subjectOf(method)).append(" | ");
        out += (begins ? "" : ", ") + code(method.name);
    }
    return out + " |\n\n";
}

}  // namespace quill1xml::automation
