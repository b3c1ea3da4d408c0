#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "slides/editor/SlideDeckEdits.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace slide_deck_edits_test {

SlidesResource deckOf(int count) {
    SlidesResource deck;
    for (int i = 0; i < count; ++i) {
        Slide slide;
        slide.title = "S" + std::to_string(i + 1);
        slide.order = i;
        deck.slides.push_back(slide);
    }
    return deck;
}

TEST(SlideDeckEdits, NewSlideInADeckOfThreeIsSlideFourWithOrderThree) {
    SlidesResource deck = deckOf(3);
    test::StdoutCapture log;
    const Uuid id = SlideDeckEdits::addNewSlide(deck);
    EXPECT_EQ(log.text(), "➕ New slide added, total slides: 4\n");
    ASSERT_EQ(deck.slides.size(), 4u);
    const Slide& added = deck.slides.back();
    EXPECT_EQ(added.id, id);
    EXPECT_EQ(added.title, "Slide 4");
    EXPECT_EQ(added.order, 3);
    EXPECT_EQ(added.content, "# New Slide\n\nStart typing your content here...");
    EXPECT_FALSE(added.imageUrl.has_value());
    EXPECT_EQ(added.imagePosition, ImagePosition::top);
    EXPECT_EQ(added.imageSize, ImageSize::medium);
    EXPECT_EQ(added.textScale, 1.0);
    EXPECT_EQ(added.textAlignment, TextAlignment::leading);
    EXPECT_EQ(added.backgroundColor, (CodableColor{0.1, 0.1, 0.12, 1}));
}

TEST(SlideDeckEdits, DeletingTheSelectedSecondOfThreeSelectsTheFirstAndRenumbers) {
    SlidesResource deck = deckOf(3);
    std::optional<Uuid> selected = deck.slides[1].id;
    test::StdoutCapture log;
    SlideDeckEdits::deleteSlide(deck, deck.slides[1].id, selected);
    EXPECT_EQ(log.text(), "🗑️ Slide deleted, remaining slides: 2\n");
    ASSERT_EQ(deck.slides.size(), 2u);
    EXPECT_EQ(deck.slides[0].order, 0);
    EXPECT_EQ(deck.slides[1].order, 1);
    EXPECT_EQ(deck.slides[1].title, "S3");
    EXPECT_EQ(selected, deck.slides[0].id);
}

TEST(SlideDeckEdits, DeletingAnUnselectedSlideKeepsTheSelection) {
    SlidesResource deck = deckOf(3);
    std::optional<Uuid> selected = deck.slides[2].id;
    SlideDeckEdits::deleteSlide(deck, deck.slides[0].id, selected);
    EXPECT_EQ(selected, deck.slides[1].id);
    EXPECT_EQ(deck.slides[1].title, "S3");
}

TEST(SlideDeckEdits, DeletingTheLastSlideClearsTheSelection) {
    SlidesResource deck = deckOf(1);
    std::optional<Uuid> selected = deck.slides[0].id;
    SlideDeckEdits::deleteSlide(deck, deck.slides[0].id, selected);
    EXPECT_TRUE(deck.slides.empty());
    EXPECT_FALSE(selected.has_value());
}

TEST(SlideDeckEdits, MovingUpRenumbersToMatchTheArray) {
    SlidesResource deck = deckOf(3);
    SlideDeckEdits::moveSlide(deck, 2, 1);
    EXPECT_EQ(deck.slides[0].title, "S1");
    EXPECT_EQ(deck.slides[1].title, "S3");
    EXPECT_EQ(deck.slides[2].title, "S2");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(deck.slides[static_cast<size_t>(i)].order, i);
    SlideDeckEdits::moveSlide(deck, 0, 5);  // out of range: nothing
    EXPECT_EQ(deck.slides[0].title, "S1");
}

TEST(SlideDeckEdits, BoldOnXAppendsALineFeedAndFourStars) {
    const auto& buttons = markdownInsertions();
    ASSERT_EQ(buttons.size(), 10u);
    EXPECT_STREQ(buttons[0].tooltip, "Bold");
    EXPECT_EQ(buttons[0].appendTo("x"), "x\n****");
}

TEST(SlideDeckEdits, EveryToolbarInsertionAppendsItsMarks) {
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"Bold", "a\n****"},       {"Italic", "a\n**"},        {"Strikethrough", "a\n~~~~"},
        {"Heading 1", "a\n# "},    {"Heading 2", "a\n## "},    {"Heading 3", "a\n### "},
        {"Bullet List", "a\n- "},  {"Numbered List", "a\n1. "}, {"Link", "a\n[](url)"},
        {"Code", "a\n``"}};
    const auto& buttons = markdownInsertions();
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(buttons[i].tooltip, expected[i].first);
        EXPECT_EQ(buttons[i].appendTo("a"), expected[i].second) << expected[i].first;
    }
}

TEST(SlideDeckEdits, BackgroundPresetsInTheirOrder) {
    const auto& presets = backgroundPresets();
    ASSERT_EQ(presets.size(), 6u);
    const std::vector<std::string> names = {"Dark Blue", "Black", "White", "Dark Gray", "Navy", "Purple"};
    for (size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(presets[i].name, names[i]);
        EXPECT_EQ(presets[i].color.alpha, 1.0);
    }
    EXPECT_EQ(presets[4].color, (CodableColor{0.1, 0.2, 0.4, 1}));
}

TEST(SlideDeckEdits, TwoImagesWithOneFileNameOverwriteEachOther) {
    QTemporaryDir sources, temporary;
    QDir(sources.path()).mkdir(QStringLiteral("a"));
    QDir(sources.path()).mkdir(QStringLiteral("b"));
    const QString first = sources.filePath(QStringLiteral("a/logo.png"));
    const QString second = sources.filePath(QStringLiteral("b/logo.png"));
    QImage red(8, 8, QImage::Format_RGB32);
    red.fill(Qt::red);
    red.save(first);
    QImage blue(8, 8, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    blue.save(second);

    test::StdoutCapture log;
    const auto one = importSlideImage(first.toStdString(), temporary.path().toStdString());
    const auto two = importSlideImage(second.toStdString(), temporary.path().toStdString());
    ASSERT_TRUE(one && two);
    EXPECT_EQ(*one, *two);
    EXPECT_NE(log.text().find("📸 Image copied to: " + *one + "\n"), std::string::npos);
    EXPECT_EQ(QImage(QString::fromStdString(*one)).pixelColor(2, 2), QColor(Qt::blue));
}

TEST(SlideDeckEdits, AMissingImageIsNotCopiedAndSaysWhy) {
    QTemporaryDir temporary;
    test::StdoutCapture log;
    EXPECT_FALSE(importSlideImage("/nonexistent/picture.png", temporary.path().toStdString()).has_value());
    EXPECT_EQ(log.text().rfind("Error copying image: ", 0), 0u);
}

}  // namespace
}  // namespace orvane
