// The behaviour of the tool list window: loading, the commands, the list's
// rows and keys, and closing. The form is built in tool_list_form.cpp.
#include "tool_list_window.h"

#include "info_window.h"
#include "leave_checker.h"
#include "param_string.h"
#include "picture_view.h"
#include "qt_text.h"
#include "recovery_keeper.h"
#include "table_history.h"
#include "text_editor_starter.h"
#include "tool_editor_link.h"
#include "tool_list_model.h"
#include "tool_list_proxy.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTableView>

namespace qor {

ToolListWindow::ToolListWindow(Workspace &workspace, MessageService &messages,
                               const QString &commandLineFile, QWidget *parent)
    : QWidget(parent), m_ws(workspace), m_messages(messages),
      m_commands(workspace, messages, StartTextEditor)
{
    setObjectName("ToolList");
    // "[*]" shows a "*" after the name while the table has unsaved changes.
    setWindowTitle(QString("QORTool  ver_") + ProgramVersion + "[*]");
    BuildControls();
    BuildTableWork();
    BuildDocumentCommands();
    BuildLayout();
    SetCaptions();
    SetFonts();
    SetColumnWidths();
    SetTabOrder();
    Connect();
    ConnectTableWork();

    m_chooseFile = [this](const QString &title, const QString &filter, const QString &start) {
        QFileDialog dialog(this, title, start, filter);
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::AnyFile); // a new name is offered to be created
        dialog.setDefaultSuffix("TTL");
        return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()
                   ? dialog.selectedFiles().constFirst()
                   : QString();
    };
    m_chooseSaveFile = [this](const QString &title, const QString &filter, const QString &start) {
        return QFileDialog::getSaveFileName(this, title, start, filter);
    };

    FormLoad(commandLineFile);
}

ToolListWindow::~ToolListWindow() = default;

void ToolListWindow::SetProgramStarter(ProgramStarter starter)
{
    m_commands.SetProgramStarter(std::move(starter));
}

void ToolListWindow::FormLoad(const QString &commandLineFile)
{
    const std::string fileName = InitialToolFileName(
        commandLineFile.toStdString(), QDir::toNativeSeparators(QDir::currentPath()).toStdString(),
        m_ws.Settings);
    ShowFileName(Qs(fileName));
    m_autoRead->setChecked(m_ws.Settings.GetIniString("Files", "Auto Read", "1") == "1");
    m_command[Save]->setEnabled(false);
    m_aArbType->setText(Qs(m_ws.Text("String", "Str14")));
    if (m_autoRead->isChecked()) {
        m_ws.QuietDefaultRead = true;
        OnCommand2();
        m_ws.QuietDefaultRead = false;
    }
    // With a list to work on, the arrow keys and Enter go to it at once.
    if (m_model->rowCount() > 0) {
        m_listV1->setFocus(Qt::OtherFocusReason);
    } else {
        m_toolFileName->setFocus(Qt::OtherFocusReason);
    }
    if (const QScreen *screen = this->screen()) {
        const QSize room = screen->availableSize();
        resize(std::min(1180, room.width() - 40), std::min(760, room.height() - 60));
    } else {
        resize(1180, 760);
    }
    setMinimumSize(760, 480);
}

std::string ToolListWindow::FileName() const
{
    return m_toolFileName->text().trimmed().toStdString();
}

void ToolListWindow::ShowFileName(const QString &path)
{
    // Qt cleans with "/" on every platform; a Windows user reads "\".
    m_toolFileName->setText(QDir::toNativeSeparators(QDir::cleanPath(path)));
}

// Reading and saving

void ToolListWindow::OnCommand1()
{
    const QString filter =
        Qs(m_ws.Text("MSG", "MSG2")) + " (*.TTL *.ttl);;" + Qs(m_ws.Text("MSG", "MSG3")) + " (*)";
    const QString start = Qs(DirOfPath(FileName()));
    const QString chosen = m_chooseFile ? m_chooseFile(QString(), filter, start) : QString();
    if (!chosen.isEmpty()) {
        ShowFileName(chosen);
    }
}

