#include "command_line/losses.hpp"

#include "command_line/harmless_text.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <iterator>

namespace quill1xml::cli {
namespace {

constexpr std::size_t shown = 20;

}  // namespace

Losses::Losses(Store& store, std::ostream& err, bool verbose)
    : store_(store), err_(err), verbose_(verbose), open_(store) {
    store_.onValueLeftOut([this](const LeftOutValue& value) { leftOut(value); });
}

std::ostream& Losses::warning(std::size_t line) { return err_ << "warning: line " << line << ": "; }

void Losses::leftOut(const LeftOutValue& value) {
    if (++leftOut_ > shown && !verbose_) return;
    warning(line_) << value.method << ": " << value.parameter << " is left out: " << value.attribute << ": "
                   << excerpt(value.reason) << std::endl;
}

void Losses::before(const automation::Member& method, std::size_t line) {
    line_ = line;
    if (method.record == nullptr) return;
    wrote_ = true;
    const std::u16string parent(automation::parentOf(method));
    if (parent.empty() || open_.isOpen(parent)) return;
    warning(line) << method.name << ": no " << toUtf8(parent) << " is open; this becomes part of the next one"
                  << std::endl;
}

void Losses::beforeSending() {
    for (const OpenRecords::Lost& lost : open_.lost()) warning(lost.line) << lost.text() << std::endl;
}

void Losses::atEnd(const std::set<std::u16string>& sent) {
    beforeSending();
    if (leftOut_ > shown && !verbose_) {
        err_ << "warning: " << leftOut_ - shown << " more values are left out; --verbose tells them all" << std::endl;
    }
    if (!wrote_) return;
    const PendingPackets pending = store_.pendingPackets();
    std::vector<std::u16string> unsent;
    for (const auto* names : {&pending.toSend, &pending.toDeleteUnsent}) {
        std::ranges::copy_if(*names, std::back_inserter(unsent),
                             [&](const auto& name) { return !sent.contains(name); });
    }
    if (unsent.empty()) return;
    err_ << "warning: " << unsent.size() << " packet file" << (unsent.size() == 1 ? " is" : "s are") << " not sent:";
    for (std::size_t i = 0; i < std::min(unsent.size(), verbose_ ? unsent.size() : shown); ++i) {
        err_ << (i == 0 ? " " : ", ") << excerpt(unsent[i]);
    }
    err_ << (unsent.size() > shown && !verbose_ ? ", ..." : "") << std::endl;
}

}  // namespace quill1xml::cli
