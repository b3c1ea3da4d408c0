#include "console/main_window/ContentView.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGraphicsBlurEffect>
#include <QGraphicsOpacityEffect>
#include <QPropertyAnimation>
#include <QStackedLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "console/bars/WindowManager.h"
#include "console/main_window/MainStreamingView.h"
#include "console/onboarding/OnboardingView.h"
#include "console/onboarding/PermissionsManagementView.h"
#include "console/onboarding/PermissionsManager.h"
#include "console/presets/PresetSelectionView.h"
#include "console/program_window/ConsoleWindowLayer.h"
#include "engine/KeyboardNavigationManager.h"
#include "engine/StreamManager.h"

namespace orvane {

ContentView::ContentView(StreamManager& streamManager, WindowManager& windowManager, const FrameSource* frames,
                         QWidget* parent)
    : QWidget(parent), streamManager_(streamManager), windowManager_(windowManager) {
    setObjectName(QStringLiteral("ContentView"));
    keyboardNavManager_ = new KeyboardNavigationManager(streamManager_, this);
    // The session's pop-out window and window raising are this console's.
    streamManager_.setWindowLayer(std::make_shared<ConsoleWindowLayer>(streamManager_, frames));
    permissionsManager_ = new PermissionsManager(streamManager_.settings(), {}, this);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    screens_ = new QWidget;
    outer->addWidget(screens_);
    stack_ = new QStackedLayout(screens_);
    presetSelection_ = new PresetSelectionView(streamManager_.presetStorage(), streamManager_.settings());
    console_ = new MainStreamingView(streamManager_, *keyboardNavManager_, windowManager_, frames);
    stack_->addWidget(presetSelection_);
    stack_->addWidget(console_);
    stack_->setCurrentWidget(presetSelection_);

    connect(presetSelection_, &PresetSelectionView::presetSelected, this, [this](const Preset& preset) {
        setSelectedPreset(preset);
        setShowPresetSelection(false);
    });
    connect(presetSelection_, &PresetSelectionView::permissionsRequested, this,
            &ContentView::showPermissionsManagement);
    connect(console_, &MainStreamingView::changePresetRequested, this, [this] { setShowPresetSelection(true); });
    connect(console_, &MainStreamingView::permissionsRequested, this, &ContentView::showPermissionsManagement);
}

ContentView::~ContentView() = default;

void ContentView::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    // The process ends with the console window: an open pop-out,
    // teleprompter or editor window does not keep it running on its own.
    if (event->isAccepted()) QCoreApplication::quit();
}

void ContentView::setShowPresetSelection(bool show) {
    if (showPresetSelection_ == show) return;
    showPresetSelection_ = show;
    if (show) {
        presetSelection_->reload();
        stack_->setCurrentWidget(presetSelection_);
    } else {
        stack_->setCurrentWidget(console_);
        console_->appear();
    }
    emit showPresetSelectionChanged(show);
}

void ContentView::setSelectedPreset(const Preset& preset) {
    selectedPreset_ = preset;
    streamManager_.setCurrentPreset(preset);
    if (!preset.scenes.empty()) streamManager_.switchToScene(preset.scenes.front());
}

void ContentView::setShowOnboarding(bool show) {
    if (showOnboarding_ == show) return;
    showOnboarding_ = show;
    if (show) {
        onboarding_ = new OnboardingView(streamManager_.settings(), this);
        connect(onboarding_, &OnboardingView::finished, this, [this] { setShowOnboarding(false); });
        onboarding_->setGeometry(rect());
        // The assistant fades in over 0.3 seconds, ease in and out.
        auto* fade = new QGraphicsOpacityEffect(onboarding_);
        fade->setOpacity(0);
        onboarding_->setGraphicsEffect(fade);
        auto* appear = new QPropertyAnimation(fade, "opacity", onboarding_);
        appear->setDuration(300);
        appear->setEasingCurve(QEasingCurve::InOutQuad);
        appear->setEndValue(1.0);
        connect(appear, &QPropertyAnimation::finished, onboarding_, [this] {
            if (onboarding_) onboarding_->setGraphicsEffect(nullptr);
        });
        onboarding_->show();
        onboarding_->raise();
        appear->start(QAbstractAnimation::DeleteWhenStopped);
        screens_->setEnabled(false);
        auto* blur = new QGraphicsBlurEffect(screens_);
        blur->setBlurRadius(10);
        screens_->setGraphicsEffect(blur);
    } else {
        if (onboarding_) {
            onboarding_->hide();
            onboarding_->deleteLater();
            onboarding_ = nullptr;
        }
        screens_->setGraphicsEffect(nullptr);
        screens_->setEnabled(true);
        permissionsManager_->setHasCompletedOnboarding(true);
    }
    emit showOnboardingChanged(show);
}

void ContentView::showPermissionsManagement() {
    auto* panel = new PermissionsManagementView(streamManager_.settings(), window());
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->open();
}

void ContentView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (appeared_) return;
    appeared_ = true;
    windowManager_.setupMainWindow(this);
    QTimer::singleShot(onboardingDelayMs, this, [this] {
        if (permissionsManager_->needsOnboarding()) setShowOnboarding(true);
    });
}

void ContentView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (onboarding_) onboarding_->setGeometry(rect());
}

}  // namespace orvane
