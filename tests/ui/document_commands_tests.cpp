// The list window's table menu: the table to CSV and back (an import is one
// undoable change, a refused one changes nothing), the comparison with a file
// on disk, and the tool sheet as PDF.
#include "message_text.h"
#include "table_change.h"
#include "table_compare.h"
#include "table_history.h"
#include "text_report_dialog.h"
#include "tool_list_window.h"
#include "window_fixture.h"

#include <QAction>
#include <QTest>
#include <QUndoStack>
#include <memory>

namespace qor::test {
namespace {

class DocumentCommands : public StartedProgram
{
protected:
    void SetUp() override
    {
        StartProgram("[Config]\r\nMagazine Max=30\r\n");
        sample = Sample("machining_centre.TTL");
        window = std::make_unique<ToolListWindow>(ws, messages, QString::fromStdString(sample));
        window->SetFileChooser([this](const QString &, const QString &, const QString &) {
            return QString::fromStdString(chosen);
        });
        window->SetSaveFileChooser([this](const QString &, const QString &, const QString &) {
            return QString::fromStdString(chosen);
        });
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        read = ws.Table;
    }

    void Run(const char *action, const std::string &file)
    {
        chosen = file;
        Find<QAction>(*window, action)->trigger();
        QCoreApplication::processEvents();
    }

    int HistoryCount() { return window->History().Stack().count(); }

    std::string sample;
    std::string chosen;
    ToolTable read;
    std::unique_ptr<ToolListWindow> window;
};

TEST_F(DocumentCommands, ImportIsOneUndoableChangeAndARefusedFileChangesNothing)
{
    const std::string csv = files.file("table.csv");
    Run("ExportCsvAction", csv);
    const std::string exported = files.read("table.csv");
    ASSERT_EQ(exported.rfind("\xEF\xBB\xBFMagazine,", 0), 0u);

    window->History().Push(*MakeDelete(ws.Table, 0));
    window->History().Push(*MakeMove(ws.Table, 5, 20));
    const ToolTable edited = ws.Table;
    Run("ImportCsvAction", csv);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(TableDifferences(ws.Table, read), "");
    EXPECT_EQ(HistoryCount(), 3);
    window->History().Stack().undo();
    EXPECT_EQ(TableDifferences(ws.Table, edited), "");
    window->History().Stack().redo();

    // A kind no tool has in the first tool's row (row 3: the header, the file
    // row, then the tools).
    std::string broken = exported;
    const std::size_t kind = broken.find(",CUT,");
    ASSERT_NE(kind, std::string::npos);
    broken.replace(kind, 5, ",XYZ,");
    files.write("broken.csv", broken);
    const ToolTable before = ws.Table;
    Run("ImportCsvAction", files.file("broken.csv"));
    const auto shown = TakeMessage();
    EXPECT_NE(shown.text.find(MessageText(ws.Catalogue, "MSG38-3", {files.file("broken.csv")})),
              std::string::npos)
        << shown.text;
    EXPECT_NE(shown.text.find("3"), std::string::npos) << "names the row: " << shown.text;
    EXPECT_NE(shown.text.find("Kind"), std::string::npos) << "and the column: " << shown.text;
    EXPECT_EQ(TableDifferences(ws.Table, before), "");
    EXPECT_EQ(HistoryCount(), 3);
}

TEST_F(DocumentCommands, CompareListsWhatReadingTheFileWouldChange)
{
    Run("CompareAction", sample);
    auto *report = window->findChild<TextReportDialog *>();
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(report->Text(), QString::fromStdString(Msg("MSG38-6")));
    report->close();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    window->History().Push(*MakeDelete(ws.Table, 1));
    Run("CompareAction", sample);
    report = window->findChild<TextReportDialog *>();
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->Text().contains("MAGAZINE02:")) << report->Text().toStdString();
    EXPECT_TRUE(messages.shown.empty());

    Run("CompareAction", files.file("missing.TTL"));
    EXPECT_EQ(TakeMessage().icon, MessageIcon::Exclamation);
}

TEST_F(DocumentCommands, SaveAsPdfWritesTheSheetOrSaysWhyNot)
{
    Run("SavePdfAction", files.file("sheet.pdf"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(files.read("sheet.pdf").rfind("%PDF", 0), 0u);

    Run("SavePdfAction", files.file("no such folder/sheet.pdf"));
    EXPECT_EQ(TakeMessage().icon, MessageIcon::Exclamation);
}

} // namespace
} // namespace qor::test
