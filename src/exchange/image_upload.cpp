// SendImage: image files, one request each.

#include "exchange/last_failure.hpp"
#include "exchange/receipt.hpp"
#include "quill1xml/text.hpp"
#include "store/perform.hpp"
#include "text/base64.hpp"
#include "text/numbers.hpp"
#include "text/xml_attribute.hpp"

namespace quill1xml::store {
namespace {

/// The request for one file. A deletion needs the name only.
std::u16string imageRequest(State& state, const arguments::SendImage& arguments, Text name) {
    std::u16string text = u"<?xml version=\"1.0\"?>\r\n<Store";
    appendXmlAttribute(text, u"xmlns:dt", u"urn:schemas-microsoft-com:datatypes");
    appendXmlAttribute(text, u"StoreID", arguments.lngStoreID);
    appendXmlAttribute(text, u"UserName", arguments.strUserName);
    appendXmlAttribute(text, u"Password", arguments.strPassword);
    std::u16string thumbnail;
    appendInteger(thumbnail, arguments.intblnCreateThumbNail);
    appendXmlAttribute(text, u"CreateThumbnail", thumbnail);
    appendXmlAttribute(text, u"UploadFolder", arguments.strUploadFolder);
    if (arguments.blnDeleted) appendXmlAttribute(text, u"Deleted", u"True");
    text.append(u"><Image");
    appendXmlAttribute(text, u"dt:dt", u"bin.base64");
    appendXmlAttribute(text, u"ImageName", name);
    text.push_back(u'>');
    if (!arguments.blnDeleted) {
        const std::u16string fileName = std::u16string(arguments.strPath) + u"\\" + std::u16string(name);
        appendBase64(text, run(state, arguments::ReadBinData{fileName}));
    }
    return text.append(u"</Image></Store>");
}

}  // namespace

Long perform(State& state, const arguments::SendImage& arguments) {
    if (arguments.strDestinationURL.empty()) {
        throw Error(applicationError, u"Quill1XML.Store.SendImage()", u"No Destination URL has been specified.");
    }
    const std::u16string pattern = std::u16string(arguments.strPath) + u"\\" + std::u16string(arguments.strFileSpec);
    state.packetUnderWay.clear();
    exchange::accounted(state, [&] {
        for (const std::u16string& name : state.environment.files->list(pattern)) {
            auto reply =
                exchange::post(state, arguments.strDestinationURL, toUtf8(imageRequest(state, arguments, name)));
            exchange::readReceipt(*state.environment.xml, std::move(reply));
            state.answer = {};  // what fails from here on is not the server's fault
        }
    });
    return toLong(arguments.lngStoreID);
}

}  // namespace quill1xml::store
