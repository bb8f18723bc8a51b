// Declarations that the compiler refuses, one for each number in MISTAKE; 0 is none. The tests of that name compile it.
#include "records/record.hpp"

namespace quill1xml::records {

#if MISTAKE == 1
constexpr RowDeclaration row = attribute("Rate", "dblRat", above(0), strText);
#elif MISTAKE == 2
constexpr RowDeclaration row = attribute("Rate", "dblRate", notDefault, strText);
#elif MISTAKE == 3
constexpr RowDeclaration row = attribute("Rate", "dblRate", (above(0) && above(1)) || above(2), strText);
#elif MISTAKE == 4
constexpr RowDeclaration row = fixed("Rate", above(0), u"none");
#else
constexpr RowDeclaration row = attribute("Rate", "dblRate", above(0), strText);
#endif

constexpr Record tax = record<arguments::AddTax>(u"Tax", [] { return rows(row); });

}  // namespace quill1xml::records
