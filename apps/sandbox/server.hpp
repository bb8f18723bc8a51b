// The store as a server on 127.0.0.1.
#pragma once

#include "document.hpp"
#include "misbehaviour.hpp"
#include "storage.hpp"
#include "xml.hpp"

#include <httplib.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quill1xml::sandbox {

/// What store documents look like.
struct Format {
    std::string xsd;  ///< the schema that uploads are checked against
    std::string xdr;  ///< the same in the other dialect, only handed out
    KeyAttributes keyAttributes;
};

struct Settings {
    std::string database = ":memory:";
    int port = 0;                        ///< 0 picks a free one
    std::chrono::milliseconds delay{0};  ///< before every answer to a post
    std::vector<PlannedMisbehaviour> misbehaviours = {};
    std::string user = "demo";  ///< who may publish, download and send images
    std::string password = "demo";
    bool seed = false;  ///< start with sample data
};

/// Serves from construction to destruction, on threads of its own.
class Server {
public:
    /// Throws std::runtime_error when the port is taken, the database does not open or the schema is broken.
    Server(Format format, const Settings& settings);

    /// Ends what hangs and closes all connections, idle ones within a second.
    ~Server();

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    int port() const { return port_; }

    /// The address without a slash at the end.
    std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

private:
    /// Answers a body with an XML document; a Refusal becomes its receipt.
    using Exchange = std::function<std::string(const std::string& body)>;
    /// Answers a body with JSON; std::invalid_argument becomes a bad request.
    using Command = std::function<Json(const std::string& body)>;

    void addExchange(const std::string& path, Exchange exchange);
    void addCommand(const std::string& path, Command command);
    void addUploads();
    void addDownloads();
    void addImages();
    void addSchemas();

    /// Keeps why a body was refused and returns the receipt that says so.
    std::string refuse(const std::string& path, const Refusal& refusal, const std::string& body);

    std::string upload(const std::string& body);
    std::size_t seed();

    /// Throws a Refusal unless these are the credentials of the store.
    void requireLogin(const std::string& user, const std::string& password) const;

    void misbehave(const Misbehaviour& misbehaviour, httplib::Response& response);

    Format format_;
    XmlSchema schema_;
    Storage storage_;
    MisbehaviourPlan plan_;
    std::chrono::milliseconds delay_;
    std::string user_;
    std::string password_;

    std::mutex mutex_;
    std::condition_variable stopped_;
    bool stopping_ = false;

    httplib::Server http_;
    int port_ = 0;
    std::thread thread_;
};

}  // namespace quill1xml::sandbox
