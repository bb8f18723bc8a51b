// The examples of the manual, as people paste them.
#include "automation/manual/examples.hpp"
#include "automation/manual/families.hpp"
#include "automation/manual/notation.hpp"
#include "command_line/job.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/text.hpp"
#include "support/fake_environment.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace quill1xml::automation {
namespace {

/// What the examples make is one job, but for what asks a server and what belongs at its beginning or its end.
bool publishes(std::string_view name) {
    return name.starts_with("Add") || name.starts_with("Lock") || name == "UpdateOrder";
}

TEST(Examples, AreJobLinesWhosePacketsMeetTheSchema) {
    testing::FakeEnvironment fake;
    const std::string schema = storeSchema(SchemaDialect::xsd);
    fake.files->bytes[u"store.xsd"] = {schema.begin(), schema.end()};
    fake.files->bytes[u"images/mug.gif"] = {'G', 'I', 'F'};
    std::ostringstream lines;
    const auto add = [&lines](std::string_view name) {
        const Member& member = *findMember(storeClass(), name);
        lines << callText(Notation::job, member, exampleArguments(member)) << '\n';
    };
    for (const char* head : {"SetTempFilePath", "SetPacketSize", "Create", "AddAdditionalParameters", "AddEnvelope"}) {
        add(head);
    }
    std::size_t records = 0;
    for (const Member& member : storeClass().members) {
        if (!publishes(member.name) || member.name == "AddAdditionalParameters" || member.name == "AddEnvelope")
            continue;
        add(member.name);
        ++records;
    }
    for (const char* kind : {"Quote57_", "ProductImage"}) {
        lines << R"({"SendTempFile":{"strTempFile":")" << kind << "\"}}\n";
    }
    lines << "{\"Send\":{}}\n";
    for (std::size_t i = 0; i < records + 3; ++i) {
        fake.http->reply("<Receipt ImportNumber=\"1\"><Error Number=\"0\"/></Receipt>");
    }
    std::istringstream in(lines.str());
    std::ostringstream out;
    std::ostringstream err;
    cli::Progress progress(err, false);
    cli::Exchanges exchanges(fake.environment(), progress);
    const int status = cli::playJob(exchanges, {in, out, err}, {.strict = true});
    EXPECT_EQ(status, 0) << err.str();
    EXPECT_EQ(err.str().find("is left out"), std::string::npos) << err.str();
    EXPECT_GT(fake.http->requests.size(), 60U);
}

// A meaning of a name that no method has would never be shown.
TEST(Meanings, AreOfParametersThatThereAre) {
    constexpr std::string_view names[] = {
#define MEANING(name, text) name,
#include "automation/manual/meanings.def"
#undef MEANING
    };
    for (const std::string_view name : names) {
        const std::size_t point = name.find('.');
        const std::string_view method = name.substr(0, point == std::string_view::npos ? 0 : point);
        const std::string_view parameter = name.substr(point + 1);
        bool found = false;
        for (const Class* const each : classes()) {
            for (const Member& member : each->members) {
                if (!method.empty() && member.name != method) continue;
                found = found || std::ranges::any_of(member.parameters, [&](const Parameter& one) {
                            return one.name == parameter || patternOf(one.name) == parameter;
                        });
            }
        }
        EXPECT_TRUE(found) << name;
    }
}

}  // namespace
}  // namespace quill1xml::automation
