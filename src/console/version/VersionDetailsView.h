#pragma once

#include <QDialog>
#include <functional>
#include <optional>

#include "console/version/VersionInfo.h"

namespace orvane {

// The sheet with every field of the version, and "Copy Version Info".
class VersionDetailsView : public QDialog {
    Q_OBJECT

public:
    VersionDetailsView(const std::optional<VersionInfo>& info, std::function<void()> copy, QWidget* parent = nullptr);
};

}  // namespace orvane
