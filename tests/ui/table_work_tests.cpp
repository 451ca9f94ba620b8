// Working on the table in the list window: move, copy and swap by command and
// by drag and drop, undo and redo of each, the find box and sorting, the
// unsaved marker and the recovery file across a killed process.
#include "recovery_file.h"
#include "table_change.h"
#include "table_compare.h"
#include "table_history.h"
#include "tool_list_window.h"
#include "window_fixture.h"

#include <QAbstractItemModel>
#include <QHeaderView>
#include <QMimeData>
#include <QProcess>
#include <QTableView>
#include <QTest>
#include <QUndoStack>
#include <filesystem>
#include <functional>
#include <memory>

namespace qor::test {
namespace {

constexpr const char *ThirtyPositions = "[Config]\r\nMagazine Max=30\r\n";

class TableWork : public StartedProgram
{
protected:
    void Open()
    {
        StartProgram(ThirtyPositions);
        window = std::make_unique<ToolListWindow>(
            ws, messages, QString::fromStdString(Sample("machining_centre.TTL")));
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        list = Find<QTableView>(*window, "ListV1");
        list->setFocus();
        window->SetEditorLink(&editor);
    }

    // Selects the row of magazine number `magazine` in the view.
    void Select(int magazine)
    {
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            if (list->model()->index(row, 0).data().toString().trimmed().toInt() == magazine) {
                list->setCurrentIndex(list->model()->index(row, 0));
                return;
            }
        }
        ADD_FAILURE() << "magazine " << magazine << " is not shown";
    }

    void Keys(QKeySequence keys)
    {
        QTest::keySequence(list, keys);
        QCoreApplication::processEvents(); // a queued drop
    }

    // Drops the row of magazine `from` onto magazine `to`: what the view
    // hands its model at the end of a drag (a real drag runs an event loop of
    // the platform's that offscreen tests cannot drive).
    void Drop(int from, int to, Qt::DropAction action)
    {
        Select(from);
        QAbstractItemModel *model = list->model();
        std::unique_ptr<QMimeData> data(model->mimeData({list->currentIndex()}));
        Select(to);
        ASSERT_TRUE(model->canDropMimeData(data.get(), action, -1, -1, list->currentIndex()));
        EXPECT_FALSE(model->dropMimeData(data.get(), action, -1, -1, list->currentIndex()));
        QCoreApplication::processEvents();
    }

    QString Kind(int magazine) const
    {
        return list->model()->index(magazine - 1, 1).data().toString();
    }

    std::unique_ptr<ToolListWindow> window;
    QTableView *list = nullptr;
    RecordingEditor editor;
};

TEST_F(TableWork, EveryOperationIsUndoneAndRedoneFieldByField)
{
    Open();
    const auto choose = [this](std::size_t answer) { messages.chosen.push_back(answer); };
    struct Step
    {
        const char *name;
        std::function<void()> run;
    };
    // The sample: 1..4 CUT, 5 empty, 6 and 7 BAL, 8 TAP, 9 and 10 FLA, 11 empty.
    const std::vector<Step> steps = {
        {"delete", [&] { Select(2), Keys(Qt::Key_Delete); }},
        {"cut and paste onto a free position",
         [&] { Select(1), Keys(QKeySequence::Cut), Select(5), Keys(QKeySequence::Paste); }},
        {"copy onto a tool, replace",
         [&] {
             choose(1), Select(3), Keys(QKeySequence::Copy), Select(4), Keys(QKeySequence::Paste);
         }},
        {"swap with the marked position",
         [&] {
             Select(9), Keys(QKeySequence::Copy), Select(10),
                 Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_V);
         }},
        {"drag onto a free position", [&] { Drop(6, 11, Qt::MoveAction); }},
        {"Ctrl+drag onto a tool, swap", [&] { choose(0), Drop(7, 8, Qt::CopyAction); }},
        {"move onto a tool, cancelled", [&] { choose(2), Drop(3, 4, Qt::MoveAction); }},
        {"new tool", [&] { Keys(Qt::Key_Insert); }},
        {"default arbor",
         [&] {
             editor.calls.clear();
             window->History().Push(*MakeFileArborChange(ws.Table, {2, ws.Table.DefaultArbor}));
             // an editor open on the default arbor stays there
             EXPECT_EQ(editor.calls, std::vector<std::string>{});
         }},
    };
    std::vector<ToolTable> before;
    for (const Step &step : steps) {
        SCOPED_TRACE(step.name);
        before.push_back(ws.Table);
        step.run();
    }
    EXPECT_EQ(Kind(5), "CUT"); // cut from 1 and pasted
    EXPECT_EQ(Kind(11), "BAL");
    EXPECT_EQ(window->History().Stack().count(), 8); // the cancelled move made none
    EXPECT_TRUE(window->isWindowModified());
    const ToolTable after = ws.Table;

