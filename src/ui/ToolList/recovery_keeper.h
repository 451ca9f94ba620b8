#pragma once

#include "file_stamp.h"

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

namespace qor {

class MessageService;
class TableHistory;
struct Workspace;

// Keeps the table's unsaved changes in the recovery file beside the settings
// file: a short while after the last change (so that typing never waits for
// the disk), and at once when the program closes. The file goes when the
// table matches its tool list file again. A file that cannot be written is
// reported once, not on every change.
class RecoveryKeeper final : public QObject
{
    Q_OBJECT

public:
    // `source` gives the tool list file the table was read from or saved to.
    RecoveryKeeper(Workspace &workspace, TableHistory &history, MessageService &messages,
                   std::function<std::optional<LastRead>()> source, QObject *parent = nullptr);

    const std::string &Path() const { return m_path; }

    // Writes what is pending now (the program is closing).
    void WriteNow();

    // The delay between the last change and the write.
    static constexpr int DelayMs = 2000;

private:
    void Write();
    void DropFile();

    Workspace &m_ws;
    TableHistory &m_history;
    MessageService &m_messages;
    std::function<std::optional<LastRead>()> m_source;
    std::string m_path;
    QTimer m_timer;
    bool m_failureReported = false;
};

} // namespace qor
