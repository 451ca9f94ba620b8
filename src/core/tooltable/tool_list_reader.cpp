#include "tool_list_reader.h"

#include "atomic_file.h"
#include "line_reader.h"
#include "native_file.h"
#include "numeric_text.h"
#include "tool_list_items.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

// A tool list line is a sequence of items, each starting with a keyword that
// is recognised by its first three letters in any case. Each item cuts its own
// text off the front of the line and the rest is examined for a further item.
//
// A format error means that the file is not a tool list this program can
// make sense of: reading stops at the faulty line, the table keeps what the
// items before the faulty one gave (an item is stored only once it has been
// read completely), and the user is told the line and what it should hold. A
// number too large for a single, a pen number beyond 16 bits or a section
// flag beyond a byte are format errors too, so that every value stays within
// its field.

namespace qor {

namespace {

constexpr std::size_t MaxLineLength = 65536;
constexpr std::size_t ShownLineLength = 200; // Error::lineText
constexpr std::size_t QuotedLineLength = 80; // the line quoted in the message
constexpr int MagazineNumberMax = 32767;

constexpr char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

char UpperAt(std::string_view text, std::size_t index)
{
    return index < text.size() ? Upper(text[index]) : '\0';
}

// The first three characters as one number, so that items dispatch in a switch.
constexpr std::uint32_t Keyword(char a, char b, char c)
{
    return static_cast<std::uint32_t>(static_cast<unsigned char>(Upper(a))) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(Upper(b))) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(Upper(c)));
}

constexpr std::uint32_t Keyword(std::string_view word)
{
    return Keyword(word[0], word[1], word[2]);
}

bool StartsWithNoCase(std::string_view text, std::string_view upperWord)
{
    if (text.size() < upperWord.size()) {
        return false;
    }
    for (std::size_t i = 0; i < upperWord.size(); ++i) {
        if (Upper(text[i]) != upperWord[i]) {
            return false;
        }
    }
    return true;
}

bool ContainsNoCase(std::string_view text, std::string_view upperWord)
{
    for (std::size_t at = 0; at + upperWord.size() <= text.size(); ++at) {
        if (StartsWithNoCase(text.substr(at), upperWord)) {
            return true;
        }
    }
    return false;
}

// The run of digits from `from` on: its length, and its value capped just
// above the largest magazine number.
std::size_t DigitRun(std::string_view text, std::size_t from, int &value)
{
    value = 0;
    std::size_t length = 0;
    for (; from + length < text.size(); ++length) {
        const char c = text[from + length];
        if (c < '0' || c > '9') {
            break;
        }
        value = std::min(value * 10 + (c - '0'), MagazineNumberMax + 1);
    }
    return length;
}

// The line as shown to the user: cut to `length` bytes, control characters
// replaced, other bytes kept whatever their encoding.
std::string Shown(std::string_view line, std::size_t length)
{
    std::string shown(line.substr(0, length));
    for (char &c : shown) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            c = '?';
        }
    }
    if (line.size() > length) {
        shown += "...";
    }
    return shown;
}

// Where a kind's numbers go, in file order; nullptr stands for the "a;b" pair
// Param6;Param7.
using Field = float ToolSlot::*;
struct KindLayout
{
    std::array<Field, 7> fields;
    int count;
};

constexpr Field Dia = &ToolSlot::ToolDia;
constexpr Field Corner = &ToolSlot::CornerRad;
constexpr Field Length = &ToolSlot::ToolLength;
constexpr Field Pair = nullptr;

constexpr std::array<KindLayout, KindCount> KindLayouts = {{
    // CUT
    {{Dia, Corner, &ToolSlot::Param3, &ToolSlot::Param4, &ToolSlot::Param5, Pair, Length}, 7},
    {{Dia, Length}, 2},                                               // BAL
    {{Corner, Pair, Length}, 3},                                      // TAP
    {{Dia, Length}, 2},                                               // FLA
    {{Dia, Corner, Length}, 3},                                       // BUL
    {{Dia, &ToolSlot::Param7, Length}, 3},                            // VER
    {{Dia, Length}, 2},                                               // KEG
    {{Dia, Corner, &ToolSlot::Param7, Length}, 4},                    // OVA
    {{Dia, Corner, &ToolSlot::Param7}, 3},                            // RAD
    {{Dia, Length, Corner, &ToolSlot::Param5, &ToolSlot::Param7}, 5}, // T-T
}};

