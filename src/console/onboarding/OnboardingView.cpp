#include "console/onboarding/OnboardingView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/onboarding/PermissionsManager.h"

namespace orvane {

namespace {

// One rounded segment per step; the ones reached are highlighted.
class StepProgress : public QWidget {
public:
    explicit StepProgress(const int& current) : current_(current) { setFixedSize(240, 6); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const int count = int(OnboardingView::steps().size());
        const double gap = 8;
        const double w = (width() - gap * (count - 1)) / count;
        p.setPen(Qt::NoPen);
        for (int i = 0; i < count; ++i) {
            p.setBrush(i <= current_ ? Theme::purple() : Theme::white(0.15));
            p.drawRoundedRect(QRectF(i * (w + gap), 0, w, height()), 3, 3);
        }
    }

private:
    const int& current_;
};

SymbolButton::Look actionLook(bool primary) {
    SymbolButton::Look look;
    look.background = primary ? Theme::purple() : Theme::white(0.1);
    look.fontSize = 14;
    look.symbolSize = 14;
    look.radius = 10;
    look.paddingX = 18;
    look.paddingY = 10;
    look.bold = primary;
    return look;
}

}  // namespace

const std::vector<OnboardingView::Step>& OnboardingView::steps() {
    static const std::vector<Step> all{
        {"hand.wave.fill", QStringLiteral("Welcome to Orvane Pro"),
         QStringLiteral("To get started, we need to configure some system permissions for the application to work "
                        "correctly."),
         QStringLiteral("Get Started"), false, {}},
        {"rectangle.on.rectangle", QStringLiteral("Screen Recording Permission"),
         QStringLiteral("Orvane Pro needs access to capture your screen and windows. This is essential for streaming "
                        "and recording features."),
         QStringLiteral("Grant Permission"), true,
         {QStringLiteral("1. Click 'Grant Permission'"), QStringLiteral("2. System Settings will open"),
          QStringLiteral("3. Enable the switch next to 'orvaneui'"), QStringLiteral("4. Return to this window")}},
        {"checkmark.circle.fill", QStringLiteral("All Set!"),
         QStringLiteral("You have configured all necessary permissions. You can now start using Orvane Pro for your "
                        "streams."),
         QStringLiteral("Start Using"), false, {}},
    };
    return all;
}

OnboardingView::OnboardingView(QSettings& settings, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("OnboardingView"));
    setAccessibleName(QStringLiteral("Welcome Assistant"));
    permissions_ = new PermissionsManager(settings, {}, this);
    connect(permissions_, &PermissionsManager::screenCapturePermissionStatusChanged, this, &OnboardingView::refresh);

    auto* column = new QVBoxLayout(this);
    column->setAlignment(Qt::AlignCenter);
    column->setSpacing(18);
    progress_ = new StepProgress(currentStep_);
    column->addWidget(progress_, 0, Qt::AlignHCenter);
    column->addSpacing(20);
    icon_ = new QLabel;
    column->addWidget(icon_, 0, Qt::AlignHCenter);
    title_ = new QLabel;
    title_->setFont(Theme::font(26, Theme::Weight::bold));
    column->addWidget(title_, 0, Qt::AlignHCenter);
    description_ = new QLabel;
    description_->setFont(Theme::font(14));
    description_->setWordWrap(true);
    description_->setAlignment(Qt::AlignCenter);
    description_->setFixedWidth(520);
    description_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.75);"));
    column->addWidget(description_, 0, Qt::AlignHCenter);
    instructions_ = new QLabel;
    instructions_->setFont(Theme::font(13));
    instructions_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.8); background: rgba(255,255,255,0.06);"
                                                " border-radius: 8px; padding: 12px;"));
    column->addWidget(instructions_, 0, Qt::AlignHCenter);
    status_ = new SymbolButton(QString(), "exclamationmark.circle.fill");
    connect(status_, &QPushButton::clicked, this, [this] {
        if (permissions_->screenCapturePermissionStatus() == PermissionStatus::denied)
            PermissionsManager::openPrivacySettings();
    });
    column->addWidget(status_, 0, Qt::AlignHCenter);
    column->addSpacing(10);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    back_ = new SymbolButton(QStringLiteral("Atrás"), "chevron.left");
    back_->setLook(actionLook(false));
    connect(back_, &QPushButton::clicked, this, &OnboardingView::previousStep);
    buttons->addWidget(back_);
    main_ = new SymbolButton(QString(), "chevron.right");
    main_->setLook(actionLook(true));
    main_->setLayoutDirection(Qt::RightToLeft);
    connect(main_, &QPushButton::clicked, this, &OnboardingView::handleMainAction);
    buttons->addWidget(main_);
    skip_ = new SymbolButton(QStringLiteral("Saltar"), "arrow.right");
    skip_->setLook(actionLook(false));
    skip_->setLayoutDirection(Qt::RightToLeft);
    connect(skip_, &QPushButton::clicked, this, &OnboardingView::nextStep);
    buttons->addWidget(skip_);
    column->addLayout(buttons);
    refresh();
}

