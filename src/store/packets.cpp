#include "store/packets.hpp"

#include "store/going_on.hpp"
#include "store/perform.hpp"
#include "text/numbers.hpp"

namespace quill1xml::store {
namespace {

constexpr Text beginningOfAll = u"WebStore";
constexpr Text extension = u".tmp";

void appendKind(std::u16string& out, const Packet& packet) {
    out.append(packet.kind);
    if (!packet.storeId) return;
    appendInteger(out, *packet.storeId);
    out.push_back(u'_');
}

void appendFileName(std::u16string& out, const Packet& packet) {
    appendKind(out.append(beginningOfAll), packet);
    appendInteger(out, packet.number);
    out.append(extension);
}

template <class Write>
void writeTo(State& state, const Packet& packet, Write write) {
    logged(state, labels::appendToTempFile, [&] {
        useDefaultFolder(state);
        appendFileName(state.fileName.assign(state.tempFilePath), packet);
        write(*state.environment.files, state.fileName);
    });
}

}  // namespace

std::u16string fileName(const Packet& packet) {
    std::u16string name;
    appendFileName(name, packet);
    return name;
}

std::u16string path(const State& state, const Packet& packet) {
    std::u16string name(state.tempFilePath);
    appendFileName(name, packet);
    return name;
}

std::u16string kindText(const Packet& packet) {
    std::u16string text;
    appendKind(text, packet);
    return text;
}

std::vector<std::u16string> packetFiles(const State& state, Text beginning) {
    std::u16string pattern(state.tempFilePath);
    pattern.append(beginning.empty() ? beginningOfAll : beginning).append(u"*").append(extension);
    return state.environment.files->list(pattern);
}

void append(State& state, const Packet& packet, Text text) {
    writeTo(state, packet, [text](ports::Files& files, Text name) { files.appendText(name, text); });
}

void startAnew(State& state, const Packet& packet, Text text) {
    writeTo(state, packet, [text](ports::Files& files, Text name) { files.writeText(name, text); });
}

void useDefaultFolder(State& state) {
    if (state.tempFilePath.empty()) state.tempFilePath = u"C:\\";
}

void perform(State& state, const arguments::NewJob&) { state.counters.clear(); }

void perform(State& state, const arguments::CleanupTempFiles& arguments) {
    const bool all = arguments.strFileName.empty();
    if (all) noteDeleting(state);
    for (const std::u16string& name : packetFiles(state, arguments.strFileName)) {
        state.environment.files->remove(state.tempFilePath + name);
    }
    if (all) noteDeleted(state);
}

}  // namespace quill1xml::store
