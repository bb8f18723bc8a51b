#include "store/perform.hpp"

#include "text/date.hpp"

namespace quill1xml::store {

std::u16string perform(State& state, const arguments::XMLEncode& arguments) {
    std::u16string text;
    state.xmlText.encode(text, arguments.strUnencoded, arguments.blnEncodeAllExtendedAscii);
    return text;
}

std::u16string perform(State& state, const arguments::XMLDecode& arguments) {
    std::u16string text;
    state.xmlText.decode(text, arguments.strXMLEncoded, arguments.blnDecodeAllExtendedAscii);
    return text;
}

std::u16string perform(State&, const arguments::EncodeString& arguments) {
    std::u16string text;
    encodeLatin(text, arguments.strUnencoded);
    return text;
}

std::u16string perform(State&, const arguments::FormatDate& arguments) {
    std::u16string text;
    appendDateText(text, arguments.dtmUnformatted);
    return text;
}

}  // namespace quill1xml::store
