// What the check of a job reports: findings as they come, and what it would publish.
#pragma once

#include "quill1xml/problem.hpp"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::cli {

struct Finding {
    std::string_view code;
    Problem problem{};          ///< its code does not count
    std::size_t line = 0;       ///< of the job; 0 for none
    std::string_view method{};  ///< of a call that went wrong
    std::string_view leftOutParameter{};
};

/// The records of one kind that a job wrote.
struct KindTotal {
    std::u16string kind;
    std::size_t records = 0;
    std::size_t packets = 0;
    std::uint64_t bytes = 0;
};

class CheckReport {
public:
    struct Options {
        bool json = false;
        bool strict = false;    ///< warnings are errors
        std::size_t width = 0;  ///< of the terminal, 0 for none
    };

    CheckReport(std::ostream& out, const Options& options) : out_(out), options_(options) {}

    void add(Finding finding);

    /// Ends the report.
    void finish(const std::vector<KindTotal>& kinds);

    std::size_t errors() const { return errors_; }

private:
    void addText(const Finding& finding);
    void addJson(const Finding& finding);

    std::ostream& out_;
    Options options_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

}  // namespace quill1xml::cli
