#include "console/program_window/FloatingDrawingControls.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "console/controls/ScaleFadeEffect.h"
#include "console/controls/Symbols.h"
#include "console/controls/Theme.h"
#include "engine/StreamManager.h"

namespace orvane {

namespace {

// A round button: a symbol on a fill, or a colour swatch, or a width dot.
class RoundButton : public QAbstractButton {
public:
    std::function<void(QPainter&, const QRectF&)> painter;

    RoundButton(int diameter, const QString& name) {
        setFixedSize(diameter, diameter);
        setAccessibleName(name);
        setToolTip(name);
        setCursor(Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        if (painter) painter(p, QRectF(rect()));
    }
};

QColor toColor(const DrawingColor& c) { return QColor::fromRgbF(float(c.red), float(c.green), float(c.blue), float(c.alpha)); }

void symbolDisc(QPainter& p, const QRectF& r, std::string_view symbol, double size, const QColor& fg, const QColor& bg) {
    p.setPen(Qt::NoPen);
    p.setBrush(bg);
    p.drawEllipse(r.adjusted(1, 1, -1, -1));
    p.drawPixmap(QPointF(r.center().x() - size / 2, r.center().y() - size / 2), Symbols::pixmap(symbol, size, fg));
}

}  // namespace

FloatingDrawingControls::FloatingDrawingControls(StreamManager& streamManager, QWidget* parent)
    : QWidget(parent), streamManager_(streamManager) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 4);
    column->setSpacing(8);

    auto* main = new RoundButton(56, QStringLiteral("Drawing"));
    main->painter = [this](QPainter& p, const QRectF& r) {
        const bool on = streamManager_.drawing().isDrawingModeEnabled();
        p.setPen(Qt::NoPen);
        p.setBrush(Theme::black(0.3));
        p.drawEllipse(r.adjusted(2, 4, -2, 0));
        symbolDisc(p, r.adjusted(1, 0, -1, -2), on ? "pencil.tip.crop.circle.badge.plus" : "pencil.tip.crop.circle", 24,
                   on ? Qt::white : Theme::gray(), on ? Theme::blue() : Theme::black(0.8));
    };
    connect(main, &QAbstractButton::clicked, this, &FloatingDrawingControls::pressMainButton);
    mainButton_ = main;
    column->addWidget(main, 0, Qt::AlignHCenter);

    toolbar_ = new QWidget;
    auto* bar = new QVBoxLayout(toolbar_);
    bar->setContentsMargins(6, 6, 6, 6);
    bar->setSpacing(8);
    toolbar_->setStyleSheet(QStringLiteral("background: rgba(0,0,0,0.55); border-radius: 12px;"));

    auto* tools = new QVBoxLayout;
    tools->setSpacing(4);
    const std::pair<DrawingTool, const char*> toolList[] = {{DrawingTool::line, "line.diagonal"},
                                                            {DrawingTool::arrow, "arrow.up.right"},
                                                            {DrawingTool::rectangle, "rectangle"},
                                                            {DrawingTool::freehand, "pencil"},
                                                            {DrawingTool::eraser, "eraser"}};
    for (const auto& [tool, symbol] : toolList) {
        // The tool's stored word, capitalised, as its help text and name.
        const std::string_view word = toString(tool);
        QString name = QString::fromUtf8(word.data(), qsizetype(word.size()));
        name[0] = name[0].toUpper();
        auto* button = new RoundButton(32, name);
        button->painter = [this, tool, symbol](QPainter& p, const QRectF& r) {
            const bool selected = streamManager_.drawing().selectedDrawingTool() == tool;
            symbolDisc(p, r, symbol, 14, selected ? Qt::white : Theme::gray(), selected ? Theme::blue() : Theme::black(0.7));
        };
        connect(button, &QAbstractButton::clicked, this,
                [this, tool] { streamManager_.drawing().setSelectedDrawingTool(tool); });
        tools->addWidget(button, 0, Qt::AlignHCenter);
    }
    bar->addLayout(tools);

    auto* swatches = new QHBoxLayout;
    swatches->setSpacing(4);
    const DrawingColor colours[] = {{1, 0, 0, 1}, {0, 0, 1, 1}, {0, 1, 0, 1}, {1, 1, 0, 1}, {1, 0.5, 0, 1}, {0.5, 0, 1, 1}};
    for (const DrawingColor& colour : colours) {
        auto* swatch = new RoundButton(20, toColor(colour).name());
        swatch->painter = [this, colour](QPainter& p, const QRectF& r) {
            p.setPen(Qt::NoPen);
            p.setBrush(toColor(colour));
            p.drawEllipse(r.adjusted(2, 2, -2, -2));
            if (streamManager_.drawing().selectedDrawingColor() == colour) {
                p.setPen(QPen(Qt::white, 2));
                p.setBrush(Qt::NoBrush);
                p.drawEllipse(r.adjusted(1, 1, -1, -1));
            }
        };
        connect(swatch, &QAbstractButton::clicked, this,
                [this, colour] { streamManager_.drawing().setSelectedDrawingColor(colour); });
        swatches->addWidget(swatch);
    }
    bar->addLayout(swatches);

