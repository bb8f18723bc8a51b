#include "command_line/check.hpp"

#include "automation/classes.hpp"
#include "command_line/interruption.hpp"
#include "command_line/job_ahead.hpp"
#include "command_line/job_line.hpp"
#include "command_line/json_arguments.hpp"
#include "command_line/open_records.hpp"
#include "command_line/packet_folders.hpp"
#include "command_line/packet_trial.hpp"
#include "command_line/trial_environment.hpp"
#include "command_line/trial_folder.hpp"
#include "command_line/trial_schema.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"
#include "text/numbers.hpp"

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

namespace quill1xml::cli {
namespace {

using automation::Member;
using nlohmann::json;

constexpr auto error = Problem::Severity::error;
constexpr auto warning = Problem::Severity::warning;

/// Methods that exchange something with a server, or look at what is looked at here anyway.
bool isLeftUndone(std::string_view method) {
    return method.starts_with("Receive") || method == "SendImage" || method == "CheckPackets" ||
           method == "UseJournal" || method == "Resume";
}

class Check {
public:
    Check(const ports::Environment& environment, JobAhead& job, std::ostream& out, const CheckOptions& options)
        : folder_(options.keep),
          files_(std::make_shared<TrialFiles>(environment.files, folder_.path())),
          store_(trialEnvironment(environment, files_)),
          job_(job),
          report_(out, options.report),
          packets_(*files_, store_, report_, [this](Text kind) { schema_.provide(job_.schemaFor(kind)); }),
          schema_(store_, *files_, folder_.path()),
          open_(store_) {
        store_.onValueLeftOut([this](const LeftOutValue& value) { leftOut(value); });
    }

    int play(const Interruption& interruption) {
        for (std::string text; nextLine(text);) {
            if (interruption.isAsked()) return Interruption::status;
            if (!isBlankLine(text)) playLine(text);
        }
        if (job_.isTorn()) tell("bad-argument", {.reason = u"the job cannot be read on"});
        line_ = 0;
        method_ = {};
        try {
            end();
        } catch (const Error& failure) {
            tell("refused", {.reason = failure.description()});
        }
        files_->writeOut();
        report_.finish(packets_.kinds());
        return report_.errors() == 0 ? 0 : 1;
    }

private:
    bool nextLine(std::string& text) {
        const bool more = job_.next(text);
        line_ = job_.line();
        method_ = {};
        return more;
    }

    void tell(std::string_view code, Problem problem) {
        report_.add({.code = code, .problem = std::move(problem), .line = line_, .method = method_});
    }

    void playLine(const std::string& text) {
        const Member* member = nullptr;
        std::string_view code = "bad-argument";
        try {
            json call = parseJobLine(text);
            member = &calledMethod(call);
            method_ = member->name;
            automation::Arguments arguments(*member);
            fillArguments(arguments, *member, *call.begin());
            if (belongsToLost(*member)) return;
            code = "refused";
            play(*member, *call.begin(), arguments);
        } catch (const Error& failure) {
            tell(code, {.reason = code == "refused" ? reasonOf(failure) : failure.description()});
            if (member != nullptr) failed(*member);
        }
    }

    /// What is known of a failure.
    std::u16string reasonOf(const Error& failure) {
        std::u16string reason = failure.description();
        if (method_ != "AddOrder" && method_ != "AddQuotation") return reason;
        const std::u16string account = store_.LastFailure();
        if (!account.empty() && account != reason) reason.append(u"\r\n").append(account);
        return reason;
    }

    void play(const Member& member, json& values, automation::Arguments& arguments) {
        if (isLeftUndone(member.name)) return;
        if (member.name == "Send") {
            const std::string schema = textOf(values, "strWebStoreSchemaSource");
            if (!schema.empty()) useSchema(schema);
            if (sendsPackets(member, values)) send(values);
        } else if (member.name == "SendTempFile") {
            sendKind(toUtf16(textOf(values, "strTempFile")));
        } else if (!addsToNothing(member)) {
            prepare(member, values, arguments);
            invoke(member, values, arguments);
        }
    }

    // ---- Calls that are carried out

    void prepare(const Member& member, json& values, automation::Arguments& arguments) {
        const bool endsPart = member.name == "Create" || member.name == "SetTempFilePath";
        if (endsPart || member.name.ends_with("XML")) packets_.examineAll();
        if (endsPart) packets_.tellDuplicates();
        if (member.name == "CleanupTempFiles") deletes(toUtf16(textOf(values, "strFileName")));
        if (member.name == "Create") deletes({});
        if (member.name != "Create" && !member.name.ends_with("XML")) return;
        const auto schema = std::ranges::find(member.parameters, "strWebStoreSchemaSource", &Parameter::name);
        if (schema != member.parameters.end()) {
            const std::u16string used = useSchema(textOf(values, "strWebStoreSchemaSource"));
            arguments.setText(static_cast<std::size_t>(schema - member.parameters.begin()), used);
        }
    }

