#include "csv_layout.h"
#include "editor_store.h"
#include "entry_limits.h"
#include "field_entry.h"
#include "message_text.h"
#include "numeric_text.h"
#include "tool_table_csv.h"

#include <cmath>

namespace qor {

namespace {

using namespace csvlayout;

// Splits CSV text into rows of cells (RFC 4180: quoted cells may hold the
// separator, line ends and doubled quotes). Lines end in CR LF, LF or CR.
class CsvSplitter
{
public:
    CsvSplitter(std::string_view text, char separator) : m_text(text), m_separator(separator) {}

    bool AtEnd() const { return m_pos >= m_text.size(); }

    // The next row; false when a quoted cell is not closed or text follows
    // its closing quote (the row is then the row of that fault).
    bool Next(std::vector<std::string> &cells, std::size_t &count)
    {
        count = 0;
        while (true) {
            if (count == cells.size()) {
                cells.emplace_back();
            }
            std::string &cell = cells[count++];
            cell.clear();
            if (m_pos < m_text.size() && m_text[m_pos] == '"') {
                if (!Quoted(cell)) {
                    return false;
                }
            } else {
                const std::size_t end = m_text.find_first_of(Stops(), m_pos);
                const std::size_t stop = end == std::string_view::npos ? m_text.size() : end;
                cell.assign(m_text.substr(m_pos, stop - m_pos));
                m_pos = stop;
            }
            if (m_pos >= m_text.size()) {
                return true;
            }
            const char c = m_text[m_pos++];
            if (c == m_separator) {
                continue;
            }
            if (c == '\r' && m_pos < m_text.size() && m_text[m_pos] == '\n') {
                ++m_pos;
            }
            return true;
        }
    }

private:
    std::string_view Stops() const { return m_separator == ',' ? ",\r\n" : ";\r\n"; }

    bool Quoted(std::string &cell)
    {
        ++m_pos;
        while (true) {
            const std::size_t quote = m_text.find('"', m_pos);
            if (quote == std::string_view::npos) {
                return false;
            }
            cell.append(m_text.substr(m_pos, quote - m_pos));
            m_pos = quote + 1;
            if (m_pos < m_text.size() && m_text[m_pos] == '"') {
                cell += '"';
                ++m_pos;
                continue;
            }
            return m_pos >= m_text.size() || m_text[m_pos] == m_separator ||
                   m_text[m_pos] == '\r' || m_text[m_pos] == '\n';
        }
    }

    std::string_view m_text;
    char m_separator;
    std::size_t m_pos = 0;
};

std::string Upper(std::string_view text)
{
    std::string upper(text);
    for (char &c : upper) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return upper;
}

// More ";" than "," outside quotes in the first line: a semicolon file.
char SeparatorOf(std::string_view text)
{
    int commas = 0;
    int semicolons = 0;
    bool quoted = false;
    for (char c : text) {
        if (c == '"') {
            quoted = !quoted;
        } else if (!quoted && (c == '\r' || c == '\n')) {
            break;
        } else if (!quoted) {
            commas += c == ',';
            semicolons += c == ';';
        }
    }
    return semicolons > commas ? ';' : ',';
}

std::string Quote(std::string_view text)
{
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '"';
    quoted += text;
    quoted += '"';
    return quoted;
}

class CsvImporter
{
public:
    explicit CsvImporter(const CsvImportOptions &options) : m_options(options)
    {
        SizeToolTable(m_import.Table, options.magazineMax);
        m_import.Table.InitialMagazine = 1;
        m_firstRowOf.assign(static_cast<std::size_t>(std::max<int>(options.magazineMax, 0)) + 1, 0);
    }

