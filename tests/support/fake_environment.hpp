// An environment that tests look into and let fail: files in memory, a recorded log, a stopped clock, a scripted
// server.
#pragma once

#include "quill1xml/ports.hpp"
#include "support/text_printer.hpp"
#include "text/windows_1252.hpp"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quill1xml::testing {

/// Files by their host names. Names compare exactly.
class FakeFiles : public ports::Files {
public:
    std::map<std::u16string, std::u16string> texts;
    std::map<std::u16string, Bytes> bytes;
    bool full = false;  ///< every write fails
    std::vector<std::u16string> flushed;
    std::optional<ports::FileVersion> fileVersion;  ///< of every file
    int bytesRead = 0;                              ///< calls of readBytes

    void appendText(Text fileName, Text text) override {
        refuseWhenFull(fileName);
        texts[std::u16string(fileName)].append(text);
    }
    void writeText(Text fileName, Text text) override {
        refuseWhenFull(fileName);
        texts[std::u16string(fileName)] = text;
    }
    void flush(Text fileName) override {
        refuseWhenFull(fileName);
        flushed.emplace_back(fileName);
    }
    std::u16string readText(Text fileName) override { return find(texts, fileName); }
    std::optional<ports::FileVersion> version(Text) noexcept override { return fileVersion; }
    Bytes readBytes(Text fileName) override {
        ++bytesRead;
        return find(bytes, fileName);
    }
    std::vector<std::u16string> list(Text pattern) override;
    void remove(Text fileName) override { texts.erase(std::u16string(fileName)); }
    /// Of the system: folders are no part of what is faked.
    std::unique_ptr<ports::FolderHold> hold(Text folder) override;
    std::u16string fileOfUrl(Text url) const override { return std::u16string(url); }

private:
    void refuseWhenFull(Text fileName) const {
        if (full) throw runtimeError(RuntimeError::diskFull, fileName);
    }
    template <class Map>
    static typename Map::mapped_type find(const Map& map, Text fileName) {
        const auto found = map.find(std::u16string(fileName));
        if (found == map.end()) throw runtimeError(RuntimeError::fileNotFound, fileName);
        return found->second;
    }
};

class FakeLog : public ports::EventLog {
public:
    std::vector<std::u16string> entries;
    void writeError(Text text) noexcept override { entries.emplace_back(text); }
};

class FakeClock : public ports::Clock {
public:
    Date time = Date::of(2007, 3, 5, 14, 7, 9);
    Date now() override { return time; }
};

/// Answers posts from a queue and records them.
class FakeHttp : public ports::Http {
public:
    struct Request {
        std::u16string url;
        std::string contentType;
        std::string body;
    };
    std::vector<Request> requests;
    std::deque<ports::HttpReply> replies;  ///< an empty queue is a transport failure

    void reply(std::string body, int status = 200) { replies.push_back({status, "text/xml", std::move(body)}); }
    ports::HttpReply post(Text url, std::string_view contentType, std::string_view body) override;
    ports::HttpReply get(Text url, const ports::Validators& known) override {
        return post(url, {}, known.entityTag + known.lastModified);
    }
};

/// Windows-1252, and a decimal separator to choose.
class FakeSystem : public ports::System {
public:
    std::u16string separator = u".";
    std::uint32_t threadId() const override { return 77; }
    const CodePage& codePage() const override { return windows1252; }
    std::u16string decimalSeparator() const override { return separator; }
    std::u16string generalDate(Date date) const override;
};

struct FakeEnvironment {
    std::shared_ptr<FakeFiles> files = std::make_shared<FakeFiles>();
    std::shared_ptr<FakeLog> log = std::make_shared<FakeLog>();
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<FakeHttp> http = std::make_shared<FakeHttp>();
    std::shared_ptr<FakeSystem> system = std::make_shared<FakeSystem>();

    /// The fakes with the real XML parser.
    ports::Environment environment() const { return {files, log, clock, http, ports::systemEnvironment().xml, system}; }
};

}  // namespace quill1xml::testing
