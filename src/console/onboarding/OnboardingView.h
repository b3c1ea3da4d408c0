#pragma once

#include <QStringList>
#include <QWidget>
#include <optional>
#include <vector>

class QLabel;
class QSettings;
class QVBoxLayout;

namespace orvane {

class PermissionsManager;
class SymbolButton;

// The three-step welcome assistant over the application at first start:
// welcome, the screen capture right, all set.
class OnboardingView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int currentStep READ currentStep NOTIFY currentStepChanged)

public:
    struct Step {
        const char* icon;
        QString title;
        QString description;
        QString actionTitle;
        bool asksScreenRecording;
        QStringList instructionSteps;
    };
    static const std::vector<Step>& steps();

    OnboardingView(QSettings& settings, QWidget* parent = nullptr);

    int currentStep() const { return currentStep_; }
    PermissionsManager& permissionsManager() const { return *permissions_; }
    bool canProceed() const;
    QString getActionButtonTitle() const;
    void handleMainAction();
    void nextStep();
    void previousStep();

    SymbolButton* mainButton() const { return main_; }
    SymbolButton* backButton() const { return back_; }
    SymbolButton* skipButton() const { return skip_; }

signals:
    // isPresented fell to false.
    void finished();
    void currentStepChanged(int step);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void requestPermission();

    PermissionsManager* permissions_ = nullptr;
    int currentStep_ = 0;
    bool isCheckingPermissions_ = false;
    QWidget* progress_ = nullptr;
    QLabel* icon_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* description_ = nullptr;
    QLabel* instructions_ = nullptr;
    SymbolButton* status_ = nullptr;
    SymbolButton* back_ = nullptr;
    SymbolButton* main_ = nullptr;
    SymbolButton* skip_ = nullptr;
};

}  // namespace orvane
