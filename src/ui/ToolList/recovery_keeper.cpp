#include "recovery_keeper.h"

#include "message_service.h"
#include "recovery_file.h"
#include "table_history.h"
#include "workspace.h"

namespace qor {

RecoveryKeeper::RecoveryKeeper(Workspace &workspace, TableHistory &history,
                               MessageService &messages,
                               std::function<std::optional<LastRead>()> source, QObject *parent)
    : QObject(parent), m_ws(workspace), m_history(history), m_messages(messages),
      m_source(std::move(source)), m_path(RecoveryFilePath(workspace.Globals.IniPath))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(DelayMs);
    connect(&m_timer, &QTimer::timeout, this, &RecoveryKeeper::Write);
    connect(&history, &TableHistory::applied, this, [this] { m_timer.start(); });
    connect(&history, &TableHistory::unsavedChanged, this, [this](bool unsaved) {
        if (!unsaved) {
            m_timer.stop();
            DropFile();
        }
    });
}

void RecoveryKeeper::WriteNow()
{
    if (m_timer.isActive()) {
        m_timer.stop();
        Write();
    }
}

void RecoveryKeeper::DropFile()
{
    // A file left behind only leads to a question at the next start whose
    // changes the table already holds, and that question is then skipped.
    static_cast<void>(RemoveRecoveryFile(m_path));
}

void RecoveryKeeper::Write()
{
    if (!m_history.Unsaved()) {
        DropFile();
        return;
    }
    const Status written =
        WriteRecoveryFile(m_path, m_ws.Table, m_history.Changes(), m_source().value_or(LastRead{}));
    if (written) {
        m_failureReported = false;
    } else if (!m_failureReported) {
        m_failureReported = true;
        m_messages.Show(RecoveryWriteFailureText(m_ws, m_path, written.error()),
                        MessageIcon::Exclamation);
    }
}

} // namespace qor
