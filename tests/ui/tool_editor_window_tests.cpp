#include "editor_picture.h"
#include "editor_windows.h"
#include "qt_message_service.h"
#include "tool_editor_window.h"
#include "tool_fset_window.h"
#include "tool_limit_window.h"
#include "tool_list_reader.h"
#include "tool_list_window.h"
#include "window_fixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <memory>
#include <sstream>

namespace qor::test {
namespace {

constexpr const char *Settings = "[Config]\r\nMagazine Max=30\r\nSUPPORT PEN MAX=8\r\n";

// The editor's three windows over the machining centre sample, without the
// list window.
class EditorUi : public StartedProgram
{
protected:
    void SetUp() override
    {
        StartProgram(Settings);
        ASSERT_EQ(ReadToolListFile(ws.Table, Sample("machining_centre.TTL")).outcome,
                  ReadOutcome::Read);
        const EditorWindows windows = CreateEditorWindows(ws, nullptr, messages);
        editor.reset(windows.Editor);
        feed = windows.OptionFeed;
        limit = windows.Limit;
        redraws = std::make_unique<QSignalSpy>(editor.get(), &ToolEditorWindow::redrawn);
    }

    // Opens the editor on a magazine position as the list window does.
    void Open(int magazine)
    {
        ws.Table.CurrentSlot = static_cast<std::int16_t>(magazine - 1);
        editor->SetMagazineNumber(std::to_string(magazine));
        editor->ShowEditor();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
        Settle();
        redraws->clear();
        messages.shown.clear();
    }

    QLineEdit *Box(const char *name) { return Find<QLineEdit>(*editor, name); }

    // Chooses a list entry from the keyboard, as a user would.
    static void Choose(QComboBox *list, int index)
    {
        list->setFocus(Qt::TabFocusReason);
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < index; ++i) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        Settle();
    }

    void Click(QWidget &parent, const char *name)
    {
        QTest::mouseClick(Find<QAbstractButton>(parent, name), Qt::LeftButton);
        Settle();
    }

    std::unique_ptr<ToolEditorWindow> editor;
    ToolFSetWindow *feed = nullptr;
    ToolLimitWindow *limit = nullptr;
    std::unique_ptr<QSignalSpy> redraws;
};

TEST_F(EditorUi, KeysOutsideABoxsFilterBeepAndInsertNothing)
{
    Open(12); // BUL with an arbor: a hollow corner may be typed
    const std::pair<const char *, QString> typed[] = {
        {"Para_0", "1/-2"}, {"Para_1", "-1/.5"}, {"Length", "-7a5"},
        {"Shift", "-0.5/"}, {"ArbD_0", "-30"},   {"ArbD_1", "-4"},
    };
    const QString shown[] = {"12", "-1.5", "75", "-0.5", "30", "-4"};

    for (std::size_t i = 0; i < std::size(typed); ++i) {
        Retype(Box(typed[i].first), typed[i].second);
        EXPECT_EQ(Box(typed[i].first)->text(), shown[i]) << typed[i].first;
    }
    QApplication::clipboard()->setText("-25"); // a paste passes only as a whole
    Box("Length")->selectAll();
    QTest::keySequence(Box("Length"), QKeySequence::Paste);
    Box("Shift")->selectAll();
    QTest::keySequence(Box("Shift"), QKeySequence::Paste);

    EXPECT_EQ(Box("Length")->text(), "75");
    EXPECT_EQ(Box("Shift")->text(), "-25");

    Choose(Find<QComboBox>(*editor, "Tool"), 8); // RAD uses Para(1) as a radius
    Retype(Box("Para_1"), "-1");

    EXPECT_EQ(Box("Para_1")->text(), "1");
    EXPECT_EQ(messages.beeps, 9);
}

TEST_F(EditorUi, AnEmptyBoxKeepsTheFocusUntilItHoldsANumber)
{
    Open(1);
    QLineEdit *diameter = Box("Para_0");
    Retype(diameter, "");
    QTest::keyClick(diameter, Qt::Key_Backspace);

    Retype(Box("Para_1"), ""); // leaving Para(0) for another empty box

    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, Msg("MSG1"));
    EXPECT_EQ(QApplication::focusWidget(), diameter);

    // Cancelling never asks about the box.
    Click(*editor, "CanB");
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(editor->Form().Para[0].Text, "10"); // the tool as the table holds it
}

