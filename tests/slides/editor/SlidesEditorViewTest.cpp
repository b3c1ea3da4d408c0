#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

#include "slides/SlideImageLoader.h"
#include "slides/editor/SlideEditorContentView.h"
#include "slides/editor/SlideListItemView.h"
#include "slides/editor/SlidePreviewView.h"
#include "slides/editor/SlidesEditorView.h"
#include "support/StdoutCapture.h"

namespace orvane {
namespace slides_editor_view_test {

void ensureApplication() {
    if (qApp) return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "slides_editor_tests";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
}

SlidesResource threeSlides() {
    SlidesResource deck = SlidesResource::makeNew("Deck");
    deck.slides.clear();
    for (int i = 0; i < 3; ++i) {
        Slide slide;
        slide.title = "S" + std::to_string(i + 1);
        slide.content = "# Page " + std::to_string(i + 1);
        slide.order = i;
        deck.slides.push_back(slide);
    }
    return deck;
}

template <typename T>
T* named(QWidget* root, const QString& name) {
    for (auto* widget : root->findChildren<T*>())
        if (widget->accessibleName() == name) return widget;
    return nullptr;
}

struct Editor {
    Editor() : loader((ensureApplication(), nullptr)), view(threeSlides(), loader) {}
    SlideImageLoader loader;
    SlidesEditorView view;
};

TEST(SlidesEditorView, OpensAtItsSizeWithTheFirstSlideSelected) {
    Editor e;
    EXPECT_EQ(e.view.windowTitle(), QStringLiteral("Slides Editor"));
    EXPECT_EQ(e.view.size(), QSize(1200, 700));
    ASSERT_TRUE(e.view.selectedSlideId().has_value());
    EXPECT_EQ(*e.view.selectedSlideId(), e.view.deck().slides[0].id);
    EXPECT_EQ(e.view.content()->titleField()->text(), QStringLiteral("S1"));
    EXPECT_EQ(e.view.findChildren<SlideListItemView*>().size(), 3);
}

TEST(SlidesEditorView, TypingReachesTheDeckHalfASecondLater) {
    Editor e;
    e.view.content()->textEditor()->setPlainText(QStringLiteral("# Changed"));
    EXPECT_EQ(e.view.deck().slides[0].content, "# Page 1");  // not on every key
    EXPECT_TRUE(e.view.content()->hasPendingSync());
    test::StdoutCapture log;
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromStdString(e.view.deck().slides[0].content), QStringLiteral("# Changed"),
                              3000);
    EXPECT_NE(log.text().find("🔄 Synced local changes to binding\n"), std::string::npos);
}

TEST(SlidesEditorView, TypingAndClosingWithinHalfASecondKeepsTheLastCharacters) {
    Editor e;
    e.view.show();
    e.view.content()->textEditor()->setFocus();
    e.view.content()->textEditor()->moveCursor(QTextCursor::End);
    QTest::keyClicks(e.view.content()->textEditor(), QStringLiteral("xyz"));
    EXPECT_TRUE(e.view.content()->hasPendingSync());
    e.view.accept();  // the close button
    EXPECT_EQ(e.view.deck().slides[0].content, "# Page 1xyz");
}

TEST(SlidesEditorView, AddSelectsTheNewSlideAndBumpsTheList) {
    Editor e;
    const int before = e.view.listRefreshTrigger();
    named<QToolButton>(&e.view, QStringLiteral("Add Slide"))->click();
    ASSERT_EQ(e.view.deck().slides.size(), 4u);
    EXPECT_EQ(e.view.deck().slides[3].title, "Slide 4");
    EXPECT_EQ(*e.view.selectedSlideId(), e.view.deck().slides[3].id);
    EXPECT_EQ(e.view.content()->titleField()->text(), QStringLiteral("Slide 4"));
    EXPECT_EQ(e.view.listRefreshTrigger(), before + 1);
}

TEST(SlidesEditorView, DeleteAsksAndCancelKeepsTheSlide) {
    Editor e;
    bool asked = false;
    e.view.setDeleteConfirmation([&] {
        asked = true;
        return false;
    });
    auto rows = e.view.findChildren<SlideListItemView*>();
    ASSERT_EQ(rows.size(), 3);
    rows[1]->deleteButton()->click();
    EXPECT_TRUE(asked);
    EXPECT_EQ(e.view.deck().slides.size(), 3u);
    e.view.setDeleteConfirmation([] { return true; });
    e.view.selectSlide(e.view.deck().slides[1].id);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    rows = e.view.findChildren<SlideListItemView*>();
    rows[1]->deleteButton()->click();
    ASSERT_EQ(e.view.deck().slides.size(), 2u);
    EXPECT_EQ(*e.view.selectedSlideId(), e.view.deck().slides[0].id);
    EXPECT_EQ(e.view.deck().slides[1].order, 1);
}

TEST(SlidesEditorView, RowsHaveNoMoveButtonPastTheEnds) {
    Editor e;
    const auto rows = e.view.findChildren<SlideListItemView*>();
    EXPECT_EQ(rows[0]->moveUpButton(), nullptr);
    EXPECT_NE(rows[0]->moveDownButton(), nullptr);
    EXPECT_NE(rows[2]->moveUpButton(), nullptr);
    EXPECT_EQ(rows[2]->moveDownButton(), nullptr);
    rows[2]->moveUpButton()->click();
    EXPECT_EQ(e.view.deck().slides[1].title, "S3");
    EXPECT_EQ(e.view.deck().slides[1].order, 1);
}

TEST(SlidesEditorView, EmptyDeckOffersTheFirstSlide) {
    ensureApplication();
    SlideImageLoader loader;
    SlidesResource deck = SlidesResource::makeNew("Empty");
    deck.slides.clear();
    SlidesEditorView view(deck, loader);
    EXPECT_FALSE(view.selectedSlideId().has_value());
    QPushButton* first = named<QPushButton>(&view, QStringLiteral("Create First Slide"));
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisibleTo(&view));
    first->click();
    EXPECT_EQ(view.deck().slides.size(), 1u);
    EXPECT_EQ(view.deck().slides[0].title, "Slide 1");
}

