#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>
#include <QWidget>

#include "document/PresetStorage.h"

// Until the console lands: a plain window listing the loaded presets and the
// scene names of the first one.
int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName("OrvaneUI");
    QApplication::setApplicationName("OrvaneUI");

    auto presets = orvane::PresetStorage::shared().loadPresets();

    QWidget window;
    window.setWindowTitle("OrvaneUI");
    auto* layout = new QVBoxLayout(&window);
    auto* title = new QLabel(presets.empty() ? QStringLiteral("No presets yet")
                                             : QString::fromStdString(presets.front().name));
    title->setAccessibleName(title->text());
    layout->addWidget(title);
    auto* scenes = new QListWidget;
    scenes->setAccessibleName(QStringLiteral("Scenes"));
    if (!presets.empty())
        for (const auto& scene : presets.front().scenes) scenes->addItem(QString::fromStdString(scene.name));
    layout->addWidget(scenes);
    window.resize(480, 360);
    window.show();
    return app.exec();
}
