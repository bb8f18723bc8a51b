#include "automation/com/entity_objects.hpp"

#include "automation/classes.hpp"
#include "automation/com/host_nodes.hpp"
#include "automation/identity.hpp"
#include "platform/windows/create_object.hpp"
#include "platform/windows/errors.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <string>

namespace quill1xml::automation {
namespace {

DISPID initialiseId(std::string_view className) {
    const auto of = std::ranges::find(classes(), className, [](const Class* each) { return each->name; });
    return findMember(**of, std::string_view("Initialise"))->dispid;
}

class EntityObjects final : public ports::Objects {
public:
    std::vector<std::shared_ptr<void>> make(std::string_view className, std::span<const Node> nodes) override {
        const std::u16string name = toUtf16(std::string(libraryName) + '.' + std::string(className));
        const DISPID initialise = initialiseId(className);
        std::vector<std::shared_ptr<void>> objects;
        for (const Node& node : nodes) {
            auto object = platform::createObject<IDispatch>(name.c_str(), IID_IDispatch);
            const com::Variant argument(static_cast<IDispatch*>(objectOf(node)));
            VARIANT value = argument.get();
            DISPPARAMS given{&value, nullptr, 1, 0};
            platform::check(object->Invoke(initialise, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, nullptr,
                                           nullptr, nullptr));
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
