#include "support/records.hpp"

namespace quill1xml {
namespace {

TEST(GeneralMasters, LogFailuresUnderTheirOwnCaptions) {
    const struct {
        testing::Call call;
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
