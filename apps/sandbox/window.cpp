#include "window.hpp"

#include "addresses.hpp"
#include "answers.hpp"
#include "arrival_pages.hpp"
#include "catalogue.hpp"
#include "detail.hpp"
#include "frame.hpp"
#include "listing.hpp"
#include "shop_pages.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quill1xml::sandbox {
namespace {

constexpr std::int64_t productsInFront = 10;
constexpr std::int64_t productsOnShelf = 5;
constexpr std::size_t shelvesInFront = 3;
constexpr std::int64_t rowsInFront = 5;

using Names = std::vector<std::string_view>;
using Page = std::function<std::string(const Visit& visit)>;
using DetailPage = std::function<std::string(const Visit& visit, const Json& detail)>;
using Detail = std::function<std::optional<Json>(std::int64_t number)>;

std::optional<std::string> filterOf(const Visit& visit, std::string_view name) {
    for (const auto& [known, value] : visit.filter)
        if (known == name) return value;
    return std::nullopt;
}

Listing shoppersRows(Storage& storage, const Visit& visit, const char* kind) {
    return standing(storage, kind, visit.store(), visit.wanted);
}

Front frontOf(Storage& storage, Visit visit) {
    Front front;
    visit.wanted.size = productsInFront;
    front.categories = categoriesBelow(storage, visit.store(), "");
    front.products = products(storage, visit.store(), "", visit.wanted);
    visit.wanted.size = productsOnShelf;
    const std::size_t shelves = visit.wanted.text.empty() ? std::min(shelvesInFront, front.categories.size()) : 0;
    for (std::size_t i = 0; i < shelves; ++i)
        front.shelves.push_back(
            products(storage, visit.store(), front.categories[i].at("id").get<std::string>(), visit.wanted));
    visit.wanted.size = rowsInFront;
    front.orders = shoppersRows(storage, visit, "Order");
    front.quotations = shoppersRows(storage, visit, "Quote");
    front.customers = shoppersRows(storage, visit, "DebtorStaff");
    front.images = images(storage, visit.wanted);
    front.imports = imports(storage, visit.wanted);
    front.refusals = refusals(storage, visit.wanted);
    return front;
}

Aisle aisleOf(Storage& storage, const Visit& visit, const std::string& id) {
    Aisle aisle;
    aisle.below = categoriesBelow(storage, visit.store(), id);
    if (id.empty()) return aisle;
    aisle.here = category(storage, visit.store(), id);
    if (!aisle.here) throw std::invalid_argument("There is no category \"" + id + '"');
    return aisle;
}

/// A product is shown with its picture and what a shopper is told of it.
std::string recordPageOf(Storage& storage, const Visit& visit, const Json& record) {
    std::string above;
    if (record.at("kind") == "Product") {
        const Json& attributes = record.at("attributes");
        above = sheet(visit, pictureOf(storage, visit.store(), record.at("id").get<std::int64_t>(), attributes),
                      attributes, taxOf(storage, visit.store(), attributes));
    }
    return recordPage(visit, record, above);
}

/// What the handlers share.
class Window {
public:
    Window(httplib::Server& server, Storage& storage, std::function<std::string()> url)
        : server_(server), storage_(storage), url_(std::move(url)) {}

    void addPage(const char* path, const Names& filter, const Page& page) const {
        server_.Get(patternOf("GET", path),
                    [visit = visitor(filter), page](const httplib::Request& request, httplib::Response& response) {
                        answerPage(response, page(visit(request)));
                    });
    }

    /// A page for a browser; for a program the list, of which it may name what the list is asked for.
    void addList(const char* path, const Names& filter, const std::function<Json(const httplib::Request&)>& list,
                 const Names& listFilter, const Page& page) const {
        server_.Get(patternOf("GET", path), [visit = visitor(filter), page, list, listFilter](
                                                const httplib::Request& request, httplib::Response& response) {
            response.set_header("Vary", "Accept");
            if (wantsPage(request)) {
                answerPage(response, page(visit(request)));
            } else {
                allowParameters(request, listFilter);
                answerJson(response, list(request));
            }
        });
    }

