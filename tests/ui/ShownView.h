#pragma once

#include "qt/FormView.h"

#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QTest>
#include <QWindow>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmo::test {

/// Serves events until `condition` holds; false if it did not come in a minute.
template<class Condition>
[[nodiscard]] bool WaitUntil(Condition condition)
{
    return QTest::qWaitFor(condition, 60000);
}

/// Serves every event that waits, also those that come of it.
inline void ServeEvents()
{
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

/// A widget of the view by its control's name; fails the test if there is none.
inline QWidget& Find(const QWidget& view, const char* name)
{
    auto* widget = view.findChild<QWidget*>(QString::fromUtf8(name), Qt::FindDirectChildrenOnly);
    if (widget == nullptr)
        throw std::runtime_error(std::string("no widget ") + name);
    return *widget;
}

/// Counts the paint events of each widget, by object name, and joins their areas while it lives.
struct PaintCounter final : QObject
{
    PaintCounter() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            ++counts[watched->objectName().toStdString()];
            areas[watched->objectName().toStdString()] +=
                static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    std::map<std::string, int> counts;
    std::map<std::string, QRegion> areas;
};

/// How many pixels of that place are as they are wanted.
template<class Wanted>
int CountPixels(const QImage& picture, const QRect& place, Wanted wanted)
{
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            count += wanted(picture.pixelColor(x, y)) ? 1 : 0;
    return count;
}

/// A form and its window, shown with its text.
template<class FormType>
struct ShownView
{
    ShownView()
    {
        form.Show();
        if (!WaitUntil([&] { return view.isActiveWindow() && view.windowHandle()->isExposed(); }))
            throw std::runtime_error("the form was not shown");
        form.RepaintNow();
        ServeEvents();
    }

    FormType form;
    qt::FormView view{form};
};

} // namespace velmo::test
