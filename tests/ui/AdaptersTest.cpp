#include "qt/QtDialogs.h"
#include "qt/QtEventLoop.h"
#include "qt/QtFdWatcher.h"
#include "qt/QtTimers.h"
#include "qt/SignalWatcher.h"
#include "support/TempDir.h"
#include "ui/SmallForm.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace velmo::test {
namespace {

TEST(QtTimers, TickUntilStoppedAndNeverBeforeTheirTime)
{
    qt::QtTimers timers;
    int ticks = 0;
    QElapsedTimer clock;
    const auto ticker = timers.Create(ports::TimerPrecision::Precise, [&] { ++ticks; });
    ServeEvents();
    EXPECT_EQ(ticks, 0);
    clock.start();
    ticker->Start(20);
    ASSERT_TRUE(WaitUntil([&] { return ticks == 3; }));
    EXPECT_GE(clock.elapsed(), 59);
    ticker->Stop();
    int laterTicks = 0;
    const auto later = timers.Create(ports::TimerPrecision::Coarse, [&] { ++laterTicks; });
    later->Start(30);
    ASSERT_TRUE(WaitUntil([&] { return laterTicks == 2; }));
    EXPECT_EQ(ticks, 3);
}

TEST(QtTimers, TickMayDestroyItsTicker)
{
    qt::QtTimers timers;
    int ticks = 0;
    std::unique_ptr<ports::Timers::Ticker> ticker;
    ticker = timers.Create(ports::TimerPrecision::Precise, [&] {
        ticker.reset();
        ++ticks;
    });
    ticker->Start(1);
    ASSERT_TRUE(WaitUntil([&] { return ticks > 0; }));
    EXPECT_EQ(ticks, 1);
}

TEST(QtDialogs, ShowTheTextsAndGiveTheAnswer)
{
    using ports::MessageAnswer;
    using ports::MessageStyle;
    struct Case
    {
        MessageStyle style;
        QMessageBox::StandardButton press; ///< NoButton: Escape
        MessageAnswer answer;
        QMessageBox::Icon icon;
    };
    const Case cases[] = {
        {MessageStyle::Critical,     QMessageBox::Ok,       MessageAnswer::Ok,  QMessageBox::Critical},
        {MessageStyle::Critical,     QMessageBox::NoButton, MessageAnswer::Ok,  QMessageBox::Critical},
        {MessageStyle::WarningYesNo, QMessageBox::Yes,      MessageAnswer::Yes, QMessageBox::Warning },
        {MessageStyle::WarningYesNo, QMessageBox::No,       MessageAnswer::No,  QMessageBox::Warning },
        {MessageStyle::WarningYesNo,
         QMessageBox::NoButton,
         MessageAnswer::No,
         QMessageBox::Warning                                                                        },
    };
    qt::QtEventLoop loop;
    for (const Case& c : cases) {
        bool seen = false;
        loop.Post([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->objectName(), QStringLiteral("MessageBox"));
            EXPECT_EQ(box->text(), QStringLiteral("<b>Really</b>\nquit?"));
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Titel \u00E4"));
            EXPECT_EQ(box->icon(), c.icon);
            seen = true;
            if (c.press == QMessageBox::NoButton)
                QTest::keyClick(box, Qt::Key_Escape);
            else
                QTest::mouseClick(box->button(c.press), Qt::LeftButton);
        });
        qt::QtDialogs dialogs;
        EXPECT_EQ(dialogs.MessageBox("<b>Really</b>\nquit?", "Titel \xC3\xA4", c.style), c.answer);
        EXPECT_TRUE(seen);
    }
}

TEST(QtDialogs, AskForFilesAndGivePathsAndLabel)
{
    const TempDir folder;
    folder.Write("a.ZFX", "");
    folder.Write("b.txt", "");
    const char* filter = "EQ Settings (*.zfx)|*.zfx|All Files (*.*)|*.*";
    struct Case
    {
        ports::FileDialogKind kind;
        std::string chosen; ///< empty: cancelled
        ports::FileDialogAnswer answer;
    };
    const Case cases[] = {
        {ports::FileDialogKind::Open, "a.ZFX", {{folder("a.ZFX")}, "All Files (*.*)"}},
        {ports::FileDialogKind::Save, "new",   {{folder("new")}, "All Files (*.*)"}  },
        {ports::FileDialogKind::Open, "",      {}                                    },
    };
    qt::QtEventLoop loop;
    for (const Case& c : cases) {
        loop.Post([&] {
            auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->objectName(), QStringLiteral("FileDialog"));
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Load"));
            EXPECT_EQ(box->directory().path().toStdString(), folder());
            EXPECT_EQ(box->nameFilters(),
                      (QStringList{QStringLiteral("EQ Settings (*.zfx)"),
                                   QStringLiteral("All Files (*)")}));
            if (c.chosen.empty())
                return box->reject();
            box->selectFile(QString::fromStdString(c.chosen));
            static_cast<QDialog*>(box)->accept();
        });
        const ports::FileDialogAnswer answer =
            qt::QtDialogs().ChooseFiles({.kind = c.kind,
                                         .owner = "fX",
                                         .title = "Load",
                                         .filter = filter,
                                         .filterIndex = 2,
                                         .folder = folder("gone/deeper/"),
                                         .fileName = ""});
        EXPECT_EQ(answer, c.answer) << c.chosen;
    }
    EXPECT_EQ(qt::FolderToOpenIn(folder()), folder());
    for (const char* nowhere : {"c:\\", "", "/gone"})
        EXPECT_TRUE(QDir(QString::fromStdString(qt::FolderToOpenIn(nowhere))).exists()) << nowhere;
}

TEST(QtEventLoop, PostedHandlersComeLaterInOrderAndMayFail)
{
    qt::QtEventLoop loop;
    std::string order;
    std::thread other([&] { loop.Post([&] { order += 'a'; }); });
    other.join();
    loop.Post([&] { order += 'b'; });
    loop.Post([] { throw std::runtime_error("posted"); });
    loop.Post([&] { order += 'c'; });
    EXPECT_EQ(order, "");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(WaitUntil([&] { return order == "abc"; }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "velmo: posted\n");
}

TEST(QtEventLoop, QuitEndsTheLoopWithItsStatusEvenBehindAMessageBox)
{
    qt::QtEventLoop loop;
    loop.Quit(3);
    EXPECT_EQ(QApplication::exec(), 3);
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
    qt::QtFdWatcher watcher;
    std::unique_ptr<ports::FdWatcher::Watch> watch;
    watch = watcher.WatchReadable(ends[0], [&] {
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

TEST(SignalWatcher, EachSignalReachesTheHandlerOnThisThread)
{
    int calls = 0;
    std::thread::id thread;
    qt::SignalWatcher watcher([&] {
        ++calls;
        thread = std::this_thread::get_id();
        throw std::runtime_error("handler");
    });
    testing::internal::CaptureStderr();
    int expected = 0;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        std::thread([&] { kill(getpid(), signal); }).join();
        ++expected;
        EXPECT_TRUE(WaitUntil([&] { return calls == expected; })) << signal;
    }
    EXPECT_EQ(thread, std::this_thread::get_id());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "velmo: handler\nvelmo: handler\nvelmo: handler\n");
}

TEST(SignalWatcher, SignalsHaveTheirFormerMeaningAfterwards)
{
    {
        const qt::SignalWatcher watcher([] {});
    }
    struct sigaction action = {};
    ASSERT_EQ(sigaction(SIGTERM, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

} // namespace
} // namespace velmo::test
