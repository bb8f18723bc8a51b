// A downloaded document through every method, form and property: a content type in the first line, then the body.
#include "automation/classes.hpp"
#include "fuzz.hpp"
#include "quill1xml/store.hpp"

using namespace quill1xml;

namespace {

constexpr Text url = u"http://shop";
constexpr std::size_t mostNodes = 8;  // of one name, so that a run stays short

void append(std::vector<Node>& nodes, const std::vector<Node>& more) {
    nodes.insert(nodes.end(), more.begin(),
                 more.begin() + static_cast<std::ptrdiff_t>(std::min(mostNodes, more.size())));
}

/// Elements worth an object: the root, what the methods select, and their lines and values.
std::vector<Node> nodesOf(const Document& document) {
    std::vector<Node> nodes{Node(document.document()->root())};
    for (const Text path : {u"Store/Order", u"Store/DebtorStaff", u"Store/Quote"}) append(nodes, document.select(path));
    const std::vector<Node> records = nodes;
    for (const Node& record : records) {
        for (const Text name : {u"OrderLineItem", u"UserDefinedFieldValue", u"QuoteLineItem"}) {
            append(nodes, record.children(name));
        }
    }
    return nodes;
}

void readAll(const automation::Class& of, const Node& node, const ports::Environment& environment) {
    const auto object = of.create(environment);
    for (const automation::Member& member : of.members) {
        automation::Arguments arguments(member);
        if (member.kind == automation::MemberKind::method) arguments.setNodes(0, {node});
        fuzz::attempt([&] { member.invoke(object.get(), arguments.data()); });
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [type, body] = fuzz::firstLine(fuzz::textOf(data, size));
    fuzz::World world;
    world.xml->archive = u"A";
    world.http->replies.assign(6, {200, std::string(type), std::string(body)});
    const ports::Environment environment = world.environment();
    Store store(environment);
    fuzz::attempt([&] { store.ReceiveCustomers({1, u"u", u"p", url, u"Collection", u"A"}); });
    fuzz::attempt([&] { store.ReceiveQuotations({1, u"u", u"p", url, u"Collection", u""}); });
    fuzz::attempt([&] { store.ReceiveOrders({1, u"u", u"p", url, u"Collection", u""}); });
    fuzz::attempt([&] { store.ReceiveOrders({1, u"u", u"p", url, u"XMLString", u""}); });
    fuzz::attempt([&] { store.ReceiveOfflineProductList({1, u"a@b", url, u"none", u"A"}); });
    fuzz::attempt([&] {
        const auto received = store.ReceiveOfflineProductList({1, u"a@b", url, u"XMLDOMDocument", u""});
        for (const Node& node : nodesOf(std::get<Document>(received))) {
            for (const automation::Class* of :
                 {&automation::customerClass(), &automation::orderClass(), &automation::orderLineItemClass(),
                  &automation::quotationClass(), &automation::quotationLineItemClass(),
                  &automation::userDefinedFieldClass()}) {
                readAll(*of, node, environment);
            }
        }
    });
    world.inspect();
    return 0;
}
