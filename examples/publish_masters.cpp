// Publishes two tax codes: run it beside `webstore-sandbox`, in a folder with store.xsd from `quill1xml schema`.
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"

#include <iostream>

int main() try {
    quill1xml::Store store;
    store.SetTempFilePath({u"."});
    store.Create({.strWebStoreSchemaSource = u"store.xsd", .lngStoreID = 57, .strName = u"Coffee & Tea"});
    store.AddAdditionalParameters();
    store.AddEnvelope({u"demo", u"demo", u"http://127.0.0.1:8057/upload"});
    store.AddTax({.strTaxCode = u"VAT", .dblRate = 15});
    store.AddTax({.strTaxCode = u"ZERO", .strDescription = u"Zero-rated", .dblRate = 0});
    std::cout << quill1xml::toUtf8(store.Send()) << '\n';
} catch (const quill1xml::Error& error) {
    std::cerr << "error " << error.number() << ": " << error.what() << '\n';
    return 1;
}
