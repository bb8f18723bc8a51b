#include "platform/posix/xml_one_pass.hpp"

#include "platform/posix/xml_limits.hpp"
#include "platform/posix/xml_memory.hpp"
#include "platform/posix/xml_writing.hpp"

#include <memory>
#include <new>

#include <libxml/parser.h>

namespace quill1xml::platform {
namespace {

struct Free {
    void operator()(xmlParserCtxt* parser) const noexcept { xmlFreeParserCtxt(parser); }
    void operator()(xmlSchemaValidCtxt* validation) const noexcept { xmlSchemaFreeValidCtxt(validation); }
    void operator()(xmlSchemaSAXPlugStruct* plug) const noexcept { xmlSchemaSAXUnplug(plug); }
};

/// What the callbacks work on.
struct Pass {
    xmlParserCtxt& parser;
    std::string& text;
    MemoryWatch& memory;
    XmlText out{text};
    xmlSAXHandler* validation = nullptr;  ///< hears what the parser finds
    void* validationContext = nullptr;
    int depth = 0;
    bool startTagOpen = false;
    bool goesOn = true;

    void giveUp() noexcept {
        goesOn = false;
        xmlStopParser(&parser);
    }

    /// Runs a part of a callback that says whether it could write what it got; returns whether the pass goes on.
    template <typename Part>
    bool wrote(const Part& part) noexcept {
        if (!goesOn) return false;
        memory.guard([&] { goesOn = part(); });
        if (!goesOn || memory.hasRunOut()) giveUp();
        return goesOn;
    }

    void closeStartTag() {
        if (startTagOpen) out.endStartTag();
        startTagOpen = false;
    }
};

Pass& passOf(void* parser) { return *static_cast<Pass*>(static_cast<xmlParserCtxt*>(parser)->_private); }

void note(Pass& pass, const xmlError& error) noexcept {
    pass.memory.look(error);
    if (error.level >= XML_ERR_ERROR) pass.giveUp();
}

// The constness of the error differs between versions of libxml2.
template <typename XmlError>
void onParserError(void* parser, XmlError* error) noexcept {
    note(passOf(parser), *error);
}

template <typename XmlError>
void onInvalid(void* pass, XmlError* error) noexcept {
    note(*static_cast<Pass*>(pass), *error);
}

/// One of the five-field attributes that the parser hands over. Every ampersand in its value is a reference.
bool writeAttribute(XmlText& out, const xmlChar* const* fields) {
    constexpr std::string_view ampersand = "&#38;";
    std::string_view value(reinterpret_cast<const char*>(fields[3]), static_cast<std::size_t>(fields[4] - fields[3]));
    out.startAttribute(fields[1], fields[0]);
    for (std::size_t at = 0; (at = value.find('&')) != std::string_view::npos;) {
        if (!value.substr(at).starts_with(ampersand)) return false;
        out.value(value.substr(0, at + 1));
        value.remove_prefix(at + ampersand.size());
    }
    out.value(value);
    out.endAttribute();
    return true;
}

void onStart(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
             const xmlChar** namespaces, int attributeCount, int defaultedCount, const xmlChar** attributes) noexcept {
    Pass& pass = passOf(parser);
    const bool written = pass.wrote([&] {
        if (!excessAt(pass.parser, pass.depth).empty() || defaultedCount != 0 || pass.parser.myDoc == nullptr)
            return false;
        if (pass.depth++ == 0) appendDeclaration(pass.text, *pass.parser.myDoc);
        pass.closeStartTag();
        pass.out.startTag(prefix, name);
        for (int i = 0; i < namespaceCount; ++i) {
            if (!pass.out.declaration(namespaces[2 * i], namespaces[2 * i + 1])) return false;
        }
        for (int i = 0; i < attributeCount; ++i) {
            if (!writeAttribute(pass.out, attributes + 5 * i)) return false;
        }
        pass.startTagOpen = true;
        return true;
    });
    if (!written) return;
    pass.validation->startElementNs(pass.validationContext, name, prefix, uri, namespaceCount, namespaces,
                                    attributeCount, defaultedCount, attributes);
}

void onEnd(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) noexcept {
    Pass& pass = passOf(parser);
    const bool written = pass.wrote([&] {
        --pass.depth;
        if (pass.startTagOpen) {
            pass.out.endEmptyTag();
        } else {
            pass.out.endTag(prefix, name);
        }
        pass.startTagOpen = false;
        return true;
    });
    if (written) pass.validation->endElementNs(pass.validationContext, name, prefix, uri);
}

void onText(void* parser, const xmlChar* text, int length) noexcept {
    Pass& pass = passOf(parser);
    const bool written = pass.wrote([&] {
        pass.closeStartTag();
        pass.out.text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
        return true;
    });
    if (written) pass.validation->characters(pass.validationContext, text, length);
}

void listen(xmlSAXHandler& to) {
    to.serror = &onParserError;
    to.startElementNs = &onStart;
    to.endElementNs = &onEnd;
    to.characters = to.ignorableWhitespace = &onText;
    to.cdataBlock = [](void* parser, const xmlChar*, int) noexcept { passOf(parser).giveUp(); };
    to.comment = [](void* parser, const xmlChar*) noexcept { passOf(parser).giveUp(); };
    to.reference = [](void* parser, const xmlChar*) noexcept { passOf(parser).giveUp(); };
    to.processingInstruction = [](void* parser, const xmlChar*, const xmlChar*) noexcept { passOf(parser).giveUp(); };
    to.internalSubset = [](void* parser, const xmlChar*, const xmlChar*, const xmlChar*) noexcept {
        passOf(parser).giveUp();
    };
}

}  // namespace

std::optional<std::string> textIfValid(std::string_view document, const XsdSchema& schema) {
    if (document.size() > maximumSize || !excessIn(document).empty()) return std::nullopt;
    requireRoomForSchema();
    MemoryWatch memory;
    const std::unique_ptr<xmlParserCtxt, Free> parser(xmlNewParserCtxt());
    std::unique_ptr<xmlSchemaValidCtxt, Free> validation(xmlSchemaNewValidCtxt(schema.compiled()));
    const auto requireMemory = [&] {
        if (!memory.hasRunOut()) return;
        // Freeing what is half made would follow pointers that were never set.
        (void)validation.release();
        throw std::bad_alloc();
    };
    requireMemory();
    if (!parser || !validation) throw std::bad_alloc();
    std::string text;
    text.reserve(document.size() + 1);
    Pass pass{*parser, text, memory};
    parser->_private = &pass;
    listen(*parser->sax);
    xmlSchemaSetValidStructuredErrors(validation.get(), &onInvalid, &pass);
    std::unique_ptr<xmlSchemaSAXPlugStruct, Free> plug(
        xmlSchemaSAXPlug(validation.get(), &pass.validation, &pass.validationContext));
    if (!plug) throw std::bad_alloc();

    const TreeOwner wellFormed(
        xmlCtxtReadMemory(parser.get(), document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                          XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_BIG_LINES | XML_PARSE_IGNORE_ENC));
    if (memory.hasRunOut()) (void)plug.release();
    requireMemory();
    // libxml2 takes a null character after the root element for the end.
    const bool complete = parser->input != nullptr && parser->input->cur == parser->input->end;
    const bool valid = xmlSchemaIsValid(validation.get()) == 1;
    if (!wellFormed || !complete || !valid || !pass.goesOn) return std::nullopt;
    text.push_back('\n');
    return text;
}

}  // namespace quill1xml::platform
