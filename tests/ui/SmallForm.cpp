#include "ui/SmallForm.h"

#include <stdexcept>

namespace velmo::test {

SmallForm::SmallForm()
    : Form("SmallForm", "Small form", 3000, 1500, controls::BorderStyle::None)
    , lblTime(*this, "lblTime", {150, 150, 900, 300}, "00:00")
    , lblSong(*this, "lblSong", {1200, 150, 1500, 300}, "Song")
    , imgBar(*this, "imgBar", {150, 600, 2700, 150})
    , imgKnob(*this, "imgKnob", {150, 600, 300, 150})
    , imgArea(*this, "imgArea", {150, 900, 150, 150})
    , txtNote(*this, "txtNote", {1200, 900, 900, 450})
    , picSound(*this, "picSound", {450, 900, 150, 150})
    , tmrTick(*this, "tmrTick", 1000, false, controls::TimerAccuracy::Coarse)
{
    lblTime.ToolTipText = "Curent position";
    imgBar.AccessibleName = "Position";
    imgKnob.SlideOn(imgBar);
}

PaintCounter::PaintCounter()
{
    qApp->installEventFilter(this);
}

PaintCounter::~PaintCounter()
{
    qApp->removeEventFilter(this);
}

int PaintCounter::Count(const std::string& name) const
{
    const auto found = m_counts.find(name);
    return found == m_counts.end() ? 0 : found->second;
}

std::vector<std::string> PaintCounter::Painted() const
{
    std::vector<std::string> names;
    for (const auto& entry : m_counts)
        names.push_back(entry.first);
    return names;
}

void PaintCounter::Reset()
{
    m_counts.clear();
}

bool PaintCounter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && watched->isWidgetType())
        ++m_counts[watched->objectName().toStdString()];
    return false;
}

void ServeEvents()
{
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

QWidget& Find(const QWidget& view, const char* name)
{
    auto* widget = view.findChild<QWidget*>(QString::fromUtf8(name), Qt::FindDirectChildrenOnly);
    if (widget == nullptr)
        throw std::runtime_error(std::string("no widget ") + name);
    return *widget;
}

ShownForm::ShownForm()
{
    form.Show();
    PaintCounter paints;
    // The first frame comes without text, the second one with it.
    if (!WaitUntil([&] { return paints.Count("lblSong") >= 2; }))
        throw std::runtime_error("the form was not painted");
    ServeEvents();
}

} // namespace velmo::test
