// QORTool: the desktop editor for the tool table of the automatic tool
// changer.
#include "editor_windows.h"
#include "qt_message_service.h"
#include "startup.h"
#include "tool_list_window.h"

#include <QApplication>
#include <QDir>
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
    if (int status = qor::RunStartup(workspace, appDir, messages); status != 0) {
        return status;
    }

    // One optional argument: the tool list file to open.
    const QStringList arguments = QCoreApplication::arguments();
    const QString commandLineFile = arguments.size() > 1 ? arguments.at(1) : QString();

    workspace.DrawSuppressed = true;
    qor::ToolListWindow toolList(workspace, messages, commandLineFile);
    toolList.show();
    QCoreApplication::processEvents();
    workspace.DrawSuppressed = false;

    qor::CreateEditorWindows(workspace, &toolList, messages);

    QObject::connect(&toolList, &qor::ToolListWindow::closed, &app, &QApplication::quit,
                     Qt::QueuedConnection);
    return QApplication::exec();
}
