#include "editor_windows.h"
#include "profile_file.h"
#include "run_windows.h"
#include "tool_editor_window.h"
#include "tool_list_window.h"
#include "window_fixture.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>

namespace qor::test {
namespace {

constexpr const char *ThirtyPositions = "[Config]\r\nMagazine Max=30\r\n";

class ToolListUi : public StartedProgram
{
protected:
    void Open(std::string_view ini, const std::string &file = {})
    {
        StartProgram(ini);
        window = std::make_unique<ToolListWindow>(ws, messages, QString::fromStdString(file));
        window->SetEditorLink(&editor);
        window->SetProgramStarter([this](const std::string &program, const std::string &path) {
            started.push_back(program + " " + path);
            return true;
        });
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        list = Find<QTableView>(*window, "ListV1");
    }

    // Opens the window on the machining centre sample, read at start.
    void OpenSample() { Open(ThirtyPositions, Sample("machining_centre.TTL")); }

    QString CellText(int row, ListColumn column) const
    {
        return list->model()->index(row, static_cast<int>(column)).data().toString();
    }

    QPushButton &Button(const char *name) { return *Find<QPushButton>(*window, name); }
    QLineEdit &Box(const char *name) { return *Find<QLineEdit>(*window, name); }

    void Click(const char *button) { QTest::mouseClick(&Button(button), Qt::LeftButton); }

    std::string Param()
    {
        return Find<QPlainTextEdit>(*window, "Param")->toPlainText().toStdString();
    }

    void Activate()
    {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    // A double click is a click followed by the double-click event.
    void ClickRow(int row, bool twice = false)
    {
        const QModelIndex index = list->model()->index(row, 1);
        list->scrollTo(index);
        const QPoint centre = list->visualRect(index).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, centre);
        if (twice) {
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, centre);
        }
    }

    int SelectedRow() const
    {
        const QModelIndexList rows = list->selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.front().row() : -1;
    }

    std::string Setting(std::string_view section, std::string_view key) const
    {
        return ReadProfileEntry(ws.Globals.IniPath, section, key);
    }

