// Lines of a job as the command line plays them, against a server that accepts everything.
#include "command_line/job.hpp"
#include "fuzz.hpp"

#include <sstream>

using namespace quill1xml;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World world;
    world.files->bytes[u"D\\a.gif"] = {'A'};
    world.files->texts[u"T\\WebStoreTax1.tmp"] = u"<Tax TaxCode=\"A\"/>";
    for (int i = 0; i < 8; ++i) world.http->reply("<Receipt ImportNumber=\"1\"><Error Number=\"0\"/></Receipt>");
    std::istringstream in{std::string(fuzz::textOf(data, size))};
    std::ostringstream out;
    std::ostringstream err;
    cli::Progress progress(err, size % 2 == 0);
    cli::Exchanges exchanges(world.environment(), progress, {.verbose = size % 3 == 0});
    const int status = cli::playJob(exchanges, {in, out, err});
    if (status != 0 && err.str().find("error ") == std::string::npos) fuzz::find("an error without a word");
    world.inspect();
    return 0;
}
