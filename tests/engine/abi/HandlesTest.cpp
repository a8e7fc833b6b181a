// Handles, codes, states and positions of channels, and what stays when the engine is closed.

#include "EngineTest.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <set>

namespace velmo::engine::test {

namespace {

class Handles : public EngineTest
{};

/// Every function that takes a channel, with what it gives for none.
// NOLINTNEXTLINE(readability-function-size): a list of all functions; each check counts many times
void ExpectNoChannel(DWORD handle, int code)
{
    const auto failed = [code](bool refused) { return refused && BASS_ErrorGetCode() == code; };
    BASS_CHANNELINFO info = {};
    info.freq = 77;
    float frequency = 77;
    EXPECT_TRUE(failed(!BASS_StreamFree(handle)));
    EXPECT_TRUE(failed(!BASS_MusicFree(handle)));
    EXPECT_TRUE(failed(!BASS_ChannelPlay(handle, 0)));
    EXPECT_TRUE(failed(!BASS_ChannelPlay(handle, 1)));
    EXPECT_TRUE(failed(!BASS_ChannelPause(handle)));
    EXPECT_TRUE(failed(!BASS_ChannelStop(handle)));
    EXPECT_TRUE(failed(BASS_ChannelGetPosition(handle, BASS_POS_BYTE) == NoPosition));
    EXPECT_TRUE(failed(BASS_ChannelGetLength(handle, BASS_POS_BYTE) == NoPosition));
    EXPECT_TRUE(failed(!BASS_ChannelSetPosition(handle, 0, BASS_POS_BYTE)));
    EXPECT_TRUE(failed(BASS_ChannelBytes2Seconds(handle, 4) == -1.0));
    EXPECT_TRUE(failed(!BASS_ChannelGetInfo(handle, &info)));
    EXPECT_TRUE(failed(!BASS_ChannelGetAttribute(handle, BASS_ATTRIB_FREQ, &frequency)));
    EXPECT_TRUE(failed(BASS_ChannelGetData(handle, &frequency, 4U | BASS_DATA_FLOAT) == ~0U));
    EXPECT_TRUE(failed(BASS_ChannelSetFX(handle, 0x10004, 0) == 0));
    EXPECT_TRUE(failed(!BASS_ChannelRemoveFX(handle, handle)));
    EXPECT_TRUE(failed(!BASS_FXSetParameters(handle, &info)));
    EXPECT_TRUE(failed(!BASS_FXGetParameters(handle, &info)));
    EXPECT_TRUE(failed(BASS_ChannelGetClipCount(handle) == NoPosition));
    EXPECT_EQ(info.freq, 77U);
    EXPECT_EQ(frequency, 77.0f);
    EXPECT_EQ(BASS_ChannelIsActive(handle), DWORD{BASS_ACTIVE_STOPPED});
    EXPECT_EQ(BASS_ErrorGetCode(), code) << "IsActive leaves the code";
}

} // namespace

TEST_F(Handles, EverythingIsHarmlessBeforeInit)
{
    const std::string file = WriteWav("a.wav", Noise(100));
    for (const DWORD handle : {0U, 1U, 0x10000001U, 0xFFFFFFFFU})
        ExpectNoChannel(handle, BASS_ERROR_INIT);
    const auto failed = [](bool refused) {
        return refused && BASS_ErrorGetCode() == BASS_ERROR_INIT;
    };
    EXPECT_TRUE(failed(!BASS_Free()));
    EXPECT_TRUE(failed(!BASS_Stop()));
    EXPECT_TRUE(failed(BASS_GetVolume() == -1.0f));
    EXPECT_TRUE(failed(!BASS_SetVolume(0.5f)));
    BASS_STATISTICS statistics = {};
    EXPECT_TRUE(failed(!BASS_GetStatistics(&statistics)));
    EXPECT_TRUE(failed(!BASS_SetEAXParameters(0, 1, 1, 1)));
    EXPECT_TRUE(failed(BASS_StreamCreateFile(0, file.c_str(), 0, 0, 0) == 0));
    EXPECT_TRUE(failed(BASS_MusicLoad(0, file.c_str(), 0, 0, 0, 0) == 0));
    EXPECT_TRUE(failed(BASS_StreamCreateURL("http://localhost/", 0, 0, nullptr, nullptr) == 0));
    EXPECT_EQ(BASS_GetVersion() >> 16U, 0x204U);
}

TEST_F(Handles, InitIsDoneOnceAndRefusesWhatCannotBeOpened)
{
    SetVariable("VELMO_AUDIO", "null");
    EXPECT_FALSE(BASS_Init(7, 44100, 0, nullptr, nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_DEVICE);
    SetVariable("VELMO_AUDIO", "wav:/nonexistent/out.wav");
    EXPECT_FALSE(BASS_Init(-1, 44100, 0, nullptr, nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_DEVICE);
    Init("null");
    EXPECT_FALSE(BASS_Init(-1, 44100, 0, nullptr, nullptr));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ALREADY);
    EXPECT_TRUE(BASS_Free());
    for (const DWORD rate : {0U, 0xFFFFFFFFU, 1U, 10000000U}) {
        Init("null", rate);
        EXPECT_TRUE(BASS_Free()) << rate;
    }
}

TEST_F(Handles, OptionsAreKnownByTheirNumber)
{
    for (DWORD option = 0; option < 20; ++option) {
        const bool known = option == 0 || (option >= 7 && option <= 12);
        EXPECT_EQ(BASS_SetConfig(option, 0) != 0, known) << option;
        EXPECT_EQ(BASS_ErrorGetCode(), known ? BASS_OK : BASS_ERROR_ILLPARAM) << option;
        EXPECT_EQ(BASS_SetConfigPtr(option, "proxy"), option == BASS_CONFIG_NET_PROXY) << option;
    }
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
    EXPECT_TRUE(BASS_SetConfigPtr(BASS_CONFIG_NET_PROXY, nullptr));
}

TEST_F(Handles, WhatCannotBeOpenedSaysWhy)
{
    struct Case
    {
        std::string path;
        int asStream;
        int asMusic;
    };
    std::ofstream(File("text.mp3")) << std::string(5000, 'x');
    std::ofstream(File("empty.wav")).flush();
    Init("null");
    for (const Case& c : {
             Case{File("missing.wav").string(), BASS_ERROR_FILEOPEN, BASS_ERROR_FILEOPEN},
             Case{File("").string(),            BASS_ERROR_FILEOPEN, BASS_ERROR_FILEOPEN},
             Case{File("text.mp3").string(),    BASS_ERROR_FILEFORM, BASS_ERROR_FILEFORM},
             Case{File("empty.wav").string(),   BASS_ERROR_FILEFORM, BASS_ERROR_FILEFORM},
             Case{WriteWav("a.wav",             Noise(100)),         BASS_OK,             BASS_ERROR_FILEFORM},
             Case{WriteModule("a.mod"),                            BASS_ERROR_FILEFORM,                            BASS_OK}
    }) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(BASS_StreamCreateFile(0, c.path.c_str(), 0, 0, 0) != 0, c.asStream == BASS_OK);
        EXPECT_EQ(BASS_ErrorGetCode(), c.asStream);
        EXPECT_EQ(BASS_MusicLoad(0, c.path.c_str(), 0, 0, 0, 0) != 0, c.asMusic == BASS_OK);
        EXPECT_EQ(BASS_ErrorGetCode(), c.asMusic);
    }
    const auto illegal = [](DWORD handle) {
        return handle == 0 && BASS_ErrorGetCode() == BASS_ERROR_ILLPARAM;
    };
    EXPECT_TRUE(illegal(BASS_StreamCreateFile(0, nullptr, 0, 0, 0)));
    EXPECT_TRUE(illegal(BASS_StreamCreateFile(1, "x", 0, 1, 0)));
    EXPECT_TRUE(illegal(BASS_MusicLoad(0, nullptr, 0, 0, BASS_UNICODE, 0)));
    EXPECT_TRUE(illegal(BASS_StreamCreateURL(nullptr, 0, 0, nullptr, nullptr)));
    EXPECT_EQ(BASS_StreamCreateURL("12345", 0, 0, nullptr, nullptr), 0U);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_FILEOPEN);
}

