#include "qt/QtDialogs.h"
#include "qt/QtEventLoop.h"
#include "qt/QtFdWatcher.h"
#include "qt/QtTimers.h"
#include "qt/SignalWatcher.h"
#include "support/TempDir.h"
#include "ui/ShownView.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include <unistd.h>

namespace velmo::test {
namespace {

TEST(QtTimers, TickNeverBeforeTheirTimeUntilStoppedOrDestroyed)
{
    qt::QtTimers timers;
    int ticks = 0;
    QElapsedTimer clock;
    const auto ticker = timers.Create(ports::TimerPrecision::Precise, [&] { ++ticks; });
    clock.start();
    ticker->Start(10);
    ASSERT_TRUE(WaitUntil([&] { return ticks == 3; }));
    EXPECT_GE(clock.elapsed(), 29);
    ticker->Stop();
    std::unique_ptr<ports::Timers::Ticker> later;
    bool ended = false;
    later = timers.Create(ports::TimerPrecision::Coarse, [&] {
        later.reset();
        ended = true; // the tick outlives its ticker
    });
    later->Start(30);
    ASSERT_TRUE(WaitUntil([&] { return ended; }));
    EXPECT_EQ(ticks, 3);
}

TEST(QtDialogs, ShowTheTextsAndGiveTheAnswer)
{
    using ports::MessageAnswer;
    using ports::MessageStyle;
    qt::QtEventLoop loop;
    /// Pressed is Escape if there is no button.
    const auto expect = [&](MessageStyle style,
                            QMessageBox::StandardButton pressed,
                            MessageAnswer answer,
                            QMessageBox::Icon icon) {
        bool seen = false;
        loop.Post([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), QStringLiteral("<b>Really</b>\nquit?"));
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Titel \u00E4"));
            EXPECT_EQ(box->icon(), icon);
            seen = true;
            if (pressed == QMessageBox::NoButton)
                QTest::keyClick(box, Qt::Key_Escape);
            else
                QTest::mouseClick(box->button(pressed), Qt::LeftButton);
        });
        EXPECT_EQ(qt::QtDialogs().MessageBox("<b>Really</b>\nquit?", "Titel \xC3\xA4", style),
                  answer);
        EXPECT_TRUE(seen);
    };
    const MessageStyle question = MessageStyle::WarningYesNo;
    expect(MessageStyle::Critical, QMessageBox::Ok, MessageAnswer::Ok, QMessageBox::Critical);
    expect(MessageStyle::Critical, QMessageBox::NoButton, MessageAnswer::Ok, QMessageBox::Critical);
    expect(question, QMessageBox::Yes, MessageAnswer::Yes, QMessageBox::Warning);
    expect(question, QMessageBox::No, MessageAnswer::No, QMessageBox::Warning);
    expect(question, QMessageBox::NoButton, MessageAnswer::No, QMessageBox::Warning);
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

TEST(QtEventLoop, QuitEndsTheLoopEvenBehindAMessageBox)
{
    qt::QtEventLoop loop;
    auto answer = ports::MessageAnswer::Yes;
    loop.Post([&] {
        loop.Quit(4);
        answer = qt::QtDialogs().MessageBox("text", "title", ports::MessageStyle::WarningYesNo);
    });
    EXPECT_EQ(QApplication::exec(), 4);
    EXPECT_EQ(answer, ports::MessageAnswer::No);
}

TEST(QtFdWatcher, TellsOfReadableDescriptorsUntilDestroyed)
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    int notices = 0;
    std::unique_ptr<ports::FdWatcher::Watch> watch;
    watch = qt::QtFdWatcher().WatchReadable(ends[0], [&] {
        if (++notices == 2)
            watch.reset(); // from its own notice
    });
    ServeEvents();
    EXPECT_EQ(notices, 0);
    ASSERT_EQ(write(ends[1], "x", 1), 1); // nobody reads it, so the notices go on
    EXPECT_TRUE(WaitUntil([&] { return watch == nullptr; }));
    ServeEvents();
    EXPECT_EQ(notices, 2);
    close(ends[0]);
    close(ends[1]);
}

TEST(SignalWatcher, EachSignalReachesTheHandlerOnThisThreadWhileItLives)
{
    int calls = 0;
    testing::internal::CaptureStderr();
    {
        const std::thread::id here = std::this_thread::get_id();
        const qt::SignalWatcher watcher([&] {
            EXPECT_EQ(std::this_thread::get_id(), here);
            ++calls;
            throw std::runtime_error("handler");
        });
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
            const int expected = calls + 1;
            std::thread([&] { kill(getpid(), signal); }).join();
            EXPECT_TRUE(WaitUntil([&] { return calls == expected; })) << signal;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "velmo: handler\nvelmo: handler\nvelmo: handler\n");
    struct sigaction action = {};
    ASSERT_EQ(sigaction(SIGTERM, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

} // namespace
} // namespace velmo::test
