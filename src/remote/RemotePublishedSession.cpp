#include "remote/RemotePublishedSession.h"

#include "remote/RemoteHandlers.h"

namespace orvane {

std::shared_ptr<const RemotePublishedSession> RemotePublishedSession::make(
    std::shared_ptr<const RemoteSessionSnapshot> snapshot) {
    auto published = std::make_shared<RemotePublishedSession>();
    published->scenesResponse = createScenesResponse(snapshot.get()).response;
    published->statusResponse = createStatusResponse(snapshot.get()).response;
    published->snapshot = std::move(snapshot);
    return published;
}

}  // namespace orvane
