#include "command_line/packet_folders.hpp"

#include "command_line/harmless_text.hpp"
#include "command_line/paths.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "text/blanks.hpp"

#include <algorithm>
#include <system_error>
#include <tuple>

namespace quill1xml::cli {
namespace {

using automation::Member;
using nlohmann::json;

bool touchesPackets(const Member& method, const json& values) {
    const std::string_view name = method.name;
    if (name == "Send") return sendsPackets(method, values);
    const auto begins = [name](std::string_view word) { return name.starts_with(word); };
    return begins("Add") || begins("Lock") || begins("Update") || name == "Create" || name == "SendTempFile" ||
           name == "CleanupTempFiles" || name.ends_with("XML");
}

/// The number in the root's start tag.
std::string storeOf(ports::Files& files, const std::u16string& firstPacket) {
    constexpr Text before = u" StoreID=\"";
    try {
        const std::u16string text = files.readText(firstPacket);
        const std::size_t start = text.find(before);
        if (start != Text::npos) {
            const Text rest = Text(text).substr(start + before.size());
            return "store " + excerpt(rest.substr(0, rest.find(u'"')));
        }
    } catch (const Error&) {
        // Without it, or with something else in its place, nobody knows.
    }
    return "an unknown store";
}

}  // namespace

bool sendsPackets(const Member& method, const json& values) {
    const json source = values.value("strSource", json());
    return method.name == "Send" && (source.is_null() || source == "Memory");
}

std::u16string packetFolder(const json& values) {
    std::u16string given = toUtf16(values.value("strTempFilePath", std::string()));
    // As the store takes it: blanks belong to a name that ends in a separator, and only to that.
    const bool whole = given.ends_with(u'\\') || given.ends_with(u'/');
    return whole ? given.substr(0, given.size() - 1) : std::u16string(trimBlanks(given));
}

void PacketFolders::prepare(const Member& method, const json& values, const std::set<std::u16string>& sent) {
    if (method.name == "UseJournal" || method.name == "Resume") leaveToStore();
    if (!taken_ && !left_ && touchesPackets(method, values)) hold();
    if (method.name == "Create") warnOfLoss(sent);
}

void PacketFolders::leaveToStore() {
    left_ = true;
    holds_.clear();
}

void PacketFolders::hold() {
    std::string native = toUtf8(folder_);
    std::ranges::replace(native, '\\', '/');
    std::error_code ignored;  // then the name as it is must do
    std::filesystem::path place = std::filesystem::weakly_canonical(pathOf(native), ignored);
    if (place.empty()) place = pathOf(native);
    taken_ = holds_.contains(place);
    if (taken_) return;
    try {
        holds_.emplace(std::move(place), files_->hold(folder_));
        taken_ = true;
    } catch (const Error& error) {
        if (error.number() == static_cast<int>(RuntimeError::pathNotFound)) return;
        if (error.number() != static_cast<int>(RuntimeError::pathFileAccess)) throw;
        err_ << "warning: " << excerpt(folder_) << " cannot be held against other jobs ("
             << excerpt(error.description()) << "): let no other job use it meanwhile" << std::endl;
        holds_.emplace(std::move(place), nullptr);
        taken_ = true;
    }
}

void PacketFolders::warnOfLoss(const std::set<std::u16string>& sent) const {
    const std::vector<std::u16string> found = files_->list(folder_ + u"\\WebStore*.tmp");
    const auto unsent = std::ranges::count_if(found, [&sent](const auto& name) { return !sent.contains(name); });
    if (unsent == 0) return;
    err_ << "warning: Create will delete " << unsent << " unsent packet file" << (unsent == 1 ? "" : "s") << " of "
         << storeOf(*files_, folder_ + u"\\WebStore1.tmp") << " in " << excerpt(folder_) << std::endl;
}

void PacketFolders::follow(const Member& method, const json& values) {
    if (method.name != "SetTempFilePath" && method.name != "Resume") return;
    folder_ = packetFolder(values);
    taken_ = false;
}

}  // namespace quill1xml::cli
