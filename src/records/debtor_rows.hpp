// Rows that the records about debtors share.
#pragma once

#include "records/record.hpp"

namespace quill1xml::records {

inline constexpr RowDeclaration debtorId =
    key("DebtorID", "strDebtorID", length(1, 50), escaped,
        u"The DebtorID may not be less than 1 or more than 50 characters in length.");

}  // namespace quill1xml::records
