#include "tool_list_commands.h"

#include "atomic_file.h"
#include "message_text.h"
#include "native_file.h"
#include "numeric_text.h"
#include "text_decoding.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace qor {

namespace {

constexpr const char *Title = "QORTool";
constexpr const char *HelpFileName = "QORTool_Help.txt";

bool FolderExists(const std::string &path)
{
    std::string folder = DirOfPath(path);
    if (folder.empty()) {
        return true; // a bare name lies in the current folder
    }
    std::error_code error;
    return std::filesystem::is_directory(NativePath(folder), error);
}

// The answer of a command that goes on without changing the table.
TableChange UnchangedTable(ChangeKind kind)
{
    TableChange change;
    change.Kind = kind;
    return change;
}

} // namespace

ToolListCommands::ToolListCommands(Workspace &workspace, MessageService &messages,
                                   ProgramStarter starter)
    : m_ws(workspace), m_messages(messages), m_starter(std::move(starter))
{}

bool ToolListCommands::Read(const std::string &path)
{
    ToolTable &table = m_ws.Table;
    // Stamped before reading, so that a change while reading shows at the save.
    const FileStamp stamp = TakeFileStamp(path);
    const ReadResult result = ReadToolListFile(table, path);
    if (result.outcome != ReadOutcome::NotFound) {
        m_ws.NewToolSlot = -1; // the table is the file's now
        m_toolsBeyondTable = result.skippedPositions > 0;
        m_lastRead = LastRead{path, stamp, result.outcome == ReadOutcome::FormatError};
    }
    switch (result.outcome) {
    case ReadOutcome::Read:
        if (m_toolsBeyondTable) {
            m_messages.Show(ToolsBeyondTableText(m_ws, result.highestSkippedMagazine),
                            MessageIcon::Information, MessageButtons::Ok, Title);
        }
        if (result.looks != FileLooks::ToolList) {
            m_messages.Show(FileLooksText(m_ws, result.looks) + "\n\n" + path,
                            MessageIcon::Information, MessageButtons::Ok, Title);
        }
        return true;
    case ReadOutcome::FormatError: {
        std::string text = m_ws.Text("MSG", "MSG7") + "\n\n" + path;
        // The line quoted in the reason is the file's bytes, in its code page.
        Error error = result.error;
        if (error.line > 0 && !error.args.empty()) {
            error.args.front() = DecodeTextFile(error.args.front(), m_ws.Globals.CodePage);
        }
        const std::string reason = ErrorText(m_ws.Catalogue, error);
        text +=
            "\n" + (result.error.line > 0 ? MessageText(m_ws.Catalogue, "MSG30-12",
                                                        {std::to_string(result.error.line), reason})
                                          : reason);
        if (result.looks != FileLooks::ToolList) {
            text += "\n\n" + FileLooksText(m_ws, result.looks);
        }
        m_messages.Show(text, MessageIcon::Exclamation);
        return false;
    }
    case ReadOutcome::NotFound:
        break;
    }

    if (path == DefaultToolListPath && m_ws.QuietDefaultRead) {
        return false;
    }
    if (TrimSpaces(path).empty()) {
        m_messages.Show(m_ws.Text("MSG", "MSG5") + m_ws.Text("MSG", "MSG10"),
                        MessageIcon::Exclamation);
        return false;
    }
    if (!FolderExists(path)) {
        m_messages.Show(m_ws.Text("MSG", "MSG6") + m_ws.Text("MSG", "MSG10") + "\n\n" + path,
                        MessageIcon::Exclamation);
        return false;
    }
    if (FileExists(path)) {
        // It is there but could not be opened: creating it would be wrong.
        m_messages.Show(ErrorText(m_ws.Catalogue, result.error), MessageIcon::Exclamation);
        return false;
    }
    const std::string question =
        m_ws.Text("MSG", "MSG5") + " " + path + "\n\n" + m_ws.Text("MSG", "MSG9");
    if (m_messages.Show(question, MessageIcon::Question, MessageButtons::YesNo, Title) !=
        MessageAnswer::Yes) {
        return false;
    }
    if (!CreateEmptyFile(path)) {
        return false;
    }
    m_lastRead = LastRead{path, TakeFileStamp(path)};
    StartAtFirstPosition();
    return true;
}

