#include "PlaylistButtons.h"

#include "core/CallIfSet.h"

#include <utility>

namespace velmo {

namespace {

using controls::Image;
using controls::MouseButton;
using controls::MouseEvent;

} // namespace

PlaylistButtons::Frame::Frame(Image& frameGround, std::vector<Image*> frameButtons)
    : ground(frameGround)
    , buttons(std::move(frameButtons))
    , row(buttons)
{}

void PlaylistButtons::Frame::SetVisible(bool visible) const
{
    ground.Visible = visible;
    for (Image* button : buttons)
        button->Visible = visible;
}

PlaylistButtons::PlaylistButtons(forms::Playlist& form, PlaylistButtonModules modules)
    : m_form(form)
    , m_modules(modules)
    , m_edge({&form.imgClear, &form.imgOpen, &form.imgOrder, &form.imgSave})
    , m_frameOpen(
          form.frameOpen,
          {&form.imgOpenDirectory, &form.imgOpenList, &form.imgOpenLocation, &form.imgOpenMedia})
    , m_frameOrder(form.frameOrder, {&form.imgOrderAZ, &form.imgOrderRandom, &form.imgOrderZA})
{
    BindEdge(form.imgClear, OnHover::HideFrames, [this] { Clear(); });
    BindEdge(form.imgSave, OnHover::HideFrames, [this] { m_modules.listDialogs.SaveListDialog(); });
    BindEdge(form.imgOpen, OnHover::KeepFrames, [this] { Toggle(m_frameOpen); });
    BindEdge(form.imgOrder, OnHover::KeepFrames, [this] { Toggle(m_frameOrder); });
    BindOpenFrame();
    BindOrderFrame();
}

void PlaylistButtons::Leave()
{
    InFrame = false;
    m_edge.ShowNormal();
    HideFrames();
}

void PlaylistButtons::BindEdge(Image& button, OnHover onHover, std::function<void()> act)
{
    m_edge.Bind(button,
                {.hovered =
                     [this, onHover](const MouseEvent&) {
                         InFrame = false;
                         if (onHover == OnHover::HideFrames)
                             HideFrames();
                     },
                 .act =
                     [act = std::move(act)](const MouseEvent& event) {
                         if (event.button == MouseButton::Left)
                             act();
                     }});
}

void PlaylistButtons::BindOpenFrame()
{
    const auto andSave = [this](auto add) {
        return [this, add] {
            add();
            m_modules.list.SaveInternalList();
        };
    };
    m_form.frameOpen.MouseMove = [this](const MouseEvent&) { InFrame = true; };
    BindFramed(m_frameOpen, m_form.imgOpenMedia, andSave([this] {
                   m_modules.addingDialogs.AddFilesDialog();
               }));
    BindFramed(m_frameOpen, m_form.imgOpenDirectory, andSave([this] {
                   m_modules.addingDialogs.AddDirectoryDialog();
               }));
    BindFramed(m_frameOpen, m_form.imgOpenList, andSave([this] {
                   m_modules.listDialogs.OpenListDialog();
               }));
    BindFramed(m_frameOpen, m_form.imgOpenLocation, [this] { m_modules.addLocation.Open(); });
}

void PlaylistButtons::BindOrderFrame()
{
    BindFramed(m_frameOrder, m_form.imgOrderAZ, [this] { m_modules.ordering.SortListAscending(); });
    BindFramed(
        m_frameOrder, m_form.imgOrderZA, [this] { m_modules.ordering.SortListDescending(); });
    BindFramed(m_frameOrder, m_form.imgOrderRandom, [this] { m_modules.ordering.ShuffleList(); });
}

void PlaylistButtons::BindFramed(const Frame& frame, Image& button, std::function<void()> act)
{
    frame.row.Bind(
        button,
        {.hovered = [&frame](const MouseEvent& event) { CallIfSet(frame.ground.MouseMove, event); },
         .act =
             [&frame, act = std::move(act)](const MouseEvent& event) {
                 if (event.button != MouseButton::Left)
                     return;
                 frame.SetVisible(false);
                 act();
             }});
}

/// Without a question.
void PlaylistButtons::Clear()
{
    m_form.tmrInfo.Enabled = false;
    m_form.pl.Clear();
    m_modules.list.SaveInternalList();
    m_modules.list.UpdateListScrollBar();
}

void PlaylistButtons::HideFrames() const
{
    m_frameOpen.SetVisible(false);
    m_frameOrder.SetVisible(false);
}

/// Kept: pressed while the pointer comes straight from within `frameOpen`, the button hides its
/// frame and shows it at once again.
void PlaylistButtons::Toggle(const Frame& frame) const
{
    if (InFrame)
        frame.SetVisible(false);
    const bool shows = !frame.ground.Visible;
    if (shows)
        frame.row.ShowNormal();
    frame.SetVisible(shows);
}

} // namespace velmo
