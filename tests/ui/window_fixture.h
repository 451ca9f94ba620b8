#pragma once

#include "recording_message_service.h"
#include "startup.h"
#include "temp_dir.h"
#include "tool_editor_link.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QObject>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace qor::test {

// Stands in for the tool editor window: records what the list hands over.
class RecordingEditor final : public ToolEditorLink
{
public:
    void SetMagazineNumber(const std::string &magNo) override { calls.push_back("MagNo " + magNo); }
    void ShowEditor() override { calls.push_back("Show"); }
    void HideEditor() override { calls.push_back("Hide"); }

    std::vector<std::string> calls;
};

// A started program in a temporary program folder with the English catalogue,
// and a second folder for tool list files.
class StartedProgram : public testing::Test
{
protected:
    void StartProgram(std::string_view ini)
    {
        app.write("QORTool.msg", SourceFile("data/QORTool.msg"));
        app.write("QorTool.INI", ini);
        ASSERT_EQ(RunStartup(ws, app.path(), messages), 0);
        messages.shown.clear();
    }

    // A sample file copied into the files folder; its path.
    std::string Sample(std::string_view name)
    {
        files.write(name, SourceFile("data/samples/" + std::string(name)));
        return files.file(name);
    }

    std::string Msg(std::string_view key) const { return ws.Text("MSG", key); }

    // The one message shown since the last check, which is then forgotten.
    RecordingMessageService::Shown TakeMessage()
    {
        EXPECT_EQ(messages.shown.size(), 1u);
        if (messages.shown.empty()) {
            return {};
        }
        RecordingMessageService::Shown shown = messages.shown.front();
        messages.shown.clear();
        return shown;
    }

    template <typename T> T *Find(QObject &parent, const char *name)
    {
        T *found = parent.findChild<T *>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    TempDir app;
    TempDir files;
    Workspace ws;
    RecordingMessageService messages;
};

// Lets the checks that wait for the focus change to finish run.
inline void Settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
    }
}

// Focus into the box and type over its whole text.
inline void Retype(QLineEdit *box, const QString &text)
{
    box->setFocus(Qt::TabFocusReason);
    Settle();
    box->selectAll();
    QTest::keyClicks(box, text);
}

// Tells a box that the focus left it, as a Tab key would.
inline void LeaveBox(QWidget &box)
{
    QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&box, &out);
}

} // namespace qor::test
