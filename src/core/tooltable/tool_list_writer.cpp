#include "tool_list_writer.h"

#include "atomic_file.h"
#include "native_file.h"
#include "numeric_text.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <initializer_list>
#include <string_view>
#include <system_error>

namespace qor {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t ChunkSize = 64 * 1024;
constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view ProgramVersion = "1.70";
constexpr std::size_t TitleWidth = 24;
constexpr std::string_view Stars = "********************";

void AppendInteger(std::string &out, int value)
{
    char buffer[16];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

// The picture "#00" for the positive numbers a writer loop produces.
void AppendTwoDigits(std::string &out, int value)
{
    if (value >= 0 && value < 10) {
        out += '0';
    }
    AppendInteger(out, value);
}

// Characters, not bytes, decide the title's fill: counted in the UTF-8 title,
// since each becomes one character of the code page or one "?".
std::size_t CharacterCount(std::string_view text)
{
    std::size_t count = 0;
    for (char c : text) {
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }
    return count;
}

class ToolListFormatter
{
public:
    explicit ToolListFormatter(std::string &out) : m_out(out) {}

    void Header(const ToolTable &table, const WriteOptions &options)
    {
        m_out += '#';
        m_out += Stars.substr(0, 20);
        m_out += "   ";
        m_out += EncodeCodePageReplacing(options.title, options.codePage);
        std::size_t length = CharacterCount(options.title);
        if (length < TitleWidth) {
            m_out.append(TitleWidth - length, ' ');
        }
        m_out += Stars.substr(0, 20);
        m_out += LineEnd;

        m_out += '#';
        m_out += Stars.substr(0, 20);
        m_out += "     edited with QORTool   ";
        m_out += Stars.substr(0, 7);
        m_out += 'V';
        m_out += ProgramVersion;
        m_out += Stars.substr(0, 8);
        m_out += LineEnd;

        // An empty or unreadable box keeps the number the table already has.
        std::int16_t initial = ToInt16(options.magIniText).value_or(table.InitialMagazine);
        m_out += "INI = MAGAZINE";
        m_out += FormatPicture(initial, "#00");
        m_out += LineEnd;
    }

    void FileArbor(const ToolTable &table)
    {
        if (table.DefaultArborType >= 1) {
            Arbor(table.DefaultArborType, table.DefaultArbor);
        }
    }

    void Tool(const ToolTable &table, std::size_t slot, const ToolSlot &tool)
    {
        ToolLine(table, slot, tool);
        Length(tool);
        if (tool.ArborMode > 0 && tool.Arbor.Dia[0] > 0) {
            Arbor(tool.ArborMode, tool.Arbor);
        }
        if (tool.ShiftOn != 0) {
            m_out += "SHIFT/";
            AppendSingleText(m_out, tool.ShiftValue);
            m_out += LineEnd;
        }
        if (tool.PenNo > 0) {
            m_out += "PEN/";
            AppendInteger(m_out, tool.PenNo);
            m_out += LineEnd;
        }
        for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
            if (tool.OptFeedOn[letter] != 0) {
                OptionFeed(letter, tool.OptFeedPos[letter], tool.OptFeedVal[letter]);
            }
        }
        Limit(tool);
    }

private:
    void List(std::initializer_list<float> values)
    {
        bool first = true;
        for (float value : values) {
            if (!first) {
                m_out += ',';
            }
            first = false;
            AppendSingleText(m_out, value);
        }
    }

    // Param6, and ";" Param7 behind it only when both mean something.
    void Pair(const ToolSlot &tool)
    {
        AppendSingleText(m_out, tool.Param6);
        if (tool.Param6 > 0 && tool.Param7 != 0) {
            m_out += ';';
            AppendSingleText(m_out, tool.Param7);
        }
    }

    void ToolLine(const ToolTable &table, std::size_t slot, const ToolSlot &tool)
    {
        m_out += "MAGAZINE";
        AppendTwoDigits(m_out, static_cast<int>(slot) + 1);
        m_out += " = ";
        // The catalogue decides the word; a catalogue that lacks one would
        // make the line unreadable, so the reader's own word stands in.
        const std::string &name = table.KindNames[static_cast<std::size_t>(tool.ToolKind) + 1];
        m_out += name.empty() ? KindWords[static_cast<std::size_t>(tool.ToolKind)] : name;
        m_out += '/';
        switch (tool.ToolKind) {
        case KindCut:
            List({tool.ToolDia, tool.CornerRad, tool.Param3, tool.Param4, tool.Param5});
            m_out += ',';
            Pair(tool);
            m_out += ',';
            AppendSingleText(m_out, tool.ToolLength);
            break;
        case KindTap:
            AppendSingleText(m_out, tool.CornerRad);
            m_out += ',';
            Pair(tool);
            m_out += ',';
            AppendSingleText(m_out, tool.ToolLength);
            break;
        case KindBul:
            List({tool.ToolDia, tool.CornerRad, tool.ToolLength});
            break;
        case KindVer:
            List({tool.ToolDia, tool.Param7, tool.ToolLength});
            break;
        case KindOva:
            List({tool.ToolDia, tool.CornerRad, tool.Param7, tool.ToolLength});
            break;
        case KindRad:
            List({tool.ToolDia, tool.CornerRad, tool.Param7});
            break;
        case KindTT:
            List({tool.ToolDia, tool.ToolLength, tool.CornerRad, tool.Param5, tool.Param7});
            break;
        default: // "BAL", "FLA", "KEG"
            List({tool.ToolDia, tool.ToolLength});
            break;
        }
        std::string_view comment = TrimSpaces(tool.ToolComment);
        if (!comment.empty()) {
            m_out += ",\"";
            m_out += comment;
            m_out += '"';
        }
        m_out += LineEnd;
    }

    void Length(const ToolSlot &tool)
    {
        const auto &len = tool.Len;
        switch (tool.LengthMode) {
        case 0:
            return;
        case 1:
            m_out += "LENGTH/";
            AppendSingleText(m_out, len[0]);
            break;
        case 2:
            m_out += "LENGTH2/";
            List({len[0], len[2], len[3], len[1]});
            break;
        case 3:
            m_out += "LENGTH3/";
            List({len[0], len[3], len[5], len[2], len[4], len[1]});
            break;
        default:
            return; // a mode no file can carry (FormatTable drops it)
        }
        m_out += LineEnd;
    }

    // Sections while the diameters do not shrink; the eleventh has no length.
    void Arbor(std::int16_t type, const ArborSections &arbor)
    {
        m_out += "ARBOR";
        if (type == 2) {
            m_out += '2';
        } else if (type == 3) {
            m_out += '3';
        }
        m_out += '/';
        for (int i = 0; i < ArborDiameterCount; ++i) {
            if (i == 0 ? !(static_cast<double>(arbor.Dia[0]) >= 0.001)
                       : !(arbor.Dia[i] >= arbor.Dia[i - 1])) {
                break;
            }
            if (i > 0) {
                m_out += ',';
            }
            AppendSingleText(m_out, arbor.Dia[i]);
            if (i < ArborSectionCount) {
                m_out += ',';
                AppendSingleText(m_out, arbor.Len[i]);
                if (type == 3) {
                    m_out += ',';
                    AppendInteger(m_out, arbor.Flag[i]);
                }
            }
        }
        m_out += LineEnd;
    }

    // Breakpoints up to the first one followed by a smaller one.
    void OptionFeed(int letter, const std::array<float, OptFeedPointCount> &pos,
                    const std::array<float, OptFeedValueCount> &val)
    {
        m_out += "OPT-F(";
        m_out += OptFeedLetters[letter];
        m_out += ")/";
        AppendSingleText(m_out, pos[0]);
        for (int k = 1; k < OptFeedPointCount && pos[k - 1] <= pos[k]; ++k) {
            m_out += ',';
            AppendSingleText(m_out, val[k - 1]);
            m_out += ',';
            AppendSingleText(m_out, pos[k]);
        }
        m_out += LineEnd;
    }

    void Limit(const ToolSlot &tool)
    {
        std::uint8_t mode = tool.LimitFlags & LimitModeMask;
        if (mode == 0) {
            return;
        }
        m_out += "LIMIT";
        if (mode == 2) {
            m_out += 'S';
        }
        if (tool.LimitFlags & LimitPVariant) {
            m_out += 'P';
        }
        m_out += '/';
        const auto &v = tool.LimitValues;
        if (tool.LimitFlags & LimitFourValues) {
            List({v[0], v[1], v[2], v[3]});
        } else {
            AppendSingleText(m_out, v[0]);
        }
        m_out += LineEnd;
    }

    std::string &m_out;
};

// Formats the table into `buffer`, handing it to `flush` whenever it holds
// `chunkSize` bytes or more, and once at the end.
template <typename Flush>
void FormatTable(ToolTable &table, const WriteOptions &options, std::string &buffer,
                 std::size_t chunkSize, Flush flush)
{
    ToolListFormatter formatter(buffer);
    formatter.Header(table, options);
    formatter.FileArbor(table);
    std::size_t count =
        std::min(table.Slots.size(), static_cast<std::size_t>(std::max<int>(table.MagazineMax, 0)));
    for (std::size_t slot = 0; slot < count; ++slot) {
        ToolSlot &tool = table.Slots[slot];
        // A kind outside the known ten has no word to write.
        if (tool.ToolKind < 0 || tool.ToolKind >= KindCount) {
            continue;
        }
        formatter.Tool(table, slot, tool);
        if (tool.LengthMode < 0 || tool.LengthMode > 3) {
            tool.LengthMode = 0; // written as none, and dropped for good
        }
        if (buffer.size() >= chunkSize) {
            flush(buffer);
        }
    }
    flush(buffer);
}

// "<path less its 4-character extension>_org<n>.TTL".
std::string BackupName(const std::string &path, int n)
{
    const std::string base = path.size() >= 4 ? path.substr(0, path.size() - 4) : path;
    return base + "_org" + std::to_string(n) + ".TTL";
}

} // namespace