// Indices into ToolSlot::Len in file order, by length mode 1..3.
struct LengthLayout
{
    std::array<int, LengthValueCount> index;
    int count;
};
constexpr std::array<LengthLayout, 4> LengthLayouts = {{
    {{}, 0},
    {{0}, 1},
    {{0, 2, 3, 1}, 4},
    {{0, 3, 5, 2, 4, 1}, 6},
}};

class ToolListParser
{
public:
    explicit ToolListParser(ToolTable &table)
        : m_table(table),
          m_slotLimit(std::min<int>(table.MagazineMax, static_cast<int>(table.Slots.size())))
    {}

    ReadResult Read(LineReader &reader);

private:
    bool ParseLine(std::string_view line);
    bool ParseItem(std::string_view &rest);
    bool Initial(std::string_view &rest);
    bool Magazine(std::string_view &rest);
    bool Tool(std::int16_t kind, std::string_view &rest);
    bool Arbor(std::string_view &rest);
    bool LengthItem(std::string_view &rest);
    bool Pen(std::string_view &rest);
    bool Shift(std::string_view &rest);
    bool OptionFeed(std::string_view &rest);
    bool Limit(std::string_view &rest);

    bool Number(std::string_view &text, float &value);
    // Fails with the catalogue key of the reason, its arguments after the
    // line (which is the first), and the English sentence.
    bool Fail(const char *key, std::vector<std::string> args, std::string_view what);
    void NoteSkipped(std::uint32_t keyword);

    ToolSlot &Slot() { return m_table.Slots[static_cast<std::size_t>(m_table.CurrentSlot)]; }

    ToolTable &m_table;
    int m_slotLimit;
    bool m_seenMagazine = false;
    std::string_view m_line;
    const char *m_lastComma = nullptr; // in m_line
    int m_lineNumber = 0;
    std::vector<bool> m_skipped; // by magazine number, sized on the first skipped tool
    ReadResult m_result;
    // What the file seems to be.
    bool m_anyText = false;
    bool m_anyItem = false;
    bool m_nul = false;
    bool m_utf16 = false;
};

