#include "tool_table_csv.h"

#include "csv_layout.h"
#include "numeric_text.h"

#include <algorithm>
#include <charconv>

namespace qor {

namespace {

using namespace csvlayout;

// The sections the writer puts into the file: from the first while the
// diameters do not shrink, the first at least 0.001.
int WrittenSections(const ArborSections &arbor)
{
    int count = 0;
    while (count < ArborDiameterCount && (count == 0 ? static_cast<double>(arbor.Dia[0]) >= 0.001
                                                     : arbor.Dia[count] >= arbor.Dia[count - 1])) {
        ++count;
    }
    return count;
}

// The breakpoints the writer puts into the file: up to the first one
// followed by a smaller one.
int WrittenPoints(const std::array<float, OptFeedPointCount> &pos)
{
    int count = 1;
    while (count < OptFeedPointCount && pos[count - 1] <= pos[count]) {
        ++count;
    }
    return count;
}

// The arbor type as the file carries it: "ARBOR2", "ARBOR3" or "ARBOR".
int WrittenArborType(int type)
{
    return type == 2 || type == 3 ? type : 1;
}

bool IsAscii(std::string_view text)
{
    for (char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            return false;
        }
    }
    return true;
}

void AppendInteger(std::string &out, int value)
{
    char buffer[16];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void AppendCell(std::string &out, std::string_view cell)
{
    if (cell.find_first_of(",;\"\r\n") == std::string_view::npos) {
        out += cell;
        return;
    }
    out += '"';
    for (char c : cell) {
        if (c == '"') {
            out += '"';
        }
        out += c;
    }
    out += '"';
}

// Where the cells of a row go: into separate strings (for the diff), or
// straight into the CSV text. Cells are given in column order; a column not
// given is empty.
class CellStrings
{
public:
    explicit CellStrings(std::vector<std::string> &cells) : m_cells(cells)
    {
        m_cells.resize(Count);
        for (std::string &cell : m_cells) {
            cell.clear();
        }
    }
    void Number(int column, float value) { AppendSingleText(m_cells[column], value); }
    void Integer(int column, int value) { AppendInteger(m_cells[column], value); }
    void Text(int column, std::string_view text) { m_cells[column] = text; }

private:
    std::vector<std::string> &m_cells;
};

class CsvLine
{
public:
    explicit CsvLine(std::string &out) : m_out(out) {}
    void Number(int column, float value) { AppendSingleText(To(column), value); }
    void Integer(int column, int value) { AppendInteger(To(column), value); }
    void Text(int column, std::string_view text) { AppendCell(To(column), text); }
    void End()
    {
        To(Count - 1);
        m_out += "\r\n";
    }

private:
    // Separators up to the column's cell.
    std::string &To(int column)
    {
        if (column > m_next) {
            m_out.append(static_cast<std::size_t>(column - m_next), ',');
        }
        m_next = column;
        return m_out;
    }

    std::string &m_out;
    int m_next = 0;
};

template <typename Sink> void EmitArbor(int type, const ArborSections &arbor, Sink &sink)
{
    sink.Integer(ArborMode, type);
    if (type == 0) {
        return;
    }
    const int count = WrittenSections(arbor);
    for (int s = 0; s < count; ++s) {
        sink.Number(ArborDiameter(s), arbor.Dia[s]);
        if (s < ArborSectionCount) {
            sink.Number(ArborDiameter(s) + 1, arbor.Len[s]);
            if (type == 3) {
                sink.Integer(ArborDiameter(s) + 2, arbor.Flag[s]);
            }
        }
    }
}

template <typename Sink> void EmitTool(const ToolSlot &tool, int magazine, int codePage, Sink &sink)
{
    sink.Integer(Magazine, magazine);
    if (tool.ToolKind < 0 || tool.ToolKind >= KindCount) {
        return;
    }
    const int kind = tool.ToolKind;
    sink.Text(Kind, KindWords[static_cast<std::size_t>(kind)]);
    const std::string_view name = TrimSpaces(tool.ToolComment);
    sink.Text(Name, IsAscii(name) ? std::string(name) : DecodeCodePage(name, codePage));

    for (int column = Diameter; column <= FluteLength; ++column) {
        if (!KindUses[kind][column - Diameter]) {
            continue;
        }
        if (column == Param7 && PairKind(kind) && !(tool.Param6 > 0 && tool.Param7 != 0)) {
            continue;
        }
        sink.Number(column, ToolValue(tool, column));
    }

    const int lengthMode = tool.LengthMode >= 0 && tool.LengthMode <= 3 ? tool.LengthMode : 0;
    sink.Integer(LengthMode, lengthMode);
    for (int i = 0; i < LengthValuesOfMode[lengthMode]; ++i) {
        sink.Number(Len1 + i, tool.Len[i]);
    }

    const bool arbor = tool.ArborMode > 0 && tool.Arbor.Dia[0] > 0;
    EmitArbor(arbor ? WrittenArborType(tool.ArborMode) : 0, tool.Arbor, sink);

    sink.Integer(ShiftOn, tool.ShiftOn != 0);
    if (tool.ShiftOn != 0) {
        sink.Number(ShiftValue, tool.ShiftValue);
    }
    if (tool.PenNo > 0) {
        sink.Integer(Pen, tool.PenNo);
    }
    for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
        const bool on = tool.OptFeedOn[letter] != 0;
        sink.Integer(FeedFirst + FeedColumns * letter, on);
        if (!on) {
            continue;
        }
        const int points = WrittenPoints(tool.OptFeedPos[letter]);
        for (int k = 0; k < points; ++k) {
            sink.Number(FeedPoint(letter, k), tool.OptFeedPos[letter][k]);
            if (k + 1 < points) {
                sink.Number(FeedValue(letter, k), tool.OptFeedVal[letter][k]);
            }
        }
    }
    const int limit = tool.LimitFlags & LimitModeMask;
    sink.Integer(LimitMode, limit == 0 ? 0 : limit == 2 ? 2 : 1);
    if (limit != 0) {
        sink.Integer(LimitP, (tool.LimitFlags & LimitPVariant) != 0);
        const int values = (tool.LimitFlags & LimitFourValues) != 0 ? 4 : 1;
        for (int i = 0; i < values; ++i) {
            sink.Number(LimitFirst + i, tool.LimitValues[i]);
        }
    }
}

template <typename Sink> void EmitFile(const ToolTable &table, Sink &sink)
{
    sink.Text(Magazine, CsvFileRowMark);
    const int type = table.DefaultArborType >= 1 ? WrittenArborType(table.DefaultArborType) : 0;
    EmitArbor(type, table.DefaultArbor, sink);
    sink.Integer(InitialMagazine, table.InitialMagazine);
}

std::vector<std::string> BuildColumns()
{
    std::vector<std::string> names = {
        "Magazine",    "Kind",        "Name",        "Diameter",    "Corner radius", "Parameter 3",
        "Parameter 4", "Parameter 5", "Parameter 6", "Parameter 7", "Flute length",  "Length mode"};
    for (int i = 1; i <= LengthValueCount; ++i) {
        names.push_back("Len" + std::to_string(i));
    }
    names.push_back("Arbor mode");
    for (int s = 1; s <= ArborDiameterCount; ++s) {
        const std::string section = "Arbor " + std::to_string(s);
        names.push_back(section + " diameter");
        if (s <= ArborSectionCount) {
            names.push_back(section + " length");
            names.push_back(section + " flag");
        }
    }
    names.insert(names.end(), {"Shift", "Shift value", "Pen"});
    for (char letter : OptFeedLetters) {
        const std::string feed = std::string("Feed ") + letter;
        names.push_back(feed);
        for (int k = 1; k <= OptFeedPointCount; ++k) {
            names.push_back(feed + " point " + std::to_string(k));
            if (k < OptFeedPointCount) {
                names.push_back(feed + " value " + std::to_string(k));
            }
        }
    }
    names.insert(names.end(), {"Limit mode", "Limit P"});
    for (int i = 1; i <= 4; ++i) {
        names.push_back("Limit " + std::to_string(i));
    }
    names.push_back("Initial magazine");
    return names;
}

} // namespace

