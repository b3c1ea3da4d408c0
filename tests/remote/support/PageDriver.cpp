#include "PageDriver.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "TestApp.h"

namespace orvane::test {

PageDriver::PageDriver() {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(ORVANE_REMOTE_PAGE_DRIVER)});
    const QJsonObject hello = readAnswer(60000);
    ready_ = hello.value(QStringLiteral("ready")).toBool();
    if (!ready_) lastError_ = hello.value(QStringLiteral("error")).toString(QStringLiteral("driver did not start"));
}

PageDriver::~PageDriver() {
    if (process_.state() == QProcess::Running) {
        request({{QStringLiteral("cmd"), QStringLiteral("quit")}}, 5000);
        process_.closeWriteChannel();
        // The driver ends Chromium by pid on its way out.
        waitUntil([&] { return process_.state() == QProcess::NotRunning; }, 15000);
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(5000);
        }
    }
}

QJsonObject PageDriver::readAnswer(int timeoutMs) {
    if (!waitUntil([&] { return process_.canReadLine() || process_.state() == QProcess::NotRunning; }, timeoutMs))
        return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), QStringLiteral("driver timed out")}};
    if (!process_.canReadLine())
        return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), QStringLiteral("driver exited")}};
    return QJsonDocument::fromJson(process_.readLine()).object();
}

QJsonObject PageDriver::request(const QJsonObject& command, int timeoutMs) {
    if (process_.state() != QProcess::Running) return {};
    process_.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
    const QJsonObject answer = readAnswer(timeoutMs);
    if (!answer.value(QStringLiteral("ok")).toBool()) lastError_ = answer.value(QStringLiteral("error")).toString();
    return answer;
}

bool PageDriver::navigate(const QString& url) {
    return request({{QStringLiteral("cmd"), QStringLiteral("navigate")}, {QStringLiteral("url"), url}})
        .value(QStringLiteral("ok"))
        .toBool();
}

QJsonValue PageDriver::evaluate(const QString& expression) {
    return request({{QStringLiteral("cmd"), QStringLiteral("eval")}, {QStringLiteral("expr"), expression}})
        .value(QStringLiteral("value"));
}

bool PageDriver::click(const QString& selector, int index) {
    return request({{QStringLiteral("cmd"), QStringLiteral("click")},
                    {QStringLiteral("selector"), selector},
                    {QStringLiteral("index"), index}})
        .value(QStringLiteral("ok"))
        .toBool();
}

bool PageDriver::key(const QString& key) {
    return request({{QStringLiteral("cmd"), QStringLiteral("key")}, {QStringLiteral("key"), key}})
        .value(QStringLiteral("ok"))
        .toBool();
}

bool PageDriver::setViewport(int width, int height) {
    return request({{QStringLiteral("cmd"), QStringLiteral("viewport")},
                    {QStringLiteral("width"), width},
                    {QStringLiteral("height"), height}})
        .value(QStringLiteral("ok"))
        .toBool();
}

int PageDriver::dialogCount() {
    const QJsonValue value = request({{QStringLiteral("cmd"), QStringLiteral("dialogs")}}).value(QStringLiteral("value"));
    return value.isArray() ? static_cast<int>(value.toArray().size()) : -1;
}

bool PageDriver::waitForValue(const QString& expression, const QJsonValue& expected, int timeoutMs) {
    QJsonValue last;
    const bool matched = waitUntil(
        [&] {
            last = evaluate(expression);
            return last == expected;
        },
        timeoutMs);
    if (!matched)
        lastError_ = QStringLiteral("%1 gave %2").arg(expression, QString::fromUtf8(QJsonDocument(QJsonArray{last}).toJson(QJsonDocument::Compact)));
    return matched;
}

}  // namespace orvane::test
