#include "addresses.hpp"

#include <algorithm>
#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

constexpr Address all[] = {
    {"GET", "/", "the shop window: what shoppers see, and what arrived lately"},
    {"GET", "/products", "the catalogue, by category"},
    {"GET", "/customers", "who may log in to the shop"},
    {"GET", "/orders", "orders as they stand, updates included"},
    {"GET", "/quotations", "what shoppers ask a price for"},
    {"GET", "/images", "images that were sent; JSON for programs"},
    {"GET", "/images/FOLDER/NAME", "one image"},
    {"GET", "/imports", "accepted uploads; JSON for programs"},
    {"GET", "/imports/NUMBER", "one upload and what it brought"},
    {"GET", "/refusals", "refused posts and why"},
    {"GET", "/refusals/NUMBER", "one refused post and how it began"},
    {"GET", "/records", "everything that arrived, of a kind= or key= if given; JSON for programs"},
    {"GET", "/records/NUMBER", "one record with all its attributes and its history"},
    {"GET", "/records/NUMBER/picture", "the picture inside a product's record"},
    {"GET", "/kinds", "how many records of each kind arrived, in JSON"},
    {"GET", "/schema.xsd", "the schema of uploads"},
    {"GET", "/schema.xdr", "the same in the reduced dialect"},
    {"POST", "/upload", "publish a store document"},
    {"POST", "/customers", "download customers"},
    {"POST", "/orders", "download orders"},
    {"POST", "/quotations", "download quotations"},
    {"POST", "/offline-products", "download what a customer has ordered"},
    {"POST", "/images", "send or delete an image"},
    {"POST", "/seed", "let sample shoppers come, once"},
    {"POST", "/misbehave", "plan a fault: {\"upload\": \"next\", \"action\": \"refuse\"}"},
};

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

}  // namespace

std::span<const Address> addresses() { return all; }

std::string patternOf(std::string_view method, std::string_view path) {
    const bool listed = std::ranges::any_of(
        all, [&](const Address& address) { return address.method == method && address.path == path; });
    if (!listed) throw std::logic_error("not among the addresses: " + std::string(method) + ' ' + std::string(path));
    std::string pattern;
    while (!path.empty()) {
        const std::size_t word =
            std::min(path.size(), static_cast<std::size_t>(std::ranges::find_if_not(path, isCapital) - path.begin()));
        if (word > 0) {
            pattern += "([^/]+)";
            path.remove_prefix(word);
        } else {
            if (path.front() == '.') pattern += '\\';
            pattern += path.front();
            path.remove_prefix(1);
        }
    }
    return pattern;
}

std::string addressesText() {
    std::string text;
    std::size_t width = 0;
    for (const Address& address : all) width = std::max(width, address.path.size());
    for (const Address& address : all) {
        text += "  " + std::string(address.method) + std::string(6 - address.method.size(), ' ');
        text += std::string(address.path) + std::string(width + 2 - address.path.size(), ' ');
        text += std::string(address.what) + '\n';
    }
    return text;
}

}  // namespace quill1xml::sandbox
