#include "platform/posix/http.hpp"

#include "platform/posix/parts.hpp"
#include "quill1xml/text.hpp"

#include <new>

#include <curl/curl.h>

namespace quill1xml::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr long maximumRedirects = 5;

struct Free {
    void operator()(CURL* handle) const noexcept { curl_easy_cleanup(handle); }
    void operator()(CURLU* url) const noexcept { curl_url_cleanup(url); }
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
    void operator()(char* text) const noexcept { curl_free(text); }
};
using Handle = std::unique_ptr<CURL, Free>;
using Url = std::unique_ptr<CURLU, Free>;
using Headers = std::unique_ptr<curl_slist, Free>;

/// One exchange: what came back and why it was given up.
struct Transfer {
    enum class End { normal, silent, tooLarge, outOfMemory };

    const HttpLimits& limits;
    HttpReply reply{};
    curl_off_t moved = 0;
    Clock::time_point lastMove = Clock::now();
    End end = End::normal;
};

std::size_t onBody(char* data, std::size_t, std::size_t size, void* context) noexcept try {
    auto& transfer = *static_cast<Transfer*>(context);
    if (size > transfer.limits.replyBytes - transfer.reply.body.size()) {
        transfer.end = Transfer::End::tooLarge;
        return 0;
    }
    transfer.reply.body.append(data, size);
    return size;
} catch (const std::bad_alloc&) {
    static_cast<Transfer*>(context)->end = Transfer::End::outOfMemory;
    return 0;
}

// The library's own limit is an average speed, which ends transfers that are slow but alive.
int onProgress(void* context, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) noexcept {
    auto& transfer = *static_cast<Transfer*>(context);
    const Clock::time_point now = Clock::now();
    if (transfer.moved != received + sent) {
        transfer.moved = received + sent;
        transfer.lastMove = now;
    }
    if (now - transfer.lastMove < transfer.limits.silence) return 0;
    transfer.end = Transfer::End::silent;
    return 1;
}

std::u16string number(long long value) { return toUtf16(std::to_string(value)); }

/// A part of a URL, empty when it has none.
std::u16string partOf(const Url& url, CURLUPart part) {
    char* text = nullptr;
    if (curl_url_get(url.get(), part, &text, 0) != CURLUE_OK) return {};
    const std::unique_ptr<char, Free> owned(text);
    return toUtf16(text);
}

Url parseUrl(Text text) {
    Url url(curl_url());
    if (!url) throw std::bad_alloc();
    const bool parsed =
        curl_url_set(url.get(), CURLUPART_URL, toUtf8(text).c_str(), CURLU_ALLOW_SPACE | CURLU_URLENCODE) == CURLUE_OK;
    const std::u16string scheme = partOf(url, CURLUPART_SCHEME);
    // The text may hold a password, so it is not repeated here.
    if (!parsed || (scheme != u"http" && scheme != u"https")) {
        throw runtimeError(RuntimeError::invalidProcedureCall,
                           u"a URL that starts with http:// or https:// is expected");
    }
    return url;
}

/// The Error for a transfer that failed.
Error transferError(CURLcode code, const char* detail, const Transfer& transfer, const Url& url) {
    const std::u16string host = partOf(url, CURLUPART_HOST);
    std::u16string reason;
    switch (transfer.end) {
        case Transfer::End::outOfMemory: return runtimeError(RuntimeError::outOfMemory, host);
        case Transfer::End::silent:
            reason = u"no byte moved for " + number(transfer.limits.silence.count()) + u" s";
            break;
        case Transfer::End::tooLarge:
            reason =
                u"the reply is larger than " + number(static_cast<long long>(transfer.limits.replyBytes)) + u" bytes";
            break;
        case Transfer::End::normal: reason = toUtf16(*detail != '\0' ? detail : curl_easy_strerror(code)); break;
    }
    return runtimeError(RuntimeError::automationError, host + u": " + reason);
}