TEST(SlidesEditorView, BoldButtonAppendsAtTheEndWhateverTheCursor) {
    Editor e;
    e.view.content()->textEditor()->setPlainText(QStringLiteral("x"));
    e.view.content()->flushPendingSync();
    auto* bold = named<QToolButton>(&e.view, QStringLiteral("Bold"));
    ASSERT_NE(bold, nullptr);
    QTextCursor cursor = e.view.content()->textEditor()->textCursor();
    cursor.setPosition(0);
    e.view.content()->textEditor()->setTextCursor(cursor);
    bold->click();
    e.view.content()->flushPendingSync();
    EXPECT_EQ(e.view.deck().slides[0].content, "x\n****");
}

TEST(SlidesEditorView, SettingsWriteTheSlide) {
    Editor e;
    named<QPushButton>(&e.view, QStringLiteral("Center"))->click();
    named<QPushButton>(&e.view, QStringLiteral("Navy"))->click();
    e.view.content()->flushPendingSync();
    EXPECT_EQ(e.view.deck().slides[0].textAlignment, TextAlignment::center);
    EXPECT_EQ(e.view.deck().slides[0].backgroundColor, (CodableColor{0.1, 0.2, 0.4, 1}));
}

TEST(SlidesEditorView, PreviewPaintsTheSlideGroundAndCanBeHidden) {
    Editor e;
    named<QPushButton>(&e.view, QStringLiteral("White"))->click();
    e.view.show();
    auto* preview = e.view.findChild<SlidePreviewView*>();
    ASSERT_NE(preview, nullptr);
    QApplication::processEvents();
    const QImage picture = preview->grab().toImage();
    const QPointF corner = preview->slideBox().bottomRight() - QPointF(4, 4);
    EXPECT_EQ(picture.pixelColor(corner.toPoint()), QColor(Qt::white));
    named<QPushButton>(&e.view, QStringLiteral("Hide Preview"))->click();
    EXPECT_FALSE(e.view.content()->showsPreview());
    EXPECT_NE(named<QPushButton>(&e.view, QStringLiteral("Show Preview")), nullptr);
}

