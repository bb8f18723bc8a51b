#include "manual_page/page.hpp"

#include "manual_page/texts.hpp"

namespace quill1xml::manual_page {

std::string page() { return std::string(parts().front().text); }

}  // namespace quill1xml::manual_page