/// Prepares the library once for the process.
void initialise() {
    static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (result != CURLE_OK) throw runtimeError(RuntimeError::automationError, toUtf16(curl_easy_strerror(result)));
}

template <typename Value>
void set(CURL* handle, CURLoption option, Value value) {
    const CURLcode code = curl_easy_setopt(handle, option, value);
    if (code != CURLE_OK) throw runtimeError(RuntimeError::automationError, toUtf16(curl_easy_strerror(code)));
}

}  // namespace

CurlHttp::CurlHttp(HttpLimits limits) : limits_(limits) { initialise(); }

HttpReply CurlHttp::transfer(Text address, const std::function<void(void* handle)>& prepare) {
    const Url url = parseUrl(address);
    const Handle handle(curl_easy_init());
    if (!handle) throw std::bad_alloc();
    char detail[CURL_ERROR_SIZE] = "";
    Transfer transfer{limits_};
    set(handle.get(), CURLOPT_CURLU, url.get());
    set(handle.get(), CURLOPT_PROTOCOLS_STR, "http,https");
    set(handle.get(), CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(handle.get(), CURLOPT_FOLLOWLOCATION, 1L);
    set(handle.get(), CURLOPT_MAXREDIRS, maximumRedirects);
    set(handle.get(), CURLOPT_CONNECTTIMEOUT, static_cast<long>(limits_.connect.count()));
    set(handle.get(), CURLOPT_NOSIGNAL, 1L);
    set(handle.get(), CURLOPT_SSL_VERIFYPEER, 1L);
    set(handle.get(), CURLOPT_SSL_VERIFYHOST, 2L);
    set(handle.get(), CURLOPT_USERAGENT, "Quill1XML");
    set(handle.get(), CURLOPT_ERRORBUFFER, detail);
    set(handle.get(), CURLOPT_WRITEFUNCTION, &onBody);
    set(handle.get(), CURLOPT_WRITEDATA, &transfer);
    set(handle.get(), CURLOPT_NOPROGRESS, 0L);
    set(handle.get(), CURLOPT_XFERINFOFUNCTION, &onProgress);
    set(handle.get(), CURLOPT_XFERINFODATA, &transfer);
    prepare(handle.get());

    const CURLcode code = curl_easy_perform(handle.get());
    if (code != CURLE_OK) throw transferError(code, detail, transfer, url);
    long status = 0;
    const char* type = nullptr;
    curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(handle.get(), CURLINFO_CONTENT_TYPE, &type);
    transfer.reply.status = static_cast<int>(status);
    if (type != nullptr) transfer.reply.contentType = type;
    return std::move(transfer.reply);
}

HttpReply CurlHttp::post(Text url, std::string_view contentType, std::string_view body) {
    Headers headers;
    const auto addHeader = [&headers](const std::string& line) {
        curl_slist* const longer = curl_slist_append(headers.get(), line.c_str());
        if (longer == nullptr) throw std::bad_alloc();
        (void)headers.release();
        headers.reset(longer);
    };
    addHeader("Content-Type: " + std::string(contentType));
    addHeader("Expect:");  // waiting for "100 Continue" costs a second with servers that do not know it
    return transfer(url, [&](void* handle) {
        set(handle, CURLOPT_POST, 1L);
        set(handle, CURLOPT_POSTFIELDS, body.empty() ? "" : body.data());  // null would read standard input
        set(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        // A body that moved is posted again; only 303 (See Other) asks for a GET.
        set(handle, CURLOPT_POSTREDIR, long{CURL_REDIR_POST_301 | CURL_REDIR_POST_302});
        set(handle, CURLOPT_HTTPHEADER, headers.get());
    });
}

HttpReply CurlHttp::get(Text url, const Validators&) {
    return transfer(url, [](void*) {});
}

std::shared_ptr<Http> makeHttp() { return std::make_shared<CurlHttp>(); }

}  // namespace quill1xml::platform
