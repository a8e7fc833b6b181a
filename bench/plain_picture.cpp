// The yardstick of the running costs: a Qt Widgets window that shows a picture of the spectrum's
// size 40 times a second in the toolkit's plain way, built the same way as the player.

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace {

class PictureWindow final : public QWidget
{
public:
    PictureWindow() { resize(265, 177); }

    void ShowNext()
    {
        m_picture.fill(++m_frame % 2 == 0 ? Qt::black : Qt::green);
        update(m_picture.rect());
    }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(0, 0, m_picture); }

private:
    QImage m_picture{100, 28, QImage::Format_RGB32};
    int m_frame = 0;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    QApplication application(argc, argv);
    PictureWindow window;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &window, &PictureWindow::ShowNext);
    constexpr int FrameMs = 25;
    timer.start(FrameMs);
    window.show();
    return QApplication::exec();
}
