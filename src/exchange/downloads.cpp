// Downloads: customers, orders, quotations and offline product lists, and objects over their elements.

#include "exchange/last_failure.hpp"
#include "exchange/receipt.hpp"
#include "quill1xml/text.hpp"
#include "store/items.hpp"
#include "store/perform.hpp"
#include "store/required.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"
#include "text/reply_text.hpp"

#include <algorithm>
#include <type_traits>

namespace quill1xml::store {
namespace {

/// What one download does differently from the others.
struct Download {
    Text source;       ///< of its errors
    Text loadFailure;  ///< description when the reply is no XML
    Text path;         ///< of the elements of a collection
    bool hasReceipt;   ///< a refusal is looked for
};

constexpr Download customers{u"Quill1XML.Store.ReceiveCustomers()", u"Store Customers XML failed to load.",
                             u"Store/DebtorStaff", true};
constexpr Download orders{u"Quill1XML.Store.ReceiveOrders()", u"Store Order XML failed to load.", u"Store/Order", true};
constexpr Download quotations{u"Quill1XML.Store.ReceiveQuotes()", u"Store Quote XML failed to load.", u"Store/Quote",
                              true};
constexpr Download offlineProducts{u"Quill1XML.Store.ReceiveOfflineProductList()",
                                   u"Offline Product List XML failed to load.", u"Store/Order", false};

/// The digits of a date and time without separators, for a file name. Other text only loses its "-" and ":".
std::u16string stampOf(const std::u16string& dateCreated) {
    std::u16string stamp;
    try {
        appendDateText(stamp, Date::fromText(dateCreated));
    } catch (const Error&) {
        stamp = dateCreated;
    }
    std::erase_if(stamp, [](char16_t c) { return c == u'-' || c == u':'; });
    if (stamp.find_first_of(u"\\/") != std::u16string::npos || stamp.find(u"..") != std::u16string::npos) {
        throw runtimeError(RuntimeError::pathFileAccess,
                           u"the reply's DateCreated \"" + dateCreated + u"\" would lead out of the archive folder");
    }
    return stamp;
}

void archive(const ports::Document& document, Text folder) {
    const auto root = requiredElement(document, u"Store");
    std::u16string fileName(folder);
    fileName.append(u"\\WebStore");
    appendInteger(fileName, toLong(requiredAttribute(*root, u"StoreID")));
    const auto envelope = requiredElement(document, u"Store/Envelope");
    fileName.append(u"-").append(stampOf(requiredAttribute(*envelope, u"DateCreated"))).append(u".xml");
    document.save(fileName);
}

/// "StoreID=57&UserName=...": values go in as they are, that is the contract with the server.
std::u16string form(Long storeId, std::initializer_list<std::pair<Text, Text>> fields) {
    std::u16string text = u"StoreID=";
    appendInteger(text, storeId);
    for (const auto& [name, value] : fields) text.append(u"&").append(name).append(u"=").append(value);
    return text;
}

std::shared_ptr<ports::Document> fetch(State& state, const Download& download, Text url, Text body) {
    ports::HttpReply reply = exchange::post(state, url, toUtf8(body));
    ports::ParseError parseError;
    std::shared_ptr<ports::Document> document =
        state.environment.xml->parseBytes(replyText(std::move(reply)), ports::SourceEncoding::utf8, parseError);
    if (document == nullptr) throw Error(applicationError, download.source, download.loadFailure);
    if (download.hasReceipt) {
        if (const auto receipts = document->select(u"Receipt"); !receipts.empty()) {
            exchange::checkReceipt(*receipts.front());
        }
    }
    return document;
}

template <class Item>
std::vector<Item> objectsOver(const State& state, const NodeList& list) {
    return itemsOf<Item>(list.nodes(), std::make_shared<const ports::Environment>(state.environment));
}

std::vector<Customer> collect(State& state, NodeList nodes, const Customer*) {
    return run(state, arguments::Customers{nodes});
}
std::vector<Order> collect(State& state, NodeList nodes, const Order*) { return run(state, arguments::Orders{nodes}); }
std::vector<Quotation> collect(State& state, NodeList nodes, const Quotation*) {
    return run(state, arguments::Quotations{nodes});
}

template <class Item, class Arguments>
Received<Item> receive(State& state, const Download& download, const Arguments& arguments, Text body) {
    state.packetUnderWay.clear();
    auto document = exchange::accounted(state, [&] { return fetch(state, download, arguments.strSourceURL, body); });
    if (!arguments.strArchivePath.empty()) archive(*document, arguments.strArchivePath);
    if (arguments.strReturnType == u"Collection") {
        const auto nodes = Document(std::move(document)).select(download.path);
        return collect(state, nodes, static_cast<const Item*>(nullptr));
    }
    if (arguments.strReturnType == u"XMLDOMDocument") return Document(std::move(document));
    if (arguments.strReturnType == u"XMLString") return document->xml();
    throw Error(applicationError, download.source, u"No valid Return Type has been passed.");
}

template <class Arguments>
std::u16string credentials(const Arguments& arguments) {
    return form(arguments.lngStoreID, {{u"UserName", arguments.strUserName}, {u"Password", arguments.strPassword}});
}

}  // namespace

Received<Customer> perform(State& state, const arguments::ReceiveCustomers& arguments) {
    return receive<Customer>(state, customers, arguments, credentials(arguments));
}

Received<Order> perform(State& state, const arguments::ReceiveOrders& arguments) {
    return receive<Order>(state, orders, arguments, credentials(arguments));
}

Received<Quotation> perform(State& state, const arguments::ReceiveQuotations& arguments) {
    return receive<Quotation>(state, quotations, arguments, credentials(arguments));
}

Received<Order> perform(State& state, const arguments::ReceiveOfflineProductList& arguments) {
    return receive<Order>(state, offlineProducts, arguments,
                          form(arguments.lngStoreID, {{u"CustomerEmailAddress", arguments.strCustomerEmailAddress}}));
}

std::vector<Order> perform(State& state, const arguments::Orders& arguments) {
    return objectsOver<Order>(state, arguments.lstOrders);
}

std::vector<Customer> perform(State& state, const arguments::Customers& arguments) {
    return objectsOver<Customer>(state, arguments.lstCustomer);
}

std::vector<Quotation> perform(State& state, const arguments::Quotations& arguments) {
    return objectsOver<Quotation>(state, arguments.lstQuotation);
}

}  // namespace quill1xml::store
