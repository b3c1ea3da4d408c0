#pragma once

#include <QWidget>

class QLabel;
class QHBoxLayout;

namespace orvane {

// The common row above a stage: a symbol, the title and the scene's name on
// a dark strip; the stage's buttons go after a flexible space.
class StageHeader : public QWidget {
    Q_OBJECT

public:
    StageHeader(const QString& title, bool isLive, QWidget* parent = nullptr);

    void setSubtitle(const QString& subtitle);
    QString subtitle() const;

protected:
    QHBoxLayout* buttonRow() const { return buttons_; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void elideSubtitle();

    QLabel* subtitle_ = nullptr;
    QString fullSubtitle_;
    QHBoxLayout* buttons_ = nullptr;
};

}  // namespace orvane
