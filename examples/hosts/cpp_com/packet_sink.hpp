// Hears of the packets that a store accepted.
#pragma once

#include "automation.hpp"

#include <ocidl.h>

#include <functional>

namespace automation {

/// The events of a store.
inline constexpr IID storeEvents = {0x8158E818, 0xFD43, 0x49D3, {0x8D, 0x5C, 0x21, 0x3E, 0xDF, 0x36, 0x29, 0xAA}};

class PacketSink final : public IDispatch {
public:
    using Listener = std::function<void(const Value& packet, const Value& number)>;

    explicit PacketSink(Listener listener) : listener_(std::move(listener)) {}
    PacketSink(const PacketSink&) = delete;
    PacketSink& operator=(const PacketSink&) = delete;
    virtual ~PacketSink() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IDispatch || id == storeEvents ? this : nullptr;
        if (*result == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        constexpr DISPID packetUploaded = 1;
        if (id != packetUploaded || given->cArgs != 2) return S_OK;
        try {
            // The last argument comes first.
            Value arguments[2];
            for (int i = 0; i < 2; ++i) check(VariantCopyInd(arguments[i].put(), &given->rgvarg[1 - i]), "copy");
            listener_(arguments[0], arguments[1]);
            return S_OK;
        } catch (...) {
            return E_FAIL;
        }
    }

private:
    ULONG references_ = 0;
    Listener listener_;
};

/// Listens to a store as long as it lives.
class Connection {
public:
    Connection(IDispatch* store, PacketSink::Listener listener) {
        // Both are freed by the last one who lets go of them.
        auto* sink = new PacketSink(std::move(listener));
        sink->AddRef();
        IConnectionPointContainer* container = nullptr;
        HRESULT result = store->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
        if (SUCCEEDED(result)) {
            result = container->FindConnectionPoint(storeEvents, &point_);
            container->Release();
        }
        if (SUCCEEDED(result)) result = point_->Advise(sink, &cookie_);
        sink->Release();
        if (FAILED(result) && point_ != nullptr) point_->Release();
        check(result, "the store tells no events");
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        point_->Unadvise(cookie_);
        point_->Release();
    }

private:
    IConnectionPoint* point_ = nullptr;
    DWORD cookie_ = 0;
};

}  // namespace automation
