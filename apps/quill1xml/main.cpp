// quill1xml: the command line.

#include "automation/manual.hpp"
#include "quill1xml/job.hpp"
#include "quill1xml/schema.hpp"

#include <CLI/CLI.hpp>

#include <unistd.h>

#include <fstream>
#include <iostream>

namespace {

constexpr int usageError = 2;

int runJob(const std::string& file) {
    using namespace quill1xml;
    std::ifstream opened;
    if (file != "-") {
        opened.open(file);
        if (!opened) {
            std::cerr << "cannot read the job file " << file << std::endl;
            return usageError;
        }
    }
    std::istream& in = file == "-" ? std::cin : opened;
    return cli::playJob(platform::systemEnvironment(), {in, std::cout, std::cerr, isatty(STDERR_FILENO) != 0});
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Publishes records to a web store.");
    app.require_subcommand(1);

    std::string file = "-";
    CLI::App* run = app.add_subcommand("run", "Play a job of JSON lines through one Store");
    run->add_option("file", file, "The job; - for standard input")->capture_default_str();

    bool xdr = false;
    CLI::App* schema = app.add_subcommand("schema", "Print the schema of store documents");
    schema->add_flag("--xdr", xdr, "In XML-Data Reduced instead of XML Schema");

    CLI::App* reference = app.add_subcommand("reference", "Print the reference manual in Markdown");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usageError;
    }
    if (*run) return runJob(file);
    if (*schema)
        std::cout << quill1xml::storeSchema(xdr ? quill1xml::SchemaDialect::xdr : quill1xml::SchemaDialect::xsd);
    if (*reference) std::cout << quill1xml::automation::manual();
    return std::cout.flush() ? 0 : 1;
}
