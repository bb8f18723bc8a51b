// What products and orders cost beyond appending their text, and whether records stay as cheap as the first.
#include "quill1xml/ports.hpp"
#include "quill1xml/store.hpp"
#include "ratio.hpp"
#include "support/order_list.hpp"
#include "support/temp_folder.hpp"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

using namespace quill1xml;

void appendBytes(const std::string& file, const std::string& bytes) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    const bool written = write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    if (close(descriptor) != 0 || !written) std::abort();
}

arguments::AddProduct product() {
    arguments::AddProduct all{.strSKU = u"PEN-0815/blue",
                              .strProductTypeID = u"PEN",
                              .strDescription = u"Fountain pen \u201CAtlas\u201D, fine nib & case",
                              .lngRanking = 7,
                              .strThumbNail = u"pen-0815.jpg",
                              .strThumbNailURL = u"http://images.example/pens/0815?size=small",
                              .strLargeImage = u"pen-0815-large.jpg",
                              .strLargeImageURL = u"http://images.example/pens/0815?size=large",
                              .intBlnShowProduct = 1,
                              .strShippingPeriod = u"2 to 3 days",
                              .strFullDescription =
                                  u"A fountain pen for every day, with a steel nib, two cartridges and "
                                  u"a case of recycled leather. It writes a fine line.",
                              .strProductGroupID = u"WRITING",
                              .strTaxCode = u"VAT",
                              .dblWeight = 0.135,
                              .dblVolume = 0.002,
                              .dtmCreated = Date::of(2007, 3, 5, 14, 7, 9),
                              .blnDeleted = true,
                              .intBlnDeliveryRequired = 1,
                              .strLngQuantityOnHand = u"125",
                              .dblAverageCost = 17.4375,
                              .dblLastCost = 18.25,
                              .dtmData = Date::of(2007, 3, 5),
                              .lngLinkedGroupNumber = 3,
                              .strLinkedGroupType = u"Parent",
                              .strAttribute1Description = u"Colour",
                              .strAttribute2Description = u"Nib",
                              .strAttribute3Description = u"Case",
                              .strAttribute4Description = u"Ink",
                              .intblnChargeTax1 = 1,
                              .intblnChargeTax2 = 0,
                              .intblnChargeTax3 = 1,
                              .strdblStoreQuantityOnHand = u"124.5",
                              .dtePurchaseOrderDate = Date::of(2007, 4, 1),
                              .strUnitOfMeasure = u"piece",
                              .intShowUnitOfMeasure = 1,
                              .strBarCode = u"6001234567890"};
    double price = 29.95;
    for (double* each : {&all.dblPrice1,  &all.dblPrice2,  &all.dblPrice3,  &all.dblPrice4,  &all.dblPrice5,
                         &all.dblPrice6,  &all.dblPrice7,  &all.dblPrice8,  &all.dblPrice9,  &all.dblPrice10,
                         &all.dblPrice11, &all.dblPrice12, &all.dblPrice13, &all.dblPrice14, &all.dblPrice15,
                         &all.dblPrice16, &all.dblPrice17, &all.dblPrice18, &all.dblPrice19, &all.dblPrice20}) {
        *each = price;
        price *= 0.97;
    }
    return all;
}

std::u16string orderList() {
    return testing::orderList({{u"OrderNumber", u"1001"},
                               {u"Order", u"2008-03-15T14:05:09"},
                               {u"Confirmed", u"2008-03-15T15:00:00"},
                               {u"EMailAddress", u"zo\u00EB.k\u00F6hler@example.com"},
                               {u"ShippingContactName", u"Zo\u00EB K\u00F6hler"},
                               {u"ShippingContactNumber", u"+49 221 000000"},
                               {u"ShippingAddressLine1", u"Ringstra\u00DFe 12"},
                               {u"ShippingCity", u"K\u00F6ln"},
                               {u"ShippingPostalCode", u"50667"},
                               {u"ShippingCountryCode", u"DE"},
                               {u"CourierCode", u"POST"},
                               {u"ShippingCost", u"12.5"},
                               {u"OrderStatus", u"Confirmed"},
                               {u"PaymentMethodID", u"CARD"},
                               {u"OrderDiscountPercent", u"2.5"},
                               {u"Message", u"Please ring twice &amp; leave it with the neighbour"},
                               {u"DisplayCurrencyCode", u"EUR"},
                               {u"USDExchangeRate", u"1.0842"},
                               {u"DebtorID", u"D-1001"},
                               {u"BillingContactName", u"Zo\u00EB K\u00F6hler"},
                               {u"BillingAddressLine1", u"Ringstra\u00DFe 12"},
                               {u"BillingCity", u"K\u00F6ln"},
                               {u"PurchaseNumber", u"PO-77"}});
}

