#pragma once

#include <QDateTime>
#include <QImage>
#include <QObject>
#include <string>
#include <unordered_map>

class QNetworkAccessManager;
class QNetworkReply;

namespace orvane {

// Loads slide pictures from a file path or a web address. Files are read
// again when they change (by modification time and size); web addresses are
// fetched once, asynchronously, and kept by address.
class SlideImageLoader : public QObject {
    Q_OBJECT
public:
    enum class State { none, loading, image, failed };
    struct Result {
        State state = State::none;
        QImage image;
    };

    explicit SlideImageLoader(QObject* parent = nullptr);

    // What to show for `reference` now. A file that loads is an image; failing
    // that, text that parses as a URL with a scheme is fetched (loading, then
    // image or failed); anything else is none.
    Result load(const std::string& reference);

signals:
    // A fetch finished; whoever draws slides should draw again.
    void imageArrived();

private:
    struct FileEntry {
        QDateTime modified;
        qint64 size = -1;
        QImage image;
    };

    void fetch(const std::string& reference, const QUrl& url);

    QNetworkAccessManager* network_ = nullptr;  // made on first fetch
    std::unordered_map<std::string, FileEntry> files_;
    std::unordered_map<std::string, Result> remote_;
};

}  // namespace orvane
