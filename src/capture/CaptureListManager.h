#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

#include "capture/CaptureResult.h"

namespace orvane {

class CaptureBackend;

// What the display and window lists share: a listing fetched on a worker
// thread, `isLoading` true across the wait, the error of the last fetch and
// whether the backend declined to list. Subclasses own the list itself and
// say what a successful listing becomes. Main thread.
class CaptureListManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(bool needsPermission READ needsPermission NOTIFY needsPermissionChanged)

public:
    // Waits for every fetch still running: the workers use the backend.
    ~CaptureListManager() override;

    bool isLoading() const { return isLoading_; }
    QString errorMessage() const { return errorMessage_; }
    // True after a listing the backend declined (CaptureResult::declined);
    // errorMessage then asks for permission. X11 never declines, so this
    // stays false there. Every fetch starts by clearing it.
    bool needsPermission() const { return needsPermission_; }

signals:
    void isLoadingChanged();
    void errorMessageChanged();
    void needsPermissionChanged();

protected:
    // `failurePrefix` comes before the reason of a failed listing
    // ("Error loading displays: ").
    CaptureListManager(CaptureBackend& backend, QString failurePrefix, QObject* parent);

    CaptureBackend& backend() const { return backend_; }

    // Calls `list` on the backend on a worker thread; isLoading stays true
    // until the result is published on the main thread. A listing is handed
    // to `accept` there; a failure keeps the previous list and sets
    // errorMessage. Of overlapping fetches the later one wins.
    template <typename T, typename Accept>
    void fetch(CaptureResult<T> (CaptureBackend::*list)(), Accept accept) {
        CaptureBackend* backend = &backend_;
        start([backend, list, accept = std::move(accept)]() -> Published {
            CaptureResult<T> listed = (backend->*list)();
            if (listed.wasDeclined()) return Published::declined(listed.error());
            if (!listed) return Published::failure(listed.error());
            return Published(std::function<void()>([accept, value = listed.takeValue()] { accept(value); }));
        });
    }

private:
    // A finished listing: on success, the call that hands it to the
    // subclass, made on the main thread.
    using Published = CaptureResult<std::function<void()>>;

    void start(std::function<Published()> work);
    void publish(const Published& listed);
    void setLoading(bool loading);
    void setErrorMessage(const QString& message);
    void setNeedsPermission(bool needed);

    CaptureBackend& backend_;
    const QString failurePrefix_;
    bool isLoading_ = false;
    QString errorMessage_;
    bool needsPermission_ = false;
    QFutureWatcher<Published> fetch_;          // the fetch whose result counts
    std::vector<QFuture<Published>> running_;  // every fetch not yet waited for
};

}  // namespace orvane
