#pragma once

#include "console/stages/StageHeader.h"

namespace orvane {

class StreamManager;
class SymbolButton;

// The preview's header: the active scene's name, and "Bring to Front" while
// the scene shows a window or a camera.
class PreviewHeader : public StageHeader {
    Q_OBJECT

public:
    explicit PreviewHeader(StreamManager& streamManager, QWidget* parent = nullptr);

    SymbolButton* bringToFrontButton() const { return bringToFront_; }

private:
    void refresh();
    void bringToFront();

    StreamManager& streamManager_;
    SymbolButton* bringToFront_ = nullptr;
};

}  // namespace orvane
