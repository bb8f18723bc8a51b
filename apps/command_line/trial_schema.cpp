#include "command_line/trial_schema.hpp"

#include "quill1xml/schema.hpp"
#include "text/url.hpp"

#include <fstream>
#include <stdexcept>

namespace quill1xml::cli {

void TrialSchema::give(const std::u16string& location) {
    // A Send of nothing only takes the location.
    store_.Send({.strSource = u"none", .strWebStoreSchemaSource = location});
}

std::u16string TrialSchema::builtIn() {
    const std::filesystem::path file = folder_ / "store.xsd";
    if (!std::filesystem::exists(file)) {
        std::ofstream out(file, std::ios::binary);
        if (!(out << storeSchema(SchemaDialect::xsd) << std::flush)) {
            throw std::runtime_error("cannot write " + file.string());
        }
    }
    return file.u16string();
}

std::u16string TrialSchema::whyNot(const std::u16string& named, bool& certain) const {
    if (isHttpUrl(named)) return u"the schema " + printableUrl(named) + u" is not fetched: nothing leaves this machine";
    try {
        (void)files_.readBytes(isFileUrl(named) ? files_.fileOfUrl(named) : named);
    } catch (const Error& error) {
        return u"the schema cannot be read: " + error.description();
    }
    certain = true;
    const std::u16string nothing;
    for (const Problem& problem : files_.withUnwritten(nothing, [&] { return store_.check(nothing); })) {
        if (problem.code == Problem::Code::schema) return problem.reason;
    }
    return {};
}

std::u16string TrialSchema::usable(const std::u16string& named, const Trouble& trouble) {
    if (named.empty()) return builtIn();
    give(named);
    bool certain = false;
    const std::u16string why = whyNot(named, certain);
    if (why.empty()) return named;
    trouble(why + u"; records are checked against the built-in one", certain);
    return builtIn();
}

std::u16string TrialSchema::use(const std::u16string& named, const Trouble& trouble) {
    named_ = named;
    used_ = usable(named, trouble);
    give(used_);
    return used_;
}

void TrialSchema::provide(const std::u16string* named) {
    if (named == nullptr || *named == named_) {
        if (used_.empty()) used_ = builtIn();
        give(used_);
        return;
    }
    const auto [place, isNew] = foreseen_.try_emplace(*named);
    // What is wrong with it is told when it is named.
    if (isNew) place->second = usable(*named, [](const std::u16string&, bool) {});
    give(place->second);
}

}  // namespace quill1xml::cli
