#include "recovery_file.h"

#include "atomic_file.h"
#include "common.h"
#include "message_text.h"
#include "native_file.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>
#include <type_traits>

// The file is text: a first line naming what it is, lines "key=value" up to
// a blank line, then the items of the touched positions as the tool list
// writer writes them, which the tool list reader reads back.
//
//   QORTool recovery 1
//   File=C:\HOLBENMILL\Atc.ttl
//   Stamp=1 10452 133525126581234567 2049 1837 0
//   Positions=3,7-9
//   Tools=3
//   Size=1234
//   InitialMagazine=5          (only when it changed)
//   FileArbor=1                (only when it changed)
//
//   MAGAZINE03 = BAL/10,20
//   ...
//
// "Positions" lists magazine numbers, ascending, runs as "first-last"; a
// listed position without items in the body was emptied. "Tools" counts the
// listed positions that hold a tool, and "Size" the bytes of the body, so
// that a body cut short or mixed up is noticed.

namespace qor {

namespace {

constexpr std::string_view Magic = "QORTool recovery 1";
constexpr std::string_view LineEnd = "\r\n";
constexpr std::uintmax_t MaxRecoverySize = std::uintmax_t{256} << 20;
constexpr int MagazineNumberMax = 32767;

using TimeCount = std::filesystem::file_time_type::rep;
static_assert(std::is_integral_v<TimeCount>);

// The path on one line: control characters and "%" as "%XX".
std::string EscapePath(std::string_view path)
{
    static constexpr char Hex[] = "0123456789ABCDEF";
    std::string escaped;
    for (char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || c == '%') {
            escaped += '%';
            escaped += Hex[byte >> 4];
            escaped += Hex[byte & 15];
        } else {
            escaped += c;
        }
    }
    return escaped;
}

int HexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return -1;
}

std::optional<std::string> UnescapePath(std::string_view text)
{
    std::string path;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            path += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
        if (low < 0) {
            return std::nullopt;
        }
        path += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return path;
}

template <typename T> void AppendNumber(std::string &out, T value)
{
    char buffer[48];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, written.ptr);
}

// Magazine numbers of ascending slot indices, runs joined: "3,7-9".
std::string PositionList(const std::vector<int> &slots)
{
    std::string list;
    for (std::size_t i = 0; i < slots.size();) {
        std::size_t last = i;
        while (last + 1 < slots.size() && slots[last + 1] == slots[last] + 1) {
            ++last;
        }
        if (!list.empty()) {
            list += ',';
        }
        AppendNumber(list, slots[i] + 1);
        if (last > i) {
            list += '-';
            AppendNumber(list, slots[last] + 1);
        }
        i = last + 1;
    }
    return list;
}

// A whole decimal number, nothing else.
template <typename T> std::optional<T> WholeNumber(std::string_view text)
{
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::vector<int>> ParsePositions(std::string_view text)
{
    std::vector<int> slots;
    int previous = 0;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        const std::string_view run = text.substr(0, comma);
        const std::size_t dash = run.find('-');
        const auto first = WholeNumber<int>(run.substr(0, dash));
        const auto last =
            dash == std::string_view::npos ? first : WholeNumber<int>(run.substr(dash + 1));
        if (!first || !last || *first <= previous || *last < *first || *last > MagazineNumberMax ||
            (comma != std::string_view::npos && comma + 1 == text.size())) {
            return std::nullopt;
        }
        for (int n = *first; n <= *last; ++n) {
            slots.push_back(n - 1);
        }
        previous = *last;
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    }
    return slots;
}

std::string StampText(const LastRead &source)
{
    const FileStamp &stamp = source.stamp;
    std::string text;
    AppendNumber(text, stamp.exists ? 1 : 0);
    text += ' ';
    AppendNumber(text, stamp.size);
    text += ' ';
    AppendNumber(text, stamp.modified.time_since_epoch().count());
    text += ' ';
    AppendNumber(text, stamp.device);
    text += ' ';
    AppendNumber(text, stamp.index);
    text += ' ';
    AppendNumber(text, source.failed ? 1 : 0);
    return text;
}

bool ParseStamp(std::string_view text, LastRead &source)
{
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, blank));
        text = blank < text.size() ? text.substr(blank + 1) : std::string_view();
    }
    if (words.size() != 6) {
        return false;
    }
    const auto exists = WholeNumber<int>(words[0]);
    const auto size = WholeNumber<std::uintmax_t>(words[1]);
    const auto modified = WholeNumber<TimeCount>(words[2]);
    const auto device = WholeNumber<std::uint64_t>(words[3]);
    const auto index = WholeNumber<std::uint64_t>(words[4]);
    const auto failed = WholeNumber<int>(words[5]);
    if (!exists || !size || !modified || !device || !index || !failed || *exists > 1 ||
        *failed > 1 || *exists < 0 || *failed < 0) {
        return false;
    }
    source.stamp.exists = *exists == 1;
    source.stamp.size = *size;
    source.stamp.modified =
        std::filesystem::file_time_type(std::filesystem::file_time_type::duration(*modified));
    source.stamp.device = *device;
    source.stamp.index = *index;
    source.failed = *failed == 1;
    return true;
}

