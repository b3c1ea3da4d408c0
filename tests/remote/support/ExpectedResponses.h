#pragma once

#include <string>
#include <string_view>

namespace orvane::test {

// The wire format written out independently of the server's own builders.
inline std::string expected200(std::string_view body, std::string_view type = "application/json") {
    return "HTTP/1.1 200 OK\r\n"
           "Content-Type: " + std::string(type) + "; charset=utf-8\r\n"
           "Content-Length: " + std::to_string(body.size()) + "\r\n"
           "Access-Control-Allow-Origin: *\r\n"
           "Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n"
           "Access-Control-Allow-Headers: Content-Type\r\n"
           "Connection: close\r\n"
           "\r\n" + std::string(body);
}

inline const std::string kExpected404 =
    "HTTP/1.1 404 Not Found\r\n"
    "Content-Type: application/json; charset=utf-8\r\n"
    "Content-Length: 22\r\n"
    "Access-Control-Allow-Origin: *\r\n"
    "Connection: close\r\n"
    "\r\n"
    "{\"error\": \"Not found\"}";

inline const std::string kExpectedInternalError = expected200("{\"error\": \"Internal server error\"}");

}  // namespace orvane::test
