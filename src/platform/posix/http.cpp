#include "platform/posix/http.hpp"

#include "platform/posix/parts.hpp"
#include "quill1xml/text.hpp"
#include "text/letter_case.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <curl/curl.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quill1xml::platform {

struct Delivery {
    /// The open connections, with the bytes that the other side's system had confirmed to have before the request.
    std::map<curl_socket_t, std::optional<std::uint64_t>> connections{};
    bool underWay = false;
    bool taken = false;  ///< the connection closed, and the server may have the request
};

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t maximumHeaders = limits::headersMiB * limits::bytesInMiB;

struct Free {
    void operator()(CURLU* url) const noexcept { curl_url_cleanup(url); }
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
    void operator()(char* text) const noexcept { curl_free(text); }
};
using Url = std::unique_ptr<CURLU, Free>;
using Headers = std::unique_ptr<curl_slist, Free>;

/// Bytes that the other side's system has confirmed to have received; nothing where that is not known.
std::optional<std::uint64_t> bytesAcknowledged(curl_socket_t socket) noexcept {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) return std::nullopt;
    const bool told = size >= offsetof(tcp_info, tcpi_bytes_acked) + sizeof info.tcpi_bytes_acked;
    return told ? std::optional<std::uint64_t>(info.tcpi_bytes_acked) : std::nullopt;
}

/// One exchange: what came back and why it was given up.
struct Transfer {
    enum class End { normal, silent, tooLarge, longHeaders, unanswered, outOfMemory };

    const ports::HttpOptions& options;
    CURL* handle;
    Delivery& delivery;
    const std::u16string host;
    HttpReply reply{};
    std::size_t received = 0;  ///< of all replies, with their headers
    std::size_t headers = 0;   ///< the part of it that is headers and trailers
    curl_off_t moved = 0;
    Clock::time_point lastMove = Clock::now();
    std::chrono::seconds told{0};  ///< of the silence, to the host
    End end = End::normal;
};

/// Counts what came; false when it is too much.
bool admit(Transfer& transfer, std::size_t size) noexcept {
    if (size > transfer.options.replyBytes - transfer.received) transfer.end = Transfer::End::tooLarge;
    transfer.received += size;
    return transfer.end == Transfer::End::normal;
}

// The library keeps all headers, however many there are.
std::size_t onHeader(char*, std::size_t, std::size_t size, void* context) noexcept {
    auto& transfer = *static_cast<Transfer*>(context);
    transfer.headers += size;
    if (transfer.headers > maximumHeaders) transfer.end = Transfer::End::longHeaders;
    return admit(transfer, size) ? size : 0;
}

std::size_t onBody(char* data, std::size_t, std::size_t size, void* context) noexcept try {
    auto& transfer = *static_cast<Transfer*>(context);
    if (!admit(transfer, size)) return 0;
    transfer.reply.body.append(data, size);
    return size;
} catch (const std::bad_alloc&) {
    static_cast<Transfer*>(context)->end = Transfer::End::outOfMemory;
    return 0;
}

/// How long the server may be silent: until the connection stands, the shorter of two limits.
std::chrono::seconds patience(const Transfer& transfer) noexcept {
    const ports::HttpOptions& options = transfer.options;
    curl_off_t connected = 0;
    curl_easy_getinfo(transfer.handle, CURLINFO_PRETRANSFER_TIME_T, &connected);
    return connected > 0 ? options.silence : std::min(options.silence, options.connect);
}

void tellSilence(Transfer& transfer, std::chrono::seconds silent) noexcept {
    if (!transfer.options.waiting || silent == transfer.told) return;
    transfer.told = silent;
    try {
        transfer.options.waiting({transfer.host, silent, patience(transfer)});
    } catch (...) {
        // Whether somebody looks on makes no difference to the exchange.
    }
}

// The library's own limit is an average speed, which ends transfers that are slow but alive.
int onProgress(void* context, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) noexcept {
    auto& transfer = *static_cast<Transfer*>(context);
    const Clock::time_point now = Clock::now();
    if (transfer.moved != received + sent) {
        transfer.moved = received + sent;
        transfer.lastMove = now;
    }
    const Clock::duration silent = now - transfer.lastMove;
    tellSilence(transfer, std::chrono::duration_cast<std::chrono::seconds>(silent));
    if (silent < transfer.options.silence) return 0;
    transfer.end = Transfer::End::silent;
    return 1;
}

