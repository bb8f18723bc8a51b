// COM enumerators over a snapshot.
#pragma once

#include "automation/com/com_object.hpp"
#include "automation/com/failure.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace quill1xml::automation {

/// Enumerates items; Item::give puts one, with a count of its own, where the host wants it.
template <class Interface, class Raw, class Item>
class Enumerator final : public ComObject<Interface> {
public:
    Enumerator(REFIID interfaceId, std::vector<Item> items, std::size_t next = 0)
        : interfaceId_(interfaceId), items_(std::move(items)), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, Raw* place, ULONG* fetched) override {
        if (place == nullptr || (fetched == nullptr && wanted != 1)) return E_POINTER;
        return guarded(interfaceId_, nullptr, [&] {
            const std::size_t count = std::min<std::size_t>(wanted, items_.size() - next_);
            for (std::size_t i = 0; i < count; ++i) items_[next_++].give(place[i]);
            if (fetched != nullptr) *fetched = static_cast<ULONG>(count);
            return count == wanted ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE Skip(ULONG wanted) override {
        return guarded(interfaceId_, nullptr, [&] {
            const std::size_t count = std::min<std::size_t>(wanted, items_.size() - next_);
            next_ += count;
            return count == wanted ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE Reset() override {
        return guarded(interfaceId_, nullptr, [&] { next_ = 0; });
    }

    HRESULT STDMETHODCALLTYPE Clone(Interface** result) override {
        if (result == nullptr) return E_POINTER;
        return guarded(interfaceId_, nullptr, [&] { *result = new Enumerator(interfaceId_, items_, next_); });
    }

private:
    void* find(REFIID id) noexcept override { return id == interfaceId_ ? static_cast<Interface*>(this) : nullptr; }

    const IID& interfaceId_;
    std::vector<Item> items_;
    std::size_t next_;
};

}  // namespace quill1xml::automation
