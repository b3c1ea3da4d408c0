#pragma once

#include <QDialog>

class QSettings;
class QLabel;
class QPushButton;

namespace orvane {

class OnboardingView;
class PermissionsManager;
class SymbolButton;

// The later panel for the screen capture right and the welcome assistant.
class PermissionsManagementView : public QDialog {
    Q_OBJECT

public:
    PermissionsManagementView(QSettings& settings, QWidget* parent = nullptr);

    PermissionsManager& permissionsManager() const { return *permissions_; }
    void showOnboarding();
    // "Open System Settings", shown only where the desktop's settings
    // program is known, and in its place the sentence saying what to check.
    QPushButton* systemSettingsButton() const { return systemSettings_; }
    QLabel* systemSettingsHint() const { return systemSettingsHint_; }

private:
    void refresh();
    void handlePermissionRequest();

    QSettings& settings_;
    PermissionsManager* permissions_ = nullptr;
    QWidget* panel_ = nullptr;
    SymbolButton* badge_ = nullptr;
    SymbolButton* configure_ = nullptr;
    QPushButton* systemSettings_ = nullptr;
    QLabel* systemSettingsHint_ = nullptr;
    OnboardingView* onboarding_ = nullptr;
};

}  // namespace orvane
