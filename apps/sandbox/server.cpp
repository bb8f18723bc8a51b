#include "server.hpp"

#include "addresses.hpp"
#include "answers.hpp"
#include "download.hpp"
#include "image.hpp"
#include "receipt.hpp"
#include "seed.hpp"
#include "window.hpp"

#include <sys/socket.h>

#include <ctime>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <utility>

namespace quill1xml::sandbox {
namespace {

constexpr const char* host = "127.0.0.1";
constexpr std::size_t longestBody = 64u << 20;
constexpr int tooLarge = 413;
/// Idle connections hold a worker each, until they are closed; stopping waits for them, too.
constexpr std::size_t workers = 64;
constexpr std::time_t idleSeconds = 1;
constexpr std::size_t mostRequestsPerConnection = 1'000'000;

/// Closes the connection with the answer: what is left of the request would be taken for another.
void closeAfter(httplib::Response& response) {
    const std::string text = std::move(response.body);
    response.body.clear();
    response.headers.erase("Content-Type");
    response.set_content_provider(text.size(), jsonType,
                                  [text](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
                                      sink.write(text.data() + offset, length);
                                      return false;
                                  });
}

/// Nothing when the body is too large or breaks off; the status is set then. Reading it here bypasses the HTTP
/// library's own reading of form bodies, which stops at 8 KB: clients post store documents under the content type of
/// forms.
std::optional<std::string> readBody(const httplib::ContentReader& reader, httplib::Response& response) {
    std::string body;
    bool fits = true;
    const bool complete = reader([&](const char* data, std::size_t size) {
        // Compressed or in chunks it may be longer than the library could know.
        fits = size <= longestBody - body.size();
        if (fits) body.append(data, size);
        return fits;
    });
    if (!fits) response.status = tooLarge;
    return complete ? std::optional(std::move(body)) : std::nullopt;
}

std::string reasonOf(const std::exception& failure) {
    const bool ofDatabase = dynamic_cast<const SQLite::Exception*>(&failure) != nullptr;
    return (ofDatabase ? "Database: " : "") + std::string(failure.what());
}

std::string statusText(const httplib::Request& request, int status) {
    switch (status) {
        case 404: return "There is nothing at " + request.method + ' ' + request.path;
        case tooLarge: return "The body is too large";
        default: return "The request was not understood";
    }
}

void answerStatus(const httplib::Request& request, httplib::Response& response) {
    if (!response.body.empty()) return;
    answerError(request, response, response.status, statusText(request, response.status));
    if (response.status == tooLarge) closeAfter(response);
}

/// Answers go out at once, connections are kept, and the port is the server's own.
void setUpConnections(httplib::Server& server) {
    server.set_tcp_nodelay(true);
    server.new_task_queue = [] { return new httplib::ThreadPool(workers); };
    server.set_keep_alive_timeout(idleSeconds);
    server.set_keep_alive_max_count(mostRequestsPerConnection);
    // The library's own choice, SO_REUSEPORT, would share the port with another server.
    server.set_socket_options([](socket_t socket) {
        const int on = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    });
}

void answerException(const httplib::Request& request, httplib::Response& response, std::exception_ptr failure) {
    try {
        std::rethrow_exception(std::move(failure));
    } catch (const std::invalid_argument& error) {
        answerError(request, response, 400, error.what());
    } catch (const std::exception& error) {
        answerError(request, response, 500, reasonOf(error));
    }
}

}  // namespace

Server::Server(Format format, const Settings& settings)
    : format_(std::move(format)),
      schema_(format_.xsd),
      storage_(settings.database),
      delay_(settings.delay),
      user_(settings.user),
      password_(settings.password) {
    if (settings.seed) seed();
    for (const PlannedMisbehaviour& planned : settings.misbehaviours) plan_.add(planned);

    setUpConnections(http_);
    http_.set_payload_max_length(longestBody);
    http_.set_exception_handler(answerException);
    http_.set_error_handler(answerStatus);
    addUploads();
    addDownloads();
    addImages();
    addSchemas();
    addWindow(http_, storage_, [this] { return url(); });

    port_ = settings.port == 0 ? http_.bind_to_any_port(host) : settings.port;
    if (port_ < 0 || (settings.port != 0 && !http_.bind_to_port(host, settings.port)))
        throw std::runtime_error("Cannot listen on port " + std::to_string(settings.port));
    thread_ = std::thread([this] { http_.listen_after_bind(); });
    // Stopping has no effect before the server runs.
    while (!http_.is_running()) std::this_thread::yield();
}

Server::~Server() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    stopped_.notify_all();
    http_.stop();
    thread_.join();
}

