// The packet files that a job writes while it is tried out: what is wrong with them, and what is in them.
#pragma once

#include "command_line/check_report.hpp"
#include "command_line/duplicate_keys.hpp"
#include "command_line/record_lines.hpp"
#include "command_line/trial_files.hpp"
#include "quill1xml/store.hpp"

#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace quill1xml::cli {

/// Looks at each packet file when it is complete, and at parts of those that grow too large to be held. Throws
/// std::runtime_error where what was looked at cannot be written out.
class PacketTrial : private TrialFiles::Watcher {
public:
    /// Gives the store the schema for packet files of a kind, which is their names up to the number.
    using GiveSchema = std::function<void(Text kind)>;

    PacketTrial(TrialFiles& files, const Store& store, CheckReport& report, GiveSchema giveSchema);
    ~PacketTrial() override { files_.watchedBy(nullptr); }
    PacketTrial(const PacketTrial&) = delete;
    PacketTrial& operator=(const PacketTrial&) = delete;

    /// Before a call, which may write a record.
    void before(const RecordCall& call);

    /// After a call that went well.
    void after();

    /// Whether enough is written to be looked at.
    bool isDue() const;

    /// Looks at what is due, or at everything that was not looked at yet.
    void examineDue();
    void examineAll();

    /// Looks at a whole packet file in the store's folder that an earlier job left and the present call sends.
    void examineLeft(const std::u16string& name, std::size_t line);

    /// Tells of keys that came twice since the last time.
    void tellDuplicates();

    /// A packet file that is sent as it is now.
    void send(const std::u16string& packet) { sent_.insert(packet); }
    bool isSent(const std::u16string& packet) const { return sent_.contains(packet); }

    /// The packet files of the job that are there, and the line that began each.
    std::map<std::u16string, std::size_t> beginnings() const;

    const std::vector<KindTotal>& kinds() const { return kinds_; }

private:
    struct Packet {
        std::size_t kind = 0;
        std::size_t firstLine = 0;
        std::size_t before = 0;  ///< records that are written out
        RecordLines lines{};
        std::size_t examined = 0;  ///< of the first packet file, which is held whole: its size then
    };
    using Packets = std::unordered_map<std::u16string, Packet>;

    void writing(const std::u16string& name, std::size_t start, Text text, bool ours) override;
    void removing(const std::u16string& name) override;

    Packet& packetOf(const std::u16string& name, Text element);
    void addLeft(Packet& packet, Text text);
    void addRecord(Packet& packet, std::size_t start, Text element, Text text);
    void addKeys(Text record, std::span<const RecordCall> calls);
    const std::vector<std::u16string>& keyNames(Text element);
    void examine(const std::u16string& name, Packet& packet);
    void tell(const std::u16string& key, std::size_t line, std::size_t firstLine);

    TrialFiles& files_;
    const Store& store_;
    CheckReport& report_;
    GiveSchema giveSchema_;
    RecordCall call_;
    bool wrote_ = false;
    std::map<std::u16string, std::vector<RecordCall>, std::less<>> begun_;  ///< calls for records to come, by element
    Packets packets_;
    std::map<std::u16string, std::u16string, std::less<>> current_;  ///< packet files being filled, by their kind
    std::set<std::u16string> complete_;                              ///< and not looked at
    std::set<std::u16string> sent_;
    bool badHead_ = false;  ///< which every packet file is sent with
    std::vector<KindTotal> kinds_;
    std::map<std::u16string, std::vector<std::u16string>, std::less<>> keyNames_;
    DuplicateKeys keys_;
    std::u16string key_;  ///< buffer
};

std::string_view codeOf(Problem::Code code);

}  // namespace quill1xml::cli
