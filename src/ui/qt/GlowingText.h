#pragma once

class QPainter;
class QPointF;
class QString;

namespace velmo::qt {

/// Draws a line of text, with the painter's font and pen, that lights the ground around it.
/// `start` is its place on the baseline; `glow` says how much it shines: 0 not at all, 1 as the
/// clock does.
void DrawGlowingText(QPainter& painter, const QPointF& start, const QString& text, double glow);

} // namespace velmo::qt
