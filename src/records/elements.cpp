#include "records/elements.hpp"

#include "quill1xml/text.hpp"

#include <algorithm>

namespace quill1xml::records {
namespace {

/// The values 0 and 1 of flags and three-state integers.
std::vector<std::string> noAndYes() { return {"0", "1"}; }

void applyTest(AttributeModel& model, const Test& test) {
    switch (test.kind) {
        case Test::Kind::length:
            model.minimum = test.minimum;
            if (test.maximum != notEmpty.tests[0].test.maximum) model.maximum = test.maximum;
            break;
        case Test::Kind::oneOf:
            for (const auto word : test.words) model.words.push_back(toUtf8(word));
            break;
        case Test::Kind::range:
            if (model.type == AttributeType::integer && test.low == 0 && test.high == 1) model.words = noAndYes();
            break;
        case Test::Kind::isTrue: model.words = {"1"}; break;
        default: break;
    }
}

AttributeModel modelOf(const Row& row) {
    AttributeModel model{.name = toUtf8(row.name()), .required = row.kind == RowKind::key};
    if (row.rendering == nullptr) {
        if (row.fixed.empty()) {
            model.mayBeEmpty = true;
        } else {
            model.words = {toUtf8(row.fixed)};
        }
        return model;
    }
    model.type = row.rendering->valueType;
    if (model.type == AttributeType::flag) model.words = noAndYes();
    for (const ResolvedTest& resolved : row.conditions()) {
        const bool own = resolved.field.offset == row.field.offset && !row.any;
        if (own && row.kind != RowKind::otherwise) applyTest(model, resolved.test);
    }
    return model;
}

/// Adds a row to the attributes of its element. Of two rows of one name the first tells type and limits; the second
/// can only add the empty value.
void addRow(ElementModel& element, const Row& row) {
    if (!row.writes()) return;
    AttributeModel model = modelOf(row);
    const auto same = std::ranges::find(element.attributes, model.name, &AttributeModel::name);
    if (same == element.attributes.end()) {
        element.attributes.push_back(std::move(model));
    } else {
        same->mayBeEmpty = same->mayBeEmpty || model.mayBeEmpty;
    }
}

std::vector<ElementModel> build() {
    std::vector<ElementModel> all;
    for (const Record* record : allRecords()) {
        const std::string name = toUtf8(record->element);
        auto element = std::ranges::find(all, name, &ElementModel::name);
        if (element == all.end()) {
            all.push_back({name, toUtf8(record->shape.parent), record->shape.isRoot, {}});
            element = all.end() - 1;
        }
        for (const Row& row : record->rows) addRow(*element, row);
    }
    std::stable_partition(all.begin(), all.end(), [](const ElementModel& element) { return element.isRoot; });
    return all;
}

}  // namespace

const AttributeModel* ElementModel::find(std::string_view attribute) const {
    const auto found = std::ranges::find(attributes, attribute, &AttributeModel::name);
    return found == attributes.end() ? nullptr : &*found;
}

std::span<const Record* const> allRecords() {
    static const Record* const all[] = {
#define RECORD(dispid, Name, summary) &Name,
#define BUILDER(dispid, Result, Name, summary) &Name,
#include "quill1xml/methods/all.def"
    };
    return all;
}

const std::vector<ElementModel>& elements() {
    static const std::vector<ElementModel> all = build();
    return all;
}

}  // namespace quill1xml::records
