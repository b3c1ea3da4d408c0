#include "console/onboarding/PermissionsManager.h"

#include <QSettings>

#include "console/onboarding/SystemSettingsLauncher.h"

namespace orvane {

namespace {
PermissionsManager::Probe& installedProbe() {
    static PermissionsManager::Probe probe;
    return probe;
}
}  // namespace

PermissionsManager::Probe PermissionsManager::defaultProbe() {
    if (installedProbe()) return installedProbe();
    return [] { return PermissionStatus::granted; };
}

void PermissionsManager::setDefaultProbe(Probe probe) { installedProbe() = std::move(probe); }

PermissionsManager::PermissionsManager(QSettings& settings, Probe probe, QObject* parent)
    : QObject(parent), settings_(settings), probe_(probe ? std::move(probe) : defaultProbe()) {
    hasCompletedOnboarding_ = settings_.value(completedKey, false).toBool();
    checkScreenCapturePermission();
}

void PermissionsManager::setHasCompletedOnboarding(bool completed) {
    settings_.setValue(completedKey, completed);
    settings_.sync();
    if (hasCompletedOnboarding_ == completed) return;
    hasCompletedOnboarding_ = completed;
    emit hasCompletedOnboardingChanged(completed);
}

bool PermissionsManager::needsOnboarding() const {
    return !hasCompletedOnboarding_ || status_ != PermissionStatus::granted;
}

void PermissionsManager::checkScreenCapturePermission() {
    // The probe answers quickly on X11; it still runs after construction so
    // that whoever made us can connect first.
    QMetaObject::invokeMethod(this, [this] { setStatus(getScreenCapturePermissionStatus()); }, Qt::QueuedConnection);
}

PermissionStatus PermissionsManager::getScreenCapturePermissionStatus() const { return probe_(); }

bool PermissionsManager::requestScreenCapturePermission() {
    const PermissionStatus status = getScreenCapturePermissionStatus();
    if (status == PermissionStatus::granted) {
        setStatus(status);
        return true;
    }
    setStatus(PermissionStatus::denied);
    if (!showingPermissionAlert_) {
        showingPermissionAlert_ = true;
        emit showingPermissionAlertChanged(true);
    }
    return false;
}

QString PermissionsManager::badgeText(PermissionStatus status) {
    switch (status) {
    case PermissionStatus::unknown: return QStringLiteral("Unknown");
    case PermissionStatus::denied: return QStringLiteral("Denied");
    case PermissionStatus::granted: return QStringLiteral("Granted");
    case PermissionStatus::restricted: return QStringLiteral("Restricted");
    }
    return QStringLiteral("Unknown");
}

bool PermissionsManager::openPrivacySettings() {
    // Desktops share no privacy pane or address for one; the right lives in
    // the desktop's own settings program, where it has one.
    return SystemSettingsLauncher::open();
}

void PermissionsManager::setStatus(PermissionStatus status) {
    if (status_ == status) return;
    status_ = status;
    emit screenCapturePermissionStatusChanged();
}

}  // namespace orvane
