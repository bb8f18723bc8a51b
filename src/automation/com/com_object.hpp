// What every COM object of the server shares: counting, and the module's lock while it lives.
#pragma once

#include "automation/com/module.hpp"

#include <windows.h>

#include <unknwn.h>

#include <atomic>

namespace quill1xml::automation {

/// Starts with one reference, the maker's. The first interface is the object's identity.
template <class First, class... Others>
class ComObject : public First, public Others... {
public:
    ComObject() noexcept { lockModule(); }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) noexcept final {
        if (result == nullptr) return E_POINTER;
        *result = id == IID_IUnknown ? static_cast<First*>(this) : find(id);
        if (*result == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return ++references_; }

    ULONG STDMETHODCALLTYPE Release() noexcept final {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    virtual ~ComObject() { unlockModule(); }

    /// The interface of that id, not counted; null when the object does not have it.
    virtual void* find(REFIID id) noexcept = 0;

private:
    std::atomic<ULONG> references_ = 1;
};

}  // namespace quill1xml::automation