// On a kept connection that closes without an answer the library sends the request again. That is right where the
// server had closed it before, and wrong where it may have taken the request.
int onRequest(void* context, char*, char*, int, int) noexcept {
    auto& transfer = *static_cast<Transfer*>(context);
    if (transfer.delivery.taken) {
        transfer.end = Transfer::End::unanswered;
        return CURL_PREREQFUNC_ABORT;
    }
    transfer.delivery.underWay = true;
    for (auto& [socket, acknowledged] : transfer.delivery.connections) acknowledged = bytesAcknowledged(socket);
    return CURL_PREREQFUNC_OK;
}

curl_socket_t onOpen(void* context, curlsocktype, curl_sockaddr* address) noexcept try {
    auto& connections = static_cast<Delivery*>(context)->connections;
    const curl_socket_t socket = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (socket != CURL_SOCKET_BAD) connections[socket].reset();
    return socket;
} catch (const std::bad_alloc&) {
    return CURL_SOCKET_BAD;
}

int onClose(void* context, curl_socket_t socket) noexcept {
    auto& delivery = *static_cast<Delivery*>(context);
    if (const auto connection = delivery.connections.find(socket); connection != delivery.connections.end()) {
        const auto now = bytesAcknowledged(socket);
        const bool received = !now || !connection->second || *now > *connection->second;
        delivery.taken = delivery.taken || (delivery.underWay && received);
        delivery.connections.erase(connection);
    }
    return ::close(socket);
}

std::u16string number(long long value) { return toUtf16(std::to_string(value)); }

/// A part of a URL, empty when it has none.
std::u16string partOf(const Url& url, CURLUPart part, unsigned flags = 0) {
    char* text = nullptr;
    const CURLUcode code = curl_url_get(url.get(), part, &text, flags);
    if (code == CURLUE_OUT_OF_MEMORY) throw std::bad_alloc();
    if (code != CURLUE_OK) return {};
    const std::unique_ptr<char, Free> owned(text);
    return toUtf16(text);
}

bool setPart(const Url& url, CURLUPart part, const std::string& text, unsigned flags = 0) {
    const CURLUcode code = curl_url_set(url.get(), part, text.c_str(), flags);
    if (code == CURLUE_OUT_OF_MEMORY) throw std::bad_alloc();
    return code == CURLUE_OK;
}

Url parseUrl(Text text) {
    Url url(curl_url());
    if (!url) throw std::bad_alloc();
    const bool parsed = setPart(url, CURLUPART_URL, toUtf8(text), CURLU_ALLOW_SPACE | CURLU_URLENCODE);
    const std::u16string scheme = partOf(url, CURLUPART_SCHEME);
    // The text may hold a password, so it is not repeated here.
    if (!parsed || (scheme != u"http" && scheme != u"https")) {
        throw runtimeError(RuntimeError::invalidProcedureCall,
                           u"a URL that starts with http:// or https:// is expected");
    }
    return url;
}

/// The Error for a transfer that failed.
Error transferError(CURLcode code, const char* detail, const Transfer& transfer) {
    std::u16string reason;
    if (code == CURLE_OUT_OF_MEMORY) return runtimeError(RuntimeError::outOfMemory, transfer.host);
    switch (transfer.end) {
        case Transfer::End::outOfMemory: return runtimeError(RuntimeError::outOfMemory, transfer.host);
        case Transfer::End::silent:
            reason = u"no byte moved for " + number(transfer.options.silence.count()) + u" s";
            break;
        case Transfer::End::tooLarge:
            reason =
                u"the reply is larger than " + number(static_cast<long long>(transfer.options.replyBytes)) + u" bytes";
            break;
        case Transfer::End::longHeaders:
            reason = u"the headers of the reply are larger than " + number(limits::headersMiB) + u" MiB";
            break;
        case Transfer::End::unanswered:
            reason = u"the server closed the connection before it answered; whether it took the request is not known";
            break;
        case Transfer::End::normal: reason = toUtf16(*detail != '\0' ? detail : curl_easy_strerror(code)); break;
    }
    return runtimeError(RuntimeError::automationError, transfer.host + u": " + reason);
}

/// Whether a transfer failed before its server was spoken to.
bool isBeforeSending(CURLcode code) {
    switch (code) {
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
        case CURLE_COULDNT_CONNECT:
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION: return true;
        default: return false;
    }
}

