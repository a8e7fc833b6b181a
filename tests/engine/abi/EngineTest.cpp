#include "EngineTest.h"

#include "support/LittleEndian.h"

#include <cstdlib>
#include <random>
#include <thread>

namespace velmo::engine::test {

EngineTest::EngineTest()
{
    SetVariable("VELMO_HOME", m_directory());
    SetVariable("VELMO_WAV_FORMAT", "");
    SetVariable("VELMO_WAV_CHANNELS", "");
    BASS_Free();
    BASS_SetConfig(BASS_CONFIG_BUFFER, 500);
    BASS_SetConfig(BASS_CONFIG_CURVE_VOL, 0);
}

std::string EngineTest::Wav(std::string_view sound,
                            std::size_t sampleBytes,
                            std::uint32_t rate,
                            std::uint32_t channels)
{
    using velmo::test::LittleEndian;
    const std::size_t kind = sampleBytes == sizeof(float) ? 3 : 1;
    const std::size_t frameBytes = channels * sampleBytes;
    return "RIFF" + LittleEndian(4, {sound.size() + 36}) + "WAVEfmt " + LittleEndian(4, {16})
           + LittleEndian(2, {kind, channels}) + LittleEndian(4, {rate, rate * frameBytes})
           + LittleEndian(2, {frameBytes, sampleBytes * 8}) + "data"
           + LittleEndian(4, {sound.size()}) + std::string(sound);
}

std::string EngineTest::WriteModule(const std::string& name) const
{
    const std::string zeros(1024, '\0');
    const std::string onePosition = "\x01\x7F";
    return m_directory.Write(
        name, zeros.substr(0, 950) + onePosition + zeros.substr(0, 128) + "M.K." + zeros);
}

void EngineTest::Init(const std::string& audio, DWORD rate, DWORD flags)
{
    SetVariable("VELMO_AUDIO", audio);
    ASSERT_TRUE(BASS_Init(-1, rate, flags, nullptr, nullptr)) << audio;
}

void EngineTest::InitPaced() const
{
    constexpr DWORD BufferMs = 5000;
    BASS_SetConfig(BASS_CONFIG_BUFFER, BufferMs);
    Init("wav:" + File("out.wav"));
}

DWORD EngineTest::OpenStream(const std::string& path, DWORD flags)
{
    const DWORD channel = BASS_StreamCreateFile(0, path.c_str(), 0, 0, flags);
    EXPECT_EQ(Code(channel), BASS_OK) << path;
    return channel;
}

void EngineTest::PlayToEnd(DWORD channel)
{
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    AwaitEnd(channel);
}

/// What is behind the header, which is longer with floats.
std::string EngineTest::RenderedBytes() const
{
    BASS_Free();
    const std::string wav = m_directory.Read("out.wav");
    const std::size_t data = wav.find("data");
    return data == std::string::npos ? "" : wav.substr(data + 8);
}

void SetVariable(const char* name, const std::string& value)
{
    setenv(name, value.c_str(), 1);
}

bool Until(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

QWORD Heard(DWORD channel)
{
    return BASS_ChannelGetPosition(channel, BASS_POS_BYTE);
}

void AwaitHeard(DWORD channel, QWORD bytes)
{
    EXPECT_TRUE(Until([=] { return Heard(channel) >= bytes; })) << bytes;
}

void AwaitEnd(DWORD channel)
{
    EXPECT_TRUE(Until([=] { return BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED; }));
}

QWORD AwaitStandstill(const std::function<QWORD()>& number)
{
    QWORD last = 0;
    EXPECT_TRUE(Until([&] {
        last = number();
        // In short looks, so that a machine that stops for a while spoils but one of them.
        bool moves = false;
        for (int look = 0; look < 30 && !moves; ++look)
            moves = Until([&] { return number() != last; }, std::chrono::milliseconds(10));
        return !moves;
    })) << "it never stands";
    return last;
}

QWORD AwaitStandstill(DWORD channel)
{
    return AwaitStandstill([=] { return Heard(channel); });
}

BASS_STATISTICS Statistics()
{
    BASS_STATISTICS statistics = {};
    EXPECT_TRUE(BASS_GetStatistics(&statistics));
    return statistics;
}

std::vector<std::int16_t> Noise(std::size_t samples)
{
    std::minstd_rand random;
    std::uniform_int_distribution<int> values(-32768, 32767);
    std::vector<std::int16_t> noise(samples);
    for (std::int16_t& sample : noise) {
        const int value = values(random);
        sample = static_cast<std::int16_t>(value == 0 ? 1 : value);
    }
    if (samples > 3) {
        noise[1] = 32767;
        noise[2] = -32768;
    }
    return noise;
}

} // namespace velmo::engine::test