void ToolListCommands::StartAtFirstPosition()
{
    if (m_ws.Table.InitialMagazine < 1 && !m_ws.Table.Slots.empty()) {
        m_ws.Table.InitialMagazine = 1;
    }
}

bool ToolListCommands::CreateEmptyFile(const std::string &path)
{
    // Never truncate a file that appeared in the meantime.
    std::FILE *file = CreateNewFile(path);
    if (file == nullptr) {
        const int error = errno;
        m_messages.Show(
            MessageText(m_ws.Catalogue, "MSG30-13", {path, std::generic_category().message(error)}),
            MessageIcon::Exclamation);
        return false;
    }
    std::fclose(file);
    return true;
}

bool ToolListCommands::Save(const std::string &path, const std::string &magIniText, bool autoRead)
{
    if (m_toolsBeyondTable) {
        const std::string question = m_ws.Text("MSG", "MSG24-1") + " " +
                                     std::to_string(m_ws.Table.MagazineMax) + " " +
                                     m_ws.Text("MSG", "MSG24-2");
        if (m_messages.Show(question, MessageIcon::Question, MessageButtons::YesNoDefaultNo,
                            Title) != MessageAnswer::Yes) {
            return false;
        }
    }
    if (const OverwriteRisk risk = RiskOfOverwriting(path, m_lastRead);
        risk != OverwriteRisk::None) {
        const std::string question =
            path + "\n\n" + OverwriteRiskText(m_ws, risk) + "\n\n" + m_ws.Text("MSG", "MSG26-4");
        if (m_messages.Show(question, MessageIcon::Question, MessageButtons::YesNoDefaultNo,
                            Title) != MessageAnswer::Yes) {
            return false;
        }
    }
    WriteOptions options;
    options.title = m_ws.Text("String", "Str80");
    options.codePage = m_ws.Globals.CodePage;
    options.magIniText = magIniText;
    if (Status written = WriteToolListFile(m_ws.Table, path, options); !written) {
        m_messages.Show(ErrorText(m_ws.Catalogue, written.error()), MessageIcon::Exclamation,
                        MessageButtons::Ok, Title);
        return false;
    }
    // What is there now is what this run wrote: the next save asks nothing.
    m_lastRead = LastRead{path, TakeFileStamp(path)};
    m_ws.NewToolSlot = -1; // saved, the new tool stays
    StoreFileSettings(path, autoRead);
    if (!m_ws.NoQuestionAfterSave &&
        m_messages.Show(m_ws.Text("MSG", "MSG11") + m_ws.Text("MSG", "MSG12"),
                        MessageIcon::Question, MessageButtons::YesNo,
                        Title) == MessageAnswer::Yes) {
        OpenInTextEditor(path);
    }
    return true;
}

void ToolListCommands::StoreFileSettings(const std::string &path, bool autoRead)
{
    m_ws.Settings.WriteIniString("Files", "TTL File", path);
    StoreAutoRead(autoRead);
}

void ToolListCommands::StoreAutoRead(bool autoRead)
{
    m_ws.Settings.WriteIniString("Files", "Auto Read", autoRead ? "1" : "0");
}

bool ToolListCommands::Select(int row)
{
    ToolTable &table = m_ws.Table;
    if (row < 0 || row >= static_cast<int>(table.Slots.size())) {
        return false;
    }
    if (!m_ws.ExtendedKinds && table.Slots[static_cast<std::size_t>(row)].ToolKind >= KindRad) {
        m_messages.Show("It isn't being supported.", MessageIcon::Critical);
        return false;
    }
    table.CurrentSlot = static_cast<std::int16_t>(row);
    return true;
}

