#include "store/file_encoding.hpp"

#include "store/perform.hpp"
#include "text/base64.hpp"

namespace quill1xml::store {

std::u16string encodeImage(State& state, Text fileName) {
    return logged(state, labels::encodeImage, [&] {
        std::u16string text;
        if (!fileName.empty()) appendBase64(text, state.environment.files->readBytes(fileName));
        return text;
    });
}

Bytes perform(State& state, const arguments::ReadBinData& arguments) {
    Bytes bytes = state.environment.files->readBytes(arguments.strFileName);
    if (bytes.empty()) {
        throw runtimeError(RuntimeError::subscriptOutOfRange,
                           u"the file \"" + std::u16string(arguments.strFileName) + u"\" is empty");
    }
    return bytes;
}

}  // namespace quill1xml::store
