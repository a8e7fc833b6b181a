#pragma once

#include "forms/frmListMGR.h"
#include "playlist/AddingDialogs.h"
#include "playlist/ListDialogs.h"
#include "support/FakePlayer.h"

#include <string>
#include <vector>

namespace velmo::test {

/// The playlist's modules over fakes, with the dialogs, and a few looks at the rows.
struct ListFixture : FakePlayer
{
    forms::frmListMGR manager;
    ListStore store{files, "/app/"};
    ListDialogs listDialogs{
        list, {playlist, manager},
         ordering, store, settings, files, dialogs
    };
    AddingDialogs addingDialogs{addingModules, playlist, tracks, settings, files, dialogs};

    /// Rows of those texts, with as many seconds of length as their number, "/m/<text>" as path.
    void Fill(const std::vector<std::string>& texts)
    {
        for (const std::string& text : texts)
            playlist.pl.Add({text, "00:0" + std::to_string(playlist.pl.Count() + 1), "/m/" + text});
    }

    /// The texts of the rows; "*" behind a marked one.
    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (std::size_t row = 1; row <= playlist.pl.Count(); ++row)
            texts.push_back(playlist.pl.Row(row).Text + (playlist.pl.IsMarked(row) ? "*" : ""));
        return texts;
    }

    std::string Saved() { return files.files["/app/list.zvl"]; }
};

} // namespace velmo::test
