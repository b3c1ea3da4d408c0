#pragma once

#include <QWidget>

class QLabel;

namespace orvane {

class SymbolButton;
class VersionManager;

// The version read-out at the left of the bottom bar; a double click copies
// the details, the buttons open them.
class VersionInfoView : public QWidget {
    Q_OBJECT

public:
    explicit VersionInfoView(QWidget* parent = nullptr);
    VersionInfoView(VersionManager* manager, QWidget* parent);

    VersionManager& versionManager() const { return *manager_; }
    QString versionText() const;
    void showDetails();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void refresh();

    VersionManager* manager_ = nullptr;
    SymbolButton* status_ = nullptr;
    QLabel* version_ = nullptr;
    QLabel* commit_ = nullptr;
};

}  // namespace orvane
