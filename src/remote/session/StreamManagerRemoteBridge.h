#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "remote/RecordingControl.h"
#include "remote/RemoteActions.h"
#include "remote/RemoteSessionSnapshot.h"

namespace orvane {

class StreamManager;
class WebServerManager;

// Joins the remote server to the session. Publishes a fresh snapshot to the
// server whenever something the handlers read changes, and carries the
// server's actions out on the session, on the main thread. Make it a child
// of the WebServerManager; it lets go of both sides when either is gone.
//
// Recording: with a recorder set (the recording subsystem's control), the
// remote switch drives it; without one it flips the session's isRecording
// flag, which is all the session itself knows of recording.
class StreamManagerRemoteBridge : public QObject, public RemoteActions, public RecordingControl {
    Q_OBJECT
public:
    StreamManagerRemoteBridge(StreamManager* session, WebServerManager* server, QObject* parent = nullptr);
    ~StreamManagerRemoteBridge() override;

    void setRecordingControl(RecordingControl* recorder);

    // What the handlers may read of `session`, as one immutable value.
    static std::shared_ptr<const RemoteSessionSnapshot> snapshotOf(const StreamManager& session);
    void publish();

    // RemoteActions
    void switchToScene(int index, const std::string& sceneId) override;
    void updateLive() override;
    void setDrawingModeEnabled(bool enabled) override;
    void setSceneProgressBarEnabled(const std::string& sceneId, bool enabled) override;
    void setSceneBrandingEnabled(const std::string& sceneId, bool enabled) override;
    void toggleBlurMode() override;

    // RecordingControl, when no recorder is set
    bool isRecording() const override;
    void startRecording() override;
    void stopRecording() override;

private:
    template <typename Change>
    void changeScene(const std::string& sceneId, Change change);

    QPointer<StreamManager> session_;
    QPointer<WebServerManager> server_;
};

}  // namespace orvane
