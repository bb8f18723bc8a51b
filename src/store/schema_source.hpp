// The schema that store documents are validated against, from its file or URL.
#pragma once

#include "quill1xml/ports.hpp"

#include <memory>
#include <optional>
#include <string>

namespace quill1xml::store {

/// The schema loaded last, compiled once while it stays the same. It is looked at each time it is asked for: a schema
/// that changed is taken anew.
class SchemaSource {
public:
    /// The schema at a location, a file name or URL. Throws error 5 for an empty one, the error of the file or exchange
    /// when it cannot be read, and an application error that names the location when it is broken or refers to further
    /// documents.
    std::shared_ptr<ports::Schema> load(const ports::Environment& environment, Text location);

    /// While packets are sent one after the other, a server that gave nothing to tell its answer by is asked once.
    class Sending {
    public:
        explicit Sending(SchemaSource& source) : source_(source) {
            if (source_.sendings_++ == 0) source_.asked_ = false;
        }
        ~Sending() { --source_.sendings_; }
        Sending(const Sending&) = delete;
        Sending& operator=(const Sending&) = delete;

    private:
        SchemaSource& source_;
    };

private:
    /// The content at the location, by a name that may be shown; nothing where it is that of the compiled schema.
    struct Found {
        std::u16string name;
        std::string content;
        bool same = false;
    };
    Found find(const ports::Environment& environment, Text location);
    Found ask(ports::Http& http, Text url);

    std::u16string location_;
    std::string content_;
    ports::Validators validators_;
    std::optional<ports::FileVersion> version_;  ///< of the file with that content, where it is known
    std::shared_ptr<ports::Schema> schema_;
    int sendings_ = 0;
    bool asked_ = false;  ///< during this sending
};

}  // namespace quill1xml::store
