#include "commands.h"

#include "atomic_file.h"
#include "catalogue_keys.h"
#include "code_page.h"
#include "file_stamp.h"
#include "json_output.h"
#include "message_catalogue.h"
#include "native_file.h"
#include "settings_folder.h"
#include "startup.h"
#include "table_diff.h"
#include "tool_list_commands.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"
#include "tool_table_csv.h"

#include <filesystem>
#include <ostream>
#include <vector>

namespace qor::cli {

namespace {

// Start-up messages become lines on the error stream; questions get their
// default answer, since nobody is there to click.
class ConsoleMessageService : public MessageService
{
public:
    explicit ConsoleMessageService(std::ostream &err) : m_err(err) {}

    MessageAnswer Show(const std::string &text, MessageIcon, MessageButtons buttons,
                       const std::string &) override
    {
        std::string lines;
        for (char c : text) {
            if (c != '\r') {
                lines += c;
            }
        }
        m_err << "ttltool: " << lines << '\n';
        return DefaultAnswer(buttons);
    }

private:
    std::ostream &m_err;
};

// Reads the file into the workspace's table and reports a failure the way
// compilers do, so that editors can jump to the line. Tools beyond the table
// are reported too; normalize stops there, since writing would drop them.
int ReadTable(Workspace &workspace, const Invocation &invocation, std::ostream &err)
{
    const std::string &file = invocation.file;
    const ReadResult result = ReadToolListFile(workspace.Table, file);
    if (result.outcome != ReadOutcome::NotFound && result.looks != FileLooks::ToolList) {
        err << file << ": warning: " << FileLooksText(workspace, result.looks) << '\n';
    }
    switch (result.outcome) {
    case ReadOutcome::Read:
        if (result.skippedPositions == 0) {
            return 0;
        }
        err << file << ": magazine positions up to " << result.highestSkippedMagazine
            << " lie beyond the table of " << workspace.Table.MagazineMax
            << " positions; use --magazine-max to keep them\n";
        return invocation.command == CommandKind::Normalize ? ExitToolsBeyondTable : 0;
    case ReadOutcome::NotFound:
        err << file << ": no such file\n";
        return ExitNotFound;
    case ReadOutcome::FormatError:
        break;
    }
    const Error &error = result.error;
    err << file;
    if (error.line > 0) {
        err << ':' << error.line;
    }
    err << ": " << error.message << '\n';
    if (error.line > 0) {
        err << DecodeCodePage(error.lineText, workspace.Globals.CodePage) << '\n';
    }
    return ExitFormatError;
}

int CountTools(const ToolTable &table)
{
    int count = 0;
    for (const ToolSlot &slot : table.Slots) {
        count += slot.HasTool() ? 1 : 0;
    }
    return count;
}

// The name the writer gives the backup of a foreign file; only used to tell
// the user where the original went.
std::string NextBackupName(const std::string &path)
{
    const std::string base = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
    for (int n = 1; n < 100000; ++n) {
        std::string name = base + "_org" + std::to_string(n) + ".TTL";
        std::error_code ec;
        if (!std::filesystem::exists(NativePath(name), ec)) {
            return name;
        }
    }
    return {};
}

// Nobody is there to ask, so what the editor would ask about is refused:
// writing over an existing file other than the one read (unless --overwrite),
// or over the input when it changed while it was being normalized.
bool RefuseOverwrite(const Workspace &workspace, const Invocation &invocation,
                     const std::string &target, const LastRead &input, std::ostream &err)
{
    const OverwriteRisk risk = RiskOfOverwriting(target, input);
    if (risk == OverwriteRisk::None || (risk == OverwriteRisk::NotRead && invocation.overwrite)) {
        return false;
    }
    err << target << ": " << OverwriteRiskText(workspace, risk) << ' '
        << workspace.Text("MSG", "MSG26-5");
    if (risk == OverwriteRisk::NotRead) {
        err << ' ' << workspace.Text("MSG", "MSG26-6");
    }
    err << '\n';
    return true;
}

int Normalize(Workspace &workspace, const Invocation &invocation, const LastRead &input,
              std::ostream &out, std::ostream &err)
{
    ToolTable &table = workspace.Table;
    const std::string target = invocation.output.value_or(invocation.file);
    if (RefuseOverwrite(workspace, invocation, target, input, err)) {
        return ExitNotOverwritten;
    }
    // The backup protects the file that was read; a different output file is
    // simply replaced.
    if (!SameFile(target, invocation.file)) {
        table.ForeignFile = false;
    }
    const bool backup = table.ForeignFile && FileExists(target);
    const std::string backupName = backup ? NextBackupName(target) : std::string();

    const WriteOptions options{workspace.Text("String", "Str80"),
                               std::to_string(table.InitialMagazine), workspace.Globals.CodePage};
    if (Status written = WriteToolListFile(table, target, options); !written) {
        err << written.error().message << '\n';
        return ExitWriteFailed;
    }
    out << "wrote " << target << '\n';
    if (backup && FileExists(backupName)) {
        out << "kept the original as " << backupName << '\n';
    }
    return 0;
}

int ExportCsv(const Workspace &workspace, const Invocation &invocation, std::ostream &out,
              std::ostream &err)
{
    const std::string csv = FormatToolTableCsv(workspace.Table, workspace.Globals.CodePage);
    if (!invocation.output) {
        out << csv;
        return 0;
    }
    AtomicFileWriter file;
    Status written = file.Open(*invocation.output);
    if (written) {
        file.Write(csv);
        written = file.Commit();
    }
    if (!written) {
        err << written.error().message << '\n';
        return ExitWriteFailed;
    }
    out << "wrote " << *invocation.output << '\n';
    return 0;
}

// The CSV becomes a new table, written with the save path of normalize: an
// existing file is replaced only with --overwrite, since nothing here read it.
int ImportCsv(Workspace &workspace, const Invocation &invocation, std::ostream &out,
              std::ostream &err)
{
    const LastRead input{invocation.file, TakeFileStamp(invocation.file)};
    Result<std::string> text = ReadWholeFile(invocation.file);
    if (!text) {
        err << text.error().message << '\n';
        return ExitNotFound;
    }
    // Names of the file being replaced pass unchanged, however long.
    const std::string &target = *invocation.output;
    ToolTable replaced = workspace.Table;
    const bool known =
        FileExists(target) && ReadToolListFile(replaced, target).outcome == ReadOutcome::Read;
    const CsvImportOptions options{workspace.Table.MagazineMax, workspace.Globals.CodePage,
                                   workspace.Globals.SupportPenMax, known ? &replaced : nullptr};
    CsvImport imported = ParseToolTableCsv(text.value(), options);
    if (!imported.ok()) {
        err << invocation.file << ": " << CsvRefusalText(workspace.Catalogue, *imported.Refusal)
            << '\n';
        return ExitCsvRefused;
    }
    if (RefuseOverwrite(workspace, invocation, target, input, err)) {
        return ExitNotOverwritten;
    }
    ToolTable &table = imported.Table;
    table.KindNames = workspace.Table.KindNames;
    table.ArborTypeNames = workspace.Table.ArborTypeNames;
    const WriteOptions write{workspace.Text("String", "Str80"),
                             std::to_string(table.InitialMagazine), workspace.Globals.CodePage};
    if (Status written = WriteToolListFile(table, target, write); !written) {
        err << written.error().message << '\n';
        return ExitWriteFailed;
    }
    out << "wrote " << target << '\n';
    return 0;
}

// Any trouble reading either file is status 2, so that 1 always means the
// tables differ.
int Diff(Workspace &workspace, const Invocation &invocation, std::ostream &out, std::ostream &err)
{
    const std::int16_t initial = workspace.Table.InitialMagazine;
    if (ReadTable(workspace, invocation, err) != 0) {
        return ExitDiffTrouble;
    }
    const ToolTable before = workspace.Table;
    Invocation second = invocation;
    second.file = invocation.secondFile;
    workspace.Table.InitialMagazine = initial; // a file without an INI line keeps it
    if (ReadTable(workspace, second, err) != 0) {
        return ExitDiffTrouble;
    }
    const auto diffs = DiffToolTables(before, workspace.Table, workspace.Globals.CodePage);
    out << FormatTableDiff(diffs, DiffWordsOf(workspace.Catalogue));
    return diffs.empty() ? 0 : ExitTablesDiffer;
}

// The code page that the settings name, read where the program reads them
// and without writing anything: the check changes nothing.
int ConfiguredCodePage(const std::string &appDir, const std::string &userFolder)
{
    return CodePageOfSetting(
        Common::GetProfileValue("Files", "Code Page", SettingsFileToRead(appDir, userFolder)));
}

// Warns of title characters that every saved file gets as "?".
void CheckTitle(const MessageCatalogue &catalogue, const std::string &file, int codePage,
                std::ostream &err)
{
    const std::string title = catalogue.GetText("String", "Str80");
    std::vector<std::string> unheld;
    EncodeCodePageReplacing(title, codePage, &unheld);
    if (unheld.empty()) {
        return;
    }
    err << file << ": warning: Str80 \"" << title << "\": " << catalogue.GetText("MSG", "MSG27-4")
        << ' ' << codePage << ':';
    for (std::size_t i = 0; i < unheld.size(); ++i) {
        err << (i == 0 ? " \"" : ", \"") << unheld[i] << "\" (" << CodePointName(unheld[i]) << ')';
    }
    err << '\n';
}

int CatalogueCheck(const std::string &file, const std::string &appDir,
                   const std::string &userFolder, std::ostream &out, std::ostream &err)
{
    const int codePage = ConfiguredCodePage(appDir, userFolder);
    MessageCatalogue catalogue;
    if (Status loaded = catalogue.Load(file, codePage); !loaded) {
        err << loaded.error().message << '\n';
        return ExitCatalogueBroken;
    }

    const std::string version = Common::GetProfileValue("Config", "Version", file);
    out << "Version: " << BytesToUtf8(version, codePage) << '\n';
    if (version != ProgramVersion) {
        err << file << ": version "
            << (version.empty() ? "missing" : BytesToUtf8(version, codePage))
            << ", this program is " << ProgramVersion << '\n';
    }
    CheckTitle(catalogue, file, codePage, err);

    std::size_t missing = 0;
    for (const CatalogueKey &key : CatalogueKeys()) {
        if (catalogue.GetText(key.section, key.key).empty()) {
            out << key.section << ' ' << key.key << '\n';
            ++missing;
        }
    }
    if (missing > 0) {
        err << file << ": " << missing << " of " << CatalogueKeys().size() << " texts are empty\n";
        return ExitKeysMissing;
    }
    return 0;
}

} // namespace

int RunInvocation(const Invocation &invocation, const std::string &appDir, std::ostream &out,
                  std::ostream &err, PictureWriterFactory makeWriter)
{
    const bool draws =
        invocation.command == CommandKind::Render || invocation.command == CommandKind::Sheet;
    if (draws && makeWriter == nullptr) {
        err << "ttltool: " << (invocation.command == CommandKind::Sheet ? "sheet" : "render")
            << " is not available: this ttltool was built without Qt\n";
        return ExitUsage;
    }
    if (invocation.command == CommandKind::CatalogueCheck) {
        return CatalogueCheck(invocation.file, appDir, invocation.overrides.userSettingsFolder, out,
                              err);
    }
    if (invocation.command == CommandKind::Help) {
        out << HelpText();
        return 0;
    }

    Workspace workspace;
    ConsoleMessageService messages(err);
    if (RunStartup(workspace, appDir, messages, invocation.overrides) != 0) {
        return ExitStartupFailed;
    }
    if (invocation.command == CommandKind::ImportCsv) {
        return ImportCsv(workspace, invocation, out, err);
    }
    if (invocation.command == CommandKind::Diff) {
        return Diff(workspace, invocation, out, err);
    }
    // Stamped before reading, so that normalize notices a change made meanwhile.
    const LastRead input{invocation.file, TakeFileStamp(invocation.file)};
    if (int status = ReadTable(workspace, invocation, err); status != 0) {
        return status;
    }

    const ToolTable &table = workspace.Table;
    switch (invocation.command) {
    case CommandKind::Check:
        out << invocation.file << ": read, " << CountTools(table) << " of " << table.MagazineMax
            << " positions hold a tool\n";
        return 0;
    case CommandKind::Dump:
        out << TableToJson(table, invocation.file, workspace.Globals.CodePage);
        return 0;
    case CommandKind::Normalize:
        return Normalize(workspace, invocation, input, out, err);
    case CommandKind::Render:
        return Render(workspace, invocation, makeWriter, out, err);
    case CommandKind::Sheet:
        return Sheet(workspace, invocation, makeWriter, out, err);
    case CommandKind::ExportCsv:
        return ExportCsv(workspace, invocation, out, err);
    default:
        return 0;
    }
}

} // namespace qor::cli
