#include "console/onboarding/OnboardingView.h"

#include <QEasingCurve>
#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPropertyAnimation>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "console/onboarding/PermissionsManager.h"
#include "console/onboarding/SystemSettingsLauncher.h"

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

// Keeps the room the step's content needs while the content itself is
// placed a few pixels lower during its entry.
class OnboardingContentHolder : public QWidget {
public:
    QWidget* inner = nullptr;
    int rise = 0;

    QSize sizeHint() const override { return inner ? inner->sizeHint() : QSize(); }
    QSize minimumSizeHint() const override { return inner ? inner->minimumSizeHint() : QSize(); }
    void place() {
        if (inner) inner->setGeometry(0, rise, width(), height());
    }

protected:
    void resizeEvent(QResizeEvent*) override { place(); }
};

// Ease-out: quick at first, settling gently; the cubic curve with the
// control points (0, 0) and (0.58, 1).
QEasingCurve onboardingEaseOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(QPointF(0, 0), QPointF(0.58, 1), QPointF(1, 1));
    return curve;
}

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
    auto* holder = new OnboardingContentHolder;
    contentHolder_ = holder;
    content_ = new QWidget(holder);
    holder->inner = content_;
    auto* stepColumn = new QVBoxLayout(content_);
    stepColumn->setContentsMargins(0, 0, 0, 0);
    stepColumn->setSpacing(18);
    column->addWidget(holder);
    contentFade_ = new QGraphicsOpacityEffect(content_);
    contentFade_->setEnabled(false);
    content_->setGraphicsEffect(contentFade_);
    contentAnimation_ = new QPropertyAnimation(this, "contentProgress", this);
    contentAnimation_->setStartValue(0.0);
    contentAnimation_->setEndValue(1.0);
    contentAnimation_->setDuration(contentEntryMs);
    contentAnimation_->setEasingCurve(onboardingEaseOut());
    icon_ = new QLabel;
    stepColumn->addWidget(icon_, 0, Qt::AlignHCenter);
    title_ = new QLabel;
    title_->setFont(Theme::font(26, Theme::Weight::bold));
    stepColumn->addWidget(title_, 0, Qt::AlignHCenter);
    description_ = new QLabel;
    description_->setFont(Theme::font(14));
    description_->setWordWrap(true);
    description_->setAlignment(Qt::AlignCenter);
    description_->setFixedWidth(520);
    description_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.75);"));
    stepColumn->addWidget(description_, 0, Qt::AlignHCenter);
    instructions_ = new QLabel;
    instructions_->setFont(Theme::font(13));
    instructions_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.8); background: rgba(255,255,255,0.06);"
                                                " border-radius: 8px; padding: 12px;"));
    stepColumn->addWidget(instructions_, 0, Qt::AlignHCenter);
    status_ = new SymbolButton(QString(), "exclamationmark.circle.fill");
    connect(status_, &QPushButton::clicked, this, [this] {
        if (permissions_->screenCapturePermissionStatus() == PermissionStatus::denied)
            PermissionsManager::openPrivacySettings();
    });
    stepColumn->addWidget(status_, 0, Qt::AlignHCenter);
    settingsHint_ = new QLabel(QString::fromUtf8(SystemSettingsLauncher::whatToCheck));
    settingsHint_->setFont(Theme::font(12));
    settingsHint_->setWordWrap(true);
    settingsHint_->setAlignment(Qt::AlignCenter);
    settingsHint_->setFixedWidth(520);
    settingsHint_->setStyleSheet(QStringLiteral("color: rgba(255,255,255,0.6);"));
    stepColumn->addWidget(settingsHint_, 0, Qt::AlignHCenter);
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
    animateContentIn();
}

void OnboardingView::animateContentIn() {
    contentAnimation_->stop();
    setContentProgress(0);
    contentAnimation_->start();
}

void OnboardingView::setContentProgress(double progress) {
    contentProgress_ = std::clamp(progress, 0.0, 1.0);
    // Fully in, the content is drawn directly again.
    contentFade_->setEnabled(contentProgress_ < 1);
    contentFade_->setOpacity(contentProgress_);
    placeContent();
}

double OnboardingView::contentOpacity() const { return contentFade_->isEnabled() ? contentFade_->opacity() : 1.0; }

void OnboardingView::placeContent() {
    auto* holder = static_cast<OnboardingContentHolder*>(contentHolder_);
    holder->rise = int(std::lround(contentEntryRise * (1 - contentProgress_)));
    holder->place();
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
    animateContentIn();
    emit currentStepChanged(currentStep_);
}

void OnboardingView::previousStep() {
    currentStep_ = std::max(currentStep_ - 1, 0);
    refresh();
    animateContentIn();
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
    // Where no settings program can be opened, the refused right is
    // explained instead.
    settingsHint_->setVisible(step.asksScreenRecording &&
                              permissions_->screenCapturePermissionStatus() == PermissionStatus::denied &&
                              !SystemSettingsLauncher::available());

    back_->setVisible(currentStep_ >= 1 && currentStep_ < last);
    skip_->setVisible(step.asksScreenRecording && !canProceed() && currentStep_ >= 1 && currentStep_ < last);
    main_->setEnabled(!isCheckingPermissions_);
    main_->setLabel(isCheckingPermissions_ ? QStringLiteral("…") : getActionButtonTitle());
    contentHolder_->updateGeometry();
}

void OnboardingView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(16, 18, 22, 235));
}

}  // namespace orvane
