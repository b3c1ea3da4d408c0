#include "console/program_window/ProgramOutputWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QVBoxLayout>
#include <cstdlib>

#include "console/program_window/VirtualCameraOutputView.h"

namespace orvane {

ProgramOutputWindow::ProgramOutputWindow(StreamManager& streamManager, const FrameSource* frames,
                                         const WindowLayer::ProgramWindowOptions& options,
                                         std::function<void(ProgramWindow*)> onUserClose, QSettings& settings)
    : QWidget(nullptr, Qt::Window), onUserClose_(std::move(onUserClose)), settings_(settings) {
    setWindowTitle(QString::fromStdString(options.title));
    setAccessibleName(windowTitle());
    setMinimumSize(options.minimumWidth, options.minimumHeight);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::black);
    setPalette(pal);
    setAutoFillBackground(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    content_ = new VirtualCameraOutputView(streamManager, frames);
    layout->addWidget(content_);

    if (options.aspectWidth > 0 && options.aspectHeight > 0) {
        aspectWidth_ = options.aspectWidth;
        aspectHeight_ = options.aspectHeight;
    }
    aspectTimer_.setSingleShot(true);
    aspectTimer_.setInterval(200);
    connect(&aspectTimer_, &QTimer::timeout, this, &ProgramOutputWindow::keepAspect);

    frameKey_ = QStringLiteral("windows/%1").arg(QString::fromStdString(options.frameName));
    const QByteArray saved = frameKey_.isEmpty() ? QByteArray() : settings_.value(frameKey_).toByteArray();
    if (saved.isEmpty() || !restoreGeometry(saved)) {
        resize(options.contentWidth, options.contentHeight);
        if (QScreen* screen = QGuiApplication::primaryScreen()) {
            const QRect available = screen->availableGeometry();
            move(available.center() - QPoint(options.contentWidth / 2, options.contentHeight / 2));
        }
    }
}

ProgramOutputWindow::~ProgramOutputWindow() = default;

void ProgramOutputWindow::bringToFront() {
    show();
    raise();
    activateWindow();
}

void ProgramOutputWindow::close() {
    closingBySession_ = true;
    saveGeometryNow();
    // The content goes first, so that nothing is drawn while closing.
    if (content_) {
        content_->hide();
        content_->deleteLater();
        content_ = nullptr;
    }
    QWidget::close();
}

void ProgramOutputWindow::setLevel(Level level) {
    level_ = level;
    const bool visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, level == Level::floating);
    if (visible) show();
}

void ProgramOutputWindow::hideCursor() {
    // Only over this window: the cursor comes back when it closes.
    cursorHidden_ = true;
    setCursor(Qt::BlankCursor);
    if (content_) content_->setCursor(Qt::BlankCursor);
}

void ProgramOutputWindow::closeEvent(QCloseEvent* event) {
    saveGeometryNow();
    event->accept();
    if (!closingBySession_ && onUserClose_) {
        auto report = std::move(onUserClose_);
        onUserClose_ = nullptr;
        report(this);
    }
}

void ProgramOutputWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (isVisible()) saveGeometryNow();
}

void ProgramOutputWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!isVisible()) return;
    saveGeometryNow();
    aspectTimer_.start();
}

void ProgramOutputWindow::keepAspect() {
    if (isMaximized() || isFullScreen() || closingBySession_) return;
    const int wanted = width() * aspectHeight_ / aspectWidth_;
    if (std::abs(height() - wanted) <= 1 || wanted < minimumHeight()) return;
    resize(width(), wanted);
}

void ProgramOutputWindow::saveGeometryNow() {
    if (frameKey_.isEmpty()) return;
    settings_.setValue(frameKey_, saveGeometry());
}

}  // namespace orvane
