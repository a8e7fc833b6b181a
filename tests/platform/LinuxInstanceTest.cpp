#include "linux/LinuxInstance.h"

#include "linux/InstanceProtocol.h"
#include "linux/LocalSocket.h"
#include "support/ChildProcess.h"
#include "support/PollWatcher.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
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
                .isVisible = [this] { return visible; },
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
        if (!found)
            return 2;
        return second.Send(*found, {.dwData = 0, .bytes = bytes}, deadline) ? 0 : 1;
    }

    /// A connection to the listening player; closed if it failed.
    FileHandle Connect() const
    {
        const std::string socket = PrepareInstancePaths(environment)->SocketOf(Id());
        return std::move(ConnectTo(socket, In(1s)).handle);
    }

    static unsigned Id() { return static_cast<unsigned>(::getpid()); }

    test::TempDir dir;
    Environment environment;
    test::PollWatcher watcher;
    std::vector<std::string> records;
    std::vector<std::string> tokens;
    bool visible = true;
};

TEST_F(LinuxInstanceTest, TheMutexHasOneOwnerAndIsFreedByAKill)
{
    const test::Signal taken;
    test::ChildProcess owner([&] {
        LinuxInstance instance(environment, watcher);
        if (!instance.CreateInstanceMutex(MutexName) || !taken.Give())
            return 1;
        ::pause();
        return 0;
    });
    ASSERT_TRUE(taken.Take());
    LinuxInstance instance(environment, watcher);
    EXPECT_FALSE(instance.CreateInstanceMutex(MutexName));
    EXPECT_TRUE(instance.CreateInstanceMutex("another name"));
    owner.Kill();
    EXPECT_TRUE(instance.CreateInstanceMutex(MutexName));

    LinuxInstance second(environment, watcher);
    EXPECT_FALSE(second.CreateInstanceMutex(MutexName));
    instance.ReleaseInstance();
    EXPECT_TRUE(second.CreateInstanceMutex(MutexName));
}

TEST_F(LinuxInstanceTest, TwentySendersReachAPlayerThatIsStillLoading)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    constexpr int Senders = 20;
    const test::Signal started;
    std::vector<std::string> sent;
    std::list<test::ChildProcess> senders;
    for (int i = 0; i < Senders; ++i) {
        sent.push_back("/a/" + std::to_string(i) + "\xFF.mp3");
        senders.emplace_back([&, i] {
            return started.Give() ? HandOver(sent[static_cast<std::size_t>(i)], 20s) : 4;
        });
    }
    for (int i = 0; i < Senders; ++i)
        ASSERT_TRUE(started.Take());
    player.MarkMainWindow(Events());
    EXPECT_TRUE(watcher.RunUntil([&] { return records.size() == Senders; }));
    for (test::ChildProcess& sender : senders)
        EXPECT_EQ(sender.Wait(), 0);
    std::sort(records.begin(), records.end());
    std::sort(sent.begin(), sent.end());
    EXPECT_EQ(records, sent);
}

TEST_F(LinuxInstanceTest, WaitingForALoadingPlayerEndsWithItsTimeOrItsDeath)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    LinuxInstance second(environment, watcher);
    ASSERT_FALSE(second.CreateInstanceMutex(MutexName));
    const Deadline deadline = In(100ms);
    EXPECT_FALSE(second.FindRunningInstance(deadline).has_value());
    EXPECT_GE(std::chrono::steady_clock::now(), deadline);
    player.ReleaseInstance();
    const Deadline late = In(60s);
    EXPECT_FALSE(second.FindRunningInstance(late).has_value());
    EXPECT_LT(std::chrono::steady_clock::now(), late - 30s) << "nobody holds the mutex any more";
}

TEST_F(LinuxInstanceTest, RecordsComeInTheOrderOfArrivalAndUnchanged)
{
    LinuxInstance player(environment, watcher);
    player.MarkMainWindow(Events());
    const std::vector<std::string> sent{
        "second", std::string(1, '\0'), "\xFF\n/x", std::string(300000, 'x')};
    std::list<FileHandle> connections;
    connections.push_back(
        Connect()); // first to come, last to say something: it must hold up nobody
    for (const std::string& bytes : sent) {
        connections.push_back(Connect());
        const std::string request = Request(bytes);
        // The longest is more than a socket holds: it goes out while the player reads.
        std::size_t done = 0;
        EXPECT_TRUE(watcher.RunUntil([&] {
            const ssize_t count = ::send(connections.back().Get(),
                                         request.data() + done,
                                         request.size() - done,
                                         MSG_DONTWAIT);
            done += count > 0 ? static_cast<std::size_t>(count) : 0;
            return done == request.size();
        }));
    }
    EXPECT_TRUE(watcher.RunUntil([&] { return records.size() == sent.size(); }));
    EXPECT_EQ(records, sent);
}

TEST_F(LinuxInstanceTest, QuestionsAreAnsweredWithoutAReceiverOfRecords)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    ports::InstanceEvents events = Events();
    events.handOver = nullptr;
    int asked = 0;
    events.isVisible = [&] { return ++asked == 1; };
    player.MarkMainWindow(std::move(events));
    test::ChildProcess second([&] {
        LinuxInstance own(environment, watcher);
        static_cast<void>(own.CreateInstanceMutex(MutexName));
        const auto found = own.FindRunningInstance(In(10s));
        if (!found || !own.IsWindowVisible(*found, In(10s)))
            return 1;
        if (own.IsWindowVisible(*found, In(10s)))
            return 2;
        if (!own.Send(*found, {.dwData = 0, .bytes = "dropped"}, In(10s)))
            return 3;
        return own.ActivateWindow(*found, In(10s)) ? 0 : 4;
    });
    EXPECT_TRUE(watcher.RunUntil([&] { return !tokens.empty(); }));
    EXPECT_EQ(second.Wait(), 0);
    EXPECT_EQ(tokens, std::vector<std::string>{"token-1"});
    EXPECT_TRUE(records.empty());
}

