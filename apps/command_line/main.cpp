// quill1xml: the command line.

#include "automation/manual/job_template.hpp"
#include "automation/manual/limits.hpp"
#include "automation/manual/manual.hpp"
#include "command_line/aligned_tables.hpp"
#include "command_line/check.hpp"
#include "command_line/exchange_options.hpp"
#include "command_line/fetch.hpp"
#include "command_line/job.hpp"
#include "command_line/nearest.hpp"
#include "command_line/password.hpp"
#include "command_line/paths.hpp"
#include "command_line/process.hpp"
#include "command_line/resume.hpp"
#include "command_line/send_images.hpp"
#include "command_line/terminal.hpp"
#include "manual_page/page.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/version.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

using namespace quill1xml;

constexpr int failure = 1;
constexpr int usageError = 2;

/// What the command that was given does; returns the exit status.
using Action = std::function<int()>;

/// The parser's own check for this knows no names beyond the system's code page.
CLI::Validator existingFolder() {
    const auto check = [](const std::string& name) -> std::string {
        std::error_code unknown;
        const std::filesystem::file_status status = std::filesystem::status(cli::pathOf(name), unknown);
        if (unknown || !std::filesystem::exists(status)) return "Directory does not exist: " + name;
        return std::filesystem::is_directory(status) ? "" : "Directory is actually a file: " + name;
    };
    return {check, "DIR"};
}

/// Options of what can go on after a failure.
CLI::Option* addJournal(CLI::App& command, cli::JobOptions& options) {
    CLI::Option* journal =
        command
            .add_option("--journal", options.journal,
                        "Note in this file what becomes of each packet, so that resume can go on after a failure")
            ->type_name("FILE");
    command
        .add_option("--retry", options.retries,
                    "Try again so many times, after 1, 2, 4 ... s, when the transport of a sending fails")
        ->check(CLI::Range(0, 100))
        ->needs(journal)
        ->type_name("N");
    return journal;
}

/// Opens a job, "-" being standard input.
std::istream& openJob(const std::string& file, std::ifstream& opened) {
    if (file != "-") {
        opened.open(cli::pathOf(file), std::ios::binary);
        if (!opened) throw std::runtime_error("cannot read the job file " + file);
    }
    std::istream& in = file == "-" ? std::cin : opened;
    // A folder can be opened, but not read.
    in.peek();
    if (in.bad()) throw std::runtime_error("cannot read the job file " + file);
    return in;
}

void addRun(CLI::App& app, Action& action) {
    const auto file = std::make_shared<std::string>("-");
    const auto options = std::make_shared<cli::JobOptions>();
    CLI::App* run = app.add_subcommand("run", "Play a job of JSON lines through one Store");
    run->add_option("file", *file, "The job; - for standard input")->capture_default_str();
    run->add_flag("--strict", options->strict, "End at a value that would be left out, before its record is written");
    run->add_flag("--discard", options->discard, "Give up the job that the journal keeps, and start anew");
    addJournal(*run, *options);
    const auto exchange = std::make_shared<cli::ExchangeOptions>();
    cli::addExchange(*run, *exchange);
    run->get_option("--verbose")
        ->description("Tell each exchange, every value left out and every packet file not sent");
    run->callback([file, options, exchange, &action] {
        action = [file, options, exchange] {
            std::ifstream opened;
            std::istream& in = openJob(*file, opened);
            options->verbose = exchange->report.verbose;
            return cli::withExchanges(*exchange, [&](cli::Exchanges& exchanges) {
                return cli::playJob(exchanges, {in, std::cout, std::cerr}, *options);
            });
        };
    });
}

/// Folders are named to the library without a separator at their end.
std::string withoutSeparator(std::string folder) {
    const std::size_t root = cli::pathOf(folder).root_path().string().size();
    constexpr auto separator = static_cast<char>(std::filesystem::path::preferred_separator);
    while (folder.size() > root && (folder.ends_with('/') || folder.ends_with(separator))) folder.pop_back();
    return folder;
}

void addResume(CLI::App& app, Action& action) {
    const auto options = std::make_shared<cli::JobOptions>();
    const auto given = std::make_shared<cli::ResumeOptions>();
    CLI::App* resume = app.add_subcommand("resume", "Send what is left of a job that was interrupted");
    resume->add_option("dir", given->folder, "The folder of the packet files")->required()->type_name("");
    resume->add_option("--schema", given->schema, "A schema in place of the job's")->type_name("FILE");
    resume->add_option("--url", given->url, "Where to post to, in place of the envelope's URL")->type_name("URL");
    addJournal(*resume, *options)->required();
    const auto exchange = std::make_shared<cli::ExchangeOptions>();
    cli::addExchange(*resume, *exchange);
    resume->callback([options, given, exchange, &action] {
        action = [options, given, exchange] {
            given->folder = withoutSeparator(given->folder);
            options->verbose = exchange->report.verbose;
            return cli::withExchanges(*exchange, [&](cli::Exchanges& exchanges) {
                return cli::resumeJob(exchanges, {std::cin, std::cout, std::cerr}, *options, *given);
            });
        };
    });
}

