// What a call is exchanging with a server.
#pragma once

#include <string>

namespace quill1xml {

/// As it stands during a call, or stood when the call failed.
struct UnderWay {
    std::u16string packet{};  ///< the packet file that is being sent; empty when it is something else
    bool answered = false;    ///< the server has answered the request, and its answer is not accepted yet
};

}  // namespace quill1xml
