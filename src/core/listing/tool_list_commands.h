#pragma once

#include "file_stamp.h"
#include "message_service.h"
#include "table_change.h"
#include "tool_list_reader.h"
#include "workspace.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace qor {

// Starts `program` with `path` as its one argument, without waiting for it;
// false when it could not be started.
using ProgramStarter = std::function<bool(const std::string &program, const std::string &path)>;

// The commands of the tool list window over the workspace. Rows are slot
// indices (magazine number - 1); -1 means no row is selected. Every message
// goes through the message service; nothing here opens a window, so the
// window only turns what these return into list updates and editor calls.
class ToolListCommands
{
public:
    ToolListCommands(Workspace &workspace, MessageService &messages, ProgramStarter starter);

    void SetProgramStarter(ProgramStarter starter) { m_starter = std::move(starter); }

    // Read: loads the tool list file into the table. True when the list must
    // be rebuilt: the file was read, or a missing file was created on the
    // user's request (the table then keeps its contents, and starts at
    // position 1 when it had no initial magazine yet). False when nothing
    // the list shows changed, and after a format error, which the message
    // reports with the line: the list then keeps showing the table as it was,
    // while the table holds what was read before the faulty line. A file
    // with tools beyond the table ("Magazine Max") is read without them, and
    // "MSG23" says so.
    bool Read(const std::string &path);

    // Save: writes the table to the file, stores "TTL File" and "Auto Read",
    // and offers to open the file in the text editor (unless the workspace's
    // NoQuestionAfterSave is set). False when the file could not be written:
    // the message names the file and the reason, and the old file, the table
    // and the settings are left as they were. While the table comes from a
    // file whose tools beyond the table were skipped, it first asks ("MSG24",
    // default No); any other answer returns false with nothing written.
    // Then, when a file is at `path` that this object did not read last, that
    // changed since it was read, or whose read stopped at a format error, it
    // asks whether to overwrite it ("MSG26", default No), with the same
    // outcome for any answer but Yes.
    bool Save(const std::string &path, const std::string &magIniText, bool autoRead);

    // Stores "TTL File" and "Auto Read" in section "Files" of the settings.
    void StoreFileSettings(const std::string &path, bool autoRead);
    void StoreAutoRead(bool autoRead);

    // A table that has no initial magazine yet (nothing was read) starts at
    // position 1, so that the list has rows to show its tools in.
    void StartAtFirstPosition();

    // A row was chosen in the list: it becomes the current slot. False, with a
    // message and nothing changed, for a kind the program does not support.
    bool Select(int row);

    // Edit: the slot to open in the editor, which becomes the current slot;
    // an empty position first receives the default new tool, and becomes the
    // workspace's NewToolSlot. Nothing, after "MSG8", when no row is selected.
    std::optional<int> Edit(int row);

    // New tool: the first free slot, current, holding the default new tool
    // and the workspace's NewToolSlot; nothing, after a beep and "MSG14",
    // when the magazine is full. A table without an initial magazine then
    // starts at position 1.
    std::optional<int> NewTool();

    // Delete: asks, then empties the slot. True when the tool was deleted.
    bool Delete(int row);

    // The same four commands for an undo stack: each asks and answers as its
    // namesake above, but leaves the table as it is and returns the change
    // the command makes, for the window to push (the stack's redo makes it).
    // Nothing when the command was refused or cancelled; an Empty() change
    // when it goes on without changing the table (editing a position that
    // holds a tool, deleting an empty one, an empty or unchanged MagIni box).
    // The change's Focus.After is the position to open in the editor. New
    // tool and Edit also set the workspace's NewToolSlot as their namesakes.
    std::optional<TableChange> NewToolChange();
    std::optional<TableChange> EditChange(int row);
    std::optional<TableChange> DeleteChange(int row);
    std::optional<TableChange> MagIniChange(const std::string &text);

    // The file read, created or saved last, as it was then; nothing before
    // the first. What a recovery of unsaved changes names.
    const std::optional<LastRead> &LastFile() const { return m_lastRead; }

    // Help: opens the help file in the text editor, or shows "MSG16" when it
    // is missing.
    void OpenHelp();

    // Opens a file in the configured text editor; "MSG5" and "MSG13" when it
    // cannot be started. `defaultProgram` is written to the settings when
    // no editor is configured.
    bool OpenInTextEditor(const std::string &path, std::string_view defaultProgram = "Notepad.exe");

    // The initial magazine box was left. Empty text is accepted; otherwise it
    // must be a whole number from 1 to MagazineMax, which becomes the table's
    // InitialMagazine (so that a rebuild of the list shows it again). Any
    // other text is refused with a message; the table is left as it was.
    bool CheckMagIni(const std::string &text);

private:
    bool RowSelected(int row);
    bool CreateEmptyFile(const std::string &path);

    Workspace &m_ws;
    MessageService &m_messages;
    ProgramStarter m_starter;
    // The last read skipped tools beyond the table, so saving drops them.
    bool m_toolsBeyondTable = false;
    // The file read, created or saved last: what a save may overwrite
    // without asking.
    std::optional<LastRead> m_lastRead;
};

// The editor was cancelled: the workspace's NewToolSlot, filled by Edit or New
// tool and since kept by no store, save or read, is emptied again and
// forgotten. Returns that slot; nothing when there was none or it no longer
// holds the default new tool (the list changed it meanwhile).
std::optional<int> CancelNewTool(Workspace &workspace);

// The tool list file the list window starts with: the command line when it
// names one (a relative name is taken from `currentDir`), else the "TTL File"
// setting.
std::string InitialToolFileName(std::string_view commandLine, const std::string &currentDir,
                                const Common &settings);

// True for a path that names its folder fully: a drive ("C:\", "C:/"), a
// network share ("\\"), or a root ("/", "\").
bool IsAbsolutePath(std::string_view path);

// The text of the initial magazine refusal: "MSG17-1", the highest number,
// "MSG17-2".
std::string MagIniRefusalText(const Workspace &workspace);

// What a file that does not look like a tool list seems to be ("MSG29-1"
// UTF-16 text, "MSG29-2" binary data, "MSG29-3" no item recognised); "" for
// a tool list.
std::string FileLooksText(const Workspace &workspace, FileLooks looks);

// The text that a read skipped tools up to `highestMagazine`: "MSG23-1", the
// number, "MSG23-2", the table's size, "MSG23-3".
std::string ToolsBeyondTableText(const Workspace &workspace, int highestMagazine);

// Why writing over a file loses what nobody has seen: "MSG26-1" (not the file
// read last), "MSG26-2" (changed since) or "MSG26-3" (its read failed); empty
// for OverwriteRisk::None.
std::string OverwriteRiskText(const Workspace &workspace, OverwriteRisk risk);

} // namespace qor