void addCheck(CLI::App& app, Action& action) {
    const auto file = std::make_shared<std::string>("-");
    const auto format = std::make_shared<std::string>("text");
    const auto options = std::make_shared<cli::CheckOptions>();
    CLI::App* check = app.add_subcommand("check", "Tell everything that is wrong with a job, and send nothing");
    check->add_option("file", *file, "The job; - for standard input")->capture_default_str();
    check->add_option("--keep", options->keep, "Leave the packet files in this folder, which must be empty")
        ->type_name("DIR");
    check->add_option("--format", *format, "How to report")
        ->capture_default_str()
        ->check(CLI::IsMember({"text", "json"}));
    check->add_flag("--strict", options->report.strict, "Take warnings for errors");
    check->callback([file, format, options, &action] {
        action = [file, format, options] {
            std::ifstream opened;
            std::istream& in = openJob(*file, opened);
            options->report.json = *format == "json";
            if (cli::outputIsTerminal()) options->report.width = cli::terminalWidth();
            return cli::checkJob(ports::systemEnvironment(), {in, std::cout, std::cerr}, *options);
        };
    });
}

/// Options of every exchange.
template <class Options>
void addStore(CLI::App& command, Options& options) {
    command.add_option("--url", options.url, "Where to post to")->required()->type_name("URL");
    command.add_option("--store", options.store, "The number of the store")->required()->type_name("N");
}

template <class Options>
void addUser(CLI::App& command, Options& options, std::string& passwordFile) {
    command.add_option("--user", options.user, "Who may do this")->required()->type_name("NAME");
    command
        .add_option("--password-file", passwordFile,
                    "The file with the password on its first line; without one the environment variable "
                    "QUILL1XML_PASSWORD holds it, or the terminal asks for it")
        ->type_name("FILE");
}

struct FetchCommand {
    cli::FetchOptions options;
    cli::ExchangeOptions exchange;
    std::string passwordFile;
    std::string format;
};

cli::Format formatNamed(const std::string& name) {
    if (name == "xml") return cli::Format::xml;
    return name == "table" ? cli::Format::table : cli::Format::json;
}

void addFetch(CLI::App& app, Action& action) {
    CLI::App* fetch = app.add_subcommand("fetch", "Fetch what shoppers did");
    fetch->require_subcommand(1);
    for (const cli::Download& download : cli::downloads()) {
        const auto command = std::make_shared<FetchCommand>();
        cli::FetchOptions& options = command->options;
        CLI::App* kind = fetch->add_subcommand(std::string(download.name), std::string(download.about));
        addStore(*kind, options);
        if (download.byCustomer) {
            kind->add_option("--email", options.email, "The address of the customer")->required()->type_name("ADDRESS");
        } else {
            addUser(*kind, options, command->passwordFile);
        }
        kind->add_option("--archive", options.archive, "Keep the reply as a file in this folder")
            ->check(existingFolder())
            ->type_name("DIR");
        cli::addExchange(*kind, command->exchange);
        command->format = cli::outputIsTerminal() ? "table" : "json";
        kind->add_option("--format", command->format, "By default a table on a terminal, else json")
            ->check(CLI::IsMember({"json", "xml", "table"}));
        kind->callback([command, &download, &action] {
            action = [command, &download] {
                cli::FetchOptions& given = command->options;
                given.format = formatNamed(command->format);
                given.archive = withoutSeparator(given.archive);
                if (!download.byCustomer) given.password = cli::readPassword(command->passwordFile, given.user);
                given.outputStays = !cli::outputIsPipe();
                if (cli::outputIsTerminal()) given.width = cli::terminalWidth();
                return cli::withExchanges(command->exchange, [&](cli::Exchanges& exchanges) {
                    return cli::fetch(exchanges, download, given, std::cout, std::cerr);
                });
            };
        });
    }
}

struct ImageCommand {
    cli::ImageOptions options;
    cli::ExchangeOptions exchange;
    std::string passwordFile;
};

void addSendImages(CLI::App& app, Action& action) {
    const auto command = std::make_shared<ImageCommand>();
    cli::ImageOptions& options = command->options;
    options.uploadFolder = "ProductImages";
    CLI::App* send = app.add_subcommand("send-images", "Send product images, one request a file");
    send->add_option("dir", options.folder, "The folder of the files")
        ->required()
        ->check(existingFolder())
        ->type_name("");
    send->add_option("--spec", options.spec, "Which files: a name or a pattern such as \"*.jpg\"")
        ->required()
        ->type_name("SPEC");
    addStore(*send, options);
    addUser(*send, options, command->passwordFile);
    send->add_option("--folder", options.uploadFolder, "The folder in the store")
        ->capture_default_str()
        ->type_name("NAME");
    send->add_flag("--thumbnail", options.thumbnail, "Let the store make thumbnails");
    send->add_flag("--delete", options.remove, "Delete the images of these names from the store");
    cli::addExchange(*send, command->exchange);
    send->callback([command, &action] {
        action = [command] {
            cli::ImageOptions& given = command->options;
            given.folder = withoutSeparator(given.folder);
            given.password = cli::readPassword(command->passwordFile, given.user);
            return cli::withExchanges(command->exchange, [&](cli::Exchanges& exchanges) {
                return cli::sendImages(exchanges, given, std::cout, std::cerr);
            });
        };
    });
}

