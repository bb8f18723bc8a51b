#include "command_line/trial_files.hpp"

#include "quill1xml/error.hpp"
#include "text/wildcard.hpp"

#include <algorithm>
#include <stdexcept>
#include <system_error>

namespace quill1xml::cli {
namespace {

constexpr Text separators = u"\\/";
constexpr Text someRoot = u"<Store xmlns=\"WebStore\" StoreID=\"1\">";

Text folderOf(Text fileName) { return fileName.substr(0, fileName.find_last_of(separators) + 1); }
Text nameOf(Text fileName) { return fileName.substr(fileName.find_last_of(separators) + 1); }

bool isPacket(Text fileName) {
    const Text name = nameOf(fileName);
    return name.starts_with(u"WebStore") && name.ends_with(u".tmp");
}

}  // namespace

Text TrialFiles::unwritten(const std::u16string& packet) const {
    const auto found = packets_.find(packet);
    return found == packets_.end() ? Text() : Text(found->second.unwritten);
}

void TrialFiles::writeOut(Packet& packet) {
    if (packet.unwritten.empty()) return;
    try {
        real_->appendText(packet.place, packet.unwritten);
    } catch (const Error& error) {
        throw std::runtime_error(error.what());  // the job is not to blame
    }
    unwritten_ -= packet.unwritten.size();
    std::u16string().swap(packet.unwritten);  // with its memory
}

void TrialFiles::writeOut(const std::u16string& packet) {
    const auto found = packets_.find(packet);
    if (found != packets_.end()) writeOut(found->second);
}

void TrialFiles::writeOut() {
    for (auto& [name, packet] : packets_) writeOut(packet);
}

bool TrialFiles::isLeft(Text fileName) { return !removed_.contains(fileName) && !real_->list(fileName).empty(); }

std::u16string TrialFiles::placeFor(Text fileName) {
    const std::u16string folder(folderOf(fileName));
    const std::filesystem::path name(nameOf(fileName));
    auto place = places_.find(folder);
    if (place == places_.end() || std::filesystem::exists(place->second / name)) {
        ++placeCount_;
        const std::filesystem::path next = placeCount_ == 1 ? folder_ : folder_ / std::to_string(placeCount_);
        std::error_code failed;
        std::filesystem::create_directories(next, failed);
        if (failed) throw std::runtime_error(next.string() + ": " + failed.default_error_condition().message());
        place = places_.insert_or_assign(folder, next).first;
    }
    return (place->second / name).u16string();
}

TrialFiles::Packets::iterator TrialFiles::packetFor(Text fileName) {
    const auto found = packets_.find(fileName);
    if (found != packets_.end()) return found;
    if (!isPacket(fileName)) throw runtimeError(RuntimeError::permissionDenied, fileName);
    const bool left = isLeft(fileName);
    const auto packet = packets_.emplace(fileName, Packet{placeFor(fileName), {}}).first;
    if (left) hold(packet, real_->readText(fileName), false);
    return packet;
}

void TrialFiles::hold(Packets::iterator packet, Text text, bool ours) {
    if (watcher_ != nullptr) watcher_->writing(packet->first, packet->second.unwritten.size(), text, ours);
    packet->second.unwritten.append(text);
    unwritten_ += text.size();
}

void TrialFiles::appendText(Text fileName, Text text) { hold(packetFor(fileName), text, true); }

void TrialFiles::writeText(Text fileName, Text text) {
    if (packets_.contains(fileName) || isLeft(fileName)) remove(fileName);
    appendText(fileName, text);
}

std::u16string TrialFiles::readText(Text fileName) {
    const auto found = packets_.find(fileName);
    if (only_ != nullptr && *only_ == fileName) return std::u16string(unwritten(*only_));
    if (found != packets_.end()) {
        const bool begun = !real_->list(found->second.place).empty();
        const std::u16string text = begun ? real_->readText(found->second.place) : std::u16string();
        return text + found->second.unwritten;
    }
    const bool gone = removed_.contains(fileName) || (only_ != nullptr && !isLeft(fileName));
    if (!gone) return real_->readText(fileName);
    if (only_ != nullptr && nameOf(fileName) == u"WebStore1.tmp") return std::u16string(someRoot);
    throw runtimeError(RuntimeError::fileNotFound, fileName);
}

Bytes TrialFiles::readBytes(Text fileName) {
    const auto found = packets_.find(fileName);
    if (found == packets_.end()) return real_->readBytes(fileName);
    writeOut(found->second);
    return real_->readBytes(found->second.place);
}

std::vector<std::u16string> TrialFiles::list(Text pattern) {
    const Text folder = folderOf(pattern);
    std::vector<std::u16string> names = real_->list(pattern);
    std::erase_if(names, [&](const std::u16string& name) {
        const std::u16string path = std::u16string(folder) + name;
        return removed_.contains(path) || packets_.contains(path);
    });
    if (pattern.find_first_of(u"*?") == Text::npos) {
        if (packets_.contains(pattern)) names.emplace_back(nameOf(pattern));
        return names;
    }
    for (const auto& [path, packet] : packets_) {
        const Text name = nameOf(path);
        if (folderOf(path) == folder && matchesWildcard(name, nameOf(pattern), false)) names.emplace_back(name);
    }
    std::ranges::sort(names);
    return names;
}

void TrialFiles::remove(Text fileName) {
    const bool left = isLeft(fileName);
    const auto found = packets_.find(fileName);
    if (found == packets_.end() && !left) throw runtimeError(RuntimeError::fileNotFound, fileName);
    if (left) removed_.emplace(fileName);
    if (found == packets_.end()) return;
    if (watcher_ != nullptr) watcher_->removing(found->first);
    writeOut(found->second);
    packets_.erase(found);
    const std::u16string folder(folderOf(fileName));
    const auto isThere = [&folder](const auto& packet) { return folderOf(packet.first) == folder; };
    if (std::ranges::none_of(packets_, isThere)) places_.erase(folder);
}

}  // namespace quill1xml::cli
