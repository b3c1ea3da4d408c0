#include "console/sidebar/PresetBrandingSection.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <cmath>

#include "console/controls/CaptionedSlider.h"
#include "console/controls/SidebarStyle.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/Symbols.h"
#include "console/controls/ToggleSwitch.h"
#include "console/presets/PresetEdit.h"
#include "document/Log.h"
#include "document/PresetStorage.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {
QString brandingPercent(double value) { return QString::number(std::lround(value * 100)) + QStringLiteral("%"); }

const char* brandingPositionSymbol(BrandingPosition position) {
    switch (position) {
        case BrandingPosition::topLeft: return "arrow.up.left";
        case BrandingPosition::topRight: return "arrow.up.right";
        case BrandingPosition::bottomLeft: return "arrow.down.left";
        case BrandingPosition::bottomRight: return "arrow.down.right";
    }
    return "arrow.down.right";
}

QString brandingPositionName(BrandingPosition position) {
    switch (position) {
        case BrandingPosition::topLeft: return QStringLiteral("Branding Top Left");
        case BrandingPosition::topRight: return QStringLiteral("Branding Top Right");
        case BrandingPosition::bottomLeft: return QStringLiteral("Branding Bottom Left");
        case BrandingPosition::bottomRight: return QStringLiteral("Branding Bottom Right");
    }
    return {};
}

SymbolButton::Look brandingPositionLook(bool selected) {
    SymbolButton::Look look;
    look.foreground = selected ? Qt::white : Theme::white(0.7);
    look.background = selected ? Theme::withAlpha(Theme::purple(), 0.8) : Theme::white(0.06);
    look.symbolSize = 14;
    look.paddingX = 8;
    look.paddingY = 6;
    return look;
}

// "Images (*.png *.jpg ...)" from what the image loader reads, PNG and JPEG
// first.
QString brandingImageFilter() {
    QStringList patterns{QStringLiteral("*.png"), QStringLiteral("*.jpg"), QStringLiteral("*.jpeg")};
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        const QString pattern = QStringLiteral("*.") + QString::fromLatin1(format).toLower();
        if (!patterns.contains(pattern)) patterns << pattern;
    }
    return QStringLiteral("Images (%1)").arg(patterns.join(QLatin1Char(' ')));
}
}  // namespace

