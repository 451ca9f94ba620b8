#pragma once

#include "message_service.h"
#include "table_change.h"
#include "tool_list_commands.h"
#include "tool_list_rows.h"
#include "workspace.h"

#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QModelIndex;
class QPlainTextEdit;
class QPushButton;
class QAction;
class QPoint;
class QSplitter;
class QTableView;
class QToolButton;

namespace qor {

class InfoWindow;
class LeaveChecker;
class PictureSurface;
class PictureView;
class RecoveryKeeper;
class TableHistory;
class ToolEditorLink;
class ToolListModel;
class ToolListProxy;

// The main window: every magazine position of the tool table in a list, the
// tool list file and its commands, and the selected tool's picture and
// parameter summary. Closing it closes the program's other windows.
class ToolListWindow : public QWidget
{
    Q_OBJECT

public:
    // Asks for a file: title, filter (";;"-separated), start folder or file.
    // An empty result means the user cancelled.
    using FileChooser =
        std::function<QString(const QString &title, const QString &filter, const QString &start)>;

    // Builds the window and loads it: captions, fonts, the tool list file
    // from `commandLineFile` (or the settings) and, when "Auto Read" is set,
    // reads it at once; a missing default file is then passed over quietly.
    ToolListWindow(Workspace &workspace, MessageService &messages,
                   const QString &commandLineFile = {}, QWidget *parent = nullptr);
    ~ToolListWindow() override;

    // The editor that positions are handed to; null until one exists.
    void SetEditorLink(ToolEditorLink *editor) { m_editor = editor; }

    // What opens files in the text editor and what chooses files; tests
    // replace them.
    void SetProgramStarter(ProgramStarter starter);
    void SetFileChooser(FileChooser chooser) { m_chooseFile = std::move(chooser); }
    // What chooses the name of a file to write (CSV export, PDF).
    void SetSaveFileChooser(FileChooser chooser) { m_chooseSaveFile = std::move(chooser); }

    // The default new tool in a slot (the editor's NewB uses the table's).
    void NewDataSet(int slot);

    // Scrolls the list so that magazine number n is visible.
    void ShowMagazine(int magazineNumber);

    // The parameter summary of the current slot.
    std::string MakeParamString() const;

    // The undo history of the table, which the editor's stores join.
    TableHistory &History() { return *m_history; }

    // At start-up: when the last run ended with unsaved changes, says so and
    // offers to restore them.
    void OfferRecovery();

public slots:
    // For the editor after it stored a tool: rebuilds the rows and selects
    // the stored magazine number.
    void ShowStoredTool(int magazineNumber);

signals:
    void closed();

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Command1 .. Command9 by number, for the loops that name, caption and
    // connect them.
    enum Command
    {
        Browse,
        Read,
        Edit,
        Save,
        Close,
        NewTool,
        Delete,
        Help,
        About,
    };
    // Label1 .. Label5 by use; the others are spare.
    enum Label
    {
        FileLabel,   // Label1: Text12
        MagIniLabel, // Label2: Text13
        ArborLabel,  // Label3: Text14
        ParamLabel,  // Label4: Text15
        TitleLabel,  // Label5: the list title
    };

    // The form (tool_list_form.cpp).
    void BuildControls();
    void BuildLayout();
    void SetCaptions();
    void SetFonts();
    void SetColumnWidths();
    int ListWidth() const;
    void SetTabOrder();
    void Connect();

    // Working on the table (tool_list_table_work.cpp): the find box, sorting,
    // undo and redo, move, copy and swap, drag and drop, the recovery file.
    void BuildTableWork();
    void ConnectTableWork();
    void OnTableChanged(const TableChange &change, ChangeDirection direction);
    void OnFindEdited(const QString &text);
    void OnHeaderClicked(int column);
    void Mark(bool cut);
    void OnPaste();
    void OnSwapWithMarked();
    void MoveOrCopy(int from, int to, bool copy);
    void ShowContextMenu(const QPoint &at);
    void UpdateTableActions();
    // Rows of the model (magazine numbers - 1) and indexes of the view.
    int RowOf(const QModelIndex &viewIndex) const;
    QModelIndex ViewIndexOf(int row) const;

