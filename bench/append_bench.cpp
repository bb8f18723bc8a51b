// What adding a record costs beyond opening, appending and closing its packet file.
#include "quill1xml/store.hpp"
#include "ratio.hpp"
#include "support/temp_folder.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

int main() {
    using namespace quill1xml;
    const testing::TempFolder folder;
    Store store;
    store.SetTempFilePath({folder.path().u16string()});
    const auto addTax = [&store] {
        store.AddTax({.strTaxCode = u"VAT-STD",
                      .strDescription = u"Value added tax, standard rate & levies",
                      .dblRate = 14.5,
                      .blnDeleted = true,
                      .strCountryCode = u"ZA",
                      .strStateProvinceCode = u"WC",
                      .blnUsePOSRebate = true,
                      .dblPOSRebateRate = 2.125});
    };

    const auto packet = folder.path() / "WebStoreTax1.tmp";
    // As long as the other name.
    const auto bare = folder.path() / "WebStoreTax2.tmp";
    addTax();
    std::string record = folder.bytes(u"WebStoreTax1.tmp").substr(2);
    const auto append = [&] {
        const int file = open(bare.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
        const bool written = write(file, record.data(), record.size()) == static_cast<ssize_t>(record.size());
        if (close(file) != 0 || !written) std::abort();
    };
    append();

    bench::Ratios ratios;
    ratios.add("AddTax / open, append, close", 1.25, addTax, append, [&] {
        for (const auto& file : {packet, bare}) std::filesystem::resize_file(file, 2);
    });
    ratios.run();
}
