#pragma once

#include <string_view>

#include "remote/RemotePublishedSession.h"
#include "remote/RemoteReply.h"
#include "remote/RemoteSessionSnapshot.h"

namespace orvane {

// Turns the text of one request into its complete response. Only the
// request line is read: split on CR LF, then on single blanks, and routed by
// exact match of method and path. `session` is null when the session is gone.
RemoteReply processRequest(std::string_view requestText, const RemoteSessionSnapshot* session);

// The raw bytes of one receive: text that is not valid UTF-8 reads as empty.
RemoteReply processRequestBytes(std::string_view bytes, const RemoteSessionSnapshot* session);

// The same, for the server: the read routes take the replies prepared when
// the session was published.
RemoteReply processRequestBytes(std::string_view bytes, const RemotePublishedSession& published);

}  // namespace orvane
