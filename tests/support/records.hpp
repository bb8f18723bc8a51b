// Record tests as data: a call and the exact element it writes, or the error it ends in.
#pragma once

#include "quill1xml/store.hpp"
#include "support/fake_environment.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quill1xml::testing {

using Call = std::function<void(Store&)>;

struct Written {
    Call call;
    const char* xml;  ///< UTF-8
};

struct Refused {
    Call call;
    std::int32_t number;
    const char* source;
    const char* description;
};

/// The packet files, by name, that a call leaves in folder "T".
inline std::map<std::string, std::string> filesWrittenBy(const Call& call) {
    FakeEnvironment fake;
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    call(store);
    std::map<std::string, std::string> files;
    for (const auto& [name, text] : fake.files->texts) files[utf8(name)] = utf8(text);
    return files;
}

/// All that a call appends to packet files, whichever they are.
inline std::string writtenBy(const Call& call) {
    std::string all;
    for (const auto& [name, text] : filesWrittenBy(call)) all += text;
    return all;
}

inline void expectWritten(const std::vector<Written>& cases) {
    for (const Written& c : cases) EXPECT_EQ(writtenBy(c.call), c.xml);
}

/// A text of so many "~", at most 1001.
inline Text tildes(std::size_t size) {
    static const std::u16string longest(1001, u'~');
    return Text(longest).substr(0, size);
}

/// A text of so many "<", at most 1001; each is escaped as "&#60;".
inline Text brackets(std::size_t size) {
    static const std::u16string longest(1001, u'<');
    return Text(longest).substr(0, size);
}

/// Fills capped attributes: up to their caps, or one beyond.
struct Filler {
    bool beyond;
    Text (*text)(std::size_t size) = tildes;
    Text operator()(std::size_t cap) const { return text(beyond ? cap + 1 : cap); }
    Text key(std::size_t cap) const { return text(beyond ? 1 : cap); }
};

struct Capped {
    std::function<void(Store&, Filler)> call;
    std::ptrdiff_t caps;  ///< the sum of all
    const char* keys;     ///< what is written when every other text is one beyond its cap
};

/// Every attribute is written up to its cap and left out beyond it.
inline void expectCaps(const std::vector<Capped>& cases) {
    for (const Capped& c : cases) {
        const std::string full = writtenBy([&](Store& store) { c.call(store, {false}); });
        EXPECT_EQ(std::ranges::count(full, '~'), c.caps) << full;
        EXPECT_EQ(writtenBy([&](Store& store) { c.call(store, {true}); }), c.keys);
    }
}

/// As expectCaps, and all that was filled is escaped.
inline void expectEscapedCaps(const std::vector<Capped>& cases) {
    expectCaps(cases);
    for (const Capped& c : cases) {
        const std::string full = writtenBy([&](Store& store) { c.call(store, {false, brackets}); });
        EXPECT_EQ(std::ranges::count(full, '#'), c.caps) << full;
    }
}

/// Each call fails as given, is logged, and leaves no file behind.
inline void expectRefused(const std::vector<Refused>& cases) {
    for (const Refused& c : cases) {
        FakeEnvironment fake;
        Store store(fake.environment());
        store.SetTempFilePath({u"T"});
        try {
            c.call(store);
            ADD_FAILURE() << "accepted, though it should say: " << c.description;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), c.number) << c.description;
            EXPECT_EQ(utf8(error.source()), c.source);
            EXPECT_EQ(utf8(error.description()), c.description);
        }
        EXPECT_FALSE(fake.log->entries.empty()) << c.description;
        EXPECT_TRUE(fake.files->texts.empty()) << c.description;
    }
}

/// A call that a record of the method's name refuses.
struct BadKey {
    Call call;
    std::string method;
    const char* description;
};

inline void expectBadKeys(const std::vector<BadKey>& cases) {
    for (const BadKey& c : cases) {
        const std::string source = "Quill1XML.Store." + c.method + "()";
        expectRefused({{c.call, applicationError, source.c_str(), c.description}});
    }
}

}  // namespace quill1xml::testing