TEST_F(EditorUi, TheLimitWindowEnablesWhatTheLimitKindUses)
{
    Open(10); // LIMITSP/40,45,50,55
    Click(*editor, "Command2");
    ASSERT_TRUE(limit->isVisible());
    auto *kind = Find<QComboBox>(*limit, "cbLimKind");
    const auto enabled = [this] {
        std::string mask;
        for (const char *name :
             {"cbOutType", "cbSetKind", "tbLimVal_0", "tbLimVal_1", "tbLimVal_2", "tbLimVal_3"}) {
            mask += Find<QWidget>(*limit, name)->isEnabled() ? '1' : '0';
        }
        return mask;
    };
    EXPECT_EQ(kind->currentIndex(), 2);
    EXPECT_EQ(Find<QLineEdit>(*limit, "tbLimVal_3")->text(), "55");
    EXPECT_EQ(enabled(), "111111");

    Choose(Find<QComboBox>(*limit, "cbSetKind"), 0);
    EXPECT_EQ(enabled(), "111000");
    Choose(kind, 0);
    EXPECT_EQ(enabled(), "000000");
    EXPECT_EQ(Find<QLineEdit>(*limit, "tbLimVal_0")->text(), "40"); // kept, only greyed

    ws.Table.CurrentSlot = 3;
    editor->SetMagazineNumber("4"); // LIMIT/35, loaded with the tool
    EXPECT_EQ(kind->currentIndex(), 1);
    EXPECT_EQ(Find<QLineEdit>(*limit, "tbLimVal_0")->text(), "35");
}

TEST_F(EditorUi, TheOptionFeedWindowShowsEachLetterThroughItsScrollBar)
{
    Open(6); // OPT-F(A)/0,100,5,60,12,100,20 and OPT-F(V)/0,1200,8,900,20
    Click(*editor, "Command1");
    ASSERT_TRUE(feed->isVisible());
    EXPECT_EQ(Find<QLineEdit>(*feed, "FV_1")->text(), "8");
    EXPECT_FALSE(Find<QLineEdit>(*feed, "FU_0")->isEnabled());

    Find<QScrollBar>(*feed, "HScFV")->setValue(10);
    QLineEdit *last = Find<QLineEdit>(*feed, "FV_9");
    Retype(last, "2.5");
    Click(*feed, "Check1_1");
    Click(*feed, "Check1_2");

    EXPECT_EQ(editor->Form().OptionFeed.FeedPos[1][19], 2.5f);
    EXPECT_FALSE(last->isEnabled());
    EXPECT_EQ(last->text(), "2.5");
    EXPECT_TRUE(Find<QLineEdit>(*feed, "FU_0")->isEnabled());

    editor->activateWindow(); // another window: the option feeds step aside
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    Settle();
    EXPECT_FALSE(feed->isVisible());
}

TEST_F(EditorUi, HandingTheSamePositionAgainKeepsUnsavedEditsUntilTheTableChanges)
{
    Open(6);
    Retype(Box("Para_0"), "12");
    Click(*editor, "Command1");
    Retype(Find<QLineEdit>(*feed, "FV_1"), "9");

    Open(6); // a double click on the row being edited

    EXPECT_EQ(Box("Para_0")->text(), "12");
    EXPECT_EQ(Find<QLineEdit>(*feed, "FV_1")->text(), "9");

    ws.Table.Slots[5].ToolDia = 7; // a read or a store changed the position
    editor->SetMagazineNumber("6");
    EXPECT_EQ(Box("Para_0")->text(), "7");

    ws.ArborEdit = true; // the list's default arbor button, clicked twice
    editor->SetMagazineNumber("0");
    Retype(Box("ArbD_0"), "44");
    editor->SetMagazineNumber("0");
    EXPECT_EQ(Box("ArbD_0")->text(), "44");
}

TEST_F(EditorUi, AListOpenedAfterTypingIntoABoxStaysOpen)
{
    Open(1);
    Retype(Box("Para_0"), "12");
    auto *kind = Find<QComboBox>(*editor, "Tool");

    QTest::mouseClick(kind, Qt::LeftButton);
    Settle();

    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(messages.shown.empty());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
}

