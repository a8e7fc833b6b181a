// A region begins as the bitmap's whole rectangle. Each vertical run of transparent pixels is a
// strip one pixel wide, which is combined with it by exclusive or and so is cut out. What is left
// is told as rectangles: the runs of each row, equal rows put together, since a window system wants
// few of them.

#include "cDIBSectionRegion.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

using controls::PixelArea;

/// A set of the pixels of a rectangle.
class PixelSet
{
public:
    /// All of them.
    PixelSet(int width, int height)
        : m_width(width)
        , m_height(height)
        , m_isIn(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 1)
    {}

    void XorStrip(int column, int startRow, int endRow)
    {
        for (int row = startRow; row < endRow; ++row)
            m_isIn[IndexOf(column, row)] ^= 1;
    }

    std::vector<PixelArea> Areas() const;

private:
    std::size_t IndexOf(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_width)
               + static_cast<std::size_t>(column);
    }
    std::vector<PixelArea> RunsOf(int row) const;
    bool IsAsAbove(int row) const;

    int m_width;
    int m_height;
    std::vector<std::uint8_t> m_isIn; ///< 0 or 1
};

std::vector<PixelArea> PixelSet::RunsOf(int row) const
{
    std::vector<PixelArea> runs;
    for (int column = 0; column < m_width; ++column) {
        if (m_isIn[IndexOf(column, row)] == 0)
            continue;
        if (!runs.empty() && runs.back().left + runs.back().width == column)
            ++runs.back().width;
        else
            runs.push_back({.left = column, .top = row, .width = 1, .height = 1});
    }
    return runs;
}

bool PixelSet::IsAsAbove(int row) const
{
    const auto begin = m_isIn.begin() + static_cast<std::ptrdiff_t>(IndexOf(0, row));
    return row > 0 && std::equal(begin, begin + m_width, begin - m_width);
}

std::vector<PixelArea> PixelSet::Areas() const
{
    std::vector<PixelArea> areas;
    std::size_t lastRow = 0; // of `areas`: where those begin that reach down to the row before
    for (int row = 0; row < m_height; ++row) {
        if (IsAsAbove(row)) {
            std::for_each(areas.begin() + static_cast<std::ptrdiff_t>(lastRow),
                          areas.end(),
                          [](PixelArea& area) { ++area.height; });
            continue;
        }
        lastRow = areas.size();
        const std::vector<PixelArea> runs = RunsOf(row);
        areas.insert(areas.end(), runs.begin(), runs.end());
    }
    return areas;
}

/// Kept: scan lines are read by their bytes, so their padding may count as one more column. It lies
/// outside of the bitmap, where no window has anything to show, and is left out here.
PixelSet CutOut(const cDIBSection& dib, controls::Colour transparent)
{
    constexpr unsigned GreenShift = 8;
    constexpr unsigned BlueShift = 16;
    const auto red = static_cast<std::uint8_t>(transparent);
    const auto green = static_cast<std::uint8_t>(transparent >> GreenShift);
    const auto blue = static_cast<std::uint8_t>(transparent >> BlueShift);
    const auto isTransparent = [&](int column, int scanLine) {
        const std::uint8_t* pixel = dib.DIBSectionBits().data()
                                    + static_cast<std::ptrdiff_t>(scanLine) * dib.BytesPerScanLine()
                                    + static_cast<std::ptrdiff_t>(column) * 3;
        return pixel[0] == blue && pixel[1] == green && pixel[2] == red;
    };
    PixelSet region(dib.Width(), dib.Height());
    for (int column = 0; column < dib.Width(); ++column) {
        int start = -1; // of the open run
        for (int scanLine = dib.Height() - 1; scanLine >= 0; --scanLine) {
            const int row = dib.Height() - scanLine - 1;
            if (isTransparent(column, scanLine)) {
                start = start < 0 ? row : start;
            } else if (start >= 0) {
                region.XorStrip(column, start, row);
                start = -1;
            }
        }
        if (start >= 0)
            region.XorStrip(column, start, dib.Height());
    }
    return region;
}

} // namespace

bool cDIBSectionRegion::Create(const cDIBSection& dib, controls::Colour transparent)
{
    Destroy();
    if (dib.DIBSectionBits().empty())
        return false;
    m_areas = CutOut(dib, transparent).Areas();
    if (m_areas.empty())
        m_areas.push_back({}); // nothing at all is seen, which no areas would not say
    return true;
}

void cDIBSectionRegion::Destroy()
{
    for (controls::Form* hWnd : std::exchange(m_windows, {}))
        hWnd->Outline = std::vector<PixelArea>();
    m_areas.clear();
}

bool cDIBSectionRegion::Applied(const controls::Form& hWnd) const
{
    return std::find(m_windows.begin(), m_windows.end(), &hWnd) != m_windows.end();
}

void cDIBSectionRegion::Applied(controls::Form& hWnd, bool apply)
{
    if (m_areas.empty())
        return;
    std::erase(m_windows, &hWnd);
    if (apply)
        m_windows.push_back(&hWnd);
    hWnd.Outline = apply ? m_areas : std::vector<PixelArea>();
}

} // namespace velmo
