#pragma once

#include <QWidget>

#include "slides/editor/SlideDeckEdits.h"

namespace orvane {

// "Markdown" and its ten buttons; each asks to append its marks.
class MarkdownToolbarView : public QWidget {
    Q_OBJECT
public:
    explicit MarkdownToolbarView(QWidget* parent = nullptr);

signals:
    void insertionRequested(const orvane::MarkdownInsertion& insertion);
};

}  // namespace orvane