void ToolListWindow::OnCommand2()
{
    if (m_commands.Read(FileName())) {
        m_history->Clear(); // the table is the file's
        m_marked = -1;
        m_model->SetMarkedRow(-1, m_listV1->font());
        m_listV1->scrollToTop(); // a new table: its first rows above the initial magazine
        FillToolList(m_ws.Table.CurrentSlot);
    }
}

void ToolListWindow::OnCommand4()
{
    if (!m_checker->CommitFocused()) {
        return;
    }
    if (!m_commands.Save(FileName(), m_magIni->text().toStdString(), m_autoRead->isChecked())) {
        return;
    }
    m_history->MarkSaved();
    if (m_editor != nullptr) {
        m_editor->HideEditor();
    }
}

void ToolListWindow::OnCommand5()
{
    close();
}

void ToolListWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_splitterPlaced) {
        // The list as wide as its columns, the picture and summary the rest.
        m_splitterPlaced = true;
        const int list = std::min(ListWidth(), m_splitter->width() - 240);
        m_splitter->setSizes({list, m_splitter->width() - list});
        // The rows were filled before the list had its height.
        m_listV1->scrollToTop();
        ShowSelection();
    }
}

void ToolListWindow::closeEvent(QCloseEvent *event)
{
    m_checker->DropPending();
    m_recovery->WriteNow(); // closing keeps unsaved changes for the next start
    m_commands.StoreFileSettings(FileName(), m_autoRead->isChecked());
    if (m_editor != nullptr) {
        m_editor->HideEditor();
    }
    if (m_info) {
        m_info->close();
    }
    event->accept();
    emit closed();
}

void ToolListWindow::OnAutoReadClicked(bool checked)
{
    m_commands.StoreAutoRead(checked);
}

bool ToolListWindow::OnMagIniLeave()
{
    const std::optional<TableChange> change =
        m_commands.MagIniChange(m_magIni->text().toStdString());
    if (!change) {
        return false;
    }
    m_history->Push(*change);
    return true;
}

// Positions

void ToolListWindow::OnCommand3()
{
    // An empty position receives the new tool, which shows in the list at
    // once; cancelling the editor takes it out again.
    const std::optional<TableChange> change = m_commands.EditChange(SelectedRow());
    if (!change) {
        return;
    }
    m_history->Push(*change);
    OpenEditor(change->Focus.After);
}

void ToolListWindow::OnCommand6()
{
    const std::optional<TableChange> change = m_commands.NewToolChange();
    if (!change) {
        return;
    }
    m_history->Push(*change);
    OpenEditor(change->Focus.After);
}

void ToolListWindow::OnCommand7()
{
    if (const std::optional<TableChange> change = m_commands.DeleteChange(SelectedRow())) {
        m_history->Push(*change);
    }
}

void ToolListWindow::NewDataSet(int slot)
{
    qor::NewDataSet(m_ws.Table, slot);
}

void ToolListWindow::OpenEditor(int slot)
{
    if (m_editor == nullptr) {
        return;
    }
    m_ws.Table.CurrentSlot = static_cast<std::int16_t>(slot);
    m_editor->SetMagazineNumber(std::to_string(slot + 1));
    m_editor->ShowEditor();
}

void ToolListWindow::ShowStoredTool(int magazineNumber)
{
    if (magazineNumber < 1) { // the file-level arbor was stored
        FillToolList(SelectedRow());
        return;
    }
    m_commands.StartAtFirstPosition();
    FillToolList(magazineNumber - 1);
}

void ToolListWindow::FillToolList(int row)
{
    if (m_model->Fill(m_ws, m_contents)) {
        m_magIni->setText(Qs(m_contents.MagIni));
        m_aArbType->setText(Qs(m_contents.DefaultArbor));
    }
    m_proxy->Refilter();
    const int rows = m_model->rowCount();
    m_command[Save]->setEnabled(rows > 0);
    if (rows == 0) {
        return;
    }
    SelectRow(std::clamp(row, 0, rows - 1));
    ShowSelection();
}