    CsvImport Run(std::string_view text)
    {
        std::string decoded;
        if (text.starts_with(Bom)) {
            text.remove_prefix(Bom.size());
        } else if (!IsValidUtf8(text)) {
            decoded = DecodeCodePage(text, m_options.codePage);
            text = decoded;
        }
        m_separator = SeparatorOf(text);
        CsvSplitter splitter(text, m_separator);
        std::vector<std::string> cells;
        std::size_t count = 0;
        m_row = 1;
        if (!splitter.Next(cells, count)) {
            Fail(-1, "MSG35-27", {},
                 "a quoted cell is not closed, or text follows its closing quote.");
            return std::move(m_import);
        }
        if (!Header(cells, count)) {
            return std::move(m_import);
        }
        while (!splitter.AtEnd()) {
            ++m_row;
            if (!splitter.Next(cells, count)) {
                Fail(-1, "MSG35-27", {},
                     "a quoted cell is not closed, or text follows its closing quote.");
                break;
            }
            if (!Row(cells, count)) {
                break;
            }
        }
        return std::move(m_import);
    }

private:
    bool Fail(int column, std::string key, std::vector<std::string> args, std::string english)
    {
        CsvRefusal refusal;
        refusal.Row = m_row;
        if (column >= 0) {
            refusal.Column = ToolTableCsvColumns()[static_cast<std::size_t>(column)];
        }
        refusal.Key = std::move(key);
        refusal.Args = std::move(args);
        refusal.English = std::move(english);
        m_import.Refusal = std::move(refusal);
        return false;
    }

    bool FailNamed(std::string column, std::string key, std::vector<std::string> args,
                   std::string english)
    {
        Fail(-1, std::move(key), std::move(args), std::move(english));
        m_import.Refusal->Column = std::move(column);
        return false;
    }

    bool Header(const std::vector<std::string> &cells, std::size_t count)
    {
        const auto &names = ToolTableCsvColumns();
        std::vector<std::string> upperNames;
        for (const std::string &name : names) {
            upperNames.push_back(Upper(name));
        }
        std::vector<bool> seen(names.size(), false);
        m_columnOf.assign(count, -1);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string_view header = TrimSpaces(cells[i]);
            if (header.empty()) {
                continue; // cells under it must stay empty
            }
            const std::string upper = Upper(header);
            int column = -1;
            for (std::size_t c = 0; c < upperNames.size(); ++c) {
                if (upperNames[c] == upper) {
                    column = static_cast<int>(c);
                }
            }
            if (column < 0) {
                return FailNamed(std::string(header), "MSG35-24", {std::string(header)},
                                 "the header " + Quote(header) +
                                     " is not a column of a tool table.");
            }
            if (seen[static_cast<std::size_t>(column)]) {
                return Fail(column, "MSG35-25", {names[static_cast<std::size_t>(column)]},
                            "the column " + Quote(names[static_cast<std::size_t>(column)]) +
                                " appears twice.");
            }
            seen[static_cast<std::size_t>(column)] = true;
            m_columnOf[i] = column;
        }
        for (int required : {Magazine, Kind}) {
            if (!seen[static_cast<std::size_t>(required)]) {
                return Fail(required, "MSG35-26", {names[static_cast<std::size_t>(required)]},
                            "the column " + Quote(names[static_cast<std::size_t>(required)]) +
                                " is missing.");
            }
        }
        return true;
    }

    bool Row(const std::vector<std::string> &cells, std::size_t count)
    {
        bool empty = true;
        for (std::string_view &value : m_values) {
            value = {};
        }
        for (std::size_t i = 0; i < count; ++i) {
            const std::string_view value = TrimSpaces(cells[i]);
            if (value.empty()) {
                continue;
            }
            empty = false;
            const int column = i < m_columnOf.size() ? m_columnOf[i] : -1;
            if (column < 0) {
                return FailNamed("", "MSG35-29", {},
                                 "a cell has no column name above it in the header row.");
            }
            m_values[static_cast<std::size_t>(column)] = value;
        }
        if (empty) {
            return true; // spreadsheets leave empty rows at the end
        }
        if (Upper(m_values[Magazine]) == CsvFileRowMark) {
            return FileRow();
        }
        return ToolRow();
    }

    bool Given(int column) const { return !m_values[static_cast<std::size_t>(column)].empty(); }

    std::string Text(int column) const
    {
        return std::string(m_values[static_cast<std::size_t>(column)]);
    }

