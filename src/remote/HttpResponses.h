#pragma once

#include <string>
#include <string_view>

namespace orvane {

// The two replies the server ever sends. Every failure of the JSON interface
// travels as a 200 with an error object.
std::string createHTTPResponse(std::string_view content, std::string_view contentType);
std::string createNotFoundResponse();

// The literal fallback, with its blank after the colon.
inline constexpr std::string_view kInternalServerErrorBody = R"({"error": "Internal server error"})";
std::string createInternalErrorResponse();

}  // namespace orvane