void addSchema(CLI::App& app, Action& action) {
    const auto xdr = std::make_shared<bool>(false);
    CLI::App* schema = app.add_subcommand("schema", "Print the schema of store documents");
    schema->add_flag("--xdr", *xdr, "In XML-Data Reduced instead of XML Schema");
    schema->callback([xdr, &action] {
        action = [xdr] {
            std::cout << storeSchema(*xdr ? SchemaDialect::xdr : SchemaDialect::xsd);
            return 0;
        };
    });
}

std::runtime_error unknownMethod(const std::string& name) {
    return std::runtime_error("no method " + cli::unknownName(name, automation::manualNames()));
}

void addReference(CLI::App& app, Action& action) {
    const auto name = std::make_shared<std::string>();
    const auto html = std::make_shared<bool>(false);
    CLI::App* reference = app.add_subcommand("reference", "Print the reference manual in Markdown");
    CLI::Option* const one =
        reference->add_option("name", *name, "A method or a class; without one the whole manual")->type_name("NAME");
    reference->add_flag("--html", *html, "The manual with its guide as one page to browse")->excludes(one);
    reference->callback([name, html, &action] {
        action = [name, html] {
            const auto text = *html           ? manual_page::page()
                              : name->empty() ? automation::manual()
                                              : automation::manualEntry(*name);
            if (!text) throw unknownMethod(*name);
            std::cout << (name->empty() ? *text : cli::withAlignedTables(*text));
            return 0;
        };
    });
}

void addTemplate(CLI::App& app, Action& action) {
    const auto name = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("template", "Print a job line with every parameter of a method, to fill in");
    command->add_option("method", *name, "A method of Store")->required()->type_name("METHOD");
    command->callback([name, &action] {
        action = [name] {
            const automation::Member* const method = automation::findMember(automation::storeClass(), *name);
            if (method == nullptr) throw unknownMethod(*name);
            std::cout << automation::jobTemplate(*method) << '\n';
            return 0;
        };
    });
}

/// The first word that the command does not know, with the nearest one that it does; empty when it knows them all.
std::string unknownWord(const CLI::App& command) {
    const std::vector<std::string> words = command.remaining();
    if (words.empty()) return {};
    std::vector<std::string> known;
    if (words.front().starts_with('-')) {
        for (const CLI::Option* option : command.get_options()) known.push_back(option->get_name());
    } else {
        for (const CLI::App* each : command.get_subcommands({})) known.push_back(each->get_name());
    }
    if (known.empty()) return {};
    return "unknown: " + cli::unknownName(words.front(), std::vector<std::string_view>(known.begin(), known.end()));
}

/// Says what is wrong with the command line, and where help on the command is; help itself is no mistake.
int reportUsage(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error);
    std::string command = app.get_name();
    const CLI::App* given = &app;
    while (!given->get_subcommands().empty()) {
        given = given->get_subcommands().front();
        command += ' ' + given->get_name();
    }
    const std::string unknown = unknownWord(*given);
    std::cerr << (unknown.empty() ? error.what() : unknown) << "\nRun " << command << " --help for more information."
              << std::endl;
    return usageError;
}

int runCommandLine(const cli::Process& process) {
    CLI::App app("Publishes records to a web store and fetches what shoppers did there.", "quill1xml");
    app.require_subcommand(1);
    // A file may begin with "/" everywhere.
    app.allow_windows_style_options(false);
    app.footer(automation::limitsText());
    app.set_version_flag("--version", "quill1xml " + std::string(version()), "Print the version and end");
    Action action;
    for (const auto add : {addRun, addCheck, addResume, addFetch, addSendImages, addSchema, addReference, addTemplate})
        add(app, action);
    try {
        // The parser takes them from the back.
        app.parse(std::vector<std::string>(process.arguments().rbegin(), process.arguments().rend()));
    } catch (const CLI::ParseError& error) {
        return reportUsage(app, error);
    }
    return action();
}

int tryCommandLine(const cli::Process& process) {
    try {
        return runCommandLine(process);
    } catch (const std::bad_alloc&) {
        std::cerr << "quill1xml: out of memory\n";
        return failure;
    } catch (const std::exception& error) {
        std::cerr << "quill1xml: " << error.what() << '\n';
        return usageError;
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const cli::Process process(argc, argv);
        const int status = tryCommandLine(process);
        if (std::cout.flush()) return status;
        std::cerr << "quill1xml: standard output cannot be written\n";
        return std::max(status, failure);
    } catch (const std::bad_alloc&) {
        return failure;
    }
}
