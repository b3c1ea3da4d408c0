#include "teleprompter/TeleprompterWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QVBoxLayout>

#include "teleprompter/TeleprompterManager.h"
#include "teleprompter/TeleprompterWindowView.h"

namespace orvane {

namespace {

QString frameKey() { return QStringLiteral("windows/%1").arg(QLatin1String(TeleprompterManager::windowFrameName)); }

}  // namespace

TeleprompterWindow::TeleprompterWindow(TeleprompterManager& manager, QSize contentSize, QSettings& settings)
    : QWidget(nullptr, Qt::Window), manager_(manager), settings_(settings) {
    setWindowTitle(QString::fromLatin1(TeleprompterManager::windowTitle));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_TranslucentBackground);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    view_ = new TeleprompterWindowView(manager);
    layout->addWidget(view_);

    // A frame saved earlier wins over the settings' size and the centring.
    const QByteArray saved = settings_.value(frameKey()).toByteArray();
    if (saved.isEmpty() || !restoreGeometry(saved)) {
        resize(contentSize.expandedTo(QSize(1, 1)));
        if (QScreen* screen = QGuiApplication::primaryScreen())
            move(screen->availableGeometry().center() - QPoint(width() / 2, height() / 2));
    }
}

TeleprompterWindow::~TeleprompterWindow() = default;

void TeleprompterWindow::bringToFront() {
    show();
    raise();
    activateWindow();
}

void TeleprompterWindow::setAlwaysOnTop(bool onTop) {
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == onTop) return;
    const bool visible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, onTop);  // hides a shown window
    if (visible) show();
}

void TeleprompterWindow::closeEvent(QCloseEvent* event) {
    saveFrame();
    event->accept();
    if (!reported_) {
        reported_ = true;
        manager_.windowWillClose(this);
    }
}

void TeleprompterWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (isVisible()) saveFrame();
}

void TeleprompterWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (isVisible()) saveFrame();
}

void TeleprompterWindow::saveFrame() { settings_.setValue(frameKey(), saveGeometry()); }

}  // namespace orvane
