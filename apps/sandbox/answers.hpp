// Requests and answers as the store means them: JSON for programs, pages for people.
#pragma once

#include "document.hpp"

#include <httplib.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

inline constexpr const char* xmlType = "text/xml; charset=utf-8";
inline constexpr const char* jsonType = "application/json";

void answerJson(httplib::Response& response, const Json& json, int status = 200);

/// A page, which may load nothing but this store's images.
void answerPage(httplib::Response& response, const std::string& html, int status = 200);

/// An image or whatever else a client sent as one: browsers are kept from taking it for a page.
void answerImage(httplib::Response& response, const std::string& bytes);

/// JSON or a page that says what is wrong.
void answerError(const httplib::Request& request, httplib::Response& response, int status, const std::string& message);

/// Whether a browser asks.
bool wantsPage(const httplib::Request& request);

/// Nothing when the request does not have it.
std::optional<std::string> parameter(const httplib::Request& request, std::string_view name);

/// As parameter, but a whole number. Throws std::invalid_argument for anything else.
std::optional<std::int64_t> numberParameter(const httplib::Request& request, const char* name);

/// Throws std::invalid_argument when the request has another one.
void allowParameters(const httplib::Request& request, std::span<const std::string_view> known);

/// A whole number; nothing for any other text.
std::optional<std::int64_t> wholeNumber(std::string_view text);

}  // namespace quill1xml::sandbox
