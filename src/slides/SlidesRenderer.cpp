#include "slides/SlidesRenderer.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <optional>

#include "paint/ColorConvert.h"
#include "paint/PixelFont.h"
#include "paint/SoftShadow.h"
#include "paint/SymbolPainter.h"
#include "slides/MarkdownContentView.h"
#include "slides/MarkdownRenderer.h"
#include "slides/MarkdownTextView.h"
#include "slides/SlideImageLoader.h"

namespace orvane {

namespace {

const QColor kGrey(142, 142, 147);

struct CounterFonts {
    QFont number;
    QFont slash;
    double spacing;
};

CounterFonts counterFonts(double w, const QPaintDevice* device) {
    return {PixelFont::system(0.007 * w, QFont::Bold, device), PixelFont::system(0.006 * w, QFont::Normal, device),
            0.002 * w};
}

QSizeF counterContent(double w, int index, int count, const QPaintDevice* device) {
    const CounterFonts f = counterFonts(w, device);
    const QFontMetricsF numbers = PixelFont::metrics(f.number, device);
    const QFontMetricsF slash = PixelFont::metrics(f.slash, device);
    const double width = numbers.horizontalAdvance(QString::number(index + 1)) + f.spacing +
                         slash.horizontalAdvance(QStringLiteral("/")) + f.spacing +
                         numbers.horizontalAdvance(QString::number(count));
    return {width, std::max(numbers.height(), slash.height())};
}

// Eight spokes, the brightest moving on one spoke every eighth of a second.
void spinner(QPainter& painter, QPointF centre, double size, double now) {
    const double turn = std::isfinite(now) ? std::floor(std::fmod(now * 8, 8.0)) : 0.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 8; ++i) {
        painter.setPen(QPen(QColor(200, 200, 200, 60 + i * 24), std::max(1.0, size * 0.08), Qt::SolidLine,
                            Qt::RoundCap));
        const double a = (i + turn) * M_PI / 4;
        const QPointF dir(std::cos(a), std::sin(a));
        painter.drawLine(centre + dir * size * 0.22, centre + dir * size * 0.42);
    }
    painter.restore();
}

void drawFilled(QPainter& painter, const QImage& image, QRectF target) {
    // Aspect fill: the overflow is cut equally on both sides.
    const double scale = std::max(target.width() / image.width(), target.height() / image.height());
    const QSizeF source(target.width() / scale, target.height() / scale);
    const QRectF from((image.width() - source.width()) / 2, (image.height() - source.height()) / 2,
                      source.width(), source.height());
    painter.drawImage(target, image, from);
}

}  // namespace

SlidesRenderer::SlidesRenderer(SlideImageLoader& loader) : loader_(loader) {}

const Slide* SlidesRenderer::slideAt(const SlidesResource& deck, int index) {
    if (index < 0 || index >= static_cast<int>(deck.slides.size())) return nullptr;
    return &deck.slides[static_cast<std::size_t>(index)];
}

int SlidesRenderer::pageAfter(PageButton button, int currentIndex, int slideCount) {
    if (button == PageButton::previous && currentIndex >= 1) return currentIndex - 1;
    if (button == PageButton::next && currentIndex < slideCount - 1) return currentIndex + 1;
    return currentIndex;
}

PageControlLayout SlidesRenderer::pageControlLayout(QSizeF view, int currentIndex, int slideCount,
                                                    const QPaintDevice* device) {
    return SlideGeometry::pageControl(view, counterContent(view.width(), currentIndex, slideCount, device));
}

SlidesRenderer::PageButton SlidesRenderer::hitTest(QPointF point, QSizeF view, const SlidesResource& deck,
                                                   int currentIndex, const QPaintDevice* device) {
    if (!slideAt(deck, currentIndex)) return PageButton::none;  // the empty state has no control
    const PageControlLayout layout =
        pageControlLayout(view, currentIndex, static_cast<int>(deck.slides.size()), device);
    if (layout.previous.contains(point)) return PageButton::previous;
    if (layout.next.contains(point)) return PageButton::next;
    return PageButton::none;
}

SlidesRenderer::Painted SlidesRenderer::paint(QPainter& painter, QRectF box, const SlidesResource& deck,
                                              int currentIndex, double scroll, double now) {
    if (box.width() < 1 || box.height() < 1) return {};
    const QSizeF view = box.size();
    const double w = view.width();
    painter.save();
    painter.translate(box.topLeft());
    painter.setClipRect(QRectF(QPointF(0, 0), view), Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::TextAntialiasing);

    const Slide* slide = slideAt(deck, currentIndex);
    painter.fillRect(QRectF(QPointF(0, 0), view), ColorConvert::from(slide ? slide->backgroundColor
                                                                            : deck.backgroundColor));
    if (!slide) {
        const double symbol = 0.03 * w;
        const double spacing = 0.008 * w;
        const QFont font = PixelFont::system(0.009 * w, QFont::Normal, painter.device());
        const QString text = QStringLiteral("No slides available");
        const double textHeight = PixelFont::metrics(font, painter.device()).height();
        const double top = view.height() / 2 - (symbol + spacing + textHeight) / 2;
        QColor grey = kGrey;
        grey.setAlphaF(0.5f);
        SymbolPainter::draw(painter, "doc.text", QPointF(w / 2, top + symbol / 2), symbol, grey);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(QRectF(0, top + symbol + spacing, w, textHeight), Qt::AlignHCenter | Qt::AlignTop, text);
        painter.restore();
        return {};
    }

    const Painted painted = paintSlide(painter, view, deck, *slide, Reading::stage, scroll, now);
    paintPageControl(painter, view, currentIndex, static_cast<int>(deck.slides.size()));
    painter.restore();
    return painted;
}