PresetBrandingSection::PresetBrandingSection(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* head = new QHBoxLayout;
    head->setSpacing(6);
    head->addWidget(SidebarStyle::symbol("tag.fill", 12, Theme::purple()));
    head->addWidget(SidebarStyle::head(QStringLiteral("PRESET BRANDING")), 1);
    column->addLayout(head);

    enabled_ = new ToggleSwitch(QStringLiteral("Enable Branding"));
    connect(enabled_, &ToggleSwitch::toggled, this,
            [this](bool on) { edit([on](BrandingConfig& c) { c.enabled = on; }); });
    column->addWidget(enabled_);

    details_ = new QWidget;
    auto* details = new QVBoxLayout(details_);
    details->setContentsMargins(0, 0, 0, 0);
    details->setSpacing(8);

    details->addWidget(SidebarStyle::label(QStringLiteral("Text"), 11, Theme::Weight::medium));
    text_ = new QLineEdit;
    text_->setPlaceholderText(QStringLiteral("Enter branding text"));
    text_->setAccessibleName(QStringLiteral("Branding Text"));
    // Typed or set by assistive technology alike; the panel's own updates
    // below are silent.
    connect(text_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const std::string value = text.toStdString();
        edit([value](BrandingConfig& c) { c.text = value; });
    });
    details->addWidget(text_);
    textSize_ = new CaptionedSlider(QStringLiteral("Text Size"), 10, 40, 1, [](double v) {
        return QStringLiteral("Text Size: %1").arg(std::lround(v));
    });
    connect(textSize_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](BrandingConfig& c) { c.textSize = v; }); });
    details->addWidget(textSize_);

    details->addWidget(SidebarStyle::label(QStringLiteral("Logo"), 11, Theme::Weight::medium));
    auto* logoRow = new QHBoxLayout;
    logoRow->setSpacing(6);
    auto* select = new SymbolButton(QStringLiteral("Select Logo"), "photo.badge.plus");
    SymbolButton::Look selectLook;
    selectLook.foreground = Theme::blue();
    selectLook.background = Theme::withAlpha(Theme::blue(), 0.15);
    selectLook.fontSize = 11;
    selectLook.symbolSize = 12;
    selectLook.paddingY = 5;
    select->setLook(selectLook);
    selectLogo_ = select;
    connect(selectLogo_, &QPushButton::clicked, this, [this] { selectImage(); });
    logoRow->addWidget(selectLogo_);
    logoPreview_ = new QLabel;
    logoPreview_->setFixedSize(28, 28);
    logoPreview_->setAlignment(Qt::AlignCenter);
    logoPreview_->setAccessibleName(QStringLiteral("Logo Preview"));
    logoRow->addWidget(logoPreview_);
    logoRow->addStretch();
    removeLogo_ = SidebarStyle::iconButton("xmark.circle.fill", QStringLiteral("Remove Logo"), Theme::red(), 14);
    connect(removeLogo_, &QPushButton::clicked, this, &PresetBrandingSection::removeLogo);
    logoRow->addWidget(removeLogo_);
    details->addLayout(logoRow);
    logoWidth_ = new CaptionedSlider(QStringLiteral("Logo Width"), 40, 200, 10, [](double v) {
        return QStringLiteral("Logo Width: %1px").arg(std::lround(v));
    });
    connect(logoWidth_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](BrandingConfig& c) { c.logoWidth = v; }); });
    details->addWidget(logoWidth_);
    logoHeight_ = new CaptionedSlider(QStringLiteral("Logo Height"), 40, 200, 10, [](double v) {
        return QStringLiteral("Logo Height: %1px").arg(std::lround(v));
    });
    connect(logoHeight_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](BrandingConfig& c) { c.logoHeight = v; }); });
    details->addWidget(logoHeight_);

    details->addWidget(SidebarStyle::label(QStringLiteral("Position"), 11, Theme::Weight::medium));
    auto* positions = new QHBoxLayout;
    positions->setSpacing(6);
    for (BrandingPosition position : {BrandingPosition::topLeft, BrandingPosition::topRight,
                                      BrandingPosition::bottomLeft, BrandingPosition::bottomRight}) {
        auto* button = new SymbolButton(QString(), brandingPositionSymbol(position));
        button->setHelpText(brandingPositionName(position));
        button->setLook(brandingPositionLook(false));
        connect(button, &QPushButton::clicked, this,
                [this, position] { edit([position](BrandingConfig& c) { c.position = position; }); });
        positions->addWidget(button);
        positions_[position] = button;
    }
    positions->addStretch();
    details->addLayout(positions);

    opacity_ = new CaptionedSlider(QStringLiteral("Branding Opacity"), 0, 1, 0.1,
                                 [](double v) { return QStringLiteral("Opacity: ") + brandingPercent(v); });
    connect(opacity_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](BrandingConfig& c) { c.opacity = v; }); });
    details->addWidget(opacity_);
    background_ = new ToggleSwitch(QStringLiteral("Show Background"));
    connect(background_, &ToggleSwitch::toggled, this,
            [this](bool on) { edit([on](BrandingConfig& c) { c.showBackground = on; }); });
    details->addWidget(background_);
    backgroundOpacity_ = new CaptionedSlider(QStringLiteral("Background Opacity"), 0, 1, 0.1, [](double v) {
        return QStringLiteral("Background Opacity: ") + brandingPercent(v);
    });
    connect(backgroundOpacity_, &CaptionedSlider::valueChanged, this,
            [this](double v) { edit([v](BrandingConfig& c) { c.backgroundColor.alpha = v; }); });
    details->addWidget(backgroundOpacity_);
    column->addWidget(details_);

    connect(&streamManager_, &StreamManager::currentPresetChanged, this, &PresetBrandingSection::refresh);
    refresh();
}

