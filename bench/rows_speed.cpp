// What a step of the wheel and a key cost in a list of a million rows, from the event to the pixels
// in the window's store: rows_speed
//
// The step scrolls as the playlist does; the key moves the selection, at the foot of the view, so
// that every row is painted anew. On the platform that the environment says.

#include "Measure.h"

#include "forms/Playlist.h"
#include "qt/EnvironmentSetup.h"
#include "qt/FormView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWheelEvent>

namespace {

using namespace velmo;

constexpr std::size_t RowCount = 1'000'000;
constexpr int Rounds = 300;

/// Knows whether a widget has been painted.
class PaintWatch final : public QObject
{
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    bool isPainted = false;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        isPainted = isPainted || event->type() == QEvent::Paint;
        return false;
    }
};

void Fill(controls::ListRows& rows)
{
    for (std::size_t row = 1; row <= RowCount; ++row) {
        const std::string number = std::to_string(row);
        rows.AddTexts({.Text = number + ". The Low Tide Society - Breakwater, take " + number,
                       .Length = "04:20",
                       .Path = "/music/The Low Tide Society/" + number + ".mp3"});
    }
}

/// The median milliseconds until what `act` does is painted.
double Painted(PaintWatch& watch, const std::function<void()>& act)
{
    std::vector<double> seconds;
    for (int round = 0; round < Rounds; ++round) {
        watch.isPainted = false;
        seconds.push_back(bench::Seconds([&] {
            act();
            while (!watch.isPainted)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }));
    }
    return bench::Median(seconds) * 1e3;
}

void Report(const std::string& what, double milliseconds)
{
    constexpr double BarMs = 8;
    bench::Row(what + " in a list of 1 000 000 rows, to painted",
               bench::Text("%.2f ms", milliseconds),
               "8 ms",
               milliseconds < BarMs);
}

} // namespace

int main(int argc, char** argv)
{
    qt::SetUpEnvironment();
    const QApplication application(argc, argv);
    forms::Playlist form;
    Fill(form.pl);
    form.pl.MouseWheel = [&](int delta) {
        constexpr std::size_t Step = 3;
        const std::size_t first = form.pl.FirstVisibleEntry();
        form.pl.EnsureVisible(delta < 0 ? first + Step + form.pl.VisibleRows() - 1 : first - Step);
    };
    const qt::FormView view(form);
    form.Show();
    while (!view.isVisible())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    auto& list = *view.findChild<QWidget*>(QStringLiteral("pl"));
    PaintWatch watch(list);
    while (!watch.isPainted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
    const double wheel = Painted(watch, [&] {
        QWheelEvent event({50, 50}, {50, 50}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&list, &event);
    });
    form.pl.Choose(form.pl.FirstVisibleEntry() + form.pl.VisibleRows() - 1,
                   controls::Marking::Only);
    const double key = Painted(watch, [&] {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&list, &event);
    });
    Report("a step of the wheel", wheel);
    Report("a key", key);
    return 0;
}
