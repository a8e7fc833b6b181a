// The device thread's rules, with a sound library that does as it's told.

#include "device/SystemControl.h"

#include "FakeRenderer.h"

#include "device/DeviceClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace velmo::engine {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using test::FakeRenderer;

/// Streams opened so far. The library's functions have no place of their own to count in.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<int> opened = 0;

/// A library whose streams open, and fail as soon as they are started.
CubebLibrary FailingLibrary()
{
    CubebLibrary library;
    library.init = [](cubeb**, const char*, const char*) -> int { return CUBEB_OK; };
    library.destroy = [](cubeb*) {};
    library.getBackendId = [](cubeb*) -> const char* { return "pulse"; };
    library.getMaxChannelCount = [](cubeb*, std::uint32_t* channels) -> int {
        *channels = 2;
        return CUBEB_OK;
    };
    library.streamInit = [](cubeb*, cubeb_stream** stream, auto...) -> int {
        ++opened;
        *stream = static_cast<cubeb_stream*>(static_cast<void*>(&opened)); // has to be something
        return CUBEB_OK;
    };
    library.streamDestroy = [](cubeb_stream*) {};
    library.streamStart = [](cubeb_stream*) -> int { return CUBEB_ERROR; };
    library.streamStop = [](cubeb_stream*) -> int { return CUBEB_OK; };
    library.streamGetPosition = [](cubeb_stream*, std::uint64_t* position) -> int {
        *position = 0;
        return CUBEB_OK;
    };
    return library;
}

TEST(SystemControl, StreamsThatFailAtTheirStartAreTriedAtATime)
{
    FakeRenderer renderer;
    DeviceClock clock;
    clock.Reset(44100);
    const DeviceSettings settings;
    DeviceNotice notice;
    SystemControl control({renderer, clock, settings, notice}, FailingLibrary());
    std::jthread device([&] { control.Run(); });
    ASSERT_EQ(control.AwaitOpened(), DeviceError::None);
    const auto start = steady_clock::now();
    control.SetRunning(true);
    // The first, one more at once, and each other one 300 ms after the one before.
    EXPECT_TRUE(renderer.Await([] { return opened >= 4; }));
    EXPECT_GE(steady_clock::now() - start, 600ms);
    control.RequestClose();
    EXPECT_TRUE(control.AwaitFinished(test::Patience));
}

} // namespace
} // namespace velmo::engine