TEST_F(Handles, WidePathsNameFilesOfAnyBytes)
{
    struct Case
    {
        std::string name;
        std::u16string wide;
    };
    Init("null");
    for (const Case& c : {
             Case{"ä€.wav",      u"ä€.wav"       },
             Case{"\U0001F3B5.wav", u"\U0001F3B5.wav"  },
             Case{"\xFF\x80.wav",   u"\xDCFF\xDC80.wav"}
    }) {
        const std::string file = WriteWav(c.name, Noise(100));
        const std::string directory = File("").string();
        const std::u16string wide = std::u16string(directory.begin(), directory.end()) + c.wide;
        const DWORD channel =
            BASS_StreamCreateFile(0, wide.c_str(), 0, 0, BASS_UNICODE | BASS_SAMPLE_3D);
        BASS_CHANNELINFO info = {};
        ASSERT_TRUE(BASS_ChannelGetInfo(channel, &info)) << c.name;
        EXPECT_EQ(info.filename, file);
        EXPECT_EQ(info.flags, DWORD{BASS_SAMPLE_3D});
    }
}

TEST_F(Handles, ChannelsTellWhatTheyAre)
{
    Init("null");
    const std::string file = WriteWav("a.wav", Noise(2UL * 22050), 22050);
    struct Case
    {
        DWORD flags;
        DWORD sampleBytes;
    };
    for (const Case& c : {
             Case{0,                 2},
             Case{BASS_SAMPLE_8BITS, 1},
             Case{BASS_SAMPLE_FLOAT, 4}
    }) {
        const DWORD channel = OpenStream(file, c.flags);
        BASS_CHANNELINFO info = {};
        ASSERT_TRUE(BASS_ChannelGetInfo(channel, &info));
        EXPECT_EQ(info.freq, 22050U);
        EXPECT_EQ(info.chans, 2U);
        EXPECT_EQ(info.flags, c.flags);
        EXPECT_EQ(info.ctype, DWORD{BASS_CTYPE_STREAM_WAV});
        const QWORD length = BASS_ChannelGetLength(channel, BASS_POS_BYTE);
        EXPECT_EQ(length, QWORD{22050} * 2 * c.sampleBytes);
        EXPECT_EQ(BASS_ChannelBytes2Seconds(channel, length / 2), 0.5);
        float frequency = 0;
        EXPECT_TRUE(BASS_ChannelGetAttribute(channel, BASS_ATTRIB_FREQ, &frequency));
        EXPECT_EQ(frequency, 22050.0f);
        EXPECT_FALSE(BASS_ChannelGetAttribute(channel, 99, &frequency));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
        EXPECT_FALSE(BASS_ChannelGetInfo(channel, nullptr));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
        EXPECT_EQ(BASS_ChannelGetPosition(channel, 1), NoPosition);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOTAVAIL);
        EXPECT_FALSE(BASS_ChannelPause(channel));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOPLAY);
        EXPECT_TRUE(BASS_ChannelSetPosition(channel, 400, BASS_POS_BYTE));
        EXPECT_FALSE(BASS_ChannelSetPosition(channel, length + 1, BASS_POS_BYTE));
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_POSITION);
        EXPECT_EQ(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), 400U);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_OK);
    }
}

