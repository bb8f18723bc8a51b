#include "automation/com/collection_object.hpp"

#include "automation/com/com_object.hpp"
#include "automation/com/conversion.hpp"
#include "automation/com/dispatch.hpp"
#include "automation/com/enumerator.hpp"
#include "automation/com/failure.hpp"
#include "automation/com/guid.hpp"
#include "automation/com/type_library.hpp"
#include "automation/identity.hpp"
#include "platform/windows/errors.hpp"

#include <array>
#include <optional>

namespace quill1xml::automation {
namespace {

/// Of the interface that hosts call when they declare an object As Collection.
constexpr IID iidCollection = {0xA4C46780, 0x499F, 0x101B, {0xBB, 0x78, 0x00, 0xAA, 0x00, 0x38, 0x3C, 0xBB}};

/// Of what the type library says of it.
constexpr IID membersId = guidOf(collectionId);

/// The layout is that of those hosts, not ours to change.
struct CollectionInterface : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Item(VARIANT* index, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* item, VARIANT* key, VARIANT* before, VARIANT* after) = 0;
    virtual HRESULT STDMETHODCALLTYPE Count(long* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE Remove(VARIANT* index) = 0;
    virtual HRESULT STDMETHODCALLTYPE NewEnum(IUnknown** result) = 0;
};

/// What a value is or refers to.
com::Variant copyOf(const VARIANT& value) {
    com::Variant copy;
    platform::check(VariantCopyInd(copy.put(), const_cast<VARIANT*>(&value)));
    return copy;
}

/// An argument, or the mark for a missing one.
com::Variant received(const VARIANT* argument) {
    if (argument != nullptr) return copyOf(*argument);
    com::Variant missing;
    VARIANT& place = *missing.put();
    place.vt = VT_ERROR;
    place.scode = DISP_E_PARAMNOTFOUND;
    return missing;
}

std::u16string textOf(const VARIANT& text) {
    return std::u16string(com::asText(text.bstrVal, SysStringLen(text.bstrVal)));
}

struct Entry {
    std::shared_ptr<const com::Variant> value;
    std::optional<std::u16string> key{};

