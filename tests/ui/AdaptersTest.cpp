#include "qt/QtDialogs.h"
#include "qt/QtEventLoop.h"
#include "support/TempDir.h"
#include "ui/ShownView.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <thread>

namespace velmo::test {
namespace {

TEST(QtDialogs, ShowTheTextsAndGiveTheAnswer)
{
    using ports::MessageAnswer;
    using ports::MessageStyle;
    constexpr MessageStyle question = MessageStyle::WarningYesNo;
    qt::QtEventLoop loop;
    /// Presses Escape if there is no button.
    const auto answerTo = [&](MessageStyle style, QMessageBox::StandardButton pressed) {
        bool seen = false;
        loop.Post([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), QStringLiteral("<b>Really</b>\nquit?"));
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Titel ä"));
            EXPECT_EQ(box->icon(),
                      style == question ? QMessageBox::Warning : QMessageBox::Critical);
            seen = true;
            if (pressed == QMessageBox::NoButton)
                QTest::keyClick(box, Qt::Key_Escape);
            else
                QTest::mouseClick(box->button(pressed), Qt::LeftButton);
        });
        const auto answer = qt::QtDialogs().MessageBox("<b>Really</b>\nquit?", "Titel ä", style);
        EXPECT_TRUE(seen);
        return answer;
    };
    EXPECT_EQ(answerTo(MessageStyle::Critical, QMessageBox::Ok), MessageAnswer::Ok);
    EXPECT_EQ(answerTo(MessageStyle::Critical, QMessageBox::NoButton), MessageAnswer::Ok);
    EXPECT_EQ(answerTo(question, QMessageBox::Yes), MessageAnswer::Yes);
    EXPECT_EQ(answerTo(question, QMessageBox::No), MessageAnswer::No);
    EXPECT_EQ(answerTo(question, QMessageBox::NoButton), MessageAnswer::No);
}

TEST(QtDialogs, AskForFilesAndGivePathsAndLabel)
{
    const TempDir folder;
    folder.Write("a.ZFX");
    qt::QtEventLoop loop;
    const auto ask = [&](ports::FileDialogKind kind, const char* chosen) {
        loop.Post([&folder, chosen] {
            auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Load"));
            EXPECT_EQ(box->directory().path().toStdString(), folder());
            EXPECT_EQ(box->nameFilters().join(QLatin1Char('|')),
                      QStringLiteral("EQ Settings (*.zfx)|All Files (*)"));
            if (chosen == nullptr)
                return box->reject();
            box->selectFile(QString::fromUtf8(chosen));
            static_cast<QDialog*>(box)->accept();
        });
        return qt::QtDialogs().ChooseFiles(
            {.kind = kind,
             .owner = "fX",
             .title = "Load",
             .filter = "EQ Settings (*.zfx)|*.zfx|All Files (*.*)|*.*",
             .filterIndex = 2,
             .folder = folder("gone/deeper/"),
             .fileName = ""});
    };
    using enum ports::FileDialogKind;
    const ports::FileDialogAnswer opened{{folder("a.ZFX")}, "All Files (*.*)"};
    const ports::FileDialogAnswer saved{{folder("new")}, "All Files (*.*)"};
    EXPECT_EQ(ask(Open, "a.ZFX"), opened);
    EXPECT_EQ(ask(Save, "new"), saved);
    EXPECT_EQ(ask(Open, nullptr), ports::FileDialogAnswer{});
    for (const char* nowhere : {"c:\\", "", "/gone"})
        EXPECT_TRUE(QDir(QString::fromStdString(qt::FolderToOpenIn(nowhere))).exists()) << nowhere;
}

TEST(QtEventLoop, PostedHandlersComeLaterInOrderAndMayFail)
{
    qt::QtEventLoop loop;
    std::string order;
    std::thread([&] { loop.Post([&] { order += 'a'; }); }).join();
    loop.Post([] { throw std::runtime_error("posted"); });
    loop.Post([&] { order += 'b'; });
    loop.Quit(3);
    EXPECT_EQ(order, "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(QApplication::exec(), 3);
    EXPECT_EQ(order, "ab");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "velmo: posted\n");
}

} // namespace
} // namespace velmo::test
