// Working on the table in the tool list window as in a spreadsheet: the find
// box and sorting of the list, undo and redo of every change, moving, copying
// and swapping positions (commands and drag and drop), and the recovery file
// that keeps unsaved changes when the program ends without saving.
#include "change_texts.h"
#include "message_text.h"
#include "param_string.h"
#include "picture_view.h"
#include "qt_text.h"
#include "recovery_file.h"
#include "recovery_keeper.h"
#include "table_history.h"
#include "tool_editor_link.h"
#include "tool_list_model.h"
#include "tool_list_proxy.h"
#include "tool_list_window.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QUndoStack>

namespace qor {

void ToolListWindow::BuildTableWork()
{
    m_history = new TableHistory(m_ws, this);
    m_recovery = new RecoveryKeeper(m_ws, *m_history, m_messages, [this] {
        // Before anything was read, the changes belong to the named file.
        return m_commands.LastFile().value_or(LastRead{FileName(), {}, false});
    });
    m_recovery->setParent(this);

    m_proxy = new ToolListProxy(this);
    m_proxy->setSourceModel(m_model);
    m_proxy->SetRows(&m_contents.Rows);
    m_listV1->setModel(m_proxy);
    m_listV1->horizontalHeader()->setSectionsClickable(true);
    m_listV1->setDragEnabled(true);
    m_listV1->viewport()->setAcceptDrops(true);
    m_listV1->setDropIndicatorShown(true);
    m_listV1->setDragDropMode(QAbstractItemView::DragDrop);
    m_listV1->setDragDropOverwriteMode(true);
    m_listV1->setDefaultDropAction(Qt::MoveAction);
    m_listV1->setContextMenuPolicy(Qt::CustomContextMenu);

    m_findLabel = new QLabel(this);
    m_findLabel->setObjectName("FindLabel");
    m_find = new QLineEdit(this);
    m_find->setObjectName("FindBox");
    m_find->setClearButtonEnabled(true);
    m_findLabel->setBuddy(m_find);
    m_find->installEventFilter(this);

    // The actions name the change ("Undo Move tool 3 to 7"); the buttons
    // keep their short caption and name it in their tooltip.
    QUndoStack &stack = m_history->Stack();
    m_undo = stack.createUndoAction(this, Qs(m_ws.Text("frmList", "Text42")));
    m_undo->setObjectName("UndoAction");
    m_undo->setShortcuts(QKeySequence::Undo);
    m_redo = stack.createRedoAction(this, Qs(m_ws.Text("frmList", "Text43")));
    m_redo->setObjectName("RedoAction");
    m_redo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    for (QAction *action : {m_undo, m_redo}) {
        action->setShortcutContext(Qt::WindowShortcut);
        addAction(action);
    }
    m_undoButton = new QToolButton(this);
    m_undoButton->setObjectName("UndoButton");
    m_redoButton = new QToolButton(this);
    m_redoButton->setObjectName("RedoButton");
    for (QToolButton *button : {m_undoButton, m_redoButton}) {
        button->setEnabled(false);
        button->setFocusPolicy(Qt::TabFocus);
    }

    auto listAction = [this](const char *name, QKeySequence key) {
        auto *action = new QAction(this);
        action->setObjectName(name);
        action->setShortcut(key);
        // Only while the list has the focus: the text boxes keep their own
        // cut, copy and paste.
        action->setShortcutContext(Qt::WidgetShortcut);
        m_listV1->addAction(action);
        return action;
    };
    m_cut = listAction("CutAction", QKeySequence::Cut);
    m_copy = listAction("CopyAction", QKeySequence::Copy);
    m_paste = listAction("PasteAction", QKeySequence::Paste);
    m_swap = listAction("SwapAction", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V));
}

