#include "options.hpp"

#include "addresses.hpp"

#include <CLI/CLI.hpp>

#include <array>
#include <stdexcept>
#include <vector>

namespace quill1xml::sandbox {
namespace {

constexpr int usualPort = 8057;

struct MisbehaviourOption {
    const char* action;
    const char* form;
    const char* help;
};

constexpr MisbehaviourOption misbehaviourOptions[] = {
    {"refuse", "N[:NUMBER]", "Refuse the N-th upload with that error number"},
    {"rubbish", "N", "Answer the N-th upload with something that is no XML"},
    {"http-error", "N[:STATUS]", "Answer the N-th upload with that HTTP status"},
    {"close", "N", "Close the connection of the N-th upload before the body of its answer"},
    {"hang", "N", "Never answer the N-th upload"},
};

PlannedMisbehaviour planned(const char* action, const std::string& text) {
    try {
        return plannedFromOption(action, text);
    } catch (const std::invalid_argument& error) {
        throw CLI::ValidationError(std::string("--") + action, error.what());
    }
}

}  // namespace

std::optional<Options> readOptions(int argc, char** argv, std::string_view version, int& exitStatus) {
    Options options;
    Settings& settings = options.settings;
    settings.port = usualPort;
    std::int64_t delay = 0;
    std::array<std::vector<std::string>, std::size(misbehaviourOptions)> plans;

    CLI::App app("A small web store on this machine to publish to and fetch from, for trying things out.",
                 "webstore-sandbox");
    app.set_version_flag("--version", "webstore-sandbox " + std::string(version), "Print the version and end");
    app.footer(
        "The options that take an N may be repeated. Uploads are counted from 1; \"/ENDPOINT:N\" counts the posts to\n"
        "another endpoint. At run time POST /misbehave does the same: {\"upload\": \"next\", \"action\": "
        "\"refuse\"}.\n\n"
        "Addresses:\n" +
        addressesText());
    app.add_option("--port", settings.port, "The port to listen on; 0 picks a free one")
        ->capture_default_str()
        ->check(CLI::Range(0, 65535));
    app.add_option("--port-file", options.portFile, "Write the port to this file once the store listens")
        ->type_name("FILE");
    app.add_option("--database", settings.database, "Keep everything in this SQLite file; \":memory:\" forgets it")
        ->capture_default_str()
        ->type_name("FILE");
    app.add_flag("--seed", settings.seed, "Start with sample customers, orders and quotations");
    app.add_option("--user", settings.user, "Who may publish, download and send images")
        ->capture_default_str()
        ->type_name("NAME");
    app.add_option("--password", settings.password, "The password of that user")
        ->capture_default_str()
        ->type_name("TEXT");
    app.add_option("--delay", delay, "Wait so long before every answer to a post")
        ->check(CLI::Range(0, 3600'000))
        ->type_name("MS");
    for (std::size_t i = 0; i < plans.size(); ++i)
        app.add_option(std::string("--") + misbehaviourOptions[i].action, plans[i], misbehaviourOptions[i].help)
            ->type_name(misbehaviourOptions[i].form)
            ->expected(1)
            ->take_all();

    try {
        app.parse(argc, argv);
        for (std::size_t i = 0; i < plans.size(); ++i)
            for (const std::string& text : plans[i])
                settings.misbehaviours.push_back(planned(misbehaviourOptions[i].action, text));
    } catch (const CLI::ParseError& error) {
        exitStatus = app.exit(error);
        return std::nullopt;
    }
    settings.delay = std::chrono::milliseconds(delay);
    return options;
}

}  // namespace quill1xml::sandbox
