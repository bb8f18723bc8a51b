// Keys that come again, among more of them than are remembered at a time.
#include "command_line/duplicate_keys.hpp"

#include "support/text_printer.hpp"

#include <gmock/gmock.h>

namespace quill1xml::cli {
namespace {

TEST(DuplicateKeys, AreToldOnceEachHoweverManyThereAre) {
    DuplicateKeys keys;
    std::vector<std::string> told;
    const auto tell = [&] {
        told.clear();
        keys.tell([&](std::u16string_view key, std::size_t line, std::size_t first) {
            told.push_back(testing::utf8(key) + ": " + std::to_string(line) + " as " + std::to_string(first));
        });
    };
    tell();
    EXPECT_THAT(told, ::testing::IsEmpty());
    constexpr std::size_t many = 70'000;
    for (std::size_t line = 1; line <= many; ++line) keys.add(u"Ж" + toUtf16(std::to_string(line)), line);
    keys.add(u"Ж1", many + 1);
    keys.add(u"Ж70000", many + 2);
    keys.add(u"ж1", many + 3);
    keys.add(u"Ж1", many + 4);
    tell();
    EXPECT_THAT(told, ::testing::UnorderedElementsAre("Ж1: 70001 as 1", "Ж70000: 70002 as 70000", "Ж1: 70004 as 1"));

    // What was told is forgotten.
    for (const std::u16string_view key : {u"Ж1", u"B", u"B", u""}) keys.add(key, 5);
    tell();
    EXPECT_THAT(told, ::testing::ElementsAre("B: 5 as 5"));
}

}  // namespace
}  // namespace quill1xml::cli
