// What Send costs beside its parts: the same documents parsed, validated and posted over one kept connection to the
// same server, and their files flushed to the disk and deleted; whether late packets cost what early ones do; and what
// looking for packets costs in a large folder.
#include "quill1xml/schema.hpp"
#include "quill1xml/store.hpp"
#include "ratio.hpp"
#include "support/temp_folder.hpp"

#include <curl/curl.h>
#include <fcntl.h>
#include <httplib.h>
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

namespace {

using namespace quill1xml;
using Clock = std::chrono::steady_clock;

double milliseconds(Clock::time_point since) {
    return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

/// Answers every post with a receipt, and keeps the bodies where it is told to.
class ReceiptServer {
public:
    explicit ReceiptServer(std::chrono::milliseconds delay) {
        server_.set_tcp_nodelay(true);
        server_.set_keep_alive_max_count(1'000'000);
        server_.set_pre_routing_handler([this, delay](const httplib::Request& request, httplib::Response&) {
            const bool isNew = connection(request.remote_port);
            std::this_thread::sleep_for(isNew ? 2 * delay : delay);
            return httplib::Server::HandlerResponse::Unhandled;
        });
        // Read in pieces: the library bounds the bodies of forms that it reads itself.
        server_.Post("/",
                     [this](const httplib::Request&, httplib::Response& response, const httplib::ContentReader& read) {
                         std::string body;
                         read([&body](const char* data, std::size_t size) {
                             body.append(data, size);
                             return true;
                         });
                         if (keeping) bodies.push_back(std::move(body));
                         response.set_content(R"(<Receipt ImportNumber="1"><Error Number="0"/></Receipt>)", "text/xml");
                     });
        port_ = server_.bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { server_.listen_after_bind(); });
    }

    ~ReceiptServer() {
        server_.stop();
        thread_.join();
    }

    std::string url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }
    std::size_t connections() const { return ports_.size(); }

    bool keeping = false;
    std::vector<std::string> bodies;

private:
    bool connection(int port) {
        const std::lock_guard lock(mutex_);
        return ports_.insert(port).second;
    }

    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
    std::mutex mutex_;
    std::set<int> ports_;
};

void ignore(void*, const char*, ...) {}

std::size_t discard(char*, std::size_t, std::size_t size, void*) { return size; }

/// The parts of sending, by the libraries themselves.
class Parts {
public:
    Parts(const std::string& schemaFile, std::string url) : url_(std::move(url)), curl_(curl_easy_init()) {
        xmlSchemaParserCtxt* const parser = xmlSchemaNewParserCtxt(schemaFile.c_str());
        schema_ = xmlSchemaParse(parser);
        xmlSchemaFreeParserCtxt(parser);
        if (schema_ == nullptr || curl_ == nullptr) std::abort();
    }
    ~Parts() {
        xmlSchemaFree(schema_);
        curl_easy_cleanup(curl_);
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    void send(const std::string& document, const std::string& file) {
        xmlDoc* const tree = xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                                           XML_PARSE_NONET | XML_PARSE_NOWARNING);
        xmlSchemaValidCtxt* const context = xmlSchemaNewValidCtxt(schema_);
        if (xmlSchemaValidateDoc(context, tree) != 0) std::abort();
        xmlSchemaFreeValidCtxt(context);
        xmlFreeDoc(tree);
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        if (descriptor == -1 || fsync(descriptor) != 0) std::abort();
        close(descriptor);
        curl_easy_setopt(curl_, CURLOPT_URL, url_.c_str());
        curl_easy_setopt(curl_, CURLOPT_POSTFIELDS, document.data());
        curl_easy_setopt(curl_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(document.size()));
        curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, &discard);
        if (curl_easy_perform(curl_) != CURLE_OK || unlink(file.c_str()) != 0) std::abort();
    }

private:
    std::string url_;
    CURL* curl_;
    xmlSchema* schema_ = nullptr;
};

/// The schema, a while before it is used: one that was only just written is read for every packet.
class SchemaFile {
public:
    SchemaFile() { std::this_thread::sleep_for(std::chrono::seconds(4)); }

    std::u16string name() const { return name_; }
    std::string path() const { return (folder_.path() / "store.xsd").string(); }

private:
    testing::TempFolder folder_;
    std::u16string name_ = folder_.create(u"store.xsd", storeSchema(SchemaDialect::xsd));
};

const SchemaFile& schemaFile() {
    static const SchemaFile file;
    return file;
}