ReadResult ToolListParser::Read(LineReader &reader)
{
    std::string line;
    for (;;) {
        const LineReader::Status status = reader.Next(line);
        if (status == LineReader::Status::End) {
            break;
        }
        if (status == LineReader::Status::ReadError) {
            m_result.outcome = ReadOutcome::FormatError;
            m_result.error = Error("the file could not be read to its end; reading stopped at "
                                   "line " +
                                       std::to_string(reader.lineNumber() + 1) + ".",
                                   reader.lineNumber() + 1);
            m_result.error.key = "MSG31-18";
            m_result.error.args = {std::to_string(reader.lineNumber() + 1)};
            break;
        }
        m_lineNumber = reader.lineNumber();
        if (m_lineNumber == 1 && (line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF"))) {
            m_utf16 = true;
        }
        m_nul = m_nul || line.find('\0') != std::string::npos;
        m_line = TrimSpaces(line);
        m_anyText = m_anyText || !m_line.empty();
        if (status == LineReader::Status::TooLong) {
            m_result.outcome = ReadOutcome::FormatError;
            m_result.error = Error("line " + std::to_string(m_lineNumber) + " is longer than " +
                                       std::to_string(MaxLineLength) +
                                       " characters; tool list lines are short, so this is "
                                       "probably not a tool list file.",
                                   m_lineNumber, Shown(m_line, ShownLineLength));
            m_result.error.key = "MSG31-19";
            m_result.error.args = {std::to_string(m_lineNumber), std::to_string(MaxLineLength)};
            break;
        }
        if (!ParseLine(m_line)) {
            break;
        }
    }
    m_result.looks = m_utf16                   ? FileLooks::Utf16Text
                     : m_nul                   ? FileLooks::Binary
                     : m_anyText && !m_anyItem ? FileLooks::NoItems
                                               : FileLooks::ToolList;
    return m_result;
}

bool ToolListParser::ParseLine(std::string_view line)
{
    if (!line.empty() && line.front() == '#') {
        if (ContainsNoCase(line, "EDITED WITH QORTOOL")) {
            m_table.ForeignFile = false;
        }
        return true;
    }
    const std::size_t lastComma = line.rfind(',');
    m_lastComma = lastComma == std::string_view::npos ? nullptr : line.data() + lastComma;
    std::string_view rest = line;
    while (rest.size() >= 3) {
        if (!ParseItem(rest)) {
            return false;
        }
    }
    return true;
}

bool ToolListParser::ParseItem(std::string_view &rest)
{
    const std::uint32_t keyword = Keyword(rest[0], rest[1], rest[2]);
    // Items of a magazine position beyond the table are skipped; the result
    // only counts the positions whose tools went this way.
    if (keyword != Keyword("MAG") && m_table.CurrentSlot >= m_slotLimit) {
        NoteSkipped(keyword);
        rest = {};
        m_anyItem = true;
        return true;
    }
    // Every case below but the last is an item.
    const bool itemBefore = m_anyItem;
    m_anyItem = true;
    switch (keyword) {
    case Keyword("INI"):
        return Initial(rest);
    case Keyword("MAG"):
        return Magazine(rest);
    case Keyword("BAL"):
        return Tool(KindBal, rest);
    case Keyword("BUL"):
        return Tool(KindBul, rest);
    case Keyword("TAP"):
        return Tool(KindTap, rest);
    case Keyword("FLA"):
        return Tool(KindFla, rest);
    case Keyword("KEG"):
        return Tool(KindKeg, rest);
    case Keyword("VER"):
        return Tool(KindVer, rest);
    case Keyword("CUT"):
        return Tool(KindCut, rest);
    case Keyword("OVA"):
        return Tool(KindOva, rest);
    case Keyword("RAD"):
        return Tool(KindRad, rest);
    case Keyword("T-T"):
        return Tool(KindTT, rest);
    case Keyword("ARB"):
        return Arbor(rest);
    case Keyword("LEN"):
        return LengthItem(rest);
    case Keyword("PEN"):
        return Pen(rest);
    case Keyword("OPT"):
        return OptionFeed(rest);
    case Keyword("SHI"):
        return Shift(rest);
    case Keyword("LIM"):
        return Limit(rest);
    default:
        // Words this program does not know end the line, not the read.
        m_anyItem = itemBefore;
        rest = {};
        return true;
    }
}

bool ToolListParser::Initial(std::string_view &rest)
{
    if (!DropThrough(rest, '=') || !StartsWithNoCase(rest, "MAGAZINE")) {
        return Fail("MSG31-1", {},
                    "the item \"INI\" needs \"= MAGAZINE\" and the initial magazine number, as "
                    "in \"INI = MAGAZINE01\".");
    }
    int number = 0;
    const std::size_t digits = DigitRun(rest, 8, number);
    if (number > MagazineNumberMax) {
        return Fail("MSG31-2", {},
                    "the initial magazine number is out of range; it must lie between 0 and "
                    "32767.");
    }
    m_table.InitialMagazine = static_cast<std::int16_t>(number);
    rest = TrimSpaces(rest.substr(8 + digits));
    return true;
}

bool ToolListParser::Magazine(std::string_view &rest)
{
    int number = 0;
    if (DigitRun(rest, 8, number) == 0) {
        return Fail("MSG31-3", {},
                    "the magazine item needs the position's number right after \"MAGAZINE\", as "
                    "in \"MAGAZINE01 = BAL/10,50\".");
    }
    if (number == 0) {
        return Fail("MSG31-4", {},
                    "magazine number 0 is no position; magazine numbers start at 1.");
    }
    if (number > MagazineNumberMax) {
        return Fail("MSG31-5", {},
                    "magazine number out of range; it must lie between 1 and 32767.");
    }
    if (!DropThrough(rest, '=')) {
        return Fail("MSG31-6", {},
                    "the magazine item needs a \"=\" before its tool, as in "
                    "\"MAGAZINE01 = BAL/10,50\".");
    }
    m_table.CurrentSlot = static_cast<std::int16_t>(number - 1);
    m_seenMagazine = true;
    return true;
}

bool ToolListParser::Tool(std::int16_t kind, std::string_view &rest)
{
    // The kind is set before anything else is looked at, and each value as
    // it is read: a fault further on leaves what came before it in the table.
    ToolSlot &slot = Slot();
    slot.ToolKind = kind;
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-7", {std::string(KindWords[static_cast<std::size_t>(kind)])},
                    "the tool item \"" + std::string(KindWords[static_cast<std::size_t>(kind)]) +
                        "\" needs a \"/\" before its numbers.");
    }
    const KindLayout &layout = KindLayouts[static_cast<std::size_t>(kind)];
    for (std::size_t i = 0; i < static_cast<std::size_t>(layout.count); ++i) {
        if (layout.fields[i] != nullptr) {
            if (!Number(rest, slot.*layout.fields[i])) {
                return false;
            }
            continue;
        }
        const std::string_view before = rest;
        auto pair = ReadNumberPair(rest);
        if (!pair) {
            return Fail("MSG31-8", {NumberTextForMessage(before)},
                        "the numbers \"" + NumberTextForMessage(before) +
                            "\" are too large for a tool value.");
        }
        slot.Param6 = pair->first;
        if (pair->second) {
            slot.Param7 = *pair->second;
        }
    }
    if (auto comment = ReadQuoted(rest)) {
        slot.ToolComment.assign(comment->data(), comment->size());
        rest = {}; // whatever follows the comment is not read
    }
    return true;
}

