#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "document/StreamingScene.h"

class QVBoxLayout;

namespace orvane {

class SourceRowView;

// "SOURCES": the selected scene's sources, one row each, or a note that
// there are none.
class SceneSourcesList : public QWidget {
    Q_OBJECT

public:
    explicit SceneSourcesList(QWidget* parent = nullptr);

    void setScene(const std::optional<StreamingScene>& scene);
    const std::vector<SourceRowView*>& rows() const { return rows_; }

signals:
    void selectRequested(const orvane::Uuid& id);
    void deleteRequested(const orvane::Uuid& id);

private:
    QWidget* empty_ = nullptr;
    QVBoxLayout* list_ = nullptr;
    std::vector<SourceRowView*> rows_;
};

}  // namespace orvane
