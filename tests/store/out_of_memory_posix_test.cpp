// Whichever allocation of a call fails, the host gets error 7 and no file holds half a record.
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"

#include "quill1xml/store.hpp"

#include <cstdlib>
#include <functional>
#include <new>

namespace {
thread_local int untilFailure = 0;  ///< the allocation of this thread to fail, counted from 1; 0 for none
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return untilFailure > 0 && --untilFailure == 0 ? nullptr : std::malloc(size);
}

void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace quill1xml {
namespace {

/// Fails every allocation of the call in turn; returns how many there are.
int failEach(const std::function<void(Store&)>& prepare, void (*call)(Store&), Text file) {
    std::u16string finished;
    for (int failing = 0;; ++failing) {  // none fails at first, which shows the finished file
        testing::FakeEnvironment fake;
        Store store(fake.environment());
        store.SetTempFilePath({u"T"});
        prepare(store);
        const std::u16string untouched = fake.files->texts[std::u16string(file)];
        std::optional<Error> error;
        untilFailure = failing;
        try {
            call(store);
        } catch (const Error& thrown) {
            error = thrown;
        }
        const bool survived = untilFailure > 0;
        untilFailure = 0;
        const std::u16string& text = fake.files->texts[std::u16string(file)];
        if (failing == 0) finished = text;
        EXPECT_TRUE(text == finished || text == untouched) << testing::utf8(text);
        if (survived) return failing - 1;
        if (failing == 0) continue;
        EXPECT_EQ(error ? error->number() : 0, 7) << failing;
        EXPECT_FALSE(fake.log->entries.empty()) << failing;
    }
}

TEST(OutOfMemory, IsReportedAndTearsNothing) {
    const auto addTax = [](Store& store) {
        store.AddTax({.strTaxCode = u"A", .strDescription = u"a longer text & all"});
    };
    EXPECT_GT(failEach(addTax, addTax, u"T\\WebStoreTax1.tmp"), 1);
    const auto addOrder = [](Store& store) {
        store.AddOrder({testing::orderList({{u"Message", u"a text longer than any small buffer"}})});
        store.AddOrderLineItem({.lngLineNumber = 1, .strDescription = u"another text of that length"});
    };
    EXPECT_GT(failEach(
                  addOrder, [](Store& store) { store.LockOrder(); }, u"T\\WebStoreOrder0_1.tmp"),
              3);
}

}  // namespace
}  // namespace quill1xml