bool ToolListParser::Arbor(std::string_view &rest)
{
    const char digit = UpperAt(rest, 5);
    const std::int16_t type = digit == '2' ? 2 : digit == '3' ? 3 : 1;
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-9", {},
                    "the arbor item needs a \"/\" before its sections, as in \"ARBOR/20,30\".");
    }
    // Before the first magazine item an arbor is the file's default arbor.
    ArborSections &target = m_seenMagazine ? Slot().Arbor : m_table.DefaultArbor;
    ArborSections sections = target;
    float previous = 0;
    for (std::size_t s = 0; s < ArborSectionCount && !rest.empty(); ++s) {
        float diameter = 0;
        if (!Number(rest, diameter)) {
            return false;
        }
        if (diameter < previous) {
            break;
        }
        sections.Dia[s] = diameter;
        if (!Number(rest, sections.Len[s])) {
            return false;
        }
        if (type == 3) {
            const std::string_view before = rest;
            auto flag = ReadByteNumber(rest);
            if (!flag) {
                return Fail("MSG31-10", {NumberTextForMessage(before)},
                            "the arbor section flag \"" + NumberTextForMessage(before) +
                                "\" is out of range; it must lie between 0 and 255.");
            }
            sections.Flag[s] = *flag;
        }
        previous = diameter;
    }
    target = sections;
    (m_seenMagazine ? Slot().ArborMode : m_table.DefaultArborType) = type;
    return true;
}

bool ToolListParser::LengthItem(std::string_view &rest)
{
    const char digit = UpperAt(rest, 6);
    const std::int16_t mode = digit == '2' ? 2 : digit == '3' ? 3 : 1;
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-11", {},
                    "the length item needs a \"/\" before its lengths, as in \"LENGTH/50\".");
    }
    ToolSlot &slot = Slot();
    auto lengths = slot.Len;
    const LengthLayout &layout = LengthLayouts[static_cast<std::size_t>(mode)];
    for (std::size_t i = 0; i < static_cast<std::size_t>(layout.count); ++i) {
        if (!Number(rest, lengths[static_cast<std::size_t>(layout.index[i])])) {
            return false;
        }
    }
    slot.LengthMode = mode;
    slot.Len = lengths;
    return true;
}

bool ToolListParser::Pen(std::string_view &rest)
{
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-12", {},
                    "the pen item needs a \"/\" before its number, as in \"PEN/3\".");
    }
    const std::string_view before = rest;
    float value = 0;
    if (!Number(rest, value)) {
        return false;
    }
    auto pen = RoundToInt16(value);
    if (!pen) {
        return Fail("MSG31-13", {NumberTextForMessage(before)},
                    "the pen number \"" + NumberTextForMessage(before) +
                        "\" is out of range; it must lie between -32768 and 32767.");
    }
    Slot().PenNo = *pen;
    return true;
}

bool ToolListParser::Shift(std::string_view &rest)
{
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-14", {},
                    "the shift item needs a \"/\" before its value, as in \"SHIFT/5\".");
    }
    float value = 0;
    if (!Number(rest, value)) {
        return false;
    }
    ToolSlot &slot = Slot();
    slot.ShiftOn = 1;
    slot.ShiftValue = value;
    return true;
}

bool ToolListParser::OptionFeed(std::string_view &rest)
{
    // "OPT-F(V)/": the letter in brackets; "OPT-F/" or an unknown letter is A.
    const char letter = UpperAt(rest, 5) == '(' ? UpperAt(rest, 6) : 'A';
    const std::size_t index = letter == 'V' ? 1 : letter == 'U' ? 2 : letter == 'D' ? 3 : 0;
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-15", {},
                    "the option feed item needs a \"/\" before its breakpoints, as in "
                    "\"OPT-F(A)/0,100,10\".");
    }
    ToolSlot &slot = Slot();
    auto positions = slot.OptFeedPos[index];
    auto values = slot.OptFeedVal[index];
    for (std::size_t k = 0; k < OptFeedPointCount && !rest.empty(); ++k) {
        if (!Number(rest, positions[k])) {
            return false;
        }
        if (k == OptFeedValueCount || rest.empty()) {
            break;
        }
        if (!Number(rest, values[k])) {
            return false;
        }
    }
    slot.OptFeedOn[index] = 1;
    slot.OptFeedPos[index] = positions;
    slot.OptFeedVal[index] = values;
    return true;
}

