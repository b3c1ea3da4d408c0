#include "console/sheets/QrCodeView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "console/controls/SymbolButton.h"
#include "console/controls/Theme.h"

namespace orvane {

QrCodeView::QrCodeView(const QString& url, const Generator& generator, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Scan QR Code"));
    setModal(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(12);
    auto* title = new QLabel(QStringLiteral("Scan QR Code"));
    title->setFont(Theme::font(18, Theme::Weight::semibold));
    column->addWidget(title, 0, Qt::AlignHCenter);
    auto* hint = new QLabel(QStringLiteral("Scan this code with your phone to access the remote control"));
    hint->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    hint->setAlignment(Qt::AlignCenter);
    column->addWidget(hint);

    const QImage code = generator ? generator(url) : QImage();
    auto* picture = new QLabel;
    picture->setAlignment(Qt::AlignCenter);
    if (!code.isNull()) {
        picture->setFixedSize(266, 266);
        picture->setStyleSheet(QStringLiteral("background: white; border-radius: 12px;"));
        picture->setPixmap(QPixmap::fromImage(code.scaled(250, 250, Qt::KeepAspectRatio, Qt::FastTransformation)));
        picture->setAccessibleName(QStringLiteral("QR Code"));
    } else {
        picture->setFixedSize(200, 200);
        picture->setStyleSheet(QStringLiteral("background: rgba(142,142,147,0.3); border-radius: 12px; color: white;"));
        picture->setText(QStringLiteral("Failed to generate QR code"));
        picture->setWordWrap(true);
    }
    column->addWidget(picture, 0, Qt::AlignHCenter);

    auto* urlCaption = new QLabel(QStringLiteral("URL: "));
    urlCaption->setStyleSheet(QStringLiteral("color: #8e8e93;"));
    column->addWidget(urlCaption, 0, Qt::AlignHCenter);
    auto* urlText = new QLabel(url);
    urlText->setFont(QFont(QStringLiteral("monospace")));
    urlText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    urlText->setAccessibleName(QStringLiteral("URL"));
    column->addWidget(urlText, 0, Qt::AlignHCenter);

    auto* buttons = new QHBoxLayout;
    auto* copy = new SymbolButton(QStringLiteral("Copy URL"), "doc.on.doc");
    connect(copy, &QPushButton::clicked, this, [url] {
        if (QGuiApplication::clipboard()) QGuiApplication::clipboard()->setText(url);
    });
    buttons->addWidget(copy);
    auto* close = new SymbolButton(QStringLiteral("Close"), std::string());
    SymbolButton::Look look;
    look.background = Theme::purple();
    close->setLook(look);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    buttons->addWidget(close);
    column->addLayout(buttons);
}

}  // namespace orvane
