#include "store/document.hpp"

#include "store/trap.hpp"
#include "text/numbers.hpp"

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

std::shared_ptr<platform::Schema> schemaOf(const State& state) {
    if (state.schemaSource.empty()) {
        throw runtimeError(RuntimeError::invalidProcedureCall, u"no schema source was given to Create, Send or XML");
    }
    return state.environment.xml->loadSchema(state.schemaSource);
}

void parse(State& state, const std::shared_ptr<platform::Schema>& schema, Text text) {
    platform::ParseError error;
    state.document = state.environment.xml->parse(std::u16string(text), schema, error);
    state.documentLoaded = state.document != nullptr;
    if (state.documentLoaded) return;
    throw Error(applicationError, loadSource,
                account(u"Failed to load web store document XML.",
                        {{u"Error Code: ", number(error.code)}, {u"Reason: ", error.reason}}));
}

void loadFile(State& state, const std::shared_ptr<platform::Schema>& schema, Text fileName) {
    platform::ParseError error;
    state.document = state.environment.xml->load(fileName, schema, error);
    state.documentLoaded = state.document != nullptr;
    if (state.documentLoaded) return;
    throw Error(applicationError, loadSource,
                account(u"Failed to load file because : ", {{u"Error Code : ", number(error.code)},
                                                            {u"File Position : ", number(error.filePosition)},
                                                            {u"Line : ", number(error.line)},
                                                            {u"Line Position : ", number(error.linePosition)},
                                                            {u"Reason : ", error.reason},
                                                            {u"Source Text : ", error.sourceText},
                                                            {u"URL : ", error.url}}));
}

}  // namespace

void load(State& state, DocumentSource source, Text fileName, Text text) {
    trapped(state, {"Method: Quill1XML.Store.Load()"}, [&] {
        state.schemaValid = false;
        if (source == DocumentSource::file && fileName.empty()) {
            throw Error(applicationError, loadSource, u"There is no Web Store Source to load.");
        }
        const std::shared_ptr<platform::Schema> schema = schemaOf(state);
        if (source == DocumentSource::memory) {
            parse(state, schema, text);
        } else {
            loadFile(state, schema, fileName);
        }
        validate(state);
    });
}

void validate(State& state) {
    trapped(state, {"Method: Quill1XML.Store.Validate()"}, [&] {
        if (!state.documentLoaded) {
            throw Error(applicationError, validateSource,
                        u"The document object has not yet been loaded. There is nothing to Validate.");
        }
        const platform::ParseError error = state.document->validate();
        if (error) {
            throw Error(applicationError, validateSource,
                        account(u"The Web Store XML document is not schema valid.",
                                {{u"Error Code: ", number(error.code)},
                                 {u"File Position: ", number(error.filePosition)},
                                 {u"Line Number: ", number(error.line)},
                                 {u"Line Position: ", number(error.linePosition)},
                                 {u"Reason: ", error.reason},
                                 {u"Source Text: ", error.sourceText},
                                 {u"URL: ", error.url}}));
        }
        state.schemaValid = true;
    });
}

}  // namespace quill1xml::store
