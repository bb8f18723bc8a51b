// The ports: everything that a Store needs of the system it runs on. systemEnvironment() has an implementation of each;
// a host that wants its own HTTP client, log, clock or files derives from the port and puts it into an Environment.
//
// An implementation converts the failures of its system to an Error with the number and text an automation host knows:
// the library never sees an errno, an HRESULT or a code of another library.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/types.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml {
class Node;
}

namespace quill1xml::ports {

/// A folder that is held for one job. It is let go of with this object, or when the process ends, however that happens.
class FolderHold {
public:
    virtual ~FolderHold() = default;

    /// The folder's whole name, the same in whatever way it was named.
    virtual std::u16string folder() const = 0;
};

/// The hold on a folder that nobody else can know, such as one in memory.
class OwnFolder final : public FolderHold {
public:
    explicit OwnFolder(Text folder) : folder_(folder) {}
    std::u16string folder() const override { return folder_; }

private:
    std::u16string folder_;
};

/// What changes whenever a file is written or another takes its place. Times are in nanoseconds.
struct FileVersion {
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    std::uint64_t size = 0;
    std::int64_t written = 0;
    std::int64_t changed = 0;

    bool operator==(const FileVersion&) const = default;
};

/// Files by their host names: UTF-16, "\" between folders. A name is used as given; on POSIX "\" becomes "/" only when
/// the file is touched. Failures are errors 53, 57, 61, 67, 70, 75 or 76 with the name in the description.
class Files {
public:
    virtual ~Files() = default;

    /// Opens or creates the file, appends the text as UTF-16 little-endian and closes it. A new or empty file starts
    /// with a byte-order mark. A failed write leaves the file as it was.
    virtual void appendText(Text fileName, Text text) = 0;

    /// As appendText, to a file that starts anew.
    virtual void writeText(Text fileName, Text text) = 0;

    /// Waits until what was written to the file would survive a power cut, where the system can do that: a file system
    /// that has nothing to flush, or a file that may only be read, is no error.
    virtual void flush(Text fileName) = 0;

    /// Has the system begin with what flush waits for: it is done sooner for many files together. False where it could
    /// not begin; what is wrong is left for flush to tell.
    virtual bool startFlush(Text) noexcept { return false; }

    /// The whole file without its byte-order mark. Error 13 when it is not UTF-16 little-endian text.
    virtual std::u16string readText(Text fileName) = 0;

    virtual Bytes readBytes(Text fileName) = 0;

    /// Which version of a file this is, without reading it. Nothing where the system cannot tell, such as for a file
    /// that has only just been written and might be again at the same time.
    virtual std::optional<FileVersion> version(Text) noexcept { return std::nullopt; }

    /// Names, without folder and in rising order, of the normal files in a folder that match a pattern of "*" and "?".
    /// The last "\" separates folder and pattern. A missing folder has no names. Matches as the system's names do:
    /// without regard to case on Windows, with regard to it elsewhere.
    virtual std::vector<std::u16string> list(Text pattern) = 0;

    /// Deletes a file, a read-only one too.
    virtual void remove(Text fileName) = 0;

    /// Holds a folder against the other jobs of this process and of others, never null. Error 70 names the process that
    /// holds it already; error 76 when there is no such folder, 75 with the reason when it cannot be held.
    virtual std::unique_ptr<FolderHold> hold(Text folder) = 0;

    /// The name of the file that a URL of the scheme "file" stands for.
    virtual std::u16string fileOfUrl(Text url) const = 0;
};

/// Where failures are reported: the application event log, or syslog.
class EventLog {
public:
    virtual ~EventLog() = default;

    /// Writes one entry of type Error. A log that cannot be written is ignored: the caller gets the error anyway.
    virtual void writeError(Text text) noexcept = 0;
};

class Clock {
public:
    virtual ~Clock() = default;

    /// The local date and time.
    virtual Date now() = 0;
};

/// What a server tells an answer by: its ETag and Last-Modified headers, each empty when there is none.
struct Validators {
    std::string entityTag{};
    std::string lastModified{};

    bool empty() const { return entityTag.empty() && lastModified.empty(); }
};

struct HttpReply {
    int status = 0;           ///< the HTTP status code
    std::string contentType;  ///< the Content-Type header, empty when there is none
    std::string body;         ///< the bytes as received
    Validators validators{};
};

/// A transport failure before anything of the request left: the server knows nothing of it.
class NotReached : public Error {
public:
    explicit NotReached(const Error& error) : Error(error) {}
};

class Http {
public:
    virtual ~Http() = default;

    /// Posts a body and waits for the reply; any HTTP status is a reply. A transport failure is an Error that names the
    /// host of the URL, never credentials; a NotReached where that is certain.
    virtual HttpReply post(Text url, std::string_view contentType, std::string_view body) = 0;

