#pragma once

#include "code_page.h"
#include "common.h"
#include "message_catalogue.h"
#include "tool_table.h"

#include <array>
#include <cstdint>
#include <string>

namespace qor {

inline constexpr const char *ProgramVersion = "1.70";
inline constexpr const char *DefaultToolListPath = "C:\\HOLBENMILL\\Atc.ttl";

// What start-up reads from the settings file, and the paths it derives.
struct StartupGlobals
{
    std::string AppDir; // ends in the path separator
    std::string IniPath;
    std::string MsgPath;
    std::string WorkDir;
    bool StartFlag = false;
    std::int16_t ColumnHeaderFontSize = 8;
    std::int16_t TextBoxFontSize = 11;
    std::int16_t ListViewFontSize = 9;
    std::int16_t ButtonFontSize = 11;
    bool ButtonFontBold = true;
    std::int16_t SupportPenMax = 16;
    std::int16_t MagazineMax = 100;
    // "Code Page" of section "Files": the Windows code page of tool list
    // files (tool names, the title line) and of catalogues that are not UTF-8.
    int CodePage = DefaultCodePage;
};

// Everything the program holds for the whole run: one per process, made by
// `Main`, and a fresh one in every test.
struct Workspace
{
    StartupGlobals Globals;
    Common Settings;
    MessageCatalogue Catalogue;
    ToolTable Table;
    std::array<std::string, 2> ArborFlagCaptions; // arbor section flag off / on

    // Redraw guards: while any of the first three is set nothing is drawn.
    bool DrawSuppressed = false;
    bool EditorBusy = false;
    bool DrawHold = false;
    bool ArborOnlyMode = false; // the list window draws the file-level arbor alone
    bool ArborEdit = false;     // the editor edits the file-level arbor
    // A Para change rule writes another Para box; Para changes do nothing.
    bool ParaChangeGuard = false;

    bool ExtendedKinds = false;    // kinds 8 and 9 may be opened
    bool TenthKindOffered = false; // the editor's kind list offers "T-T"
    bool QuietDefaultRead = false; // no message when the default file is missing
    bool NoQuestionAfterSave = false;

    // The slot that the list's Edit or New tool command filled with the
    // default new tool before opening the editor on it, until a store keeps
    // the tool; -1 for none. Cancelling the editor empties it again.
    std::int16_t NewToolSlot = -1;

    // Shorthand for Catalogue.GetText.
    std::string Text(std::string_view section, std::string_view key) const
    {
        return Catalogue.GetText(section, key);
    }
};

} // namespace qor
