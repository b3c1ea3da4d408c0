#include <QApplication>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

#include "ConsoleRoot.h"
#include "LibraryLog.h"
#include "console/controls/Theme.h"
#include "console/main_window/ContentView.h"

// Starts the application: the log, Qt, the composition root and the window.
int main(int argc, char* argv[]) {
    // Before anything can print: every line on standard output is ours.
    orvane::LibraryLog::install();
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("OrvaneUI"));
    QApplication::setApplicationName(QStringLiteral("OrvaneUI"));
    QApplication::setApplicationVersion(QStringLiteral(ORVANE_PROJECT_VERSION));
    orvane::Theme::apply(app);

    orvane::ConsoleRoot composition;
    orvane::ContentView& root = composition.console();
    root.setWindowTitle(QStringLiteral("OrvaneUI"));
    root.setMinimumSize(900, 600);
    root.resize(1440, 900);
    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect available = screen->availableGeometry();
        root.resize(std::min(1440, available.width()), std::min(900, available.height()));
        root.move(available.center() - QPoint(root.width() / 2, root.height() / 2));
    }
    root.show();
    return app.exec();
}
