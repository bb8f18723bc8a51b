// Where hosts connect to hear the events of an object.
#pragma once

#include "automation/classes.hpp"
#include "platform/windows/com_support.hpp"

#include <windows.h>

#include <ocidl.h>

#include <span>
#include <vector>

namespace quill1xml::automation {

/// The one connection point of an object. It is part of its container and shares its count, but has an identity of its
/// own, as hosts expect.
class ConnectionPoint final : public IConnectionPoint {
public:
    ConnectionPoint(IConnectionPointContainer& container, const IID& events) : container_(container), events_(events) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;
    virtual ~ConnectionPoint() = default;

    /// Calls every sink, in the order they connected. What a sink answers does not matter.
    void fire(const Event& event, std::span<const Value> arguments) const;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return container_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return container_.Release(); }

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* result) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** result) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** result) override;

private:
    struct Connection {
        DWORD cookie;
        com::ComPtr<IDispatch> sink;

        void give(CONNECTDATA& place) const { place = {com::ComPtr<IUnknown>(sink.get()).detach(), cookie}; }
    };

    IConnectionPointContainer& container_;
    IID events_;
    std::vector<Connection> connections_;
    DWORD lastCookie_ = 0;
};

}  // namespace quill1xml::automation
