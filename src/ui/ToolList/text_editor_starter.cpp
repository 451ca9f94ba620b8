#include "text_editor_starter.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace qor {

bool StartTextEditor(const std::string &program, const std::string &path)
{
    const QString editor = QString::fromStdString(program);
    const QString file = QString::fromStdString(path);
    const bool isNotepad = editor.compare(QLatin1String("Notepad.exe"), Qt::CaseInsensitive) == 0;
    if (isNotepad && QStandardPaths::findExecutable(editor).isEmpty()) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    }
    return QProcess::startDetached(editor, {file});
}

} // namespace qor
