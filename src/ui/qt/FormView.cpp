#include "FormView.h"

#include "ButtonWidget.h"
#include "ControlAccessible.h"
#include "ImageWidget.h"
#include "LabelWidget.h"
#include "LineEditWidget.h"
#include "PictureWidget.h"
#include "QtFont.h"
#include "QtText.h"
#include "SkinPaint.h"
#include "TextBoxWidget.h"
#include "Twips.h"

#include "controls/EventEntry.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWindow>

namespace velmo::qt {

namespace {

using controls::WindowState;

ControlWidget* MakeTextWidget(controls::TextBox& box, ControlHost& host, QWidget& window)
{
    if (box.Lines == controls::TextLines::One)
        return new LineEditWidget(box, host, &window);
    return new TextBoxWidget(box, host, &window);
}

/// The widget of a control, a child of `window`; null for one that cannot be seen.
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
    Qt::WindowFlags flags = Qt::Window;
    if (IsFrameless(form))
        flags |= Qt::FramelessWindowHint;
    else
        flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
                 | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;
    return flags;
}

} // namespace

FormView::FormView(controls::Form& form)
    : QWidget(nullptr, FlagsOf(form))
    , m_form(form)
    , m_place(form, *this)
    , m_engraving(FromBytes(form.Caption.Get()))
{
    InstallControlAccessibility();
    setObjectName(FromBytes(form.Name));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    SetHooks();
    if (form.Visible)
        QueueFlush();
}

FormView::~FormView()
{
    m_form.Changed = nullptr;
    m_form.RepaintNow = nullptr;
    m_form.Activate = nullptr;
    m_form.BeginDrag = nullptr;
    // The widgets look at this object as their host, which ends before the children would.
    qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

void FormView::SetHooks()
{
    m_form.Changed = [this] { QueueFlush(); };
    m_form.RepaintNow = [this] { RepaintNow(); };
    m_form.Activate = [this] { Activate(); };
    m_form.BeginDrag = [this] { m_place.BeginDrag(); };
}

void FormView::MarkDirty(ControlWidget& widget)
{
    if (widget.m_isDirty)
        return;
    widget.m_isDirty = true;
    m_dirty.push_back(&widget);
    QueueFlush();
}

bool FormView::IsTextShown() const
{
    return m_isTextShown;
}

void FormView::StartDrag()
{
    if (!m_form.MouseDown && IsFrameless(m_form))
        m_place.BeginDrag();
}

void FormView::QueueFlush()
{
    if (m_isFlushQueued)
        return;
    m_isFlushQueued = true;
    QMetaObject::invokeMethod(
        this, [this] { Flush(); }, Qt::QueuedConnection);
}

void FormView::Flush()
{
    m_isFlushQueued = false;
    if (m_form.Visible && !m_isBuilt)
        Build();
    for (ControlWidget* widget : std::exchange(m_dirty, {})) {
        widget->m_isDirty = false;
        widget->Sync();
    }
    if (m_isBuilt)
        SyncWindow();
}

void FormView::Build()
{
    m_isBuilt = true;
    setFixedSize(ToPixels(m_form.Width), ToPixels(m_form.Height));
    for (controls::Control* control : m_form.Controls()) {
        if (ControlWidget* widget = MakeWidget(*control, *this, *this)) {
            widget->installEventFilter(this);
            widget->Sync();
        }
    }
    m_place.PlaceFirst();
    m_isOnTop = m_form.AlwaysOnTop;
    // The one moment at which a window's flags can be set without making it anew.
    setWindowFlag(Qt::WindowStaysOnTopHint, m_isOnTop);
}

void FormView::SyncWindow()
{
    const QString title = FromBytes(m_form.Caption.Get());
    if (title != windowTitle())
        setWindowTitle(title);
    const QSize size(ToPixels(m_form.Width), ToPixels(m_form.Height));
    if (size != this->size())
        setFixedSize(size);
    if (isEnabled() != m_form.Enabled)
        setEnabled(m_form.Enabled);
    if (IsFrameless(m_form) && (size != mask().boundingRect().size()))
        setMask(BodyOutline(size));
    m_place.Sync();
    if (m_isOnTop != m_form.AlwaysOnTop && windowHandle() != nullptr) {
        m_isOnTop = m_form.AlwaysOnTop;
        windowHandle()->setFlag(Qt::WindowStaysOnTopHint, m_isOnTop);
    }
    if (m_form.Visible && !isVisible())
        ShowWindow();
    else if (!m_form.Visible && isVisible())
        hide();
    else
        SyncState();
}

void FormView::ShowWindow()
{
    m_shownState = m_form.State;
    if (m_shownState == WindowState::Minimized)
        showMinimized();
    else
        show();
}

void FormView::SyncState()
{
    if (m_shownState == m_form.State || !isVisible())
        return;
    m_shownState = m_form.State;
    if (m_shownState == WindowState::Minimized)
        showMinimized();
    else
        showNormal();
}

void FormView::RepaintNow()
{
    Flush();
    m_isTextShown = true; // there may be no second frame for a while
    repaint();
}

void FormView::Activate()
{
    m_form.Visible = true;
    m_form.State = WindowState::Normal;
    Flush();
    raise();
    // Where the compositor wants a token, this takes XDG_ACTIVATION_TOKEN out of the environment.
    activateWindow();
}

void FormView::ShowText()
{
    m_isTextShown = true;
    update(TitlePlace(rect()));
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        child->update();
}

void FormView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (IsFrameless(m_form))
        PaintBody(painter, rect());
    else
        painter.fillRect(event->rect(), ToQColor(m_form.BackColor));
    for (const controls::Bounds& pane : m_form.Panes)
        PaintPane(painter, ToPixels(pane.left, pane.top, pane.width, pane.height));
    if (m_isTextShown && IsFrameless(m_form) && event->rect().intersects(TitlePlace(rect())))
        PaintTitle(painter, rect(), m_engraving);
    if (!m_isTextShown && !m_isFirstFramePainted)
        QMetaObject::invokeMethod(
            this, [this] { ShowText(); }, Qt::QueuedConnection);
    m_isFirstFramePainted = true;
}