TEST(SlidesEditorView, ImageFromUrlAndRemove) {
    Editor e;
    e.view.content()->addImageFromUrl(QStringLiteral("http://127.0.0.1:9/none.png"));
    e.view.content()->flushPendingSync();
    EXPECT_EQ(e.view.deck().slides[0].imageUrl, std::optional<std::string>("http://127.0.0.1:9/none.png"));
    named<QPushButton>(&e.view, QStringLiteral("Remove"))->click();
    e.view.content()->flushPendingSync();
    EXPECT_FALSE(e.view.deck().slides[0].imageUrl.has_value());
}

TEST(SlidesEditorView, AlignmentChosenThroughTheAccessibleToggleLikeAClick) {
    Editor e;
    QPushButton* center = named<QPushButton>(&e.view, QStringLiteral("Center"));
    ASSERT_NE(center, nullptr);
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(center);
    ASSERT_NE(access, nullptr);
    ASSERT_NE(access->actionInterface(), nullptr);
    const QStringList actions = access->actionInterface()->actionNames();
    ASSERT_FALSE(actions.isEmpty());
    // What an assistive tool offers first for this button.
    access->actionInterface()->doAction(actions.front());
    EXPECT_TRUE(QTest::qWaitFor([&] { return e.view.content()->localSlide().textAlignment == TextAlignment::center; }, 3000));
    e.view.content()->flushPendingSync();
    EXPECT_EQ(e.view.deck().slides[0].textAlignment, TextAlignment::center);
    // Only the chosen one stays lit, and toggling it again keeps it.
    EXPECT_TRUE(center->isChecked());
    EXPECT_FALSE(named<QPushButton>(&e.view, QStringLiteral("Left"))->isChecked());
    access->actionInterface()->doAction(actions.front());
    QApplication::processEvents();
    EXPECT_TRUE(center->isChecked());
    EXPECT_EQ(e.view.content()->localSlide().textAlignment, TextAlignment::center);
}

TEST(SlidesEditorView, UrlPromptHasALabelledField) {
    Editor e;
    e.view.show();
    QString title, message;
    bool labelled = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog) return;
        title = dialog->windowTitle();
        for (QLabel* label : dialog->findChildren<QLabel*>()) {
            if (label->text() == QStringLiteral("Enter the URL of the image")) message = label->text();
            if (label->text() == QStringLiteral("Image URL") && label->isVisibleTo(dialog) && label->buddy() &&
                label->buddy()->accessibleName() == QStringLiteral("Image URL"))
                labelled = true;
        }
        auto* field = named<QLineEdit>(dialog, QStringLiteral("Image URL"));
        if (field) field->setText(QStringLiteral("file:///nonexistent/picture.png"));
        if (auto* add = named<QPushButton>(dialog, QStringLiteral("Add")))
            add->click();
        else
            dialog->reject();
    });
    named<QPushButton>(&e.view, QStringLiteral("From URL"))->click();
    EXPECT_EQ(title, QStringLiteral("Add Image from URL"));
    EXPECT_EQ(message, QStringLiteral("Enter the URL of the image"));
    EXPECT_TRUE(labelled);
    EXPECT_EQ(e.view.content()->localSlide().imageUrl, std::optional<std::string>("file:///nonexistent/picture.png"));
}

TEST(SlidesEditorView, AnImageThatCannotLoadSaysSoInWords) {
    Editor e;
    e.view.show();
    e.view.content()->addImageFromUrl(QStringLiteral("file:///nonexistent/picture.png"));
    const auto errorShown = [&] {
        for (QLabel* label : e.view.findChildren<QLabel*>())
            if (label->text() == QStringLiteral("Error loading") && label->isVisible()) return true;
        return false;
    };
    EXPECT_TRUE(QTest::qWaitFor(errorShown, 5000));
    named<QPushButton>(&e.view, QStringLiteral("Remove"))->click();
    EXPECT_FALSE(errorShown());
}

}  // namespace
}  // namespace orvane
