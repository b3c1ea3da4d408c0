#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace orvane {

struct XcbFree {
    void operator()(void* p) const { std::free(p); }
};

// Owns a reply or error that XCB allocated with malloc.
template <typename T>
using XcbReply = std::unique_ptr<T, XcbFree>;

// Waits for a reply; the error, if any, is freed and reported as null.
template <typename Reply, typename Cookie, typename Fn>
XcbReply<Reply> xcbWait(xcb_connection_t* connection, Fn replyFn, Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    XcbReply<Reply> reply(replyFn(connection, cookie, &error));
    std::free(error);
    return reply;
}

}  // namespace orvane
