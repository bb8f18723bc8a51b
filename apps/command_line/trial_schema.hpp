// The schema of a job that is only tried out.
#pragma once

#include "command_line/trial_files.hpp"
#include "quill1xml/store.hpp"

#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace quill1xml::cli {

/// Sees to it that a store has a schema: the one that the job names, or the built-in one where that is not to be had.
class TrialSchema {
public:
    /// Hears what is wrong with a schema, and whether a Send would fail on it for certain.
    using Trouble = std::function<void(const std::u16string& reason, bool certain)>;

    TrialSchema(Store& store, TrialFiles& files, std::filesystem::path folder)
        : store_(store), files_(files), folder_(std::move(folder)) {}

    /// Gives the store a schema that a call names, and returns the one to be named instead.
    std::u16string use(const std::u16string& named, const Trouble& trouble);

    /// Gives the store the one that will be named by the time of a sending; null for the one named last.
    void provide(const std::u16string* named);

    /// Whether the job has named one.
    bool isNamed() const { return !named_.empty(); }

private:
    void give(const std::u16string& location);
    std::u16string builtIn();
    std::u16string usable(const std::u16string& named, const Trouble& trouble);
    std::u16string whyNot(const std::u16string& named, bool& certain) const;

    Store& store_;
    TrialFiles& files_;
    std::filesystem::path folder_;
    std::u16string named_;
    std::u16string used_;                                ///< in its place; empty while none is named
    std::map<std::u16string, std::u16string> foreseen_;  ///< the same of what is yet to be named
};

}  // namespace quill1xml::cli
