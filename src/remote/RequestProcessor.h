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

// The same, for the server: the read routes and the page answer with text
// prepared beforehand, which the returned view points into (it lives as
// long as `published`); any other reply is built into `built`, whose action,
// if any, is the caller's to post.
std::string_view processRequestBytes(std::string_view bytes, const RemotePublishedSession& published,
                                     RemoteReply& built);

}  // namespace orvane
