#pragma once

#include "ControlHost.h"
#include "WindowPlace.h"

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
    void StartDrag() override;

    void QueueFlush();
    void Flush();
    void SetHooks();
    void Build();
    void SyncWindow();
    void SyncState();
    void ShowWindow();
    void RepaintNow();
    void Activate();
    void ShowText();

    controls::Form& m_form;
    WindowPlace m_place;
    std::vector<ControlWidget*> m_dirty;
    bool m_isFlushQueued = false;
    bool m_isBuilt = false;
    bool m_isOnTop = false;
    bool m_isFirstFramePainted = false;
    bool m_isTextShown = false;
    const QString m_engraving; ///< on the body; the window's title may run, this does not
    controls::WindowState m_shownState = controls::WindowState::Normal;
    controls::WindowState m_toldState = controls::WindowState::Normal; ///< by `Resize`
};

} // namespace velmo::qt
