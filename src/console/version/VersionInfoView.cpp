#include "console/version/VersionInfoView.h"

#include <QHBoxLayout>
#include <QLabel>

#include "console/controls/SymbolButton.h"
#include "console/controls/Theme.h"
#include "console/version/VersionDetailsView.h"
#include "console/version/VersionManager.h"

namespace orvane {

namespace {
SymbolButton* captionButton(std::string symbol, const QString& help, const QColor& color) {
    auto* button = new SymbolButton(QString(), std::move(symbol));
    SymbolButton::Look look;
    look.foreground = color;
    look.background = Qt::transparent;
    look.symbolSize = 12;
    look.paddingX = 2;
    look.paddingY = 2;
    button->setLook(look);
    button->setHelpText(help);
    return button;
}
}  // namespace

VersionInfoView::VersionInfoView(QWidget* parent) : VersionInfoView(nullptr, parent) {}

VersionInfoView::VersionInfoView(VersionManager* manager, QWidget* parent)
    : QWidget(parent), manager_(manager ? manager : new VersionManager(this)) {
    if (manager_->parent() == nullptr) manager_->setParent(this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    status_ = captionButton("questionmark.circle.fill", QStringLiteral("Version details"), Theme::gray());
    connect(status_, &QPushButton::clicked, this, &VersionInfoView::showDetails);
    row->addWidget(status_);
    version_ = new QLabel;
    version_->setFont(Theme::font(12, Theme::Weight::medium));
    row->addWidget(version_);
    commit_ = new QLabel;
    commit_->setFont(Theme::font(11));
    commit_->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    row->addWidget(commit_);
    auto* info = captionButton("info.circle", QStringLiteral("Version Information"), Theme::gray());
    connect(info, &QPushButton::clicked, this, &VersionInfoView::showDetails);
    row->addWidget(info);
    connect(manager_, &VersionManager::versionInfoChanged, this, &VersionInfoView::refresh);
    connect(manager_, &VersionManager::isLoadingChanged, this, &VersionInfoView::refresh);
    refresh();
}

QString VersionInfoView::versionText() const { return version_->text(); }

void VersionInfoView::refresh() {
    if (manager_->isLoading() || !manager_->versionInfo()) {
        version_->setText(QStringLiteral("Loading version..."));
        commit_->hide();
        return;
    }
    const VersionInfo& info = *manager_->versionInfo();
    status_->setSymbol(info.statusIcon());
    SymbolButton::Look look = status_->look();
    look.foreground = info.statusColor();
    status_->setLook(look);
    version_->setText(info.tag ? QStringLiteral("%1 (%2)").arg(info.version, *info.tag) : info.version);
    version_->setAccessibleName(version_->text());
    commit_->setVisible(info.commit != QLatin1String("unknown"));
    commit_->setText(QStringLiteral("Commit ") + info.commit);
}

void VersionInfoView::showDetails() {
    auto* details = new VersionDetailsView(manager_->versionInfo(), [this] { manager_->copyVersionInfo(); }, window());
    details->setAttribute(Qt::WA_DeleteOnClose);
    details->open();
}

void VersionInfoView::mouseDoubleClickEvent(QMouseEvent* event) {
    manager_->copyVersionInfo();
    QWidget::mouseDoubleClickEvent(event);
}

}  // namespace orvane