TEST_F(Handles, AreFreedByTheirOwnKindAndNeverComeAgain)
{
    Init("null");
    const std::string stream = WriteWav("a.wav", Noise(100));
    const std::string module = WriteModule("a.mod");
    std::set<DWORD> seen = {0};
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 20; ++i) {
            const DWORD wave = OpenStream(stream);
            const DWORD music = BASS_MusicLoad(0, module.c_str(), 0, 0, 0, 0);
            EXPECT_TRUE(seen.insert(wave).second);
            EXPECT_TRUE(seen.insert(music).second);
            EXPECT_FALSE(BASS_MusicFree(wave));
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_HANDLE);
            EXPECT_FALSE(BASS_StreamFree(music));
            EXPECT_TRUE(BASS_StreamFree(wave));
            EXPECT_TRUE(BASS_MusicFree(music));
            ExpectNoChannel(wave, BASS_ERROR_HANDLE);
            ExpectNoChannel(music, BASS_ERROR_HANDLE);
        }
        // Those that are open when the engine is closed are gone with it.
        const DWORD left = OpenStream(stream);
        EXPECT_TRUE(seen.insert(left).second);
        EXPECT_TRUE(BASS_ChannelPlay(left, 1));
        EXPECT_TRUE(BASS_Free());
        ExpectNoChannel(left, BASS_ERROR_INIT);
        Init("null");
        ExpectNoChannel(left, BASS_ERROR_HANDLE);
    }
}

