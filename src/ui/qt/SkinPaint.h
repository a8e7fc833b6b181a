#pragma once

#include <QColor>
#include <QRect>
#include <QRegion>
#include <QString>

class QPainter;

namespace velmo::qt {

/// What the windows are made of, drawn by code: dark metal, sunk glass, a groove and a knob. All
/// rectangles are in logical pixels. Nothing here draws text but `PaintTitle`, because the first
/// text costs a start several milliseconds.

/// The outline of a window of that size: a rectangle with round corners, without soft edges.
QRegion BodyOutline(QSize size);

/// The metal body of a window, with its bevel.
void PaintBody(QPainter& painter, const QRect& body);

/// A pane of black glass let into the body; `pane` is the glass alone, its rim stands one pixel
/// around it.
void PaintPane(QPainter& painter, const QRect& pane);

/// The window's title, engraved into the top strip of `body`.
void PaintTitle(QPainter& painter, const QRect& body, const QString& title);

/// The place that `PaintTitle` covers at most.
QRect TitlePlace(const QRect& body);

/// The groove in which a knob slides, along the middle of `place`.
void PaintSlot(QPainter& painter, const QRect& place);

/// The sign on a round key of a window.
enum class BeadSign
{
    Cross,
    Dash,
    Back,
    Play,
    Pause,
    Stop,
    Open,
    Next,
};

/// A round key in the middle of `place`, as large as it can be.
void PaintBead(QPainter& painter, const QRect& place, BeadSign sign);

/// A raised knob with a lit middle that fills `place`.
void PaintKnob(QPainter& painter, const QRect& place);

} // namespace velmo::qt
