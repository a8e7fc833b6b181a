#pragma once

#include "controls/Controls.h"

#include <QFont>
#include <QRect>

#include <optional>
#include <string>

class QPainter;

namespace velmo::qt {

/// How a list shows its rows. Lengths are logical pixels.
struct RowStyle
{
    controls::Font font;
    controls::Colour foreColor = 0;
    int lengthWidth = 0; ///< of the second column; 0: there is none

    bool operator==(const RowStyle&) const = default;
};

/// What one row shows.
struct RowLook
{
    std::string text;
    std::string length;
    bool isFilled = false; ///< false behind the last row of the list
    bool isMarked = false;
    bool isHot = false;    ///< underlined
    bool isFramed = false; ///< has the focus, and so has the list

    bool operator==(const RowLook&) const = default;
};

/// Paints rows on black glass.
class RowPainter
{
public:
    /// Returns whether rows look different now.
    bool SetStyle(const RowStyle& style);
    const QFont& Font();

    /// `place` is the whole row. Without `withText` nothing of a font is touched.
    void Paint(QPainter& painter, const QRect& place, const RowLook& look, bool withText);

    /// The part of a row in which its first text stands.
    QRect TextPlace(const QRect& place) const;
    /// The part that is free for its text: a length may be wider than its column.
    QRect EditPlace(const QRect& place, const RowLook& look);

private:
    double LeftOfLength(const QRect& place, const QString& length);
    void PaintTexts(QPainter& painter, const QRect& place, const RowLook& look);

    RowStyle m_style;
    /// That of `m_style`, once it has been painted with: looking a font up is dear.
    std::optional<QFont> m_font;
    double m_ascent = 0;
    double m_descent = 0;
};

} // namespace velmo::qt
