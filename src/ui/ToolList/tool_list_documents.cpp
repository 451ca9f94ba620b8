// Documents made from the whole table in the tool list window: the tool sheet
// (print preview and printer, or a PDF file), the table as CSV for
// spreadsheets and back, and the comparison of the table with a file on disk.
// Each works on the table as the list shows it; only an import changes it,
// as one change on the undo history, like any other.
#include "atomic_file.h"
#include "message_text.h"
#include "qt_text.h"
#include "table_change.h"
#include "table_diff.h"
#include "table_history.h"
#include "text_report_dialog.h"
#include "tool_list_reader.h"
#include "tool_list_window.h"
#include "tool_sheet.h"
#include "tool_sheet_painter.h"
#include "tool_table_csv.h"

#include <QAction>
#include <QFileInfo>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QToolButton>

namespace qor {

namespace {

// A spreadsheet file is small; anything larger is not one of ours.
constexpr std::uintmax_t CsvSizeLimit = 256u * 1024 * 1024;

// Letter where the user's locale measures in inches, else A4.
PaperSize LocalPaper()
{
    return QLocale().measurementSystem() == QLocale::ImperialUSSystem ? PaperSize::Letter
                                                                      : PaperSize::A4;
}

} // namespace

void ToolListWindow::BuildDocumentCommands()
{
    m_tableButton = new QToolButton(this);
    m_tableButton->setObjectName("TableButton");
    m_tableButton->setPopupMode(QToolButton::InstantPopup);
    m_tableButton->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_tableButton->setFocusPolicy(Qt::StrongFocus);
    auto *menu = new QMenu(m_tableButton);
    menu->setObjectName("TableMenu");
    m_tableButton->setMenu(menu);

    auto command = [this, menu](const char *name, void (ToolListWindow::*handler)()) {
        auto *action = menu->addAction(QString());
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, handler);
        return action;
    };
    m_print = command("PrintAction", &ToolListWindow::OnPrint);
    m_savePdf = command("SavePdfAction", &ToolListWindow::OnSavePdf);
    menu->addSeparator();
    m_exportCsv = command("ExportCsvAction", &ToolListWindow::OnExportCsv);
    m_importCsv = command("ImportCsvAction", &ToolListWindow::OnImportCsv);
    menu->addSeparator();
    m_compare = command("CompareAction", &ToolListWindow::OnCompare);

    // Ctrl+P prints from anywhere in the window, as in every other program.
    m_print->setShortcut(QKeySequence::Print);
    m_print->setShortcutContext(Qt::WindowShortcut);
    addAction(m_print);
}

QString ToolListWindow::DocumentStart(const char *suffix) const
{
    const QFileInfo file(Qs(FileName()));
    return file.path() + '/' + file.completeBaseName() + '.' + suffix;
}

void ToolListWindow::OnPrint()
{
    const ToolSheet sheet = MakeToolSheet(m_ws, FileName(), FileDateText(FileName()));
    QPrinter printer(QPrinter::HighResolution);
    SetUpSheetPage(printer, LocalPaper());
    QPrintPreviewDialog preview(&printer, this);
    preview.setObjectName("SheetPreview");
    preview.setWindowTitle(m_print->text().remove("..."));
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [this, &sheet](QPrinter *to) {
        QPainter painter(to);
        PaintToolSheet(painter, *to, m_ws, sheet);
    });
    preview.exec();
}

void ToolListWindow::OnSavePdf()
{
    const QString filter = Qs(m_ws.Text("MSG", "MSG38-2")) + " (*.pdf)";
    const QString path = m_chooseSaveFile(m_savePdf->text(), filter, DocumentStart("pdf"));
    if (path.isEmpty()) {
        return;
    }
    const Status written = WriteToolSheetPdf(m_ws, path.toStdString(), LocalPaper(), FileName(),
                                             FileDateText(FileName()));
    if (!written) {
        m_messages.Show(ErrorText(m_ws.Catalogue, written.error()), MessageIcon::Exclamation);
    }
}

