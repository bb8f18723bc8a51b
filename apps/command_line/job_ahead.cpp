#include "command_line/job_ahead.hpp"

#include "command_line/job_line.hpp"
#include "command_line/packet_folders.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <cstdio>
#include <ios>
#include <stdexcept>

namespace quill1xml::cli {
namespace {

void require(bool done) {
    if (!done) throw std::runtime_error("a temporary file for the job fails");
}

}  // namespace

JobAhead::JobAhead(std::istream& in) : lines_(makeTemporaryFile()) {
    require(lines_ != nullptr);
    try {
        // A read that fails would otherwise look like the end of the job.
        in.exceptions(std::ios::badbit);
        for (std::string line; std::getline(in, line);) {
            ++count_;
            keep(line);
            note(line);
        }
    } catch (const std::ios::failure&) {
        torn_ = true;
    }
    require(std::fflush(lines_.get()) == 0 && seekTo(lines_.get(), 0));
}

void JobAhead::keep(const std::string& line) {
    const std::size_t size = line.size();
    require(std::fwrite(&size, sizeof size, 1, lines_.get()) == 1 &&
            std::fwrite(line.data(), 1, size, lines_.get()) == size);
}

void JobAhead::note(const std::string& line) {
    const auto has = [&line](const char* word) { return line.find(word) != std::string::npos; };
    if (!has("\"Send") && !has("SchemaSource")) return;
    try {
        const nlohmann::json call = parseJobLine(line);
        const automation::Member& member = calledMethod(call);
        const nlohmann::json& values = *call.begin();
        const std::u16string schema = toUtf16(textOf(values, "strWebStoreSchemaSource"));
        if (!schema.empty() || member.name == "Create") schema_ = schema;
        if (sendsPackets(member, values)) sendings_.push_back({count_, {}, schema_});
        if (member.name == "SendTempFile") {
            sendings_.push_back({count_, u"WebStore" + toUtf16(textOf(values, "strTempFile")), schema_});
        }
    } catch (const Error&) {
        return;  // told when it is its turn
    }
}

bool JobAhead::next(std::string& line) {
    ++line_;
    if (line_ > count_) return false;
    std::size_t size = 0;
    require(std::fread(&size, sizeof size, 1, lines_.get()) == 1);
    line.resize(size);
    require(std::fread(line.data(), 1, size, lines_.get()) == size);
    return true;
}

const std::u16string* JobAhead::schemaFor(Text kind) const {
    const auto found = std::ranges::find_if(sendings_, [&](const Sending& sending) {
        return sending.line >= line_ && (sending.kind.empty() || sending.kind == kind);
    });
    return found == sendings_.end() ? nullptr : &found->schema;
}

}  // namespace quill1xml::cli
