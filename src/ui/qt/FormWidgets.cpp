#include "FormWidgets.h"

#include "ButtonWidget.h"
#include "ImageWidget.h"
#include "LabelWidget.h"
#include "LineEditWidget.h"
#include "ListRowsWidget.h"
#include "PictureWidget.h"
#include "TextBoxWidget.h"

namespace velmo::qt {

namespace {

ControlWidget* MakeTextWidget(controls::TextBox& box, ControlHost& host, QWidget& window)
{
    if (box.Lines == controls::TextLines::One)
        return new LineEditWidget(box, host, &window);
    return new TextBoxWidget(box, host, &window);
}

} // namespace

ControlWidget* MakeWidget(controls::Control& control, ControlHost& host, QWidget& window)
{
    switch (control.Kind) {
    case controls::ControlKind::Label:
        return new LabelWidget(static_cast<controls::Label&>(control), host, &window);
    case controls::ControlKind::Image:
        return new ImageWidget(static_cast<controls::Image&>(control), host, &window);
    case controls::ControlKind::TextBox:
        return MakeTextWidget(static_cast<controls::TextBox&>(control), host, window);
    case controls::ControlKind::Button:
        return new ButtonWidget(static_cast<controls::Button&>(control), host, &window);
    case controls::ControlKind::Picture:
        return new PictureWidget(static_cast<controls::Picture&>(control), host, &window);
    case controls::ControlKind::ListRows:
        return new ListRowsWidget(static_cast<controls::ListRows&>(control), host, &window);
    case controls::ControlKind::ScrollBar: return new ControlWidget(control, host, &window);
    case controls::ControlKind::Timer: break;
    }
    return nullptr;
}

bool IsFrameless(const controls::Form& form)
{
    return form.Border == controls::BorderStyle::None;
}

Qt::WindowFlags FlagsOf(const controls::Form& form)
{
    // A window that goes with another one has no entry of its own in the task bar.
    const Qt::WindowFlags owned = IsFrameless(form) ? Qt::Tool : Qt::Dialog;
    Qt::WindowFlags flags = form.Owner == nullptr ? Qt::Window : owned;
    if (form.AlwaysOnTop)
        flags |= Qt::WindowStaysOnTopHint;
    if (IsFrameless(form))
        flags |= Qt::FramelessWindowHint;
    else
        flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
                 | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;
    return flags;
}

} // namespace velmo::qt
