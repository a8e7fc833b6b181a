#include "EqualizerCurve.h"

#include "core/NumberText.h"
#include "core/TextRules.h"

#include <vector>

namespace velmo {

namespace {

constexpr std::string_view Magic = "ZVFX10";

} // namespace

std::string CurveText(const forms::fX& window)
{
    std::string text = std::string(Magic) + "\r\n";
    for (const controls::Image& ticker : window.Ticker)
        text += BlankedNumber(ticker.Top) + " \r\n";
    return text;
}

void ReadCurve(std::string_view bytes, forms::fX& window)
{
    const std::vector<std::string_view> lines = SplitLines(SkipByteOrderMark(bytes));
    if (lines.empty() || !lines.front().starts_with(Magic))
        return;
    // Kept: it is the first band's bar and ticker, whichever ticker is set.
    const double top = window.Bar[0].Top;
    const double bottom = top + window.Bar[0].Height - window.Ticker[0].Height;
    for (std::size_t band = 0; band < window.Ticker.size(); ++band) {
        const std::size_t line = band + 1;
        const double value = line < lines.size() ? ParseNumber(lines[line]) : 0;
        if (value > top && value < bottom)
            window.Ticker[band].Top = value;
    }
}

} // namespace velmo