void ToolListWindow::SelectRow(int row)
{
    // A row that the find box hides is not selected.
    const QModelIndex index = ViewIndexOf(row);
    if (!index.isValid()) {
        m_listV1->selectionModel()->clear();
        return;
    }
    m_listV1->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                           QItemSelectionModel::Rows);
}

void ToolListWindow::ShowSelection()
{
    if (m_ws.Table.InitialMagazine >= 1) {
        ShowMagazine(m_ws.Table.InitialMagazine);
    }
    const QModelIndex current = m_listV1->currentIndex();
    if (current.isValid()) {
        m_listV1->scrollTo(current, QAbstractItemView::EnsureVisible);
    }
}

void ToolListWindow::ShowMagazine(int magazineNumber)
{
    const QModelIndex index = ViewIndexOf(magazineNumber - 1);
    if (index.isValid()) {
        // Scrolled only as far as needed: the rows above it stay in view
        // where they fit.
        m_listV1->scrollTo(index, QAbstractItemView::EnsureVisible);
    }
}

int ToolListWindow::SelectedRow() const
{
    const QModelIndexList rows = m_listV1->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : RowOf(rows.constFirst());
}

void ToolListWindow::OnCurrentRowChanged(const QModelIndex &current)
{
    UpdateTableActions();
    const int row = RowOf(current);
    if (row < 0 || !m_commands.Select(row)) {
        return;
    }
    ShowParam();
    if (m_editor != nullptr && m_editorFollows) {
        m_editor->SetMagazineNumber(std::to_string(row + 1));
    }
    ShowArborPicture(false);
}

void ToolListWindow::OnRowDoubleClicked(const QModelIndex &index)
{
    if (!index.isValid()) {
        return;
    }
    m_selectedItem->setText(Qs(m_contents.Rows.RowText(RowOf(index))));
    OnCommand3();
}

std::string ToolListWindow::MakeParamString() const
{
    return qor::MakeParamString(m_ws);
}

void ToolListWindow::ShowParam()
{
    QString text = Qs(MakeParamString());
    text.replace("\r\n", "\n");
    m_param->setPlainText(text);
}

// The file-level arbor

void ToolListWindow::OnArborEdit()
{
    m_ws.ArborEdit = true;
    ShowArborPicture(true);
    if (m_editor != nullptr) {
        m_editor->SetMagazineNumber("0");
        m_editor->ShowEditor();
    }
}

void ToolListWindow::ShowArborPicture(bool on)
{
    m_arborPicture = on;
    m_view->Redraw();
}

// Help and information

void ToolListWindow::OnCommand8()
{
    m_commands.OpenHelp();
}

void ToolListWindow::OnCommand9()
{
    if (!m_info) {
        m_info = new InfoWindow(m_ws, m_messages, this);
        m_info->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    m_info->show();
    m_info->raise();
    m_info->activateWindow();
}

bool ToolListWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_listV1 && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        // Home and End (with Ctrl or without) go to the first and last row
        // rather than along the columns of one tool.
        const bool homeOrEnd = key->key() == Qt::Key_Home || key->key() == Qt::Key_End;
        if (homeOrEnd && !(key->modifiers() & ~(Qt::KeypadModifier | Qt::ControlModifier))) {
            if (const int rows = m_proxy->rowCount(); rows > 0) {
                SelectRow(m_proxy->SourceRow(key->key() == Qt::Key_Home ? 0 : rows - 1));
                m_listV1->scrollTo(m_listV1->currentIndex());
            }
            return true;
        }
        if (key->modifiers() & ~Qt::KeypadModifier) {
            return false;
        }
        switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            OnCommand3();
            return true;
        case Qt::Key_Delete:
            OnCommand7();
            return true;
        case Qt::Key_Insert:
            OnCommand6();
            return true;
        default:
            return false;
        }
    }
    if (watched == m_find && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && !m_find->text().isEmpty()) {
        m_find->clear(); // every row again
        return true;
    }
    if (watched == m_aArbEditB) {
        if (event->type() == QEvent::FocusIn) {
            m_ws.ArborEdit = true;
            ShowArborPicture(true);
        } else if (event->type() == QEvent::FocusOut) {
            m_ws.ArborEdit = false;
            ShowArborPicture(false);
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace qor
