#pragma once

#include "Control.h"
#include "PictureRef.h"

#include <cstdint>
#include <optional>

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

/// Who draws a label's text.
enum class LabelText
{
    Drawn,   ///< the label, on its plain ground
    Printed, ///< the picture under it bears it: the label itself is clear
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
    /// Read when the form is first shown.
    LabelText Text = LabelText::Drawn;
    /// How much the text lights the glass around it, from 0 to 1. Read when the text is painted.
    double Glow = 0;
};

/// A picture that may change under the mouse.
class Image final : public Control
{
public:
    Image(Form& form, std::string name, Bounds bounds);

    /// The plain ground of the control, under its picture.
    Property<std::optional<Colour>> FillColor{*this};

    /// What is shown, from the control's upper left corner on; what stands over is cut off. Without
    /// picture and ground the control is clear and only takes the mouse.
    Property<PictureRef> Picture{*this};
    /// Whether the picture fills the control, however large it is itself.
    Property<bool> Stretch{*this, false};

    /// The control's own three pictures, if it changes under the mouse.
    PictureStates States;
    void ShowNormal() { Picture = States.normal; }
    void ShowPressed() { Picture = States.pressed; }
    void ShowHover() { Picture = States.hover; }
    /// Takes the three pictures from `first` on, and shows the normal one. What changes under the
    /// mouse can be pressed: the control becomes a tab stop.
    void TakeStates(PictureList list, std::uint8_t first);
    void TakeStates(const PictureStates& states);

    /// Makes this the knob of the slider whose track is `track`. Both must outlive each other's
    /// use.
    void SlideOn(Image& track);

    /// How far the knob of the slider stands along its track, from 0 to 1, from the left or from
    /// the bottom; both of a slider's
    /// images tell the same. Below 0 if the image belongs to no slider.
    double AccessibleValue() const;

    /// The knob of the slider that the image belongs to; null if it belongs to none.
    Image* Knob() const { return m_knob; }
    /// Of an image of a slider: whether it goes up and down, and how far its knob goes, in twips.
    bool IsUpright() const;
    double SlideRange() const;

private:
    Image* m_track = nullptr;
    Image* m_knob = nullptr;
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
    /// A tick would do nothing for the time being, so none comes, and the process can sleep;
    /// `Enabled` and `Interval` stay what they are. When the rest ends a whole new interval starts.
    Property<bool> Resting{*this, false};
    const TimerAccuracy Accuracy;

    std::function<void()> Tick;
};

} // namespace velmo::controls
