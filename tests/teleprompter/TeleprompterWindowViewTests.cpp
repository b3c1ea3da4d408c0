#include <QAbstractButton>
#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <gtest/gtest.h>

#include "TeleprompterTestSupport.h"
#include "teleprompter/ScriptTextView.h"
#include "teleprompter/TeleprompterWindow.h"
#include "teleprompter/TeleprompterWindowView.h"

namespace orvane {
namespace teleprompter_window_view_tests {

using test::LogCapture;
using test::TeleprompterFixture;

// The control with this accessible name that is shown now.
QAbstractButton* control(QWidget* root, const QString& name) {
    for (auto* button : root->findChildren<QAbstractButton*>())
        if (button->accessibleName() == name && button->isVisibleTo(root)) return button;
    return nullptr;
}

struct OpenWindow : TeleprompterFixture {
    explicit OpenWindow(bool withSettings = true) : TeleprompterFixture(withSettings) {
        manager->openTeleprompterWindow();
        if (withSettings) {
            window = static_cast<TeleprompterWindow*>(manager->teleprompterWindow());
            view = window->view();
        }
    }
    TeleprompterWindow* window = nullptr;
    TeleprompterWindowView* view = nullptr;
};

TEST(TeleprompterWindowView, ShowsTheDocumentsTextInReadingMode) {
    OpenWindow w;
    EXPECT_FALSE(w.view->isEditing());
    EXPECT_EQ(w.view->editableText(), QStringLiteral("Good morning.\nToday: three things."));
    EXPECT_EQ(w.view->scriptView()->shownText(), w.view->editableText());
    EXPECT_EQ(w.view->scriptView()->objectName(), QStringLiteral("teleprompterText"));
    for (const char* name : {"Edit Text in Real-Time - Click to type directly in the teleprompter", "Start Scrolling",
                             "Reset to Top", "Close Window"})
        EXPECT_NE(control(w.view, QString::fromUtf8(name)), nullptr) << name;
    EXPECT_EQ(control(w.view, QStringLiteral("Save Changes")), nullptr);
}

TEST(TeleprompterWindowView, PaintsTheScriptOnItsOwnGroundAndMovesIt) {
    OpenWindow w;
    TeleprompterConfig settings = w.settings();
    settings.backgroundColor = {0, 0, 1, 1};
    settings.opacity = 1.0;
    settings.textColor = {1, 1, 0, 1};
    settings.fontSize = 40;
    settings.text = "████████████";
    w.setSettings(settings);
    w.window->resize(600, 300);
    QApplication::processEvents();
    QImage before = w.view->grab().toImage();
    EXPECT_EQ(QColor(before.pixel(5, before.height() - 5)), QColor(0, 0, 255));
    // Yellow text near the top, where the first line starts.
    auto yellowRows = [](const QImage& image) {
        int first = -1;
        for (int y = 0; y < image.height() && first < 0; ++y)
            for (int x = 0; x < image.width() / 2; ++x) {
                const QColor c(image.pixel(x, y));
                if (c.red() > 200 && c.green() > 200 && c.blue() < 60) {
                    first = y;
                    break;
                }
            }
        return first;
    };
    const int top = yellowRows(before);
    ASSERT_GE(top, 0);
    w.manager->setScrollOffset(12);
    QApplication::processEvents();
    const int moved = yellowRows(w.view->grab().toImage());
    EXPECT_NEAR(moved, top - 12, 1);
}

TEST(TeleprompterWindowView, TheTextNeverRunsUnderTheControls) {
    OpenWindow w;
    TeleprompterConfig settings = w.settings();
    settings.backgroundColor = {0, 0, 1, 1};
    settings.opacity = 1.0;
    settings.textColor = {1, 1, 0, 1};
    settings.fontSize = 40;
    settings.text = "████████████████████████████████████████████████\n████████████████████████████████████████";
    w.setSettings(settings);
    w.window->resize(600, 300);
    QApplication::processEvents();
    const QRect controls = w.view->controls()->geometry();
    ASSERT_FALSE(controls.isEmpty());
    EXPECT_FALSE(w.view->textArea().intersects(controls));
    EXPECT_GE(w.view->textArea().top(), controls.bottom());

    // No yellow under the buttons' row, at rest or scrolled part-way up.
    const auto yellowInRow = [&](const QImage& image) {
        int count = 0;
        for (int y = controls.top(); y <= controls.bottom(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c(image.pixel(x, y));
                if (c.red() > 200 && c.green() > 200 && c.blue() < 60) ++count;
            }
        return count;
    };
    for (double offset : {0.0, 20.0, 45.0}) {
        w.manager->setScrollOffset(offset);
        QApplication::processEvents();
        const QImage shot = w.view->grab().toImage();
        EXPECT_EQ(yellowInRow(shot), 0) << "scrolled by " << offset;
    }
    // The text is there all the same, just below the row.
    w.manager->setScrollOffset(0);
    QApplication::processEvents();
    const QImage shot = w.view->grab().toImage();
    int below = 0;
    for (int x = 0; x < shot.width(); ++x) {
        const QColor c(shot.pixel(x, w.view->textArea().top() + 40));
        if (c.red() > 200 && c.green() > 200 && c.blue() < 60) ++below;
    }
    EXPECT_GT(below, 20);
}

TEST(TeleprompterWindowView, PlaceholderIsDisplayOnly) {
    OpenWindow w;
    TeleprompterConfig settings = w.settings();
    settings.text.clear();
    w.setSettings(settings);
    EXPECT_TRUE(w.view->editableText().isEmpty());
    EXPECT_EQ(w.view->scriptView()->shownText(),
              QString::fromUtf8(TeleprompterWindowView::placeholderText));
    control(w.view, QStringLiteral("Edit Text in Real-Time - Click to type directly in the teleprompter"))->click();
    EXPECT_TRUE(w.view->isEditing());
    EXPECT_TRUE(w.view->editor()->toPlainText().isEmpty());
}

TEST(TeleprompterWindowView, EditingStopsScrollingAndFocusesTheEditor) {
    OpenWindow w;
    w.manager->startScrolling();
    w.tick(30);
    control(w.view, QStringLiteral("Edit Text in Real-Time - Click to type directly in the teleprompter"))->click();
    EXPECT_FALSE(w.manager->isScrolling());
    EXPECT_DOUBLE_EQ(w.view->textDisplacement(), 0.0);  // the offset is 0 while editing
    EXPECT_NE(control(w.view, QStringLiteral("Save Changes")), nullptr);
    EXPECT_NE(control(w.view, QStringLiteral("Cancel")), nullptr);
    w.window->show();
    w.window->activateWindow();
    QTRY_VERIFY_WITH_TIMEOUT(w.view->editor()->hasFocus(), 2000);
    // Leaving editing brings the reading position back, and does not scroll.
    control(w.view, QStringLiteral("Cancel"))->click();
    EXPECT_DOUBLE_EQ(w.view->textDisplacement(), 15.0);
    EXPECT_FALSE(w.manager->isScrolling());
}

TEST(TeleprompterWindowView, SaveStoresTheTextInThePresetFile) {
    OpenWindow w;
    control(w.view, QStringLiteral("Edit Text in Real-Time - Click to type directly in the teleprompter"))->click();
    w.view->editor()->setPlainText(QStringLiteral("New script"));
    LogCapture log;
    control(w.view, QStringLiteral("Save Changes"))->click();
    EXPECT_NE(log.text().find("✅ Teleprompter text saved\n"), std::string::npos);
    EXPECT_FALSE(w.view->isEditing());
    EXPECT_EQ(w.settings().text, "New script");
    EXPECT_EQ(w.presetOnDisk().teleprompter->text, "New script");
}

TEST(TeleprompterWindowView, SavingAnEmptiedEditorBringsThePlaceholderBack) {
    OpenWindow w;
    control(w.view, QStringLiteral("Edit Text in Real-Time - Click to type directly in the teleprompter"))->click();
    w.view->editor()->clear();
    control(w.view, QStringLiteral("Save Changes"))->click();
    EXPECT_EQ(w.presetOnDisk().teleprompter->text, "");
    EXPECT_EQ(w.view->scriptView()->shownText(),
              QString::fromUtf8(TeleprompterWindowView::placeholderText));
}

TEST(TeleprompterWindowView, CancelRestoresTheDocumentsTextEvenIfChangedElsewhere) {
    OpenWindow w;
    control(w.view, QStringLiteral("Edit Text in Real-Time - Click to type directly in the teleprompter"))->click();
    w.view->editor()->setPlainText(QStringLiteral("typed but not kept"));
    TeleprompterConfig settings = w.settings();
    settings.text = "changed in the settings sheet";
    w.setSettings(settings);
    // The typing is not overwritten meanwhile.
    EXPECT_EQ(w.view->editor()->toPlainText(), QStringLiteral("typed but not kept"));
    EXPECT_EQ(w.view->editableText(), QStringLiteral("typed but not kept"));
    control(w.view, QStringLiteral("Cancel"))->click();
    EXPECT_EQ(w.view->editableText(), QStringLiteral("changed in the settings sheet"));
    EXPECT_EQ(w.settings().text, "changed in the settings sheet");
}

TEST(TeleprompterWindowView, TextFollowsTheDocumentWhileReading) {
    OpenWindow w;
    TeleprompterConfig settings = w.settings();
    settings.text = "from elsewhere";
    w.setSettings(settings);
    EXPECT_EQ(w.view->scriptView()->shownText(), QStringLiteral("from elsewhere"));
}

TEST(TeleprompterWindowView, PlayPauseResetAndClose) {
    OpenWindow w;
    QAbstractButton* play = control(w.view, QStringLiteral("Start Scrolling"));
    ASSERT_NE(play, nullptr);
    play->click();
    EXPECT_TRUE(w.manager->isScrolling());
    ASSERT_NE(control(w.view, QStringLiteral("Pause Scrolling")), nullptr);
    w.tick(20);
    LogCapture log;
    control(w.view, QStringLiteral("Reset to Top"))->click();
    EXPECT_EQ(log.text(), "📜 Teleprompter scroll reset\n");
    EXPECT_DOUBLE_EQ(w.manager->scrollOffset(), 0.0);
    EXPECT_TRUE(w.manager->isScrolling());  // goes on from the top
    control(w.view, QStringLiteral("Pause Scrolling"))->click();
    EXPECT_FALSE(w.manager->isScrolling());
    control(w.view, QStringLiteral("Close Window"))->click();
    EXPECT_FALSE(w.manager->isTeleprompterWindowOpen());
}

TEST(TeleprompterWindowView, WithoutSettingsShowsTheEmptyScreen) {
    TeleprompterFixture f;
    f.manager->openTeleprompterWindow();
    auto* window = static_cast<TeleprompterWindow*>(f.manager->teleprompterWindow());
    window->resize(600, 300);
    Preset preset = *f.session->currentPreset();
    preset.teleprompter.reset();  // removed while the window is open
    f.session->setCurrentPreset(preset);
    EXPECT_FALSE(window->view()->hasSettings());
    const QImage image = window->view()->grab().toImage();
    EXPECT_EQ(QColor(image.pixel(3, 3)), QColor(Qt::black));
    // Some white text lies in the middle band.
    int bright = 0;
    for (int y = image.height() / 2; y < image.height() / 2 + 60; ++y)
        for (int x = 0; x < image.width(); ++x)
            if (QColor(image.pixel(x, y)).lightness() > 150) ++bright;
    EXPECT_GT(bright, 50);
}

}  // namespace
}  // namespace orvane