    auto* widths = new QHBoxLayout;
    widths->setSpacing(4);
    for (double value : {2.0, 5.0, 10.0}) {
        auto* dot = new RoundButton(int(value) + 14, QStringLiteral("Width %1").arg(value));
        dot->painter = [this, value](QPainter& p, const QRectF& r) {
            const QPointF c = r.center();
            p.setBrush(Qt::white);
            p.setPen(QPen(Theme::withAlpha(Theme::gray(), 0.5), 1));
            p.drawEllipse(c, (value + 8) / 2, (value + 8) / 2);
            if (streamManager_.drawing().drawingStrokeWidth() == value) {
                p.setBrush(Qt::NoBrush);
                p.setPen(QPen(Theme::blue(), 2));
                p.drawEllipse(c, (value + 12) / 2, (value + 12) / 2);
            }
        };
        connect(dot, &QAbstractButton::clicked, this,
                [this, value] { streamManager_.drawing().setDrawingStrokeWidth(value); });
        widths->addWidget(dot);
    }
    bar->addLayout(widths);

    auto* trash = new RoundButton(32, QStringLiteral("Clear Drawing"));
    trash->painter = [](QPainter& p, const QRectF& r) {
        symbolDisc(p, r, "trash", 14, Qt::white, Theme::withAlpha(Theme::red(), 0.8));
    };
    connect(trash, &QAbstractButton::clicked, this, [this] {
        streamManager_.drawing().setDrawingShapes({});
        streamManager_.drawing().setFreehandPaths({});
    });
    bar->addWidget(trash, 0, Qt::AlignHCenter);
    column->addWidget(toolbar_, 0, Qt::AlignHCenter);
    toolbarEffect_ = new ScaleFadeEffect(toolbar_);
    toolbarEffect_->setShown(false);
    toolbar_->setGraphicsEffect(toolbarEffect_);
    toolbar_->setVisible(false);
    connect(toolbarEffect_, &ScaleFadeEffect::gone, this, [this] {
        toolbar_->setVisible(false);
        placeIn(host_);
    });

    auto repaint = [this] { refresh(); };
    connect(&streamManager_.drawing(), &DrawingState::isDrawingModeEnabledChanged, this, repaint);
    connect(&streamManager_.drawing(), &DrawingState::selectedDrawingToolChanged, this, repaint);
    connect(&streamManager_.drawing(), &DrawingState::selectedDrawingColorChanged, this, repaint);
    connect(&streamManager_.drawing(), &DrawingState::drawingStrokeWidthChanged, this, repaint);
    connect(&streamManager_.drawing(), &DrawingState::drawingButtonPositionChanged, this, [this] { placeIn(host_); });
    refresh();
}

void FloatingDrawingControls::pressMainButton() {
    const bool wasOn = streamManager_.drawing().isDrawingModeEnabled();
    streamManager_.drawing().toggleDrawingMode();
    isExpanded_ = !wasOn;
    emit isExpandedChanged(isExpanded_);
    refresh();
}

void FloatingDrawingControls::refresh() {
    const bool wanted = streamManager_.drawing().isDrawingModeEnabled() && isExpanded_;
    if (wanted && !toolbarEffect_->isShown()) {
        toolbar_->setVisible(true);
        toolbarEffect_->animateTo(true);
    } else if (!wanted && toolbarEffect_->isShown()) {
        // Stays in the layout until it has left.
        toolbarEffect_->animateTo(false);
    }
    for (QWidget* child : findChildren<QWidget*>()) child->update();
    placeIn(host_);
}

void FloatingDrawingControls::placeIn(const QRect& host) {
    host_ = host;
    if (host.isEmpty()) return;
    adjustSize();
    const QSize s = sizeHint();
    const QRect inner = host.adjusted(hostPadding, hostPadding, -hostPadding, -hostPadding);
    int x = inner.left();
    int y = inner.top();
    switch (streamManager_.drawing().drawingButtonPosition()) {
    case DrawingButtonPosition::topLeft: break;
    case DrawingButtonPosition::topRight: x = inner.right() - s.width() + 1; break;
    case DrawingButtonPosition::bottomLeft: y = inner.bottom() - s.height() + 1; break;
    case DrawingButtonPosition::bottomRight:
        x = inner.right() - s.width() + 1;
        y = inner.bottom() - s.height() + 1;
        break;
    case DrawingButtonPosition::centerLeft: y = inner.center().y() - s.height() / 2; break;
    case DrawingButtonPosition::centerRight:
        x = inner.right() - s.width() + 1;
        y = inner.center().y() - s.height() / 2;
        break;
    }
    setGeometry(x, y, s.width(), s.height());
    raise();
}

}  // namespace orvane
