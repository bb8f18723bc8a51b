// Collections as automation hosts see them: Item, Add, Count, Remove and an enumerator for "For Each", late-bound or
// declared As Collection.
#pragma once

#include "automation/classes.hpp"
#include "platform/windows/com_support.hpp"

namespace quill1xml::automation {

/// Makes the objects of a collection, each through its registered class as any host would, and collects them. A failure
/// is written to the error log under the collection's label. Throws Error: 429 when the class is not registered.
com::ComPtr<IDispatch> makeCollection(const Collection& collection);

}  // namespace quill1xml::automation
