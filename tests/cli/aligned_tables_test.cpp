// Tables of Markdown, aligned for the eye.
#include "command_line/aligned_tables.hpp"

#include <gtest/gtest.h>

namespace quill1xml::cli {
namespace {

TEST(AlignedTables, StandInColumns) {
    EXPECT_EQ(
        withAlignedTables("A\n\n| a | b |  |\n|---|---|---|\n| 千代 | a \\| b | end |\n| x |  | y |\n\nafter | it"),
        "A\n\n| a    | b      |  |\n| ---- | ------ | --- |\n| 千代 | a \\| b | end |\n| x    |        | y |\n\nafter "
        "| it");
}

}  // namespace
}  // namespace quill1xml::cli