TEST_F(EditorUi, TheSmallWindowsStayOnTheScreenWhereTheUserPutThemAndCloseOnEnter)
{
    const QRect screen = editor->screen()->availableGeometry();
    Open(6);
    editor->move(screen.bottomRight() - QPoint(200, 120)); // the buttons near the screen's edge
    Click(*editor, "Command1");
    ASSERT_TRUE(feed->isVisible());
    EXPECT_TRUE(screen.contains(feed->frameGeometry()))
        << feed->frameGeometry().x() << "," << feed->frameGeometry().y();

    const QPoint chosen = screen.topLeft() + QPoint(10, 20);
    feed->move(chosen);
    Click(*feed, "CanB");
    Click(*editor, "Command1");
    EXPECT_EQ(feed->pos(), chosen);

    Click(*editor, "Command2");
    ASSERT_TRUE(limit->isVisible());
    auto *close = Find<QPushButton>(*limit, "CloseB");
    close->setFocus(Qt::TabFocusReason);
    QTest::keyClick(close, Qt::Key_Return);
    EXPECT_FALSE(limit->isVisible());
}

// After a message the window manager may hand the activation to the editor
// before it comes back: the option feed window must not take that for the
// user turning away.
TEST_F(EditorUi, TheOptionFeedWindowOutlivesTheActivationShuffleAfterItsMessage)
{
    Open(6);
    Click(*editor, "Command1");
    Retype(Find<QLineEdit>(*feed, "FV_1"), ".");
    Find<QLineEdit>(*feed, "FV_2")->setFocus(Qt::TabFocusReason);
    Settle();
    ASSERT_EQ(TakeMessage().text, Msg("MSG1"));

    editor->activateWindow();
    Settle();
    feed->activateWindow();
    Settle();

    EXPECT_TRUE(feed->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), Find<QLineEdit>(*feed, "FV_1"));
}

TEST_F(EditorUi, EnterStoresAndEscapeCancels)
{
    Open(7); // BAL/2,8
    QSignalSpy stored(editor.get(), &ToolEditorWindow::stored);

    Retype(Box("Para_0"), "4");
    QTest::keyClick(Box("Para_0"), Qt::Key_Return);

    ASSERT_EQ(stored.count(), 1);
    EXPECT_EQ(stored.at(0).at(0).toInt(), 7);
    EXPECT_EQ(ws.Table.Slots[6].ToolDia, 4);
    EXPECT_EQ(ws.Table.Slots[6].CornerRad, 2); // the derived radius of a ball
    EXPECT_FALSE(editor->isVisible());

    Open(7);
    Retype(Box("Para_0"), "9");
    QTest::keyClick(Box("Para_0"), Qt::Key_Escape);

    EXPECT_EQ(stored.count(), 1);
    EXPECT_EQ(ws.Table.Slots[6].ToolDia, 4);
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(EditorUi, TheToolNameTakesNoDoubleQuoteAndShowsWhereItsTwentyCharactersEnd)
{
    Open(7);
    QLineEdit *name = Box("ToolName");
    auto *count = Find<QLabel>(*editor, "ToolNameCount");
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->text(), "17/20"); // "R1 ball finishing" as loaded
    const QColor normal = count->palette().color(QPalette::Active, QPalette::WindowText);

    Retype(name, "D6 \"Garant\" 3/4");

    EXPECT_EQ(name->text(), "D6 Garant 3/4");
    EXPECT_EQ(messages.beeps, 2);
    EXPECT_EQ(count->text(), "13/20");

    // A pasted quote goes in, and the box keeps the focus until it is gone.
    QApplication::clipboard()->setText("\"");
    name->end(false);
    QTest::keySequence(name, QKeySequence::Paste);
    Box("Para_0")->setFocus(Qt::TabFocusReason);
    Settle();

    EXPECT_EQ(TakeMessage().text, Msg("MSG28-1"));
    EXPECT_EQ(QApplication::focusWidget(), name);
    EXPECT_FALSE(editor->keepB_Click());
    EXPECT_EQ(TakeMessage().text, Msg("MSG28-1"));
    EXPECT_EQ(ws.Table.Slots[6].ToolComment, "R1 ball finishing");

    Retype(name, "ABCDEFGHIJKLMNOPQRSTUVWXY");

    EXPECT_EQ(count->text(), "25/20");
    EXPECT_NE(count->palette().color(QPalette::Active, QPalette::WindowText), normal);
    EXPECT_TRUE(editor->keepB_Click());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ws.Table.Slots[6].ToolComment, "ABCDEFGHIJKLMNOPQRST");

    QTest::keyClick(name, Qt::Key_Backspace); // the 24 left are still too many
    EXPECT_EQ(count->text(), "24/20");
    Retype(name, QString(20, 'x'));
    EXPECT_EQ(count->text(), "20/20");
    EXPECT_EQ(count->palette().color(QPalette::Active, QPalette::WindowText), normal);
}

