#pragma once

#include "Control.h"

#include <cstdint>

namespace velmo::controls {

/// 0x00BBGGRR, as settings hold it.
using Colour = std::uint32_t;

/// The glass of the windows: black to the eye, while pure black means a hole in the window.
inline constexpr Colour GlassBlack = 0x010101;

struct Font
{
    std::string name = "Tahoma";
    double sizePoints = 8.5; ///< of 96 to 72 pixels
    int weight = 400;        ///< 400 regular, 700 bold
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;

    bool operator==(const Font&) const = default;
};

enum class TextAlign
{
    Left,
    Centre,
};

/// What happens to a text that is wider than its label.
enum class TextOverflow
{
    Cut,
    Shrink, ///< drawn smaller until it fits
};

/// One line of text on a plain ground.
class Label final : public Control
{
public:
    Label(Form& form, std::string name, Bounds bounds, std::string caption);

    Property<std::string> Caption;
    Property<Colour> ForeColor{*this, 0xFFFFFF};
    Property<Colour> BackColor{*this, GlassBlack};
    Property<velmo::controls::Font> Font{*this};
    Property<TextAlign> Align{*this, TextAlign::Left};
    Property<TextOverflow> Overflow{*this, TextOverflow::Cut};
};

/// What an image shows as long as no skin gives it a picture.
enum class ImageShape
{
    Area,         ///< its rectangle in `FillColor`
    Slot,         ///< a sunk groove along its middle
    Knob,         ///< a raised piece of metal
    CloseBead,    ///< a round key with a cross
    MinimizeBead, ///< a round key with a dash
    BackBead,     ///< a round key with the sign of its command, as the next ones
    PlayBead,
    PauseBead,
    StopBead,
    OpenBead,
    NextBead,
};

/// A picture that may change under the mouse.
class Image final : public Control
{
public:
    Image(Form& form, std::string name, Bounds bounds, ImageShape shape = ImageShape::Area);

    const ImageShape Shape;
    Property<Colour> FillColor{*this, GlassBlack};

    /// Makes this the knob of the slider whose track is `track`. Both must outlive each other's
    /// use.
    void SlideOn(Image& track);

    /// How far the knob of the slider stands along its track, from 0 to 1; both of a slider's
    /// images tell the same. Below 0 if the image belongs to no slider.
    double AccessibleValue() const;

private:
    const Image* m_track = nullptr;
    const Image* m_knob = nullptr;
};

enum class TextLines
{
    Many,
    One,
};

/// Text that can be read and copied, and changed unless `Locked`.
class TextBox final : public Control
{
public:
    TextBox(Form& form, std::string name, Bounds bounds);

    /// Read when the form is first shown.
    TextLines Lines = TextLines::Many;

    Property<std::string> Text{*this};
    Property<bool> Locked{*this, true};
};

enum class TimerAccuracy
{
    Coarse,
    Precise,
};

/// Ticks every `Interval` milliseconds while `Enabled` (the property every control has) is true;
/// never with an interval of 0 or below. Coupled to real time by a `TimerBinding`.
class Timer final : public Control
{
public:
    Timer(Form& form, std::string name, int intervalMs, bool enabled, TimerAccuracy accuracy);

    Property<int> Interval;
    /// No tick comes sooner than this many milliseconds after the one before, however short the
    /// interval is.
    Property<int> LeastMs{*this, 0};
    const TimerAccuracy Accuracy;

    std::function<void()> Tick;
};

} // namespace velmo::controls