// The next line of `rest` without its end, which it drops from `rest`;
// nothing when `rest` has no complete line.
std::optional<std::string_view> NextLine(std::string_view &rest)
{
    const std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

Error Broken(std::string what)
{
    return Error("the file is not a complete recovery: " + what);
}

} // namespace

std::string RecoveryFilePath(const std::string &iniPath)
{
    const std::string folder = DirOfPath(iniPath);
    std::string name = iniPath.substr(folder.size());
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos && dot > 0) {
        name.resize(dot);
    }
    return folder + (name.empty() ? "QorTool" : name) + ".recovery";
}

std::string FormatRecovery(const ToolTable &table, const UnsavedChanges &changes,
                           const LastRead &source)
{
    std::vector<int> slots = changes.Slots();
    std::erase_if(
        slots, [&table](int slot) { return static_cast<std::size_t>(slot) >= table.Slots.size(); });
    int tools = 0;
    for (int slot : slots) {
        tools += table.Slots[static_cast<std::size_t>(slot)].HasTool() ? 1 : 0;
    }
    std::string out;
    out.reserve(256 + slots.size() * 8);
    out.append(Magic).append(LineEnd);
    out.append("File=").append(EscapePath(source.path)).append(LineEnd);
    out.append("Stamp=").append(StampText(source)).append(LineEnd);
    out.append("Positions=").append(PositionList(slots)).append(LineEnd);
    out.append("Tools=");
    AppendNumber(out, tools);
    out.append(LineEnd);
    if (changes.InitialMagazineChanged()) {
        out.append("InitialMagazine=");
        AppendNumber(out, table.InitialMagazine);
        out.append(LineEnd);
    }
    if (changes.FileArborChanged()) {
        out.append("FileArbor=1").append(LineEnd);
    }
    std::string body;
    body.reserve(slots.size() * 256);
    AppendToolListItems(table, slots, changes.FileArborChanged(), body);
    out.append("Size=");
    AppendNumber(out, body.size());
    out.append(LineEnd);
    out.append(LineEnd);
    out += body;
    return out;
}

Status WriteRecoveryFile(const std::string &path, const ToolTable &table,
                         const UnsavedChanges &changes, const LastRead &source)
{
    if (!changes.Any()) {
        return RemoveRecoveryFile(path);
    }
    return WriteFileAtomically(path, FormatRecovery(table, changes, source));
}

Result<Recovery> ParseRecovery(std::string_view bytes)
{
    std::string_view rest = bytes;
    if (NextLine(rest) != Magic) {
        return Broken("its first line is not \"" + std::string(Magic) + "\".");
    }
    Recovery recovery;
    bool file = false;
    bool stamp = false;
    std::optional<std::vector<int>> slots;
    std::optional<int> tools;
    std::optional<std::size_t> size;
    bool fileArbor = false;
    for (;;) {
        const std::optional<std::string_view> line = NextLine(rest);
        if (!line) {
            return Broken("the blank line after its header is missing.");
        }
        if (line->empty()) {
            break;
        }
        const std::size_t equals = line->find('=');
        const std::string_view key = line->substr(0, equals);
        const std::string_view value =
            equals == std::string_view::npos ? std::string_view() : line->substr(equals + 1);
        if (key == "File") {
            std::optional<std::string> path = UnescapePath(value);
            file = path.has_value();
            recovery.Source.path = path.value_or("");
        } else if (key == "Stamp") {
            stamp = ParseStamp(value, recovery.Source);
        } else if (key == "Positions") {
            slots = ParsePositions(value);
        } else if (key == "Tools") {
            tools = WholeNumber<int>(value);
        } else if (key == "Size") {
            size = WholeNumber<std::size_t>(value);
        } else if (key == "InitialMagazine") {
            recovery.InitialMagazine = WholeNumber<std::int16_t>(value);
            if (!recovery.InitialMagazine || *recovery.InitialMagazine < 0) {
                return Broken("its initial magazine number is no number from 0 to 32767.");
            }
        } else if (key == "FileArbor") {
            fileArbor = value == "1";
        }
    }
    if (!file || !stamp || !slots || !tools || !size) {
        return Broken("its header lacks the file, its stamp, the positions, their tools or the "
                      "size of its items.");
    }
    if (rest.size() != *size) {
        return Broken("its items are not as long as its header says.");
    }

    ToolTable read;
    SizeToolTable(read, static_cast<std::int16_t>(slots->empty() ? 0 : slots->back() + 1));
    const ReadResult result = ReadToolListText(read, rest);
    if (result.outcome != ReadOutcome::Read) {
        return Broken("its items do not read: " + result.error.message);
    }
    int listedTools = 0;
    for (int slot : *slots) {
        listedTools += read.Slots[static_cast<std::size_t>(slot)].HasTool() ? 1 : 0;
    }
    const int allTools = static_cast<int>(std::count_if(
        read.Slots.begin(), read.Slots.end(), [](const ToolSlot &slot) { return slot.HasTool(); }));
    if (result.skippedPositions > 0 || allTools != listedTools || listedTools != *tools) {
        return Broken("its items do not match the positions it lists.");
    }
    recovery.Contents.reserve(slots->size());
    for (int slot : *slots) {
        recovery.Contents.push_back(std::move(read.Slots[static_cast<std::size_t>(slot)]));
    }
    recovery.Slots = std::move(*slots);
    if (fileArbor) {
        recovery.Arbor = FileArborOf(read);
    }
    return recovery;
}

