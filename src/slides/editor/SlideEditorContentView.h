#pragma once

#include <QTimer>
#include <QWidget>

#include "document/SlidesResource.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSlider;
class QStackedWidget;

namespace orvane {

class SlideImageLoader;
class SlidePreviewView;

// Edits one slide. Typing goes to a local copy; half a second after the
// last change the copy is handed back to the deck, so the deck is not
// rewritten on every key and trails the editor by at most that long.
class SlideEditorContentView : public QWidget {
    Q_OBJECT
public:
    static constexpr int syncDelayMs = 500;

    SlideEditorContentView(SlideImageLoader& loader, QWidget* parent = nullptr);
    ~SlideEditorContentView() override;

    // Starts editing a slide of the deck; a pending change of the previous
    // slide is handed back first.
    void edit(const SlidesResource& deck, const Slide& slide);
    const Slide& localSlide() const { return local_; }
    bool hasPendingSync() const { return syncTimer_.isActive(); }
    bool showsPreview() const;

    QLineEdit* titleField() const { return title_; }
    QPlainTextEdit* textEditor() const { return text_; }

public slots:
    // Hands a pending change back at once.
    void flushPendingSync();
    void addImageFromFile(const QString& path);
    void addImageFromUrl(const QString& url);
    void setShowsPreview(bool show);

signals:
    void slideSynced(const orvane::Slide& slide);

private:
    void build();
    QWidget* buildSettings();
    void showSlide();  // puts the local copy into the controls
    void scheduleSync();
    void sync();
    void refreshImageSection();
    void chooseImageFile();
    void askImageUrl();

    SlideImageLoader& loader_;
    SlidesResource deck_;
    Slide local_;
    QTimer syncTimer_;
    bool loading_ = false;

    QLineEdit* title_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
    QSlider* textSize_ = nullptr;
    QLabel* textSizeValue_ = nullptr;
    QList<QPushButton*> alignment_;
    QStackedWidget* image_ = nullptr;
    QLabel* imagePicture_ = nullptr;
    QLabel* imageError_ = nullptr;  // "Error loading", under the symbol
    QComboBox* imagePosition_ = nullptr;
    QComboBox* imageSize_ = nullptr;
    QPushButton* previewToggle_ = nullptr;
    SlidePreviewView* preview_ = nullptr;
};

}  // namespace orvane
