#include "FormView.h"

#include "AccessibleFactory.h"
#include "DesktopStyle.h"
#include "FormWidgets.h"
#include "ProgramIcon.h"
#include "QtFont.h"
#include "QtText.h"
#include "TurnEnd.h"
#include "Twips.h"
#include "VirtualKey.h"

#include "controls/EventEntry.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QWindow>

namespace velmo::qt {

using controls::WindowState;

FormView::FormView(controls::Form& form)
    : QWidget(nullptr, FlagsOf(form))
    , m_form(form)
    , m_place(form, *this)
    , m_outline(form, *this)
    , m_title(*this)
{
    InstallAccessibility();
    setObjectName(FromBytes(form.Name));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    // The pointer is often over one window of the block while another one has the keys.
    setAttribute(Qt::WA_AlwaysShowToolTips);
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
    m_form.BeginDrag = [this] { BeginDrag(); };
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

SkinPictures& FormView::Pictures()
{
    return m_pictures;
}

void FormView::StartDrag()
{
    if (!m_form.MouseDown && IsFrameless(m_form))
        BeginDrag();
}

void FormView::QueueFlush()
{
    if (m_isFlushQueued)
        return;
    m_isFlushQueued = true;
    AtTurnEnd(*this, [this] { Flush(); });
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
    if (std::exchange(m_isBuilt, true))
        return;
    // The one moment at which a window's flags can be set without making it anew.
    m_isOnTop = m_form.AlwaysOnTop;
    setWindowFlags(FlagsOf(m_form));
    setFixedSize(ToPixels(m_form.Width), ToPixels(m_form.Height));
    for (controls::Control* control : m_form.Controls()) {
        if (ControlWidget* widget = MakeWidget(*control, *this, *this)) {
            widget->installEventFilter(this);
            widget->Sync();
        }
    }
    create();
    if (FormView* owner = ViewOf(m_form.Owner)) {
        owner->Build();
        windowHandle()->setTransientParent(owner->windowHandle());
    }
    m_place.PlaceFirst();
}

void FormView::SyncWindow()
{
    m_title.Set(FromBytes(m_form.Caption.Get()));
    const QSize size(ToPixels(m_form.Width), ToPixels(m_form.Height));
    if (size != this->size())
        setFixedSize(size);
    if (isEnabled() != m_form.Enabled)
        setEnabled(m_form.Enabled);
    if (m_ground != m_form.Picture.Get()) {
        m_ground = m_form.Picture;
        update();
    }
    m_outline.Sync();
    m_place.Sync();
    if (m_place.HasMove())
        QMetaObject::invokeMethod(this, &FormView::SendMoves, Qt::QueuedConnection);
    if (m_isOnTop != m_form.AlwaysOnTop && windowHandle() != nullptr) {
        m_isOnTop = m_form.AlwaysOnTop;
        windowHandle()->setFlag(Qt::WindowStaysOnTopHint, m_isOnTop);
    }
    TellOwned();
    if (IsWanted() && !isVisible())
        ShowWindow();
    else if (!IsWanted() && isVisible())
        HideWindow();
    else
        SyncState();
}

void FormView::ShowWindow()
{
    m_shownState = m_form.State;
    if (m_form.Owner != nullptr)
        setWindowState(windowState() & ~Qt::WindowMinimized); // the owner's affair
    if (m_shownState == WindowState::Minimized) {
        showMinimized();
        m_place.LeaveScreen();
    } else {
        show();
    }
    m_outline.Sync(); // the server may have another window for it now
    m_place.Assert();
}

void FormView::HideWindow()
{
    EndDrag();
    m_place.GiveToManager(); // its frame goes, too
    hide();
}

void FormView::SyncState()
{
    if (m_shownState == m_form.State || !isVisible())
        return;
    m_shownState = m_form.State;
    if (m_shownState == WindowState::Minimized) {
        showMinimized();
        m_place.LeaveScreen();
    } else {
        showNormal();
    }
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

void FormView::FirstFrameIsPainted()
{
    if (!std::exchange(m_isTextShown, true))
        ShowText();
    m_form.HasPicture = true;
    controls::CallSlot(m_form.FirstPicture);
}

void FormView::ShowText()
{
    // Not before the first frame, which would wait for it.
    if (QGuiApplication::windowIcon().isNull())
        QGuiApplication::setWindowIcon(ProgramIcon());
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        child->update();
}

void FormView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    m_pictures.SetRatio(devicePixelRatioF());
    const QImage& ground = m_pictures.Natural(m_ground);
    if (ground.isNull())
        painter.fillRect(event->rect(),
                         UsesDesktopStyle(*this) ? palette().color(QPalette::Window)
                                                 : ToQColor(m_form.BackColor));
    else
        DrawByPixels(painter, *this, ground);
    if (!std::exchange(m_isFirstFramePainted, true))
        QMetaObject::invokeMethod(
            this, [this] { FirstFrameIsPainted(); }, Qt::QueuedConnection);
}

void FormView::mousePressEvent(QMouseEvent* event)
{
    m_place.Pressed(event->globalPosition(), event->scenePosition());
    if (m_form.MouseDown)
        controls::CallSlot(m_form.MouseDown, ToMouseEvent(*event));
    else if (event->button() == Qt::LeftButton)
        StartDrag();
}

void FormView::mouseMoveEvent(QMouseEvent* event)
{
    controls::CallSlot(m_form.MouseMove, ToMouseEvent(*event));
    m_place.Drag(event->globalPosition());
}

void FormView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        EndDrag();
    controls::CallSlot(m_form.MouseUp, ToMouseEvent(*event));
}

/// A drag that began on a control gets its moves through the control's widget.
bool FormView::eventFilter(QObject* /*watched*/, QEvent* event)
{
    const auto mouse = [&] { return static_cast<QMouseEvent*>(event); };
    if (event->type() == QEvent::MouseButtonPress)
        m_place.Pressed(mouse()->globalPosition(), mouse()->scenePosition());
    if (event->type() == QEvent::MouseMove)
        return m_place.Drag(mouse()->globalPosition());
    if (event->type() == QEvent::MouseButtonRelease && mouse()->button() == Qt::LeftButton)
        EndDrag();
    return false;
}

void FormView::keyPressEvent(QKeyEvent* event)
{
    if (!m_form.KeyPress || !IsTyped(*event))
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
    m_form.Zoomed = isMaximized();
    if (m_form.Owner != nullptr)
        return;
    m_shownState = isMinimized() ? WindowState::Minimized : WindowState::Normal;
    m_form.State = m_shownState;
    if (std::exchange(m_toldState, m_shownState) == m_shownState)
        return;
    controls::CallSlot(m_form.SysCommand);
    controls::CallSlot(m_form.Resize);
}

void FormView::moveEvent(QMoveEvent* event)
{
    if (event->spontaneous() && isVisible() && !isMinimized())
        m_place.Moved();
}

} // namespace velmo::qt