/// A job of tax codes, ready to be sent.
class Job {
public:
    Job(const std::string& url, int packets, int recordsEach) {
        store.SetTempFilePath({folder_.path().u16string()});
        store.SetPacketSize({recordsEach});
        store.Create({.strWebStoreSchemaSource = schemaFile().name(), .lngStoreID = 57});
        store.AddAdditionalParameters();
        store.AddEnvelope({u"demo", u"demo", std::u16string(url.begin(), url.end())});
        for (int i = 0; i < packets * recordsEach; ++i) {
            store.AddTax({.strTaxCode = u"VAT", .strDescription = u"Value added tax, standard rate", .dblRate = 14.5});
        }
    }

private:
    testing::TempFolder folder_;

public:
    Store store;
};

double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

void compare(const char* name, double target, int packets, int records, std::chrono::milliseconds delay, int rounds) {
    ReceiptServer server(delay);
    std::vector<double> whole;
    std::vector<double> parts;
    std::vector<std::string> documents;
    for (int round = 0; round < rounds; ++round) {
        Job job(server.url(), packets, records);
        server.keeping = round == 0;
        const auto start = Clock::now();
        job.store.Send();
        whole.push_back(milliseconds(start));
        if (round == 0) documents = std::move(server.bodies);
        if (documents.size() != static_cast<std::size_t>(packets) + 1) std::abort();
        server.keeping = false;
        const testing::TempFolder folder;
        std::vector<std::string> files;
        for (std::size_t i = 0; i < documents.size(); ++i) {
            files.push_back((folder.path() / std::to_string(i)).string());
            std::ofstream(files.back(), std::ios::binary) << documents[i];
        }
        Parts bare(schemaFile().path(), server.url());
        const auto bareStart = Clock::now();
        for (std::size_t i = 0; i < documents.size(); ++i) bare.send(documents[i], files[i]);
        parts.push_back(milliseconds(bareStart));
    }
    const double count = packets + 1;
    bench::printRatio(name, target, median(whole) / count * 1000, median(parts) / count * 1000, "us a packet");
}

void growth() {
    ReceiptServer server(std::chrono::milliseconds(0));
    constexpr int packets = 10'000;
    Job job(server.url(), packets, 2);
    std::vector<double> tenths;
    int sent = 0;
    long afterFirst = 0;
    auto start = Clock::now();
    rusage usage{};
    job.store.onPacketUploaded([&](Text, Long) {
        if (++sent % (packets / 10) != 0) return;
        tenths.push_back(milliseconds(start));
        start = Clock::now();
        getrusage(RUSAGE_SELF, &usage);
        if (tenths.size() == 1) afterFirst = usage.ru_maxrss;
    });
    job.store.Send();
    bench::printRatio("10,000 packets, last tenth / first", 1.10, tenths.back(), tenths.front(), "ms");
    std::printf("  memory that came on top after the first tenth %14ld kB\n", usage.ru_maxrss - afterFirst);
    std::printf("  connections %48zu\n", server.connections());
}

/// Time to look for the packets of a job in a folder with so many packet files.
double lookup(int packets) {
    Job job("http://127.0.0.1:1/", packets, 2);
    const auto start = Clock::now();
    if (job.store.pendingPackets().toSend.size() != static_cast<std::size_t>(packets) + 1) std::abort();
    return milliseconds(start);
}

}  // namespace

int main() {
    using std::chrono::milliseconds;
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    curl_global_init(CURL_GLOBAL_DEFAULT);
    // The namespace of store documents is no address, and libxml2 says so for each of them.
    xmlSetGenericErrorFunc(nullptr, &ignore);
    compare("400 packets of 20 records / their parts", 1.20, 400, 20, milliseconds(0), 7);
    compare("100 packets of 500 records / their parts", 1.20, 100, 500, milliseconds(0), 5);
    compare("50 packets of 20 records, 20 ms away / their parts", 1.05, 50, 20, milliseconds(20), 3);
    compare("1,000 packets of 2 records / their parts", 0, 1000, 2, milliseconds(0), 5);
    compare("4,000 packets of 2 records / their parts", 0, 4000, 2, milliseconds(0), 3);
    growth();
    const double few = lookup(5'000);
    bench::printRatio("looking for 10,000 packets / 5,000", 2.2, lookup(10'000), few, "ms");
    bench::printRatio("looking for 20,000 packets / 5,000", 4.4, lookup(20'000), few, "ms");
}
