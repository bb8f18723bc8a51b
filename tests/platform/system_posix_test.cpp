#include "platform/ports.hpp"
#include "quill1xml/store.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <set>
#include <string>
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

/// Runs what follows in another time zone.
class Zone {
public:
    explicit Zone(const char* name) {
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone() {
        former_.empty() ? unsetenv("TZ") : setenv("TZ", former_.c_str(), 1);
        tzset();
    }

private:
    std::string former_ = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "";
};

TEST(PosixClock, TellsTheTimeOfTheZone) {
    const struct {
        const char* zone;
        int minutes;  ///< ahead of Greenwich
    } cases[] = {{"UTC0", 0}, {"XST3:30", -210}, {"XST-5:30", 330}};
    for (const auto& c : cases) {
        const Zone zone(c.zone);
        const double unixEpoch = Date::of(1970, 1, 1).days;
        const double seconds = (systemEnvironment().clock->now().days - unixEpoch) * 86400 - c.minutes * 60;
        EXPECT_NEAR(seconds, static_cast<double>(std::time(nullptr)), 5) << c.zone;
    }
    // Dates have no zone: an hour that summer time skips is an hour like any other.
    const Zone zone("XST3:30XDT,M3.2.0,M11.1.0");
    EXPECT_EQ(systemEnvironment().system->generalDate(Date::of(2007, 3, 11, 2, 30)), u"2007-03-11 02:30:00");
    EXPECT_EQ(Store().FormatDate({Date::of(2007, 3, 11, 2, 30)}), u"2007-03-11T02:30:00");
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
