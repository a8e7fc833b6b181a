#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QSize>
#include <QString>

#include <vector>

namespace velmo::qt {

/// A text that runs in a ring: each next one has lost its first character and got it back at its
/// end. It's drawn once, on a strip, of which a piece is shown from then on: to lay out and draw a
/// text costs many times as much as to copy it.
class RunningText
{
public:
    /// How the text is drawn, at the left of an area of that size.
    struct Looks
    {
        QFont font;
        QColor ink;
        QColor ground;
        QSize size;          ///< logical pixels
        double ratio = 1.0;  ///< of the screen's pixels to those
        double baseline = 0; ///< logical pixels from the top
        double glow = 0;     ///< as `DrawGlowingText` takes it

        bool operator==(const Looks&) const = default;
    };

    /// `text` is shown from now on. It runs if it is the next turn of the one before.
    void Show(const QString& text);

    /// Whether it runs; else `Picture` isn't to be called.
    bool Runs() const { return m_turned > 0; }

    /// The area as it looks now, opaque. Null if the strip would be too large to keep.
    const QImage& Picture(const Looks& looks);

private:
    void MakeStrip();

    QString m_ring;             ///< the text before its first turn
    qsizetype m_turned = 0;     ///< characters of it that have gone to the end
    Looks m_looks;              ///< that the strip is drawn with
    QImage m_strip;             ///< the ring twice; null: to be drawn
    std::vector<double> m_left; ///< of each character of the ring, in pixels; the ring's width last
    QImage m_picture;           ///< what was last asked for
};

} // namespace velmo::qt
