#include "info_window.h"
#include "tool_list_window.h"
#include "window_fixture.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <memory>

namespace qor::test {
namespace {

class InfoUi : public StartedProgram
{
protected:
    void SetUp() override
    {
        StartProgram("[Config]\r\nMagazine Max=10\r\n");
        list = std::make_unique<ToolListWindow>(ws, messages);
        list->show();
        QTest::mouseClick(Find<QPushButton>(*list, "Command9"), Qt::LeftButton);
        info = list->findChild<InfoWindow *>("Info");
        ASSERT_NE(info, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(info));
        info->SetFileChooser([this](const QString &title, const QString &filter, const QString &) {
            asked = title + " | " + filter;
            return choice;
        });
    }

    QString LabelText(const char *name) { return Find<QLabel>(*info, name)->text(); }
    void ClickRangB() { QTest::mouseClick(Find<QPushButton>(*info, "RangB"), Qt::LeftButton); }

    std::unique_ptr<ToolListWindow> list;
    InfoWindow *info = nullptr;
    QString choice;
    QString asked;
};

TEST_F(InfoUi, ShowsTheVersionAndTheCatalogueWithoutWritingTheSettings)
{
    const std::string settings = app.read("QorTool.INI");

    EXPECT_EQ(info->windowTitle().toStdString(), ws.Text("frmInfo", "Text0"));
    EXPECT_EQ(LabelText("Version"), "Version 1.70");
    EXPECT_EQ(LabelText("Rangage"), "QORTool.msg");
    EXPECT_EQ(LabelText("Label3").toStdString(),
              ws.Text("frmInfo", "Text3") + " " + ws.Text("frmInfo", "Text5"));
    EXPECT_EQ(app.read("QorTool.INI"), settings);
    EXPECT_TRUE(messages.shown.empty());

    // A second click shows the same window again.
    QTest::mouseClick(Find<QPushButton>(*list, "Command9"), Qt::LeftButton);
    EXPECT_EQ(list->findChildren<InfoWindow *>().size(), 1);
}

TEST_F(InfoUi, ACatalogueChosenElsewhereMustLieInTheProgramFolder)
{
    const std::string settings = app.read("QorTool.INI");
    files.write("German.msg", "[Config]\r\nVersion=1.70\r\n");
    choice = QString::fromStdString(files.file("German.msg"));

    ClickRangB();

    EXPECT_EQ(asked.toStdString(),
              ws.Text("frmInfo", "Text14") + " | " + ws.Text("frmInfo", "Text13") + " (*.msg)");
    const auto message = TakeMessage();
    EXPECT_EQ(message.text, Msg("MSG5") + " " + app.file("German.msg"));
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    EXPECT_EQ(LabelText("Rangage"), "QORTool.msg");
    EXPECT_EQ(app.read("QorTool.INI"), settings);
}

TEST_F(InfoUi, ACatalogueInTheProgramFolderIsRememberedForTheNextStart)
{
    app.write("German.msg", "[Config]\r\nVersion=1.70\r\n");
    choice = QString::fromStdString(app.file("German.msg"));

    ClickRangB();

    const auto message = TakeMessage();
    EXPECT_EQ(message.text, Msg("MSG21") + "\n" + Msg("MSG22"));
    EXPECT_EQ(message.icon, MessageIcon::Information);
    EXPECT_EQ(LabelText("Rangage"), "German.msg");
    EXPECT_EQ(ws.Globals.MsgPath, app.file("German.msg"));
    EXPECT_NE(app.read("QorTool.INI").find("TEXT FILE=German.msg"), std::string::npos);
    // The running program keeps its texts.
    EXPECT_EQ(ws.Text("frmInfo", "Text0"), "About QORTool");

    // Cancelling the dialog changes nothing.
    choice.clear();
    ClickRangB();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(LabelText("Rangage"), "German.msg");
}

TEST_F(StartedProgram, TheInformationWindowShowsTheCatalogueChosenForThisStart)
{
    std::string second = SourceFile("data/QORTool.msg");
    second.replace(second.find("About QORTool"), 13, "Info QORTool");
    app.write("Second.msg", second);

    StartProgram("[Config]\r\nTEXT FILE=Second.msg\r\n");
    ToolListWindow list(ws, messages);
    list.show();
    QTest::mouseClick(Find<QPushButton>(list, "Command9"), Qt::LeftButton);
    auto *info = list.findChild<InfoWindow *>("Info");
    ASSERT_NE(info, nullptr);

    EXPECT_EQ(info->windowTitle(), "Info QORTool");
    EXPECT_EQ(Find<QLabel>(*info, "Rangage")->text(), "Second.msg");
}

} // namespace
} // namespace qor::test
