#include "command_line/fetch.hpp"

#include "command_line/archive_folder.hpp"
#include "command_line/error_text.hpp"
#include "command_line/harmless_text.hpp"
#include "command_line/json_values.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"

namespace quill1xml::cli {
namespace {

constexpr Column orderColumns[] = {
    {"Number", "OrderNumber"},           {"Date", "OrderDate"},
    {"E-mail", "EMailAddress"},          {"City", "ShippingCity"},
    {"Status", "OrderStatus"},           {"Lines", "LineItems", Show::count},
    {"Total", "LineItems", Show::total},
};

constexpr Column customerColumns[] = {
    {"E-mail", "EMailAddress"}, {"Name", "Name"}, {"City", "City"}, {"Country", "CountryCode"}, {"Debtor", "DebtorID"},
};

constexpr Column quotationColumns[] = {
    {"Number", "QuoteNumber"},           {"Date", "QuoteDate"},
    {"Contact", "ContactName"},          {"Currency", "QuoteCurrency"},
    {"Lines", "LineItems", Show::count},
};

constexpr Column productColumns[] = {
    {"SKU", "SKU"},     {"Description", "Description"}, {"Quantity", "Quantity"}, {"Unit", "UnitOfMeasure"},
    {"Price", "Price"},
};

automation::Value receive(Store& store, const Download& download, const FetchOptions& options) {
    const automation::Member& method = *automation::findMember(automation::storeClass(), download.method);
    automation::Arguments arguments(method);
    const auto set = [&](std::string_view parameter, const std::string& value) {
        arguments.setText(static_cast<std::size_t>(automation::findParameter(method, parameter)), toUtf16(value));
    };
    arguments.setWhole(static_cast<std::size_t>(automation::findParameter(method, "lngStoreID")), options.store);
    if (download.byCustomer) {
        set("strCustomerEmailAddress", options.email);
    } else {
        set("strUserName", options.user);
        set("strPassword", options.password);
    }
    set("strSourceURL", options.url);
    set("strReturnType", options.format == Format::xml ? "XMLString" : "Collection");
    set("strArchivePath", options.archive);
    return method.invoke(&store, arguments.data());
}

/// Documents usually end with one already.
std::string withLineEnd(std::string text) {
    if (!text.ends_with('\n')) text += '\n';
    return text;
}

std::string written(const automation::Value& received, const Download& download, const FetchOptions& options) {
    switch (options.format) {
        case Format::json: return toJson(received).dump(2) + '\n';
        case Format::xml: return withLineEnd(toUtf8(std::get<std::u16string>(received)));
        case Format::table: break;
    }
    return recordTable(std::get<automation::Collection>(received), download.table, options.width);
}

}  // namespace

std::span<const Download> downloads() {
    static constexpr Download all[] = {
        {"orders", "The orders of a store", "ReceiveOrders", false, true, {"order", "orders", orderColumns}},
        {"customers",
         "The customers of a store",
         "ReceiveCustomers",
         false,
         false,
         {"customer", "customers", customerColumns}},
        {"quotations",
         "The quotations that were asked for",
         "ReceiveQuotations",
         false,
         false,
         {"quotation", "quotations", quotationColumns}},
        {"offline-products",
         "The offline product list of one customer",
         "ReceiveOfflineProductList",
         true,
         false,
         {"product", "products", productColumns, "LineItems"}},
    };
    return all;
}

int fetch(Exchanges& exchanges, const Download& download, const FetchOptions& options, std::ostream& out,
          std::ostream& err) {
    Store store(exchanges.environment());
    // A table shows no cards.
    const bool shown = options.outputStays && options.format != Format::table;
    if (download.holdsCards && (shown || !options.archive.empty())) {
        err << "warning: orders may hold card numbers and pins in clear; keep "
            << (options.archive.empty() ? "the output" : "the archive " + excerpt(options.archive)) << " private"
            << std::endl;
    }
    try {
        requireArchive(toUtf16(options.archive));
        automation::Value received;
        exchanges.during(store, download.method, [&] { received = receive(store, download, options); });
        out << written(received, download, options);
        return 0;
    } catch (const Error& error) {
        err << "fetch: " << errorText(error, store.LastFailure()) << std::endl;
        return 1;
    }
}

}  // namespace quill1xml::cli
