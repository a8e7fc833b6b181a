#pragma once

#include "BlockSink.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velmo::engine {

enum class WavFormat
{
    Pcm16,   ///< saturating
    Float32, ///< as rendered, not limited
};

/// A RIFF WAVE file that is being written. Its sizes say "unknown" (all ones) until the destructor
/// corrects them; what cannot be corrected, a pipe or a device, keeps them. Above 4 GiB they stay
/// at the largest value. After a failed write the rest is dropped.
class WavFile final : public BlockSink
{
public:
    /// Creates or empties `path`. Null if that fails; a FIFO without a reader fails too.
    [[nodiscard]] static std::unique_ptr<WavFile> Create(const std::string& path,
                                                         WavFormat format,
                                                         std::uint32_t sampleRate,
                                                         std::uint32_t channels);
    ~WavFile() override;
    WavFile(const WavFile&) = delete;
    WavFile& operator=(const WavFile&) = delete;

    void Write(const float* samples, std::size_t frames) noexcept override;
    void Flush() noexcept override;
    void Abandon() noexcept override;

private:
    WavFile(int file, WavFormat format, std::uint32_t sampleRate, std::uint32_t channels);

    void WriteHeader() noexcept;
    std::size_t Convert(const float* samples, std::size_t count) noexcept;
    bool WriteAll(const void* bytes, std::size_t size) noexcept;
    bool AwaitRoom() noexcept;
    void CorrectSizes() noexcept;

    int m_file;
    WavFormat m_format;
    std::uint32_t m_sampleRate;
    std::uint32_t m_channels;
    std::size_t m_sampleBytes;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_buffered = 0; ///< bytes
    std::uint64_t m_dataBytes = 0;
    bool m_headerWritten = false;
    bool m_failed = false;
    std::atomic<bool> m_abandoned{false};
};

} // namespace velmo::engine
