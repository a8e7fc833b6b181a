// What the engine tells of the device, without one and with a real sound server.

#include "EngineTest.h"

#include "engine/device/PulseServer.h"

namespace velmo::engine::test {

namespace {

class DeviceInfo : public EngineTest
{
protected:
    /// Plays until it's stopped.
    void PlayLong() const { BASS_ChannelPlay(OpenStream(WriteWav("a.wav", Noise(1764000))), 0); }
};

/// "name/driver/flags" of a device; the code if it fails.
std::string Device(DWORD device)
{
    BASS_DEVICEINFO info = {};
    if (BASS_GetDeviceInfo(device, &info) == 0)
        return std::to_string(BASS_ErrorGetCode());
    return std::string(info.name) + "/" + info.driver + "/" + std::to_string(info.flags);
}

BASS_INFO Info()
{
    BASS_INFO info = {};
    EXPECT_TRUE(BASS_GetInfo(&info));
    return info;
}

} // namespace

TEST_F(DeviceInfo, TellsTheKindOfOutputBeforeInitAndTheDeviceAfter)
{
    SetVariable("PULSE_SERVER", "unix:/nonexistent");
    SetVariable("VELMO_AUDIO", "");
    EXPECT_EQ(Device(0), "No sound/null/1");
    EXPECT_EQ(Device(1), "Default output/system/3");
    EXPECT_EQ(Device(2), std::to_string(BASS_ERROR_DEVICE));
    EXPECT_EQ(Code(BASS_GetDeviceInfo(1, nullptr)), BASS_ERROR_ILLPARAM);

    velmo::test::PulseServer server;
    server.Start();
    Init("");
    EXPECT_EQ(Device(1).substr(Device(1).find('/')), "/PulseAudio/7");
    EXPECT_TRUE(Until([] { return Device(1) == "Null Output/PulseAudio/7"; })) << Device(1);
    EXPECT_EQ(Info().latency, 150U) << "what the server is asked for";
    PlayLong();
    // The server takes frames in shares, and adds some time of its own.
    EXPECT_TRUE(Until([] {
        const DWORD latency = Info().latency;
        return latency != 150 && latency > 50 && latency < 400;
    }));
    EXPECT_EQ(Info().speakers, 2U);
}

TEST_F(DeviceInfo, HoldsForOutputsWithoutACardToo)
{
    SetVariable("VELMO_WAV_CHANNELS", "6");
    Init("null", 22050, BASS_DEVICE_MONO | BASS_DEVICE_LATENCY);
    EXPECT_EQ(Device(1), "No sound/null/7");
    PlayLong();
    // Blocks of 200 ms, each heard from the moment it's mixed.
    EXPECT_TRUE(Until([] { return Info().latency > 150; }));
    const BASS_INFO info = Info();
    EXPECT_LE(info.latency, 200U);
    EXPECT_EQ(info.minbuf, 400U);
    EXPECT_EQ(info.initflags, DWORD{BASS_DEVICE_MONO | BASS_DEVICE_LATENCY});
    EXPECT_EQ(info.speakers, 6U);
    EXPECT_EQ(info.freq, 22050U);
    EXPECT_EQ(Code(BASS_GetInfo(nullptr)), BASS_ERROR_ILLPARAM);
    // What is decoded ahead at the beginning costs more.
    EXPECT_TRUE(Until([] {
        const float percent = BASS_GetCPU();
        return percent > 0 && percent < 20;
    }));
    BASS_Free();
    // As fast as possible, the two threads have no rest.
    Init("wav-fast:/dev/null");
    EXPECT_TRUE(Until([this] {
        PlayToEnd(OpenStream(File("a.wav"), BASS_STREAM_AUTOFREE));
        return BASS_GetCPU() > 20;
    }));
    EXPECT_LE(BASS_GetCPU(), 250);
    EXPECT_TRUE(Until([] { return BASS_GetCPU() == 0; })) << "nothing plays any more";
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_OK);
}

} // namespace velmo::engine::test
