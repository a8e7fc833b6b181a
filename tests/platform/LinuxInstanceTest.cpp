#include "linux/LinuxInstance.h"

#include "linux/InstanceProtocol.h"
#include "linux/LocalSocket.h"
#include "support/ChildProcess.h"
#include "support/PollWatcher.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <list>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace velmo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr const char* MutexName = "Velmo Player_APPLICATION_MUTEX";
constexpr std::chrono::milliseconds Patience = 60s; ///< for what shall happen

Deadline In(std::chrono::milliseconds time)
{
    return std::chrono::steady_clock::now() + time;
}

std::string Request(const std::string& bytes)
{
    return EncodeRequest({
        InstanceQuestion::HandOver, {.dwData = 0, .bytes = bytes}
    });
}

class LinuxInstanceTest : public testing::Test
{
protected:
    LinuxInstanceTest()
    {
        environment.velmoHome = dir("home");
        environment.temporaryDirectory = dir();
        environment.userId = ::geteuid();
        environment.activationToken = "token-1";
    }

    ports::InstanceEvents Events()
    {
        return {.handOver = [this](const auto& record) { records.push_back(record.bytes); },
                .isVisible = [asked = 0]() mutable { return ++asked == 1; },
                .activate = [this](const auto& token) { tokens.push_back(token); }};
    }

    /// A second process: looks for the player and hands `bytes` over. 0 if an answer came.
    int HandOver(const std::string& bytes, std::chrono::milliseconds time) const
    {
        test::PollWatcher own;
        LinuxInstance second(environment, own);
        if (second.CreateInstanceMutex(MutexName))
            return 3;
        const Deadline deadline = In(time);
        const auto found = second.FindRunningInstance(deadline);
        return found && second.Send(*found, {.dwData = 0, .bytes = bytes}, deadline) ? 0 : 1;
    }

    /// Where the player of this process listens.
    std::string Socket() const
    {
        return PrepareInstancePaths(environment)->SocketOf(static_cast<unsigned>(::getpid()));
    }

