#include "automation/com/connection_point.hpp"

#include "automation/com/conversion.hpp"
#include "automation/com/enumerator.hpp"

#include <olectl.h>

#include <algorithm>

namespace quill1xml::automation {

void ConnectionPoint::fire(const Event& event, std::span<const Value> arguments) const {
    // A sink may connect or disconnect, itself or another one, while it is called.
    const std::vector<Connection> listeners = connections_;
    std::vector<com::Variant> values;
    for (const Value& argument : arguments) values.push_back(toVariant(argument));
    // The sink borrows the values; automation counts them from the last.
    std::vector<VARIANT> borrowed;
    for (auto value = values.rbegin(); value != values.rend(); ++value) borrowed.push_back(value->get());
    for (const Connection& each : listeners) {
        DISPPARAMS given{borrowed.data(), nullptr, static_cast<UINT>(borrowed.size()), 0};
        each.sink->Invoke(event.dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, nullptr, nullptr,
                          nullptr);
    }
    // What a sink left for the thread would explain a failure of the call under way.
    SetErrorInfo(0, nullptr);
}

HRESULT ConnectionPoint::QueryInterface(REFIID id, void** result) {
    if (result == nullptr) return E_POINTER;
    *result = id == IID_IUnknown || id == IID_IConnectionPoint ? static_cast<IConnectionPoint*>(this) : nullptr;
    if (*result == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* result) {
    if (result == nullptr) return E_POINTER;
    return guarded(IID_IConnectionPoint, nullptr, [&] { *result = events_; });
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** result) {
    if (result == nullptr) return E_POINTER;
    return guarded(IID_IConnectionPoint, nullptr,
                   [&] { *result = com::ComPtr<IConnectionPointContainer>(&container_).detach(); });
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    return guarded(IID_IConnectionPoint, nullptr, [&]() -> HRESULT {
        // Late-bound sinks know IDispatch alone.
        auto events = com::query<IDispatch>(sink, events_);
        if (!events) events = com::query<IDispatch>(sink, IID_IDispatch);
        if (!events) return CONNECT_E_CANNOTCONNECT;
        connections_.push_back({lastCookie_ + 1, std::move(events)});
        *cookie = ++lastCookie_;
        return S_OK;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    return guarded(IID_IConnectionPoint, nullptr, [&]() -> HRESULT {
        const auto found = std::ranges::find(connections_, cookie, &Connection::cookie);
        if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
        // Letting the sink go may call back; the list must be whole by then.
        const Connection gone = std::move(*found);
        connections_.erase(found);
        return S_OK;
    });
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** result) {
    if (result == nullptr) return E_POINTER;
    return guarded(IID_IConnectionPoint, nullptr, [&] {
        *result = new Enumerator<IEnumConnections, CONNECTDATA, Connection>(IID_IEnumConnections, connections_);
    });
}

}  // namespace quill1xml::automation
