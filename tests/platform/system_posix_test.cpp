#include "platform/ports.hpp"

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace quill1xml::platform {
namespace {

TEST(PosixSystem, GeneralDateLeavesMidnightAndDayZeroOut) {
    const auto system = systemEnvironment().system;
    const struct {
        Date date;
        const char16_t* expected;
    } cases[] = {
        {Date::of(2007, 3, 5, 14, 7, 9), u"2007-03-05 14:07:09"},
        {Date::of(2007, 3, 5), u"2007-03-05"},
        {Date{39146.999999}, u"2007-03-06"},  // rounds to midnight
        {Date{0.25}, u"06:00:00"},
        {Date{0}, u"00:00:00"},
        {Date{-0.25}, u"06:00:00"},
        {Date{-1.25}, u"1899-12-29 06:00:00"},
    };
    for (const auto& c : cases) EXPECT_EQ(system->generalDate(c.date), c.expected) << c.date.days;
}

TEST(PosixSystem, CodePageIsWindows1252) {
    const auto system = systemEnvironment().system;
    const std::set<int> undefined{0x81, 0x8D, 0x8F, 0x90, 0x9D};
    for (int byte = 0; byte < 256; ++byte) {
        const char16_t character = system->codePage()[static_cast<std::size_t>(byte)];
        const bool same = byte < 0x80 || byte >= 0xA0 || undefined.contains(byte);
        EXPECT_EQ(character == byte, same) << byte;
    }
    EXPECT_EQ(system->codePage()[0x80], u'\u20AC');
    EXPECT_EQ(system->codePage()[0x96], u'\u2013');
    EXPECT_EQ(system->codePage()[0x9F], u'\u0178');
}

TEST(PosixSystem, ThreadsHaveIdsOfTheirOwn) {
    const auto system = systemEnvironment().system;
    std::uint32_t other = 0;
    std::thread([&] { other = system->threadId(); }).join();
    EXPECT_NE(other, system->threadId());
    EXPECT_EQ(system->threadId(), system->threadId());
}

}  // namespace
}  // namespace quill1xml::platform
