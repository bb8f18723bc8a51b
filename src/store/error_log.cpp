#include "store/error_log.hpp"

#include "quill1xml/text.hpp"
#include "text/numbers.hpp"

#include <algorithm>
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

/// A string of an event may not be longer: what is cut is the description, never the lines around it.
constexpr std::size_t longestEntry = 31839;

std::u16string entryText(const ports::Environment& environment, const Label& label, const Error& error) {
    std::u16string before = u"\r\nError Number: ";
    appendInteger(before, error.number());
    before.append(u". \r\nError Source: ").append(error.source());
    before.append(u". \r\n").append(toUtf16(label.caption));
    std::u16string after = u". \r\nThreadID: ";
    appendInteger(after, environment.system->threadId());
    after.append(u". \r\n").append(toUtf16(label.text));
    if (!label.member.empty()) after.append(toUtf16(label.member)).append(toUtf16(label.suffix));
    const std::size_t room = longestEntry - std::min(longestEntry, before.size() + after.size());
    return before.append(error.description(), 0, room).append(after);
}

}  // namespace

void logAndRethrow(const ports::Environment& environment, const Label& label) {
    const Error error = currentError();
    environment.log->writeError(entryText(environment, label, error));
    throw error;
}

}  // namespace quill1xml::store