    void give(VARIANT& place) const { place = copyOf(value->get()).detach(); }
};

class CollectionObject final : public ComObject<CollectionInterface, ISupportErrorInfo> {
public:
    explicit CollectionObject(std::vector<Entry> entries) : entries_(std::move(entries)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        return answer([&] { *count = 1; });
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** result) override {
        if (result == nullptr) return E_POINTER;
        *result = nullptr;
        return answer([&] {
            if (index != 0) return DISP_E_BADINDEX;
            *result = typeInfoOf(membersId).detach();
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return idsOfNames(collectionClass(), reserved, names, count, ids);
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* details, UINT* faulty) override {
        return invokeUnbound(
            {collectionClass(), IID_IDispatch, id, reserved, locale, flags, given, result, details, faulty},
            [&](const Member& member) {
                std::array<com::Variant, 4> arguments;
                for (com::Variant& argument : arguments) argument = received(nullptr);
                const bool inOrder = isInOrder(*given);
                for (UINT place = given->cArgs; place-- > 0;) {
                    arguments[parameterAt(place, member, *given, inOrder)] = received(&given->rgvarg[place]);
                }
                com::Variant value = call(id, std::move(arguments));
                if (result != nullptr) *result = value.detach();
                return S_OK;
            });
    }

    HRESULT STDMETHODCALLTYPE Item(VARIANT* index, VARIANT* result) override {
        if (result == nullptr) return E_POINTER;
        VariantInit(result);
        return answer([&] { entries_[placeOf(received(index).get())].give(*result); });
    }

    HRESULT STDMETHODCALLTYPE Add(VARIANT* item, VARIANT* key, VARIANT* before, VARIANT* after) override {
        return answer([&] { add(received(item), received(key).get(), received(before).get(), received(after).get()); });
    }

    HRESULT STDMETHODCALLTYPE Count(long* result) override {
        if (result == nullptr) return E_POINTER;
        return answer([&] { *result = static_cast<long>(entries_.size()); });
    }

    HRESULT STDMETHODCALLTYPE Remove(VARIANT* index) override {
        return answer([&] { remove(received(index).get()); });
    }

    HRESULT STDMETHODCALLTYPE NewEnum(IUnknown** result) override {
        if (result == nullptr) return E_POINTER;
        *result = nullptr;
        return answer([&] { *result = enumerator().detach(); });
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == iidCollection || id == membersId || id == IID_IDispatch ? S_OK : S_FALSE;
    }

private:
    void* find(REFIID id) noexcept override {
        if (id == IID_IDispatch || id == iidCollection || id == membersId) {
            return static_cast<CollectionInterface*>(this);
        }
        return id == IID_ISupportErrorInfo ? static_cast<ISupportErrorInfo*>(this) : nullptr;
    }

    template <class Body>
    static HRESULT answer(Body body) noexcept {
        return guarded(iidCollection, nullptr, body);
    }

    com::Variant call(DISPID id, std::array<com::Variant, 4> arguments) {
        auto& [first, key, before, after] = arguments;
        switch (id) {
            case collection_ids::item: return copyOf(entries_[placeOf(first.get())].value->get());
            case collection_ids::add: add(std::move(first), key.get(), before.get(), after.get()); return {};
            case collection_ids::count: return com::Variant(static_cast<long>(entries_.size()));
            case collection_ids::remove: remove(first.get()); return {};
            default: return com::Variant(enumerator().get());
        }
    }

    /// Keys are the same in any case.
    auto findKey(const std::u16string& key) const {
        return std::ranges::find_if(entries_, [&](const Entry& entry) {
            return entry.key &&
                   CompareStringOrdinal(com::wide(entry.key->c_str()), static_cast<int>(entry.key->size()),
                                        com::wide(key.c_str()), static_cast<int>(key.size()), TRUE) == CSTR_EQUAL;
        });
    }

    /// Text is a key, anything else a number counted from 1.
    std::size_t placeOf(const VARIANT& index) const {
        if (index.vt == VT_BSTR) {
            const auto found = findKey(textOf(index));
            if (found == entries_.end()) throw runtimeError(RuntimeError::invalidProcedureCall);
            return static_cast<std::size_t>(found - entries_.begin());
        }
        static constexpr Parameter number[] = {{"Index", ParameterType::longInteger, true, 0}};
        static constexpr Long none = 0;
        static constexpr Member indexed{.parameters = number, .defaults = &none, .argumentsSize = sizeof none};
        Arguments arguments(indexed);
        VARIANT value = index;
        bind(arguments, indexed, {&value, nullptr, 1, 0}, LOCALE_USER_DEFAULT, nullptr);
        const Long place = *static_cast<const Long*>(arguments.data());
        if (place < 1 || static_cast<std::size_t>(place) > entries_.size()) {
            throw runtimeError(RuntimeError::subscriptOutOfRange);
        }
        return static_cast<std::size_t>(place) - 1;
    }

    void add(com::Variant item, const VARIANT& key, const VARIANT& before, const VARIANT& after) {
        if (isMissing(item.get())) throw runtimeError(RuntimeError::argumentNotOptional, u"Item");
        Entry entry{std::make_shared<const com::Variant>(std::move(item))};
        if (!isMissing(key)) {
            if (key.vt != VT_BSTR) throw runtimeError(RuntimeError::typeMismatch, u"Key");
            entry.key = textOf(key);
            if (findKey(*entry.key) != entries_.end()) throw runtimeError(RuntimeError::keyInUse);
        }
        std::size_t place = entries_.size();
        if (!isMissing(before)) {
            if (!isMissing(after)) throw runtimeError(RuntimeError::invalidProcedureCall);
            place = placeOf(before);
        } else if (!isMissing(after)) {
            place = placeOf(after) + 1;
        }
        entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(place), std::move(entry));
    }

    void remove(const VARIANT& index) {
        const auto at = entries_.begin() + static_cast<std::ptrdiff_t>(placeOf(index));
        // Held until the list is whole again: the last count of an object may call back.
        const Entry removed = std::move(*at);
        entries_.erase(at);
    }

    com::ComPtr<IUnknown> enumerator() const {
        return com::ComPtr<IUnknown>::attach(new Enumerator<IEnumVARIANT, VARIANT, Entry>(IID_IEnumVARIANT, entries_));
    }

    std::vector<Entry> entries_;
};

}  // namespace

com::ComPtr<IDispatch> makeCollection(const Collection& collection) {
    std::vector<Entry> entries;
    for (const auto& object : collection.objects) {
        entries.push_back({std::make_shared<const com::Variant>(static_cast<IDispatch*>(object.get()))});
    }
    return com::ComPtr<IDispatch>::attach(new CollectionObject(std::move(entries)));
}

}  // namespace quill1xml::automation
