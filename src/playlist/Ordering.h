#pragma once

#include "RowSorting.h"
#include "modPlaylist.h"

#include "forms/Playlist.h"
#include "ports/Clock.h"
#include "ports/Collation.h"
#include "ports/Random.h"

#include <functional>
#include <string>

namespace velmo {

/// What the orderings need of the world.
struct OrderingPorts
{
    ports::Collation& collation;
    ports::Random& random;
    ports::Clock& clock;
};

/// The three commands that reorder the playlist in place. What plays goes on; the mark follows the
/// text of the row that had the focus, to every row with that text. Each saves the list. An error
/// in a step is passed over. User-interface thread only.
class Ordering final
{
public:
    Ordering(modPlaylist& list, forms::Playlist& playlist, OrderingPorts ports);

    void SortListAscending();
    void SortListDescending();
    /// Sorts upwards if "SortListOnLoad" is on.
    void SortIfWanted(modINI& settings);
    /// The last step of adding rows behind row `countBefore`: in mode "display" the title reader
    /// starts there, and sorts and saves when it is done; else both happen now.
    void FinishAdding(std::size_t countBefore, modINI& settings);
    /// Swaps each row with one picked at random. Kept: a pick of 0 leaves the row as it is.
    void ShuffleList();

    /// An open `finder` lists the new order. Unset: there is no such window.
    std::function<void()> RefreshFinder;

private:
    void Sort(SortDirection direction);
    std::string StripAndRemember();
    void FinishWith(const std::string& remembered);

    modPlaylist& m_list;
    forms::Playlist& m_playlist;
    OrderingPorts m_ports;
};

} // namespace velmo