void ToolListWindow::ConnectTableWork()
{
    QUndoStack &stack = m_history->Stack();
    connect(m_undoButton, &QToolButton::clicked, m_undo, &QAction::trigger);
    connect(m_redoButton, &QToolButton::clicked, m_redo, &QAction::trigger);
    connect(&stack, &QUndoStack::canUndoChanged, m_undoButton, &QWidget::setEnabled);
    connect(&stack, &QUndoStack::canRedoChanged, m_redoButton, &QWidget::setEnabled);
    connect(m_undo, &QAction::changed, this, [this] { m_undoButton->setToolTip(m_undo->text()); });
    connect(m_redo, &QAction::changed, this, [this] { m_redoButton->setToolTip(m_redo->text()); });
    connect(m_history, &TableHistory::applied, this, &ToolListWindow::OnTableChanged);
    connect(m_history, &TableHistory::unsavedChanged, this, &QWidget::setWindowModified);
    connect(m_find, &QLineEdit::textChanged, this, &ToolListWindow::OnFindEdited);
    connect(m_listV1->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &ToolListWindow::OnHeaderClicked);
    connect(m_listV1, &QWidget::customContextMenuRequested, this, &ToolListWindow::ShowContextMenu);
    connect(m_model, &ToolListModel::dropRequested, this, &ToolListWindow::MoveOrCopy);
    connect(m_cut, &QAction::triggered, this, [this] { Mark(true); });
    connect(m_copy, &QAction::triggered, this, [this] { Mark(false); });
    connect(m_paste, &QAction::triggered, this, &ToolListWindow::OnPaste);
    connect(m_swap, &QAction::triggered, this, &ToolListWindow::OnSwapWithMarked);
}

int ToolListWindow::RowOf(const QModelIndex &viewIndex) const
{
    return viewIndex.isValid() ? m_proxy->mapToSource(viewIndex).row() : -1;
}

QModelIndex ToolListWindow::ViewIndexOf(int row) const
{
    return m_proxy->mapFromSource(m_model->index(row, 0));
}

// Undo and redo

void ToolListWindow::OnTableChanged(const TableChange &change, ChangeDirection direction)
{
    const int focus = FocusAfter(change, direction);
    // A change of the file-level arbor or the initial magazine leaves an
    // editor open on the default arbor where it is.
    m_editorFollows = !change.Slots.empty();
    FillToolList(focus >= 0 ? focus : SelectedRow());
    m_editorFollows = true;
    if (change.Arbor && m_arborPicture) {
        m_view->Redraw();
    }
}

// Finding and sorting

void ToolListWindow::OnFindEdited(const QString &text)
{
    const int selected = SelectedRow();
    m_proxy->SetQuery(text);
    // The selected tool stays selected while it matches.
    const QModelIndex index = ViewIndexOf(selected);
    if (index.isValid()) {
        m_listV1->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                               QItemSelectionModel::Rows);
        m_listV1->scrollTo(index, QAbstractItemView::EnsureVisible);
    }
}

void ToolListWindow::OnHeaderClicked(int column)
{
    m_proxy->CycleSort(column);
    QHeaderView *header = m_listV1->horizontalHeader();
    header->setSortIndicatorShown(m_proxy->sortColumn() >= 0);
    if (m_proxy->sortColumn() >= 0) {
        header->setSortIndicator(m_proxy->sortColumn(), m_proxy->sortOrder());
    }
    ShowSelection();
}

// Move, copy and swap

void ToolListWindow::Mark(bool cut)
{
    const int row = SelectedRow();
    if (row < 0 || !m_contents.Rows.HasTool(row)) {
        m_messages.Beep();
        return;
    }
    m_marked = row;
    m_markedCut = cut;
    m_model->SetMarkedRow(row, m_listV1->font());
    UpdateTableActions();
}

void ToolListWindow::OnPaste()
{
    const int to = SelectedRow();
    if (m_marked < 0 || to < 0 || to == m_marked) {
        m_messages.Beep();
        return;
    }
    const int from = m_marked;
    if (m_markedCut) { // a cut tool is pasted once
        m_marked = -1;
        m_model->SetMarkedRow(-1, m_listV1->font());
    }
    MoveOrCopy(from, to, !m_markedCut);
    UpdateTableActions();
}

