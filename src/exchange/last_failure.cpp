#include "exchange/last_failure.hpp"

#include "exchange/check.hpp"
#include "exchange/receipt.hpp"
#include "quill1xml/text.hpp"
#include "store/perform.hpp"
#include "text/numbers.hpp"
#include "text/url.hpp"

#include <algorithm>
#include <utility>

namespace quill1xml::exchange {
namespace {

constexpr std::size_t shownBytes = 80;
constexpr std::size_t shownProblems = 20;

/// "POST http://host/path answered 404 text/html: "..."; a receipt or a store document was expected".
std::u16string accountOf(const store::Answer& answer) {
    std::u16string text = u"POST " + printableUrl(answer.url) + u" answered ";
    appendInteger(text, answer.status);
    if (!answer.contentType.empty()) text.append(u" ").append(toUtf16(answer.contentType));
    if (answer.beginning.empty()) {
        text.append(u" and nothing else");
    } else {
        text.append(u": \"").append(toUtf16(answer.beginning)).append(u"\"");
    }
    return text.append(u"; a receipt or a store document in XML was expected");
}

std::u16string account(store::State& state, const Error& error) {
    const std::u16string& packet = state.packetUnderWay;
    const bool answered = state.answer.status != 0;
    std::u16string text;
    if (!packet.empty() && !answered) {
        const std::vector<Problem> problems = checkPacket(state, packet);
        for (std::size_t i = 0; i < std::min(problems.size(), shownProblems); ++i) {
            if (problems[i].severity != Problem::Severity::error) continue;
            text.append(text.empty() ? u"" : u"\r\n").append(describe(problems[i]));
        }
        if (!text.empty()) return text;
    }
    if (!packet.empty()) text.append(packet).append(u": ");
    // A refusal says all that there is to say.
    return text.append(answered && !isRefusal(error) ? accountOf(state.answer) : error.description());
}

}  // namespace

ports::HttpReply post(store::State& state, Text url, std::string_view body) {
    state.answer = {};
    ports::HttpReply reply;
    try {
        reply = state.environment.http->post(url, "application/x-www-form-urlencoded", body);
    } catch (const ports::NotReached&) {
        state.answer.notReached = true;
        throw;
    }
    state.answer.url = url;
    state.answer.status = reply.status;
    state.answer.contentType = reply.contentType;
    state.answer.beginning = reply.body.substr(0, shownBytes);
    return reply;
}

void noteFailure(store::State& state, const Error& error) noexcept {
    if (!state.lastFailure.empty()) return;
    try {
        state.lastFailure = account(state, error);
    } catch (const std::exception&) {
        // The error itself tells enough where its account cannot be had.
        state.lastFailure.clear();
    }
}

}  // namespace quill1xml::exchange

namespace quill1xml::store {

std::u16string perform(State& state, const arguments::LastFailure&) {
    const bool both = !state.lastFailure.empty() && !state.doubts.empty();
    return state.lastFailure + (both ? u"\r\n" : u"") + state.doubts;
}

}  // namespace quill1xml::store
