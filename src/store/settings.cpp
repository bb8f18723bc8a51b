#include "store/going_on.hpp"
#include "store/perform.hpp"
#include "text/blanks.hpp"

#include <algorithm>

namespace quill1xml::store {

void perform(State& state, const arguments::SetTempFilePath& arguments) {
    std::u16string path(arguments.strTempFilePath);
    std::ranges::replace(path, u'/', u'\\');
    const Text trimmed = trimBlanks(path);
    // Blanks around a path that ends in "\" belong to it; they go only with the added separator.
    if (!trimmed.ends_with(u'\\')) path = std::u16string(trimmed) + u'\\';
    state.tempFilePath = std::move(path);
    if (state.journal) holdFolder(state);
}

void perform(State& state, const arguments::SetStoreID& arguments) { state.storeId = arguments.lngStoreID; }

void perform(State& state, const arguments::SetPacketSize& arguments) {
    state.packetSize = arguments.lngPacketSize < 2 ? 1000 : arguments.lngPacketSize;
}

void perform(State& state, const arguments::SetStrict& arguments) { state.strict = arguments.blnStrict; }

}  // namespace quill1xml::store