TEST_F(EditorUi, TheToolNameKeepsTheFocusWhileTheCodePageCannotHoldACharacterOfIt)
{
    Open(7);
    QLineEdit *name = Box("ToolName");
    name->setFocus(Qt::TabFocusReason);
    Settle();

    QApplication::clipboard()->setText(QString::fromUtf8("\xE5\xB7\xA5")); // 工, not in 1252
    name->end(false);
    QTest::keySequence(name, QKeySequence::Paste);
    Box("Para_0")->setFocus(Qt::TabFocusReason);
    Settle();

    EXPECT_TRUE(TakeMessage().text.starts_with(Msg("MSG27-1") + " \"\xE5\xB7\xA5\" (U+5DE5)"));
    EXPECT_EQ(QApplication::focusWidget(), name);
    EXPECT_FALSE(editor->keepB_Click());
    TakeMessage();
    EXPECT_EQ(ws.Table.Slots[6].ToolComment, "R1 ball finishing");

    Retype(name, QString::fromUtf8("R1 \xC3\x98")); // Ø is

    EXPECT_TRUE(editor->keepB_Click());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(ws.Table.Slots[6].ToolComment, "R1 \xD8");
}

TEST_F(EditorUi, ArborSectionsAreEditedUnderTheScrollBarAndCancelledTogether)
{
    Open(3); // ARBOR3/20,30,1,34,40,0,63,16,0
    const ArborSections loaded = ws.Table.Slots[2].Arbor;

    Click(*editor, "ArbFlgB_0");
    Find<QScrollBar>(*editor, "VS1")->setValue(5);
    Retype(Box("ArbD_4"), "90"); // section 10

    EXPECT_EQ(Find<QPushButton>(*editor, "ArbFlgB_0")->text(), "Straight");
    EXPECT_EQ(Find<QLabel>(*editor, "ArbNo_4")->text(), "10");
    EXPECT_EQ(editor->Form().Sections.Dia[9], 90);
    EXPECT_EQ(redraws->count(), 3); // the flag, then one per keystroke

    Click(*editor, "CanB");

    EXPECT_EQ(editor->Form().Sections, loaded);
    EXPECT_EQ(ws.Table.Slots[2].Arbor, loaded);
}

// Every kind of the sample is drawn; with QOR_SCREENSHOT_DIR set, the
// windows are saved there as pictures to look at.
TEST_F(EditorUi, EveryKindIsDrawnIntoThePicture)
{
    const QString shots = qEnvironmentVariable("QOR_SCREENSHOT_DIR");
    editor->resize(1100, 760);
    for (const int magazine : {1, 2, 3, 4, 6, 8, 9, 12, 13, 14, 15, 17, 18}) {
        Open(magazine);
        const QImage picture = Find<EditorPicture>(*editor, "View")->Image();
        int ink = 0;
        for (int i = 0; i < picture.width() * picture.height(); ++i) {
            ink += qGray(picture.pixel(i % picture.width(), i / picture.width())) < 128 ? 1 : 0;
        }
        EXPECT_GT(ink, 200) << "magazine " << magazine;
        if (!shots.isEmpty()) {
            editor->grab().save(QStringLiteral("%1/editor_%2.png").arg(shots).arg(magazine));
        }
    }
}

