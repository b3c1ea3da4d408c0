#pragma once

#include <QPointer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QStackedWidget;

namespace orvane {

class StreamManager;
class SymbolButton;
class WebServerManager;
class WindowManager;

// The bar along the top of the console: title, the preset's name with its
// editor, the main window's options, the remote page and the preset screen.
class TopBarView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool isEditingPreset READ isEditingPreset NOTIFY isEditingPresetChanged)

public:
    TopBarView(StreamManager& streamManager, WindowManager& windowManager, QWidget* parent = nullptr);

    void setPresetName(const QString& name);
    QString presetName() const { return presetName_; }
    bool isEditingPreset() const { return isEditingPreset_; }
    void startEditing();
    void savePresetName();
    void cancelEditing();
    QLineEdit* presetNameField() const { return nameField_; }
    SymbolButton* remoteButton() const { return remote_; }
    SymbolButton* presetsButton() const { return presets_; }

    // The remote server whose page the "Remote" button opens while it runs.
    void setWebServer(WebServerManager* server);

signals:
    void changePresetRequested();
    void permissionsRequested();
    void presetNameEdited(const QString& name);
    void isEditingPresetChanged(bool editing);

private:
    void refreshServer();
    void refreshWindowOptions();
    void setEditing(bool editing);

    StreamManager& streamManager_;
    WindowManager& windowManager_;
    QString presetName_;
    bool isEditingPreset_ = false;
    QStackedWidget* nameBlock_ = nullptr;
    QLabel* nameLabel_ = nullptr;
    QLineEdit* nameField_ = nullptr;
    SymbolButton* alwaysOnTop_ = nullptr;
    SymbolButton* visibleInShare_ = nullptr;
    SymbolButton* remote_ = nullptr;
    SymbolButton* presets_ = nullptr;
    QPointer<WebServerManager> webServer_;
};

}  // namespace orvane
