#include "automation/classes.hpp"

#include "automation/names.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "records/record.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

namespace quill1xml::automation {

std::span<const Class* const> classes() {
    static const Class* const all[] = {
        &storeClass(),         &cstringClass(),   &customerClass(),          &orderClass(),
        &orderLineItemClass(), &quotationClass(), &quotationLineItemClass(), &userDefinedFieldClass()};
    return all;
}

namespace {

template <class Name>
const Member* memberNamed(const Class& of, Name name) {
    const int index = indexOf(of.members, of.memberNames, name);
    return index < 0 ? nullptr : &of.members[static_cast<std::size_t>(index)];
}

}  // namespace

const Member* findMember(const Class& of, std::string_view name) { return memberNamed(of, name); }
const Member* findMember(const Class& of, Text name) { return memberNamed(of, name); }

int findParameter(const Member& of, std::string_view name) { return indexOf(of.parameters, of.parameterNames, name); }
int findParameter(const Member& of, Text name) { return indexOf(of.parameters, of.parameterNames, name); }

bool isThreeState(const Member& member, const Parameter& parameter) {
    return parameter.type == ParameterType::integer && !parameter.required &&
           equalIgnoringCase(parameter.name.substr(0, 6), std::string_view("intBln")) &&
           defaultOf<Integer>(member, parameter) == -1;
}

Arguments::Arguments(const Member& member)
    : member_(member),
      storage_(std::make_unique<std::byte[]>(std::max<std::size_t>(member.argumentsSize, 1))),
      set_(member.parameters.size()) {
    if (member.argumentsSize > 0) std::memcpy(storage_.get(), member.defaults, member.argumentsSize);
}

template <class Value>
void Arguments::store(std::size_t parameter, const Value& value) {
    std::memcpy(storage_.get() + member_.parameters[parameter].offset, &value, sizeof value);
    set_[parameter] = true;
}

void Arguments::setText(std::size_t parameter, Text value) {
    texts_.push_back(std::make_unique<std::u16string>(value));
    store(parameter, Text(*texts_.back()));
}

Text parentOf(const Member& method) { return method.record == nullptr ? Text() : method.record->shape.parent; }

Text elementOf(const Member& method) { return method.record == nullptr ? Text() : method.record->element; }

bool continuesElement(const Member& method) {
    return method.record != nullptr && method.record->shape.continuesStartTag;
}

bool hasAttribute(const Member& method, Text attribute) {
    return method.record != nullptr && std::ranges::any_of(method.record->rows, [attribute](const records::Row& row) {
               return row.writes() && row.name() == attribute;
           });
}

void Arguments::lendText(std::size_t parameter, Text value) { store(parameter, value); }

void Arguments::setWhole(std::size_t parameter, std::int64_t value) {
    const auto put = [&]<class Whole>(Whole) {
        if (value < std::numeric_limits<Whole>::min() || value > std::numeric_limits<Whole>::max()) {
            throw runtimeError(RuntimeError::overflow, toUtf16(member_.parameters[parameter].name));
        }
        store(parameter, static_cast<Whole>(value));
    };
    if (member_.parameters[parameter].type == ParameterType::longInteger) {
        put(Long{});
    } else {
        put(Integer{});
    }
}

void Arguments::setDouble(std::size_t parameter, double value) { store(parameter, value); }
void Arguments::setBoolean(std::size_t parameter, bool value) { store(parameter, value); }
void Arguments::setDate(std::size_t parameter, Date value) { store(parameter, value); }
void Arguments::setCurrency(std::size_t parameter, Currency value) { store(parameter, value); }

void Arguments::setNodes(std::size_t parameter, std::vector<Node> nodes) {
    nodes_.push_back(std::make_unique<std::vector<Node>>(std::move(nodes)));
    store(parameter, NodeList(*nodes_.back()));
}

void Arguments::setNodes(std::size_t parameter, std::unique_ptr<const NodeSource> nodes) {
    sources_.push_back(std::move(nodes));
    store(parameter, NodeList(*sources_.back()));
}

void Arguments::requireAll() const {
    for (std::size_t i = 0; i < set_.size(); ++i) {
        if (member_.parameters[i].required && !set_[i]) {
            throw runtimeError(RuntimeError::argumentNotOptional, toUtf16(member_.parameters[i].name));
        }
    }
}

}  // namespace quill1xml::automation
