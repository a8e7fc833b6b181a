#include "EqualizerBands.h"

#include "core/NumberText.h"

#include <algorithm>
#include <vector>

namespace velmo {

namespace {

using controls::Image;
using controls::MouseEvent;

constexpr std::int32_t FlatStep = 10;

template<class Images>
std::vector<Image*> RowOf(Images& images)
{
    std::vector<Image*> row;
    row.reserve(images.size());
    for (Image& image : images)
        row.push_back(&image);
    return row;
}

} // namespace

EqualizerBands::EqualizerBands(forms::fX& form, modFXFunctions& equalizer)
    : m_form(form)
    , m_equalizer(equalizer)
    , m_bars(RowOf(form.Bar))
    , m_tickers(RowOf(form.Ticker))
{
    for (std::size_t band = 0; band < forms::fX::BandCount; ++band) {
        BindTicker(band);
        BindBar(band);
    }
}

void EqualizerBands::MakeFlat()
{
    m_equalizer.EqualizerBandValue.fill(FlatStep);
    for (Image& ticker : m_form.Ticker) {
        ticker.Top = forms::FlatTickerTop;
        ticker.ToolTipText = "0";
    }
}

void EqualizerBands::ShowNormal() const
{
    m_bars.ShowNormal();
    m_tickers.ShowNormal();
}

void EqualizerBands::BindTicker(std::size_t band)
{
    Image& ticker = m_form.Ticker[band];
    ticker.MouseDown = [this, &ticker](const MouseEvent& event) {
        ticker.ShowPressed();
        m_tickerDragging = true;
        m_tickerDragStart = RoundHalfEven(event.y);
    };
    ticker.MouseMove = [this, &ticker, band](const MouseEvent& event) {
        if (m_tickerDragging)
            return Drag(band, event.y);
        m_tickers.Light(ticker);
        m_form.Bar[band].ShowNormal();
    };
    ticker.MouseUp = [this, &ticker](const MouseEvent& /*event*/) {
        ticker.ShowHover();
        m_tickerDragging = false;
    };
}

void EqualizerBands::BindBar(std::size_t band)
{
    m_bars.Bind(m_form.Bar[band],
                {.pressedBy = controls::PressedBy::AnyButton,
                 .hovered = [this](const MouseEvent& /*event*/) { m_tickers.ShowNormal(); },
                 .act = [this, band](const MouseEvent& event) { JumpTo(band, event.y); }});
}

/// `y` is from the ticker's top.
void EqualizerBands::Drag(std::size_t band, double y)
{
    Image& ticker = m_form.Ticker[band];
    const double top = ticker.Top - m_tickerDragStart + RoundHalfEven(y);
    // Kept: a fast drag past an end leaves the ticker short of it.
    if (top >= m_form.Bar[band].Top && top <= LowestTop(band))
        ticker.Top = top;
    m_equalizer.FollowTicker(band);
}

/// Has the ticker's middle come to `y`, which is from the bar's top, as near as the bar allows.
void EqualizerBands::JumpTo(std::size_t band, double y)
{
    Image& ticker = m_form.Ticker[band];
    const double top = m_form.Bar[band].Top;
    const double wanted = RoundHalfEven(top + y - ticker.Height / 2);
    ticker.Top = std::clamp(wanted, top, LowestTop(band));
    m_equalizer.FollowTicker(band);
}

double EqualizerBands::LowestTop(std::size_t band) const
{
    const Image& bar = m_form.Bar[band];
    return bar.Top + bar.Height - m_form.Ticker[band].Height;
}

} // namespace velmo
