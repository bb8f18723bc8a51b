#include "automation/manual/played.hpp"

#include "automation/manual/examples.hpp"
#include "automation/manual/notation.hpp"
#include "automation/manual/playground.hpp"
#include "quill1xml/text.hpp"
#include "records/record.hpp"
#include "text/base64.hpp"

#include <algorithm>
#include <vector>

namespace quill1xml::automation {
namespace {

using Names = std::vector<std::string_view>;

struct Scene {
    std::string_view method;
    Names before;
    Names after;
};

const std::vector<Scene>& scenes() {
    static const Names head{"Create", "AddAdditionalParameters", "AddEnvelope"};
    static const Names product{"AddProduct", "AddProductAdditional"};
    static const Names order{"SetStoreID", "AddOrder", "AddOrderLineItem", "LockOrder"};
    static const Names quote{"SetStoreID", "AddQuotation", "AddQuoteLineItem", "LockQuote"};
    static const std::vector<Scene> all{
        {"Create", {}, {"AddAdditionalParameters"}},
        {"AddAdditionalParameters", {"Create"}, {}},
        {"AddEnvelope", {"Create", "AddAdditionalParameters"}, {}},
        {"AddProduct", {}, {"AddProductAdditional", "LockProduct"}},
        {"AddProductAdditional", {"AddProduct"}, {"LockProduct"}},
        {"AddProductAttribute", product, {"LockProduct"}},
        {"AddProductPromotion", product, {"LockProduct"}},
        {"LockProduct", product, {}},
        {"AddOrder", {}, {"LockOrder"}},
        {"AddOrderUDFValue", {"AddOrder"}, {"LockOrder"}},
        {"AddOrderLineItem", {"AddOrder"}, {"LockOrder"}},
        {"LockOrder", {"AddOrder", "AddOrderUDFValue", "AddOrderLineItem"}, {}},
        {"AddQuotation", {}, {"LockQuote"}},
        {"AddQuoteLineItem", {"AddQuotation"}, {"LockQuote"}},
        {"LockQuote", {"AddQuotation", "AddQuoteLineItem"}, {}},
        {"AddExternalOrder", {}, {"LockExternalOrder"}},
        {"AddExternalOrderLineItem", {"AddExternalOrder"}, {"LockExternalOrder"}},
        {"LockExternalOrder", {"AddExternalOrder"}, {}},
        {"AddDebtor", {}, {"LockDebtor"}},
        {"LockDebtor", {"AddDebtor"}, {}},
        {"CheckPackets", head, {}},
        {"XML", order, {}},
        {"QuoteXML", quote, {}},
        {"Send",
         [] {
             Names names = head;
             names.emplace_back("AddTax");
             return names;
         }(),
         {}},
        {"SendTempFile",
         [] {
             Names names = head;
             names.insert(names.end(), quote.begin() + 1, quote.end());
             return names;
         }(),
         {}},
    };
    return all;
}

/// What asks a server, looks at elements that came from one, or goes on with a job that was interrupted.
bool needsServer(const Member& member) {
    return member.result == ResultType::collection || member.result == ResultType::received ||
           member.name == "SendImage" || member.name == "CustomerXML" || member.name == "Resume";
}

struct AsText {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(Long number) const { return std::to_string(number); }
    std::string operator()(Integer number) const { return std::to_string(number); }
    std::string operator()(const std::u16string& text) const { return toUtf8(text); }
    std::string operator()(const Bytes& bytes) const {
        std::u16string text;
        appendBase64(text, bytes);
        return toUtf8(text);
    }
    template <class Other>
    std::string operator()(const Other&) const {
        return {};
    }
};

/// The tag of a part, out of the record that it is part of; the whole text of a record.
std::string shown(const Member& member, const std::string& written) {
    if (member.record == nullptr || member.record->shape.parent.empty()) return written;
    const std::size_t begin = written.find("<" + toUtf8(member.record->element) + " ");
    return begin == std::string::npos ? written : written.substr(begin, written.find('>', begin) + 1 - begin);
}

}  // namespace

Surroundings surroundingsOf(const Member& member) {
    const auto found = std::ranges::find(scenes(), member.name, &Scene::method);
    if (found == scenes().end()) return {};
    return {found->before, found->after};
}

Outcome played(const Member& member) {
    if (needsServer(member)) return {};
    Playground playground;
    const auto call = [&playground](std::string_view name) {
        const Member& method = *findMember(storeClass(), name);
        playground.call(method, exampleArguments(method));
    };
    const Surroundings surroundings = surroundingsOf(member);
    std::ranges::for_each(surroundings.before, call);
    const Value result = playground.call(member, exampleArguments(member));
    std::ranges::for_each(surroundings.after, call);
    const bool writes = member.record != nullptr || member.name.starts_with("Lock") || member.name == "UpdateOrder";
    return {.written = writes ? shown(member, playground.written()) : std::string(),
            .result = std::visit(AsText{}, result)};
}

}  // namespace quill1xml::automation
