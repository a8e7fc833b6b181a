#include "RowsAccessible.h"

#include "ListRowsWidget.h"
#include "QtText.h"

namespace velmo::qt {

namespace {

constexpr std::size_t MostMade = 4096;

/// The row that stands at a place of the list, whatever it holds at the moment.
class RowAccessible final
    : public QAccessibleInterface
    , public QAccessibleActionInterface
{
public:
    RowAccessible(ListRowsWidget& list, std::size_t row)
        : m_list(list)
        , m_row(row)
    {}

    std::size_t Row() const { return m_row; }

    bool isValid() const override { return m_row <= m_list.Rows().Count(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_list.window()->windowHandle(); }
    QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(&m_list);
    }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return {};
        const controls::RowTexts texts = m_list.Rows().Texts(m_row);
        if (kind == QAccessible::Name)
            return FromBytes(texts.Text);
        return kind == QAccessible::Description ? FromBytes(texts.Length) : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    QRect rect() const override
    {
        const QRect place = m_list.PlaceOf(m_row);
        return place.isEmpty() ? QRect() : place.translated(m_list.mapToGlobal(QPoint(0, 0)));
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.invalid = !isValid();
        if (!isValid())
            return state;
        state.selectable = true;
        state.multiSelectable = true;
        state.focusable = true;
        state.selected = m_list.Rows().IsMarked(m_row);
        state.focused = m_list.hasFocus() && m_list.Rows().SelectedEntry() == m_row;
        state.offscreen = m_list.PlaceOf(m_row).isEmpty();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), toggleAction()}; }
    /// As a click on the row does, and one with Ctrl.
    void doAction(const QString& name) override
    {
        if (!isValid())
            return;
        if (name == pressAction())
            m_list.Rows().Choose(m_row, controls::Marking::Only);
        else if (name == toggleAction())
            m_list.Rows().Choose(m_row, controls::Marking::Toggle);
    }
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

private:
    ListRowsWidget& m_list;
    const std::size_t m_row;
};

} // namespace

RowsAccessible::RowsAccessible(ListRowsWidget& list)
    : ControlAccessible(list)
    , m_list(list)
{}

RowsAccessible::~RowsAccessible()
{
    for (const auto& made : m_made)
        QAccessible::deleteAccessibleInterface(made.second);
}

int RowsAccessible::childCount() const
{
    return static_cast<int>(m_list.Rows().Count());
}

QAccessibleInterface* RowsAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const std::size_t row = static_cast<std::size_t>(index) + 1;
    if (const auto found = m_made.find(row); found != m_made.end())
        return QAccessible::accessibleInterface(found->second);
    if (m_age.size() == MostMade) {
        const auto oldest = m_made.find(m_age.front());
        QAccessible::deleteAccessibleInterface(oldest->second);
        m_made.erase(oldest);
        m_age.pop_front();
    }
    auto* const made = new RowAccessible(m_list, row); // the toolkit's, until it is to be deleted
    m_made.emplace(row, QAccessible::registerAccessibleInterface(made));
    m_age.push_back(row);
    return made;
}

int RowsAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* row = dynamic_cast<const RowAccessible*>(child);
    return row == nullptr || !row->isValid() ? -1 : static_cast<int>(row->Row()) - 1;
}

QAccessibleInterface* RowsAccessible::childAt(int x, int y) const
{
    const QPoint place = m_list.mapFromGlobal(QPoint(x, y));
    return m_list.rect().contains(place) ? child(static_cast<int>(m_list.RowAt(place.y())) - 1)
                                         : nullptr;
}

QAccessibleInterface* RowsAccessible::focusChild() const
{
    return m_list.hasFocus() ? child(static_cast<int>(m_list.Rows().SelectedEntry()) - 1) : nullptr;
}

QAccessible::State RowsAccessible::state() const
{
    QAccessible::State state = ControlAccessible::state();
    state.multiSelectable = true;
    return state;
}

} // namespace velmo::qt
