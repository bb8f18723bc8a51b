// The members of the collections that hosts get.

#include "automation/classes.hpp"
#include "automation/names.hpp"

namespace quill1xml::automation {
namespace {

constexpr Parameter index[] = {{"Index", ParameterType::variantInteger, true, 0}};
constexpr auto indexNames = tableOfNames(index);
constexpr Parameter addition[] = {{"Item", ParameterType::variantText, true, 0},
                                  {"Key", ParameterType::variantText, false, 0},
                                  {"Before", ParameterType::variantText, false, 0},
                                  {"After", ParameterType::variantText, false, 0}};
constexpr auto additionNames = tableOfNames(addition);

constexpr Member members[] = {
    {.dispid = collection_ids::item,
     .name = "Item",
     .kind = MemberKind::propertyGet,
     .result = ResultType::variant,
     .summary = "The object at a place, counted from 1, or of a key.",
     .parameters = index,
     .parameterNames = indexNames},
    {.dispid = collection_ids::add,
     .name = "Add",
     .summary = "Adds something, at the end or before or after a place or key.",
     .parameters = addition,
     .parameterNames = additionNames},
    {.dispid = collection_ids::count,
     .name = "Count",
     .kind = MemberKind::propertyGet,
     .result = ResultType::longInteger,
     .summary = "How many objects there are."},
    {.dispid = collection_ids::remove,
     .name = "Remove",
     .summary = "Takes away what is at a place or has a key.",
     .parameters = index,
     .parameterNames = indexNames},
    {.dispid = collection_ids::newEnum,
     .name = "_NewEnum",
     .kind = MemberKind::propertyGet,
     .result = ResultType::enumerator,
     .summary = "What \"For Each\" asks for."},
};
constexpr auto memberNames = tableOfNames(members);

}  // namespace

const Class& collectionClass() {
    static constexpr Class described{
        .name = "Collection", .summary = "Objects in their order.", .members = members, .memberNames = memberNames};
    return described;
}

}  // namespace quill1xml::automation
