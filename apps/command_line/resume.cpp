#include "command_line/resume.hpp"

#include "automation/classes.hpp"
#include "command_line/harmless_text.hpp"
#include "command_line/player.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace quill1xml::cli {
namespace {

using nlohmann::json;

class Resumption {
public:
    Resumption(Player& player, const Streams& streams, const JobOptions& options, const ResumeOptions& resume)
        : player_(player), streams_(streams), options_(options), resume_(resume) {}

    /// Throws as the calls that it makes do.
    int run(ports::Files& files) {
        const std::u16string journal = toUtf16(options_.journal);
        const bool empty = files.list(toUtf16(resume_.folder) + u"\\WebStore*.tmp").empty();
        if (empty && files.list(journal).empty()) return nothing();
        call("Resume", {{"strTempFilePath", resume_.folder},
                        {"strWebStoreSchemaSource", resume_.schema},
                        {"strJournalFile", options_.journal}});
        if (!player_.store().unfinishedJob()) {
            streams_.err << "all packets were sent before; their files are deleted now" << std::endl;
            return 0;
        }
        for (const std::u16string& kind : kindsForSendTempFile()) {
            call("SendTempFile", {{"strTempFile", toUtf8(kind)}, {"strDestinationURL", resume_.url}});
        }
        requireNothingUnsent();
        call("Send", {{"strDestinationURL", resume_.url}});
        return 0;
    }

    Place place;

private:
    int nothing() {
        streams_.err << "nothing to do: there are no packet files in " << excerpt(resume_.folder) << ", and no journal "
                     << excerpt(options_.journal) << std::endl;
        return 0;
    }

    void call(std::string_view method, const json& values) {
        const auto& members = automation::storeClass().members;
        player_.call(*std::ranges::find(members, method, &automation::Member::name), values, place);
    }

    /// Of the packet files that Send would delete unsent, such as quotations and product images.
    std::set<std::u16string> kindsForSendTempFile() {
        constexpr Text beginning = u"WebStore";
        constexpr Text digits = u"0123456789";
        std::set<std::u16string> kinds;
        for (const std::u16string& name : player_.store().pendingPackets().toDeleteUnsent) {
            if (player_.sent().contains(name)) continue;
            const Text stem = Text(name).substr(0, name.rfind(u'.')).substr(beginning.size());
            kinds.emplace(stem.substr(0, stem.find_last_not_of(digits) + 1));
        }
        return kinds;
    }

    void requireNothingUnsent() {
        for (const std::u16string& name : player_.store().pendingPackets().toDeleteUnsent) {
            if (player_.sent().contains(name)) continue;
            throw Error(applicationError, u"quill1xml resume",
                        name +
                            u" would be deleted unsent: its number follows a gap. Put the missing packet files "
                            u"back, or empty ones in their places, or move it elsewhere.");
        }
    }

    Player& player_;
    const Streams& streams_;
    const JobOptions& options_;
    const ResumeOptions& resume_;
};

}  // namespace

int resumeJob(Exchanges& exchanges, const Streams& streams, const JobOptions& options, const ResumeOptions& resume) {
    Player player(exchanges, streams, options);
    Resumption resumption(player, streams, options, resume);
    return player.reporting(resumption.place, [&] { return resumption.run(*exchanges.environment().files); });
}

}  // namespace quill1xml::cli
