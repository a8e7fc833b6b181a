#include "FileOpening.h"

#include "core/UnicodePath.h"

namespace velmo {

DWORD OpenStream(const modBass& bass, ports::Files& files, const std::string& path, DWORD flags)
{
    const std::u16string wide = ToUtf16(files.ResolveForOpen(path));
    return bass.BASS_StreamCreateFile(0, wide.c_str(), 0, 0, flags + BASS_UNICODE);
}

DWORD OpenModule(const modBass& bass, ports::Files& files, const std::string& path, DWORD flags)
{
    const std::u16string wide = ToUtf16(files.ResolveForOpen(path));
    return bass.BASS_MusicLoad(0, wide.c_str(), 0, 0, flags + BASS_UNICODE, 0);
}

DWORD OpenLocation(const modBass& bass, const std::string& path, DWORD flags)
{
    // Kept: what is handed over is the number of the text's address, not the text.
    const std::string digits = std::to_string(reinterpret_cast<std::uintptr_t>(path.data()));
    return bass.BASS_StreamCreateURL(digits.c_str(), 0, flags, nullptr, nullptr);
}

} // namespace velmo
