// What fetching orders costs beyond parsing them and reading the same attributes from the tree, in time and memory.
#include "quill1xml/ports.hpp"
#include "quill1xml/store.hpp"
#include "ratio.hpp"
#include "support/temp_folder.hpp"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>

#include <libxml/parser.h>
#include <libxml/tree.h>

namespace {

using namespace quill1xml;

constexpr int orderCount = 10'000;
constexpr int linesPerOrder = 10;

/// One property as the declarations have it.
struct Property {
    std::string name;
    std::string_view type;
};

struct Names {
    std::u16string_view attribute{};
    std::string_view label{};
};

std::string attributeName(std::string_view property, const Names& names) {
    return names.attribute.empty() ? std::string(property)
                                   : std::string(names.attribute.begin(), names.attribute.end());
}

#define PROPERTY(dispid, Type, Name, handling, ...) {attributeName(#Name, Names{__VA_ARGS__}), #Type},
#define COLLECTION(dispid, Name, Class, child, builder)
const std::vector<Property> orderProperties{
#include "quill1xml/entities/order.def"
};
const std::vector<Property> lineProperties{
#include "quill1xml/entities/order_line_item.def"
};
#undef PROPERTY
#undef COLLECTION

std::string attributes(const std::vector<Property>& properties, int number) {
    std::string text;
    for (const auto& [name, type] : properties) {
        text.append(" ").append(name).append("=\"");
        if (type == "Text") text += "Ringstra\u00DFe 12 &amp; Hof";
        if (type == "Date") text += "2008-03-15T14:05:09";
        if (type == "Double") text += "1284.95";
        if (type == "Long") text += std::to_string(number);
        if (type == "Integer") text += "1";
        text += '"';
    }
    return text;
}

std::string ordersDocument() {
    std::string text = "<Store StoreID=\"57\">";
    for (int order = 1; order <= orderCount; ++order) {
        text.append("<Order").append(attributes(orderProperties, order)).append(">");
        for (int line = 1; line <= linesPerOrder; ++line) {
            text.append("<OrderLineItem").append(attributes(lineProperties, line)).append("/>");
        }
        text += "</Order>";
    }
    return text + "</Store>";
}

/// Answers every post with what a file holds, as a server would: bytes that nobody else keeps.
class FileServer : public ports::Http {
public:
    explicit FileServer(std::string file) : file_(std::move(file)) {}

    std::string bytes() const {
        std::ifstream stream(file_, std::ios::binary | std::ios::ate);
        std::string content(static_cast<std::size_t>(stream.tellg()), '\0');
        stream.seekg(0).read(content.data(), static_cast<std::streamsize>(content.size()));
        if (!stream) std::abort();
        return content;
    }

    ports::HttpReply post(Text, std::string_view, std::string_view) override {
        return {200, "text/xml; charset=utf-8", bytes()};
    }
    ports::HttpReply get(Text, const ports::Validators&) override { return {404, {}, {}}; }

private:
    std::string file_;
};

/// What was read, so that no reading can be left out.
std::size_t seen = 0;
void see(const std::u16string& text) { seen += text.size(); }
void see(double number) { seen += number > 0 ? 1 : 0; }
void see(Date date) { see(date.days); }

#define PROPERTY(dispid, Type, Name, ...) see(CLASS.Name());
#define COLLECTION(dispid, Name, Class, child, builder) \
    for (const Class& part : CLASS.Name()) read(part);
#define CLASS item
void read(const UserDefinedField& item) {
#include "quill1xml/entities/user_defined_field.def"
}
void read(const OrderLineItem& item) {
#include "quill1xml/entities/order_line_item.def"
}
void read(const Order& item) {
#include "quill1xml/entities/order.def"
}
#undef CLASS
#undef PROPERTY
#undef COLLECTION

void fetchOrders(Store& store) {
    const auto received = store.ReceiveOrders({57, u"user", u"password", u"http://shop", u"Collection", u""});
    const auto& orders = std::get<std::vector<Order>>(received);
    if (orders.size() != orderCount) std::abort();
    for (const Order& order : orders) read(order);
}

void readTree(xmlNode* element, const std::vector<Property>& properties) {
    for (const Property& property : properties) {
        xmlChar* const value = xmlGetNoNsProp(element, BAD_CAST property.name.c_str());
        seen += static_cast<std::size_t>(xmlStrlen(value));
        xmlFree(value);
    }
}

/// The same with libxml2 alone.
void parseOrders(const FileServer& server) {
    const std::string bytes = server.bytes();
    xmlDoc* const document =
        xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, XML_PARSE_NONET | XML_PARSE_HUGE);
    if (document == nullptr) std::abort();
    for (xmlNode* order = xmlDocGetRootElement(document)->children; order != nullptr; order = order->next) {
        readTree(order, orderProperties);
        for (xmlNode* line = order->children; line != nullptr; line = line->next) readTree(line, lineProperties);
    }
    xmlFreeDoc(document);
}

/// The peak memory of an operation in a process of its own.
template <class Operation>
double peakMegabytes(const Operation& operation) {
    const pid_t child = fork();
    if (child == 0) {
        operation();
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) std::abort();
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

}  // namespace

int main() {
    const testing::TempFolder folder;
    const std::string file = (folder.path() / "orders.xml").string();
    {
        const std::string document = ordersDocument();
        std::ofstream(file, std::ios::binary) << document;
        std::printf("the document has %zu bytes\n", document.size());
    }
    const auto server = std::make_shared<FileServer>(file);
    ports::Environment environment = ports::systemEnvironment();
    environment.http = server;
    Store store(environment);

    // First, while nothing that was freed is still this process's own.
    const double bare = peakMegabytes([&] { parseOrders(*server); });
    const double fetched = peakMegabytes([&] { fetchOrders(store); });
    bench::Ratios ratios(5);
    ratios.add(
        "fetch 10,000 orders / parse them and read the tree", 1.25, [&] { fetchOrders(store); },
        [&] { parseOrders(*server); });
    ratios.run();
    bench::printRatio("  peak memory", 1.2, fetched, bare, "MB");
    if (seen == 0) std::abort();
}
