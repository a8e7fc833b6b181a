// What the engine tells of the device, without one and with a real sound server.

#include "EngineTest.h"

#include "engine/device/PulseServer.h"

#include <string>

namespace velmo::engine::test {

namespace {

class DeviceInfo : public EngineTest
{};

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

/// Plays noise until it's stopped.
DWORD PlayLong(const std::string& file)
{
    const DWORD channel = BASS_StreamCreateFile(0, file.c_str(), 0, 0, 0);
    EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
    return channel;
}

} // namespace

TEST_F(DeviceInfo, TellsTheKindOfOutputBeforeInitAndTheDeviceAfter)
{
    SetVariable("VELMO_AUDIO", "");
    SetVariable("PULSE_SERVER", "unix:/nonexistent");
    EXPECT_EQ(Device(0), "No sound/null/1");
    EXPECT_EQ(Device(1), "Default output/system/3");
    EXPECT_EQ(Device(2), std::to_string(BASS_ERROR_DEVICE));
    EXPECT_FALSE(BASS_GetDeviceInfo(1, nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
    BASS_INFO untouched = {};
    EXPECT_FALSE(BASS_GetInfo(&untouched));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_INIT);
    EXPECT_EQ(BASS_GetCPU(), 0);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_INIT);

    velmo::test::PulseServer server;
    server.Start();
    Init("");
    EXPECT_EQ(Device(1).substr(Device(1).find('/')), "/PulseAudio/7");
    EXPECT_TRUE(Until([] { return Device(1) == "Null Output/PulseAudio/7"; })) << Device(1);
    EXPECT_EQ(Info().latency, 150U) << "what the server is asked for";
    PlayLong(WriteWav("a.wav", Noise(20UL * 88200)));
    // The server takes frames in shares, and adds some time of its own.
    EXPECT_TRUE(Until([] { return Info().latency != 150 && Info().latency > 50; }));
    EXPECT_LT(Info().latency, 400U);
    EXPECT_EQ(Info().speakers, 2U);
}

TEST_F(DeviceInfo, RecordHoldsForOutputsWithoutACardToo)
{
    SetVariable("VELMO_WAV_CHANNELS", "6");
    Init("null", 22050, BASS_DEVICE_MONO | BASS_DEVICE_LATENCY);
    EXPECT_EQ(Device(1), "No sound/null/7");
    PlayLong(WriteWav("a.wav", Noise(20UL * 88200)));
    // Blocks of 200 ms, each heard from the moment it's mixed.
    EXPECT_TRUE(Until([] { return Info().latency == 200; }));
    const BASS_INFO info = Info();
    EXPECT_EQ(info.flags & 0xF10U, 0xF10U);
    EXPECT_EQ(info.hwsize + info.hwfree + info.freesam + info.free3d + info.dsver, 0U);
    EXPECT_EQ(info.eax, 1);
    EXPECT_EQ(info.minrate, 8000U);
    EXPECT_EQ(info.maxrate, 192000U);
    EXPECT_EQ(info.minbuf, 400U);
    EXPECT_EQ(info.initflags, DWORD{BASS_DEVICE_MONO | BASS_DEVICE_LATENCY});
    EXPECT_EQ(info.speakers, 6U);
    EXPECT_EQ(info.freq, 22050U);
    EXPECT_FALSE(BASS_GetInfo(nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
    SetVariable("VELMO_WAV_CHANNELS", "");
}

TEST_F(DeviceInfo, ProcessorTimeIsThatOfDecodingAndMixing)
{
    // As fast as possible, the two threads have no rest.
    Init("wav-fast:/dev/null");
    const std::string file = WriteWav("a.wav", Noise(60UL * 96000), 48000);
    EXPECT_TRUE(Until([&] {
        PlayToEnd(OpenStream(file, BASS_STREAM_AUTOFREE));
        return BASS_GetCPU() > 20;
    }));
    EXPECT_LE(BASS_GetCPU(), 250);
    EXPECT_TRUE(Until([] { return BASS_GetCPU() == 0; })) << "nothing plays any more";
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_OK);
    BASS_Free();
    Init("null");
    PlayLong(file);
    EXPECT_TRUE(Until([] { return BASS_GetCPU() > 0; }));
    EXPECT_LT(BASS_GetCPU(), 20);
}

} // namespace velmo::engine::test
