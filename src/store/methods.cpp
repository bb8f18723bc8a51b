#include "store/methods.hpp"

#include "records/record.hpp"
#include "store/trap.hpp"

namespace quill1xml::store::methods {

#define QUILL1XML_LABEL(Name) labelOf<arguments::Name>("Method: Quill1XML.Store." #Name "()")
#define METHOD(dispid, Result, Name, summary, ...)                                                    \
    Result Name(State& state, const arguments::Name& arguments) {                                     \
        return trapped(state, QUILL1XML_LABEL(Name), [&] { return bodies::Name(state, arguments); }); \
    }
#define RECORD(dispid, Name, summary, ...)                                                                \
    void Name(State& state, const arguments::Name& arguments) {                                           \
        trapped(state, QUILL1XML_LABEL(Name), [&] { records::write(state, records::Name, &arguments); }); \
    }
#include "quill1xml/methods/all.def"
#undef QUILL1XML_LABEL

}  // namespace quill1xml::store::methods