void ToolListWindow::OnSwapWithMarked()
{
    const int to = SelectedRow();
    const std::optional<TableChange> change =
        m_marked >= 0 && to >= 0 ? MakeSwap(m_ws.Table, m_marked, to) : std::nullopt;
    if (!change) {
        m_messages.Beep();
        return;
    }
    m_marked = -1;
    m_model->SetMarkedRow(-1, m_listV1->font());
    m_history->Push(*change);
    UpdateTableActions();
}

void ToolListWindow::MoveOrCopy(int from, int to, bool copy)
{
    OccupiedTarget occupied = OccupiedTarget::Replace;
    if (TargetNeedsQuestion(m_ws.Table, from, to)) {
        const auto answers = TargetAnswerTexts(m_ws);
        const std::size_t answer = m_messages.Choose(
            TargetQuestionText(m_ws, copy ? ChangeKind::Copy : ChangeKind::Move, from, to),
            {answers.begin(), answers.end()});
        if (answer >= 2) {
            return; // cancelled
        }
        occupied = answer == 0 ? OccupiedTarget::Swap : OccupiedTarget::Replace;
    }
    const std::optional<TableChange> change =
        copy ? MakeCopy(m_ws.Table, from, to, occupied) : MakeMove(m_ws.Table, from, to, occupied);
    if (change) {
        m_history->Push(*change);
    }
}

void ToolListWindow::UpdateTableActions()
{
    const int row = SelectedRow();
    const bool tool = row >= 0 && m_contents.Rows.HasTool(row);
    m_cut->setEnabled(tool);
    m_copy->setEnabled(tool);
    m_paste->setEnabled(m_marked >= 0 && row >= 0 && row != m_marked);
    m_swap->setEnabled(m_marked >= 0 && row >= 0 && row != m_marked);
}

void ToolListWindow::ShowContextMenu(const QPoint &at)
{
    UpdateTableActions();
    QMenu menu(this);
    auto command = [this, &menu](Command which, const QKeySequence &key) {
        QAction *action =
            menu.addAction(m_command[which]->text(), m_command[which], &QPushButton::click);
        action->setShortcut(key); // shown only: the list's keys run them
        action->setEnabled(m_command[which]->isEnabled());
    };
    command(Edit, QKeySequence(Qt::Key_Return));
    command(NewTool, QKeySequence(Qt::Key_Insert));
    command(Delete, QKeySequence(Qt::Key_Delete));
    menu.addSeparator();
    menu.addActions({m_cut, m_copy, m_paste, m_swap});
    menu.addSeparator();
    menu.addActions({m_undo, m_redo});
    menu.exec(m_listV1->viewport()->mapToGlobal(at));
}

// The recovery file

void ToolListWindow::OfferRecovery()
{
    const auto read = ReadRecoveryFile(m_recovery->Path());
    if (!read) {
        m_messages.Show(ErrorText(m_ws.Catalogue, read.error()), MessageIcon::Exclamation);
        static_cast<void>(RemoveRecoveryFile(m_recovery->Path()));
        return;
    }
    if (!read.value()) {
        return; // the last run left nothing unsaved
    }
    const Recovery &recovery = *read.value();
    const std::string &source = recovery.Source.path;
    const bool otherFile = source != FileName();
    if (!MakeRestoreChange(m_ws.Table, recovery) && !otherFile) {
        static_cast<void>(RemoveRecoveryFile(m_recovery->Path()));
        return; // the table holds them already
    }
    if (m_messages.Show(RecoveryQuestionText(m_ws, recovery), MessageIcon::Question,
                        MessageButtons::YesNo) != MessageAnswer::Yes) {
        static_cast<void>(RemoveRecoveryFile(m_recovery->Path()));
        return;
    }
    if (otherFile) {
        // The changes belong to that file: it is read first, when it is
        // there, and saving writes them into it.
        ShowFileName(Qs(source));
        if (SourceState(recovery) != RecoverySourceState::Missing) {
            OnCommand2();
        }
    }
    if (const std::optional<TableChange> change = MakeRestoreChange(m_ws.Table, recovery)) {
        m_history->Push(*change);
    }
}

} // namespace qor
