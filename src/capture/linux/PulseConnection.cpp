#include "capture/linux/PulseConnection.h"

#include <pulse/error.h>

namespace orvane {

PulseConnection::PulseConnection() {
    loop_ = pa_mainloop_new();
    context_ = pa_context_new(pa_mainloop_get_api(loop_), "OrvaneUI");
    if (!context_ || pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        failure_ = QStringLiteral("Cannot connect to the sound server");
        return;
    }
    while (true) {
        const pa_context_state_t state = pa_context_get_state(context_);
        if (state == PA_CONTEXT_READY) {
            ready_ = true;
            return;
        }
        if (!PA_CONTEXT_IS_GOOD(state) || pa_mainloop_iterate(loop_, 1, nullptr) < 0) {
            failure_ = QStringLiteral("Cannot connect to the sound server: ") +
                       QString::fromUtf8(pa_strerror(pa_context_errno(context_)));
            return;
        }
    }
}

PulseConnection::~PulseConnection() {
    if (context_) {
        pa_context_disconnect(context_);
        pa_context_unref(context_);
    }
    if (loop_) pa_mainloop_free(loop_);
}

bool PulseConnection::finish(pa_operation* operation) {
    if (!operation) return false;
    bool ok = true;
    while (pa_operation_get_state(operation) == PA_OPERATION_RUNNING) {
        if (pa_mainloop_iterate(loop_, 1, nullptr) < 0) {
            ok = false;
            break;
        }
    }
    pa_operation_unref(operation);
    return ok;
}

}  // namespace orvane
