#include "remote/RequestProcessor.h"

#include "remote/HttpResponses.h"
#include "remote/RemoteHandlers.h"
#include "remote/RemotePage.h"
#include "remote/Utf8.h"

namespace orvane {

namespace {

struct RequestLine {
    std::string_view method;
    std::string_view path;
    bool complete = false;  // at least two tokens
};

RequestLine splitRequestLine(std::string_view text) {
    const auto lineEnd = text.find("\r\n");
    const std::string_view line = text.substr(0, lineEnd);
    // Single blanks separate tokens; two blanks in a row give an empty token.
    const auto firstBlank = line.find(' ');
    if (firstBlank == std::string_view::npos) return {};
    const std::string_view rest = line.substr(firstBlank + 1);
    return {line.substr(0, firstBlank), rest.substr(0, rest.find(' ')), true};
}

// The page never changes, so neither does its reply.
const std::string& pageResponse() {
    static const std::string response = createHTTPResponse(remotePageHtml(), "text/html");
    return response;
}

RemoteReply route(std::string_view requestText, const RemoteSessionSnapshot* session,
                  const RemotePublishedSession* published) {
    const RequestLine request = splitRequestLine(requestText);
    if (!request.complete) return {createInternalErrorResponse(), std::nullopt};

    const auto method = request.method;
    const auto path = request.path;
    constexpr std::string_view scenePrefix = "/api/scene/";

    if (method == "GET") {
        if (path == "/") return {pageResponse(), std::nullopt};
        if (path == "/api/scenes")
            return published ? RemoteReply{published->scenesResponse, std::nullopt} : createScenesResponse(session);
        if (path == "/api/status")
            return published ? RemoteReply{published->statusResponse, std::nullopt} : createStatusResponse(session);
    } else if (method == "POST") {
        if (path.starts_with(scenePrefix)) return handleSceneChange(path.substr(scenePrefix.size()), session);
        if (path == "/api/live") return handleLiveUpdate(session);
        if (path == "/api/recording") return handleRecordingToggle(session);
        if (path == "/api/drawing") return handleDrawingToggle(session);
        if (path == "/api/progress") return handleProgressToggle(session);
        if (path == "/api/branding") return handleBrandingToggle(session);
        if (path == "/api/blur") return handleBlurToggle(session);
    }
    return {createNotFoundResponse(), std::nullopt};
}

}  // namespace

RemoteReply processRequest(std::string_view requestText, const RemoteSessionSnapshot* session) {
    return route(requestText, session, nullptr);
}

RemoteReply processRequestBytes(std::string_view bytes, const RemoteSessionSnapshot* session) {
    return route(isValidUtf8(bytes) ? bytes : std::string_view{}, session, nullptr);
}

RemoteReply processRequestBytes(std::string_view bytes, const RemotePublishedSession& published) {
    return route(isValidUtf8(bytes) ? bytes : std::string_view{}, published.snapshot.get(), &published);
}

}  // namespace orvane
