// What the registry says of the server.
#pragma once

#include <windows.h>

namespace quill1xml::automation {

/// Writes the classes and the type library below Software\Classes, for the machine (HKEY_LOCAL_MACHINE) or the user
/// (HKEY_CURRENT_USER). Returns the first failure.
HRESULT registerServer(HKEY scope);

/// Takes away what registerServer wrote. What is shared with the server of the other bitness stays as long as that one
/// is registered. Nothing to take away is no failure.
HRESULT unregisterServer(HKEY scope);

}  // namespace quill1xml::automation
