#pragma once

#include "ports/Screens.h"

#include <QObject>
#include <QPoint>

#include <functional>

class QScreen;

namespace velmo::qt {

/// The screens that the windowing system tells of. Where one has another scale than the first, its
/// own pixels count all the same, with the first one's scale.
class QtScreens final : public ports::Screens
{
public:
    QtScreens();

    double Scale() override;
    ports::ScreenRect WorkArea(ports::ScreenPoint place) override;
    std::vector<ports::ScreenRect> All() override;

    /// A screen came, went, moved or has another size or work area; called from the event loop.
    std::function<void()> Changed;

private:
    void Watch(QScreen* screen);
    void Tell();

    QObject m_context; ///< of the signals: they end with it
    bool m_isTelling = false;
};

/// Pixels of the screens to a logical one, as the first screen has it.
double ScreenScale();

/// The pixel of the screens at a place that the toolkit tells in its own logical pixels: those
/// count from each screen's own corner.
ports::ScreenPoint ToScreenPoint(QPointF global);
/// The other way round, by the screen that is nearest to the pixel.
QPoint FromScreenPoint(ports::ScreenPoint place);

} // namespace velmo::qt
