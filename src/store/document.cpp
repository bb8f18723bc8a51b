#include "store/document.hpp"

#include "store/error_log.hpp"
#include "store/torn_end.hpp"
#include "text/numbers.hpp"
#include "text/xml_attribute.hpp"

#include <initializer_list>
#include <utility>

namespace quill1xml::store {
namespace {

constexpr Text loadSource = u"Quill1XML.Store.Load()";
constexpr Text validateSource = u"Quill1XML.Store.Validate()";

std::u16string number(Long value) {
    std::u16string text;
    appendInteger(text, value);
    return text;
}

/// A headline, then one line per field of a parse error, each ending in a point.
std::u16string account(Text headline, std::initializer_list<std::pair<Text, std::u16string>> fields) {
    std::u16string text(headline);
    for (const auto& [caption, value] : fields) text.append(u"\r\n").append(caption).append(value).append(u".");
    return text;
}

[[noreturn]] void failedToLoad(const std::u16string& description) {
    throw Error(applicationError, loadSource, description);
}

/// Loads and validates a document that a function parses.
template <class Parse>
void load(State& state, Parse parse) {
    logged(state, labels::load, [&] {
        state.schemaValid = false;
        parse();
        validate(state);
    });
}

}  // namespace

void loadText(State& state, std::span<const Text> pieces, Text packet) {
    load(state, [&] {
        ports::ParseError error;
        state.document =
            state.environment.xml->parse(pieces, state.schema.load(state.environment, state.schemaSource), error);
        state.documentLoaded = state.document != nullptr;
        if (state.documentLoaded) return;
        const std::u16string torn = accountOfTornEnd(state.packetUnderWay, packet);
        failedToLoad(account(u"Failed to load web store document XML.",
                             {{u"Error Code: ", number(error.code)}, {u"Reason: ", error.reason}}) +
                     (torn.empty() ? torn : u"\r\n" + torn));
    });
}

void loadFile(State& state, Text fileName) {
    load(state, [&] {
        if (fileName.empty()) failedToLoad(u"There is no Web Store Source to load.");
        ports::ParseError error;
        state.document =
            state.environment.xml->load(fileName, state.schema.load(state.environment, state.schemaSource), error);
        state.documentLoaded = state.document != nullptr;
        if (state.documentLoaded) return;
        failedToLoad(
            account(u"Failed to load file because : ", {{u"Error Code : ", number(error.code)},
                                                        {u"File Position : ", number(error.filePosition)},
                                                        {u"Line : ", number(error.line)},
                                                        {u"Line Position : ", number(error.linePosition)},
                                                        {u"Source Text : ", withoutPasswords(error.sourceText)},
                                                        {u"URL : ", error.url},
                                                        {u"Reason : ", error.reason}}));
    });
}

void validate(State& state) {
    logged(state, labels::validate, [&] {
        if (!state.documentLoaded) {
            throw Error(applicationError, validateSource,
                        u"The document object has not yet been loaded. There is nothing to Validate.");
        }
        const ports::ParseError error = state.document->validate();
        if (error) {
            throw Error(applicationError, validateSource,
                        account(u"The Web Store XML document is not schema valid.",
                                {{u"Error Code: ", number(error.code)},
                                 {u"File Position: ", number(error.filePosition)},
                                 {u"Line Number: ", number(error.line)},
                                 {u"Line Position: ", number(error.linePosition)},
                                 {u"Reason: ", error.reason},
                                 {u"Source Text: ", withoutPasswords(error.sourceText)},
                                 {u"URL: ", error.url}}));
        }
        state.schemaValid = true;
    });
}

}  // namespace quill1xml::store
