#pragma once

#include "controls/PictureRef.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// The pack: what the build makes of the picture files and what is compiled in. A table of entries,
/// then their pixels, each aligned to four bytes; numbers in the machine's own order.
///
/// Pixels at scale 1 are stored as they are shown: the pages that a window needs are mapped in with
/// the program, and the four windows with all that stands on them are there after 0.1 ms. Coded,
/// they would take a millisecond of each start to save one megabyte on disk. Scales 2 and 3 are
/// coded
/// (`PixelCoding.h`): plain, they would be 20 megabytes.
namespace velmo::skin {

inline constexpr int ScaleCount = 3;

struct PackedList
{
    controls::PictureList list;
    const char* name; ///< of its folder
    int count;
};

inline constexpr std::array PackedLists{
    PackedList{controls::PictureList::wmain,     "wmain",     49},
    PackedList{controls::PictureList::wnd,       "wnd",       18},
    PackedList{controls::PictureList::fx,        "fx",        22},
    PackedList{controls::PictureList::pl,        "pl",        34},
    PackedList{controls::PictureList::listmgr,   "listmgr",   1 },
    PackedList{controls::PictureList::scrollBar, "scrollBar", 12},
};

struct PackEntry
{
    std::uint32_t offset;     ///< of the pixels, from the start of the pack
    std::uint32_t codedBytes; ///< 0 for plain pixels
    std::uint16_t width;
    std::uint16_t height;
};

/// Where in the table a picture of a list stands, for `index` from 1 and `scale` from 1: lists in
/// their order, in them pictures by index, each at its scales.
constexpr std::size_t PackPlace(std::size_t listPlace, int index, int scale)
{
    int before = index - 1;
    for (std::size_t place = 0; place < listPlace; ++place)
        before += PackedLists[place].count;
    return static_cast<std::size_t>(before * ScaleCount + scale - 1);
}

inline constexpr std::size_t PackEntryCount = PackPlace(PackedLists.size(), 1, 1);

} // namespace velmo::skin
