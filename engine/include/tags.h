/// Tags of open channels, as text.
///
/// A format text is given back with each of these marks replaced by the field of the channel's file
/// that it stands for:
///
///     %ARTI artist    %TITL title      %ALBM album    %CMNT comment    %COMP composer
///     %COPY copyright %GNRE genre name %YEAR year     %TRCK track number
///
/// The result is UTF-8 and belongs to the library: it stays valid until the next call on the same
/// thread. Null stands for a handle that is not open, a file without such a tag, and a field text
/// without content. Any thread may call; the file is read on that thread, and what was read of the
/// last handle is kept.
#ifndef VELMO_TAGS_H
#define VELMO_TAGS_H

#include "bass.h"

#ifdef __cplusplus
#  define VELMO_NOEXCEPT noexcept
extern "C" {
#else
#  define VELMO_NOEXCEPT
#endif

/// The tags that belong to the file's format: ID3v2, then APE, of an MPEG file; comments of Ogg and
/// FLAC files, Opus too; the ID3 chunk and the INFO list of WAV files, the ID3 chunk and the text
/// chunks of AIFF files; those of MPEG-4 and ASF files; APE, then ID3v2, of all others. Modules
/// have none.
const char* TAGS_Read(DWORD handle, const char* format) VELMO_NOEXCEPT;

/// The ID3v1 tag in the last 128 bytes of the file. Its texts are taken as UTF-8 where they are
/// valid, else as Windows-1252; trailing blanks and NULs are cut. It has no composer and no
/// copyright.
const char* TAGS_ID3V1_Read(DWORD handle, const char* format) VELMO_NOEXCEPT;

#undef VELMO_NOEXCEPT

#ifdef __cplusplus
}
#endif

#endif
