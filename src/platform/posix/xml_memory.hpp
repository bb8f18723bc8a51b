// Shortage of memory inside libxml2.
#pragma once

#include <cstddef>
#include <new>

#include <libxml/xmlerror.h>

namespace quill1xml::platform {

/// Notices that libxml2 runs out of memory on this thread: many of its functions only report that, and go on without
/// what they could not keep. Errors that go to a handler of someone else's do not come here by themselves.
class MemoryWatch {
public:
    MemoryWatch();
    ~MemoryWatch();

    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;

    void look(const xmlError& error) noexcept {
        if (error.code == XML_ERR_NO_MEMORY) ranOut();
    }

    void ranOut() noexcept { ranOut_ = true; }

    bool hasRunOut() const noexcept { return ranOut_; }

    /// What a callback of libxml2 does: no exception may go through C.
    template <typename Work>
    void guard(const Work& work) noexcept {
        try {
            work();
        } catch (const std::bad_alloc&) {
            ranOut();
        }
    }

    /// Throws std::bad_alloc when memory ran out.
    void check() const {
        if (ranOut_) throw std::bad_alloc();
    }

private:
    bool ranOut_ = false;
    const xmlStructuredErrorFunc formerHandler_;
    void* const formerContext_;
};

/// Throws std::bad_alloc when so much memory cannot be had now: what follows would not survive running out of it.
inline void requireRoom(std::size_t bytes) { ::operator delete(::operator new(bytes)); }

}  // namespace quill1xml::platform
