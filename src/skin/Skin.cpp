#include "Skin.h"

#include "PackFormat.h"
#include "PixelCoding.h"

#include <algorithm>
#include <cstring>
#include <optional>

/// The pack, put into the program by SkinData.S.
extern "C" const std::uint8_t VelmoSkinPack[];

namespace velmo::skin {

namespace {

std::optional<std::size_t> PlaceOf(controls::PictureList list)
{
    const auto* const found = std::ranges::find(PackedLists, list, &PackedList::list);
    if (found == PackedLists.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - PackedLists.begin());
}

std::optional<PackEntry> EntryOf(controls::PictureRef picture, int scale)
{
    if (picture.index < 1 || picture.index > CountOf(picture.list))
        return std::nullopt;
    PackEntry entry{};
    const std::size_t place = PackPlace(*PlaceOf(picture.list), picture.index, scale);
    std::memcpy(&entry, VelmoSkinPack + place * sizeof entry, sizeof entry);
    return entry;
}

std::span<const std::uint32_t> PlainPixels(const PackEntry& entry)
{
    const std::size_t count = std::size_t{entry.width} * entry.height;
    // The pack keeps its plain pixels aligned.
    return {reinterpret_cast<const std::uint32_t*>(VelmoSkinPack + entry.offset), count};
}

std::vector<std::uint32_t> CodedPixels(const PackEntry& entry)
{
    std::vector<std::uint32_t> pixels(std::size_t{entry.width} * entry.height);
    DecodePixels({VelmoSkinPack + entry.offset, entry.codedBytes}, entry.width, pixels);
    return pixels;
}

} // namespace

int CountOf(controls::PictureList list)
{
    const auto place = PlaceOf(list);
    return place ? PackedLists[*place].count : 0;
}

PictureSize SizeOf(controls::PictureRef picture)
{
    const auto entry = EntryOf(picture, 1);
    return entry ? PictureSize{entry->width, entry->height} : PictureSize{};
}

Bitmap Decode(controls::PictureRef picture, int scale)
{
    const auto entry = EntryOf(picture, std::clamp(scale, 1, LargestScale));
    if (!entry)
        return {};
    Bitmap bitmap{.width = entry->width, .height = entry->height, .constant = {}, .decoded = {}};
    if (entry->codedBytes == 0)
        bitmap.constant = PlainPixels(*entry);
    else
        bitmap.decoded = CodedPixels(*entry);
    return bitmap;
}

} // namespace velmo::skin