BrandingConfig PresetBrandingSection::config() const {
    const auto& preset = streamManager_.currentPreset();
    return preset && preset->branding ? *preset->branding : BrandingConfig{};
}

void PresetBrandingSection::updatePresetBranding(const BrandingConfig& config) {
    editCurrentPreset(streamManager_, [&config](Preset& p) { p.branding = config; });
}

void PresetBrandingSection::edit(const std::function<void(BrandingConfig&)>& change) {
    if (!streamManager_.currentPreset()) return;
    BrandingConfig c = config();
    change(c);
    updatePresetBranding(c);
}

QFileDialog* PresetBrandingSection::selectImage() {
    if (!streamManager_.currentPreset()) return nullptr;
    auto* dialog = new QFileDialog(window(), QStringLiteral("Select a logo image"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAccessibleName(QStringLiteral("Select a logo image"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    // The widget dialog, so that it wears the console's dark look and is the
    // same on every desktop.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setNameFilter(brandingImageFilter());
    dialog->setLabelText(QFileDialog::Accept, QStringLiteral("Select"));
    // Where pictures usually are, not wherever the program was started.
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    dialog->setDirectory(QDir(pictures).exists() ? pictures : QDir::homePath());
    connect(dialog, &QFileDialog::fileSelected, this, &PresetBrandingSection::chooseLogo);
    dialog->open();
    return dialog;
}

void PresetBrandingSection::chooseLogo(const QString& path) {
    if (!streamManager_.currentPreset() || path.isEmpty()) return;
    PresetStorage& storage = streamManager_.presetStorage();
    const std::optional<std::string> copied = storage.copyLogoToAppDirectory(path.toStdString());
    if (!copied) {
        // The preset keeps whatever logo it had.
        logLine("❌ Failed to copy logo image");
        return;
    }
    const BrandingConfig before = config();
    storage.deleteLogo(before.logoImagePath);
    edit([&copied](BrandingConfig& c) { c.logoImagePath = copied; });
}

void PresetBrandingSection::removeLogo() {
    const BrandingConfig before = config();
    if (!streamManager_.currentPreset() || !before.logoImagePath) return;
    streamManager_.presetStorage().deleteLogo(before.logoImagePath);
    edit([](BrandingConfig& c) { c.logoImagePath.reset(); });
}

void PresetBrandingSection::refresh() {
    const auto& preset = streamManager_.currentPreset();
    setEnabled(preset.has_value());
    const BrandingConfig c = config();
    enabled_->setOn(c.enabled);
    details_->setVisible(c.enabled);
    const QString text = QString::fromStdString(c.text);
    // Only a change from elsewhere replaces the field, so typing is never
    // disturbed.
    if (text_->text() != text) {
        const QSignalBlocker block(text_);
        text_->setText(text);
    }
    textSize_->setValue(c.textSize);
    const bool hasLogo = c.logoImagePath.has_value();
    removeLogo_->setVisible(hasLogo);
    logoPreview_->setVisible(hasLogo);
    if (hasLogo) {
        const QPixmap logo(QString::fromStdString(*c.logoImagePath));
        if (logo.isNull()) {
            logoPreview_->setPixmap(Symbols::pixmap("exclamationmark.triangle", 16, Theme::orange()));
            logoPreview_->setToolTip(QStringLiteral("The logo file cannot be read"));
        } else {
            logoPreview_->setPixmap(logo.scaled(logoPreview_->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
            logoPreview_->setToolTip(QString::fromStdString(*c.logoImagePath));
        }
    } else {
        logoPreview_->clear();
    }
    logoWidth_->setVisible(hasLogo);
    logoHeight_->setVisible(hasLogo);
    logoWidth_->setValue(c.logoWidth);
    logoHeight_->setValue(c.logoHeight);
    for (auto& [position, button] : positions_) button->setLook(brandingPositionLook(position == c.position));
    opacity_->setValue(c.opacity);
    background_->setOn(c.showBackground);
    backgroundOpacity_->setVisible(c.showBackground);
    backgroundOpacity_->setValue(c.backgroundColor.alpha);
}

}  // namespace orvane
