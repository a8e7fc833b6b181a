#include "fX.h"

#include <utility>

namespace velmo::forms {

namespace {

constexpr double BarTop = 360;
constexpr double BarWidth = 135;
constexpr double BarHeight = 775;

double LeftOfBand(std::size_t band)
{
    constexpr double FirstLeft = 360;
    constexpr double Pitch = 240;
    return FirstLeft + Pitch * static_cast<double>(band);
}

template<std::size_t... Bands>
std::array<controls::Image, sizeof...(Bands)> MakeColumn(controls::Form& form,
                                                         const std::string& name,
                                                         double top,
                                                         double height,
                                                         std::index_sequence<Bands...> /*bands*/)
{
    return {{controls::Image(
        form, name + std::to_string(Bands + 1), {LeftOfBand(Bands), top, BarWidth, height})...}};
}

/// For screen readers; `lblFreq` shows them in short.
constexpr std::array<const char*, fX::BandCount> NamesOfBands{"60 Hz",
                                                              "170 Hz",
                                                              "310 Hz",
                                                              "600 Hz",
                                                              "1 kHz",
                                                              "3 kHz",
                                                              "6 kHz",
                                                              "9 kHz",
                                                              "12 kHz",
                                                              "14 kHz",
                                                              "16 kHz"};

constexpr auto Bands = std::make_index_sequence<fX::BandCount>();

} // namespace

fX::fX()
    : Form("fX", "Equalizer", 3975, 1455, controls::BorderStyle::None)
    , Bar(MakeColumn(*this, "Bar", BarTop, BarHeight, Bands))
    , Ticker(MakeColumn(*this, "Ticker", FlatTickerTop, BarWidth, Bands))
    , lblFreq(
          *this, "lblFreq", {360, 1125, 2550, 150}, "60  170 310  600  1K  3K  6K   9K 12K 14K 16K")
    , btnState(*this, "btnState", {3050, 340, 600, 210})
    , btnReset(*this, "btnReset", {3050, 560, 600, 210})
    , btnLoad(*this, "btnLoad", {3050, 800, 600, 210})
    , btnSave(*this, "btnSave", {3050, 1040, 600, 210})
    , imgCaptionClose(*this, "imgCaptionClose", {3740, 30, 195, 180})
{
    using controls::PictureList;
    Picture = controls::PictureRef{PictureList::fx, 1};
    for (std::size_t band = 0; band < BandCount; ++band) {
        Bar[band].TakeStates(PictureList::fx, 2);
        Ticker[band].TakeStates(PictureList::fx, 20);
        Ticker[band].Stretch = true;
        Ticker[band].SlideOn(Bar[band]);
        Bar[band].AccessibleName = NamesOfBands[band];
        Ticker[band].AccessibleName = NamesOfBands[band];
        Bar[band].ToolTipText = "0%";
        Ticker[band].ToolTipText = "0%";
    }
    lblFreq.AccessibleName = "Frequencies";
    lblFreq.Text = controls::LabelText::Printed;
    btnState.TakeStates(StatePicturesOff);
    btnLoad.TakeStates(PictureList::fx, 11);
    btnReset.TakeStates(PictureList::fx, 14);
    btnSave.TakeStates(PictureList::fx, 17);
    imgCaptionClose.TakeStates(PictureList::wnd, 1);
    btnState.ToolTipText = "Change Equalizer's state.";
    btnReset.ToolTipText = "Reset Equalizer's settings to zero.";
    btnLoad.ToolTipText = "Load a file with Equalizer settings.";
    btnSave.ToolTipText = "Save Equalizer's settings to file.";
    imgCaptionClose.ToolTipText = "Close";
}

} // namespace velmo::forms
