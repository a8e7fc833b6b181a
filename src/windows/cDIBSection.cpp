#include "cDIBSection.h"

namespace velmo {

namespace {

constexpr int BytesPerPixel = 3;

std::uint8_t ByteOf(std::uint32_t pixel, unsigned shift)
{
    return static_cast<std::uint8_t>(pixel >> shift);
}

} // namespace

bool cDIBSection::Create(int width, int height)
{
    ClearUp();
    if (width <= 0 || height <= 0)
        return false;
    m_width = width;
    m_height = height;
    m_bits.assign(static_cast<std::size_t>(BytesPerScanLine()) * static_cast<std::size_t>(height),
                  0);
    return true;
}

bool cDIBSection::CreateFromPicture(int width, int height, std::span<const std::uint32_t> pixels)
{
    if (!Create(width, height))
        return false;
    const auto columns = static_cast<std::size_t>(width);
    const auto rows = static_cast<std::size_t>(height);
    if (pixels.size() != columns * rows) {
        ClearUp();
        return false;
    }
    const auto lineBytes = static_cast<std::size_t>(BytesPerScanLine());
    for (std::size_t row = 0; row < rows; ++row) {
        auto bits = m_bits.begin() + static_cast<std::ptrdiff_t>((rows - 1 - row) * lineBytes);
        for (const std::uint32_t pixel : pixels.subspan(row * columns, columns))
            for (const unsigned shift : {0U, 8U, 16U})
                *bits++ = ByteOf(pixel, shift);
    }
    return true;
}

void cDIBSection::ClearUp()
{
    m_width = 0;
    m_height = 0;
    m_bits.clear();
}

int cDIBSection::BytesPerScanLine() const
{
    constexpr int Alignment = 4;
    return (m_width * BytesPerPixel + Alignment - 1) / Alignment * Alignment;
}

} // namespace velmo
