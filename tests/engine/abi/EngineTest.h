#pragma once

#include "bass.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmo::engine::test {

constexpr QWORD NoPosition = ~QWORD{0};

/// A test of the C functions with a directory of its own, in which the device volume and all files
/// lie. The engine is closed before and after.
class EngineTest : public ::testing::Test
{
protected:
    EngineTest();
    void TearDown() override;

    std::filesystem::path File(const std::string& name) const { return m_directory / name; }

    /// A WAV file of 16-bit samples, interleaved.
    std::string WriteWav(const std::string& name,
                         const std::vector<std::int16_t>& samples,
                         std::uint32_t rate = 44100,
                         std::uint32_t channels = 2) const;

    /// A ProTracker module of 64 rows without notes: about 7.7 s.
    std::string WriteModule(const std::string& name) const;

    /// Opens the output `audio`, as VELMO_AUDIO has it.
    static void Init(const std::string& audio, DWORD rate = 44100, DWORD flags = 0);
    /// Opens an output that writes as fast as it can into a file that `Rendered` reads.
    void InitFast(DWORD rate = 44100, DWORD flags = 0) const;

    static DWORD OpenStream(const std::string& path, DWORD flags = 0);
    /// Plays from where the channel stands and waits until its end was heard.
    static void PlayToEnd(DWORD channel);

    /// Closes the engine and gives the samples that `InitFast` or `Init("wav:" + File("out.wav"))`
    /// has written.
    std::vector<std::int16_t> Rendered() const;
    std::vector<float> RenderedFloats() const;

private:
    velmo::test::TempDir m_temporary;
    std::filesystem::path m_directory = m_temporary();
};

/// Sets a variable of the environment. While the engine is closed.
void SetVariable(const char* name, const std::string& value);

/// Waits until `condition` holds. False if it doesn't within `limit`.
bool Until(const std::function<bool()>& condition,
           std::chrono::milliseconds limit = std::chrono::seconds(30));

/// Waits until the position of `channel` hasn't moved for longer than any block; gives it.
QWORD AwaitStandstill(DWORD channel);

/// Samples without a pattern, none of them 0, extremes included.
std::vector<std::int16_t> Noise(std::size_t samples, std::uint32_t seed = 1);

} // namespace velmo::engine::test
