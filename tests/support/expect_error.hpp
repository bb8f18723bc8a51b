// Expectations on the library's errors.
#pragma once

#include "quill1xml/error.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace quill1xml::testing {

/// The Error that a call throws; a test failure and nothing when it throws none.
template <typename Call>
std::optional<Error> errorOf(Call call) {
    try {
        call();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no error was thrown";
    return std::nullopt;
}

/// Expects an Error of that number with that text in its description.
template <typename Call>
void expectError(Call call, std::int32_t number, std::u16string_view text) {
    const auto error = errorOf(call);
    if (!error) return;
    EXPECT_EQ(error->number(), number) << error->what();
    EXPECT_NE(error->description().find(text), std::u16string::npos) << error->what();
}

}  // namespace quill1xml::testing
