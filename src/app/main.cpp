// QORTool: the desktop editor for the tool table of the automatic tool
// changer.
#include "qt_message_service.h"
#include "run_windows.h"
#include "startup.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QStringList>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("QORTool");
    QApplication::setApplicationVersion(qor::ProgramVersion);

    qor::Workspace workspace;
    qor::QtMessageService messages;
    const std::string appDir =
        QDir::toNativeSeparators(QCoreApplication::applicationDirPath()).toStdString();
    // Where the settings go when the program's folder cannot hold them (an
    // installed program): the user's own settings folder, ~/.config/QORTool
    // on Linux. ttltool computes the same folder without Qt.
    qor::StartupOverrides overrides;
    overrides.userSettingsFolder = QDir::toNativeSeparators(QStandardPaths::writableLocation(
                                                                QStandardPaths::AppConfigLocation))
                                       .toStdString();
    if (int status = qor::RunStartup(workspace, appDir, messages, overrides); status != 0) {
        return status;
    }

    // One optional argument: the tool list file to open.
    const QStringList arguments = QCoreApplication::arguments();
    const QString commandLineFile = arguments.size() > 1 ? arguments.at(1) : QString();
    return qor::RunWindows(workspace, messages, commandLineFile);
}