    for (int i = static_cast<int>(steps.size()) - 1; i >= 0; --i) {
        SCOPED_TRACE(steps[static_cast<std::size_t>(i)].name);
        if (i != 6) { // the cancelled move is not on the history
            Keys(QKeySequence::Undo);
        }
        EXPECT_EQ(TableDifferences(ws.Table, before[static_cast<std::size_t>(i)]), "");
    }
    EXPECT_FALSE(window->isWindowModified()); // back to the file as read
    for (int i = 0; i < 8; ++i) {
        Keys(Qt::CTRL | Qt::Key_Y);
    }
    EXPECT_EQ(TableDifferences(ws.Table, after), "");
    EXPECT_EQ(Kind(11), "BAL"); // the list shows the table again
}

TEST_F(TableWork, TheFindBoxAndTheHeaderOnlyChangeWhatIsShown)
{
    Open();
    auto *find = Find<QLineEdit>(*window, "FindBox");
    auto shown = [this] {
        QStringList magazines;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            magazines << list->model()->index(row, 0).data().toString().trimmed();
        }
        return magazines.join(' ');
    };
    Select(6);
    const std::string all = shown().toStdString();
    const struct
    {
        const char *typed;
        const char *shown;
    } queries[] = {
        {"D<10", "2 3 6 7 14"}, {"d>=6 r=3", "6 15 17"}, {"BAL", "6 7 8"},
        {"ball 2", "6 7"},      {"0,5", "1 8"},          {"D<", all.c_str()},
    };
    for (const auto &query : queries) {
        SCOPED_TRACE(query.typed);
        find->setText(query.typed);
        EXPECT_EQ(shown(), query.shown);
    }
    Select(6);
    find->setText("BAL");
    EXPECT_EQ(list->currentIndex().data().toString().trimmed(), "6"); // still selected
    Keys(Qt::Key_Delete);                                             // on the filtered view
    EXPECT_EQ(ws.Table.Slots[5].HasTool(), false);
    QTest::keyClick(find, Qt::Key_Escape);
    EXPECT_EQ(find->text(), "");
    EXPECT_EQ(list->model()->rowCount(), 30);

    QHeaderView *header = list->horizontalHeader();
    const int diameter = static_cast<int>(ListColumn::ToolDia);
    const auto first = [this] { return list->model()->index(0, 0).data().toString().trimmed(); };
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(diameter) + 5, 5));
    EXPECT_EQ(first(), "7"); // D2, the smallest
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(diameter) + 5, 5));
    EXPECT_EQ(first(), "20"); // D25, the largest
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(diameter) + 5, 5));
    EXPECT_EQ(first(), "1"); // magazine order again
    EXPECT_EQ(TableDifferences(ws.Table, ws.Table), "");
}

// The child half of the test below: deletes position 2, waits until the
// recovery file holds that, and waits to be killed.
TEST(RecoveryChild, DeletesATool)
{
    const QByteArray folder = qgetenv("QOR_RECOVERY_CHILD");
    if (folder.isEmpty()) {
        GTEST_SKIP() << "the child of TableWork.UnsavedChangesSurviveAKilledProcess";
    }
    Workspace ws;
    RecordingMessageService messages;
    ASSERT_EQ(RunStartup(ws, folder.toStdString(), messages), 0);
    ToolListWindow window(ws, messages, QString::fromUtf8(folder) + "Atc.ttl");
    window.History().Push(*MakeDelete(ws.Table, 1));
    QTest::qWait(60000);
}

TEST_F(TableWork, UnsavedChangesSurviveAKilledProcess)
{
    StartProgram(ThirtyPositions);
    app.write("Atc.ttl", SourceFile("data/samples/machining_centre.TTL"));
    const std::string recovery = RecoveryFilePath(ws.Globals.IniPath);

    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QOR_RECOVERY_CHILD", QString::fromStdString(app.path()));
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=RecoveryChild.*"});
    ASSERT_TRUE(child.waitForStarted());
    ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(recovery); }, 20000));
    child.kill();
    child.waitForFinished();

    // The next start names the file and restores on Yes, as unsaved changes.
    auto start = [this] {
        ws = Workspace();
        EXPECT_EQ(RunStartup(ws, app.path(), messages), 0);
        messages.shown.clear();
        return std::make_unique<ToolListWindow>(ws, messages,
                                                QString::fromStdString(app.file("Atc.ttl")));
    };
    ASSERT_TRUE(std::filesystem::exists(recovery));
    auto window = start();
    EXPECT_TRUE(std::filesystem::exists(recovery));
    EXPECT_TRUE(ws.Table.Slots[1].HasTool());
    messages.answers = {MessageAnswer::Yes};
    window->OfferRecovery();
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_NE(messages.shown[0].text.find("Atc.ttl"), std::string::npos);
    EXPECT_FALSE(ws.Table.Slots[1].HasTool());
    EXPECT_TRUE(window->isWindowModified());
    window->close(); // closing without saving keeps them again
    EXPECT_TRUE(std::filesystem::exists(recovery));

    // No discards them, and the start after that asks nothing.
    window = start();
    messages.answers = {MessageAnswer::No};
    window->OfferRecovery();
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_TRUE(ws.Table.Slots[1].HasTool());
    EXPECT_FALSE(std::filesystem::exists(recovery));
    window = start();
    window->OfferRecovery();
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
} // namespace qor::test
