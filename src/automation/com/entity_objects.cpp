#include "automation/com/entity_objects.hpp"

#include "automation/classes.hpp"
#include "automation/com/guid.hpp"
#include "automation/com/host_nodes.hpp"
#include "automation/identity.hpp"
#include "platform/windows/errors.hpp"
#include "quill1xml/text.hpp"

#include <objbase.h>

#include <algorithm>
#include <string>

namespace quill1xml::automation {
namespace {

DISPID initialiseId(std::string_view className) {
    const auto of = std::ranges::find(classes(), className, [](const Class* each) { return each->name; });
    return findMember(**of, std::string_view("Initialise"))->dispid;
}

/// What makes objects of a class as any host would, and where that is not to be had (the host's registration-free
/// context has ended, say) this DLL's own.
com::ComPtr<IClassFactory> factoryOf(std::string_view className) {
    const std::u16string name = toUtf16(std::string(libraryName) + '.' + std::string(className));
    com::ComPtr<IClassFactory> factory;
    CLSID classId;
    if (FAILED(CLSIDFromProgID(com::wide(name.c_str()), &classId)) ||
        FAILED(CoGetClassObject(classId, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.putVoid()))) {
        platform::check(
            DllGetClassObject(guidOf(findIdentity(className)->coclass), IID_IClassFactory, factory.putVoid()), name);
    }
    return factory;
}

class EntityObjects final : public ports::Objects {
public:
    std::vector<std::shared_ptr<void>> make(std::string_view className, std::span<const Node> nodes) override {
        if (nodes.empty()) return {};
        const auto factory = factoryOf(className);
        const DISPID initialise = initialiseId(className);
        std::vector<std::shared_ptr<void>> objects;
        for (const Node& node : nodes) {
            com::ComPtr<IDispatch> object;
            platform::check(factory->CreateInstance(nullptr, IID_IDispatch, object.putVoid()));
            const com::Variant argument(static_cast<IDispatch*>(objectOf(node)));
            VARIANT value = argument.get();
            DISPPARAMS given{&value, nullptr, 1, 0};
            const HRESULT result = object->Invoke(initialise, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given,
                                                  nullptr, nullptr, nullptr);
            if (FAILED(result)) throw platform::errorOf(result, object.get(), IID_IDispatch);
            IDispatch* const made = object.detach();
            objects.emplace_back(made, [](IDispatch* counted) { counted->Release(); });
        }
        return objects;
    }
};

}  // namespace

ports::Environment serverEnvironment() {
    ports::Environment environment = ports::systemEnvironment();
    environment.objects = std::make_shared<EntityObjects>();
    return environment;
}

}  // namespace quill1xml::automation
