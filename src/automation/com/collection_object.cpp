#include "automation/com/collection_object.hpp"

#include "automation/com/com_object.hpp"
#include "automation/com/dispatch.hpp"
#include "automation/com/enumerator.hpp"
#include "automation/com/identity.hpp"
#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "quill1xml/text.hpp"
#include "store/trap.hpp"

namespace quill1xml::automation {
namespace {

struct Item {
    com::ComPtr<IDispatch> object;

    void give(VARIANT& place) const { place = com::Variant(object.get()).detach(); }
};

constexpr Parameter itemParameters[] = {{"Index", Type::longInteger, true, 0}};
constexpr Long noIndex = 0;

const Class& collectionClass() {
    static const Member members[] = {
        {.dispid = DISPID_VALUE,
         .name = "Item",
         .parameters = itemParameters,
         .defaults = &noIndex,
         .argumentsSize = sizeof noIndex},
        {.dispid = 1, .name = "Count", .kind = MemberKind::propertyGet},
        {.dispid = DISPID_NEWENUM, .name = "_NewEnum", .kind = MemberKind::propertyGet},
    };
    static const Class described{.name = "Collection", .members = members};
    return described;
}

class CollectionObject final : public ComObject<IDispatch> {
public:
    explicit CollectionObject(std::vector<Item> items) : items_(std::move(items)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override {
        if (result == nullptr) return E_POINTER;
        *result = nullptr;
        return DISP_E_BADINDEX;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return idsOfNames(collectionClass(), reserved, names, count, ids);
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* details, UINT* faulty) override {
        return invokeMember(
            {collectionClass(), IID_IDispatch, id, reserved, locale, flags, given, result, details, faulty},
            [this](const Member& member, const Arguments& arguments) {
                if (member.dispid == DISPID_VALUE) return item(*static_cast<const Long*>(arguments.data()));
                if (member.dispid == DISPID_NEWENUM) return enumerator();
                return com::Variant(static_cast<long>(items_.size()));
            });
    }

private:
    void* find(REFIID id) noexcept override { return id == IID_IDispatch ? static_cast<IDispatch*>(this) : nullptr; }

    com::Variant item(Long index) const {
        if (index < 1 || static_cast<std::size_t>(index) > items_.size()) {
            throw runtimeError(RuntimeError::subscriptOutOfRange);
        }
        return com::Variant(items_[static_cast<std::size_t>(index) - 1].object.get());
    }

    com::Variant enumerator() const {
        const auto made =
            com::ComPtr<IUnknown>::attach(new Enumerator<IEnumVARIANT, VARIANT, Item>(IID_IEnumVARIANT, items_));
        return com::Variant(made.get());
    }

    std::vector<Item> items_;
};

com::ComPtr<IDispatch> makeItem(const Class& itemClass, const Node& node) {
    const std::u16string name = toUtf16(std::string(libraryName) + '.' + std::string(itemClass.name));
    auto object = platform::createObject<IDispatch>(name.c_str(), IID_IDispatch);
    const com::Variant argument(static_cast<IDispatch*>(platform::unwrap(*node.element())));
    VARIANT value = argument.get();
    DISPPARAMS given{&value, nullptr, 1, 0};
    platform::check(object->Invoke(findMember(itemClass, "Initialise")->dispid, IID_NULL, LOCALE_USER_DEFAULT,
                                   DISPATCH_METHOD, &given, nullptr, nullptr, nullptr));
    return object;
}

}  // namespace

com::ComPtr<IDispatch> makeCollection(const Collection& collection) {
    const auto make = [&collection] {
        std::vector<Item> items;
        for (const Node& node : collection.nodes) items.push_back({makeItem(*collection.itemClass, node)});
        return com::ComPtr<IDispatch>::attach(new CollectionObject(std::move(items)));
    };
    const platform::Environment environment =
        collection.environment != nullptr ? *collection.environment : platform::systemEnvironment();
    return store::trapped(environment, {.text = collection.label}, make);
}

}  // namespace quill1xml::automation