Status WriteToolListFile(ToolTable &table, const std::string &path, const WriteOptions &options)
{
    AtomicFileWriter file;
    if (auto opened = file.Open(path); !opened) {
        return opened;
    }
    std::string buffer;
    buffer.reserve(ChunkSize * 2);
    FormatTable(table, options, buffer, ChunkSize, [&file](std::string &chunk) {
        file.Write(chunk);
        chunk.clear();
    });
    // A foreign file is kept, unchanged, as the backup; if that cannot be
    // done nothing is replaced.
    if (table.ForeignFile) {
        auto kept = file.CommitKeepingOriginal([&path](int n) { return BackupName(path, n); });
        if (!kept) {
            return kept.error();
        }
        return Success();
    }
    return file.Commit();
}

std::string FormatToolList(ToolTable &table, const WriteOptions &options)
{
    std::string text;
    FormatTable(table, options, text, static_cast<std::size_t>(-1), [](std::string &) {});
    return text;
}

void AppendToolListItems(const ToolTable &table, const std::vector<int> &slots, bool fileArbor,
                         std::string &out)
{
    ToolListFormatter formatter(out);
    if (fileArbor) {
        formatter.FileArbor(table);
    }
    for (int slot : slots) {
        if (slot < 0 || static_cast<std::size_t>(slot) >= table.Slots.size()) {
            continue;
        }
        const ToolSlot &tool = table.Slots[static_cast<std::size_t>(slot)];
        if (tool.ToolKind >= 0 && tool.ToolKind < KindCount) {
            formatter.Tool(table, static_cast<std::size_t>(slot), tool);
        }
    }
}

} // namespace qor
