// Sample data: what a store holds once shoppers have been there.
#pragma once

#include <string_view>

namespace quill1xml::sandbox {

/// A store document in UTF-8 with customers, orders and quotations in several scripts. Its records carry what a shop
/// knows about them, which is more than what may be uploaded.
std::string_view sampleDocument();

}  // namespace quill1xml::sandbox
