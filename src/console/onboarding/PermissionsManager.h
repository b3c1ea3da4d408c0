#pragma once

#include <QObject>
#include <functional>

#include "capture/PermissionStatus.h"

class QSettings;

namespace orvane {

// The screen-capture right and whether the welcome assistant has been
// completed. The right is probed once, at construction, by the probe given;
// the completed flag lives in the settings under "hasCompletedOnboarding".
class PermissionsManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(orvane::PermissionStatus screenCapturePermissionStatus READ screenCapturePermissionStatus NOTIFY
                   screenCapturePermissionStatusChanged)
    Q_PROPERTY(bool showingPermissionAlert READ showingPermissionAlert NOTIFY showingPermissionAlertChanged)
    Q_PROPERTY(bool hasCompletedOnboarding READ hasCompletedOnboarding WRITE setHasCompletedOnboarding NOTIFY
                   hasCompletedOnboardingChanged)

public:
    static constexpr const char* completedKey = "hasCompletedOnboarding";
    using Probe = std::function<PermissionStatus()>;

    // The probe that the application installs (see setDefaultProbe); until one
    // is installed every probe answers granted.
    static Probe defaultProbe();
    static void setDefaultProbe(Probe probe);

    PermissionsManager(QSettings& settings, Probe probe = {}, QObject* parent = nullptr);

    PermissionStatus screenCapturePermissionStatus() const { return status_; }
    bool showingPermissionAlert() const { return showingPermissionAlert_; }
    bool hasCompletedOnboarding() const { return hasCompletedOnboarding_; }
    void setHasCompletedOnboarding(bool completed);

    bool needsOnboarding() const;
    // Probes on the next turn of the event loop and stores the answer.
    void checkScreenCapturePermission();
    PermissionStatus getScreenCapturePermissionStatus() const;
    // Tries the listing now: granted gives true, anything else sets the
    // alert flag and gives false.
    bool requestScreenCapturePermission();

    static QString badgeText(PermissionStatus status);
    // Opens the desktop's own settings program, where one is known
    // (SystemSettingsLauncher); false when there is none.
    static bool openPrivacySettings();

signals:
    void screenCapturePermissionStatusChanged();
    void showingPermissionAlertChanged(bool showing);
    void hasCompletedOnboardingChanged(bool completed);

private:
    void setStatus(PermissionStatus status);

    QSettings& settings_;
    Probe probe_;
    PermissionStatus status_ = PermissionStatus::unknown;
    bool showingPermissionAlert_ = false;
    bool hasCompletedOnboarding_ = false;
};

}  // namespace orvane
