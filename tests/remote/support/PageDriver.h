#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QProcess>
#include <QString>

namespace orvane::test {

// Drives headless Chromium through page_driver.py. Each request waits for
// its one-line answer while the main loop keeps running, so actions that
// the page causes reach the session in the meantime.
class PageDriver {
public:
    PageDriver();
    ~PageDriver();

    bool ready() const { return ready_; }
    QString lastError() const { return lastError_; }

    bool navigate(const QString& url);
    QJsonValue evaluate(const QString& expression);
    bool click(const QString& selector, int index = 0);
    bool key(const QString& key);
    bool setViewport(int width, int height);
    int dialogCount();

    // Evaluates until the result equals `expected` or the time is up.
    bool waitForValue(const QString& expression, const QJsonValue& expected, int timeoutMs = 5000);

private:
    QJsonObject request(const QJsonObject& command, int timeoutMs = 30000);
    QJsonObject readAnswer(int timeoutMs);

    QProcess process_;
    bool ready_ = false;
    QString lastError_;
};

}  // namespace orvane::test
