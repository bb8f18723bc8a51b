// Gives a Store an HTTP client, a log and a clock of the program's own, and publishes through them without a network.
// Run it in an empty folder.
#include "quill1xml/schema.hpp"
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"

#include <fstream>
#include <iostream>

namespace {

using namespace quill1xml;

/// Stands for the HTTP client of a program that has its own; here it is the web store at once.
class OwnHttp : public ports::Http {
public:
    ports::HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
        std::cout << "post of " << contentType << " to " << toUtf8(url) << ": " << body.size() << " bytes\n";
        return {200,
                "text/xml",
                "<Receipt ImportNumber='" + std::to_string(++imports_) + "'><Error Number='0'/></Receipt>",
                {}};
    }
    ports::HttpReply get(Text url, const ports::Validators&) override {
        throw Error(applicationError, u"OwnHttp", u"nothing to get at " + std::u16string(url));
    }

private:
    int imports_ = 0;
};

class OwnLog : public ports::EventLog {
public:
    void writeError(Text text) noexcept override { std::cout << "log: " << toUtf8(text) << '\n'; }
};

class OwnClock : public ports::Clock {
public:
    Date now() override { return Date::of(2007, 3, 5, 14, 7, 9); }
};

}  // namespace

int main() try {
    std::ofstream("store.xsd") << storeSchema(SchemaDialect::xsd);
    ports::Environment environment = ports::systemEnvironment();
    environment.http = std::make_shared<OwnHttp>();
    environment.log = std::make_shared<OwnLog>();
    environment.clock = std::make_shared<OwnClock>();

    Store store(environment);
    store.SetTempFilePath({u"."});
    store.Create({.strWebStoreSchemaSource = u"store.xsd", .lngStoreID = 57});
    store.AddAdditionalParameters();
    store.AddEnvelope({u"demo", u"demo", u"http://shop.example/upload"});
    store.AddTax({.strTaxCode = u"VAT", .dblRate = 15});
    std::cout << toUtf8(store.Send()) << '\n';
    store.AddTax({});
} catch (const quill1xml::Error& error) {
    std::cout << "error " << error.number() << ": " << error.what() << '\n';
}
