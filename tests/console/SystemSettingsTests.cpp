#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SymbolButton.h"
#include "console/onboarding/OnboardingView.h"
#include "console/onboarding/PermissionsManagementView.h"
#include "console/onboarding/PermissionsManager.h"
#include "console/onboarding/SystemSettingsLauncher.h"
#include "console/sheets/CaptureListPanel.h"

namespace orvane {
namespace system_settings_tests {

// A desktop for the length of a test: XDG_CURRENT_DESKTOP, and a PATH that
// holds only a private folder into which fake settings programs are put.
// Each fake program writes its arguments into a file of the folder.
class FakeDesktop {
public:
    explicit FakeDesktop(const QByteArray& desktop)
        : oldPath_(qgetenv("PATH")), oldDesktop_(qgetenv("XDG_CURRENT_DESKTOP")),
          hadDesktop_(qEnvironmentVariableIsSet("XDG_CURRENT_DESKTOP")) {
        test::ensureApplication();
        qputenv("PATH", dir_.path().toLocal8Bit());
        qputenv("XDG_CURRENT_DESKTOP", desktop);
    }
    ~FakeDesktop() {
        qputenv("PATH", oldPath_);
        if (hadDesktop_)
            qputenv("XDG_CURRENT_DESKTOP", oldDesktop_);
        else
            qunsetenv("XDG_CURRENT_DESKTOP");
    }
    void install(const QString& program) {
        QFile file(dir_.filePath(program));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("#!/bin/sh\necho \"%1 $*\" >> '%2'\n").arg(program, ran()).toLocal8Bit());
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString ran() const { return dir_.filePath(QStringLiteral("ran.log")); }
    QString ranText() const {
        QFile file(ran());
        return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()) : QString();
    }

private:
    QTemporaryDir dir_;
    QByteArray oldPath_;
    QByteArray oldDesktop_;
    bool hadDesktop_;
};

TEST(SystemSettings, GnomesControlCentreOpensOnItsPrivacyPage) {
    FakeDesktop desktop("ubuntu:GNOME");
    desktop.install(QStringLiteral("gnome-control-center"));
    const auto command = SystemSettingsLauncher::find();
    ASSERT_TRUE(command.has_value());
    EXPECT_TRUE(command->program.endsWith(QStringLiteral("/gnome-control-center")));
    EXPECT_EQ(command->arguments, QStringList{QStringLiteral("privacy")});

    test::Session s;
    PermissionsManagementView panel(s.settings());
    panel.show();
    ASSERT_TRUE(panel.systemSettingsButton()->isVisible());
    EXPECT_FALSE(panel.systemSettingsHint()->isVisible());
    QTest::mouseClick(panel.systemSettingsButton(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.ranText().contains("gnome-control-center privacy"); }, 10000))
        << desktop.ranText().toStdString();

    CaptureListPanel list;
    list.show();
    list.showError(QStringLiteral("Screen capture permission required"), true, QStringLiteral("Grant permission"));
    ASSERT_TRUE(list.settingsButton()->isVisible());
    EXPECT_EQ(list.hintText()->text(), QStringLiteral("Grant permission"));
    QTest::mouseClick(list.settingsButton(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.ranText().count("gnome-control-center") == 2; }, 10000))
        << desktop.ranText().toStdString();
}

TEST(SystemSettings, KdesSystemSettingsIsFoundOnKde) {
    FakeDesktop desktop("KDE");
    desktop.install(QStringLiteral("systemsettings"));
    const auto command = SystemSettingsLauncher::find();
    ASSERT_TRUE(command.has_value());
    EXPECT_TRUE(command->program.endsWith(QStringLiteral("/systemsettings")));
    EXPECT_TRUE(PermissionsManager::openPrivacySettings());
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.ranText().contains("systemsettings"); }, 10000));
}

TEST(SystemSettings, WithoutAKnownProgramTheButtonHidesAndTheHintSaysWhatToCheck) {
    // The desktop is known but its program is not installed; a program of
    // another desktop does not count.
    FakeDesktop desktop("GNOME");
    desktop.install(QStringLiteral("systemsettings"));
    EXPECT_FALSE(SystemSettingsLauncher::find().has_value());
    EXPECT_FALSE(SystemSettingsLauncher::find(QStringLiteral("XFCE")).has_value());
    const QString sentence = QString::fromUtf8(SystemSettingsLauncher::whatToCheck);

    test::Session s;
    PermissionsManagementView panel(s.settings());
    panel.show();
    EXPECT_FALSE(panel.systemSettingsButton()->isVisible());
    ASSERT_TRUE(panel.systemSettingsHint()->isVisible());
    EXPECT_EQ(panel.systemSettingsHint()->text(), sentence);

    CaptureListPanel list;
    list.show();
    list.showError(QStringLiteral("Screen capture permission required"), true, QStringLiteral("Grant permission"));
    EXPECT_FALSE(list.settingsButton()->isVisible());
    EXPECT_TRUE(list.hintText()->isVisible());
    EXPECT_EQ(list.hintText()->text(), sentence);

    // A refused right in the assistant explains itself the same way.
    PermissionsManager::setDefaultProbe([] { return PermissionStatus::denied; });
    OnboardingView onboarding(s.settings());
    onboarding.show();
    onboarding.nextStep();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return onboarding.permissionsManager().screenCapturePermissionStatus() == PermissionStatus::denied;
    }, 3000));
    EXPECT_TRUE(onboarding.settingsHint()->isVisible());
    EXPECT_EQ(onboarding.settingsHint()->text(), sentence);
    PermissionsManager::setDefaultProbe({});

    EXPECT_FALSE(PermissionsManager::openPrivacySettings());
    QTest::qWait(200);
    EXPECT_TRUE(desktop.ranText().isEmpty()) << desktop.ranText().toStdString();
}

}  // namespace system_settings_tests
}  // namespace orvane
