#pragma once

#include "Controls.h"
#include "PixelArea.h"

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace velmo::controls {

/// 256 colours, 0x00RRGGBB each.
using Palette = std::array<std::uint32_t, 256>;

/// A box for moving pictures. What is drawn stands at its upper left corner, pixel by logical
/// pixel; the rest of the box, and all of it while nothing is drawn, is plain `BackColor`.
///
/// It is drawn some dozens of times a second, so it does not go the way of the properties: what
/// shows the box is told at once, and only of the part whose colours have changed.
class Picture final : public Control
{
public:
    Picture(Form& form, std::string name, Bounds bounds);

    Property<Colour> BackColor{*this, GlassBlack};

    /// Shows `width` times `height` pixels. `indexes` are places in `palette`, row by row from the
    /// bottom row up, at least `width * height` of them.
    void SetDIBits(int width,
                   int height,
                   std::span<const std::uint8_t> indexes,
                   const Palette& palette);

    /// Takes the picture away.
    void Cls();

    /// What is shown: 0xFFRRGGBB, row by row from the top down. Empty while nothing is drawn.
    const std::vector<std::uint32_t>& Pixels() const;
    int PixelWidth() const;
    int PixelHeight() const;

    /// Set by what shows the box: these pixels are no longer as they were.
    std::function<void(const PixelArea&)> PixelsChanged;

private:
    void Resize(int width, int height);
    bool TakePalette(const Palette& palette);
    void Tell(const PixelArea& area) const;

    // What was last given; a row that comes again as it was is not looked at pixel by pixel.
    std::vector<std::uint8_t> m_indexes;
    Palette m_palette{};

    std::vector<std::uint32_t> m_pixels;
    int m_pixelWidth = 0;
    int m_pixelHeight = 0;
};

} // namespace velmo::controls
