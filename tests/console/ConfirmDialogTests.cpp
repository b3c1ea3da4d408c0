#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/ConfirmDialog.h"

namespace orvane {
namespace confirm_dialog_tests {

TEST(ConsoleConfirmDialog, EscapeCancelsAndOnlyTheRedButtonConfirms) {
    test::ensureApplication();
    QPointer<ConfirmDialog> dialog =
        new ConfirmDialog(QStringLiteral("Delete Scene"), QStringLiteral("Sure?"), QStringLiteral("Delete"));
    QSignalSpy confirmed(dialog.data(), &ConfirmDialog::confirmed);
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog && dialog->isVisible());
    EXPECT_EQ(confirmed.count(), 0);
    // Deletes itself once answered.
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isNull(); }, 2000));

    dialog = new ConfirmDialog(QStringLiteral("Delete Scene"), QStringLiteral("Sure?"), QStringLiteral("Delete"));
    QSignalSpy again(dialog.data(), &ConfirmDialog::confirmed);
    dialog->show();
    // Return picks the default, which is Cancel.
    QTest::keyClick(dialog, Qt::Key_Return);
    EXPECT_EQ(again.count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isNull(); }, 2000));

    dialog = new ConfirmDialog(QStringLiteral("Delete Scene"), QStringLiteral("Sure?"), QStringLiteral("Delete"));
    QSignalSpy yes(dialog.data(), &ConfirmDialog::confirmed);
    dialog->show();
    QTest::mouseClick(dialog->destructiveButton(), Qt::LeftButton);
    EXPECT_EQ(yes.count(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.isNull(); }, 2000));
}

TEST(ConsoleConfirmDialog, ALongTitleAndMessageWrapInsteadOfBeingCut) {
    test::ensureApplication();
    const QString title = QStringLiteral("Delete Source 'A camera with a name far longer than the dialog is wide'");
    const QString message = QStringLiteral(
        "Are you sure you want to delete 'A camera with a name far longer than the dialog is wide'? This action "
        "cannot be undone.");
    ConfirmDialog dialog(title, message, QStringLiteral("Delete"));
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    EXPECT_EQ(dialog.windowTitle(), title);
    EXPECT_EQ(dialog.title(), title);
    EXPECT_EQ(dialog.message(), message);
    EXPECT_EQ(dialog.cancelButton()->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(dialog.destructiveButton()->accessibleName(), QStringLiteral("Delete"));
    for (QLabel* label : dialog.findChildren<QLabel*>()) {
        if (label->text() != title && label->text() != message) continue;
        SCOPED_TRACE(label->text().toStdString());
        // Everything of the text fits the label at its width: it wraps over
        // more than one line and nothing is cut off at the right or bottom.
        const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 10000),
                                                               Qt::TextWordWrap, label->text());
        EXPECT_LE(needed.width(), label->width());
        EXPECT_LE(needed.height(), label->height());
        EXPECT_GT(needed.height(), label->fontMetrics().height() * 3 / 2);
        EXPECT_LE(label->geometry().right(), dialog.width());
    }
}

}  // namespace confirm_dialog_tests
}  // namespace orvane
