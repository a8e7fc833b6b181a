#pragma once

#include "controls/Menu.h"

#include <QAction>
#include <QPoint>
#include <QPointer>

#include <memory>
#include <vector>

class QMenu;

namespace velmo::qt {

/// Shows a pop-up menu, in the desktop's own style. It is made when it is first opened, and follows
/// its entries from then on. User-interface thread; the menu's record must outlive it.
class MenuView final
{
public:
    explicit MenuView(controls::Menu& menu);
    ~MenuView();
    MenuView(const MenuView&) = delete;
    MenuView& operator=(const MenuView&) = delete;

    /// The menu as the toolkit's; null until it was opened once.
    QMenu* Popup() const;
    /// The same, made now at the latest, for what shows it by itself. Ends with this object.
    QMenu* MakePopup();

private:
    /// An entry and what shows it. A heading of a sub-menu is that menu's own action.
    struct Shown
    {
        controls::MenuEntry* entry = nullptr;
        QPointer<QAction> action;
    };

    void Open(QPoint place);
    void Build();
    void Fill(QMenu& popup, const std::vector<controls::MenuEntry*>& entries);
    void Bind(controls::MenuEntry& entry, QAction& action);

    controls::Menu& m_menu;
    std::unique_ptr<QMenu> m_popup;
    std::vector<Shown> m_shown;
};

} // namespace velmo::qt