    std::unique_ptr<ToolListWindow> window;
    QTableView *list = nullptr;
    RecordingEditor editor;
    std::vector<std::string> started;
};

TEST_F(ToolListUi, ReadsTheFileGivenOnTheCommandLineAndShowsItsTools)
{
    OpenSample();

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(window->windowTitle().remove("[*]"), "QORTool  ver_1.70");
    EXPECT_FALSE(window->isWindowModified()); // nothing unsaved after a read
    ASSERT_EQ(list->model()->rowCount(), 30);
    EXPECT_EQ(CellText(0, ListColumn::ToolKind), "CUT");
    EXPECT_EQ(CellText(17, ListColumn::ToolName), QString::fromUtf8("\u00D820 x 4 T-slot"));
    EXPECT_EQ(list->model()->index(0, 2).data(Qt::TextAlignmentRole).value<Qt::Alignment>() &
                  Qt::AlignRight,
              Qt::AlignRight);
    EXPECT_EQ(list->model()->headerData(4, Qt::Horizontal).toString(),
              QString::fromStdString(ws.Text("frmList", "Text25")));
    EXPECT_EQ(Box("MagIni").text(), "1");
    EXPECT_EQ(Box("aArbType").text(), QString::fromStdString(ws.Text("String", "Str11")));
    EXPECT_TRUE(Button("Command4").isEnabled());
    // The initial magazine's row is selected, with its summary.
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_EQ(Find<QPlainTextEdit>(*window, "Param")->toPlainText().toStdString(),
              "Tip ang:  0.0       Taper:    0.0\nFlute L:  22.0\nOverall:  75.0");
}

TEST_F(ToolListUi, CaptionsComeFromTheCatalogueAndFontsFromTheSettings)
{
    Open("[Config]\r\nBUTTON FONT SIZE=14\r\nBUTTON FONT BOLD=0\r\nLISTVIEW FONT SIZE=12\r\n"
         "TEXTBOX FONT SIZE=13\r\nCOLUMNHEADER FONT SIZE=7\r\n");

    for (int i = 1; i <= 9; ++i) {
        QPushButton &button = Button(qPrintable(QString("Command%1").arg(i)));
        EXPECT_EQ(button.text().toStdString(), ws.Text("frmList", "Text" + std::to_string(i)));
        EXPECT_TRUE(button.font().pointSize() == 14 && !button.font().bold()) << i;
    }
    EXPECT_EQ(Find<QLabel>(*window, "Label4")->text().toStdString(), ws.Text("frmList", "Text15"));
    EXPECT_EQ(list->font().pointSize(), 12);
    EXPECT_EQ(list->horizontalHeader()->font().pointSize(), 7);
    EXPECT_EQ(Box("ToolFileName").font().pointSize(), 13);
    EXPECT_EQ(Find<QPlainTextEdit>(*window, "Param")->font().pointSize(), 13);
}

TEST_F(ToolListUi, AFileInAMissingFolderIsReportedWithoutOfferingToCreateIt)
{
    OpenSample();
    const std::string missing = files.file("no folder/atc.TTL");
    Box("ToolFileName").setText(QString::fromStdString(missing));

    Click("Command2");

    const auto message = TakeMessage();
    EXPECT_EQ(message.text, Msg("MSG6") + Msg("MSG10") + "\n\n" + missing);
    EXPECT_EQ(message.buttons, MessageButtons::Ok);
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(CellText(0, ListColumn::ToolKind), "CUT");
}

TEST_F(ToolListUi, ChoosingARowShowsItAndHandsItToTheEditor)
{
    OpenSample();
    editor.calls.clear();

    ClickRow(5);

    EXPECT_EQ(ws.Table.CurrentSlot, 5);
    EXPECT_EQ(editor.calls, std::vector<std::string>{"MagNo 6"});
    EXPECT_EQ(Find<QPlainTextEdit>(*window, "Param")->toPlainText().toStdString(),
              "Tip ang:  0.0       Taper:    0.0\nFlute L:  20.0\n"
              "Overall:  70.0      Neck L:   28.0\nShank D:  6.0       Shoulder: 5.6");

    // The keyboard moves the selection the same way.
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(ws.Table.CurrentSlot, 6);
    EXPECT_EQ(editor.calls.back(), "MagNo 7");
}

TEST_F(ToolListUi, EditingOpensTheEditorAndGivesAnEmptyPositionTheNewTool)
{
    OpenSample();
    editor.calls.clear();

    ClickRow(4, true); // magazine 5 is empty

    EXPECT_EQ(Box("SelectedItem").text(), "     5");
    EXPECT_EQ(ws.Table.Slots[4].ToolKind, KindBal);
    EXPECT_EQ(CellText(4, ListColumn::ToolKind), "BAL");
    ASSERT_GE(editor.calls.size(), 2u);
    EXPECT_EQ(editor.calls[editor.calls.size() - 2], "MagNo 5");
    EXPECT_EQ(editor.calls.back(), "Show");

    editor.calls.clear();
    ClickRow(1);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(editor.calls, (std::vector<std::string>{"MagNo 2", "MagNo 2", "Show"}));
    EXPECT_TRUE(messages.shown.empty());
}

// Cancelling the editor takes the default new tool back out of the empty
// position that Edit or New tool gave it; a tool stored before stays.
TEST_F(ToolListUi, CancellingTheEditorEmptiesThePositionThatItsCommandFilled)
{
    OpenSample();                                    // magazine 5 is the first free position
    CreateEditorWindows(ws, window.get(), messages); // children of the list window
    auto *editor = Find<ToolEditorWindow>(*window, "ToolEditer");
    const auto click = [editor, this](const char *name) {
        QTest::mouseClick(Find<QPushButton>(*editor, name), Qt::LeftButton);
    };
    const struct
    {
        const char *name;
        std::function<void()> open;
        std::function<void()> leave;
        bool kept;
    } cases[] = {
        {"new tool, cancel", [this] { Click("Command6"); }, [&] { click("CanB"); }, false},
        {"edit, Escape",
         [this] {
             ClickRow(4);
             list->setFocus();
             QTest::keyClick(list, Qt::Key_Return);
         },
         [editor] { QTest::keyClick(editor, Qt::Key_Escape); }, false},
        {"new tool, store, cancel", [this] { Click("Command6"); },
         [&] {
             click("keepB");
             click("CanB");
         },
         true},
    };

    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        ClickRow(0);
        c.open();
        ASSERT_TRUE(editor->isVisible());
        ASSERT_EQ(ws.Table.CurrentSlot, 4);

        c.leave();

        EXPECT_FALSE(editor->isVisible());
        EXPECT_EQ(ws.Table.Slots[4].ToolKind, c.kept ? KindBal : KindNone);
        EXPECT_EQ(CellText(4, ListColumn::ToolKind), c.kept ? "BAL" : "");
        EXPECT_EQ(SelectedRow(), 4);
        EXPECT_EQ(Param().empty(), !c.kept);
    }
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ToolListUi, WithoutAFileEditAndDeleteAskForARowAndNewToolStartsTheList)
{
    Open(ThirtyPositions); // no file named: the default one, which is not there

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(Box("ToolFileName").text().toStdString(), DefaultToolListPath);
    EXPECT_EQ(list->model()->rowCount(), 0);
    EXPECT_FALSE(Button("Command4").isEnabled());

    Click("Command2");
    const auto message = TakeMessage();
    EXPECT_EQ(message.text.rfind(Msg("MSG6") + Msg("MSG10"), 0), 0u) << message.text;
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    Click("Command3");
    EXPECT_EQ(TakeMessage().text, Msg("MSG8"));
    Click("Command7");
    EXPECT_EQ(TakeMessage().text, Msg("MSG8"));
    EXPECT_TRUE(editor.calls.empty());

    Click("Command6");
    EXPECT_EQ(list->model()->rowCount(), 30);
    EXPECT_EQ(CellText(0, ListColumn::ToolKind), "BAL");
    EXPECT_EQ(Box("MagIni").text(), "1");
    EXPECT_EQ(editor.calls.back(), "Show");
}

