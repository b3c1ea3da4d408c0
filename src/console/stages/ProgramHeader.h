#pragma once

#include "console/stages/StageHeader.h"

namespace orvane {

class StreamManager;
class SymbolButton;

// The program's header: "Draw", the pop-out window's pin while it is open,
// and "Pop Out" / "Close Window". Long labels when they fit, short ones
// otherwise.
class ProgramHeader : public StageHeader {
    Q_OBJECT

public:
    explicit ProgramHeader(StreamManager& streamManager, QWidget* parent = nullptr);

    SymbolButton* drawButton() const { return draw_; }
    SymbolButton* pinButton() const { return pin_; }
    SymbolButton* popOutButton() const { return popOut_; }
    bool isCompact() const { return compact_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void refresh();
    int wideWidth() const;

    StreamManager& streamManager_;
    SymbolButton* draw_ = nullptr;
    SymbolButton* pin_ = nullptr;
    SymbolButton* popOut_ = nullptr;
    bool compact_ = false;
};

}  // namespace orvane
