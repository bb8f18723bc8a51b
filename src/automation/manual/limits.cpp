#include "automation/manual/limits.hpp"

#include "quill1xml/limits.hpp"

namespace quill1xml::automation {

std::string limitsText() {
    using std::to_string;
    return "On Linux an exchange with a server fails after " + to_string(limits::silence.count()) +
           " s without a byte or " + to_string(limits::replyMiB) +
           " MiB of replies,\nwhere the host sets no others, and after " + to_string(limits::headersMiB) +
           " MiB of headers or " + to_string(limits::redirects) + " redirects. A document with\nmore than " +
           to_string(limits::attributes) + " attributes in one tag does not load.";
}

}  // namespace quill1xml::automation
