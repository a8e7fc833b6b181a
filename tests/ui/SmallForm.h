#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/Picture.h"
#include "qt/FormView.h"

#include <QApplication>
#include <QTest>

#include <map>
#include <string>

namespace velmo::test {

/// A form of 200 by 100 pixels with one control of each kind, far from each other.
class SmallForm final : public controls::Form
{
public:
    SmallForm();

    controls::Label lblTime;
    controls::Label lblSong;
    controls::Image imgBar;
    controls::Image imgKnob;
    controls::Image imgArea;
    controls::TextBox txtNote;
    controls::Picture picSound;
    controls::Timer tmrTick;
};

/// Counts the paint events of each widget, by object name, while it lives.
class PaintCounter final : public QObject
{
public:
    PaintCounter();
    ~PaintCounter() override;
    PaintCounter(const PaintCounter&) = delete;
    PaintCounter& operator=(const PaintCounter&) = delete;

    int Count(const std::string& name) const;
    /// The names of all widgets that were painted.
    std::vector<std::string> Painted() const;
    void Reset();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::map<std::string, int> m_counts;
};

/// Serves events until `condition` holds; false if it did not come in five seconds.
template<class Condition>
[[nodiscard]] bool WaitUntil(Condition condition)
{
    return QTest::qWaitFor(condition, 5000);
}

/// Serves every event that waits, also those that come of it.
void ServeEvents();

/// A widget of the view by its control's name; fails the test if there is none.
QWidget& Find(const QWidget& view, const char* name);

/// A shown form with its text on the screen.
struct ShownForm
{
    ShownForm();

    SmallForm form;
    qt::FormView view{form};
};

} // namespace velmo::test