Result<std::optional<Recovery>> ReadRecoveryFile(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::exists(NativePath(path), error) && !error) {
        return std::optional<Recovery>();
    }
    Result<std::string> bytes = ReadWholeFile(path, MaxRecoverySize);
    Result<Recovery> recovery =
        bytes ? ParseRecovery(bytes.value()) : Result<Recovery>(bytes.error());
    if (!recovery) {
        return KeyedError("MSG34-5", {path},
                          "The unsaved changes kept in \"" + path +
                              "\" cannot be restored: " + recovery.error().message);
    }
    return std::optional<Recovery>(std::move(recovery.value()));
}

Status RemoveRecoveryFile(const std::string &path)
{
    std::error_code error;
    std::filesystem::remove(NativePath(path), error);
    if (error) {
        return KeyedError("MSG30-2", {path, error.message()},
                          "Cannot write \"" + path + "\": " + error.message() + ".");
    }
    return Success();
}

std::string RecoveryWriteFailureText(const Workspace &ws, const std::string &path,
                                     const Error &error)
{
    return MessageText(ws.Catalogue, "MSG34-4", {path, ErrorText(ws.Catalogue, error)});
}

RecoverySourceState SourceState(const Recovery &recovery)
{
    const FileStamp now = TakeFileStamp(recovery.Source.path);
    if (!now.exists) {
        return RecoverySourceState::Missing;
    }
    return now == recovery.Source.stamp ? RecoverySourceState::Unchanged
                                        : RecoverySourceState::Changed;
}

std::optional<TableChange> MakeRestoreChange(const ToolTable &table, const Recovery &recovery)
{
    TableChange change;
    change.Kind = ChangeKind::Restore;
    for (std::size_t i = 0; i < recovery.Slots.size() && i < recovery.Contents.size(); ++i) {
        const int slot = recovery.Slots[i];
        if (slot < 0 || static_cast<std::size_t>(slot) >= table.Slots.size()) {
            continue;
        }
        const ToolSlot &now = table.Slots[static_cast<std::size_t>(slot)];
        if (now != recovery.Contents[i]) {
            change.Slots.push_back({slot, now, recovery.Contents[i]});
        }
    }
    if (recovery.Arbor && *recovery.Arbor != FileArborOf(table)) {
        change.Arbor = BeforeAfter<FileArbor>{FileArborOf(table), *recovery.Arbor};
    }
    if (recovery.InitialMagazine && *recovery.InitialMagazine != table.InitialMagazine) {
        change.Initial =
            BeforeAfter<std::int16_t>{table.InitialMagazine, *recovery.InitialMagazine};
    }
    if (change.Empty()) {
        return std::nullopt;
    }
    if (!change.Slots.empty()) {
        change.Focus = {change.Slots.front().Slot, change.Slots.front().Slot};
    }
    return change;
}

std::string RecoveryQuestionText(const Workspace &ws, const Recovery &recovery)
{
    std::string text = MessageText(ws.Catalogue, "MSG34-1",
                                   {recovery.Source.path, std::to_string(recovery.Slots.size())});
    switch (SourceState(recovery)) {
    case RecoverySourceState::Changed:
        text += "\n\n" + MessageText(ws.Catalogue, "MSG34-2", {recovery.Source.path});
        break;
    case RecoverySourceState::Missing:
        text += "\n\n" + MessageText(ws.Catalogue, "MSG34-3", {recovery.Source.path});
        break;
    case RecoverySourceState::Unchanged:
        break;
    }
    return text;
}

} // namespace qor