TEST_F(LinuxInstanceTest, AHungPlayerCostsTheSenderItsTimeOnly)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    player.MarkMainWindow(Events()); // and then never looks at its events
    const Deadline late = In(60s);
    EXPECT_EQ(HandOver("x", 100ms), 1);
    EXPECT_LT(std::chrono::steady_clock::now(), late - 30s);
}

TEST_F(LinuxInstanceTest, DeadSocketsAreRemovedAndTheHolderComesFirst)
{
    const std::string run = dir("home/.run/");
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
    const std::string holders = run + std::to_string(holder.Id()) + ".sock";
    const std::string newers = run + std::to_string(newer.Id()) + ".sock";
    EXPECT_EQ(third.FindRunningInstance(In(10s))->address, holders);
    holder.Kill();
    EXPECT_EQ(third.FindRunningInstance(In(10s))->address, newers);
    EXPECT_FALSE(fs::exists(holders)) << "left by the kill";
    newer.Kill();
    EXPECT_FALSE(third.FindRunningInstance(In(10s)).has_value());
    EXPECT_FALSE(fs::exists(newers));

    third.MarkMainWindow({});
    EXPECT_TRUE(fs::exists(run + std::to_string(Id()) + ".sock"));
    third.ReleaseInstance();
    EXPECT_FALSE(fs::exists(run + std::to_string(Id()) + ".sock"));
}

TEST_F(LinuxInstanceTest, HostileClientsHoldUpNobody)
{
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    player.MarkMainWindow(Events());
    const std::uint32_t huge[] = {0x76656c03, 0, 0xFFFFFFFF};
    std::list<FileHandle> clients;
    for (int i = 0; i < 100; ++i) {
        clients.push_back(Connect());
        ASSERT_TRUE(clients.back().IsOpen());
        switch (i % 5) {
        case 0: break; // says nothing
        case 1: ::send(clients.back().Get(), "\x03\x6c", 2, 0); break;
        case 2: ::send(clients.back().Get(), huge, sizeof(huge), 0); break;
        case 3: ::send(clients.back().Get(), "GET / HTTP/1.0\r\n\r\n", 18, 0); break;
        default: clients.pop_back(); // gone at once
        }
        // The player goes on between the clients, so that its queue does not fill.
        EXPECT_TRUE(watcher.RunUntil([turn = 0]() mutable { return turn++ == 1; }));
    }
    test::ChildProcess sender([&] { return HandOver("/a.mp3", 10s); });
    EXPECT_TRUE(watcher.RunUntil([&] { return !records.empty(); }));
    EXPECT_EQ(sender.Wait(), 0);
    EXPECT_EQ(records, std::vector<std::string>{"/a.mp3"});
}

TEST_F(LinuxInstanceTest, AHandlerMayServeEventsOrEndThePlayer)
{
    LinuxInstance player(environment, watcher);
    std::list<FileHandle> clients;
    const auto send = [&](const std::string& bytes) {
        clients.push_back(Connect());
        const std::string request = Request(bytes);
        EXPECT_EQ(::send(clients.back().Get(), request.data(), request.size(), 0),
                  static_cast<ssize_t>(request.size()));
    };
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
    const std::string socket = PrepareInstancePaths(environment)->SocketOf(Id());
    for (const std::string& path : {dir(), dir("home"), dir("home/.run"), socket})
        ::chmod(path.c_str(), 0777);
    test::ChildProcess stranger([&] {
        if (::setuid(65534) != 0)
            return 3;
        // The sender refuses a player of another user, too.
        return ConnectTo(socket, In(1s)).result == ConnectResult::Other ? 0 : 1;
    });
    EXPECT_EQ(stranger.Wait(), 0);
    const test::Signal sent;
    test::ChildProcess forger([&] {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        socket.copy(static_cast<char*>(address.sun_path), sizeof(address.sun_path) - 1);
        const FileHandle handle(::socket(AF_UNIX, SOCK_STREAM, 0));
        if (::setuid(65534) != 0
            || ::connect(handle.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0)
            return 2;
        const std::string request = Request("forged");
        ::send(handle.Get(), request.data(), request.size(), MSG_NOSIGNAL);
        char answer = 0;
        return sent.Give() && ::recv(handle.Get(), &answer, 1, 0) == 1 ? 1 : 0;
    });
    ASSERT_TRUE(sent.Take());
    const FileHandle own = Connect();
    const std::string request = Request("ours");
    ::send(own.Get(), request.data(), request.size(), 0);
    EXPECT_TRUE(watcher.RunUntil([&] { return !records.empty(); }));
    EXPECT_EQ(forger.Wait(), 0);
    EXPECT_EQ(records, std::vector<std::string>{"ours"});
}

TEST_F(LinuxInstanceTest, ALongRunDirectoryServesAsWell)
{
    environment.velmoHome = dir(std::string(150, 'l'));
    LinuxInstance player(environment, watcher);
    ASSERT_TRUE(player.CreateInstanceMutex(MutexName));
    player.MarkMainWindow(Events());
    test::ChildProcess sender([&] { return HandOver("/a.mp3", 10s); });
    EXPECT_TRUE(watcher.RunUntil([&] { return !records.empty(); }));
    EXPECT_EQ(sender.Wait(), 0);
}

} // namespace
} // namespace velmo
