#include "automation/manual/playground.hpp"

#include "quill1xml/schema.hpp"
#include "quill1xml/text.hpp"
#include "text/wildcard.hpp"

#include <map>

namespace quill1xml::automation {

/// Files by their names in one folder. Bytes are those of a schema or of a small image.
class Playground::Files : public ports::Files {
public:
    void appendText(Text fileName, Text text) override { texts[std::u16string(fileName)].append(text); }
    void writeText(Text fileName, Text text) override { texts[std::u16string(fileName)] = text; }
    void flush(Text) override {}
    std::u16string readText(Text fileName) override {
        const auto found = texts.find(std::u16string(fileName));
        if (found == texts.end()) throw runtimeError(RuntimeError::fileNotFound, fileName);
        return found->second;
    }
    Bytes readBytes(Text fileName) override {
        const std::string content = fileName.ends_with(u".xsd") ? storeSchema(SchemaDialect::xsd) : "GIF89a";
        return {content.begin(), content.end()};
    }
    std::vector<std::u16string> list(Text pattern) override {
        const Text name = pattern.substr(pattern.rfind(u'\\') + 1);
        std::vector<std::u16string> names;
        for (const auto& [fileName, text] : texts) {
            const Text own = Text(fileName).substr(fileName.rfind(u'\\') + 1);
            if (matchesWildcard(own, name, false)) names.emplace_back(own);
        }
        return names;
    }
    void remove(Text fileName) override { texts.erase(std::u16string(fileName)); }
    std::unique_ptr<ports::FolderHold> hold(Text folder) override { return std::make_unique<ports::OwnFolder>(folder); }
    std::u16string fileOfUrl(Text url) const override { return std::u16string(url); }

    std::map<std::u16string, std::u16string> texts;
};

namespace {

class NoLog : public ports::EventLog {
    void writeError(Text) noexcept override {}
};

class StoppedClock : public ports::Clock {
    Date now() override { return Date::of(2024, 6, 1, 14, 30); }
};

class AcceptingServer : public ports::Http {
public:
    ports::HttpReply post(Text, std::string_view, std::string_view) override {
        const std::string receipt =
            "<Receipt ImportNumber=\"" + std::to_string(++imports_) + "\"><Error Number=\"0\"/></Receipt>";
        return {.status = 200, .contentType = "text/xml", .body = receipt, .validators = {}};
    }
    ports::HttpReply get(Text, const ports::Validators&) override {
        return {.status = 404, .contentType = {}, .body = {}, .validators = {}};
    }

private:
    int imports_ = 4710;
};

}  // namespace

Playground::Playground() : files_(std::make_shared<Files>()) {
    ports::Environment environment = ports::systemEnvironment();
    environment.files = files_;
    environment.log = std::make_shared<NoLog>();
    environment.clock = std::make_shared<StoppedClock>();
    environment.http = std::make_shared<AcceptingServer>();
    store_ = std::make_unique<Store>(environment);
}

Playground::~Playground() = default;

Value Playground::call(const Member& method, const void* arguments) { return method.invoke(store_.get(), arguments); }

std::string Playground::written() const {
    std::u16string all;
    for (const auto& [name, text] : files_->texts) all.append(text);
    return toUtf8(all);
}

}  // namespace quill1xml::automation
