#include "command_line/duplicate_keys.hpp"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <unordered_map>
#include <vector>

namespace quill1xml::cli {
namespace {

/// So many keys are remembered at a time; more of them are gone through in parts, but not in ever more parts.
constexpr std::uint64_t keysAtATime = 1 << 16;
constexpr std::uint64_t mostParts = 64;

constexpr std::uint64_t entriesAtOnce = 1 << 10;

/// Where a key came first.
struct First {
    std::uint64_t place = 0;
    std::size_t size = 0;
    std::size_t line = 0;
};

void require(bool done) {
    if (!done) throw std::runtime_error("a temporary file for the keys of records fails");
}

void seek(std::FILE* file, std::uint64_t place) { require(seekTo(file, place)); }

template <class Value>
void put(std::FILE* file, const Value* values, std::size_t count) {
    require(std::fwrite(values, sizeof(Value), count, file) == count);
}

template <class Value>
void get(std::FILE* file, Value* values, std::size_t count) {
    require(std::fread(values, sizeof(Value), count, file) == count);
}

}  // namespace

struct DuplicateKeys::Entry {
    std::uint64_t hash = 0;
    std::uint64_t place = 0;  ///< of the key in its file, in bytes
    std::size_t size = 0;     ///< in characters
    std::size_t line = 0;
};

void DuplicateKeys::add(std::u16string_view key, std::size_t line) {
    if (entries_ == nullptr) entries_.reset(makeTemporaryFile());
    if (keys_ == nullptr) keys_.reset(makeTemporaryFile());
    require(entries_ != nullptr && keys_ != nullptr);
    const Entry entry{std::hash<std::u16string_view>()(key), place_, key.size(), line};
    put(entries_.get(), &entry, 1);
    put(keys_.get(), key.data(), key.size());
    place_ += key.size() * sizeof(char16_t);
    ++count_;
}

void DuplicateKeys::tell(const Found& found) {
    const std::uint64_t parts = std::clamp<std::uint64_t>((count_ + keysAtATime - 1) / keysAtATime, 1, mostParts);
    for (std::uint64_t part = 0; count_ != 0 && part < parts; ++part) tellPart(part, parts, found);
    entries_.reset();
    keys_.reset();
    count_ = 0;
    place_ = 0;
}

void DuplicateKeys::tellPart(std::uint64_t part, std::uint64_t parts, const Found& found) {
    std::unordered_multimap<std::uint64_t, First> firsts;
    std::vector<Entry> entries;
    seek(entries_.get(), 0);
    for (std::uint64_t done = 0; done < count_; done += entries.size()) {
        entries.resize(static_cast<std::size_t>(std::min<std::uint64_t>(count_ - done, entriesAtOnce)));
        get(entries_.get(), entries.data(), entries.size());
        for (const Entry& entry : entries) {
            if ((entry.hash >> 32) % parts != part) continue;
            const First here{entry.place, entry.size, entry.line};
            const auto [begin, end] = firsts.equal_range(entry.hash);
            // One hash may be that of several keys: what it says is verified.
            const std::u16string key = begin == end ? std::u16string() : keyAt(here.place, here.size);
            const auto same = std::find_if(
                begin, end, [&](const auto& each) { return keyAt(each.second.place, each.second.size) == key; });
            if (same == end) {
                firsts.emplace(entry.hash, here);
            } else {
                found(key, entry.line, same->second.line);
            }
        }
    }
}

std::u16string DuplicateKeys::keyAt(std::uint64_t place, std::size_t size) {
    seek(keys_.get(), place);
    std::u16string key(size, u'\0');
    get(keys_.get(), key.data(), key.size());
    return key;
}

}  // namespace quill1xml::cli
