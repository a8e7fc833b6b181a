#include "PixelCoding.h"

#include <algorithm>
#include <array>

namespace velmo::skin {

namespace {

constexpr std::uint32_t Opaque = 0xFF000000U;
constexpr std::size_t LongestRun = 32;
constexpr std::size_t LongestCopy = 31;

/// How one channel changed, as -128 to +127.
int Change(std::uint32_t from, std::uint32_t to, unsigned shift)
{
    return static_cast<std::int8_t>(static_cast<std::uint8_t>((to >> shift) - (from >> shift)));
}

bool Within(int value, int least, int most)
{
    return value >= least && value <= most;
}

class Encoder
{
public:
    Encoder(std::span<const std::uint32_t> pixels, std::size_t width)
        : m_pixels(pixels)
        , m_width(width)
    {
        m_met.fill(Opaque);
    }

    std::vector<std::uint8_t> Run()
    {
        std::size_t place = 0;
        while (place < m_pixels.size()) {
            const std::size_t same =
                RunOf(place, LongestRun, [&](std::size_t at) { return m_pixels[at] == m_before; });
            const std::size_t above = RunOf(place, LongestCopy, [&](std::size_t at) {
                return at >= m_width && m_pixels[at] == m_pixels[at - m_width];
            });
            if (same == 0 && above == 0) {
                One(m_pixels[place++]);
                continue;
            }
            Put(same >= above ? 0xC0U | (same - 1) : 0xE0U | (above - 1));
            place += std::max(same, above);
            m_before = m_pixels[place - 1];
        }
        return std::move(m_out);
    }

private:
    template<typename Matches>
    std::size_t RunOf(std::size_t place, std::size_t longest, Matches matches) const
    {
        std::size_t run = 0;
        while (run < longest && place + run < m_pixels.size() && matches(place + run))
            ++run;
        return run;
    }

    template<typename Number>
    void Put(Number byte)
    {
        m_out.push_back(static_cast<std::uint8_t>(byte));
    }

    void One(std::uint32_t pixel)
    {
        const int red = Change(m_before, pixel, 16);
        const int green = Change(m_before, pixel, 8);
        const int blue = Change(m_before, pixel, 0);
        if (m_met[Slot(pixel)] == pixel) {
            Put(Slot(pixel));
        } else if (Within(red, -2, 1) && Within(green, -2, 1) && Within(blue, -2, 1)) {
            Put(0x40 + (red + 2) * 16 + (green + 2) * 4 + blue + 2);
        } else if (Within(green, -32, 31) && Within(red - green, -8, 7)
                   && Within(blue - green, -8, 7)) {
            Put(0x80 + green + 32);
            Put((red - green + 8) * 16 + blue - green + 8);
        } else {
            Put(0xFF);
            for (const unsigned shift : {16U, 8U, 0U})
                Put(pixel >> shift & 0xFFU);
        }
        m_met[Slot(pixel)] = pixel;
        m_before = pixel;
    }

    std::span<const std::uint32_t> m_pixels;
    std::size_t m_width;
    std::uint32_t m_before = Opaque;
    std::array<std::uint32_t, SlotCount> m_met{};
    std::vector<std::uint8_t> m_out;
};

} // namespace

std::vector<std::uint8_t> EncodePixels(std::span<const std::uint32_t> pixels, std::size_t width)
{
    return Encoder(pixels, width).Run();
}

} // namespace velmo::skin