bool ToolListCommands::RowSelected(int row)
{
    if (row >= 0 && row < static_cast<int>(m_ws.Table.Slots.size())) {
        return true;
    }
    m_messages.Show(m_ws.Text("MSG", "MSG8"), MessageIcon::Information);
    return false;
}

std::optional<TableChange> ToolListCommands::EditChange(int row)
{
    if (!RowSelected(row)) {
        return std::nullopt;
    }
    const ToolTable &table = m_ws.Table;
    TableChange change = UnchangedTable(ChangeKind::NewTool);
    m_ws.NewToolSlot = -1;
    if (!table.Slots[static_cast<std::size_t>(row)].HasTool()) {
        change = *MakeNewTool(table, row);
        m_ws.NewToolSlot = static_cast<std::int16_t>(row);
    }
    change.Focus = {row, row};
    return change;
}

std::optional<int> ToolListCommands::Edit(int row)
{
    std::optional<TableChange> change = EditChange(row);
    if (!change) {
        return std::nullopt;
    }
    ApplyChange(m_ws.Table, *change, ChangeDirection::Redo);
    return change->Focus.After;
}

std::optional<TableChange> ToolListCommands::NewToolChange()
{
    const ToolTable &table = m_ws.Table;
    const int slot = FirstFreeSlot(table);
    if (slot < 0) {
        m_messages.Beep();
        m_messages.Show(m_ws.Text("MSG", "MSG14"), MessageIcon::Exclamation);
        return std::nullopt;
    }
    TableChange change = *MakeNewTool(table, slot);
    if (table.InitialMagazine < 1) {
        // The list shows rows from then on.
        change.Initial = BeforeAfter<std::int16_t>{table.InitialMagazine, 1};
    }
    m_ws.NewToolSlot = static_cast<std::int16_t>(slot);
    return change;
}

std::optional<int> ToolListCommands::NewTool()
{
    std::optional<TableChange> change = NewToolChange();
    if (!change) {
        return std::nullopt;
    }
    ApplyChange(m_ws.Table, *change, ChangeDirection::Redo);
    return change->Focus.After;
}

std::optional<TableChange> ToolListCommands::DeleteChange(int row)
{
    if (!RowSelected(row)) {
        return std::nullopt;
    }
    const std::string question = m_ws.Text("MSG", "MSG15-1") + " " + std::to_string(row + 1) + " " +
                                 m_ws.Text("MSG", "MSG15-2") + m_ws.Text("MSG", "MSG15-3");
    if (m_messages.Show(question, MessageIcon::Question, MessageButtons::OkCancel, Title) !=
        MessageAnswer::Ok) {
        return std::nullopt;
    }
    TableChange change = MakeDelete(m_ws.Table, row).value_or(UnchangedTable(ChangeKind::Delete));
    change.Focus = {row, row};
    return change;
}

bool ToolListCommands::Delete(int row)
{
    std::optional<TableChange> change = DeleteChange(row);
    if (!change) {
        return false;
    }
    ApplyChange(m_ws.Table, *change, ChangeDirection::Redo);
    return true;
}

void ToolListCommands::OpenHelp()
{
    const std::string path = m_ws.Globals.AppDir + HelpFileName;
    if (!FileExists(path)) {
        m_messages.Show(m_ws.Text("MSG", "MSG16"), MessageIcon::Information);
        return;
    }
    OpenInTextEditor(path, "NotePad.exe");
}

bool ToolListCommands::OpenInTextEditor(const std::string &path, std::string_view defaultProgram)
{
    const std::string program =
        std::string(TrimSpaces(m_ws.Settings.GetIniString("Exe", "Text Editer", defaultProgram)));
    if (m_starter && !program.empty() && m_starter(program, path)) {
        return true;
    }
    m_messages.Show(m_ws.Text("MSG", "MSG5") + m_ws.Text("MSG", "MSG13"), MessageIcon::Exclamation);
    return false;
}

