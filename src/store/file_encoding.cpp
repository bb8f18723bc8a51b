#include "store/file_encoding.hpp"

#include "store/methods.hpp"
#include "store/trap.hpp"
#include "text/base64.hpp"

namespace quill1xml::store {

std::u16string encodeImage(State& state, Text fileName) {
    return trapped(state, {"Method: Quill1XML.Store.EncodeImage()"}, [&] {
        std::u16string text;
        if (!fileName.empty()) appendBase64(text, state.environment.files->readBytes(fileName));
        return text;
    });
}

Bytes bodies::ReadBinData(State& state, const arguments::ReadBinData& arguments) {
    Bytes bytes = state.environment.files->readBytes(arguments.strFileName);
    if (bytes.empty()) {
        throw runtimeError(RuntimeError::subscriptOutOfRange,
                           u"the file \"" + std::u16string(arguments.strFileName) + u"\" is empty");
    }
    return bytes;
}

}  // namespace quill1xml::store
