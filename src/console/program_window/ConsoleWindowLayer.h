#pragma once

#include "engine/WindowLayer.h"

class QSettings;

namespace orvane {

class FrameSource;
class StreamManager;

// The session's window system on Qt: the pop-out program window and raising
// the application's own windows.
class ConsoleWindowLayer : public WindowLayer {
public:
    ConsoleWindowLayer(StreamManager& streamManager, const FrameSource* frames);

    std::shared_ptr<ProgramWindow> createProgramWindow(const ProgramWindowOptions& options,
                                                       std::function<void(ProgramWindow*)> onUserClose) override;
    void bringApplicationToFront() override;

private:
    StreamManager& streamManager_;
    const FrameSource* frames_;
};

}  // namespace orvane
