#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmo {

/// A bitmap of 24 bits a pixel: blue, green, red. Its scan lines go from the bottom up and are
/// padded with zeros to multiples of four bytes.
class cDIBSection
{
public:
    /// Makes it `width` by `height` pixels, all black. False, and nothing held, for a size that is
    /// not above zero.
    bool Create(int width, int height);

    /// Makes it a copy of a picture: 0x00RRGGBB, whatever the top byte, rows from the top down.
    /// False if `pixels` are not as many as the size needs.
    bool CreateFromPicture(int width, int height, std::span<const std::uint32_t> pixels);

    /// Lets go of the pixels.
    void ClearUp();

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int BytesPerScanLine() const;
    /// The scan lines, the bottom one first.
    std::span<const std::uint8_t> DIBSectionBits() const { return m_bits; }

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<std::uint8_t> m_bits;
};

} // namespace velmo
