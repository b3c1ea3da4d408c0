#pragma once

#include <QPushButton>

#include "document/StreamingScene.h"


namespace orvane {

class ConfirmDialog;

class SymbolButton;

// One row of the scene list: number badge, icon, name, key hint and source
// count; a trash button while hovered when the scene may be deleted.
class SceneItemView : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(bool justSelected READ justSelected NOTIFY justSelectedChanged)

public:
    SceneItemView(const StreamingScene& scene, int sceneNumber, bool isSelected, bool canDelete,
                  QWidget* parent = nullptr);

    const StreamingScene& scene() const { return scene_; }
    int sceneNumber() const { return sceneNumber_; }
    bool isSelected() const { return isSelected_; }
    bool canDelete() const { return canDelete_; }
    bool justSelected() const { return justSelected_; }
    // Whether this scene is the one on program: a small red "LIVE" tag.
    bool isLive() const { return isLive_; }
    void setLive(bool live);
    // Whether the trash button is offered now.
    bool isDeleteButtonVisible() const;

    static QString sourceCountText(std::size_t count);

    void confirmDelete();
    ConfirmDialog* deleteConfirmation() const { return confirmation_; }

    QSize sizeHint() const override { return {170, 48}; }

signals:
    void selectRequested(const orvane::StreamingScene& scene);
    void deleteRequested(const orvane::StreamingScene& scene);
    void justSelectedChanged(bool justSelected);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void press();
    void setJustSelected(bool value);
    void setHovering(bool hovering);

    StreamingScene scene_;
    int sceneNumber_;
    bool isSelected_;
    bool canDelete_;
    bool isHovering_ = false;
    bool justSelected_ = false;
    bool isLive_ = false;
    SymbolButton* trash_ = nullptr;
    ConfirmDialog* confirmation_ = nullptr;
};

}  // namespace orvane
