// Record tests as data: a call and the exact element it writes, or the error it ends in.
#pragma once

#include "quill1xml/store.hpp"
#include "support/fake_environment.hpp"

#include <gtest/gtest.h>

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

}  // namespace quill1xml::testing
