#include "image.hpp"

#include "document.hpp"
#include "receipt.hpp"

#include <algorithm>
#include <cstdint>

namespace quill1xml::sandbox {
namespace {

using namespace std::string_view_literals;

Refusal refuse(std::string description) { return {RefusalNumber::badImage, "Images", std::move(description)}; }

/// The value of a base64 digit; -1 for other characters.
int digit(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    return c == '/' ? 63 : -1;
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

void requirePlainName(const std::string& name, const char* what) {
    const bool plain =
        !name.empty() && name != "." && name != ".." && std::none_of(name.begin(), name.end(), [](char c) {
            return c == '/' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
        });
    if (!plain) throw refuse(std::string(what) + " \"" + name + "\" is not a plain name.");
}

const xmlNode* onlyImage(const xmlDoc* document) {
    xmlNode* root = xmlDocGetRootElement(document);
    const xmlNode* child = xmlFirstElementChild(root);
    if (xmlChildElementCount(root) != 1 || localName(child) != "Image")
        throw refuse("An image request has one Image element.");
    return child;
}

}  // namespace

std::optional<std::string> decodeBase64(std::string text) {
    std::erase_if(text, isBlank);
    if (text.size() % 4 != 0) return std::nullopt;
    for (int padding = 0; padding < 2 && text.ends_with('='); ++padding) text.pop_back();
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const int value = digit(c);
        if (value < 0) return std::nullopt;
        bits = (bits << 6) | static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> count) & 0xFF);
        }
    }
    return bytes;
}

ImageRequest readImageRequest(const xmlDoc* document) {
    requireStoreRoot(document, {}, "Images");
    const xmlNode* root = xmlDocGetRootElement(document);
    const xmlNode* image = onlyImage(document);
    ImageRequest request;
    request.user = attributeValue(root, "UserName");
    request.password = attributeValue(root, "Password");
    request.folder = attributeValue(root, "UploadFolder");
    request.name = attributeValue(image, "ImageName");
    const std::string thumbnail = attributeValue(root, "CreateThumbnail");
    request.thumbnail = !thumbnail.empty() && thumbnail != "0";
    // Clients write the attribute only to delete, and each writes a Boolean in its own way.
    request.deleted = xmlHasProp(root, reinterpret_cast<const xmlChar*>("Deleted")) != nullptr;
    requirePlainName(request.folder, "The folder");
    requirePlainName(request.name, "The image name");
    if (request.deleted) return request;

    const std::unique_ptr<xmlChar, void (*)(void*)> content(xmlNodeGetContent(image), xmlFree);
    std::optional<std::string> bytes = decodeBase64(reinterpret_cast<const char*>(content.get()));
    if (!bytes) throw refuse("The image is not in base64.");
    request.bytes = std::move(*bytes);
    return request;
}

const char* imageType(std::string_view bytes) {
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return "image/png";
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return "image/jpeg";
    if (bytes.starts_with("GIF8"sv)) return "image/gif";
    if (bytes.starts_with("BM"sv)) return "image/bmp";
    if (bytes.starts_with("RIFF"sv) && bytes.substr(std::min<std::size_t>(bytes.size(), 8)).starts_with("WEBP"sv))
        return "image/webp";
    return "application/octet-stream";
}

}  // namespace quill1xml::sandbox
