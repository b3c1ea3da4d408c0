#pragma once

#include <QDialog>
#include <functional>
#include <optional>

#include "document/SlidesResource.h"

class QLabel;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace orvane {

class SlideEditorContentView;
class SlideImageLoader;

// The sheet that edits one deck: the slide list on the left, the selected
// slide's editor on the right. It works on a copy; whoever opened it takes
// deck() when it closes and stores it.
class SlidesEditorView : public QDialog {
    Q_OBJECT
public:
    SlidesEditorView(const SlidesResource& deck, SlideImageLoader& loader, QWidget* parent = nullptr);

    const SlidesResource& deck() const { return deck_; }
    const std::optional<Uuid>& selectedSlideId() const { return selected_; }
    int listRefreshTrigger() const { return listRefreshTrigger_; }
    SlideEditorContentView* content() const { return content_; }

    // Asks before a slide is deleted; tests answer without a dialog.
    void setDeleteConfirmation(std::function<bool()> confirm) { confirmDelete_ = std::move(confirm); }

public slots:
    void addNewSlide();
    void deleteSlide(const orvane::Uuid& slideId);
    void moveSlide(int from, int to);
    void selectSlide(const orvane::Uuid& slideId);

protected:
    void done(int result) override;

private:
    void rebuildList();
    void showSelection();
    bool askToDelete();

    SlidesResource deck_;
    std::optional<Uuid> selected_;
    int listRefreshTrigger_ = 0;
    std::function<bool()> confirmDelete_;

    QVBoxLayout* list_ = nullptr;
    QStackedWidget* right_ = nullptr;
    QPushButton* createFirst_ = nullptr;
    SlideEditorContentView* content_ = nullptr;
};

}  // namespace orvane
