#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

#include <memory>

#include "support/ChildProcess.h"

namespace orvane::test {

// A private X server (Xvfb, 1920x1080x24 unless told otherwise, on a
// display number it picks itself) with openbox managing it, split into two
// RandR monitors: "Left" (0,0 960x1080, on the one output, primary) and
// "Right" (960,0 960x1080). Unsplit, the screen is one monitor.
class TestDisplayServer {
public:
    TestDisplayServer() = default;
    ~TestDisplayServer() { stop(); }

    // Empty on success, else what went wrong.
    QString start(bool withWindowManager = true, bool splitMonitors = true, QSize screenSize = QSize(1920, 1080));
    void stop();

    QByteArray displayName() const { return displayName_; }
    qint64 serverPid() const { return xvfb_.pid(); }
    QString runtimeDir() const { return runtime_ ? runtime_->path() : QString(); }

private:
    QString runTool(const QStringList& argv);

    std::unique_ptr<QTemporaryDir> runtime_;
    ChildProcess xvfb_;
    ChildProcess openbox_;
    QByteArray displayName_;
};

}  // namespace orvane::test
