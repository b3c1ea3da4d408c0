#pragma once

#include <QImage>
#include <QPushButton>
#include <string>

namespace orvane {

// A choice on a capture sheet: a thumbnail box (or a symbol), a title, a
// detail line and an optional badge; purple when selected.
class CaptureTile : public QPushButton {
    Q_OBJECT

public:
    struct Look {
        QSize thumbnailSize{120, 80};  // empty: a symbol instead of a thumbnail
        double cornerRadius = 8;
        std::string symbol;            // shown without a thumbnail box
        std::string detailSymbol;      // before the detail line
    };

    CaptureTile(const QString& title, const QString& detail, const Look& look, QWidget* parent = nullptr);

    void setBadge(const QString& badge);
    void setSelected(bool selected);
    bool isSelected() const { return selected_; }
    void setThumbnail(const QImage& image);
    bool hasThumbnail() const { return !thumbnail_.isNull(); }
    QString detail() const { return detail_; }
    QString badge() const { return badge_; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString detail_;
    QString badge_;
    Look look_;
    bool selected_ = false;
    QImage thumbnail_;
};

}  // namespace orvane