    /// Fetches a URL, or only asks whether the answer with the given validators is still the one: then the status is
    /// 304. Fails as post does.
    virtual HttpReply get(Text url, const Validators& known) = 0;
};

/// Why a document did not load or is not valid. code is 0 when there is nothing to report.
struct ParseError {
    Long code = 0;
    Long filePosition = 0;
    Long line = 0;
    Long linePosition = 0;
    std::u16string reason;
    std::u16string sourceText;
    std::u16string url;

    explicit operator bool() const noexcept { return code != 0; }
};

/// One element of a document. It keeps its document alive.
class Element {
public:
    virtual ~Element() = default;

    /// The qualified name.
    virtual std::u16string name() const = 0;

    /// The line on which its start tag ends; 0 where the parser does not tell.
    virtual Long line() const = 0;

    /// The value of an attribute by its exact qualified name; nothing when it is absent.
    virtual std::optional<std::u16string> attribute(Text name) const = 0;

    /// The child elements of that qualified name, in document order.
    virtual std::vector<std::shared_ptr<Element>> children(Text name) const = 0;

    /// All child elements, in document order.
    virtual std::vector<std::shared_ptr<Element>> children() const = 0;
};

/// A parsed document.
class Document {
public:
    virtual ~Document() = default;

    /// The root element.
    virtual std::shared_ptr<Element> root() const = 0;

    /// The elements at a path of qualified names from the root, such as "Store/Order", in document order.
    /// Namespaces do not matter.
    virtual std::vector<std::shared_ptr<Element>> select(Text path) const = 0;

    /// The document as text, without a declaration of encoding.
    virtual std::u16string xml() const = 0;

    /// The same in UTF-8.
    virtual std::string utf8() const = 0;

    /// Writes the document to a file, in the encoding that it declares, UTF-8 where it declares none.
    virtual void save(Text fileName) const = 0;

    /// Validates against the schema the document was loaded with.
    virtual ParseError validate() = 0;
};

/// A compiled schema, ready to be attached to documents.
class Schema {
public:
    virtual ~Schema() = default;
};

/// How the bytes of a document are read.
enum class SourceEncoding {
    declared,  ///< by byte-order mark or declaration, else UTF-8
    utf8,      ///< whatever the document declares
};

/// The XML parser. No document reaches out: no network access, no external entities, no entity expansion beyond the
/// predefined ones; depth and size are bounded. What does not parse returns nothing and fills the error.
class Xml {
public:
    virtual ~Xml() = default;

    /// Parses UTF-16 text in pieces that follow each other, whatever encoding it declares.
    /// The schema, where one is given, serves Document::validate.
    virtual std::unique_ptr<Document> parse(std::span<const Text> pieces, std::shared_ptr<Schema> schema,
                                            ParseError& error) = 0;

    /// Parses bytes. They are taken over: a large text need not be held beside its document.
    virtual std::unique_ptr<Document> parseBytes(std::string bytes, SourceEncoding encoding, ParseError& error) = 0;

    /// Parses a file in the encoding it declares; a file that cannot be read fills the error too.
    virtual std::unique_ptr<Document> load(Text fileName, std::shared_ptr<Schema> schema, ParseError& error) = 0;

    /// Compiles a schema for documents of a namespace. What is no schema returns nothing and fills the error's reason
    /// and, where known, its line.
    virtual std::shared_ptr<Schema> compile(std::unique_ptr<Document> schema, Text targetNamespace,
                                            ParseError& error) = 0;
};

/// What is left of the system: the thread, the code page and the user's regional settings.
class System {
public:
    virtual ~System() = default;

    virtual std::uint32_t threadId() const = 0;

    /// The single-byte ANSI code page (Windows-1252 where the system has none).
    virtual const CodePage& codePage() const = 0;

    /// The text that stands between the whole and the fraction of a number.
    virtual std::u16string decimalSeparator() const = 0;

    /// The general date form: short date and long time; a time of midnight is left out.
    virtual std::u16string generalDate(Date date) const = 0;
};

/// Makes the host's own objects over downloaded elements, for hosts that know records as objects of another kind than
/// the library's.
class Objects {
public:
    virtual ~Objects() = default;

    /// An object over each of the nodes, in their order. The class is one of quill1xml/entities.hpp by its name.
    virtual std::vector<std::shared_ptr<void>> make(std::string_view className, std::span<const Node> nodes) = 0;
};

/// Everything a Store reaches outside itself. Every member but the objects must be set.
struct Environment {
    std::shared_ptr<Files> files;
    std::shared_ptr<EventLog> log;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<Http> http;
    std::shared_ptr<Xml> xml;
    std::shared_ptr<System> system;
    std::shared_ptr<Objects> objects{};  ///< null where the library's own objects are all
};

/// The environment of the system that the library was built for.
Environment systemEnvironment();

}  // namespace quill1xml::ports
