#include "ConsoleTestSupport.h"

#include <QApplication>
#include <gtest/gtest.h>

#include "console/controls/Theme.h"

namespace orvane::test {

void ensureApplication() {
    if (qApp) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "console_tests";
    static char* argv[] = {name, nullptr};
    auto* app = new QApplication(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("OrvaneUI"));
    QApplication::setApplicationName(QStringLiteral("OrvaneUI-tests"));
    Theme::apply(*app);
}

Session::Session() {
    ensureApplication();
    storage = std::make_unique<PresetStorage>(dir.filePath(QStringLiteral("data")).toStdString());
    streamManager = std::make_unique<StreamManager>(
        *storage, std::make_unique<QSettings>(dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat));
}

LogCapture::LogCapture() {
    fflush(stdout);
    testing::internal::CaptureStdout();
}

LogCapture::~LogCapture() { text(); }

std::string LogCapture::text() {
    if (!done_) {
        fflush(stdout);
        text_ = testing::internal::GetCapturedStdout();
        done_ = true;
    }
    return text_;
}

}  // namespace orvane::test
