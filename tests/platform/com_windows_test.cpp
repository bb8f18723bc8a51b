#include "platform/windows/com_support.hpp"

#include <gtest/gtest.h>

namespace quill1xml::com {
namespace {

/// The suite runs in one apartment, as a host would.
class Apartment : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK); }
    void TearDown() override { CoUninitialize(); }
};

[[maybe_unused]] const auto* const apartment = ::testing::AddGlobalTestEnvironment(new Apartment);

}  // namespace
}  // namespace quill1xml::com
