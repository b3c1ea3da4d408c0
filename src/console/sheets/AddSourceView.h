#pragma once

#include <QDialog>
#include <QPointer>
#include <map>
#include <optional>

#include "capture/CaptureWindow.h"
#include "document/StreamingScene.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

class CaptureBackend;
class WindowSelectorView;

// The source manager's add dialog: a name, one of the four types and, for a
// window, the window. "Add Source" reports a new source with the default
// settings (and the window's identity) and closes.
class AddSourceView : public QDialog {
    Q_OBJECT

public:
    // `scene` is the scene the source will join, for the count in the log.
    AddSourceView(const StreamingScene& scene, CaptureBackend* capture, QWidget* parent = nullptr);

    static QString typeLabel(SourceType type);

    QString sourceName() const;
    SourceType sourceType() const { return sourceType_; }
    const std::optional<CaptureWindow>& selectedWindow() const { return selectedWindow_; }
    // Only emptiness counts: a name of blanks will do.
    bool canAddSource() const;

    void setSourceType(SourceType type);
    void setSelectedWindow(const CaptureWindow& window);
    WindowSelectorView* showWindowSelector();
    void addSource();

    QLineEdit* nameField() const { return name_; }
    QPushButton* typeRow(SourceType type) const { return typeRows_.at(type); }
    QPushButton* addButton() const { return add_; }
    QPushButton* chooseWindowButton() const { return chooseWindow_; }
    QPushButton* changeWindowButton() const { return changeWindow_; }
    QWidget* windowSection() const { return windowSection_; }

signals:
    void sourceAdded(const orvane::Source& source);

private:
    void refresh();

    std::size_t sourceCount_ = 0;
    CaptureBackend* capture_ = nullptr;
    SourceType sourceType_ = SourceType::camera;
    std::optional<CaptureWindow> selectedWindow_;
    QLineEdit* name_ = nullptr;
    std::map<SourceType, QPushButton*> typeRows_;
    QWidget* windowSection_ = nullptr;
    QPushButton* chooseWindow_ = nullptr;
    QWidget* chosenWindow_ = nullptr;
    QLabel* windowTitle_ = nullptr;
    QLabel* windowOwner_ = nullptr;
    QPushButton* changeWindow_ = nullptr;
    QPushButton* add_ = nullptr;
};

}  // namespace orvane
