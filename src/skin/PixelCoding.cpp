#include "PixelCoding.h"

#include <algorithm>
#include <array>

namespace velmo::skin {

namespace {

constexpr std::uint32_t Opaque = 0xFF000000U;

constexpr std::uint32_t Pixel(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
    return Opaque | (red & 0xFFU) << 16U | (green & 0xFFU) << 8U | (blue & 0xFFU);
}

/// `pixel` with each channel changed, modulo 256.
constexpr std::uint32_t Changed(std::uint32_t pixel,
                                std::uint32_t red,
                                std::uint32_t green,
                                std::uint32_t blue)
{
    return Pixel((pixel >> 16U) + red, (pixel >> 8U) + green, pixel + blue);
}

/// Takes a stream apart. Both kinds of operation tell by false that the stream is wrong.
class Decoder
{
public:
    Decoder(std::span<const std::uint8_t> coded, std::size_t width, std::span<std::uint32_t> pixels)
        : m_coded(coded)
        , m_width(width)
        , m_pixels(pixels)
    {
        m_met.fill(Opaque);
    }

    bool All()
    {
        while (m_to < m_pixels.size()) {
            if (m_from == m_coded.size())
                return false;
            const std::uint32_t operation = m_coded[m_from++];
            const bool isRun = operation >= 0xC0U && operation != 0xFFU;
            if (!(isRun ? Run(operation) : One(operation)))
                return false;
        }
        return true;
    }

private:
    bool Run(std::uint32_t operation)
    {
        const std::size_t end =
            std::min<std::size_t>(m_to + (operation & 0x1FU) + 1, m_pixels.size());
        if (operation < 0xE0U) {
            while (m_to < end)
                m_pixels[m_to++] = m_pixel;
            return true;
        }
        if (m_to < m_width)
            return false;
        // The run may overlap what it gives, so that it goes pixel by pixel.
        for (; m_to < end; ++m_to)
            m_pixels[m_to] = m_pixels[m_to - m_width];
        m_pixel = m_pixels[m_to - 1];
        return true;
    }

    bool One(std::uint32_t operation)
    {
        constexpr std::array<std::size_t, 4> MoreBytes{0, 0, 1, 3};
        if (m_coded.size() - m_from < MoreBytes[operation >> 6U])
            return false;
        switch (operation >> 6U) {
        case 0: m_pixel = m_met[operation]; break;
        case 1:
            m_pixel = Changed(m_pixel,
                              (operation >> 4U & 3U) - 2U,
                              (operation >> 2U & 3U) - 2U,
                              (operation & 3U) - 2U);
            break;
        case 2: {
            const std::uint32_t more = m_coded[m_from++];
            const std::uint32_t green = (operation & 0x3FU) - 32U;
            m_pixel =
                Changed(m_pixel, green + (more >> 4U) - 8U, green, green + (more & 0xFU) - 8U);
            break;
        }
        default:
            m_pixel = Pixel(m_coded[m_from], m_coded[m_from + 1], m_coded[m_from + 2]);
            m_from += 3;
        }
        m_met[Slot(m_pixel)] = m_pixel;
        m_pixels[m_to++] = m_pixel;
        return true;
    }

    std::span<const std::uint8_t> m_coded;
    std::size_t m_width;
    std::span<std::uint32_t> m_pixels;
    std::size_t m_from = 0;
    std::size_t m_to = 0;
    std::uint32_t m_pixel = Opaque;
    std::array<std::uint32_t, SlotCount> m_met{};
};

} // namespace

bool DecodePixels(std::span<const std::uint8_t> coded,
                  std::size_t width,
                  std::span<std::uint32_t> pixels)
{
    return Decoder(coded, width, pixels).All();
}

} // namespace velmo::skin
