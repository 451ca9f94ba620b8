#include "startup.h"

#include "atomic_file.h"
#include "message_text.h"
#include "native_file.h"
#include "numeric_text.h"

#include <string_view>
#include <vector>

namespace qor {

namespace {

constexpr int ExitCatalogueMissing = 1;
constexpr int ExitCatalogueBroken = 2;
constexpr const char *DefaultCatalogue = "QORTool.msg";

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

std::int16_t ReadMagazineMax(const Workspace &workspace, MessageService &messages)
{
    constexpr std::int16_t fallback = 100;
    const Common &settings = workspace.Settings;
    std::string text = settings.GetIniString("Config", "Magazine Max", "100");
    if (!IsNumeric(text)) {
        return fallback;
    }
    auto value = ToInt16(text);
    if (value && *value >= 1) {
        return *value;
    }
    // The catalogue is loaded by now; an old one without the text gets the
    // English sentence.
    const std::vector<std::string> args{settings.IniPath(), std::string(TrimSpaces(text))};
    std::string message = MessageText(workspace.Catalogue, "MSG30-14", args);
    if (workspace.Catalogue.GetText("MSG", "MSG30-14").empty()) {
        message = FillIn("The setting \"Magazine Max\" in \"%1\" is %2, but the magazine must "
                         "have from 1 to 32767 positions. The program uses 100 positions. "
                         "Correct the setting and start again.",
                         args);
    }
    messages.Show(message, MessageIcon::Exclamation, MessageButtons::Ok, "QORTool");
    return fallback;
}

// The catalogue that "TEXT FILE" names (the information window's choice)
// when it is a file in the program's folder, else the English one. The key
// is only read: the information window alone writes it.
std::string ChosenCatalogue(const Common &settings, const std::string &appDir)
{
    const std::string name(TrimSpaces(settings.ReadIniString("Config", "TEXT FILE")));
    if (!name.empty() && name.find_first_of("\\/") == std::string::npos &&
        FileExists(appDir + name)) {
        return appDir + name;
    }
    return appDir + DefaultCatalogue;
}

// Checks and loads one catalogue into the workspace as MsgPath; 0 when
// loaded, else the exit status, after the message.
int OpenCatalogue(Workspace &workspace, const std::string &path, MessageService &messages)
{
    workspace.Globals.MsgPath = path;
    if (!FileExists(path)) {
        messages.Show(CatalogueMissingText(path), MessageIcon::Critical, MessageButtons::Ok);
        return ExitCatalogueMissing;
    }
    if (Common::GetProfileValue("Config", "Version", path) != ProgramVersion) {
        messages.Show(OldCatalogueText(path), MessageIcon::Information, MessageButtons::Ok);
    }
    if (auto loaded = workspace.Catalogue.Load(path, workspace.Globals.CodePage); !loaded) {
        messages.Show(loaded.error().message, MessageIcon::Critical, MessageButtons::Ok, "QORTool");
        return ExitCatalogueBroken;
    }
    return 0;
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
    g.IniPath = ChooseSettingsFolder(g.AppDir, overrides.userSettingsFolder) + SettingsFileName;
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
    // Before the catalogue: one that is not UTF-8 is in this code page.
    g.CodePage = CodePageOfSetting(settings.GetIniString("Files", "Code Page", "1252"));

    const std::string english = g.AppDir + DefaultCatalogue;
    const std::string catalogue = overrides.catalogue.value_or(ChosenCatalogue(settings, g.AppDir));
    int status = OpenCatalogue(workspace, catalogue, messages);
    if (status != 0 && !overrides.catalogue && catalogue != english) {
        // A chosen catalogue that cannot be loaded must not keep the program
        // from starting: after its message the English one is used.
        status = OpenCatalogue(workspace, english, messages);
    }
    if (status != 0) {
        return status;
    }

    g.MagazineMax = ReadMagazineMax(workspace, messages);
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
