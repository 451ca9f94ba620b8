#pragma once

#include "table_change.h"
#include "unsaved_changes.h"

#include <QObject>
#include <QUndoStack>

namespace qor {

struct Workspace;

// The undo history of the tool table, shared by the list and the editor.
// Every change to the table goes through Push; undoing or redoing one puts
// back only the positions it touched. The stack's clean state is the table
// as the file holds it: a read or a save makes it clean.
class TableHistory final : public QObject
{
    Q_OBJECT

public:
    explicit TableHistory(Workspace &workspace, QObject *parent = nullptr);
    ~TableHistory() override;

    QUndoStack &Stack() { return m_stack; }

    // Makes the change in the table (a change the caller already made there
    // is made again without effect) and puts it on the history, named in the
    // catalogue's words. An empty change is dropped.
    void Push(const TableChange &change);

    // The editor was cancelled on a position that the list's New tool or Edit
    // command had filled: when that command is the last one on the history,
    // it leaves it (redo cannot bring it back). The table is emptied by
    // CancelNewTool.
    void TakeBackNewTool(int slot);

    // The table was read: no history, nothing unsaved.
    void Clear();
    // The table was saved: nothing unsaved, the history stays.
    void MarkSaved();

    bool Unsaved() const { return !m_stack.isClean(); }
    // The positions (and file-level values) touched since the last read or
    // save, for the recovery file.
    const UnsavedChanges &Changes() const { return m_changes; }

signals:
    // The change was made, undone or redone in the table.
    void applied(const qor::TableChange &change, qor::ChangeDirection direction);
    void unsavedChanged(bool unsaved);

private:
    friend class TableChangeCommand;
    void Apply(const TableChange &change, ChangeDirection direction);

    Workspace &m_ws;
    QUndoStack m_stack;
    UnsavedChanges m_changes;
};

} // namespace qor
