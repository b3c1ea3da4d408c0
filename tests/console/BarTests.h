#pragma once

#include <QObject>
#include <QString>

namespace orvane::test {

// Stands for the remote server: the three properties the bars read.
class FakeServer : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isServerRunning READ isServerRunning NOTIFY isServerRunningChanged)
    Q_PROPERTY(QString localIP READ localIP CONSTANT)
    Q_PROPERTY(quint16 serverPort READ serverPort CONSTANT)

public:
    bool isServerRunning() const { return running_; }
    QString localIP() const { return QStringLiteral("192.168.1.20"); }
    quint16 serverPort() const { return 8765; }
    void setRunning(bool running) {
        running_ = running;
        emit isServerRunningChanged(running);
    }

signals:
    void isServerRunningChanged(bool running);

private:
    bool running_ = false;
};

}  // namespace orvane::test
