#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "document/StreamingScene.h"

class QVBoxLayout;

namespace orvane {

class SourceRowView;
class SymbolButton;

// "SOURCES" with the button that opens the source manager, then the
// selected scene's sources, one row each, or a note that there are none.
class SceneSourcesList : public QWidget {
    Q_OBJECT

public:
    explicit SceneSourcesList(QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);
    const std::vector<SourceRowView*>& rows() const { return rows_; }
    SymbolButton* manageButton() const { return manage_; }

signals:
    void selectRequested(const orvane::Uuid& id);
    void deleteRequested(const orvane::Uuid& id);
    void manageRequested();

private:
    SymbolButton* manage_ = nullptr;
    QWidget* empty_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    std::vector<SourceRowView*> rows_;
};

}  // namespace orvane
