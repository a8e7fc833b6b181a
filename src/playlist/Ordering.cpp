#include "Ordering.h"

#include "core/Ignoring.h"
#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

Ordering::Ordering(modPlaylist& list, forms::Playlist& playlist, OrderingPorts ports)
    : m_list(list)
    , m_playlist(playlist)
    , m_ports(ports)
{}

void Ordering::SortListAscending()
{
    Sort(SortDirection::Ascending);
}

void Ordering::SortListDescending()
{
    Sort(SortDirection::Descending);
}

void Ordering::SortIfWanted(modINI& settings)
{
    if (IsTrue(settings.ReadSetting(sections::Options, keys::SortListOnLoad, "False")))
        SortListAscending();
}

void Ordering::FinishAdding(std::size_t countBefore, modINI& settings)
{
    if (m_list.ReadsTitlesOnDisplay()) {
        m_list.StartTitleReader(countBefore);
        return;
    }
    SortIfWanted(settings);
    m_list.SaveInternalList();
}

void Ordering::ShuffleList()
{
    controls::ListRows& rows = m_playlist.pl;
    const std::string remembered = StripAndRemember();
    m_ports.random.Seed(m_ports.clock.SecondsSinceMidnight());
    for (std::size_t row = 1; row <= rows.Count(); ++row) {
        const double drawn =
            static_cast<double>(m_ports.random.Next()) * static_cast<double>(rows.Count());
        const auto other = static_cast<std::size_t>(RoundHalfEven(drawn));
        if (other > 0)
            rows.SwapContent(row, other);
    }
    m_list.DeselectAllEntries();
    FinishWith(remembered);
}

void Ordering::Sort(SortDirection direction)
{
    const std::string remembered = StripAndRemember();
    m_list.DeselectAllEntries();
    SortRows(m_playlist.pl, m_ports.collation, direction);
    FinishWith(remembered);
}

/// Takes the numbers away. The text of the row with the focus, or nothing.
std::string Ordering::StripAndRemember()
{
    const controls::ListRows& rows = m_playlist.pl;
    m_list.StripAllNumbers(1, rows.Count());
    return rows.SelectedEntry() == 0 ? std::string()
                                     : std::string(rows.Texts(rows.SelectedEntry()).Text);
}

void Ordering::FinishWith(const std::string& remembered)
{
    controls::ListRows& rows = m_playlist.pl;
    for (std::size_t row = 1; row <= rows.Count(); ++row)
        if (rows.Texts(row).Text == remembered)
            rows.Mark(row);
    Ignoring([&] { rows.EnsureVisible(rows.SelectedEntry()); }); // there may be no such row
    if (m_list.ShowsNumbers())
        m_list.NumberAllEntries(1, rows.Count());
    if (RefreshFinder)
        Ignoring(RefreshFinder);
    m_list.WakeTitleReader();
    m_list.SaveInternalList();
}

} // namespace velmo
