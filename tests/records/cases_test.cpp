// Records as data: what calls write, or how they are refused, in the files of cases/.
//
// A case is a paragraph: lines of a job, then the text of the packets they leave, in a line for each file where it
// begins with the file's name. A refusal follows its call: "! number | source | description". "{x*50}" stands for 50
// times "x", "<order Name='value'/>" for a whole list of AddOrder, "<quotation .../>" for one of AddQuotation; a line
// that begins with "#" is a comment.
#include "command_line/job.hpp"
#include "records/elements.hpp"
#include "records/schema_checks.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace quill1xml {
namespace {

struct Case {
    std::string job;
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

/// The next case; without a job when there is none.
Case read(std::istream& file) {
    Case result;
    for (std::string line; std::getline(file, line) && (!line.empty() || result.job.empty());) {
        if (line.empty() || line.starts_with('#')) continue;
        if (const std::size_t refusal = line.find("}} ! "); refusal != std::string::npos) {
            result.expected = line.substr(refusal + 3);
            line.resize(refusal + 2);
        }
        if (line.starts_with("{\"")) {
            const std::string call = withWholeList(expanded(line), "<order ", testing::orderList);
            result.job += withWholeList(call, "<quotation ", testing::quotationList) + '\n';
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
    std::ostringstream packets;
    cli::Progress progress(err, false);
    cli::Exchanges exchanges(fake.environment(), progress);
    const int status = cli::playJob(exchanges, {in, out, err});
    for (const auto& [name, text] : fake.files->texts) {
        if (c.namesFiles()) {
            if (packets.tellp() > 0) packets << "\r\n";
            packets << testing::utf8(name.substr(name.rfind(u'\\') + 1)) << ": ";
        }
        packets << testing::utf8(text);
    }
    if (status == 0) return packets.str();
    EXPECT_FALSE(fake.log->entries.empty());
    EXPECT_EQ(packets.str(), "");
    std::string report = err.str();
    // What the command line knows beyond the error stands below it.
    if (const std::size_t account = report.find("\n    "); account != std::string::npos) report.resize(account + 1);
    return report.substr(report.find(": error ") + 2);
}

/// An expected error as the command line reports it.
std::string asReported(std::string expected) {
    expected.replace(expected.find(" | "), 3, " (");
    expected.replace(expected.find(" | "), 3, "): ");
    return expected.replace(0, 1, "error") + '\n';
}

/// Every case of every family.
std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const auto& family :
         std::filesystem::directory_iterator(std::filesystem::path(__FILE__).parent_path() / "cases")) {
        std::ifstream file(family.path());
        for (Case c = read(file); !c.job.empty(); c = read(file)) cases.push_back(c);
    }
    return cases;
}

TEST(RecordFormat, IsWhatTheCasesSay) {
    for (const Case& c : allCases()) {
        EXPECT_EQ(outcomeOf(c), c.expected.starts_with("! ") ? asReported(c.expected) : c.expected) << c.job;
    }
}

/// What the element text writes, as "Element Attribute".
void collectAttributes(std::string_view text, std::set<std::string>& into) {
    std::string element;
    for (std::size_t at = 0; (at = text.find_first_of("<=", at)) != std::string::npos; ++at) {
        if (text[at] == '<') {
            element = text.substr(at + 1, text.find_first_of(" />", at + 1) - at - 1);
        } else if (text.substr(at).starts_with("=\"")) {
            const std::size_t end = text.find_last_not_of(' ', at - 1) + 1;
            const std::size_t start = text.rfind(' ', end - 1) + 1;
            into.insert(element + ' ' + std::string(text.substr(start, end - start)));
            at = text.find('"', at + 2);
        }
    }
}

TEST(RecordFormat, StandsInTheCasesToTheLastAttribute) {
    std::set<std::string> shown;
    for (const Case& c : allCases()) collectAttributes(c.expected, shown);
    std::string missing;
    for (const records::Record* record : records::allRecords()) {
        for (const records::Row& row : record->rows) {
            const std::string name = toUtf8(record->element) + ' ' + toUtf8(row.name());
            if (row.writes() && !shown.contains(name)) missing += name + '\n';
        }
    }
    EXPECT_EQ(missing, "");
}

/// The text as XML: some attributes are written as given, without escapes.
std::u16string escaped(std::string text) {
    for (std::size_t at = 0; (at = text.find('&', at)) != std::string::npos; ++at) {
        const std::string_view rest = std::string_view(text).substr(at);
        if (!rest.starts_with("&#") && !rest.starts_with("&amp;") && !rest.starts_with("&quot;")) text[at] = '+';
    }
    return toUtf16(text);
}

TEST(RecordFormat, IsWhatTheSchemaTakes) {
    testing::SchemaJudge judge(SchemaDialect::xsd);
    for (const Case& c : allCases()) {
        const bool whole = c.expected.find_first_not_of("\r\n") == c.expected.find('<');
        if (!whole || c.expected.starts_with("<Store ") || c.expected.starts_with("<Envelope ")) continue;
        const std::u16string document = u"<Store xmlns='WebStore' StoreID='1'>" + escaped(c.expected) + u"</Store>";
        EXPECT_EQ(judge.objection(document), "") << c.expected;
    }
}

}  // namespace
}  // namespace quill1xml