TEST_F(ToolListUi, DeleteAsksAndClearsThePositionOnlyOnOk)
{
    OpenSample();
    ClickRow(1);
    messages.answers = {MessageAnswer::Cancel};

    Click("Command7");

    const auto question = TakeMessage();
    EXPECT_EQ(question.text, Msg("MSG15-1") + " 2 " + Msg("MSG15-2") + Msg("MSG15-3"));
    EXPECT_EQ(question.icon, MessageIcon::Question);
    EXPECT_EQ(question.buttons, MessageButtons::OkCancel);
    EXPECT_EQ(CellText(1, ListColumn::ToolKind), "CUT");

    messages.answers = {MessageAnswer::Ok};
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);

    EXPECT_EQ(TakeMessage().buttons, MessageButtons::OkCancel);
    EXPECT_EQ(ws.Table.Slots[1].ToolKind, KindNone);
    EXPECT_EQ(CellText(1, ListColumn::ToolName), "");
    EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(ToolListUi, NewToolFillsTheFirstFreePositionOrBeepsWhenFull)
{
    files.write("three.TTL", "INI = MAGAZINE01\r\nMAGAZINE01 = FLA/10,20\r\n"
                             "MAGAZINE03 = FLA/8,16\r\n");
    Open("[Config]\r\nMagazine Max=3\r\n", files.file("three.TTL"));
    editor.calls.clear();

    Click("Command6");

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(CellText(1, ListColumn::ToolKind), "BAL");
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_EQ(editor.calls.back(), "Show");

    const std::vector<ToolSlot> full = ws.Table.Slots;
    editor.calls.clear();
    Click("Command6");

    EXPECT_EQ(TakeMessage().text, Msg("MSG14"));
    EXPECT_EQ(messages.beeps, 1);
    EXPECT_TRUE(ws.Table.Slots == full);
    EXPECT_TRUE(editor.calls.empty());
}

TEST_F(ToolListUi, SavingAForeignFileKeepsABackupEachTime)
{
    OpenSample();
    const std::string original = files.read("machining_centre.TTL");
    messages.answers = {MessageAnswer::No};

    Click("Command4");

    const auto question = TakeMessage();
    EXPECT_EQ(question.text, Msg("MSG11") + Msg("MSG12"));
    EXPECT_EQ(question.buttons, MessageButtons::YesNo);
    EXPECT_EQ(files.read("machining_centre_org1.TTL"), original);
    const std::string saved = files.read("machining_centre.TTL");
    EXPECT_NE(saved.find("edited with QORTool"), std::string::npos);
    EXPECT_NE(saved.find("MAGAZINE18 = T-T/20,4,0.5,8,10,\"\xD8"), std::string::npos);
    EXPECT_EQ(Setting("Files", "TTL File"), files.file("machining_centre.TTL"));
    EXPECT_EQ(Setting("Files", "Auto Read"), "1");
    EXPECT_TRUE(started.empty());
    EXPECT_EQ(editor.calls.back(), "Hide");

    // Still the same foreign file until it is read again: one more backup,
    // holding the first save; Yes opens the file in the text editor.
    messages.answers = {MessageAnswer::Yes};
    Click("Command4");
    TakeMessage();
    EXPECT_EQ(files.read("machining_centre_org2.TTL"), saved);
    EXPECT_EQ(started,
              std::vector<std::string>{"Notepad.exe " + files.file("machining_centre.TTL")});

    // Read back, it is this program's own file: no third backup.
    Click("Command2");
    ws.NoQuestionAfterSave = true;
    Box("MagIni").setText("12");
    Click("Command4");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(std::filesystem::exists(files.file("machining_centre_org3.TTL")));
    EXPECT_NE(files.read("machining_centre.TTL").find("INI = MAGAZINE12\r\n"), std::string::npos);
}