    /// One thing of a list, by the number at the end of the path.
    void addDetail(const char* path, const Detail& detail, const DetailPage& page) const {
        server_.Get(patternOf("GET", path),
                    [visit = visitor({}), detail, page](const httplib::Request& request, httplib::Response& response) {
                        response.set_header("Vary", "Accept");
                        const std::optional<std::int64_t> number = wholeNumber(request.matches[1].str());
                        const std::optional<Json> found = number ? detail(*number) : std::nullopt;
                        if (!found) {
                            response.status = 404;
                        } else if (wantsPage(request)) {
                            answerPage(response, page(visit(request), *found));
                        } else {
                            answerJson(response, *found);
                        }
                    });
    }

private:
    /// What a request asks for; it may name a store, a text, a page and what the filter names.
    std::function<Visit(const httplib::Request&)> visitor(const Names& filter) const {
        Names known = filter;
        for (const char* name : {"store", "q", "page"}) known.emplace_back(name);
        return [&storage = storage_, url = url_, filter, known](const httplib::Request& request) {
            allowParameters(request, known);
            Visit visit;
            visit.path = request.path;
            visit.url = url();
            visit.asked = numberParameter(request, "store");
            visit.shop = shop(storage, visit.asked);
            visit.shops = shops(storage);
            visit.wanted.text = parameter(request, "q").value_or("");
            visit.wanted.page = numberParameter(request, "page").value_or(1);
            if (visit.wanted.page < 1) throw std::invalid_argument("page must be at least 1");
            for (const std::string_view name : filter)
                if (const auto value = parameter(request, name)) visit.filter.emplace_back(name, *value);
            return visit;
        };
    }

    httplib::Server& server_;
    Storage& storage_;
    std::function<std::string()> url_;
};

void addShop(const Window& window, Storage& storage) {
    window.addPage("/", {}, [&storage](const Visit& visit) { return frontPage(visit, frontOf(storage, visit)); });
    window.addPage("/products", {"category"}, [&storage](const Visit& visit) {
        const std::string category = filterOf(visit, "category").value_or("");
        return productsPage(visit, aisleOf(storage, visit, category),
                            products(storage, visit.store(), category, visit.wanted));
    });
    window.addPage("/customers", {}, [&storage](const Visit& visit) {
        return customersPage(visit, shoppersRows(storage, visit, "DebtorStaff"));
    });
    window.addPage("/orders", {},
                   [&storage](const Visit& visit) { return ordersPage(visit, shoppersRows(storage, visit, "Order")); });
    window.addPage("/quotations", {}, [&storage](const Visit& visit) {
        return quotationsPage(visit, shoppersRows(storage, visit, "Quote"));
    });
    window.addList(
        "/images", {}, [&storage](const httplib::Request&) { return storage.images(); }, {},
        [&storage](const Visit& visit) { return imagesPage(visit, images(storage, visit.wanted)); });
}

void addArrivals(const Window& window, Storage& storage) {
    window.addList(
        "/imports", {}, [&storage](const httplib::Request&) { return storage.imports(); }, {},
        [&storage](const Visit& visit) { return importsPage(visit, imports(storage, visit.wanted)); });
    window.addDetail(
        "/imports/NUMBER", [&storage](std::int64_t number) { return importDetail(storage, number); }, importPage);
    window.addList(
        "/refusals", {},
        [&storage](const httplib::Request&) {
            return refusals(storage, {"", 1, mostRefusals}).rows;
        },
        {}, [&storage](const Visit& visit) { return refusalsPage(visit, refusals(storage, visit.wanted)); });
    window.addDetail(
        "/refusals/NUMBER", [&storage](std::int64_t number) { return refusalDetail(storage, number); }, refusalPage);
    window.addList(
        "/records", {"kind", "key", "import"},
        [&storage](const httplib::Request& request) {
            return storage.records(parameter(request, "kind"), parameter(request, "key"));
        },
        {"kind", "key"},
        [&storage](const Visit& visit) {
            const std::optional<std::string> import = filterOf(visit, "import");
            const RecordFilter filter{filterOf(visit, "kind"), filterOf(visit, "key"),
                                      import ? wholeNumber(*import) : std::nullopt};
            return recordsPage(visit, storage.kinds(), records(storage, filter, visit.wanted));
        });
    window.addDetail(
        "/records/NUMBER", [&storage](std::int64_t number) { return recordDetail(storage, number); },
        [&storage](const Visit& visit, const Json& record) { return recordPageOf(storage, visit, record); });
}

void addPictures(httplib::Server& server, Storage& storage) {
    const auto answer = [](const std::optional<std::string>& bytes, httplib::Response& response) {
        if (bytes) {
            answerImage(response, *bytes);
        } else {
            response.status = 404;
        }
    };
    server.Get(patternOf("GET", "/images/FOLDER/NAME"),
               [&storage, answer](const httplib::Request& request, httplib::Response& response) {
                   answer(storage.image(request.matches[1], request.matches[2]), response);
               });
    server.Get(patternOf("GET", "/records/NUMBER/picture"),
               [&storage, answer](const httplib::Request& request, httplib::Response& response) {
                   const std::optional<std::int64_t> number = wholeNumber(request.matches[1].str());
                   answer(number ? recordPicture(storage, *number) : std::nullopt, response);
               });
}

}  // namespace

void addWindow(httplib::Server& server, Storage& storage, const std::function<std::string()>& url) {
    const Window window(server, storage, url);
    addShop(window, storage);
    addArrivals(window, storage);
    addPictures(server, storage);
}

}  // namespace quill1xml::sandbox
