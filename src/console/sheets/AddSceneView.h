#pragma once

#include <QDialog>
#include <string>

class QLineEdit;
class QPushButton;

namespace orvane {

class StreamManager;
struct StreamingScene;

// The sheet for a new scene: a name, an optional icon, "Add Scene". The
// scene goes to the end of the preset and into preview.
class AddSceneView : public QDialog {
    Q_OBJECT

public:
    AddSceneView(StreamManager& streamManager, QWidget* parent = nullptr);

    QLineEdit* nameField() const { return nameField_; }
    QPushButton* addButton() const { return addButton_; }
    const std::string& selectedIcon() const { return selectedIcon_; }
    void selectIcon(const std::string& icon);

    void addScene();

signals:
    void sceneAdded(const orvane::StreamingScene& scene);

private:
    StreamManager& streamManager_;
    QLineEdit* nameField_ = nullptr;
    QPushButton* addButton_ = nullptr;
    std::string selectedIcon_ = "video.fill";
    std::vector<QPushButton*> iconButtons_;
};

}  // namespace orvane