    // A number cell; an empty one is 0. In a semicolon file "," is the point.
    bool Number(int column, float &value)
    {
        std::string_view text = m_values[static_cast<std::size_t>(column)];
        if (text.empty()) {
            value = 0;
            return true;
        }
        if (m_separator == ';' && text.find(',') != std::string_view::npos) {
            m_scratch.assign(text);
            for (char &c : m_scratch) {
                c = c == ',' ? '.' : c;
            }
            text = m_scratch;
        }
        const std::optional<float> number = ToSingle(text);
        if (!number) {
            return Fail(column, "MSG35-3", {Text(column)},
                        "the text " + Quote(Text(column)) +
                            " is not a number that a tool value can hold.");
        }
        value = *number;
        return true;
    }

    // A whole-number cell from low to high; an empty one is 0 when 0 is allowed.
    bool Whole(int column, int low, int high, int &value)
    {
        const std::string_view text = m_values[static_cast<std::size_t>(column)];
        std::optional<double> number = text.empty() ? std::optional<double>(0) : ToDouble(text);
        if (!number || *number != std::floor(*number) || *number < low || *number > high) {
            return Fail(column, "MSG35-4",
                        {Text(column), std::to_string(low), std::to_string(high)},
                        "the text " + Quote(Text(column)) + " is not a whole number from " +
                            std::to_string(low) + " to " + std::to_string(high) + ".");
        }
        value = static_cast<int>(*number);
        return true;
    }

    bool Switch(int column, bool &on)
    {
        int value = 0;
        if (!Whole(column, 0, 1, value)) {
            return false;
        }
        on = value != 0;
        return true;
    }

    bool NotNegative(int column, float value)
    {
        if (value < 0) {
            return Fail(column, "MSG35-8", {}, "this value cannot be negative.");
        }
        return true;
    }

    // Cells from..to (inclusive) must be empty or 0 since `owner` leaves them
    // unused.
    bool Unused(int from, int to, int owner)
    {
        for (int column = from; column <= to; ++column) {
            float value = 0;
            if (!Given(column)) {
                continue;
            }
            if (!Number(column, value)) {
                return false;
            }
            if (value != 0) {
                const std::string &name = ToolTableCsvColumns()[static_cast<std::size_t>(owner)];
                const std::string state = Given(owner) ? Text(owner) : "0";
                return Fail(column, "MSG35-15", {name, state},
                            "this value is not used while " + Quote(name) + " is " + state +
                                "; leave it empty.");
            }
        }
        return true;
    }

    bool Arbor(int &mode, ArborSections &arbor, bool tool)
    {
        if (!Whole(ArborMode, 0, 3, mode)) {
            return false;
        }
        const int last = ArborDiameter(ArborSectionCount);
        if (mode == 0) {
            return Unused(ArborFirst, last, ArborMode);
        }
        int s = 0;
        for (; s < ArborDiameterCount && Given(ArborDiameter(s)); ++s) {
            const int column = ArborDiameter(s);
            float &dia = arbor.Dia[static_cast<std::size_t>(s)];
            if (!Number(column, dia)) {
                return false;
            }
            if (s == 0 && !(static_cast<double>(dia) >= 0.001)) {
                return Fail(column, "MSG35-13", {},
                            "the first arbor diameter must be at least 0.001.");
            }
            if (s > 0 && dia < arbor.Dia[static_cast<std::size_t>(s) - 1]) {
                return Fail(column, "MSG35-12", {Text(column), Text(column - 3)},
                            "the arbor diameters must not shrink: " + Text(column) +
                                " is smaller than " + Text(column - 3) + " below it.");
            }
            if (s == ArborSectionCount) {
                continue; // the eleventh diameter has no length
            }
            float &len = arbor.Len[static_cast<std::size_t>(s)];
            if (!Number(column + 1, len) || !NotNegative(column + 1, len)) {
                return false;
            }
            if (mode == 3) {
                int flag = 0;
                if (!Whole(column + 2, 0, 255, flag)) {
                    return false;
                }
                arbor.Flag[static_cast<std::size_t>(s)] = static_cast<std::uint8_t>(flag);
            } else if (!Unused(column + 2, column + 2, ArborMode)) {
                return false;
            }
        }
        if (s == 0 && tool) {
            return Fail(ArborDiameter(0), "MSG35-13", {},
                        "the first arbor diameter must be at least 0.001.");
        }
        // Nothing may follow the last section: the file would drop it.
        const int next = s < ArborDiameterCount ? ArborDiameter(s) : last + 1;
        for (int column = next; column <= last; ++column) {
            if (Given(column)) {
                return Fail(column, "MSG35-11", {},
                            "the arbor sections must follow one another from section 1, "
                            "without an empty diameter between them.");
            }
        }
        return true;
    }

