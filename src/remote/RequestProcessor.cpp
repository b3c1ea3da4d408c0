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

// Returns the prepared text when there is one; otherwise fills `built`.
const std::string* route(std::string_view requestText, const RemoteSessionSnapshot* session,
                         const RemotePublishedSession* published, RemoteReply& built) {
    const RequestLine request = splitRequestLine(requestText);
    if (!request.complete) {
        built = {createInternalErrorResponse(), std::nullopt};
        return nullptr;
    }

    const auto method = request.method;
    const auto path = request.path;
    constexpr std::string_view scenePrefix = "/api/scene/";

    if (method == "GET") {
        if (path == "/") return &pageResponse();
        if (path == "/api/scenes") {
            if (published) return &published->scenesResponse;
            built = createScenesResponse(session);
            return nullptr;
        }
        if (path == "/api/status") {
            if (published) return &published->statusResponse;
            built = createStatusResponse(session);
            return nullptr;
        }
    } else if (method == "POST") {
        built = [&] {
            if (path.starts_with(scenePrefix)) return handleSceneChange(path.substr(scenePrefix.size()), session);
            if (path == "/api/live") return handleLiveUpdate(session);
            if (path == "/api/recording") return handleRecordingToggle(session);
            if (path == "/api/drawing") return handleDrawingToggle(session);
            if (path == "/api/progress") return handleProgressToggle(session);
            if (path == "/api/branding") return handleBrandingToggle(session);
            if (path == "/api/blur") return handleBlurToggle(session);
            return RemoteReply{createNotFoundResponse(), std::nullopt};
        }();
        return nullptr;
    }
    built = {createNotFoundResponse(), std::nullopt};
    return nullptr;
}

RemoteReply routeToReply(std::string_view requestText, const RemoteSessionSnapshot* session) {
    RemoteReply reply;
    if (const std::string* prepared = route(requestText, session, nullptr, reply)) reply.response = *prepared;
    return reply;
}

}  // namespace

RemoteReply processRequest(std::string_view requestText, const RemoteSessionSnapshot* session) {
    return routeToReply(requestText, session);
}

RemoteReply processRequestBytes(std::string_view bytes, const RemoteSessionSnapshot* session) {
    return routeToReply(isValidUtf8(bytes) ? bytes : std::string_view{}, session);
}

std::string_view processRequestBytes(std::string_view bytes, const RemotePublishedSession& published,
                                     RemoteReply& built) {
    const std::string_view text = isValidUtf8(bytes) ? bytes : std::string_view{};
    if (const std::string* prepared = route(text, published.snapshot.get(), &published, built)) return *prepared;
    return built.response;
}

}  // namespace orvane
