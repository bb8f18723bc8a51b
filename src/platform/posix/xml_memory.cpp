#include "platform/posix/xml_memory.hpp"

#include <libxml/globals.h>

namespace quill1xml::platform {
namespace {

// The constness of the error differs between versions of libxml2.
template <typename XmlError>
void onError(void* watch, XmlError* error) noexcept {
    static_cast<MemoryWatch*>(watch)->look(*error);
}

}  // namespace

MemoryWatch::MemoryWatch() : formerHandler_(xmlStructuredError), formerContext_(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(this, &onError);
}

MemoryWatch::~MemoryWatch() { xmlSetStructuredErrorFunc(formerContext_, formerHandler_); }

}  // namespace quill1xml::platform