    bool FileRow()
    {
        if (m_fileRow != 0) {
            return Fail(Magazine, "MSG35-28", {std::to_string(m_fileRow)},
                        "a second file row (the first is row " + std::to_string(m_fileRow) + ").");
        }
        m_fileRow = m_row;
        for (int column = Kind; column < Count; ++column) {
            const bool fileColumn =
                (column >= ArborMode && column < ShiftOn) || column == InitialMagazine;
            if (!fileColumn && Given(column)) {
                return Fail(column, "MSG35-18", {},
                            "the file row holds only the file-level arbor and the initial "
                            "magazine; leave this cell empty.");
            }
        }
        ToolTable &table = m_import.Table;
        int mode = 0;
        int initial = table.InitialMagazine; // an empty cell keeps the default
        if (!Arbor(mode, table.DefaultArbor, false) ||
            (Given(InitialMagazine) &&
             !Whole(InitialMagazine, 0, m_options.magazineMax, initial))) {
            return false;
        }
        table.DefaultArborType = static_cast<std::int16_t>(mode);
        table.InitialMagazine = static_cast<std::int16_t>(initial);
        return true;
    }

    bool Name(ToolSlot &tool, int magazine)
    {
        const std::string_view name = m_values[csvcol::Name];
        if (name.find('"') != std::string_view::npos) {
            return Fail(csvcol::Name, "MSG35-21", {},
                        "a tool name cannot hold a double quote (\"): the tool list file would "
                        "end the name there.");
        }
        EncodedText encoded = EncodeCodePage(name, m_options.codePage);
        if (!encoded.Unheld.empty()) {
            return Fail(
                csvcol::Name, "MSG35-23",
                {encoded.Unheld, CodePointName(encoded.Unheld), std::to_string(m_options.codePage)},
                "the tool name holds " + Quote(encoded.Unheld) + " (" +
                    CodePointName(encoded.Unheld) + "), which code page " +
                    std::to_string(m_options.codePage) + " cannot hold.");
        }
        if (NameCharacters(name) > CommentCharacters && !Unchanged(magazine, encoded.Bytes)) {
            return Fail(csvcol::Name, "MSG35-22", {std::to_string(CommentCharacters)},
                        "a tool name holds at most " + std::to_string(CommentCharacters) +
                            " characters.");
        }
        tool.ToolComment = std::move(encoded.Bytes);
        return true;
    }

    bool Unchanged(int magazine, std::string_view name) const
    {
        const ToolTable *table = m_options.unchanged;
        const auto slot = static_cast<std::size_t>(magazine) - 1;
        return table != nullptr && slot < table->Slots.size() && table->Slots[slot].HasTool() &&
               TrimSpaces(table->Slots[slot].ToolComment) == name;
    }

