#include "EngineTest.h"

#include <bit>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>

namespace velmo::engine::test {

namespace {

template<class Number>
void Append(std::string& bytes, Number number)
{
    static_assert(std::endian::native == std::endian::little);
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

std::string Save(const std::filesystem::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
}

/// The samples behind the header of 44 bytes, or the longer one of floats.
template<class Sample>
std::vector<Sample> ReadSamples(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    const std::size_t data = bytes.find("data");
    if (data == std::string::npos)
        return {};
    std::vector<Sample> samples((bytes.size() - data - 8) / sizeof(Sample));
    if (!samples.empty())
        std::memcpy(samples.data(), bytes.data() + data + 8, samples.size() * sizeof(Sample));
    return samples;
}

} // namespace

EngineTest::EngineTest()
{
    SetVariable("VELMO_HOME", m_temporary());
    SetVariable("VELMO_WAV_FORMAT", "");
    BASS_Free();
    BASS_SetConfig(BASS_CONFIG_BUFFER, 500);
    BASS_SetConfig(BASS_CONFIG_CURVE_VOL, 0);
}

void EngineTest::TearDown()
{
    BASS_Free();
}

std::string EngineTest::WriteWav(const std::string& name,
                                 const std::vector<std::int16_t>& samples,
                                 std::uint32_t rate,
                                 std::uint32_t channels) const
{
    const auto size = static_cast<std::uint32_t>(samples.size() * 2);
    std::string bytes = "RIFF";
    Append(bytes, size + 36);
    bytes += "WAVEfmt ";
    Append(bytes, std::uint32_t{16});
    Append(bytes, std::uint16_t{1});
    Append(bytes, static_cast<std::uint16_t>(channels));
    Append(bytes, rate);
    Append(bytes, rate * channels * 2);
    Append(bytes, static_cast<std::uint16_t>(channels * 2));
    Append(bytes, std::uint16_t{16});
    bytes += "data";
    Append(bytes, size);
    for (const std::int16_t sample : samples)
        Append(bytes, sample);
    return Save(File(name), bytes);
}

std::string EngineTest::WriteModule(const std::string& name) const
{
    std::string bytes(950, '\0');
    bytes += '\x01'; // one position
    bytes += '\x7F';
    bytes += std::string(128, '\0');
    bytes += "M.K.";
    bytes += std::string(1024, '\0');
    return Save(File(name), bytes);
}

void EngineTest::Init(const std::string& audio, DWORD rate, DWORD flags)
{
    SetVariable("VELMO_AUDIO", audio);
    ASSERT_TRUE(BASS_Init(-1, rate, flags, nullptr, nullptr)) << audio;
}

void EngineTest::InitFast(DWORD rate, DWORD flags) const
{
    Init("wav-fast:" + File("out.wav").string(), rate, flags);
}

DWORD EngineTest::OpenStream(const std::string& path, DWORD flags)
{
    const DWORD channel = BASS_StreamCreateFile(0, path.c_str(), 0, 0, flags);
    EXPECT_NE(channel, 0U) << BASS_ErrorGetCode();
    return channel;
}

void EngineTest::PlayToEnd(DWORD channel)
{
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    ASSERT_TRUE(Until([=] { return BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED; }));
}

std::vector<std::int16_t> EngineTest::Rendered() const
{
    BASS_Free();
    return ReadSamples<std::int16_t>(File("out.wav"));
}

std::vector<float> EngineTest::RenderedFloats() const
{
    BASS_Free();
    return ReadSamples<float>(File("out.wav"));
}

void SetVariable(const char* name, const std::string& value)
{
    setenv(name, value.c_str(), 1); // NOLINT(concurrency-mt-unsafe): no other thread reads it now
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

QWORD AwaitStandstill(DWORD channel)
{
    QWORD position = 0;
    EXPECT_TRUE(Until([&] {
        position = BASS_ChannelGetPosition(channel, BASS_POS_BYTE);
        return !Until([&] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) != position; },
                      std::chrono::milliseconds(300));
    })) << "it never stands";
    return position;
}

std::vector<std::int16_t> Noise(std::size_t samples, std::uint32_t seed)
{
    std::minstd_rand random(seed);
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
