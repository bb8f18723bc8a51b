#include "command_line/methods.hpp"

#include "command_line/nearest.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

namespace quill1xml::cli {

const automation::Member& methodNamed(const std::string& name) {
    const auto& members = automation::storeClass().members;
    const auto found = std::ranges::find(members, name, &automation::Member::name);
    if (found != members.end()) return *found;
    std::vector<std::string_view> known;
    for (const automation::Member& member : members) known.push_back(member.name);
    throw runtimeError(RuntimeError::unknownMember, toUtf16(unknownName(name, known)));
}

}  // namespace quill1xml::cli