    bool Shape(ToolSlot &tool)
    {
        const int kind = tool.ToolKind;
        for (int column = Diameter; column <= FluteLength; ++column) {
            float value = 0;
            if (!Number(column, value)) {
                return false;
            }
            if (!KindUses[kind][column - Diameter]) {
                if (value != 0) {
                    const std::string word(KindWords[static_cast<std::size_t>(kind)]);
                    return Fail(column, "MSG35-7", {word},
                                "a tool of kind " + word +
                                    " has no such value; leave the cell empty.");
                }
                continue;
            }
            const int para = ParaOfShape[column - Diameter];
            if (value < 0 && !ParaTakesMinus(para, kind)) {
                return NotNegative(column, value);
            }
            if ((para == ParaFirstAngle || para == ParaSecondAngle) && !IsAngle(value, false)) {
                return Fail(column, "MSG35-9", {},
                            "this angle must be at least 0 and below 90 degrees.");
            }
            ToolValue(tool, column) = value;
        }
        if (PairKind(kind) && tool.Param7 != 0 && !(tool.Param6 > 0)) {
            return Fail(Param7, "MSG35-19", {},
                        "Parameter 7 is kept only behind a positive Parameter 6.");
        }
        return true;
    }

    bool Lengths(ToolSlot &tool)
    {
        int mode = 0;
        if (!Whole(LengthMode, 0, 3, mode)) {
            return false;
        }
        tool.LengthMode = static_cast<std::int16_t>(mode);
        const int used = LengthValuesOfMode[mode];
        for (int i = 0; i < used; ++i) {
            const int column = Len1 + i;
            float &value = tool.Len[static_cast<std::size_t>(i)];
            if (!Number(column, value) || !NotNegative(column, value)) {
                return false;
            }
            if (mode == 3 && i == BoxShN && !IsAngle(value, false)) {
                return Fail(column, "MSG35-9", {},
                            "this angle must be at least 0 and below 90 degrees.");
            }
            if (mode == 3 && i == BoxShNb && !IsAngle(value, true)) {
                return Fail(column, "MSG35-10", {}, "this angle must be from 0 to 90 degrees.");
            }
        }
        return Unused(Len1 + used, Len1 + LengthValueCount - 1, LengthMode);
    }

    bool Feed(ToolSlot &tool, int letter)
    {
        const int first = FeedFirst + FeedColumns * letter;
        const int last = first + FeedColumns - 1;
        bool on = false;
        if (!Switch(first, on)) {
            return false;
        }
        if (!on) {
            return Unused(first + 1, last, first);
        }
        tool.OptFeedOn[letter] = 1;
        auto &pos = tool.OptFeedPos[letter];
        auto &val = tool.OptFeedVal[letter];
        if (!Number(FeedPoint(letter, 0), pos[0])) {
            return false;
        }
        int k = 1;
        for (; k < OptFeedPointCount && Given(FeedPoint(letter, k)); ++k) {
            const int column = FeedPoint(letter, k);
            if (!Number(column, pos[k]) || !Number(FeedValue(letter, k - 1), val[k - 1])) {
                return false;
            }
            if (pos[k] < pos[k - 1]) {
                return Fail(column, "MSG35-16", {Text(column), Text(column - 2)},
                            "the breakpoints must not fall: " + Text(column) + " is smaller than " +
                                Text(column - 2) + " before it.");
            }
        }
        if (k < OptFeedPointCount) {
            for (int column = FeedValue(letter, k - 1); column <= last; ++column) {
                if (Given(column)) {
                    return Fail(column, "MSG35-17", {},
                                "a feed value needs the breakpoint behind it, and the breakpoints "
                                "follow one another without an empty cell.");
                }
            }
        }
        return true;
    }

    bool Limit(ToolSlot &tool)
    {
        int mode = 0;
        bool p = false;
        if (!Whole(LimitMode, 0, 2, mode) || !Switch(LimitP, p)) {
            return false;
        }
        if (mode == 0) {
            return Unused(LimitP, LimitFirst + 3, LimitMode);
        }
        bool four = Given(LimitFirst + 1) || Given(LimitFirst + 2) || Given(LimitFirst + 3);
        for (int i = 0; i < (four ? 4 : 1); ++i) {
            if (!Number(LimitFirst + i, tool.LimitValues[static_cast<std::size_t>(i)])) {
                return false;
            }
        }
        tool.LimitFlags = static_cast<std::uint8_t>(mode | (four ? LimitFourValues : 0) |
                                                    (p ? LimitPVariant : 0));
        return true;
    }

