#include "store/error_log.hpp"

#include "quill1xml/text.hpp"
#include "text/numbers.hpp"

#include <new>

namespace quill1xml::store {
namespace {

/// The exception being handled, as an Error.
Error currentError() {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return runtimeError(RuntimeError::outOfMemory);
    } catch (const std::exception& error) {
        return runtimeError(RuntimeError::internalError, toUtf16(error.what()));
    } catch (...) {
        return runtimeError(RuntimeError::internalError);
    }
}

std::u16string entryText(const ports::Environment& environment, const Label& label, const Error& error) {
    std::u16string text = u"\r\nError Number: ";
    appendInteger(text, error.number());
    text.append(u". \r\nError Source: ").append(error.source());
    text.append(u". \r\n").append(toUtf16(label.caption)).append(error.description());
    text.append(u". \r\nThreadID: ");
    appendInteger(text, environment.system->threadId());
    text.append(u". \r\n").append(toUtf16(label.text));
    if (!label.member.empty()) text.append(toUtf16(label.member)).append(toUtf16(label.suffix));
    return text;
}

}  // namespace

void logAndRethrow(const ports::Environment& environment, const Label& label) {
    const Error error = currentError();
    environment.log->writeError(entryText(environment, label, error));
    throw error;
}

}  // namespace quill1xml::store