/// Prepares the library once for the process.
void initialise() {
    static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (result != CURLE_OK) throw runtimeError(RuntimeError::automationError, toUtf16(curl_easy_strerror(result)));
}

template <typename Value>
void set(CURL* handle, CURLoption option, Value value) {
    const CURLcode code = curl_easy_setopt(handle, option, value);
    if (code == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
    if (code != CURLE_OK) throw runtimeError(RuntimeError::automationError, toUtf16(curl_easy_strerror(code)));
}

[[noreturn]] void refuseRedirect(const Url& from, const std::u16string& reason) {
    throw runtimeError(RuntimeError::automationError, partOf(from, CURLUPART_HOST) + u": " + reason);
}

/// Where a reply sends the client on to. The body may hold a password, so it stays with the host that it was meant for:
/// the same address, or its encrypted one.
Url redirected(const Url& from, const char* location) {
    Url to(curl_url());
    if (!to) throw std::bad_alloc();
    const bool parsed = setPart(to, CURLUPART_URL, location, CURLU_ALLOW_SPACE | CURLU_URLENCODE);
    const auto same = [&](CURLUPart part) {
        return equalIgnoringCase(Text(partOf(from, part, CURLU_DEFAULT_PORT)),
                                 Text(partOf(to, part, CURLU_DEFAULT_PORT)));
    };
    const bool encrypts = partOf(from, CURLUPART_SCHEME) == u"http" && partOf(to, CURLUPART_SCHEME) == u"https";
    if (!parsed) refuseRedirect(from, u"the server redirects to something that is no URL");
    if (!same(CURLUPART_HOST) || !(encrypts || (same(CURLUPART_SCHEME) && same(CURLUPART_PORT)))) {
        refuseRedirect(from, u"the server redirects to " + partOf(to, CURLUPART_SCHEME) + u"://" +
                                 partOf(to, CURLUPART_HOST) + u":" + partOf(to, CURLUPART_PORT, CURLU_DEFAULT_PORT) +
                                 u", and nothing is sent there unasked");
    }
    // Credentials in the URL are still good.
    for (const CURLUPart part : {CURLUPART_USER, CURLUPART_PASSWORD}) {
        const std::u16string given = partOf(from, part);
        if (!given.empty() && partOf(to, part).empty()) setPart(to, part, toUtf8(given));
    }
    return to;
}

/// Lines of the head of a request.
class HeaderLines {
public:
    void add(const std::string& line) {
        curl_slist* const longer = curl_slist_append(lines_.get(), line.c_str());
        if (longer == nullptr) throw std::bad_alloc();
        (void)lines_.release();
        lines_.reset(longer);
    }

    curl_slist* get() const noexcept { return lines_.get(); }

private:
    Headers lines_;
};

/// A header of the reply, empty when there is none.
std::string header(CURL* handle, const char* name) {
    curl_header* found = nullptr;
    constexpr int lastRequest = -1;
    const CURLHcode code = curl_easy_header(handle, name, 0, CURLH_HEADER, lastRequest, &found);
    if (code == CURLHE_OUT_OF_MEMORY) throw std::bad_alloc();
    return code == CURLHE_OK ? found->value : "";
}

bool isRedirect(long status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

}  // namespace

CurlHttp::CurlHttp(ports::HttpOptions options) : options_(std::move(options)), delivery_(std::make_shared<Delivery>()) {
    initialise();
}

HttpReply CurlHttp::transfer(Text address, const std::function<void(void* handle)>& prepare) {
    Url url = parseUrl(address);
    if (!handle_) handle_ = std::shared_ptr<CURL>(curl_easy_init(), &curl_easy_cleanup);
    CURL* const handle = handle_.get();
    if (handle == nullptr) throw std::bad_alloc();
    // What the last request was about, but for its connection, is forgotten.
    curl_easy_reset(handle);
    char detail[CURL_ERROR_SIZE] = "";
    delivery_->underWay = delivery_->taken = false;
    Transfer transfer{options_, handle, *delivery_, partOf(url, CURLUPART_HOST)};
    set(handle, CURLOPT_CURLU, url.get());
    set(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    set(handle, CURLOPT_FOLLOWLOCATION, 0L);
    set(handle, CURLOPT_CONNECTTIMEOUT, static_cast<long>(options_.connect.count()));
    set(handle, CURLOPT_NOSIGNAL, 1L);
    set(handle, CURLOPT_SSL_VERIFYPEER, 1L);
    set(handle, CURLOPT_SSL_VERIFYHOST, 2L);
    set(handle, CURLOPT_USERAGENT, "Quill1XML");
    set(handle, CURLOPT_ERRORBUFFER, detail);
    set(handle, CURLOPT_WRITEFUNCTION, &onBody);
    set(handle, CURLOPT_WRITEDATA, &transfer);
    set(handle, CURLOPT_HEADERFUNCTION, &onHeader);
    set(handle, CURLOPT_HEADERDATA, &transfer);
    set(handle, CURLOPT_NOPROGRESS, 0L);
    set(handle, CURLOPT_XFERINFOFUNCTION, &onProgress);
    set(handle, CURLOPT_XFERINFODATA, &transfer);
    set(handle, CURLOPT_PREREQDATA, &transfer);
    set(handle, CURLOPT_OPENSOCKETFUNCTION, &onOpen);
    set(handle, CURLOPT_OPENSOCKETDATA, delivery_.get());
    set(handle, CURLOPT_CLOSESOCKETFUNCTION, &onClose);
    set(handle, CURLOPT_CLOSESOCKETDATA, delivery_.get());
    if (!options_.authorities.empty()) {
        set(handle, CURLOPT_CAINFO, options_.authorities.c_str());
        set(handle, CURLOPT_CAPATH, static_cast<const char*>(nullptr));  // the system's folder of authorities
    }
    prepare(handle);

    for (int redirects = 0;; ++redirects) {
        const CURLcode code = curl_easy_perform(handle);
        if (code != CURLE_OK) {
            const Error error = transferError(code, detail, transfer);
            if (isBeforeSending(code)) throw NotReached(error);
            throw error;
        }
        long status = 0;
        const char* location = nullptr;
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
        curl_easy_getinfo(handle, CURLINFO_REDIRECT_URL, &location);
        transfer.reply.status = static_cast<int>(status);
        if (location == nullptr || !isRedirect(status)) break;
        if (redirects == limits::redirects) {
            refuseRedirect(url, u"the server redirects more than " + number(limits::redirects) + u" times");
        }
        Url next = redirected(url, location);
        set(handle, CURLOPT_CURLU, next.get());
        url = std::move(next);
        // A body that moved is posted again; only 303 (See Other) asks for a GET.
        if (status == 303) set(handle, CURLOPT_HTTPGET, 1L);
        transfer.reply.body.clear();
        delivery_->underWay = delivery_->taken = false;
    }
    const char* type = nullptr;
    curl_easy_getinfo(handle, CURLINFO_CONTENT_TYPE, &type);
    if (type != nullptr) transfer.reply.contentType = type;
    transfer.reply.validators = {.entityTag = header(handle, "ETag"), .lastModified = header(handle, "Last-Modified")};
    return std::move(transfer.reply);
}

HttpReply CurlHttp::post(Text url, std::string_view contentType, std::string_view body) {
    HeaderLines headers;
    headers.add("Content-Type: " + std::string(contentType));
    headers.add("Expect:");  // waiting for "100 Continue" costs a second with servers that do not know it
    return transfer(url, [&](void* handle) {
        set(handle, CURLOPT_POST, 1L);
        set(handle, CURLOPT_POSTFIELDS, body.empty() ? "" : body.data());  // null would read standard input
        set(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        set(handle, CURLOPT_HTTPHEADER, headers.get());
        set(handle, CURLOPT_PREREQFUNCTION, &onRequest);
    });
}

HttpReply CurlHttp::get(Text url, const Validators& known) {
    HeaderLines headers;
    if (!known.entityTag.empty()) headers.add("If-None-Match: " + known.entityTag);
    if (!known.lastModified.empty()) headers.add("If-Modified-Since: " + known.lastModified);
    return transfer(url, [&](void* handle) { set(handle, CURLOPT_HTTPHEADER, headers.get()); });
}

}  // namespace quill1xml::platform

namespace quill1xml {

std::shared_ptr<ports::Http> ports::systemHttp(const HttpOptions& options) {
    return std::make_shared<platform::CurlHttp>(options);
}

}  // namespace quill1xml
