// The yardstick of the start times: an empty Qt Widgets window, built the same way as the player.

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv)
{
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    QApplication application(argc, argv);
    QWidget window;
    window.resize(265, 177);
    window.show();
    return QApplication::exec();
}
