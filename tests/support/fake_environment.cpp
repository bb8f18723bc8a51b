#include "support/fake_environment.hpp"

#include "text/date.hpp"
#include "text/wildcard.hpp"

namespace quill1xml::testing {

std::vector<std::u16string> FakeFiles::list(Text pattern) {
    const std::size_t separator = pattern.rfind(u'\\');
    const Text folder = pattern.substr(0, separator + 1);
    std::vector<std::u16string> names;
    const auto take = [&](const std::u16string& fileName) {
        const Text name = Text(fileName).substr(fileName.rfind(u'\\') + 1);
        if (fileName.starts_with(folder) && folder.size() + name.size() == fileName.size() &&
            matchesWildcard(name, pattern.substr(separator + 1), false)) {
            names.emplace_back(name);
        }
    };
    for (const auto& [fileName, text] : texts) take(fileName);
    for (const auto& [fileName, content] : bytes) take(fileName);
    return names;
}

std::unique_ptr<ports::FolderHold> FakeFiles::hold(Text folder) {
    return ports::systemEnvironment().files->hold(folder);
}

ports::HttpReply FakeHttp::post(Text url, std::string_view contentType, std::string_view body) {
    requests.push_back({std::u16string(url), std::string(contentType), std::string(body)});
    if (replies.empty()) throw runtimeError(RuntimeError::automationError, u"no connection");
    auto reply = std::move(replies.front());
    replies.pop_front();
    return reply;
}

std::u16string FakeSystem::generalDate(Date date) const {
    std::u16string text;
    appendDateText(text, date);
    return text;
}

}  // namespace quill1xml::testing
