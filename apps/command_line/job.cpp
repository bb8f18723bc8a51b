#include "command_line/job.hpp"

#include "command_line/error_text.hpp"
#include "command_line/harmless_text.hpp"
#include "command_line/job_line.hpp"
#include "command_line/player.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <ios>
#include <new>

namespace quill1xml::cli {
namespace {

using nlohmann::json;

bool nextLine(std::istream& in, std::string& line, Place& place) {
    place = {place.line + 1};
    return !std::getline(in, line).fail();
}

/// Begins to use the journal; false, with what to do, when it keeps a job that is not over.
bool useJournal(Player& player, ports::Files& files, const Streams& streams, const JobOptions& options) {
    const std::u16string file = toUtf16(options.journal);
    player.useJournal(file);
    const auto job = player.store().unfinishedJob();
    // Create ends the deletion of what was sent.
    if (!job || job->deletes) return true;
    streams.err << (options.discard ? "warning: gives up the job" : "the job") << " in " << excerpt(job->folder)
                << (options.discard ? ", of which " : " is not finished: ") << job->accepted.size() << " of "
                << job->packets << " packets were accepted" << std::endl;
    if (!options.discard) {
        streams.err << "\"quill1xml resume " << excerpt(job->folder) << " --journal " << excerpt(options.journal)
                    << "\" sends what is left of it; --discard gives it up" << std::endl;
        return false;
    }
    files.remove(file);
    player.useJournal(file);
    return true;
}

void playLines(Player& player, std::istream& in, Place& place) {
    // A read that fails would otherwise look like the end of the job.
    in.exceptions(std::ios::badbit);
    for (std::string line; nextLine(in, line, place);) {
        if (isBlankLine(line)) continue;
        const json call = parseJobLine(line);
        place.method = call.begin().key();
        player.call(calledMethod(call), *call.begin(), place);
    }
    player.end();
}

}  // namespace

int playJob(Exchanges& exchanges, const Streams& streams, const JobOptions& options) {
    Player player(exchanges, streams, options);
    Place place;
    return player.reporting(place, [&] {
        if (!options.journal.empty() && !useJournal(player, *exchanges.environment().files, streams, options)) return 1;
        playLines(player, streams.in, place);
        return 0;
    });
}

}  // namespace quill1xml::cli
