#include "console/stages/ProgramHeader.h"

#include <QHBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Theme.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
SymbolButton::Look lookFor(bool on, const QColor& onColor) {
    SymbolButton::Look look;
    look.background = on ? onColor : Theme::white(0.1);
    return look;
}
}  // namespace

ProgramHeader::ProgramHeader(StreamManager& streamManager, QWidget* parent)
    : StageHeader(QStringLiteral("PROGRAM"), true, parent), streamManager_(streamManager) {
    draw_ = new SymbolButton(QStringLiteral("Draw"), "pencil.circle");
    connect(draw_, &QPushButton::clicked, &streamManager_.drawing(), &DrawingState::toggleDrawingMode);
    pin_ = new SymbolButton(QStringLiteral("Always on Top"), "pin.slash");
    ProgramWindowController& window = streamManager_.programWindowController();
    connect(pin_, &QPushButton::clicked, this, [&window] {
        window.setProgramWindowAlwaysOnTop(!window.programWindowAlwaysOnTop());
        window.updateProgramWindowLevel();
    });
    popOut_ = new SymbolButton(QStringLiteral("Pop Out"), "arrow.up.left.and.arrow.down.right");
    connect(popOut_, &QPushButton::clicked, this, [&window] {
        if (window.isProgramWindowOpen())
            window.closeProgramWindow();
        else
            window.openProgramWindow();
    });
    buttonRow()->addWidget(draw_);
    buttonRow()->addWidget(pin_);
    buttonRow()->addWidget(popOut_);

    connect(&streamManager_, &StreamManager::programSceneChanged, this, &ProgramHeader::refresh);
    connect(&streamManager_.drawing(), &DrawingState::isDrawingModeEnabledChanged, this, &ProgramHeader::refresh);
    connect(&window, &ProgramWindowController::isProgramWindowOpenChanged, this, &ProgramHeader::refresh);
    connect(&window, &ProgramWindowController::programWindowAlwaysOnTopChanged, this, &ProgramHeader::refresh);
    refresh();
}

int ProgramHeader::wideWidth() const {
    // Title block plus the three buttons with their long labels.
    const QFontMetrics fm(Theme::font(10, Theme::Weight::medium));
    const bool open = streamManager_.programWindowController().isProgramWindowOpen();
    int width = 16 + 11 + 8 + QFontMetrics(Theme::font(11, Theme::Weight::bold)).horizontalAdvance(QStringLiteral("PROGRAM")) +
                8 + 60 + 16;
    auto button = [&](const QString& label) { return fm.horizontalAdvance(label) + 20 + 12 + 6 + 6; };
    width += button(QStringLiteral("Draw"));
    if (open) width += button(QStringLiteral("Always on Top"));
    width += button(open ? QStringLiteral("Close Window") : QStringLiteral("Pop Out"));
    return width;
}

void ProgramHeader::refresh() {
    const auto& scene = streamManager_.programScene();
    setSubtitle(scene ? QString::fromStdString(scene->name) : QStringLiteral("No scene"));

    const bool drawing = streamManager_.drawing().isDrawingModeEnabled();
    const ProgramWindowController& window = streamManager_.programWindowController();
    const bool open = window.isProgramWindowOpen();
    const bool onTop = window.programWindowAlwaysOnTop();
    compact_ = width() > 0 && width() < wideWidth();

    draw_->setSymbol(drawing ? "pencil.circle.fill" : "pencil.circle");
    draw_->setLook(lookFor(drawing, Theme::blue()));

    pin_->setVisible(open);
    pin_->setLabel(compact_ ? QStringLiteral("Pin") : QStringLiteral("Always on Top"));
    pin_->setSymbol(onTop ? "pin.fill" : "pin.slash");
    pin_->setLook(lookFor(onTop, Theme::green()));

    popOut_->setLabel(open ? (compact_ ? QStringLiteral("Close") : QStringLiteral("Close Window"))
                           : QStringLiteral("Pop Out"));
    popOut_->setSymbol(open ? "arrow.down.right.and.arrow.up.left" : "arrow.up.left.and.arrow.down.right");
    popOut_->setLook(lookFor(open, Theme::purple()));
}

void ProgramHeader::resizeEvent(QResizeEvent* event) {
    StageHeader::resizeEvent(event);
    const bool compact = width() < wideWidth();
    if (compact != compact_) refresh();
}

}  // namespace orvane
