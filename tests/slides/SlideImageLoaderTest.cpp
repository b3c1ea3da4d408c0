#include <gtest/gtest.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>

#include "slides/SlideImageLoader.h"

namespace orvane {
namespace slide_image_loader_test {

// A one-route HTTP server: /ok.png answers with a PNG, anything else 404.
class TinyServer {
public:
    TinyServer() {
        QImage image(8, 4, QImage::Format_ARGB32);
        image.fill(QColor(10, 200, 30));
        QBuffer buffer(&png_);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        server_.listen(QHostAddress::LocalHost, 0);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                const QByteArray request = socket->readAll();
                const bool ok = request.startsWith("GET /ok.png ");
                const QByteArray body = ok ? png_ : QByteArray("missing");
                socket->write((ok ? "HTTP/1.1 200 OK\r\nContent-Type: image/png\r\n"
                                  : "HTTP/1.1 404 Not Found\r\nContent-Type: text/plain\r\n") +
                              QByteArray("Content-Length: ") + QByteArray::number(body.size()) +
                              "\r\nConnection: close\r\n\r\n" + body);
                socket->disconnectFromHost();
            });
        });
    }
    QString url(const char* path) const {
        return QString("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path);
    }

private:
    QTcpServer server_;
    QByteArray png_;
};

SlideImageLoader::Result waitFor(SlideImageLoader& loader, const std::string& url) {
    QElapsedTimer timer;
    timer.start();
    SlideImageLoader::Result r = loader.load(url);
    while (r.state == SlideImageLoader::State::loading && timer.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        r = loader.load(url);
    }
    return r;
}

TEST(SlideImageLoader, FetchesByAddressAsynchronouslyAndKeepsIt) {
    TinyServer server;
    SlideImageLoader loader;
    int arrivals = 0;
    QObject::connect(&loader, &SlideImageLoader::imageArrived, [&] { ++arrivals; });
    const std::string url = server.url("/ok.png").toStdString();
    EXPECT_EQ(loader.load(url).state, SlideImageLoader::State::loading);
    const SlideImageLoader::Result r = waitFor(loader, url);
    ASSERT_EQ(r.state, SlideImageLoader::State::image);
    EXPECT_EQ(r.image.size(), QSize(8, 4));
    EXPECT_EQ(arrivals, 1);
    EXPECT_EQ(loader.load(url).state, SlideImageLoader::State::image);  // cached, no second fetch
    EXPECT_EQ(arrivals, 1);
}

TEST(SlideImageLoader, FailedFetchesShowAsFailed) {
    TinyServer server;
    SlideImageLoader loader;
    EXPECT_EQ(waitFor(loader, server.url("/missing.png").toStdString()).state, SlideImageLoader::State::failed);
    EXPECT_EQ(waitFor(loader, "http://127.0.0.1:1/x.png").state, SlideImageLoader::State::failed);
}

}  // namespace
}  // namespace orvane
