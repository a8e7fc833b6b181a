#pragma once

#include "ControlWidget.h"
#include "RunningText.h"

#include "controls/Controls.h"

#include <QFont>

#include <optional>

namespace velmo::qt {

/// Paints one line of text on its ground; it fills its whole area, so nothing under it is painted
/// with it.
class LabelWidget final : public ControlWidget
{
public:
    LabelWidget(controls::Label& label, ControlHost& host, QWidget* parent);

    void Sync() override;
    QAccessible::Role AccessibleRole() const override;
    QString AccessibleText() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// What the last `Sync` found, to tell whether the picture changes.
    struct Look
    {
        std::string caption;
        controls::Colour fore = 0;
        controls::Colour back = 0;
        controls::Font font;
        controls::TextAlign align = controls::TextAlign::Left;
        controls::TextOverflow overflow = controls::TextOverflow::Cut;

        bool operator==(const Look&) const = default;
    };

    void PaintInStyle();
    void PaintText(QPainter& painter);
    bool ShowTurn();
    bool IsTextDrawn() const;
    const QImage* RunningPicture();
    const QFont& Font();
    double Baseline(const QFont& font) const;

    const controls::Label& m_label;
    Look m_look;
    /// That of `m_look`, once it has been painted with: looking a font up is dear.
    std::optional<QFont> m_font;
    QString m_text;
    RunningText m_running; ///< drawn with `m_look`
};

} // namespace velmo::qt
