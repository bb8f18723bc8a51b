#include "platform/posix/xml_writing.hpp"

#include <array>

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

void appendEscaped(std::string& out, std::string_view rest, const Replacements& replacements) {
    for (std::size_t i = 0; i < rest.size();) {
        const std::string_view replacement = replacements[static_cast<unsigned char>(rest[i])];
        if (replacement.empty()) {
            ++i;
            continue;
        }
        out.append(rest.substr(0, i)).append(replacement);
        rest.remove_prefix(i + 1);
        i = 0;
    }
    out.append(rest);
}

const xmlChar* prefixOf(const xmlNs* space) { return space == nullptr ? nullptr : space->prefix; }

/// False where something stands that is not written here.
bool writeElement(XmlText& out, const xmlNode& node);

bool writeSiblings(XmlText& out, const xmlNode* node) {
    for (; node != nullptr; node = node->next) {
        const bool isText = node->type == XML_TEXT_NODE;
        if (isText && node->content != nullptr) out.text(view(node->content));
        if (!isText && (node->type != XML_ELEMENT_NODE || !writeElement(out, *node))) return false;
    }
    return true;
}

bool writeElement(XmlText& out, const xmlNode& node) {
    out.startTag(prefixOf(node.ns), node.name);
    for (const xmlNs* space = node.nsDef; space != nullptr; space = space->next) {
        if (!out.declaration(space->prefix, space->href)) return false;
    }
    for (const xmlAttr* attribute = node.properties; attribute != nullptr; attribute = attribute->next) {
        out.startAttribute(prefixOf(attribute->ns), attribute->name);
        for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
            if (part->type != XML_TEXT_NODE) return false;
            if (part->content != nullptr) out.value(view(part->content));
        }
        out.endAttribute();
    }
    if (node.children == nullptr) {
        out.endEmptyTag();
        return true;
    }
    out.endStartTag();
    if (!writeSiblings(out, node.children)) return false;
    out.endTag(prefixOf(node.ns), node.name);
    return true;
}

}  // namespace

void XmlText::startTag(const xmlChar* prefix, const xmlChar* local) {
    out_.push_back('<');
    name(prefix, local);
}

bool XmlText::declaration(const xmlChar* prefix, const xmlChar* address) {
    if (address == nullptr || (prefix != nullptr && view(prefix) == "xml")) return false;
    if (view(address).find_first_of("\"'") != std::string_view::npos) return false;
    out_.append(" xmlns");
    if (prefix != nullptr) out_.append(":").append(view(prefix));
    out_.append("=\"").append(view(address)).push_back('"');
    return true;
}

void XmlText::startAttribute(const xmlChar* prefix, const xmlChar* local) {
    out_.push_back(' ');
    name(prefix, local);
    out_.append("=\"");
}

void XmlText::value(std::string_view part) { appendEscaped(out_, part, inValues); }

void XmlText::text(std::string_view text) { appendEscaped(out_, text, inTexts); }

void XmlText::endTag(const xmlChar* prefix, const xmlChar* local) {
    out_.append("</");
    name(prefix, local);
    out_.push_back('>');
}

void XmlText::name(const xmlChar* prefix, const xmlChar* local) {
    if (prefix != nullptr) out_.append(view(prefix)).push_back(':');
    out_.append(view(local));
}

void appendDeclaration(std::string& text, const xmlDoc& document) {
    constexpr int noDeclaration = -1;
    const int standalone = document.standalone;
    if (standalone == noDeclaration) return;
    text.append("<?xml version=\"").append(view(document.version)).append("\"");
    if (standalone >= 0) text += standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
    text += "?>\n";
}

bool appendPlainTree(std::string& text, const xmlDoc& document) {
    const std::size_t size = text.size();
    const xmlNode* const root = document.children;
    const bool alone = root != nullptr && root->next == nullptr && root->type == XML_ELEMENT_NODE;
    XmlText out(text);
    if (alone && writeElement(out, *root)) {
        text.push_back('\n');
        return true;
    }
    text.resize(size);
    return false;
}

}  // namespace quill1xml::platform
