#include <QApplication>
#include <QPaintEngine>
#include <QPaintDevice>
#include <QTextItem>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "slides/SlideImageLoader.h"
#include "slides/editor/SlidePreviewView.h"

namespace orvane {
namespace slide_preview_reader_test {

void ensureApplication() {
    if (qApp) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "slides_editor_tests";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

// One piece of text as a painter drew it.
struct DrawnText {
    QString text;
    double pointSize;
};

// A paint engine that draws nothing and writes down every piece of text
// handed to it, with its font.
class TextRecordingEngine : public QPaintEngine {
public:
    TextRecordingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawPath(const QPainterPath&) override {}
    void drawRects(const QRectF*, int) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {}
    void drawTextItem(const QPointF&, const QTextItem& item) override {
        drawn.push_back({item.text(), item.font().pointSizeF()});
    }
    Type type() const override { return QPaintEngine::User; }

    std::vector<DrawnText> drawn;
};

class TextRecorder : public QPaintDevice {
public:
    explicit TextRecorder(QSize size) : size_(size) {}
    QPaintEngine* paintEngine() const override { return &engine_; }
    const std::vector<DrawnText>& drawn() const { return engine_.drawn; }
    const DrawnText* find(const QString& text) const {
        for (const DrawnText& d : engine_.drawn)
            if (d.text == text) return &d;
        return nullptr;
    }

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth: return size_.width();
        case PdmHeight: return size_.height();
        case PdmWidthMM: return size_.width() * 254 / 960;
        case PdmHeightMM: return size_.height() * 254 / 960;
        case PdmNumColors: return INT_MAX;
        case PdmDepth: return 32;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY: return 96;
        case PdmDevicePixelRatio: return 1;
        case PdmDevicePixelRatioScaled: return int(QPaintDevice::devicePixelRatioFScale());
        default: return 0;
        }
    }

private:
    QSize size_;
    mutable TextRecordingEngine engine_;
};

QString describe(const std::vector<DrawnText>& drawn) {
    QStringList parts;
    for (const DrawnText& d : drawn) parts << QStringLiteral("'%1' %2pt").arg(d.text).arg(d.pointSize);
    return parts.join(QStringLiteral(", "));
}

// What the preview draws for a slide, as pieces of text.
std::unique_ptr<TextRecorder> previewTexts(const std::string& content) {
    ensureApplication();
    SlideImageLoader loader;
    SlidesResource deck = SlidesResource::makeNew("Deck");
    Slide slide = deck.slides.front();
    slide.content = content;
    SlidePreviewView preview(loader);
    preview.resize(480, 300);
    preview.show(deck, slide);
    auto recorder = std::make_unique<TextRecorder>(preview.size());
    preview.render(recorder.get());
    return recorder;
}

TEST(SlidePreviewReader, FencesDividersAndFourthLevelHeadingsStayRawText) {
    const auto drawn = previewTexts("```\nint x = 1;\n```\n---\n#### Small print\nplain line");
    const QString seen = describe(drawn->drawn());
    // The editor's reader has no code blocks, dividers or fourth-level
    // headings: each of those lines is a paragraph showing its marks.
    EXPECT_NE(drawn->find(QStringLiteral("```")), nullptr) << seen.toStdString();
    EXPECT_NE(drawn->find(QStringLiteral("int x = 1;")), nullptr) << seen.toStdString();
    EXPECT_NE(drawn->find(QStringLiteral("---")), nullptr) << seen.toStdString();
    EXPECT_NE(drawn->find(QStringLiteral("#### Small print")), nullptr) << seen.toStdString();
    ASSERT_NE(drawn->find(QStringLiteral("plain line")), nullptr) << seen.toStdString();
    // All of them at the paragraph's size.
    const double paragraph = drawn->find(QStringLiteral("plain line"))->pointSize;
    for (const char* line : {"```", "int x = 1;", "---", "#### Small print"}) {
        if (const DrawnText* d = drawn->find(QString::fromUtf8(line))) {
            EXPECT_DOUBLE_EQ(d->pointSize, paragraph) << line;
        }
    }
}

TEST(SlidePreviewReader, HeadingsKeepThePreviewProportions) {
    // The preview's sizes: a first-level heading is 32 to a paragraph's 14
    // (the stage's are 48 to 20).
    const auto drawn = previewTexts("# Big\nplain");
    const QString seen = describe(drawn->drawn());
    const DrawnText* heading = drawn->find(QStringLiteral("Big"));
    const DrawnText* paragraph = drawn->find(QStringLiteral("plain"));
    ASSERT_NE(heading, nullptr) << seen.toStdString();
    ASSERT_NE(paragraph, nullptr) << seen.toStdString();
    EXPECT_NEAR(heading->pointSize / paragraph->pointSize, 32.0 / 14.0, 0.01) << seen.toStdString();
}

TEST(SlidePreviewReader, StarsAreRemovedButBackticksStay) {
    const auto drawn = previewTexts("some **bold** and `code`");
    EXPECT_NE(drawn->find(QStringLiteral("some bold and `code`")), nullptr) << describe(drawn->drawn()).toStdString();
}

}  // namespace slide_preview_reader_test
}  // namespace orvane
