#include "console/onboarding/SystemSettingsLauncher.h"

#include <QProcess>
#include <QStandardPaths>

#include "document/Log.h"

namespace orvane {

namespace {

struct KnownSettingsProgram {
    const char* desktop;  // one entry of XDG_CURRENT_DESKTOP
    const char* program;
    QStringList arguments;
};

// In order of preference; the first installed one for the desktop wins.
const std::vector<KnownSettingsProgram>& knownSettingsPrograms() {
    static const std::vector<KnownSettingsProgram> known{
        {"GNOME", "gnome-control-center", {QStringLiteral("privacy")}},
        {"KDE", "systemsettings", {}},
        {"KDE", "systemsettings5", {}},
    };
    return known;
}

}  // namespace

std::optional<SystemSettingsLauncher::Command> SystemSettingsLauncher::find() {
    return find(qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
}

std::optional<SystemSettingsLauncher::Command> SystemSettingsLauncher::find(const QString& currentDesktop) {
    const QStringList desktops = currentDesktop.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    for (const QString& desktop : desktops) {
        for (const KnownSettingsProgram& known : knownSettingsPrograms()) {
            if (desktop.compare(QLatin1String(known.desktop), Qt::CaseInsensitive) != 0) continue;
            const QString path = QStandardPaths::findExecutable(QString::fromLatin1(known.program));
            if (!path.isEmpty()) return Command{path, known.arguments};
        }
    }
    return std::nullopt;
}

bool SystemSettingsLauncher::open() {
    const auto command = find();
    if (!command) {
        logLine("🔒 No settings program known for this desktop");
        return false;
    }
    if (!QProcess::startDetached(command->program, command->arguments)) {
        logLine("🔒 Could not start " + command->program.toStdString());
        return false;
    }
    logLine("🔒 Opened " + command->program.toStdString());
    return true;
}

}  // namespace orvane