// With real, modal message boxes: leaving one empty box for another shows one
// message, however the focus moves while the boxes come and go.
TEST_F(StartedProgram, RealMessageBoxesNeverChaseEachOther)
{
    StartProgram(Settings);
    ASSERT_EQ(ReadToolListFile(ws.Table, Sample("machining_centre.TTL")).outcome,
              ReadOutcome::Read);
    QtMessageService boxes;
    std::unique_ptr<ToolEditorWindow> editor(CreateEditorWindows(ws, nullptr, boxes).Editor);
    editor->ShowEditor();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    int answered = 0;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&answered] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            ++answered;
            box->accept();
        }
    });
    answer.start(20);
    QLineEdit *first = Find<QLineEdit>(*editor, "Para_0");
    QLineEdit *second = Find<QLineEdit>(*editor, "Para_6");
    second->setText("");
    first->setFocus();
    first->selectAll();
    QTest::keyClick(first, Qt::Key_Backspace);

    second->setFocus(Qt::MouseFocusReason);
    QTest::qWait(400);

    EXPECT_EQ(answered, 1);
    EXPECT_EQ(QApplication::focusWidget(), first);

    // The option feed window stays up over a message of its own.
    QTest::keyClicks(first, "10");
    QTest::mouseClick(Find<QPushButton>(*editor, "Command1"), Qt::LeftButton);
    auto *feed = Find<ToolFSetWindow>(*editor, "ToolFSet");
    QTest::qWait(50); // the click's own activation of the editor comes late
    feed->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(feed));
    QLineEdit *position = Find<QLineEdit>(*feed, "FA_0");
    position->setFocus();
    position->selectAll();
    QTest::keyClick(position, Qt::Key_Backspace);
    QTest::keyClick(position, Qt::Key_Tab);
    QTest::qWait(400);

    EXPECT_EQ(answered, 2);
    EXPECT_TRUE(feed->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), position);
}

std::vector<std::string> Lines(const std::string &bytes)
{
    std::vector<std::string> lines;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST_F(StartedProgram, AnEditedToolIsStoredAndSavedIntoTheFile)
{
    StartProgram(Settings);
    ws.NoQuestionAfterSave = true;
    const std::string path = Sample("machining_centre.TTL");
    ToolListWindow list(ws, messages, QString::fromStdString(path));
    list.show();
    const EditorWindows windows = CreateEditorWindows(ws, &list, messages);
    QTest::mouseClick(Find<QPushButton>(list, "Command4"), Qt::LeftButton);
    std::vector<std::string> expected = Lines(files.read("machining_centre.TTL"));
    const auto tool =
        std::find(expected.begin(), expected.end(), "MAGAZINE07 = BAL/2,8,\"R1 ball finishing\"\r");
    ASSERT_NE(tool, expected.end());
    ASSERT_EQ(*(tool + 2), "PEN/2\r");
    expected.erase(tool, tool + 3);
    expected.insert(tool, {"MAGAZINE07 = BAL/3,8,\"R1.5 ball\"\r", "LENGTH2/60,8,0,3\r",
                           "ARBOR/20,40,32,20\r", "SHIFT/-0.5\r", "PEN/4\r"});

    ws.Table.CurrentSlot = 6;
    windows.Editor->SetMagazineNumber("7");
    windows.Editor->ShowEditor();
    ASSERT_TRUE(QTest::qWaitForWindowActive(windows.Editor));
    const auto retype = [&](const char *name, const QString &text) {
        Retype(Find<QLineEdit>(*windows.Editor, name), text);
    };
    retype("Para_0", "3");
    retype("ToolName", "R1.5 ball");
    for (const char *list : {"LenDef", "Arbor"}) { // LENGTH/ to LENGTH2/, none to ARBOR
        Find<QComboBox>(*windows.Editor, list)->setFocus();
        QTest::keyClick(Find<QComboBox>(*windows.Editor, list), Qt::Key_Down);
    }
    retype("ArbD_0", "20");
    retype("ArbH_0", "40");
    retype("ArbD_1", "32");
    retype("ArbH_1", "20");
    QTest::mouseClick(Find<QCheckBox>(*windows.Editor, "Check1"), Qt::LeftButton);
    retype("Shift", "-0.5");
    retype("Pen", "4");
    QTest::mouseClick(Find<QPushButton>(*windows.Editor, "OKB"), Qt::LeftButton);
    QCoreApplication::processEvents();

    EXPECT_FALSE(windows.Editor->isVisible());
    QTest::mouseClick(Find<QPushButton>(list, "Command4"), Qt::LeftButton);

    EXPECT_EQ(Lines(files.read("machining_centre.TTL")), expected);
    EXPECT_TRUE(messages.shown.empty()) << messages.shown.front().text;
}

} // namespace
} // namespace qor::test
