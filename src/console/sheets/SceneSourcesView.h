#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

#include "document/StreamingScene.h"

class QLabel;
class QPushButton;
class QScrollArea;
class QTimer;
class QVBoxLayout;

namespace orvane {

class AddSourceView;
class CaptureBackend;
class SourceItemView;
class StreamManager;

// "Manage Sources": a scene's sources with add and delete. Unlike the
// sidebar it works on a private copy of the scene and writes the copy back
// half a second after the last change, so a burst of changes is one write;
// whatever is still pending is written when the sheet closes.
class SceneSourcesView : public QDialog {
    Q_OBJECT

public:
    static constexpr int syncDelayMs = 500;

    SceneSourcesView(StreamManager& streamManager, const StreamingScene& scene, CaptureBackend* capture,
                     QWidget* parent = nullptr);

    const StreamingScene& localScene() const { return localScene_; }
    bool hasUnsavedChanges() const { return hasUnsavedChanges_; }
    bool isSyncScheduled() const;

    // Every change to the copy goes through here: it (re)starts the wait.
    void markAsChanged();
    // Writes the copy back, when there is something to write.
    void syncToBinding();

    void addSource(const Source& source);
    void deleteSource(const Uuid& id);
    AddSourceView* showAddSource();

    const std::vector<SourceItemView*>& items() const { return items_; }
    QPushButton* doneButton() const { return done_; }
    QPushButton* addSourceButton() const { return add_; }
    QString title() const;

    void done(int result) override;

signals:
    // The copy was written back: the console's selected scene becomes it.
    void sceneSynced(const orvane::StreamingScene& scene);

private:
    void refreshList();

    StreamManager& streamManager_;
    CaptureBackend* capture_ = nullptr;
    StreamingScene localScene_;
    bool hasUnsavedChanges_ = false;
    QTimer* syncTimer_ = nullptr;
    QLabel* title_ = nullptr;
    QPushButton* done_ = nullptr;
    QPushButton* add_ = nullptr;
    QWidget* empty_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    std::vector<SourceItemView*> items_;
};

}  // namespace orvane