    void invoke(const Member& member, const json& values, const automation::Arguments& arguments) {
        packets_.before({line_, &member});
        member.invoke(&store_, arguments.data());
        packets_.after();
        open_.after(line_);
        if (member.name == "Create") hasHead_ = true;
        if (member.name == "AddEnvelope") {
            const std::string url = textOf(values, "strDestinationURL");
            hasDestination_ = hasDestination_ || (!url.empty() && url != "StringDefault");
        }
        if (member.name == "SetTempFilePath") {
            packetFolder_ = packetFolder(values) + u'\\';
            std::ranges::replace(packetFolder_, u'/', u'\\');
        }
        if (packets_.isDue()) packets_.examineDue();
    }

    void leftOut(const LeftOutValue& value) {
        Problem problem{.severity = warning};
        problem.attribute = toUtf16(value.attribute);
        problem.reason = toUtf16(value.reason);
        report_.add({.code = "left-out",
                     .problem = std::move(problem),
                     .line = line_,
                     .method = value.method,
                     .leftOutParameter = value.parameter});
    }

    std::u16string useSchema(const std::string& named) {
        const std::u16string source = toUtf16(named);
        const std::u16string* const ahead = job_.schemaFor({});
        const bool isSent = ahead == nullptr || *ahead == source;
        return schema_.use(source, [&](const std::u16string& reason, bool certain) {
            tell("schema", {.severity = certain && isSent ? error : warning, .reason = reason});
        });
    }

    // ---- Records over several calls

    /// What follows a call that failed would only repeat its mistake.
    void failed(const Member& member) {
        if (member.name == "Create") hasHead_ = true;
        if (member.name == "AddEnvelope") hasDestination_ = true;
        const std::u16string element(automation::elementOf(member));
        if (isBegun(element) && !automation::continuesElement(member) && !open_.isOpen(element)) lost_.insert(element);
    }

    static bool isBegun(const std::u16string& element) {
        return std::ranges::any_of(automation::storeClass().members, [&element](const Member& member) {
            return !element.empty() && automation::parentOf(member) == element;
        });
    }

    /// What a part is added to, or another call goes on with.
    static std::u16string ownerOf(const Member& member) {
        return std::u16string(automation::continuesElement(member) ? automation::elementOf(member)
                                                                   : automation::parentOf(member));
    }

    /// Whether the call belongs to a record whose beginning failed.
    bool belongsToLost(const Member& member) {
        if (lost_.empty()) return false;
        if (lost_.contains(ownerOf(member))) return true;
        if (!automation::continuesElement(member)) lost_.erase(std::u16string(automation::elementOf(member)));
        return std::erase_if(lost_, [&member](const std::u16string& element) {
                   return OpenRecords::lockOf(element) == member.name;
               }) != 0;
    }

    /// Warns of what goes with no record, or with another one; returns whether it would only spoil the next one.
    bool addsToNothing(const Member& member) {
        const std::u16string owner = ownerOf(member);
        if (owner.empty() || open_.isOpen(owner)) return false;
        const bool spoils = automation::continuesElement(member);
        tell("nothing-open", {.severity = warning,
                              .reason = u"no " + owner + u" is open; this " +
                                        (spoils ? u"spoils" : u"becomes part of") + u" the next one"});
        return spoils;
    }

    void tellOpen() {
        for (const OpenRecords::Lost& lost : open_.lost()) {
            report_.add({.code = "never-locked",
                         .problem = {.severity = warning, .element = lost.element, .reason = toUtf16(lost.text())},
                         .line = lost.line});
        }
    }

    // ---- Packet files

    void notSent(const std::u16string& name, std::size_t line, const std::u16string& reason) {
        report_.add({.code = "not-sent", .problem = {.packet = name, .reason = reason}, .line = line});
    }

    void send(const json& values) {
        if (!schema_.isNamed()) {
            tell("schema", {.reason = u"no schema source was given to Create or Send; records are checked against the "
                                      u"built-in one"});
        }
        tellOpen();
        packets_.examineAll();
        packets_.tellDuplicates();
        const PendingPackets pending = store_.pendingPackets();
        for (const std::u16string& name : pending.toSend) examineLeft(name);
        const std::string url = textOf(values, "strDestinationURL");
        if (!pending.toSend.empty() && !hasHead_)
            tell("refused", {.reason = u"no store was created: Create is missing"});
        if (!pending.toSend.empty() && hasHead_ && !hasDestination_ && (url.empty() || url == "StringDefault")) {
            tell("refused", {.reason = u"No Destination URL has been specified."});
        }
        tellDeletedUnsent(pending);
        store_.CleanupTempFiles();
    }

