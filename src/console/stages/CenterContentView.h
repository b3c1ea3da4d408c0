#pragma once

#include <QWidget>

class QBoxLayout;
class QFrame;

namespace orvane {

class FrameSource;
class PreviewHeader;
class ProgramHeader;
class StreamManager;
class StreamPreviewView;

// The middle of the console: preview and program, side by side from 800
// pixels of width, one above the other below that.
class CenterContentView : public QWidget {
    Q_OBJECT

public:
    static constexpr int sideBySideMinimumWidth = 800;

    CenterContentView(StreamManager& streamManager, const FrameSource* frames, QWidget* parent = nullptr);

    bool isStacked() const;
    StreamPreviewView* previewStage() const { return preview_; }
    StreamPreviewView* programStage() const { return program_; }
    PreviewHeader* previewHeader() const { return previewHeader_; }
    ProgramHeader* programHeader() const { return programHeader_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange(int width);

    QBoxLayout* stages_ = nullptr;
    QFrame* divider_ = nullptr;
    PreviewHeader* previewHeader_ = nullptr;
    ProgramHeader* programHeader_ = nullptr;
    StreamPreviewView* preview_ = nullptr;
    StreamPreviewView* program_ = nullptr;
};

}  // namespace orvane
