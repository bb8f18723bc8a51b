// Owners for the three things COM hands out: interface pointers, BSTRs and VARIANTs.
#pragma once

#include "quill1xml/types.hpp"

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <span>
#include <string>
#include <utility>

namespace quill1xml::com {

// The system's wide text and ours are both UTF-16; only the type differs.
static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline const wchar_t* wide(const char16_t* text) noexcept { return reinterpret_cast<const wchar_t*>(text); }

inline Text asText(const wchar_t* text, std::size_t length) noexcept {
    return {reinterpret_cast<const char16_t*>(text), length};
}

/// A counted reference to an interface; empty or owning exactly one count.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) noexcept {}

    /// Takes a count of its own.
    explicit ComPtr(Interface* pointer) noexcept : pointer_(pointer) {
        if (pointer_ != nullptr) pointer_->AddRef();
    }

    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    ~ComPtr() {
        if (pointer_ != nullptr) pointer_->Release();
    }

    /// Takes over a count that the caller owns.
    static ComPtr attach(Interface* pointer) noexcept {
        ComPtr result;
        result.pointer_ = pointer;
        return result;
    }

    /// Hands the count to the caller.
    Interface* detach() noexcept { return std::exchange(pointer_, nullptr); }

    Interface* get() const noexcept { return pointer_; }
    Interface* operator->() const noexcept { return pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    /// Where a call puts the reference it returns. Drops what was held.
    Interface** put() noexcept {
        *this = nullptr;
        return &pointer_;
    }

    /// As put, for calls that take any interface.
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }

private:
    Interface* pointer_ = nullptr;
};

/// Another interface of an object; empty when the object is null or does not have it.
template <class Interface>
ComPtr<Interface> query(IUnknown* object, REFIID id) noexcept {
    ComPtr<Interface> result;
    if (object != nullptr && FAILED(object->QueryInterface(id, result.putVoid()))) result.detach();
    return result;
}

/// Text in the form that automation calls take and return. Throws std::bad_alloc when there is no memory for it.
class Bstr {
public:
    Bstr() = default;

    explicit Bstr(Text text) : value_(SysAllocStringLen(wide(text.data()), static_cast<UINT>(text.size()))) {
        if (value_ == nullptr) throw std::bad_alloc();
    }

    /// Of pieces that follow each other.
    explicit Bstr(std::span<const Text> pieces) {
        std::size_t size = 0;
        for (const Text piece : pieces) size += piece.size();
        value_ = allocated(size);
        auto* to = reinterpret_cast<char16_t*>(value_);
        for (const Text piece : pieces) to = std::copy(piece.begin(), piece.end(), to);
    }

    /// Of valid UTF-8.
    static Bstr fromUtf8(std::string_view utf8) {
        const int bytes = static_cast<int>(utf8.size());
        const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
        Bstr result;
        result.value_ = allocated(static_cast<std::size_t>(size));
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, result.value_, size);
        return result;
    }

    Bstr(Bstr&& other) noexcept : value_(other.detach()) {}

    Bstr& operator=(Bstr other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }

    ~Bstr() { SysFreeString(value_); }

    /// Null when nothing was put.
    BSTR get() const noexcept { return value_; }

    /// Hands the text to the caller, who frees it.
    BSTR detach() noexcept { return std::exchange(value_, nullptr); }

    /// Where a call puts the text it returns. Drops what was held.
    BSTR* put() noexcept {
        *this = Bstr();
        return &value_;
    }

    /// The text; a null BSTR is empty text. Valid while this lives.
    Text text() const noexcept { return asText(value_, SysStringLen(value_)); }

private:
    static BSTR allocated(std::size_t size) {
        BSTR const text = SysAllocStringLen(nullptr, static_cast<UINT>(size));
        if (text == nullptr) throw std::bad_alloc();
        return text;
    }

    BSTR value_ = nullptr;
};

/// A VARIANT that is cleared at the end. Throws std::bad_alloc when there is no memory for its content.
class Variant {
public:
    Variant() noexcept = default;

    explicit Variant(Text text) : Variant() {
        value_.bstrVal = Bstr(text).detach();
        value_.vt = VT_BSTR;
    }

    explicit Variant(bool flag) noexcept : Variant() {
        value_.vt = VT_BOOL;
        value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    }

    explicit Variant(long number) noexcept : Variant() {
        value_.vt = VT_I4;
        value_.lVal = number;
    }

    explicit Variant(IDispatch* object) noexcept : Variant() {
        value_.vt = VT_DISPATCH;
        value_.pdispVal = ComPtr<IDispatch>(object).detach();
    }

    explicit Variant(IUnknown* object) noexcept : Variant() {
        value_.vt = VT_UNKNOWN;
        value_.punkVal = ComPtr<IUnknown>(object).detach();
    }

    /// An array of bytes.
    static Variant ofBytes(std::span<const std::byte> bytes) {
        Variant result;
        SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
        if (array == nullptr) throw std::bad_alloc();
        result.value_.vt = VT_ARRAY | VT_UI1;
        result.value_.parray = array;
        if (!bytes.empty()) std::memcpy(array->pvData, bytes.data(), bytes.size());
        return result;
    }

    Variant(Variant&& other) noexcept : value_(other.detach()) {}

    Variant& operator=(Variant other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }

    ~Variant() { clear(); }

    const VARIANT& get() const noexcept { return value_; }
    const VARIANT* operator->() const noexcept { return &value_; }

    /// Hands the content to the caller, who clears it.
    VARIANT detach() noexcept { return std::exchange(value_, {}); }

    /// Where a call puts the value it returns. Drops what was held.
    VARIANT* put() noexcept {
        clear();
        return &value_;
    }

    /// The bytes of a one-dimensional array of bytes; empty for any other content.
    std::string bytes() const {
        if (value_.vt != (VT_ARRAY | VT_UI1) || value_.parray == nullptr || SafeArrayGetDim(value_.parray) != 1)
            return {};
        const SAFEARRAY& array = *value_.parray;
        return {static_cast<const char*>(array.pvData), array.rgsabound[0].cElements};
    }

private:
    /// Most are empty, which is not worth a call.
    void clear() noexcept {
        if (value_.vt != VT_EMPTY) VariantClear(&value_);
    }

    VARIANT value_{};
};

}  // namespace quill1xml::com