    bool ToolRow()
    {
        int magazine = 0;
        if (!Whole(Magazine, 1, m_options.magazineMax, magazine)) {
            return false;
        }
        int &firstRow = m_firstRowOf[static_cast<std::size_t>(magazine)];
        if (firstRow != 0) {
            return Fail(Magazine, "MSG35-6", {std::to_string(magazine), std::to_string(firstRow)},
                        "magazine position " + std::to_string(magazine) +
                            " appears twice (first in row " + std::to_string(firstRow) + ").");
        }
        firstRow = m_row;

        ToolSlot tool;
        const std::optional<std::int16_t> kind = KindOfWord(Upper(m_values[Kind]));
        if (!kind) {
            return Fail(Kind, "MSG35-5", {Text(Kind)},
                        "the text " + Quote(Text(Kind)) +
                            " is not a tool kind: CUT, BAL, TAP, FLA, BUL, VER, "
                            "KEG, OVA, RAD or T-T.");
        }
        tool.ToolKind = *kind;
        int arborMode = 0;
        if (!Name(tool, magazine) || !Shape(tool) || !Lengths(tool) ||
            !Arbor(arborMode, tool.Arbor, true)) {
            return false;
        }
        tool.ArborMode = static_cast<std::int16_t>(arborMode);

        bool shift = false;
        if (!Switch(ShiftOn, shift)) {
            return false;
        }
        if (shift) {
            tool.ShiftOn = 1;
            if (!Number(ShiftValue, tool.ShiftValue)) {
                return false;
            }
        } else if (!Unused(ShiftValue, ShiftValue, ShiftOn)) {
            return false;
        }

        int pen = 0;
        if (!Whole(Pen, 0, 32767, pen)) {
            return false;
        }
        if (pen != 0 && !PenInRange(pen, m_options.supportPenMax)) {
            return Fail(Pen, "MSG35-20", {std::to_string(m_options.supportPenMax - 1)},
                        "the pen number must be from 1 to " +
                            std::to_string(m_options.supportPenMax - 1) + ", or empty for none.");
        }
        tool.PenNo = static_cast<std::int16_t>(pen);

        for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
            if (!Feed(tool, letter)) {
                return false;
            }
        }
        if (!Limit(tool)) {
            return false;
        }
        if (Given(InitialMagazine)) {
            return Fail(InitialMagazine, "MSG35-14", {},
                        "this column belongs to the file row (Magazine FILE); leave it empty in "
                        "a tool's row.");
        }
        m_import.Table.Slots[static_cast<std::size_t>(magazine) - 1] = std::move(tool);
        return true;
    }

    const CsvImportOptions &m_options;
    CsvImport m_import;
    char m_separator = ',';
    int m_row = 0;
    int m_fileRow = 0;
    std::vector<int> m_columnOf;
    std::vector<int> m_firstRowOf;
    std::array<std::string_view, Count> m_values{};
    std::string m_scratch;
};

} // namespace

CsvImport ParseToolTableCsv(std::string_view text, const CsvImportOptions &options)
{
    return CsvImporter(options).Run(text);
}

std::string CsvRefusalText(const MessageCatalogue &catalogue, const CsvRefusal &refusal)
{
    Error reason = KeyedError(refusal.Key, refusal.Args, refusal.English);
    const std::string why = ErrorText(catalogue, reason);
    const std::string row = std::to_string(refusal.Row);
    Error framed = refusal.Column.empty()
                       ? KeyedError("MSG35-2", {row, why}, "Row " + row + ": " + why)
                       : KeyedError("MSG35-1", {row, refusal.Column, why},
                                    "Row " + row + ", column \"" + refusal.Column + "\": " + why);
    return ErrorText(catalogue, framed);
}

std::string CsvRefusalEnglish(const CsvRefusal &refusal)
{
    const std::string row = std::to_string(refusal.Row);
    return refusal.Column.empty()
               ? "Row " + row + ": " + refusal.English
               : "Row " + row + ", column \"" + refusal.Column + "\": " + refusal.English;
}

} // namespace qor
