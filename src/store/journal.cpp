#include "store/journal.hpp"

#include "quill1xml/error.hpp"
#include "text/numbers.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace quill1xml::store {
namespace {

constexpr Text source = u"Quill1XML.Store.UseJournal()";
constexpr Text heading = u"journal 1";
constexpr Text lineEnd = u"\r\n";
constexpr std::size_t digestDigits = 16;

std::u16string hexadecimal(std::uint64_t value) {
    std::u16string text(digestDigits, u'0');
    for (std::size_t i = digestDigits; i-- > 0; value >>= 4) text[i] = u"0123456789abcdef"[value & 0xF];
    return text;
}

std::uint64_t fromHexadecimal(Text digits) {
    std::uint64_t value = 0;
    for (const char16_t c : digits) {
        value = value << 4 | static_cast<std::uint64_t>(c >= u'a' ? c - u'a' + 10 : c - u'0');
    }
    return value;
}

std::u16string number(Long value) {
    std::u16string text;
    appendInteger(text, value);
    return text;
}

void appendLine(std::u16string& out, const std::vector<Text>& values) {
    std::u16string line;
    for (const Text value : values) line.append(value).push_back(u'\t');
    out.append(line).append(hexadecimal(digestOf(line))).append(lineEnd);
}

/// The values of a line without its end; nothing when it is not what was written.
std::optional<std::vector<Text>> valuesOf(Text line) {
    const std::size_t digest = line.rfind(u'\t') + 1;
    if (digest == 0 || line.substr(digest) != hexadecimal(digestOf(line.substr(0, digest)))) return std::nullopt;
    std::vector<Text> values;
    for (std::size_t start = 0; start < digest;) {
        const std::size_t end = line.find(u'\t', start);
        values.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    return values;
}

/// Whether bytes are the first ones of a journal, as far as they go.
bool beginsAsJournal(const Bytes& bytes) {
    Bytes beginning{0xFF, 0xFE};
    for (const char16_t c : heading) beginning.insert(beginning.end(), {static_cast<std::uint8_t>(c), 0});
    const auto [byte, expected] = std::mismatch(bytes.begin(), bytes.end(), beginning.begin(), beginning.end());
    return byte == bytes.end() || expected == beginning.end();
}

[[noreturn]] void refuse(const std::u16string& fileName, Text reason) {
    throw Error(applicationError, source, fileName + std::u16string(reason));
}

}  // namespace

std::uint64_t digestOf(Text content) {
    // FNV-1a: against accidents and editors, not against forgers.
    std::uint64_t digest = 0xCBF29CE484222325;
    for (const char16_t c : content) {
        for (const unsigned byte : {c & 0xFFu, static_cast<unsigned>(c) >> 8}) {
            digest = (digest ^ byte) * 0x100000001B3;
        }
    }
    return digest;
}

Journal::Journal(std::shared_ptr<ports::Files> files, std::u16string fileName)
    : files_(std::move(files)), fileName_(std::move(fileName)) {
    if (!files_->list(fileName_).empty()) read(files_->readBytes(fileName_));
}

void Journal::read(const Bytes& bytes) {
    constexpr std::uint8_t end[] = {'\r', 0, '\n', 0};
    constexpr std::ptrdiff_t mark = 2;
    if (!beginsAsJournal(bytes)) refuse(fileName_, u" is not a journal; name another file");
    auto start = bytes.begin() + std::min<std::ptrdiff_t>(mark, std::ssize(bytes));
    // Half a mark is a line that broke off.
    if (bytes.size() == 1) start = bytes.begin();
    std::optional<std::size_t> damaged;
    for (std::size_t count = 1; start != bytes.end(); ++count) {
        // A line that broke off may have left half a character: the lines after it are found by their bytes.
        const auto stop = std::search(start, bytes.end(), std::begin(end), std::end(end));
        std::u16string line;
        for (auto at = start; stop - at >= 2; at += 2) line.push_back(static_cast<char16_t>(at[0] | at[1] << 8));
        const auto values = stop == bytes.end() || (stop - start) % 2 != 0 ? std::nullopt : valuesOf(line);
        torn_ = !values;
        if (!values) {
            if (damaged) break;
            damaged = count;
        } else if (values->front() == u"torn") {
            damaged.reset();
        } else if (damaged) {
            break;
        } else {
            take(*values);
        }
        start = stop == bytes.end() ? stop : stop + std::ssize(end);
    }
    // The last line may break off, when the process or the machine stopped there; others must be whole.
    if (!damaged || start == bytes.end()) return;
    refuse(fileName_, u" is damaged in line " + number(static_cast<Long>(*damaged)) +
                          u": compare the packet files with the store, then delete it");
}

void Journal::take(const std::vector<Text>& line) {
    const Text word = line.front();
    const auto is = [&](Text name, std::size_t values) { return word == name && line.size() == values + 1; };
    if (is(heading, 3)) {
        begun_ = true;
        deletes_ = false;
        folder_ = line[1];
        storeId_ = toLong(line[2]);
        schemaSource_ = line[3];
        packets_.clear();
    } else if (is(u"deleting", 0)) {
        deletes_ = true;
    } else if (line.size() > 1) {
        Packet& packet = packets_[std::u16string(line[1])];
        if (is(u"posting", 2)) {
            packet.doubtful = packet.doubtful || packet.state == Packet::State::posting;
            packet.state = Packet::State::posting;
            packet.digest = fromHexadecimal(line[2]);
        } else if (is(u"accepted", 3)) {
            packet.state = Packet::State::accepted;
            packet.digest = fromHexadecimal(line[2]);
            packet.importNumber = toLong(line[3]);
        } else if (is(u"returned", 1)) {
            packet.state = Packet::State::waiting;
        }
    }
}

void Journal::write(std::u16string lines) {
    if (torn_ && !begun_) {
        // Behind half a heading nobody would take it for a journal, and there is nothing in it.
        files_->remove(fileName_);
        torn_ = false;
    }
    if (torn_) {
        std::u16string ended(lineEnd);
        appendLine(ended, {u"torn"});
        lines.insert(0, ended);
    }
    files_->appendText(fileName_, lines);
    torn_ = false;
    files_->flush(fileName_);
}

void Journal::note(const std::vector<Text>& values) {
    const bool before = values.front() == u"posting" || values.front() == heading;
    // What came back is known to this process even where the disk does not take it.
    if (!before) take(values);
    std::u16string line;
    appendLine(line, values);
    write(std::move(line));
    if (before) take(values);
}

void Journal::begin(Text folder, Long storeId, Text schemaSource) {
    for (const Text text : {folder, schemaSource}) {
        if (std::ranges::any_of(text, [](char16_t c) { return c < u' '; })) {
            throw runtimeError(RuntimeError::invalidProcedureCall,
                               u"a journal cannot keep a name with control characters: " + std::u16string(text));
        }
    }
    note({heading, folder, number(storeId), schemaSource});
}

void Journal::expect(std::span<const std::u16string> packetFiles) {
    std::u16string lines;
    for (const std::u16string& name : packetFiles) {
        if (!packets_.contains(name)) appendLine(lines, {u"waiting", name});
    }
    if (lines.empty()) return;
    write(std::move(lines));
    for (const std::u16string& name : packetFiles) packets_.try_emplace(name);
}

void Journal::posting(Text packetFile, std::uint64_t digest) { note({u"posting", packetFile, hexadecimal(digest)}); }

void Journal::accepted(Text packetFile, std::uint64_t digest, Long importNumber) {
    note({u"accepted", packetFile, hexadecimal(digest), number(importNumber)});
}

void Journal::returned(Text packetFile) { note({u"returned", packetFile}); }

void Journal::deleting() { note({u"deleting"}); }

void Journal::finish() {
    if (!files_->list(fileName_).empty()) files_->remove(fileName_);
    begun_ = deletes_ = torn_ = false;
    packets_.clear();
}

}  // namespace quill1xml::store