bool OnboardingView::canProceed() const {
    const Step& step = steps()[std::size_t(currentStep_)];
    return !step.asksScreenRecording || permissions_->screenCapturePermissionStatus() == PermissionStatus::granted;
}

QString OnboardingView::getActionButtonTitle() const {
    const Step& step = steps()[std::size_t(currentStep_)];
    if (currentStep_ == int(steps().size()) - 1 || !step.asksScreenRecording) return step.actionTitle;
    return canProceed() ? QStringLiteral("Continuar") : step.actionTitle;
}

void OnboardingView::handleMainAction() {
    if (currentStep_ == int(steps().size()) - 1) {
        emit finished();
        return;
    }
    if (steps()[std::size_t(currentStep_)].asksScreenRecording && !canProceed()) {
        isCheckingPermissions_ = true;
        refresh();
        QMetaObject::invokeMethod(this, &OnboardingView::requestPermission, Qt::QueuedConnection);
        return;
    }
    nextStep();
}

void OnboardingView::requestPermission() {
    const bool granted = permissions_->requestScreenCapturePermission();
    isCheckingPermissions_ = false;
    refresh();
    if (granted)
        QTimer::singleShot(500, this, &OnboardingView::nextStep);
    else
        PermissionsManager::openPrivacySettings();
}

void OnboardingView::nextStep() {
    currentStep_ = std::min(currentStep_ + 1, int(steps().size()) - 1);
    refresh();
    emit currentStepChanged(currentStep_);
}

void OnboardingView::previousStep() {
    currentStep_ = std::max(currentStep_ - 1, 0);
    refresh();
    emit currentStepChanged(currentStep_);
}

void OnboardingView::refresh() {
    const Step& step = steps()[std::size_t(currentStep_)];
    const int last = int(steps().size()) - 1;
    progress_->update();
    icon_->setPixmap(Symbols::pixmap(step.icon, 64, Theme::purple()));
    title_->setText(step.title);
    description_->setText(step.description);
    instructions_->setVisible(!step.instructionSteps.isEmpty());
    instructions_->setText(step.instructionSteps.join(QLatin1Char('\n')));

    status_->setVisible(step.asksScreenRecording);
    SymbolButton::Look look;
    look.background = Qt::transparent;
    look.fontSize = 13;
    look.symbolSize = 14;
    switch (permissions_->screenCapturePermissionStatus()) {
    case PermissionStatus::granted:
        status_->setSymbol("checkmark.circle.fill");
        look.foreground = Theme::green();
        status_->setLabel(QStringLiteral("Permission Granted ✓"));
        break;
    case PermissionStatus::denied:
        status_->setSymbol("xmark.circle.fill");
        look.foreground = Theme::red();
        status_->setLabel(QStringLiteral("Permission Denied - Click to open Settings"));
        break;
    default:
        status_->setSymbol("exclamationmark.circle.fill");
        look.foreground = Theme::orange();
        status_->setLabel(QStringLiteral("Waiting for Permission..."));
        break;
    }
    status_->setLook(look);

    back_->setVisible(currentStep_ >= 1 && currentStep_ < last);
    skip_->setVisible(step.asksScreenRecording && !canProceed() && currentStep_ >= 1 && currentStep_ < last);
    main_->setEnabled(!isCheckingPermissions_);
    main_->setLabel(isCheckingPermissions_ ? QStringLiteral("…") : getActionButtonTitle());
}

void OnboardingView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(16, 18, 22, 235));
}

}  // namespace orvane
