/// Files that libsndfile decodes: what the decoders of WAV and AIFF share.
#pragma once

#include "bass_plugin.h"

#include "decode/FileWindow.h"
#include "decode/Result.h"

#include <sndfile.h>

#include <cstdint>
#include <memory>
#include <span>

namespace velmo::engine {

/// One open file. Samples of integer formats are scaled so that full scale is -1 to 1: 16 bits as
/// value / 32768.
class SndfileSource
{
public:
    /// Opens `window` if its container is one of `containers` (SF_FORMAT_ numbers); `ctype` is what
    /// `Format` says then. Fails with 41 for foreign or unreadable contents, with 6 for more than 8
    /// channels or a length that is not told.
    static Result<std::unique_ptr<SndfileSource>> Open(FileWindow window,
                                                       std::span<const int> containers,
                                                       std::uint32_t ctype);

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    struct Closer
    {
        void operator()(SNDFILE* file) const noexcept { sf_close(file); }
    };

    explicit SndfileSource(FileWindow window) noexcept;
    SF_INFO OpenFile(sf_vio_read read);
    int OpenContents(std::span<const int> containers, std::uint32_t ctype);
    std::uint64_t CountRounded(std::uint64_t told);
    void ReadToEnd();
    sf_count_t ReadFloats(float* out, std::size_t frames) noexcept;
    sf_count_t ReadInt16(float* out, std::size_t frames) noexcept;

    FileWindow m_window;
    std::unique_ptr<SNDFILE, Closer> m_file;
    BASS_SOURCE_FORMAT m_format = {};
    bool m_holdsFloats = false;
    bool m_holdsInt16 = false;
    std::uint64_t m_position = 0;
};

} // namespace velmo::engine
