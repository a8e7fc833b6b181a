// Start times: start_time PLAYER EMPTY_WINDOW MUSIC_FILE
//
// Each program is started on the display of the environment, which must have no window manager, and
// watched from outside: the window is shown when the server says that the first window below the
// root has been mapped; sound has begun when the first sample that is not silence comes out of the
// pipe that the output writes to, by the same clock as the null output's.

#include "Measure.h"

#include <xcb/xcb.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::bench {

namespace {

using Clock = std::chrono::steady_clock;

struct Start
{
    std::vector<std::string> command;
    std::string audio;
    int windows = 1; ///< that are to be shown
};

pid_t Launch(const Start& start)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    setenv("VELMO_AUDIO", start.audio.c_str(), 1);
    // For both programs: the toolkit would have a bus launched behind the empty window, which would
    // run into the next program's start and stay behind.
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null", 1);
    std::vector<std::string> texts = start.command;
    std::vector<char*> words;
    words.reserve(texts.size() + 1);
    for (std::string& text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);
    execv(words[0], words.data());
    _exit(127);
}

void End(pid_t child)
{
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
}

double Since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Frees what a call of XCB returned: events and replies are their caller's.
struct Freeing
{
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): the library allocates with malloc
    void operator()(void* memory) const { std::free(memory); }
};

using Event = std::unique_ptr<xcb_generic_event_t, Freeing>;
using FocusReply = std::unique_ptr<xcb_get_input_focus_reply_t, Freeing>;

class Display
{
public:
    Display()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(m_connection);
    }
    ~Display() { xcb_disconnect(m_connection); }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    void Drain()
    {
        Synchronize();
        while (Event(xcb_poll_for_event(m_connection)) != nullptr) {}
    }

    void WaitForMappedWindows(int count)
    {
        while (count > 0) {
            const Event event(xcb_wait_for_event(m_connection));
            if (event == nullptr)
                std::exit(1);
            if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY)
                --count;
        }
    }

private:
    /// A round trip: all events up to now have arrived.
    void Synchronize()
    {
        FocusReply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_connection_t* m_connection;
};

double SecondsToWindows(Display& display, const Start& start)
{
    display.Drain();
    const auto begun = Clock::now();
    const pid_t child = Launch(start);
    display.WaitForMappedWindows(start.windows);
    const double seconds = Since(begun);
    End(child);
    return seconds;
}

/// Gives the player a list as a run before would have left it.
void SaveList(const std::string& home, int entries)
{
    std::ofstream file(home + "/list.zvl", std::ios::binary);
    file << "#ZVL20#Internal playlist\r\n";
    for (int i = 0; i < entries; ++i)
        file << "Artist " << i % 900 << " - Piece of music " << i << "\r\n200#/music/album "
             << i / 12 << "/track " << i << ".mp3\r\n";
}

double SecondsToSound(const std::vector<std::string>& command, const std::string& pipe)
{
    const int end = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const auto begun = Clock::now();
    const pid_t child = Launch({.command = command, .audio = "wav:" + pipe});
    constexpr std::size_t HeaderBytes = 64;
    std::array<unsigned char, 4096> block = {};
    std::size_t seen = 0;
    bool sound = false;
    while (!sound) {
        pollfd ready = {.fd = end, .events = POLLIN, .revents = 0};
        poll(&ready, 1, 20);
        const ssize_t got = read(end, block.data(), block.size());
        for (ssize_t i = 0; i < got; ++i)
            sound = sound || (++seen > HeaderBytes && block[static_cast<std::size_t>(i)] != 0);
        if (Since(begun) > 10)
            break;
    }
    const double seconds = Since(begun);
    End(child);
    close(end);
    return seconds;
}

} // namespace

} // namespace velmo::bench

int main(int argc, char** argv)
{
    using namespace velmo::bench;
    const char* home = std::getenv("VELMO_HOME");
    if (argc != 4 || home == nullptr) {
        std::fprintf(stderr, "VELMO_HOME=DIRECTORY start_time PLAYER EMPTY_WINDOW MUSIC_FILE\n");
        return 2;
    }
    const std::string player = argv[1];
    const std::string pipe = std::string(home) + "/pipe";
    mkfifo(pipe.c_str(), 0600);
    Display display;
    const auto secondsToWindow = [&](const std::string& program) {
        return SecondsToWindows(display, {.command = {program}, .audio = "null"});
    };
    constexpr int Rounds = 31;
    const Pair shown = InTurns(
        Rounds, [&] { return secondsToWindow(player); }, [&] { return secondsToWindow(argv[2]); });
    const double ratio = shown.ours / shown.yardstick;
    Row("program start to main window shown, against an empty Qt Widgets window",
        Text("%.2f times", ratio) + Text(" (%.1f ms", shown.ours * 1000)
            + Text(" : %.1f ms)", shown.yardstick * 1000),
        "1.25",
        ratio <= 1.25);
    const auto secondsToAll = [&] {
        return SecondsToWindows(display, {.command = {player}, .audio = "null", .windows = 4});
    };
    SaveList(home, 1000);
    const Pair all = InTurns(Rounds, secondsToAll, [&] { return secondsToWindow(argv[2]); });
    const double allRatio = all.ours / all.yardstick;
    Row("program start to four windows shown, list of 1 000, against an empty Qt Widgets window",
        Text("%.2f times", allRatio) + Text(" (%.1f ms)", all.ours * 1000),
        "1.6",
        allRatio <= 1.6);
    const auto withList = [&](int entries) {
        SaveList(home, entries);
        return secondsToAll();
    };
    const Pair many = InTurns(
        Rounds, [&] { return withList(100'000); }, [&] { return withList(0); });
    const double manyRatio = many.ours / many.yardstick;
    Row("the same with a list of 100 000, against an empty list",
        Text("%.2f times", manyRatio) + Text(" (%.1f ms)", many.ours * 1000),
        "1.2",
        manyRatio <= 1.2);
    SaveList(home, 0);
    const Pair sound = InTurns(
        Rounds,
        [&] {
            return SecondsToSound({player, argv[3]}, pipe);
        },
        [&] { return secondsToWindow(player); });
    const double soundRatio = sound.ours / sound.yardstick;
    Row("program start with a file to the first sound, against the player's own window time",
        Text("%.2f times", soundRatio) + Text(" (%.1f ms)", sound.ours * 1000),
        "2",
        soundRatio < 2);
    std::filesystem::remove(pipe);
    return 0;
}
