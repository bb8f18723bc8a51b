// Under which captions the log tells of a refused record.
#include "quill1xml/store.hpp"
#include "support/fake_environment.hpp"

#include <gtest/gtest.h>

#include <functional>

namespace quill1xml {
namespace {

TEST(LogCaptions, AreTheMethodsOwn) {
    const struct {
        std::function<void(Store&)> call;
        const char16_t* caption;
    } cases[] = {
        {[](Store& s) { s.AddTax({}); }, u"\r\nError Description: The TaxCode"},
        {[](Store& s) { s.AddSalesRep({}); }, u"\r\nError RepName: The RepCode"},
        {[](Store& s) { s.AddPaymentOption({}); }, u"\r\nError RepName: The option"},
        {[](Store& s) { s.AddMailTo({.strRepCode = u"R"}); }, u"\r\nError MailToCode:  Disk full"},
    };
    for (const auto& c : cases) {
        testing::FakeEnvironment fake;
        fake.files->full = true;
        Store store(fake.environment());
        EXPECT_THROW(c.call(store), Error);
        EXPECT_NE(fake.log->entries.back().find(c.caption), std::u16string::npos)
            << testing::utf8(fake.log->entries.back());
    }
}

}  // namespace
}  // namespace quill1xml
