#pragma once

#include "controls/PictureRow.h"
#include "forms/Playlist.h"
#include "playlist/AddingDialogs.h"
#include "playlist/ListDialogs.h"
#include "playlist/Ordering.h"
#include "playlist/frmAddLocation.h"
#include "playlist/modPlaylist.h"

#include <functional>
#include <vector>

namespace velmo {

/// What the buttons of the playlist run.
struct PlaylistButtonModules
{
    modPlaylist& list;
    Ordering& ordering;
    AddingDialogs& addingDialogs;
    ListDialogs& listDialogs;
    frmAddLocation& addLocation;
};

/// The eleven buttons of the playlist: four on the edge, and those of the two frames that `imgOpen`
/// and `imgOrder` let out. A button acts when it is released, wherever that is. User-interface
/// thread only.
class PlaylistButtons final
{
public:
    /// Takes the slots of the buttons. `form` must outlive this.
    PlaylistButtons(forms::Playlist& form, PlaylistButtonModules modules);
    PlaylistButtons(const PlaylistButtons&) = delete;
    PlaylistButtons& operator=(const PlaylistButtons&) = delete;
    ~PlaylistButtons() = default;

    /// The pointer has entered `frameOpen`.
    bool InFrame = false;

    /// The pointer has left them all: edge buttons normal, frames hidden.
    void Leave();

private:
    /// A frame and the buttons that lie in it; they are seen while it is.
    struct Frame
    {
        controls::Image& ground;
        std::vector<controls::Image*> buttons;
        controls::PictureRow row;

        Frame(controls::Image& frameGround, std::vector<controls::Image*> frameButtons);
        void SetVisible(bool visible) const;
    };

    /// What a move over a button of the edge does to the frames.
    enum class OnHover
    {
        KeepFrames,
        HideFrames,
    };

    void BindEdge(controls::Image& button, OnHover onHover, std::function<void()> act);
    void BindOpenFrame();
    void BindOrderFrame();
    void BindFramed(const Frame& frame, controls::Image& button, std::function<void()> act);

    void Clear();
    void HideFrames() const;
    void Toggle(const Frame& frame) const;

    forms::Playlist& m_form;
    PlaylistButtonModules m_modules;
    controls::PictureRow m_edge;
    Frame m_frameOpen;
    Frame m_frameOrder;
};

} // namespace velmo
