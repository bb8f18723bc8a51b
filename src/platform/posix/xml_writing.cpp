#include "platform/posix/xml_writing.hpp"

#include <array>
#include <string_view>

namespace quill1xml::platform {
namespace {

std::string_view view(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

/// What stands for a character; empty where it stays.
using Replacements = std::array<std::string_view, 256>;

constexpr Replacements inTexts = [] {
    Replacements all{};
    all['&'] = "&amp;";
    all['<'] = "&lt;";
    all['>'] = "&gt;";
    all['\r'] = "&#13;";
    return all;
}();

constexpr Replacements inValues = [] {
    Replacements all = inTexts;
    all['"'] = "&quot;";
    all['\n'] = "&#10;";
    all['\t'] = "&#9;";
    return all;
}();

class Writer {
public:
    explicit Writer(std::string& out) : out_(out) {}

    /// False where something stands that is not written here.
    bool siblings(const xmlNode* node) {
        for (; node != nullptr; node = node->next) {
            const bool isText = node->type == XML_TEXT_NODE;
            if (isText && node->content != nullptr) escaped(node->content, inTexts);
            if (!isText && (node->type != XML_ELEMENT_NODE || !element(*node))) return false;
        }
        return true;
    }

    bool element(const xmlNode& node) {
        out_.push_back('<');
        name(node.ns, node.name);
        for (const xmlNs* space = node.nsDef; space != nullptr; space = space->next) {
            if (!declaration(*space)) return false;
        }
        for (const xmlAttr* attribute = node.properties; attribute != nullptr; attribute = attribute->next) {
            out_.push_back(' ');
            name(attribute->ns, attribute->name);
            out_.append("=\"");
            for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
                if (part->type != XML_TEXT_NODE) return false;
                if (part->content != nullptr) escaped(part->content, inValues);
            }
            out_.push_back('"');
        }
        if (node.children == nullptr) {
            out_.append("/>");
            return true;
        }
        out_.push_back('>');
        if (!siblings(node.children)) return false;
        out_.append("</");
        name(node.ns, node.name);
        out_.push_back('>');
        return true;
    }

private:
    void name(const xmlNs* space, const xmlChar* local) {
        if (space != nullptr && space->prefix != nullptr) out_.append(view(space->prefix)).push_back(':');
        out_.append(view(local));
    }

    /// libxml2 chooses the quotes by what an address holds; one that holds any is left to it.
    bool declaration(const xmlNs& space) {
        if (space.href == nullptr || (space.prefix != nullptr && view(space.prefix) == "xml")) return false;
        if (view(space.href).find_first_of("\"'") != std::string_view::npos) return false;
        out_.append(" xmlns");
        if (space.prefix != nullptr) out_.append(":").append(view(space.prefix));
        out_.append("=\"").append(view(space.href)).push_back('"');
        return true;
    }

    void escaped(const xmlChar* content, const Replacements& replacements) {
        std::string_view rest = view(content);
        for (std::size_t i = 0; i < rest.size();) {
            const std::string_view replacement = replacements[static_cast<unsigned char>(rest[i])];
            if (replacement.empty()) {
                ++i;
                continue;
            }
            out_.append(rest.substr(0, i)).append(replacement);
            rest.remove_prefix(i + 1);
            i = 0;
        }
        out_.append(rest);
    }

    std::string& out_;
};

}  // namespace

bool appendPlainTree(std::string& text, const xmlDoc& document) {
    const std::size_t size = text.size();
    const xmlNode* const root = document.children;
    const bool alone = root != nullptr && root->next == nullptr && root->type == XML_ELEMENT_NODE;
    if (alone && Writer(text).element(*root)) {
        text.push_back('\n');
        return true;
    }
    text.resize(size);
    return false;
}

}  // namespace quill1xml::platform