const std::vector<std::string> &ToolTableCsvColumns()
{
    static const std::vector<std::string> names = BuildColumns();
    return names;
}

void ToolCsvCells(const ToolSlot &tool, int magazine, int codePage, std::vector<std::string> &cells)
{
    CellStrings sink(cells);
    EmitTool(tool, magazine, codePage, sink);
}

void FileCsvCells(const ToolTable &table, std::vector<std::string> &cells)
{
    CellStrings sink(cells);
    EmitFile(table, sink);
}

std::string FormatToolTableCsv(const ToolTable &table, int codePage)
{
    const std::size_t count =
        std::min(table.Slots.size(), static_cast<std::size_t>(std::max<int>(table.MagazineMax, 0)));
    std::size_t tools = 0;
    for (std::size_t slot = 0; slot < count; ++slot) {
        tools += table.Slots[slot].HasTool();
    }
    // Room for a fully populated row, so that the text is never copied.
    std::string out;
    out.reserve(4096 + tools * 2048);
    out += Bom;
    {
        CsvLine header(out);
        const auto &names = ToolTableCsvColumns();
        for (int column = 0; column < Count; ++column) {
            header.Text(column, names[static_cast<std::size_t>(column)]);
        }
        header.End();
    }
    CsvLine file(out);
    EmitFile(table, file);
    file.End();
    for (std::size_t slot = 0; slot < count; ++slot) {
        const ToolSlot &tool = table.Slots[slot];
        if (tool.ToolKind >= 0 && tool.ToolKind < KindCount) {
            CsvLine line(out);
            EmitTool(tool, static_cast<int>(slot) + 1, codePage, line);
            line.End();
        }
    }
    return out;
}

} // namespace qor