    void examineLeft(const std::u16string& name) {
        if (!files_->isOurs(packetFolder_ + name)) packets_.examineLeft(name, line_);
    }

    void tellDeletedUnsent(const PendingPackets& pending) {
        const std::map<std::u16string, std::size_t> lines = packets_.beginnings();
        for (const std::u16string& name : pending.toDeleteUnsent) {
            const std::u16string path = packetFolder_ + name;
            if (packets_.isSent(path)) continue;
            const auto line = lines.find(path);
            notSent(name, line == lines.end() ? 0 : line->second,
                    u"Send deletes it unsent: its number follows a gap, or Send does not know its kind (use "
                    u"SendTempFile)");
        }
    }

    void sendKind(const std::u16string& kind) {
        packets_.examineAll();
        for (std::int64_t number = 1;; ++number) {
            std::u16string name = u"WebStore" + kind;
            appendInteger(name, number);
            name += u".tmp";
            if (files_->list(packetFolder_ + name).empty()) return;
            examineLeft(name);
            packets_.send(packetFolder_ + name);
        }
    }

    /// Before a call deletes the packet files whose names begin so.
    void deletes(const std::u16string& beginning) {
        const std::map<std::u16string, std::size_t> lines = packets_.beginnings();
        const std::u16string pattern = packetFolder_ + (beginning.empty() ? u"WebStore" : beginning) + u"*.tmp";
        std::size_t left = 0;
        for (const std::u16string& name : files_->list(pattern)) {
            const std::u16string path = packetFolder_ + name;
            if (packets_.isSent(path)) continue;
            const auto line = lines.find(path);
            if (line == lines.end()) {
                ++left;
            } else {
                notSent(name, line->second, toUtf16(method_) + u" deletes it unsent at line " + numberText(line_));
            }
        }
        if (left == 0 || method_ != "Create") return;
        tell("not-sent", {.severity = warning,
                          .reason = u"packet files that an earlier job left unsent are deleted: " + numberText(left)});
    }

    static std::u16string numberText(std::size_t number) {
        std::u16string text;
        appendInteger(text, static_cast<std::int64_t>(number));
        return text;
    }

    void end() {
        tellOpen();
        packets_.examineAll();
        packets_.tellDuplicates();
        std::map<std::u16string, std::size_t> waiting = packets_.beginnings();
        std::erase_if(waiting, [this](const auto& packet) { return packets_.isSent(packet.first); });
        if (!waiting.empty()) {
            PendingPackets pending = store_.pendingPackets();
            std::erase_if(pending.toDeleteUnsent,
                          [&](const auto& name) { return !waiting.contains(packetFolder_ + name); });
            tellDeletedUnsent(pending);
            for (const std::u16string& name : pending.toDeleteUnsent) waiting.erase(packetFolder_ + name);
        }
        if (!waiting.empty()) {
            report_.add({.code = "not-sent",
                         .problem = {.severity = warning,
                                     .reason = u"packet files that are not sent when the job ends: " +
                                               numberText(waiting.size())}});
        }
    }

    TrialFolder folder_;
    std::shared_ptr<TrialFiles> files_;
    Store store_;
    JobAhead& job_;
    CheckReport report_;
    PacketTrial packets_;
    TrialSchema schema_;
    OpenRecords open_;
    std::set<std::u16string> lost_;  ///< elements whose beginning failed
    std::u16string packetFolder_ = std::u16string(usualPacketFolder) + u'\\';
    bool hasHead_ = false;
    bool hasDestination_ = false;
    std::size_t line_ = 0;
    std::string_view method_;
};

}  // namespace

int checkJob(const ports::Environment& environment, const Streams& streams, const CheckOptions& options) {
    // What is wrong with the folder is said before a job is waited for.
    if (!options.keep.empty()) const TrialFolder usable(options.keep);
    // Who ends the program while it waits for the job leaves nothing behind, and who does so later neither.
    JobAhead job(streams.in);
    const Interruption interruption;
    Check check(environment, job, streams.out, options);
    try {
        const int status = check.play(interruption);
        streams.out.flush();
        return status;
    } catch (const std::runtime_error& failure) {
        // What is wrong with the job is in the report: this is about the folder that it is tried out in.
        streams.err << "quill1xml: the job cannot be checked to its end: " << failure.what() << std::endl;
        return 1;
    }
}

}  // namespace quill1xml::cli
