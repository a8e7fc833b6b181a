#include "WindowPlace.h"

#include "Twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace velmo::qt {

WindowPlace::WindowPlace(controls::Form& form, QWidget& window)
    : m_form(form)
    , m_window(window)
{}

void WindowPlace::PlaceFirst()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (m_form.Place == controls::StartPlace::ScreenCentre && screen != nullptr) {
        QRect place = m_window.rect();
        place.moveCenter(screen->availableGeometry().center());
        m_form.Left = place.x() * TwipsPerPixel;
        m_form.Top = place.y() * TwipsPerPixel;
    }
    m_shown = {ToPixels(m_form.Left), ToPixels(m_form.Top)};
    m_window.move(m_shown);
}

void WindowPlace::Sync()
{
    const QPoint wanted(ToPixels(m_form.Left), ToPixels(m_form.Top));
    if (wanted == m_shown)
        return;
    m_shown = wanted;
    m_window.move(wanted);
}

void WindowPlace::Pressed(QPoint pointer)
{
    m_pressed = pointer;
}

void WindowPlace::BeginDrag()
{
    m_isDragging = true;
    m_grip = m_pressed - QPoint(ToPixels(m_form.Left), ToPixels(m_form.Top));
}

bool WindowPlace::Drag(QPoint pointer)
{
    if (!m_isDragging)
        return false;
    const QPoint place = pointer - m_grip;
    m_form.Left = place.x() * TwipsPerPixel;
    m_form.Top = place.y() * TwipsPerPixel;
    Sync();
    return true;
}

void WindowPlace::EndDrag()
{
    m_isDragging = false;
}

void WindowPlace::Moved(QPoint reported)
{
    // Under a window manager that gives windows new parents, a window is at times said to stand at
    // 0, 0 right after it was shown somewhere else. Late reports of a drag tell of places it has
    // left.
    if (m_isDragging || reported == m_shown || reported.isNull())
        return;
    m_shown = reported;
    m_form.Left = reported.x() * TwipsPerPixel;
    m_form.Top = reported.y() * TwipsPerPixel;
}

} // namespace velmo::qt
