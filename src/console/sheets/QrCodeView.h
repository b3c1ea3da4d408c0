#pragma once

#include <QDialog>
#include <QImage>
#include <functional>

namespace orvane {

// The sheet with the remote page's address as a QR code, for a telephone to
// scan. The code's image comes from whoever can make one.
class QrCodeView : public QDialog {
    Q_OBJECT

public:
    using Generator = std::function<QImage(const QString&)>;

    QrCodeView(const QString& url, const Generator& generator, QWidget* parent = nullptr);
};

}  // namespace orvane