    // Documents made from the whole table (tool_list_documents.cpp): the
    // tool sheet printed or as PDF, CSV export and import, and the comparison
    // with a file on disk.
    void BuildDocumentCommands();
    void OnPrint();
    void OnSavePdf();
    void OnExportCsv();
    void OnImportCsv();
    void OnCompare();
    QString DocumentStart(const char *suffix) const;

    // The behaviour (tool_list_window.cpp).
    void FormLoad(const QString &commandLineFile);

    void OnCommand1();
    void OnCommand2();
    void OnCommand3();
    void OnCommand4();
    void OnCommand5();
    void OnCommand6();
    void OnCommand7();
    void OnCommand8();
    void OnCommand9();
    void OnArborEdit();
    void OnAutoReadClicked(bool checked);
    bool OnMagIniLeave();
    void OnCurrentRowChanged(const QModelIndex &current);
    void OnRowDoubleClicked(const QModelIndex &index);

    // Rebuilds the rows and, when the list has rows, selects `row`.
    void FillToolList(int row);
    void SelectRow(int row);
    // Scrolls the initial magazine and the selected row into view.
    void ShowSelection();
    int SelectedRow() const;
    void OpenEditor(int slot);
    void ShowParam();
    void DrawPicture(PictureSurface &surface);
    void ShowArborPicture(bool on);
    std::string FileName() const;
    // Puts a path that the program chose into the file name box, cleaned of
    // "." and ".." parts.
    void ShowFileName(const QString &path);

    Workspace &m_ws;
    MessageService &m_messages;
    ToolListCommands m_commands;
    ToolEditorLink *m_editor = nullptr;
    FileChooser m_chooseFile;
    FileChooser m_chooseSaveFile;
    ToolListContents m_contents;
    ToolListModel *m_model = nullptr;
    ToolListProxy *m_proxy = nullptr;
    TableHistory *m_history = nullptr;
    RecoveryKeeper *m_recovery = nullptr;
    int m_marked = -1; // the row Cut or Copy marked for Paste
    bool m_markedCut = false;
    bool m_editorFollows = true; // a new selection is handed to the editor
    LeaveChecker *m_checker = nullptr;
    bool m_arborPicture = false; // the picture shows the file-level arbor
    bool m_splitterPlaced = false;

    QTableView *m_listV1 = nullptr;
    QLineEdit *m_toolFileName = nullptr;
    QLineEdit *m_magIni = nullptr;
    QLineEdit *m_aArbType = nullptr;
    QLineEdit *m_selectedItem = nullptr;
    std::array<QLineEdit *, 3> m_text{};
    QCheckBox *m_autoRead = nullptr;
    QPushButton *m_aArbEditB = nullptr;
    std::array<QPushButton *, 9> m_command{}; // Command1 .. Command9
    QListWidget *m_list1 = nullptr;
    QLabel *m_findLabel = nullptr;
    QLineEdit *m_find = nullptr;
    QToolButton *m_undoButton = nullptr;
    QToolButton *m_redoButton = nullptr;
    QAction *m_undo = nullptr;
    QAction *m_redo = nullptr;
    QAction *m_cut = nullptr;
    QAction *m_copy = nullptr;
    QAction *m_paste = nullptr;
    QAction *m_swap = nullptr;
    QToolButton *m_tableButton = nullptr; // the menu of the document commands
    QAction *m_print = nullptr;
    QAction *m_savePdf = nullptr;
    QAction *m_exportCsv = nullptr;
    QAction *m_importCsv = nullptr;
    QAction *m_compare = nullptr;
    QPlainTextEdit *m_param = nullptr;
    PictureView *m_view = nullptr;
    QSplitter *m_splitter = nullptr;
    std::array<QLabel *, 13> m_label{}; // Label1 .. Label13
    QPointer<InfoWindow> m_info;
};

} // namespace qor
