#pragma once

class QPoint;

namespace velmo::qt {

class ControlWidget;
class SkinPictures;

/// What the widget of a control asks of the window it stands in. User-interface thread.
class ControlHost
{
public:
    ControlHost() = default;
    ControlHost(const ControlHost&) = delete;
    ControlHost& operator=(const ControlHost&) = delete;

    /// The control of `widget` has changed: `Sync` is called once the present event has been
    /// handled.
    virtual void MarkDirty(ControlWidget& widget) = 0;

    /// False until the window's first frame was painted, which goes without text: the first text of
    /// a process costs several milliseconds.
    virtual bool IsTextShown() const = 0;

    /// The skin as the window shows it.
    virtual SkinPictures& Pictures() = 0;

    /// A left press that no slot took.
    virtual void StartDrag() = 0;

protected:
    ~ControlHost() = default;
};

} // namespace velmo::qt