    /// A connection to the listening player over which these bytes went.
    FileHandle Client(const std::string& bytes) const
    {
        FileHandle handle = std::move(ConnectTo(Socket(), In(Patience)).handle);
        EXPECT_EQ(::send(handle.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
        return handle;
    }

    test::TempDir dir;
    Environment environment;
    test::PollWatcher watcher;
    std::vector<std::string> records;
    std::vector<std::string> tokens;
};

TEST_F(LinuxInstanceTest, ALoadingPlayerAnswersOnceItHasItsWindow)
{
    environment.velmoHome = dir(std::string(150, 'l')); // no place for a socket's long path
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    const test::Signal started;
    test::ChildProcess second([&] {
        LinuxInstance own(environment, watcher);
        if (own.CreateInstanceMutex(MutexName) || !started.Give())
            return 1;
        const auto found = own.FindRunningInstance(In(Patience));
        const bool isTold = found && own.IsWindowVisible(*found, In(Patience))
                            && !own.IsWindowVisible(*found, In(Patience)) // not the second time
                            && own.Send(*found, {.dwData = 0, .bytes = "dropped"}, In(Patience))
                            && own.ActivateWindow(*found, In(Patience));
        return isTold ? 0 : 2;
    });
    ASSERT_TRUE(started.Take());
    ports::InstanceEvents events = Events();
    events.handOver = nullptr; // as long as nobody wants records
    player.MarkMainWindow(std::move(events));
    EXPECT_TRUE(watcher.RunUntil([&] { return !tokens.empty(); }));
    EXPECT_EQ(second.Wait(), 0);
    EXPECT_EQ(tokens, std::vector<std::string>{"token-1"});
}

TEST_F(LinuxInstanceTest, APlayerThatLoadsOrHangsCostsTheSenderItsTimeOnly)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    LinuxInstance second(environment, watcher);
    ASSERT_FALSE(second.CreateInstanceMutex(MutexName));
    const Deadline deadline = In(50ms);
    EXPECT_FALSE(second.FindRunningInstance(deadline).has_value());
    EXPECT_GE(std::chrono::steady_clock::now(), deadline);
    const Deadline late = In(60s);
    player.MarkMainWindow(Events()); // and then never looks at its events
    EXPECT_EQ(HandOver("x", 50ms), 1);
    player.ReleaseInstance();
    EXPECT_FALSE(second.FindRunningInstance(late).has_value());
    EXPECT_LT(std::chrono::steady_clock::now(), late - 30s) << "nobody holds the mutex any more";
}

TEST_F(LinuxInstanceTest, DeadSocketsAreRemovedAndTheHolderComesFirst)
{
    const test::Signal ready;
    const auto live = [&](bool holds) {
        return test::ChildProcess([&, holds] {
            LinuxInstance instance(environment, watcher);
            if (instance.CreateInstanceMutex(MutexName) != holds)
                return 1;
            instance.MarkMainWindow({});
            ready.Give();
            ::pause();
            return 0;
        });
    };
    test::ChildProcess holder = live(true);
    ASSERT_TRUE(ready.Take());
    test::ChildProcess newer = live(false);
    ASSERT_TRUE(ready.Take());

    LinuxInstance third(environment, watcher);
    ASSERT_FALSE(third.CreateInstanceMutex(MutexName));
    const std::string run = dir("home/.run/");
    const std::string holders = run + std::to_string(holder.Id()) + ".sock";
    const std::string newers = run + std::to_string(newer.Id()) + ".sock";
    EXPECT_EQ(third.FindRunningInstance(In(Patience))->address, holders);
    holder.Kill();
    EXPECT_EQ(third.FindRunningInstance(In(Patience))->address, newers);
    EXPECT_FALSE(fs::exists(holders)) << "left by the kill";
    newer.Kill();
    EXPECT_FALSE(third.FindRunningInstance(In(Patience)).has_value());
    EXPECT_FALSE(fs::exists(newers));

    EXPECT_TRUE(third.CreateInstanceMutex(MutexName)) << "freed by the kill";
    third.MarkMainWindow({});
    EXPECT_TRUE(fs::exists(Socket()));
    third.ReleaseInstance();
    EXPECT_FALSE(fs::exists(Socket()));
}

TEST_F(LinuxInstanceTest, HostileClientsHoldUpNoRecord)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    player.MarkMainWindow(Events());
    const std::string openings[] = {"",
                                    "\x03\x6c",
                                    "\x03lev" + std::string(4, '\0') + "\xFF\xFF\xFF\xFF",
                                    "GET / HTTP/1.0\r\n"};
    std::list<FileHandle> clients;
    for (int i = 0; i < 200; ++i) {
        clients.push_back(Client(openings[i % 4]));
        if (i % 5 == 4)
            clients.pop_back();
        // The player goes on between the clients, so that its queue does not fill.
        EXPECT_TRUE(watcher.RunUntil([turn = 0]() mutable { return turn++ == 1; }));
    }
    char byte = 0;
    EXPECT_EQ(::recv(clients.front().Get(), &byte, 1, MSG_DONTWAIT), 0) << "the oldest gives way";
    // More than a socket holds: it goes out while the player reads.
    const std::string record = std::string(1, '\0') + "\xFF\n/x" + std::string(300'000, 'x');
    test::ChildProcess sender([&] { return HandOver(record, Patience); });
    EXPECT_TRUE(watcher.RunUntil([&] { return !records.empty(); }));
    EXPECT_EQ(sender.Wait(), 0);
    EXPECT_EQ(records, std::vector<std::string>{record});
}

TEST_F(LinuxInstanceTest, AHandlerMayServeEventsOrEndThePlayer)
{
    LinuxInstance player(environment, watcher);
    std::list<FileHandle> clients;
    const auto send = [&](const char* bytes) { clients.push_back(Client(Request(bytes))); };
    ports::InstanceEvents events = Events();
    events.handOver = [&](const ports::HandOverRecord& record) {
        records.push_back(record.bytes + " begins");
        if (record.bytes == "first") {
            send("second");
            send("third");
            EXPECT_TRUE(watcher.RunUntil([turn = 0]() mutable { return turn++ == 1; }));
        } else {
            player.ReleaseInstance();
        }
        records.push_back(record.bytes + " ends");
    };
    player.MarkMainWindow(std::move(events));
    send("first");
    EXPECT_TRUE(watcher.RunUntil([&] { return records.size() >= 4; }));
    EXPECT_EQ(
        records,
        (std::vector<std::string>{"first begins", "first ends", "second begins", "second ends"}));
}

TEST_F(LinuxInstanceTest, AnotherUserIsNotServed)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can become another user";
    LinuxInstance player(environment, watcher);
    player.MarkMainWindow(Events());
    const std::string socket = Socket();
    for (const std::string& path : {dir(), dir("home"), dir("home/.run"), socket})
        ::chmod(path.c_str(), 0777);
    const test::Signal sent;
    test::ChildProcess stranger([&] {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        socket.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
        const FileHandle handle(::socket(AF_UNIX, SOCK_STREAM, 0));
        if (::setuid(65534) != 0
            || ::connect(handle.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0)
            return 2;
        // The sender refuses a player of another user, too.
        const bool isRefused = ConnectTo(socket, In(Patience)).result == ConnectResult::Other;
        const std::string request = Request("forged");
        ::send(handle.Get(), request.data(), request.size(), MSG_NOSIGNAL);
        char answer = 0;
        return sent.Give() && isRefused && ::recv(handle.Get(), &answer, 1, 0) != 1 ? 0 : 1;
    });
    ASSERT_TRUE(sent.Take());
    const FileHandle own = Client(Request("ours"));
    EXPECT_TRUE(watcher.RunUntil([&] { return !records.empty(); }));
    EXPECT_EQ(stranger.Wait(), 0);
    EXPECT_EQ(records, std::vector<std::string>{"ours"});
}

} // namespace
} // namespace velmo