void Server::misbehave(const Misbehaviour& misbehaviour, httplib::Response& response) {
    using Action = Misbehaviour::Action;
    std::unique_lock lock(mutex_);
    const auto stopping = [this] { return stopping_; };
    stopped_.wait_for(lock, delay_ + misbehaviour.delay, stopping);
    if (misbehaviour.action == Action::hang) stopped_.wait(lock, stopping);
    if (misbehaviour.action == Action::answer) {
        response.status = misbehaviour.reply.status;
        response.set_content(misbehaviour.reply.body, misbehaviour.reply.contentType);
    } else if (misbehaviour.action != Action::proceed) {
        // A provider that fails is how a connection closes: the head of the answer is out by then, its body never
        // comes.
        response.set_content_provider(1, xmlType, [](std::size_t, std::size_t, httplib::DataSink&) { return false; });
    }
}

std::string Server::refuse(const std::string& path, const Refusal& refusal, const std::string& body) {
    try {
        storage_.noteRefusal(path, refusal, body);
    } catch (const SQLite::Exception& error) {
        std::cerr << "webstore-sandbox: a refusal was not kept: " << error.what() << '\n';
    }
    return refusal.receipt();
}

void Server::addExchange(const std::string& path, Exchange exchange) {
    const auto answer = [this, path, exchange = std::move(exchange)](const std::string& body) {
        try {
            return exchange(body);
        } catch (const Refusal& refusal) {
            return refuse(path, refusal, body);
        } catch (const std::exception& error) {
            return refuse(path, Refusal(RefusalNumber::internal, "Store", reasonOf(error)), body);
        }
    };
    http_.Post(patternOf("POST", path), [this, path, answer](const httplib::Request&, httplib::Response& response,
                                                             const httplib::ContentReader& reader) {
        const std::optional<std::string> body = readBody(reader, response);
        if (!body) return;
        const Misbehaviour misbehaviour = plan_.next(path);
        misbehave(misbehaviour, response);
        if (misbehaviour.action == Misbehaviour::Action::proceed) response.set_content(answer(*body), xmlType);
    });
}

void Server::addCommand(const std::string& path, Command command) {
    http_.Post(patternOf("POST", path),
               [command = std::move(command)](const httplib::Request&, httplib::Response& response,
                                              const httplib::ContentReader& reader) {
                   if (const std::optional<std::string> body = readBody(reader, response))
                       answerJson(response, command(*body));
               });
}

std::string Server::upload(const std::string& body) {
    const XmlDocument document = parseXml(body, "Import");
    requireStoreRoot(document.get(), storeNamespace, "Import");
    const Sender sender = senderOf(document.get());
    requireLogin(sender.user, sender.password);
    schema_.check(document.get());
    return acceptedReceipt(storage_.import(readStoreDocument(document.get(), format_.keyAttributes)));
}

std::size_t Server::seed() {
    const XmlDocument document = parseXml(sampleDocument(), "Sample data");
    return storage_.seed(readStoreDocument(document.get(), format_.keyAttributes));
}

void Server::requireLogin(const std::string& user, const std::string& password) const {
    if (user != user_ || password != password_)
        throw Refusal(RefusalNumber::login, "Login", "Wrong user name or password.");
}

void Server::addUploads() {
    addExchange("/upload", [this](const std::string& body) { return upload(body); });
    addCommand("/misbehave", [this](const std::string& body) {
        const PlannedMisbehaviour planned = plannedFromJson(Json::parse(body, nullptr, false));
        return Json{{"endpoint", planned.endpoint}, {"upload", plan_.add(planned)}};
    });
    addCommand("/seed", [this](const std::string&) { return Json{{"records", seed()}}; });
}

void Server::addDownloads() {
    for (const Download& download : {customers, orders, quotations})
        addExchange(download.endpoint, [this, download](const std::string& body) {
            auto form = readForm(body);
            requireLogin(form["UserName"], form["Password"]);
            return downloadDocument(storage_, download, storeIdIn(form));
        });
    // What a customer has ordered before is what they can order again without a connection.
    addExchange("/offline-products", [this](const std::string& body) {
        auto form = readForm(body);
        const std::string& address = form["CustomerEmailAddress"];
        if (address.empty()) throw Refusal(RefusalNumber::badRequest, "Request", "The form names no customer.");
        return downloadDocument(storage_, orders, storeIdIn(form), address);
    });
}

void Server::addImages() {
    addExchange("/images", [this](const std::string& body) {
        const XmlDocument document = parseXml(body, "Images");
        const ImageRequest request = readImageRequest(document.get());
        requireLogin(request.user, request.password);
        storage_.applyImage(request);
        return acceptedReceipt();
    });
}

void Server::addSchemas() {
    const auto add = [this](const char* path, const char* contentType, std::function<std::string()> text) {
        http_.Get(patternOf("GET", path),
                  [contentType, text = std::move(text)](const httplib::Request& request, httplib::Response& response) {
                      allowParameters(request, {});
                      response.set_content(text(), contentType);
                  });
    };
    add("/schema.xsd", xmlType, [this] { return format_.xsd; });
    add("/schema.xdr", xmlType, [this] { return format_.xdr; });
    http_.Get(patternOf("GET", "/kinds"), [this](const httplib::Request& request, httplib::Response& response) {
        allowParameters(request, {});
        answerJson(response, storage_.kinds());
    });
}

}  // namespace quill1xml::sandbox
