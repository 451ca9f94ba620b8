#pragma once

#include "recording_message_service.h"
#include "startup.h"
#include "temp_dir.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace qor::test {

// A started program without windows: the English catalogue and a settings
// file in a temporary program folder.
class Listing : public testing::Test
{
protected:
    void Start(std::string_view ini = "[Config]\r\nMagazine Max=20\r\n")
    {
        app.write("QORTool.msg", SourceFile("data/QORTool.msg"));
        app.write("QorTool.INI", ini);
        ASSERT_EQ(RunStartup(ws, app.path(), messages), 0);
        messages.shown.clear();
    }

    void SetUp() override { Start(); }

    std::string Msg(std::string_view key) const { return ws.Text("MSG", key); }
    std::string Str(std::string_view key) const { return ws.Text("String", key); }
    ToolSlot &Slot(int slot) { return ws.Table.Slots.at(static_cast<std::size_t>(slot)); }

    TempDir app;
    Workspace ws;
    RecordingMessageService messages;
};

} // namespace qor::test
