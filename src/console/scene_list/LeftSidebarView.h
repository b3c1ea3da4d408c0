#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "document/StreamingScene.h"

class QVBoxLayout;
class QLabel;

namespace orvane {

class SceneItemView;
class SymbolButton;

// The scene list on the left: numbered rows in document order, add, delete,
// and a collapsed column of icons.
class LeftSidebarView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool isCollapsed READ isCollapsed WRITE setCollapsed NOTIFY isCollapsedChanged)

public:
    static constexpr int expandedWidth = 180;
    static constexpr int collapsedWidth = 50;

    explicit LeftSidebarView(QWidget* parent = nullptr);

    void setScenes(const std::vector<StreamingScene>& scenes, const std::optional<Uuid>& selectedId);

    // Marks the scene on program.

    void setLiveSceneId(const std::optional<Uuid>& id);
    bool isCollapsed() const { return isCollapsed_; }
    void setCollapsed(bool collapsed);

    const std::vector<SceneItemView*>& rows() const { return rows_; }

signals:
    void sceneSelected(const orvane::StreamingScene& scene);
    void sceneDeleteRequested(const orvane::StreamingScene& scene);
    void addSceneRequested();
    void isCollapsedChanged(bool collapsed);

private:
    void rebuild();
    SymbolButton* headButton(std::string symbol, const QString& help);

    std::vector<StreamingScene> scenes_;
    std::optional<Uuid> selectedId_;
    std::optional<Uuid> liveSceneId_;
    bool isCollapsed_ = false;
    QWidget* expanded_ = nullptr;
    QWidget* collapsed_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    QVBoxLayout* iconList_ = nullptr;
    std::vector<SceneItemView*> rows_;
};

}  // namespace orvane
