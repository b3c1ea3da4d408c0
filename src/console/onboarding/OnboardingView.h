#pragma once

#include <QStringList>
#include <QWidget>
#include <optional>
#include <vector>

class QGraphicsOpacityEffect;
class QLabel;
class QPropertyAnimation;
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
    // How far the step's content has come in: 0 just changed (clear, a
    // little low), 1 in place.
    Q_PROPERTY(double contentProgress READ contentProgress WRITE setContentProgress)

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

    // A new step's content fades and moves in, eased out over half a second.
    static constexpr int contentEntryMs = 500;
    static constexpr int contentEntryRise = 16;  // pixels it comes up from
    double contentProgress() const { return contentProgress_; }
    void setContentProgress(double progress);
    QPropertyAnimation* contentAnimation() const { return contentAnimation_; }
    QWidget* stepContent() const { return content_; }
    // The content's opacity now (1 when no entry is under way).
    double contentOpacity() const;

    SymbolButton* statusLine() const { return status_; }
    QLabel* settingsHint() const { return settingsHint_; }
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
    void animateContentIn();
    void placeContent();

    PermissionsManager* permissions_ = nullptr;
    int currentStep_ = 0;
    bool isCheckingPermissions_ = false;
    QWidget* progress_ = nullptr;
    QWidget* contentHolder_ = nullptr;  // keeps the room; the content moves within it
    QWidget* content_ = nullptr;
    QGraphicsOpacityEffect* contentFade_ = nullptr;
    QPropertyAnimation* contentAnimation_ = nullptr;
    double contentProgress_ = 1;
    QLabel* icon_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* description_ = nullptr;
    QLabel* instructions_ = nullptr;
    SymbolButton* status_ = nullptr;
    QLabel* settingsHint_ = nullptr;  // what to check where no settings program opens
    SymbolButton* back_ = nullptr;
    SymbolButton* main_ = nullptr;
    SymbolButton* skip_ = nullptr;
};

}  // namespace orvane
