#include "QtDesktop.h"

#include "Twips.h"

#include <QGuiApplication>
#include <QScreen>

namespace velmo::qt {

ports::Desktop::Size QtDesktop::VirtualSize()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen == nullptr ? QSize() : screen->virtualSize();
    return {.width = size.width() * TwipsPerPixel, .height = size.height() * TwipsPerPixel};
}

} // namespace velmo::qt
