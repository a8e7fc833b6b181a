#pragma once

#include <QPixmap>
#include <QString>

#include <vector>

class QFont;
class QPainter;

namespace velmo::qt {

/// A text that runs in a ring: each next one has lost its first character and got it back at its
/// end. It's drawn once, on a strip, of which a piece is shown from then on: to lay out and draw a
/// text costs many times as much as to copy it.
class RunningText
{
public:
    /// `text` is shown from now on. It runs if it is the next turn of the one before.
    void Show(const QString& text);

    /// Whether it runs; else `Paint` isn't to be called.
    bool Runs() const { return m_turned > 0; }

    /// Another font or colour: the strip is drawn anew.
    void Forget() { m_strip = QPixmap(); }

    /// Draws the text at the left of `painter`'s device, on the baseline `baseline`, with the
    /// painter's font and pen. False if the strip would be too large to keep; then nothing is
    /// drawn.
    bool Paint(QPainter& painter, double baseline, int height);

private:
    bool MakeStrip(const QPainter& painter, double baseline, int height);

    QString m_ring;             ///< the text before its first turn
    qsizetype m_turned = 0;     ///< characters of it that have gone to the end
    QPixmap m_strip;            ///< the ring twice, on nothing
    std::vector<double> m_left; ///< of each character of the ring, in pixels; the ring's width last
};

} // namespace velmo::qt