void FormView::mousePressEvent(QMouseEvent* event)
{
    m_place.Pressed(event->globalPosition().toPoint());
    if (m_form.MouseDown)
        controls::CallSlot(m_form.MouseDown, ToMouseEvent(*event));
    else if (event->button() == Qt::LeftButton)
        StartDrag();
}

void FormView::mouseMoveEvent(QMouseEvent* event)
{
    controls::CallSlot(m_form.MouseMove, ToMouseEvent(*event));
    m_place.Drag(event->globalPosition().toPoint());
}

void FormView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_place.EndDrag();
    controls::CallSlot(m_form.MouseUp, ToMouseEvent(*event));
}

/// A drag that began on a control gets its moves through the control's widget.
bool FormView::eventFilter(QObject* /*watched*/, QEvent* event)
{
    const auto pointer = [&] {
        return static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
    };
    if (event->type() == QEvent::MouseButtonPress)
        m_place.Pressed(pointer());
    if (event->type() == QEvent::MouseMove)
        return m_place.Drag(pointer());
    if (event->type() == QEvent::MouseButtonRelease
        && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        m_place.EndDrag();
    return false;
}

void FormView::keyPressEvent(QKeyEvent* event)
{
    if (!m_form.KeyPress)
        return QWidget::keyPressEvent(event);
    for (const uint character : event->text().toUcs4())
        controls::CallSlot(m_form.KeyPress, static_cast<char32_t>(character));
}

void FormView::closeEvent(QCloseEvent* event)
{
    event->ignore(); // what becomes of the window is the form's affair
    if (m_form.QueryClose)
        controls::CallSlot(m_form.QueryClose);
    else
        m_form.Hide();
}

void FormView::changeEvent(QEvent* event)
{
    if (event->type() != QEvent::WindowStateChange)
        return;
    m_shownState = isMinimized() ? WindowState::Minimized : WindowState::Normal;
    m_form.State = m_shownState;
    if (std::exchange(m_toldState, m_shownState) != m_shownState)
        controls::CallSlot(m_form.Resize);
}

void FormView::moveEvent(QMoveEvent* event)
{
    if (event->spontaneous() && isVisible() && !isMinimized())
        m_place.Moved(pos());
}

} // namespace velmo::qt