bool ToolListParser::Limit(std::string_view &rest)
{
    const char first = UpperAt(rest, 5);
    const char second = UpperAt(rest, 6);
    std::uint8_t flags = first == 'S' && second == 'P' ? 130
                         : first == 'S'                ? 2
                         : first == 'P'                ? 128
                                                       : 1;
    if (!DropThrough(rest, '/')) {
        return Fail("MSG31-16", {},
                    "the limit item needs a \"/\" before its values, as in \"LIMIT/5\".");
    }
    // The rest of the line is always a tail of it, so the line's last comma
    // answers this without searching the rest again for every item.
    if (m_lastComma != nullptr && m_lastComma >= rest.data()) {
        flags |= LimitFourValues;
    }
    ToolSlot &slot = Slot();
    auto values = slot.LimitValues;
    for (std::size_t i = 0; i < values.size() && !rest.empty(); ++i) {
        if (!Number(rest, values[i])) {
            return false;
        }
    }
    slot.LimitFlags = flags;
    slot.LimitValues = values;
    return true;
}

bool ToolListParser::Number(std::string_view &text, float &value)
{
    const std::string_view before = text;
    auto number = ReadNumber(text);
    if (!number) {
        return Fail("MSG31-17", {NumberTextForMessage(before)},
                    "the number \"" + NumberTextForMessage(before) +
                        "\" is too large for a tool value.");
    }
    value = *number;
    return true;
}

// Only a tool makes a position worth a warning: the writer writes nothing for
// a position without one.
void ToolListParser::NoteSkipped(std::uint32_t keyword)
{
    if (std::none_of(KindWords.begin(), KindWords.end(),
                     [keyword](std::string_view word) { return Keyword(word) == keyword; })) {
        return;
    }
    const int number = m_table.CurrentSlot + 1;
    if (m_skipped.empty()) {
        m_skipped.resize(MagazineNumberMax + 1);
    }
    if (m_skipped[static_cast<std::size_t>(number)]) {
        return;
    }
    m_skipped[static_cast<std::size_t>(number)] = true;
    ++m_result.skippedPositions;
    m_result.highestSkippedMagazine = std::max(m_result.highestSkippedMagazine, number);
}

bool ToolListParser::Fail(const char *key, std::vector<std::string> args, std::string_view what)
{
    m_result.outcome = ReadOutcome::FormatError;
    const std::string quoted = Shown(m_line, QuotedLineLength);
    std::string message = "\"" + quoted + "\": ";
    message += what;
    m_result.error = Error(std::move(message), m_lineNumber, Shown(m_line, ShownLineLength));
    m_result.error.key = key;
    args.insert(args.begin(), quoted);
    m_result.error.args = std::move(args);
    return false;
}

ReadResult ReadLines(ToolTable &table, LineReader &reader)
{
    table.ForeignFile = true;
    ClearToolTable(table);
    table.CurrentSlot = 0;
    ReadResult result = ToolListParser(table).Read(reader);
    table.CurrentSlot = static_cast<std::int16_t>(table.InitialMagazine - 1);
    return result;
}

} // namespace

ReadResult ReadToolListStream(ToolTable &table, std::FILE *file)
{
    LineReader reader(file, MaxLineLength);
    return ReadLines(table, reader);
}

ReadResult ReadToolListText(ToolTable &table, std::string_view text)
{
    LineReader reader(text, MaxLineLength);
    return ReadLines(table, reader);
}

ReadResult ReadToolListFile(ToolTable &table, const std::string &path)
{
    table.ForeignFile = true;
    if (!FileExists(path)) {
        std::error_code ec;
        if (std::filesystem::exists(NativePath(path), ec)) {
            return {
                ReadOutcome::NotFound,
                KeyedError("MSG30-10", {path}, "Cannot read \"" + path + "\": it is not a file.")};
        }
        return {ReadOutcome::NotFound,
                Error("Cannot read \"" + path + "\": the file does not exist.")};
    }
    // Opened only as a regular file, so that a pipe put in its place since
    // cannot make the read wait.
    auto opened = OpenRegularFile(path);
    if (!opened) {
        return {ReadOutcome::NotFound, opened.error()};
    }
    std::FILE *file = opened.value();
    ReadResult result = ReadToolListStream(table, file);
    std::fclose(file);
    return result;
}

} // namespace qor
