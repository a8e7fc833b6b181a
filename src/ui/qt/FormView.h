#pragma once

#include "ControlHost.h"
#include "SkinPictures.h"
#include "WindowOutline.h"
#include "WindowPlace.h"
#include "WindowTitle.h"

#include "controls/Form.h"

#include <QWidget>

#include <vector>

namespace velmo::qt {

/// The window of a form. It makes a widget for every control that can be seen, when the form is
/// shown for the first time, and keeps window and form alike in both directions. Changes of
/// properties are collected: once an event turn the widgets of those controls that have changed are
/// brought up to date. User-interface thread; the form must outlive it.
class FormView final
    : public QWidget
    , private ControlHost
{
public:
    explicit FormView(controls::Form& form);
    ~FormView() override;
    FormView(const FormView&) = delete;
    FormView& operator=(const FormView&) = delete;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MarkDirty(ControlWidget& widget) override;
    bool IsTextShown() const override;
    SkinPictures& Pictures() override;
    void StartDrag() override;

    void QueueFlush();
    void Flush();
    void SetHooks();
    void Build();
    static FormView* ViewOf(const controls::Form* form);
    void SyncWindow();
    bool IsWanted() const;
    void TellOwned();
    static std::vector<FormView*> AllViews();
    static void SendMoves();
    void BeginDrag();
    void EndDrag();
    void SyncState();
    void ShowWindow();
    void HideWindow();
    void RepaintNow();
    void Activate();
    void FirstFrameIsPainted();
    void ShowText();

    controls::Form& m_form;
    WindowPlace m_place;
    WindowOutline m_outline;
    SkinPictures m_pictures;
    controls::PictureRef m_ground; ///< what is painted
    WindowTitle m_title;
    std::vector<ControlWidget*> m_dirty;
    bool m_isFlushQueued = false;
    bool m_isBuilt = false;
    bool m_isOnTop = false;
    bool m_isFirstFramePainted = false;
    bool m_isTextShown = false;
    controls::WindowState m_shownState = controls::WindowState::Normal;
    controls::WindowState m_toldState = controls::WindowState::Normal;  ///< by `Resize`
    controls::WindowState m_ownedState = controls::WindowState::Normal; ///< the owned have heard of
};

} // namespace velmo::qt
