#include "LibraryWarmUp.h"
#include "Program.h"

#include "lifecycle/mMain.h"
#include "qt/EnvironmentSetup.h"

#include <QApplication>

int main(int argc, char** argv)
{
    velmo::MakePathVariablesAbsolute();
    velmo::Process process({argv + 1, argv + argc});
    if (velmo::DecideRole(process.instance, process.settings, process.commandLine)
        == velmo::ProcessRole::Forwarder)
        return 0;
    const velmo::LibraryWarmUp warmUp(process.directories.program + velmo::BassFileName);
    velmo::qt::SetUpEnvironment();
    // No argument is for the toolkit: the command line is a path.
    int toolkitArguments = 1;
    QApplication application(toolkitArguments, argv);
    QApplication::setApplicationName(QStringLiteral("velmo-player"));
    QApplication::setDesktopFileName(QStringLiteral("velmo-player"));
    velmo::qt::TellLimits();
    velmo::Program program(process);
    program.Start();
    return QApplication::exec();
}
