#include "Picture.h"

#include <algorithm>

namespace velmo::controls {

namespace {

constexpr std::uint32_t Opaque = 0xFF000000;

/// The columns of a row in which something changes: from `first` to before `end`.
struct Columns
{
    int first = 0;
    int end = 0;
};

/// Writes one row of pixels.
Columns SetRow(std::uint32_t* row, std::span<const std::uint8_t> indexes, const Palette& palette)
{
    Columns changed{.first = static_cast<int>(indexes.size()), .end = 0};
    for (std::size_t x = 0; x < indexes.size(); ++x) {
        const std::uint32_t pixel = Opaque | palette[indexes[x]];
        if (row[x] == pixel)
            continue;
        row[x] = pixel;
        changed.first = std::min(changed.first, static_cast<int>(x));
        changed.end = static_cast<int>(x) + 1;
    }
    return changed;
}

} // namespace

Picture::Picture(Form& form, std::string name, Bounds bounds)
    : Control(form, ControlKind::Picture, std::move(name), bounds)
{}

void Picture::SetDIBits(int width,
                        int height,
                        std::span<const std::uint8_t> indexes,
                        const Palette& palette)
{
    const bool isAllNew = width != m_pixelWidth || height != m_pixelHeight;
    if (isAllNew)
        Resize(width, height);
    const bool isNewPalette = TakePalette(palette);
    const auto rowLength = static_cast<std::size_t>(width);
    Columns changed{.first = width, .end = 0};
    int top = height;
    int bottom = 0;
    for (int y = 0; y < height; ++y) {
        const std::size_t fromBottom = static_cast<std::size_t>(height - 1 - y) * rowLength;
        const std::span<const std::uint8_t> row = indexes.subspan(fromBottom, rowLength);
        std::uint8_t* const last = m_indexes.data() + fromBottom;
        if (!isAllNew && !isNewPalette && std::equal(row.begin(), row.end(), last))
            continue;
        std::copy(row.begin(), row.end(), last);
        const Columns columns =
            SetRow(m_pixels.data() + static_cast<std::size_t>(y) * rowLength, row, palette);
        if (columns.end == 0)
            continue;
        changed = {.first = std::min(changed.first, columns.first),
                   .end = std::max(changed.end, columns.end)};
        top = std::min(top, y);
        bottom = y + 1;
    }
    if (changed.end > 0)
        Tell({.left = changed.first,
              .top = top,
              .width = changed.end - changed.first,
              .height = bottom - top});
}

void Picture::Cls()
{
    if (m_pixels.empty())
        return;
    const PixelArea area{.left = 0, .top = 0, .width = m_pixelWidth, .height = m_pixelHeight};
    m_pixels.clear();
    m_pixelWidth = 0;
    m_pixelHeight = 0;
    Tell(area);
}

const std::vector<std::uint32_t>& Picture::Pixels() const
{
    return m_pixels;
}

int Picture::PixelWidth() const
{
    return m_pixelWidth;
}

int Picture::PixelHeight() const
{
    return m_pixelHeight;
}

void Picture::Resize(int width, int height)
{
    Cls();
    m_pixelWidth = width;
    m_pixelHeight = height;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    m_pixels.assign(count, 0);
    m_indexes.assign(count, 0);
}

/// Whether the palette is another one than before.
bool Picture::TakePalette(const Palette& palette)
{
    if (palette == m_palette)
        return false;
    m_palette = palette;
    return true;
}

void Picture::Tell(const PixelArea& area) const
{
    if (PixelsChanged)
        PixelsChanged(area);
}

} // namespace velmo::controls
