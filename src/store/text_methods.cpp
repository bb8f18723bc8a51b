#include "store/methods.hpp"

#include "text/date.hpp"

namespace quill1xml::store::bodies {

std::u16string XMLEncode(State& state, const arguments::XMLEncode& arguments) {
    std::u16string text;
    state.xmlText.encode(text, arguments.strUnencoded, arguments.blnEncodeAllExtendedAscii);
    return text;
}

std::u16string XMLDecode(State& state, const arguments::XMLDecode& arguments) {
    std::u16string text;
    state.xmlText.decode(text, arguments.strXMLEncoded, arguments.blnDecodeAllExtendedAscii);
    return text;
}

std::u16string EncodeString(State&, const arguments::EncodeString& arguments) {
    std::u16string text;
    encodeLatin(text, arguments.strUnencoded);
    return text;
}

std::u16string FormatDate(State&, const arguments::FormatDate& arguments) {
    std::u16string text;
    appendDateText(text, arguments.dtmUnformatted);
    return text;
}

}  // namespace quill1xml::store::bodies
