#include "command_line/duplicate_keys.hpp"

#include "quill1xml/error.hpp"

#include <algorithm>
#include <unordered_map>

namespace quill1xml::cli {
namespace {

/// So many keys are remembered at a time; more of them are gone through in parts, but not in ever more parts.
constexpr std::uint64_t keysAtATime = 1 << 16;
constexpr std::uint64_t mostParts = 64;

/// What stands before a key in the file.
struct Head {
    std::uint64_t hash = 0;
    std::uint64_t line = 0;
    std::uint64_t size = 0;  ///< of the key, in characters
};

/// Where a key came first.
struct First {
    std::uint64_t place = 0;  ///< of its head in the file
    std::uint64_t line = 0;
};

void require(bool done) {
    if (!done) throw runtimeError(RuntimeError::deviceIo, u"a temporary file for the keys of records");
}

void seek(std::FILE* file, std::uint64_t place) { require(fseeko(file, static_cast<off_t>(place), SEEK_SET) == 0); }

template <class Value>
void put(std::FILE* file, const Value* values, std::size_t count) {
    require(std::fwrite(values, sizeof(Value), count, file) == count);
}

template <class Value>
void get(std::FILE* file, Value* values, std::size_t count) {
    require(std::fread(values, sizeof(Value), count, file) == count);
}

}  // namespace

void DuplicateKeys::add(std::u16string_view key, std::size_t line) {
    if (file_ == nullptr) file_.reset(std::tmpfile());
    require(file_ != nullptr);
    const Head head{std::hash<std::u16string_view>()(key), line, key.size()};
    put(file_.get(), &head, 1);
    put(file_.get(), key.data(), key.size());
    ++count_;
}

void DuplicateKeys::tell(const Found& found) {
    const std::uint64_t parts = std::clamp<std::uint64_t>((count_ + keysAtATime - 1) / keysAtATime, 1, mostParts);
    for (std::uint64_t part = 0; count_ != 0 && part < parts; ++part) tellPart(part, parts, found);
    file_.reset();
    count_ = 0;
}

void DuplicateKeys::tellPart(std::size_t part, std::size_t parts, const Found& found) {
    std::unordered_multimap<std::uint64_t, First> firsts;
    std::uint64_t place = 0;
    std::u16string key;
    seek(file_.get(), 0);
    for (std::uint64_t i = 0; i < count_; ++i) {
        Head head;
        get(file_.get(), &head, 1);
        key.resize(head.size);
        get(file_.get(), key.data(), key.size());
        const First here{place, head.line};
        place += sizeof head + key.size() * sizeof(char16_t);
        if ((head.hash >> 32) % parts != part) continue;
        // One hash may be that of several keys: what it says is verified.
        const auto [begin, end] = firsts.equal_range(head.hash);
        const auto same = std::find_if(begin, end, [&](const auto& each) { return keyAt(each.second.place) == key; });
        if (begin != end) seek(file_.get(), place);
        if (same == end) {
            firsts.emplace(head.hash, here);
        } else {
            found(key, head.line, same->second.line);
        }
    }
}

std::u16string DuplicateKeys::keyAt(std::uint64_t place) {
    seek(file_.get(), place);
    Head head;
    get(file_.get(), &head, 1);
    std::u16string key(head.size, u'\0');
    get(file_.get(), key.data(), key.size());
    return key;
}

}  // namespace quill1xml::cli