void ToolListWindow::OnExportCsv()
{
    const QString filter = Qs(m_ws.Text("MSG", "MSG38-1")) + " (*.csv)";
    const QString path = m_chooseSaveFile(m_exportCsv->text(), filter, DocumentStart("csv"));
    if (path.isEmpty()) {
        return;
    }
    const Status written = WriteFileAtomically(
        path.toStdString(), FormatToolTableCsv(m_ws.Table, m_ws.Globals.CodePage));
    if (!written) {
        m_messages.Show(ErrorText(m_ws.Catalogue, written.error()), MessageIcon::Exclamation);
    }
}

void ToolListWindow::OnImportCsv()
{
    const QString filter =
        Qs(m_ws.Text("MSG", "MSG38-1")) + " (*.csv);;" + Qs(m_ws.Text("MSG", "MSG3")) + " (*)";
    const QString path = m_chooseFile(m_importCsv->text(), filter, DocumentStart("csv"));
    if (path.isEmpty()) {
        return;
    }
    const std::string file = path.toStdString();
    const Result<std::string> text = ReadWholeFile(file, CsvSizeLimit);
    if (!text) {
        m_messages.Show(ErrorText(m_ws.Catalogue, text.error()), MessageIcon::Exclamation);
        return;
    }
    CsvImportOptions options;
    options.magazineMax = m_ws.Table.MagazineMax;
    options.codePage = m_ws.Globals.CodePage;
    options.supportPenMax = m_ws.Globals.SupportPenMax;
    options.unchanged = &m_ws.Table; // a long name kept as it was is not refused
    const CsvImport imported = ParseToolTableCsv(text.value(), options);
    if (!imported.ok()) {
        m_messages.Show(MessageText(m_ws.Catalogue, "MSG38-3", {file}) + "\n\n" +
                            CsvRefusalText(m_ws.Catalogue, *imported.Refusal),
                        MessageIcon::Exclamation);
        return;
    }
    if (const std::optional<TableChange> change =
            MakeTableReplacement(m_ws.Table, imported.Table)) {
        m_history->Push(*change);
    }
}

void ToolListWindow::OnCompare()
{
    const QString filter =
        Qs(m_ws.Text("MSG", "MSG2")) + " (*.TTL *.ttl);;" + Qs(m_ws.Text("MSG", "MSG3")) + " (*)";
    const QString path = m_chooseFile(m_compare->text(), filter, Qs(FileName()));
    if (path.isEmpty()) {
        return;
    }
    const std::string file = path.toStdString();
    ToolTable other;
    SizeToolTable(other, m_ws.Table.MagazineMax);
    other.KindNames = m_ws.Table.KindNames;
    const ReadResult read = ReadToolListFile(other, file);
    if (read.outcome != ReadOutcome::Read) {
        // A table read only up to a faulty line would show false differences.
        std::string reason = ErrorText(m_ws.Catalogue, read.error);
        if (read.outcome == ReadOutcome::FormatError && read.error.line > 0) {
            reason =
                MessageText(m_ws.Catalogue, "MSG30-12", {std::to_string(read.error.line), reason});
        }
        m_messages.Show(file + "\n\n" + reason, MessageIcon::Exclamation);
        return;
    }
    const std::vector<PositionDiff> diffs =
        DiffToolTables(m_ws.Table, other, m_ws.Globals.CodePage);
    const QString text = diffs.empty() ? Qs(m_ws.Text("MSG", "MSG38-6"))
                                       : Qs(file + "\n" + m_ws.Text("MSG", "MSG38-5") + "\n\n" +
                                            FormatTableDiff(diffs, DiffWordsOf(m_ws.Catalogue)));
    auto *report = new TextReportDialog(Qs(MessageText(m_ws.Catalogue, "MSG38-4", {file})), text,
                                        Qs(m_ws.Text("MSG", "MSG38-7")), this);
    report->show();
}

} // namespace qor