TEST_F(ToolListUi, WithAutoReadOffSavingOverTheUnreadFileAsksFirst)
{
    const std::string path = Sample("machining_centre.TTL");
    const std::string original = files.read("machining_centre.TTL");
    Open("[Config]\r\nMagazine Max=30\r\n[Files]\r\nAuto Read=0\r\n", path);
    Click("Command6"); // a new tool gives the list rows, and Save its use
    ws.NoQuestionAfterSave = true;

    Click("Command4"); // Enter answers No

    const auto question = TakeMessage();
    EXPECT_EQ(question.text, path + "\n\n" + Msg("MSG26-1") + "\n\n" + Msg("MSG26-4"));
    EXPECT_EQ(question.buttons, MessageButtons::YesNoDefaultNo);
    EXPECT_EQ(files.read("machining_centre.TTL"), original);
    messages.answers = {MessageAnswer::Yes};
    Click("Command4");
    TakeMessage();
    EXPECT_NE(files.read("machining_centre.TTL").find("edited with QORTool"), std::string::npos);
}

TEST_F(ToolListUi, TheInitialMagazineMustBeAWholePositionNumberAndKeepsTheFocusUntilItIs)
{
    OpenSample();
    Activate();
    QLineEdit &magIni = Box("MagIni");

    for (const char *refused : {"0", "2a.5", "31"}) {
        Retype(&magIni, refused);
        QTest::keyClick(&magIni, Qt::Key_Tab);
        Settle();

        const auto message = TakeMessage();
        EXPECT_EQ(message.text, Msg("MSG17-1") + " 30 " + Msg("MSG17-2")) << refused;
        EXPECT_EQ(message.icon, MessageIcon::Exclamation) << refused;
        EXPECT_EQ(QApplication::focusWidget(), &magIni) << refused;
        EXPECT_EQ(magIni.selectedText(), refused);
    }
    EXPECT_EQ(ws.Table.InitialMagazine, 1);

    for (const char *accepted : {"", "7"}) {
        Retype(&magIni, accepted);
        QTest::keyClick(&magIni, Qt::Key_Delete); // empties the box where nothing was typed
        QTest::keyClick(&magIni, Qt::Key_Tab);
        Settle();
    }
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ws.Table.InitialMagazine, 7);
    EXPECT_NE(QApplication::focusWidget(), &magIni);
}

TEST_F(ToolListUi, HomeAndEndGoToTheFirstAndLastRow)
{
    OpenSample();
    ClickRow(5);
    list->setFocus();
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, int> keys[] = {
        {Qt::Key_End, Qt::NoModifier, 29},
        {Qt::Key_Home, Qt::NoModifier, 0},
        {Qt::Key_End, Qt::ControlModifier, 29},
        {Qt::Key_Home, Qt::ControlModifier, 0},
    };

    for (const auto &[key, modifiers, row] : keys) {
        QTest::keyClick(list, key, modifiers);

        EXPECT_EQ(SelectedRow(), row) << key << " " << modifiers;
        EXPECT_EQ(list->currentIndex().column(), 0);
        EXPECT_EQ(ws.Table.CurrentSlot, row);
    }
}

TEST_F(ToolListUi, EnterInTheFileNameBoxReadsTheFileAndKeepsWhatWasTyped)
{
    Open(ThirtyPositions);
    Sample("machining_centre.TTL");
    std::filesystem::create_directory(files.file("sub"));
    const QString typed = QString::fromStdString(files.file("sub/../machining_centre.TTL"));
    Activate();

    Retype(&Box("ToolFileName"), typed);
    QTest::keyClick(&Box("ToolFileName"), Qt::Key_Return);

    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(list->model()->rowCount(), 30);
    EXPECT_EQ(CellText(0, ListColumn::ToolKind), "CUT");
    EXPECT_EQ(Box("ToolFileName").text(), typed);
}

TEST_F(ToolListUi, TheFileNameThatTheProgramPutsInTheBoxIsCleaned)
{
    const std::string path = Sample("machining_centre.TTL");
    std::filesystem::create_directory(files.file("sub"));

    Open(ThirtyPositions, files.file("sub/./../machining_centre.TTL"));

    EXPECT_EQ(Box("ToolFileName").text().toStdString(), path);
    EXPECT_EQ(list->model()->rowCount(), 30);

    window->SetFileChooser([this](const QString &, const QString &, const QString &) {
        return QString::fromStdString(files.file("sub/../other.TTL"));
    });
    Click("Command1");
    EXPECT_EQ(Box("ToolFileName").text().toStdString(), files.file("other.TTL"));
}

