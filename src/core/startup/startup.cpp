#include "startup.h"

#include "atomic_file.h"
#include "native_file.h"
#include "numeric_text.h"

#include <string_view>

namespace qor {

namespace {

constexpr int ExitCatalogueMissing = 1;
constexpr int ExitCatalogueBroken = 2;

// Reads one display key: the start-up value stays unless the text is a
// 16-bit number.
void ReadDisplaySize(const Common &settings, std::string_view key, std::string_view defaultValue,
                     std::int16_t &global)
{
    global = *ToInt16(defaultValue);
    if (auto value = ToInt16(settings.GetIniString("Config", key, defaultValue))) {
        global = *value;
    }
}

std::int16_t ReadMagazineMax(const Common &settings, MessageService &messages)
{
    constexpr std::int16_t fallback = 100;
    std::string text = settings.GetIniString("Config", "Magazine Max", "100");
    if (!IsNumeric(text)) {
        return fallback;
    }
    auto value = ToInt16(text);
    if (value && *value >= 1) {
        return *value;
    }
    messages.Show("The setting \"Magazine Max\" in \"" + settings.IniPath() + "\" is " +
                      std::string(TrimSpaces(text)) +
                      ", but the magazine must have from 1 to 32767 positions.\r\n"
                      "The program uses 100 positions. Correct the setting and start again.",
                  MessageIcon::Exclamation, MessageButtons::Ok, "QORTool");
    return fallback;
}

} // namespace

std::string CatalogueMissingText(const std::string &msgPath)
{
    return "A text definition file \"" + msgPath + "\" is not found.";
}

std::string OldCatalogueText(const std::string &msgPath)
{
    return "There is a possibility that the text definition file is old.\r\n"
           "In this case, a part of text is not displayed.\r\n\r\n"
           "Text definition file : \"" +
           msgPath + "\"";
}

int RunStartup(Workspace &workspace, const std::string &appDir, MessageService &messages,
               const StartupOverrides &overrides)
{
    StartupGlobals &g = workspace.Globals;

    g.AppDir = NativeSeparators(appDir);
    if (g.AppDir.empty() || (g.AppDir.back() != '\\' && g.AppDir.back() != '/')) {
        g.AppDir += PathSeparator();
    }
    g.IniPath = g.AppDir + "QorTool.INI";
    g.WorkDir = g.AppDir;
    g.StartFlag = true;
    workspace.Settings.SetIniPath(g.IniPath);
    const Common &settings = workspace.Settings;

    ReadDisplaySize(settings, "COLUMNHEADER FONT SIZE", "8", g.ColumnHeaderFontSize);
    ReadDisplaySize(settings, "TEXTBOX FONT SIZE", "11", g.TextBoxFontSize);
    ReadDisplaySize(settings, "LISTVIEW FONT SIZE", "9", g.ListViewFontSize);
    ReadDisplaySize(settings, "BUTTON FONT SIZE", "11", g.ButtonFontSize);
    g.ButtonFontBold = true;
    if (auto bold = ToSingle(settings.GetIniString("Config", "BUTTON FONT BOLD", "1"));
        bold && *bold == 0.0f) {
        g.ButtonFontBold = false;
    }
    g.SupportPenMax = 16;
    if (auto penMax = ToInt16(settings.GetIniString("Config", "SUPPORT PEN MAX", "16"))) {
        g.SupportPenMax = *penMax;
    }

    g.MsgPath = overrides.catalogue.value_or(g.AppDir + "QORTool.msg");
    if (!FileExists(g.MsgPath)) {
        messages.Show(CatalogueMissingText(g.MsgPath), MessageIcon::Critical, MessageButtons::Ok);
        return ExitCatalogueMissing;
    }
    if (Common::GetProfileValue("Config", "Version", g.MsgPath) != ProgramVersion) {
        messages.Show(OldCatalogueText(g.MsgPath), MessageIcon::Information, MessageButtons::Ok);
    }
    if (auto loaded = workspace.Catalogue.Load(g.MsgPath); !loaded) {
        messages.Show(loaded.error().message, MessageIcon::Critical, MessageButtons::Ok, "QORTool");
        return ExitCatalogueBroken;
    }

    g.MagazineMax = ReadMagazineMax(settings, messages);
    if (overrides.magazineMax && *overrides.magazineMax >= 1) {
        g.MagazineMax = *overrides.magazineMax;
    }
    SizeToolTable(workspace.Table, g.MagazineMax);

    workspace.DrawSuppressed = false;
    workspace.EditorBusy = false;
    workspace.DrawHold = false;
    workspace.ExtendedKinds = true;
    workspace.TenthKindOffered = true;

    ToolTable &table = workspace.Table;
    for (int i = 0; i <= 9; ++i) {
        table.KindNames[static_cast<std::size_t>(i)] =
            workspace.Text("String", "Str" + std::to_string(i));
    }
    table.KindNames[10] = workspace.Text("String", "Str15");
    for (int i = 0; i < 4; ++i) {
        table.ArborTypeNames[static_cast<std::size_t>(i)] =
            workspace.Text("String", "Str" + std::to_string(10 + i));
    }
    workspace.ArborFlagCaptions = {workspace.Text("String", "Str20"),
                                   workspace.Text("String", "Str21")};
    ClearToolTable(table);
    return 0;
}

} // namespace qor