void SlidesRenderer::paintPreview(QPainter& painter, QRectF box, const SlidesResource& deck, const Slide& slide) {
    if (box.width() < 1 || box.height() < 1) return;
    painter.save();
    painter.translate(box.topLeft());
    painter.setClipRect(QRectF(QPointF(0, 0), box.size()), Qt::IntersectClip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(QRectF(QPointF(0, 0), box.size()), ColorConvert::from(slide.backgroundColor));
    paintSlide(painter, box.size(), deck, slide, Reading::editorPreview, 0, 0);
    painter.restore();
}

SlidesRenderer::Painted SlidesRenderer::paintSlide(QPainter& painter, QSizeF view, const SlidesResource& deck,
                                                   const Slide& slide, Reading reading, double scroll,
                                                   double now) {
    // The stage reads the full dialect at its own sizes, above the page
    // control; the editor's preview keeps its simpler reader and sizes.
    const bool underPageControl = reading == Reading::stage;
    const auto parse = reading == Reading::stage ? &MarkdownContentView::parseMarkdown : &MarkdownTextView::parseMarkdown;
    const MarkdownRenderer::InlineMarks inlineMarks = reading == Reading::stage
                                                          ? &MarkdownContentView::processInlineMarkdown
                                                          : &MarkdownTextView::processInlineMarkdown;
    const auto styleFor = reading == Reading::stage ? &MarkdownStyle::stage : &MarkdownStyle::preview;
    const double w = view.width();
    const bool hasImage = slide.imageUrl.has_value() && !slide.imageUrl->empty();
    const bool isBackground = slide.imagePosition == ImagePosition::background;

    if (hasImage && isBackground) {
        const SlideImageLoader::Result bg = loader_.load(*slide.imageUrl);
        if (bg.state == SlideImageLoader::State::image && !bg.image.isNull()) {
            painter.save();
            painter.setOpacity(painter.opacity() * 0.3);
            drawFilled(painter, bg.image, QRectF(QPointF(0, 0), view));
            painter.restore();
        }
    }

    const int count = static_cast<int>(deck.slides.size());
    // The text and picture end where the page control begins, if there is one.
    const double bodyHeight =
        underPageControl ? std::max(0.0, pageControlLayout(view, 0, count, painter.device()).background.top())
                         : view.height();
    const QRectF body(0, 0, w, bodyHeight);
    painter.save();
    painter.setClipRect(body, Qt::IntersectClip);

    const double pad = SlideGeometry::bodyPadding(view);
    const double gap = SlideGeometry::gap(view);
    const QRectF content = body.adjusted(pad, pad, -pad, -pad);

    // The picture beside, above or below the text, and its state.
    SlideImageLoader::Result picture;
    QSizeF pictureSize;
    if (hasImage && !isBackground) {
        picture = loader_.load(*slide.imageUrl);
        const double boxHeight = SlideGeometry::imageBoxHeight(slide.imagePosition, view);
        const auto maxWidth = SlideGeometry::maxImageWidth(slide.imageSize, view);
        switch (picture.state) {
        case SlideImageLoader::State::image: {
            const double widthLimit = std::min(maxWidth.value_or(content.width()), content.width());
            pictureSize = SlideGeometry::fitImage(picture.image.size(), widthLimit, boxHeight);
            break;
        }
        case SlideImageLoader::State::loading: pictureSize = QSizeF(0.05 * w, 0.05 * w); break;
        case SlideImageLoader::State::failed: pictureSize = QSizeF(std::max(0.12 * w, 80.0), 0.05 * w); break;
        case SlideImageLoader::State::none: break;
        }
    }
    const bool showPicture = picture.state != SlideImageLoader::State::none && !pictureSize.isEmpty();

    const auto drawPicture = [&](QRectF where) {
        const double radius = 0.006 * w;
        switch (picture.state) {
        case SlideImageLoader::State::image: {
            QPainterPath rounded;
            rounded.addRoundedRect(where, radius, radius);
            SoftShadow::make(rounded, 0, 0.005 * w / 2, QColor(0, 0, 0, 77)).draw(painter);
            painter.save();
            painter.setClipPath(rounded, Qt::IntersectClip);
            painter.drawImage(where, picture.image);
            painter.restore();
            break;
        }
        case SlideImageLoader::State::loading: spinner(painter, where.center(), where.height(), now); break;
        case SlideImageLoader::State::failed: {
            const double size = 0.012 * w;
            const QFont font = PixelFont::system(std::max(0.007 * w, 1.0), QFont::Normal, painter.device());
            const double textHeight = PixelFont::metrics(font, painter.device()).height();
            const double top = where.center().y() - (size + 4 + textHeight) / 2;
            SymbolPainter::draw(painter, "exclamationmark.triangle", QPointF(where.center().x(), top + size / 2),
                                size, kGrey);
            painter.setFont(font);
            painter.setPen(kGrey);
            painter.drawText(QRectF(where.left() - w, top + size + 4, where.width() + 2 * w, textHeight),
                             Qt::AlignHCenter | Qt::AlignTop, QStringLiteral("Failed to load"));
            break;
        }
        case SlideImageLoader::State::none: break;
        }
    };

    QRectF textArea = content;
    std::optional<QRectF> pictureAt;
    if (showPicture) {
        switch (slide.imagePosition) {
        case ImagePosition::top:
            pictureAt = QRectF(content.topLeft(), pictureSize);
            textArea.setTop(content.top() + pictureSize.height() + gap);
            break;
        case ImagePosition::left:
            pictureAt = QRectF(content.topLeft(), pictureSize);
            textArea.setLeft(content.left() + pictureSize.width() + gap);
            break;
        case ImagePosition::right:
            textArea.setRight(content.right() - pictureSize.width() - gap);
            pictureAt = QRectF(QPointF(content.right() - pictureSize.width(), content.top()), pictureSize);
            break;
        case ImagePosition::bottom:
        case ImagePosition::background: break;
        }
    }

    const std::vector<MarkdownElement> elements = parse(QString::fromStdString(slide.content));
    const MarkdownStyle style = styleFor(QSizeF(textArea.width(), body.height()), slide.textScale);
    const MarkdownRenderer::Colors colors{ColorConvert::from(deck.textColor), ColorConvert::from(deck.accentColor)};
    // Measured first: how far the body reaches decides how far it scrolls.
    const double textHeight = MarkdownRenderer::render(nullptr, painter.device(), textArea, elements, style, colors,
                                                       slide.textAlignment, inlineMarks);
    if (showPicture && slide.imagePosition == ImagePosition::bottom)
        pictureAt = QRectF(QPointF(content.left(), textArea.top() + textHeight + gap), pictureSize);
    double bottom = textArea.top() + textHeight;
    if (pictureAt) bottom = std::max(bottom, pictureAt->bottom());
    const double reach = std::max(0.0, bottom + pad - body.height());
    const double offset = std::isfinite(scroll) ? std::clamp(scroll, 0.0, reach) : 0.0;
    painter.translate(0, -offset);

    if (pictureAt) drawPicture(*pictureAt);
    MarkdownRenderer::render(&painter, painter.device(), textArea, elements, style, colors, slide.textAlignment,
                             inlineMarks);
    painter.restore();
    return {reach, showPicture && picture.state == SlideImageLoader::State::loading};
}

void SlidesRenderer::paintPageControl(QPainter& painter, QSizeF view, int currentIndex, int count) {
    const double w = view.width();
    const PageControlLayout layout = pageControlLayout(view, currentIndex, count, painter.device());
    painter.fillRect(layout.background, QColor(0, 0, 0, 51));

    const auto button = [&](QRectF box, const char* symbol, bool active) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 26));
        painter.drawRoundedRect(box, layout.cornerRadius, layout.cornerRadius);
        QColor color = active ? QColor(Qt::white) : kGrey;
        if (!active) color.setAlphaF(0.3f);
        SymbolPainter::draw(painter, symbol, box.center(), layout.symbolSize, color);
    };
    button(layout.previous, "chevron.left", currentIndex >= 1);
    button(layout.next, "chevron.right", currentIndex < count - 1);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 77));
    painter.drawRoundedRect(layout.counter, layout.cornerRadius, layout.cornerRadius);
    const CounterFonts fonts = counterFonts(w, painter.device());
    const QString current = QString::number(currentIndex + 1);
    const QString total = QString::number(count);
    const QFontMetricsF numbers = PixelFont::metrics(fonts.number, painter.device());
    const QFontMetricsF slash = PixelFont::metrics(fonts.slash, painter.device());
    double x = layout.counter.left() + 0.006 * w;
    const QRectF line(0, layout.counter.top(), 0, layout.counter.height());
    painter.setPen(Qt::white);
    painter.setFont(fonts.number);
    painter.drawText(QRectF(x, line.top(), numbers.horizontalAdvance(current) + 1, line.height()), Qt::AlignVCenter,
                     current);
    x += numbers.horizontalAdvance(current) + fonts.spacing;
    painter.setFont(fonts.slash);
    painter.drawText(QRectF(x, line.top(), slash.horizontalAdvance(QStringLiteral("/")) + 1, line.height()),
                     Qt::AlignVCenter, QStringLiteral("/"));
    x += slash.horizontalAdvance(QStringLiteral("/")) + fonts.spacing;
    painter.setFont(fonts.number);
    painter.drawText(QRectF(x, line.top(), numbers.horizontalAdvance(total) + 1, line.height()), Qt::AlignVCenter,
                     total);
}

}  // namespace orvane
