// The parameter lists of orders and quotations, in UTF-8.
#include "fuzz.hpp"
#include "quill1xml/store.hpp"

using namespace quill1xml;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string list = toUtf16(fuzz::textOf(data, size));
    fuzz::World world;
    Store store(world.environment());
    fuzz::attempt([&] {
        store.AddOrder({list});
        store.LockOrder();
    });
    fuzz::attempt([&] {
        store.AddQuotation({list});
        store.LockQuote();
    });
    world.inspect();
    return 0;
}
