// How hosts name what they call.
#include "automation/classes.hpp"

#include <gtest/gtest.h>

namespace quill1xml::automation {
namespace {

TEST(Surface, FindsNamesWhateverTheirCase) {
    const Member* tax = findMember(storeClass(), "aDDtAX");
    ASSERT_NE(tax, nullptr);
    EXPECT_EQ(tax->name, "AddTax");
    EXPECT_EQ(findParameter(*tax, "DBLRATE"), 2);
    EXPECT_EQ(findParameter(*tax, "dblRat"), -1);
    EXPECT_EQ(findMember(storeClass(), "AddTaxe"), nullptr);
}

}  // namespace
}  // namespace quill1xml::automation
