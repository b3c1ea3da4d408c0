#pragma once

#include <QImage>
#include <QPointer>
#include <functional>
#include <QWidget>

class QLabel;
class QToolButton;

namespace orvane {

class StreamManager;
class SymbolButton;
class TeleprompterManager;
class VersionInfoView;
class WebServerManager;

// The bar along the bottom of the console: version, stream quality,
// performance figures, the remote page's address, blur and performance.
class BottomBarView : public QWidget {
    Q_OBJECT

public:
    using QrCodeGenerator = std::function<QImage(const QString&)>;

    explicit BottomBarView(StreamManager& streamManager, QWidget* parent = nullptr);

    // How "Show QR Code" makes its picture; without one the sheet says it
    // failed.
    void setQrCodeGenerator(QrCodeGenerator generator) { qrCodeGenerator_ = std::move(generator); }
    void showQrCode();

    // The teleprompter the "Teleprompter" button opens and closes.
    void setTeleprompterManager(TeleprompterManager* teleprompter);
    // The remote server whose address the bar shows while it runs.
    void setWebServer(WebServerManager* server);

    VersionInfoView* versionInfoView() const { return version_; }
    SymbolButton* teleprompterButton() const { return teleprompter_; }
    SymbolButton* blurButton() const { return blur_; }
    SymbolButton* performanceButton() const { return performance_; }
    QWidget* statsBlock() const { return stats_; }
    QWidget* serverBlock() const { return server_; }

private:
    void refreshServer();
    void refreshQuality();
    void refreshToggles();
    void refreshTeleprompter();
    void refreshStats();
    QString serverUrl() const;

    StreamManager& streamManager_;
    VersionInfoView* version_ = nullptr;
    QToolButton* quality_ = nullptr;
    QWidget* stats_ = nullptr;
    QLabel* cpu_ = nullptr;
    QLabel* memory_ = nullptr;
    QLabel* fps_ = nullptr;
    QWidget* server_ = nullptr;
    SymbolButton* teleprompter_ = nullptr;
    QPointer<TeleprompterManager> teleprompterManager_;
    QLabel* url_ = nullptr;
    SymbolButton* blur_ = nullptr;
    SymbolButton* performance_ = nullptr;
    QPointer<WebServerManager> webServer_;
    QrCodeGenerator qrCodeGenerator_;
};

}  // namespace orvane
