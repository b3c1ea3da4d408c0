#include "remote/HttpResponses.h"

namespace orvane {

std::string createHTTPResponse(std::string_view content, std::string_view contentType) {
    std::string out;
    out.reserve(content.size() + 256);
    out += "HTTP/1.1 200 OK\r\n";
    out += "Content-Type: ";
    out += contentType;
    out += "; charset=utf-8\r\n";
    out += "Content-Length: ";
    out += std::to_string(content.size());  // bytes: content is UTF-8 already
    out += "\r\n";
    out += "Access-Control-Allow-Origin: *\r\n";
    out += "Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n";
    out += "Access-Control-Allow-Headers: Content-Type\r\n";
    out += "Connection: close\r\n";
    out += "\r\n";
    out += content;
    return out;
}

std::string createNotFoundResponse() {
    return "HTTP/1.1 404 Not Found\r\n"
           "Content-Type: application/json; charset=utf-8\r\n"
           "Content-Length: 22\r\n"
           "Access-Control-Allow-Origin: *\r\n"
           "Connection: close\r\n"
           "\r\n"
           R"({"error": "Not found"})";
}

std::string createInternalErrorResponse() {
    return createHTTPResponse(kInternalServerErrorBody, "application/json");
}

}  // namespace orvane
