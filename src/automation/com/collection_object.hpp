// Collections as automation hosts see them: Item, Add, Count, Remove and an enumerator for "For Each", late-bound or
// declared As Collection.
#pragma once

#include "automation/classes.hpp"
#include "platform/windows/com_support.hpp"

namespace quill1xml::automation {

/// The host's objects of a collection, collected.
com::ComPtr<IDispatch> makeCollection(const Collection& collection);

}  // namespace quill1xml::automation