std::optional<TableChange> ToolListCommands::MagIniChange(const std::string &text)
{
    if (TrimSpaces(text).empty()) {
        return UnchangedTable(ChangeKind::InitialMagazine);
    }
    const std::optional<double> value = ToDouble(text);
    if (value && *value == std::floor(*value) && *value >= 1 &&
        *value <= m_ws.Globals.MagazineMax) {
        return MakeInitialMagazineChange(m_ws.Table, static_cast<std::int16_t>(*value))
            .value_or(UnchangedTable(ChangeKind::InitialMagazine));
    }
    m_messages.Show(MagIniRefusalText(m_ws), MessageIcon::Exclamation);
    return std::nullopt;
}

bool ToolListCommands::CheckMagIni(const std::string &text)
{
    std::optional<TableChange> change = MagIniChange(text);
    if (!change) {
        return false;
    }
    ApplyChange(m_ws.Table, *change, ChangeDirection::Redo);
    return true;
}

std::optional<int> CancelNewTool(Workspace &workspace)
{
    const int slot = std::exchange(workspace.NewToolSlot, std::int16_t{-1});
    // A slot that the list has changed since (paste, undo) is no longer the
    // command's to take back.
    if (slot < 0 || slot >= static_cast<int>(workspace.Table.Slots.size()) ||
        !(workspace.Table.Slots[static_cast<std::size_t>(slot)] == DefaultNewTool())) {
        return std::nullopt;
    }
    ClearSlot(workspace.Table, slot);
    return slot;
}

std::string MagIniRefusalText(const Workspace &workspace)
{
    return workspace.Text("MSG", "MSG17-1") + " " + std::to_string(workspace.Globals.MagazineMax) +
           " " + workspace.Text("MSG", "MSG17-2");
}

std::string FileLooksText(const Workspace &workspace, FileLooks looks)
{
    switch (looks) {
    case FileLooks::Utf16Text:
        return workspace.Text("MSG", "MSG29-1");
    case FileLooks::Binary:
        return workspace.Text("MSG", "MSG29-2");
    case FileLooks::NoItems:
        return workspace.Text("MSG", "MSG29-3");
    case FileLooks::ToolList:
        break;
    }
    return {};
}

std::string ToolsBeyondTableText(const Workspace &workspace, int highestMagazine)
{
    return workspace.Text("MSG", "MSG23-1") + " " + std::to_string(highestMagazine) + " " +
           workspace.Text("MSG", "MSG23-2") + " " + std::to_string(workspace.Table.MagazineMax) +
           " " + workspace.Text("MSG", "MSG23-3");
}

std::string OverwriteRiskText(const Workspace &workspace, OverwriteRisk risk)
{
    switch (risk) {
    case OverwriteRisk::NotRead:
        return workspace.Text("MSG", "MSG26-1");
    case OverwriteRisk::ChangedOnDisk:
        return workspace.Text("MSG", "MSG26-2");
    case OverwriteRisk::ReadFailed:
        return workspace.Text("MSG", "MSG26-3");
    case OverwriteRisk::None:
        break;
    }
    return {};
}

bool IsAbsolutePath(std::string_view path)
{
    if (!path.empty() && (path.front() == '/' || path.front() == '\\')) {
        return true;
    }
    return path.size() >= 3 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

std::string InitialToolFileName(std::string_view commandLine, const std::string &currentDir,
                                const Common &settings)
{
    const std::string_view name = TrimSpaces(commandLine);
    if (name.empty()) {
        return settings.GetIniString("Files", "TTL File", DefaultToolListPath);
    }
    if (IsAbsolutePath(name) || currentDir.empty()) {
        return std::string(name);
    }
    std::string path = currentDir;
    if (path.back() != '/' && path.back() != '\\') {
        path += PathSeparator();
    }
    return path + std::string(name);
}

} // namespace qor