TEST_F(Handles, AutofreeChannelsEndWithTheirLastSampleHeardOrAStop)
{
    Init("null");
    const std::string file = WriteWav("a.wav", Noise(2UL * 8820));
    const DWORD played = OpenStream(file, BASS_STREAM_AUTOFREE);
    const auto start = std::chrono::steady_clock::now();
    PlayToEnd(played);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    EXPECT_GE(time.count(), 0.18) << "0.2 s of sound";
    ExpectNoChannel(played, BASS_ERROR_HANDLE);

    const DWORD unplayed = OpenStream(file, BASS_STREAM_AUTOFREE);
    EXPECT_TRUE(BASS_ChannelStop(unplayed));
    ExpectNoChannel(unplayed, BASS_ERROR_HANDLE);
}

TEST_F(Handles, OtherChannelsStayAfterTheirEnd)
{
    Init("null");
    const DWORD channel = OpenStream(WriteWav("a.wav", Noise(2UL * 88200)));
    const QWORD length = BASS_ChannelGetLength(channel, BASS_POS_BYTE);
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, length - QWORD{4} * 4410, BASS_POS_BYTE));
    PlayToEnd(channel);
    EXPECT_EQ(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), length);
    EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
    EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PLAYING});
    EXPECT_LT(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), length);
    EXPECT_TRUE(BASS_ChannelStop(channel));
    EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_STOPPED});
    EXPECT_EQ(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), 0U);
}

TEST_F(Handles, PositionIsThatOfTheSampleBeingHeard)
{
    Init("null");
    const DWORD channel = OpenStream(WriteWav("a.wav", Noise(2UL * 88200)));
    const auto heard = [channel] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE); };
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
    QWORD last = 0;
    ASSERT_TRUE(Until([&] {
        const QWORD now = heard();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        EXPECT_GE(now, last);
        // One block is rendered ahead at most; half a second is decoded ahead.
        EXPECT_LE(static_cast<double>(now), (time.count() + 0.05) * 44100 * 4);
        last = now;
        return now > QWORD{4} * 13230;
    }));
    ASSERT_TRUE(BASS_ChannelPause(channel));
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, 4000, BASS_POS_BYTE));
    EXPECT_EQ(heard(), 4000U);
    EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PAUSED});
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    ASSERT_TRUE(Until([&] { return heard() > 8000; }));
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, 80000, BASS_POS_BYTE));
    EXPECT_GE(heard(), 80000U);
    ASSERT_TRUE(Until([&] { return heard() > 82000; }));
}

TEST_F(Handles, DeviceRemembersItsVolumeButNeverSilence)
{
    struct Case
    {
        float set;
        float next;
    };
    Init("null");
    EXPECT_EQ(BASS_GetVolume(), 1.0f);
    ASSERT_TRUE(BASS_SetVolume(0.7f));
    ASSERT_TRUE(BASS_Stop());
    EXPECT_TRUE(std::filesystem::exists(File("device-volume"))) << "stored by a stop too";
    for (const Case& c : {
             Case{0.3f,     0.3f    },
             Case{0,        0.3f    },
             Case{1.0f / 3, 1.0f / 3},
             Case{1,        1       }
    }) {
        ASSERT_TRUE(BASS_SetVolume(c.set));
        EXPECT_EQ(BASS_GetVolume(), c.set);
        for (const float wrong : {-0.1f, 1.001f, std::numeric_limits<float>::quiet_NaN()}) {
            EXPECT_FALSE(BASS_SetVolume(wrong));
            EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
        }
        EXPECT_EQ(BASS_GetVolume(), c.set);
        BASS_Free();
        Init("null");
        EXPECT_EQ(BASS_GetVolume(), c.next);
    }
    EXPECT_TRUE(std::filesystem::exists(File("device-volume")));
    for (const char* content : {"", "loud", "7", "-1", "nan"}) {
        BASS_Free();
        std::ofstream(File("device-volume")) << content;
        Init("null");
        EXPECT_EQ(BASS_GetVolume(), 1.0f) << content;
    }
}

} // namespace velmo::engine::test
