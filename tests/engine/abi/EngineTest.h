#pragma once

#include "bass.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::engine::test {

constexpr QWORD NoPosition = ~QWORD{0};

/// A test of the C functions with a directory of its own, in which the device volume and all files
/// lie. The engine is closed before and after.
class EngineTest : public ::testing::Test
{
protected:
    EngineTest();
    void TearDown() override { BASS_Free(); }

    std::string File(const std::string& name) const { return m_directory(name); }

    /// A WAV file of interleaved samples, 16-bit ones or floats.
    template<class Sample = std::int16_t>
    std::string WriteWav(const std::string& name,
                         const std::vector<Sample>& samples,
                         std::uint32_t rate = 44100,
                         std::uint32_t channels = 2) const
    {
        const std::string_view sound(reinterpret_cast<const char*>(samples.data()),
                                     samples.size() * sizeof(Sample));
        return m_directory.Write(name, Wav(sound, sizeof(Sample), rate, channels));
    }
    /// A ProTracker module of 64 rows without notes: about 7.7 s.
    std::string WriteModule(const std::string& name) const;

    /// Opens the output `audio`, as VELMO_AUDIO has it.
    static void Init(const std::string& audio, DWORD rate = 44100, DWORD flags = 0);
    /// Opens an output that writes into a file that `Rendered` reads: as fast as it can, or at the
    /// speed of a clock, with so much sound in store that a busy machine makes no gap.
    void InitFast(DWORD flags = 0) const { Init("wav-fast:" + File("out.wav"), 44100, flags); }
    void InitPaced() const;

    static DWORD OpenStream(const std::string& path, DWORD flags = 0);
    /// Plays from where the channel stands and waits until its end was heard.
    static void PlayToEnd(DWORD channel);

    /// Closes the engine and gives the samples that were written.
    template<class Sample = std::int16_t>
    std::vector<Sample> Rendered() const
    {
        const std::string sound = RenderedBytes();
        std::vector<Sample> samples(sound.size() / sizeof(Sample));
        if (!samples.empty())
            std::memcpy(samples.data(), sound.data(), samples.size() * sizeof(Sample));
        return samples;
    }

    velmo::test::TempDir m_directory;

private:
    static std::string Wav(std::string_view sound,
                           std::size_t sampleBytes,
                           std::uint32_t rate,
                           std::uint32_t channels);
    std::string RenderedBytes() const;
};

/// Sets a variable of the environment. While the engine is closed.
void SetVariable(const char* name, const std::string& value);

/// The code of the call that gave `result`, which has to be false or 0 if it failed, and only then.
template<class Result>
int Code(Result result)
{
    const int code = BASS_ErrorGetCode();
    EXPECT_EQ(result != Result{}, code == BASS_OK);
    return code;
}

/// Waits until `condition` holds. False if it doesn't within `limit`.
bool Until(const std::function<bool()>& condition,
           std::chrono::milliseconds limit = std::chrono::seconds(60));

/// Position in bytes.
QWORD Heard(DWORD channel);
void AwaitHeard(DWORD channel, QWORD bytes);
void AwaitEnd(DWORD channel);

/// Waits until `number`, a position for one, hasn't changed for longer than any block; gives it.
QWORD AwaitStandstill(const std::function<QWORD()>& number);
QWORD AwaitStandstill(DWORD channel);

BASS_STATISTICS Statistics();

/// Samples without a pattern, none of them 0, extremes included.
std::vector<std::int16_t> Noise(std::size_t samples);

} // namespace velmo::engine::test
