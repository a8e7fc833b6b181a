#include "MenuView.h"

#include "ControlWidget.h"
#include "QtScreens.h"
#include "QtText.h"

#include "controls/EventEntry.h"
#include "controls/PixelGrid.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QWindow>

namespace velmo::qt {

namespace {

/// Where a menu opens that is called by keys: the pointer may be anywhere then.
QPoint PlaceOfPointer()
{
    const auto* control = dynamic_cast<const ControlWidget*>(QApplication::focusWidget());
    return (control == nullptr ? std::nullopt : control->KeyPlace()).value_or(QCursor::pos());
}

/// Where the toolkit has a place that is told as those of windows are.
QPoint PlaceOf(double leftTwips, double topTwips)
{
    const controls::PixelGrid grid(ScreenScale());
    return FromScreenPoint({.x = grid.ToPixels(leftTwips), .y = grid.ToPixels(topTwips)});
}

/// Where there are no global positions, a pop-up stands by the window it belongs to.
void BelongToActiveWindow(QMenu& popup)
{
    popup.winId(); // makes its window
    const QWidget* const window = QApplication::activeWindow();
    popup.windowHandle()->setTransientParent(window == nullptr ? nullptr : window->windowHandle());
}

void Sync(const controls::MenuEntry& entry, QAction& action)
{
    action.setText(FromBytes(entry.Caption.Get()));
    action.setCheckable(entry.Checked);
    action.setChecked(entry.Checked);
    action.setEnabled(entry.Enabled);
}

} // namespace

MenuView::MenuView(controls::Menu& menu)
    : m_menu(menu)
{
    menu.PopUp = [this](double left, double top) { Open(PlaceOf(left, top)); };
    menu.PopUpAtPointer = [this] { Open(PlaceOfPointer()); };
}

MenuView::~MenuView()
{
    m_menu.PopUp = nullptr;
    m_menu.PopUpAtPointer = nullptr;
    for (const Shown& shown : m_shown)
        shown.entry->Changed = nullptr;
}

QMenu* MenuView::Popup() const
{
    return m_popup.get();
}

QMenu* MenuView::MakePopup()
{
    if (m_popup == nullptr)
        Build();
    return m_popup.get();
}

void MenuView::Open(QPoint place)
{
    MakePopup();
    BelongToActiveWindow(*m_popup);
    m_popup->popup(place); // which keeps it on the screen
}

void MenuView::Build()
{
    m_popup = std::make_unique<QMenu>();
    m_popup->setObjectName(FromBytes(m_menu.Name));
    m_popup->setAccessibleName(QStringLiteral("Menu"));
    Fill(*m_popup, m_menu.Entries);
}

void MenuView::Fill(QMenu& popup, const std::vector<controls::MenuEntry*>& entries)
{
    for (controls::MenuEntry* entry : entries) {
        if (entry->IsSeparator()) {
            popup.addSeparator()->setObjectName(FromBytes(entry->Name));
            continue;
        }
        QAction* action = nullptr;
        if (entry->Children.empty()) {
            action = popup.addAction(QString());
        } else {
            QMenu* const inner = popup.addMenu(QString());
            Fill(*inner, entry->Children);
            action = inner->menuAction();
        }
        Bind(*entry, *action);
    }
}

void MenuView::Bind(controls::MenuEntry& entry, QAction& action)
{
    action.setObjectName(FromBytes(entry.Name));
    Sync(entry, action);
    m_shown.push_back({&entry, &action});
    entry.Changed = [&entry, shown = QPointer<QAction>(&action)] {
        if (shown != nullptr)
            Sync(entry, *shown);
    };
    QObject::connect(&action, &QAction::triggered, [&entry, &action] {
        // The toolkit turns the mark of what it can check; here the entry's owner does.
        Sync(entry, action);
        controls::CallSlot(entry.Click);
    });
}

} // namespace velmo::qt