void addOrder(Store& store, const std::u16string& list) {
    store.AddOrder({list});
    for (Long line = 1; line <= 10; ++line) {
        store.AddOrderLineItem({.lngLineNumber = line,
                                .strSKU = u"PEN-0815/blue",
                                .lngQuantity = 3,
                                .lngActualQuantity = 2,
                                .dblPrice = 29.95,
                                .dblTaxAmount = 4.19,
                                .dblDiscountPercent = 2.5,
                                .strTaxCode = u"VAT",
                                .strDescription = u"Fountain pen \u201CAtlas\u201D, fine nib & case",
                                .strUnitOfMeasure = u"piece"});
    }
    store.LockOrder();
}

double processorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

long peakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// A million records through one store: the last tenth against the first, and the memory that came on top.
void addMillion() {
    const testing::TempFolder folder;
    Store store;
    store.SetTempFilePath({folder.path().u16string()});
    store.SetPacketSize({10000});
    const auto tenth = [&store] {
        const double start = processorSeconds();
        for (int i = 0; i < 100'000; ++i) store.AddTradingCountry({u"ZA"});
        return processorSeconds() - start;
    };
    tenth();  // the first one also warms up
    const double first = tenth();
    const long memory = peakKilobytes();
    for (int i = 0; i < 7; ++i) tenth();
    const double last = tenth();
    bench::printRatio("a million records, last tenth / second", 1.1, last * 1e4, first * 1e4, "ns");
    std::printf("%-58s %6ld   kB\n", "  memory that came on top of it", peakKilobytes() - memory);
}

}  // namespace

int main() {
    const testing::TempFolder folder;
    Store store;
    store.SetTempFilePath({folder.path().u16string()});
    store.SetStoreID({57});
    const arguments::AddProduct whole = product();
    const auto addProduct = [&] {
        store.AddProduct(whole);
        store.AddProductAdditional({.dblQtyOnPO = 12, .dblPriceIncl1 = 33.54, .TavSMtrxCol = 2});
        store.LockProduct();
    };
    Store strict;
    strict.SetTempFilePath({(folder.path() / "strict").u16string()});
    std::filesystem::create_directory(folder.path() / "strict");
    strict.SetStrict({true});
    const auto addProductStrictly = [&] {
        strict.AddProduct(whole);
        strict.AddProductAdditional({.dblQtyOnPO = 12, .dblPriceIncl1 = 33.54, .TavSMtrxCol = 2});
        strict.LockProduct();
    };
    const std::u16string list = orderList();
    addProduct();
    addProductStrictly();
    addOrder(store, list);
    const std::string productBytes = folder.bytes(u"WebStoreProduct1.tmp").substr(2);
    const std::string orderBytes = folder.bytes(u"WebStoreOrder57_1.tmp").substr(2);
    const std::string bareProduct = (folder.path() / "WebStoreProduct2.tmp").string();
    const std::string bareOrder = (folder.path() / "WebStoreOrder57_2.tmp").string();
    appendBytes(bareProduct, productBytes);
    appendBytes(bareOrder, orderBytes);
    const auto truncate = [&] {
        for (const auto& file : std::filesystem::recursive_directory_iterator(folder.path())) {
            if (file.is_regular_file()) std::filesystem::resize_file(file, 2);
        }
    };
    const auto xml = ports::systemEnvironment().xml;
    std::printf("a product has %zu bytes, an order %zu\n", productBytes.size(), orderBytes.size());

    bench::Ratios ratios;
    ratios.add(
        "product with all parameters / open, append, close", 1.40, addProduct,
        [&] { appendBytes(bareProduct, productBytes); }, truncate);
    ratios.add("product in strict mode / without", 0, addProductStrictly, addProduct, truncate);
    ratios.add(
        "order of ten lines / parse its list, open, append, close", 1.55, [&] { addOrder(store, list); },
        [&] {
            ports::ParseError error;
            if (xml->parse({{list}}, nullptr, error) == nullptr) std::abort();
            appendBytes(bareOrder, orderBytes);
        },
        truncate);
    ratios.run();
    addMillion();
}
