#pragma once

#include <QPointer>
#include <QWidget>

#include "teleprompter/TeleprompterManager.h"

class QLabel;
class QPlainTextEdit;
class QScrollArea;
class QStackedWidget;

namespace orvane {

class RoundSymbolButton;
class ScriptTextView;

// The content of the teleprompter window: the script moved by the scroll
// offset, or an editor in place, in the area under a row of round controls
// at the top right. Its text follows the document except while the presenter edits,
// so typing is never overwritten.
class TeleprompterWindowView : public QWidget {
    Q_OBJECT
public:
    static constexpr const char* placeholderText = "Click the pencil button (✏️) to add text...";
    static constexpr int controlsMargin = 12;  // from the top and right edges
    static constexpr int controlsGap = 6;      // between the controls and the text

    explicit TeleprompterWindowView(TeleprompterManager& manager, QWidget* parent = nullptr);

    const QString& editableText() const { return editableText_; }
    bool isEditing() const { return isEditing_; }
    bool hasSettings() const { return hasSettings_; }
    // The displacement of the text: the scroll offset, or 0 while editing.
    double textDisplacement() const;
    ScriptTextView* scriptView() const { return script_; }
    // Where the script or the editor is shown: below the controls.
    QRect textArea() const;
    QWidget* controls() const { return controls_; }
    QPlainTextEdit* editor() const { return editor_; }

public slots:
    void beginEditing();
    void saveText();
    void cancelEditing();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void refreshFromDocument();
    void showEditing(bool editing);
    void refreshControls();
    void placeControls();
    QWidget* buildEditingPage();

    QPointer<TeleprompterManager> manager_;
    QString editableText_;
    bool isEditing_ = false;
    bool hasSettings_ = false;
    QColor ground_;

    QStackedWidget* pages_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    ScriptTextView* script_ = nullptr;
    QPlainTextEdit* editor_ = nullptr;
    QWidget* controls_ = nullptr;
    RoundSymbolButton* save_ = nullptr;
    RoundSymbolButton* cancel_ = nullptr;
    RoundSymbolButton* edit_ = nullptr;
    RoundSymbolButton* playPause_ = nullptr;
    RoundSymbolButton* reset_ = nullptr;
    RoundSymbolButton* close_ = nullptr;
};

}  // namespace orvane
