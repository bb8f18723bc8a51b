#include "store/packets.hpp"

#include "store/methods.hpp"
#include "store/trap.hpp"

namespace quill1xml::store {
namespace {

constexpr Text extension = u".tmp";

void useDefaultFolder(State& state) {
    if (state.tempFilePath.empty()) state.tempFilePath = u"C:\\";
}

}  // namespace

std::u16string tempFileName(const State& state, Text kind) {
    return std::u16string(state.tempFilePath).append(kind).append(extension);
}

void appendToTempFile(State& state, Text text, Text kind, bool overwrite) {
    trapped(state, {"Method: Quill1XML.Store.AppendToTempFile()"}, [&] {
        useDefaultFolder(state);
        state.fileName.assign(state.tempFilePath).append(kind).append(extension);
        if (overwrite) {
            state.environment.files->writeText(state.fileName, text);
        } else {
            state.environment.files->appendText(state.fileName, text);
        }
    });
}

void bodies::CleanupTempFiles(State& state, const arguments::CleanupTempFiles& arguments) {
    std::u16string pattern(state.tempFilePath);
    pattern.append(arguments.strFileName.empty() ? Text(u"WebStore") : arguments.strFileName).append(u"*.tmp");
    for (const std::u16string& name : state.environment.files->list(pattern)) {
        state.environment.files->remove(state.tempFilePath + name);
    }
}

}  // namespace quill1xml::store
