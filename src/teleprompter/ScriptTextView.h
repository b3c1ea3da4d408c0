#pragma once

#include <QColor>
#include <QFont>
#include <QTextLayout>
#include <QWidget>
#include <memory>

namespace orvane {

// The script in reading mode: word-wrapped text over the full width, moved
// up by the scroll offset, with empty room below it as high as the window
// so that the last lines can travel to the top. The layout is computed when
// the text, font or width change; a new offset only repaints.
class ScriptTextView : public QWidget {
    Q_OBJECT
public:
    static constexpr int padding = 16;

    explicit ScriptTextView(QWidget* parent = nullptr);

    void setScript(const QString& text, bool placeholder);
    void setLook(const QFont& font, const QColor& color);
    void setOffset(double offset);
    // The room below the text, normally the window's height.
    void setTrailingSpace(int height);

    double offset() const { return offset_; }
    const QString& shownText() const { return text_; }
    // The top of the first line in this widget's coordinates.
    double textTop() const { return padding - offset_; }
    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    double layoutText(int width) const;  // height of the laid-out text
    void relayout();

    QString text_;
    bool placeholder_ = false;
    QFont font_;
    QColor color_ = Qt::white;
    double offset_ = 0;
    int trailing_ = 0;
    mutable std::unique_ptr<QTextLayout> layout_;
    mutable int layoutWidth_ = -1;
    mutable double textHeight_ = 0;
};

}  // namespace orvane