TEST_F(ToolListUi, AfterAReadTheInitialMagazineIsInViewBelowTheRowsAboveIt)
{
    for (const int initial : {3, 28}) {
        files.write("ini" + std::to_string(initial) + ".TTL",
                    "INI = MAGAZINE" + std::to_string(initial) + "\r\nMAGAZINE01 = FLA/10,20\r\n");
    }
    Open(ThirtyPositions, files.file("ini3.TTL"));
    const auto inView = [this](int row) {
        return list->viewport()->rect().contains(list->visualRect(list->model()->index(row, 0)));
    };
    const auto read = [this](const char *name) {
        Box("ToolFileName").setText(QString::fromStdString(files.file(name)));
        Click("Command2");
    };

    ASSERT_FALSE(inView(29)) << "the list must have rows out of view";
    EXPECT_TRUE(inView(0) && inView(2));
    EXPECT_EQ(SelectedRow(), 2);

    read("ini28.TTL");
    EXPECT_TRUE(inView(27));
    EXPECT_EQ(SelectedRow(), 27);

    read("ini3.TTL");
    EXPECT_TRUE(inView(0) && inView(2));
    EXPECT_EQ(SelectedRow(), 2);
}

TEST_F(ToolListUi, TheArborButtonEditsTheFileArborWhileItHasTheFocus)
{
    OpenSample();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    editor.calls.clear();

    Click("aArbEditB");

    EXPECT_TRUE(ws.ArborEdit);
    EXPECT_EQ(editor.calls, (std::vector<std::string>{"MagNo 0", "Show"}));

    list->setFocus();
    EXPECT_FALSE(ws.ArborEdit);
}

TEST_F(ToolListUi, AStoredToolIsShownAndSelected)
{
    OpenSample();
    ws.Table.Slots[15].ToolKind = KindKeg;
    ws.Table.Slots[15].ToolDia = 4;

    window->ShowStoredTool(16);

    EXPECT_EQ(CellText(15, ListColumn::ToolKind), "KEG");
    EXPECT_EQ(CellText(15, ListColumn::ToolDia), "4.0");
    EXPECT_EQ(SelectedRow(), 15);
    EXPECT_EQ(ws.Table.CurrentSlot, 15);
}

TEST_F(ToolListUi, ClosingStoresTheFileSettingsAndTheAutoReadBoxStoresAtOnce)
{
    OpenSample();
    auto *autoRead = Find<QCheckBox>(*window, "autoRead");

    QTest::mouseClick(autoRead, Qt::LeftButton);
    EXPECT_EQ(Setting("Files", "Auto Read"), "0");
    EXPECT_EQ(Setting("Files", "TTL File"), "");

    Click("Command5");

    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Setting("Files", "TTL File"), files.file("machining_centre.TTL"));
    EXPECT_EQ(Setting("Files", "Auto Read"), "0");
    EXPECT_EQ(editor.calls.back(), "Hide");
}

TEST_F(ToolListUi, HelpOpensTheHelpFileInTheTextEditor)
{
    OpenSample();
    Click("Command8");
    EXPECT_EQ(TakeMessage().text, Msg("MSG16"));

    app.write("QORTool_Help.txt", "help");
    Click("Command8");
    EXPECT_EQ(started, std::vector<std::string>{"NotePad.exe " + app.file("QORTool_Help.txt")});
}

// Closes the list window when it is first shown: at once (inside start-up's
// one round of events) or after a delay.
class CloseWhenShown : public QObject
{
public:
    explicit CloseWhenShown(int delay) : m_delay(delay) {}

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == "ToolList") {
            auto *window = static_cast<QWidget *>(watched);
            if (m_delay == 0) {
                QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
            } else {
                QTimer::singleShot(m_delay, window, &QWidget::close);
            }
        }
        return false;
    }

private:
    int m_delay;
};

TEST_F(StartedProgram, ClosingTheListWindowEndsTheProgramAtAnyMoment)
{
    StartProgram(ThirtyPositions);

    for (const int delay : {0, 100}) {
        SCOPED_TRACE(delay);
        CloseWhenShown closer(delay);
        qApp->installEventFilter(&closer);
        QTimer guard; // ends an event loop that nobody quits
        guard.setSingleShot(true);
        QObject::connect(&guard, &QTimer::timeout, [] { QCoreApplication::exit(99); });
        guard.start(5000);

        const int status = RunWindows(ws, messages, {});

        qApp->removeEventFilter(&closer);
        EXPECT_EQ(status, 0);
    }
}

} // namespace
} // namespace qor::test
