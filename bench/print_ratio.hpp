// How a benchmark reports a ratio.
#pragma once

#include <cstdio>
#include <string>

namespace quill1xml::bench {

/// Prints a line: the name, subject by baseline, the target (none when 0) and both in their unit.
inline void printRatio(const std::string& name, double target, double subject, double baseline, const char* unit) {
    const double ratio = subject / baseline;
    std::printf("%-58s %6.2f", name.c_str(), ratio);
    if (target > 0) std::printf("   target %4.2f%s", target, ratio > target ? "  MISSED" : "");
    std::printf("   (%.0f %s, %.0f %s)\n", subject, unit, baseline, unit);
}

}  // namespace quill1xml::bench
