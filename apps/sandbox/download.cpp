#include "download.hpp"

#include "receipt.hpp"

#include <charconv>
#include <ctime>

namespace quill1xml::sandbox {
namespace {

/// The local date and time, without a zone.
std::string now() {
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    localtime_r(&seconds, &local);
    char text[sizeof "yyyy-MM-ddThh:mm:ss"];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local)};
}

/// Quotations come with their currency under another name than the one they go out with.
void nameAsDownloaded(Json& quotation) {
    Json renamed = Json::object();
    for (const auto& [name, value] : quotation.items()) renamed[name == "Currency" ? "QuoteCurrency" : name] = value;
    quotation = std::move(renamed);
}

}  // namespace

std::map<std::string, std::string> readForm(std::string_view body) {
    std::map<std::string, std::string> form;
    while (!body.empty()) {
        const std::string_view field = body.substr(0, body.find('&'));
        body.remove_prefix(std::min(body.size(), field.size() + 1));
        const std::size_t equals = field.find('=');
        if (equals != std::string_view::npos) form.emplace(field.substr(0, equals), field.substr(equals + 1));
    }
    return form;
}

std::int32_t storeIdIn(const std::map<std::string, std::string>& form) {
    const auto found = form.find("StoreID");
    if (found != form.end()) {
        const std::string& text = found->second;
        std::int32_t id = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
        if (error == std::errc() && end == text.data() + text.size()) return id;
    }
    throw Refusal(RefusalNumber::badRequest, "Request", "The form has no StoreID that is a number.");
}

std::string downloadDocument(Storage& storage, const Download& download, std::int32_t storeId,
                             const std::optional<std::string>& customer) {
    std::string out = "<Store xmlns=\"WebStore\" StoreID=\"" + std::to_string(storeId) + "\"><Envelope DateCreated=\"" +
                      now() + "\"/>";
    storage.eachStanding(download.element, storeId, [&](Json& attributes, const Json& children) {
        if (customer && attributes.value("EMailAddress", std::string()) != *customer) return;
        if (download.element == std::string_view(quotations.element)) nameAsDownloaded(attributes);
        out += elementText(download.element, attributes, children);
    });
    return out + "</Store>";
}

}  // namespace quill1xml::sandbox
