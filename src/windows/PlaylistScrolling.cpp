#include "PlaylistScrolling.h"

#include "core/Ignoring.h"
#include "core/NumberText.h"
#include "core/SettingsKeys.h"

#include <algorithm>

namespace velmo {

PlaylistScrolling::PlaylistScrolling(forms::Playlist& form, modPlaylist& list)
    : m_form(form)
    , m_list(list)
{}

void PlaylistScrolling::ReadStep(modINI& settings)
{
    constexpr double MostRows = 200;
    const double step =
        Int(ParseNumber(settings.ReadSetting(sections::Options, keys::MwStep, "1")));
    m_mwStep = static_cast<std::int32_t>(std::clamp(step, 1.0, MostRows));
}

void PlaylistScrolling::MouseWheel(int delta)
{
    const auto first = static_cast<std::int32_t>(m_form.pl.FirstVisibleEntry());
    if (delta < 1) {
        const auto count = static_cast<std::int32_t>(m_form.pl.Count());
        const std::int32_t row = std::min(first + m_mwStep + modPlaylist::ScrolledRows, count);
        EnsureVisible(row);
        m_form.scBar.SetPosition(row - modPlaylist::ScrolledRows);
    } else {
        const std::int32_t row = std::max(first - m_mwStep, 1);
        EnsureVisible(row);
        m_form.scBar.SetPosition(row);
    }
    m_list.WakeTitleReader();
}

void PlaylistScrolling::scBar_Change(bool goesDown, std::int32_t position)
{
    const std::int64_t row = position;
    EnsureVisible(goesDown ? row + modPlaylist::ScrolledRows : std::max<std::int64_t>(row, 1));
    m_list.WakeTitleReader();
}

void PlaylistScrolling::pl_Click()
{
    if (m_form.pl.Count() > 0)
        FollowView();
    m_list.WakeTitleReader();
}

void PlaylistScrolling::pl_KeyDown(int keyCode)
{
    constexpr int PageUp = 33;
    constexpr int PageDown = 34;
    constexpr int Up = 38;
    constexpr int Down = 40;
    const bool moves = keyCode == PageUp || keyCode == PageDown || keyCode == Up || keyCode == Down;
    if (moves && m_form.pl.Count() > 0)
        FollowView();
    m_list.WakeTitleReader();
}

/// A row that the list does not have is passed over.
void PlaylistScrolling::EnsureVisible(std::int64_t row)
{
    if (row > 0)
        Ignoring([&] { m_form.pl.EnsureVisible(static_cast<std::size_t>(row)); });
}

void PlaylistScrolling::FollowView()
{
    m_form.scBar.SetPosition(static_cast<std::int32_t>(m_form.pl.FirstVisibleEntry()));
}

} // namespace velmo
