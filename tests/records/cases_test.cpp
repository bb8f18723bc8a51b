// Records as data: what calls write, or how they are refused, in the files of cases/.
//
// A case is a paragraph: lines of a job, then the text of the packets they leave, in a line for each file where it
// begins with the file's name, or "! number | source | description" of the error that the last line ends in. "{x*50}"
// stands for 50 times "x", "<order Name='value'/>" for a whole list of AddOrder, "<quotation .../>" for one of
// AddQuotation; a line that begins with "#" is a comment.
#include "command_line/job.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace quill1xml {
namespace {

struct Case {
    std::string job;
    std::string method;  ///< of the last line
    int lines = 0;
    std::string expected;

    bool namesFiles() const { return expected.starts_with("WebStore"); }
};

/// The line with every "{x*50}" written out.
std::string expanded(const std::string& line) {
    std::string text;
    std::size_t end = 0;
    for (std::size_t star = line.find('*'); star != std::string::npos; star = line.find('*', star + 1)) {
        const std::size_t open = line.rfind('{', star);
        const std::size_t close = line.find('}', star);
        const std::string count = line.substr(star + 1, close - star - 1);
        if (open == std::string::npos || count.find_first_not_of("0123456789") != std::string::npos) continue;
        text.append(line, end, open - end);
        for (int i = std::stoi(count); i > 0; --i) text.append(line, open + 1, star - open - 1);
        end = close + 1;
    }
    return text.append(line, end);
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

/// The call with "<order Name='value'/>" made a whole list, as a JSON string holds it.
std::string withWholeList(std::string line, std::string_view start, std::u16string (*list)(const testing::Values&)) {
    const std::size_t open = line.find(start);
    if (open == std::string::npos) return line;
    const std::size_t end = line.find("/>", open);
    testing::Values values;
    for (std::size_t name = open + start.size(); name < end;) {
        const std::size_t value = line.find("='", name) + 2;
        const std::size_t after = line.find('\'', value);
        values[toUtf16(line.substr(name, value - 2 - name))] = toUtf16(line.substr(value, after - value));
        name = line.find_first_not_of(' ', after + 1);
    }
    std::string whole = testing::utf8(list(values));
    replaceAll(whole, "\"", "\\\"");
    return line.replace(open, end + 2 - open, whole);
}

Case read(std::istream& file) {
    Case result;
    for (std::string line; std::getline(file, line) && (!line.empty() || result.lines == 0);) {
        if (line.empty() || line.starts_with('#')) continue;
        if (line.starts_with("{\"")) {
            const std::string call = withWholeList(expanded(line), "<order ", testing::orderList);
            result.job += withWholeList(call, "<quotation ", testing::quotationList) + '\n';
            result.method = line.substr(2, line.find('"', 2) - 2);
            ++result.lines;
        } else {
            result.expected.append(result.expected.empty() ? "" : "\r\n").append(expanded(line));
        }
    }
    replaceAll(result.expected, "\\r\\n", "\r\n");
    return result;
}

/// What a case comes to, in the form of the files. A refusal must have been logged and leaves no packet.
std::string outcomeOf(const Case& c) {
    testing::FakeEnvironment fake;
    fake.files->bytes[u"T\\a.jpg"] = {0xFF, 0xD8, 0xFF, 0xE0};
    std::istringstream in(c.job);
    std::ostringstream out;
    std::ostringstream err;
    std::string packets;
    const int status = cli::playJob(fake.environment(), {in, out, err, false});
    for (const auto& [name, text] : fake.files->texts) {
        if (c.namesFiles()) {
            packets.append(packets.empty() ? "" : "\r\n")
                .append(testing::utf8(name.substr(name.rfind(u'\\') + 1)) + ": ");
        }
        packets += testing::utf8(text);
    }
    if (status == 0) return packets;
    EXPECT_FALSE(fake.log->entries.empty());
    EXPECT_EQ(packets, "");
    return err.str();
}

/// An expected error as the command line reports it.
std::string asReported(const Case& c) {
    const std::size_t source = c.expected.find(" | ");
    const std::size_t description = c.expected.find(" | ", source + 3);
    return "line " + std::to_string(c.lines) + ": " + c.method + ": error " + c.expected.substr(2, source - 2) + " (" +
           c.expected.substr(source + 3, description - source - 3) + "): " + c.expected.substr(description + 3) + "\n";
}

const std::filesystem::path folder = std::filesystem::path(__FILE__).parent_path() / "cases";

std::vector<std::string> families() {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(folder)) names.push_back(file.path().stem().string());
    std::ranges::sort(names);
    return names;
}

class RecordCases : public ::testing::TestWithParam<std::string> {};

TEST_P(RecordCases, ComeToWhatTheySay) {
    std::ifstream file(folder / (GetParam() + ".cases"));
    int count = 0;
    for (Case c = read(file); c.lines > 0; c = read(file), ++count) {
        EXPECT_EQ(outcomeOf(c), c.expected.starts_with("! ") ? asReported(c) : c.expected) << c.job;
    }
    EXPECT_GT(count, 0);
}

INSTANTIATE_TEST_SUITE_P(Families, RecordCases, ::testing::ValuesIn(families()),
                         [](const auto& family) { return family.param; });

}  // namespace
}  // namespace quill1xml
