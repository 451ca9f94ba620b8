#include "table_history.h"

#include "change_texts.h"
#include "workspace.h"

#include <QUndoCommand>

namespace qor {

// One table change on the undo stack.
class TableChangeCommand final : public QUndoCommand
{
public:
    TableChangeCommand(TableHistory &history, TableChange change, const QString &text)
        : QUndoCommand(text), m_history(history), m_change(std::move(change))
    {}

    const TableChange &Change() const { return m_change; }

    void redo() override { m_history.Apply(m_change, ChangeDirection::Redo); }
    void undo() override { m_history.Apply(m_change, ChangeDirection::Undo); }

private:
    TableHistory &m_history;
    TableChange m_change;
};

TableHistory::TableHistory(Workspace &workspace, QObject *parent) : QObject(parent), m_ws(workspace)
{
    connect(&m_stack, &QUndoStack::cleanChanged, this,
            [this](bool clean) { emit unsavedChanged(!clean); });
}

TableHistory::~TableHistory()
{
    // The stack empties itself as it goes, which is no return to the file's
    // state: unsaved changes must stay in the recovery file.
    m_stack.blockSignals(true);
}

void TableHistory::Push(const TableChange &change)
{
    if (change.Empty()) {
        return;
    }
    m_stack.push(
        new TableChangeCommand(*this, change, QString::fromStdString(ChangeText(m_ws, change))));
}

void TableHistory::TakeBackNewTool(int slot)
{
    if (m_stack.index() < 1) {
        return;
    }
    const auto *last =
        dynamic_cast<const TableChangeCommand *>(m_stack.command(m_stack.index() - 1));
    if (last == nullptr || last->Change().Kind != ChangeKind::NewTool ||
        ChangedSlots(last->Change()) != std::vector<int>{slot}) {
        return;
    }
    // An obsolete command is dropped from the stack when it is undone.
    const_cast<TableChangeCommand *>(last)->setObsolete(true);
    m_stack.undo();
}

void TableHistory::Clear()
{
    m_stack.clear();
    m_changes.Clear();
}

void TableHistory::MarkSaved()
{
    m_stack.setClean();
    m_changes.Clear();
}

void TableHistory::Apply(const TableChange &change, ChangeDirection direction)
{
    ApplyChange(m_ws.Table, change, direction);
    m_changes.Note(change);
    emit applied(change, direction);
}

} // namespace qor
