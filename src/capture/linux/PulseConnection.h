#pragma once

#include <pulse/context.h>
#include <pulse/mainloop.h>
#include <pulse/operation.h>

#include <QString>

namespace orvane {

// One blocking conversation with the sound server: a private main loop and
// a context, connected on construction.
class PulseConnection {
public:
    PulseConnection();
    ~PulseConnection();
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;

    bool ok() const { return ready_; }
    QString failure() const { return failure_; }
    pa_context* context() const { return context_; }
    // Runs the loop until the operation is done, then releases it.
    bool finish(pa_operation* operation);

private:
    pa_mainloop* loop_ = nullptr;
    pa_context* context_ = nullptr;
    bool ready_ = false;
    QString failure_;
};

}  // namespace orvane
