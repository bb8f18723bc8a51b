#include "quill1xml/error.hpp"

#include "quill1xml/text.hpp"

namespace quill1xml {
namespace {

std::u16string_view usualText(RuntimeError error) {
    switch (error) {
        case RuntimeError::invalidProcedureCall: return u"Invalid procedure call or argument";
        case RuntimeError::overflow: return u"Overflow";
        case RuntimeError::outOfMemory: return u"Out of memory";
        case RuntimeError::subscriptOutOfRange: return u"Subscript out of range";
        case RuntimeError::typeMismatch: return u"Type mismatch";
        case RuntimeError::internalError: return u"Internal error";
        case RuntimeError::fileNotFound: return u"File not found";
        case RuntimeError::deviceIo: return u"Device I/O error";
        case RuntimeError::diskFull: return u"Disk full";
        case RuntimeError::tooManyFiles: return u"Too many files";
        case RuntimeError::permissionDenied: return u"Permission denied";
        case RuntimeError::pathFileAccess: return u"Path/File access error";
        case RuntimeError::pathNotFound: return u"Path not found";
        case RuntimeError::objectNotSet: return u"Object variable or With block variable not set";
        case RuntimeError::cannotCreateObject: return u"ActiveX component can't create object";
        case RuntimeError::unknownMember: return u"Object doesn't support this property or method";
        case RuntimeError::automationError: return u"Automation error";
        case RuntimeError::namedArgumentNotFound: return u"Named argument not found";
        case RuntimeError::argumentNotOptional: return u"Argument not optional";
        case RuntimeError::wrongArgumentCount: return u"Wrong number of arguments or invalid property assignment";
        case RuntimeError::keyInUse: return u"This key is already associated with an element of this collection";
    }
    return u"Application-defined or object-defined error";
}

}  // namespace

Error::Error(std::int32_t number, std::u16string_view source, std::u16string_view description)
    : number_(number), source_(source), description_(description), what_(toUtf8(description)) {}

Error runtimeError(RuntimeError error, std::u16string_view detail) {
    std::u16string description(usualText(error));
    if (!detail.empty()) description.append(u": ").append(detail);
    return {static_cast<std::int32_t>(error), u"Quill1XML", description};
}

}  // namespace quill1xml
