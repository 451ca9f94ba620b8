#pragma once

#include "tool_kinds.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace qor {

inline constexpr int ArborSectionCount = 10;  // sections with a length
inline constexpr int ArborDiameterCount = 11; // one spare diameter closes a taper
inline constexpr int OptFeedLetterCount = 4;  // A, V, U, D
inline constexpr int OptFeedPointCount = 20;
inline constexpr int OptFeedValueCount = 19;
inline constexpr int LengthValueCount = 6;

inline constexpr std::array<char, OptFeedLetterCount> OptFeedLetters = {'A', 'V', 'U', 'D'};

// Limit flag bits of `LimitFlags`.
inline constexpr std::uint8_t LimitModeMask = 63;   // 0 none, 1 "LIMIT", 2 "LIMITS"
inline constexpr std::uint8_t LimitFourValues = 64; // four values instead of one
inline constexpr std::uint8_t LimitPVariant = 128;  // the "P" output variant

// Arbor sections, bottom up. Section i (0-based) is section i + 1 of the file.
// The list ends at the first diameter that is 0. `Flag` is used by arbor
// type 3 only: a set flag tapers the section to the next section's diameter.
struct ArborSections
{
    std::array<float, ArborDiameterCount> Dia{};
    std::array<float, ArborSectionCount> Len{};
    std::array<std::uint8_t, ArborSectionCount> Flag{};

    bool operator==(const ArborSections &) const = default;
};

// One magazine position. Every field's default is its empty value.
struct ToolSlot
{
    std::int16_t ToolKind = KindNone;
    float ToolDia = 0;
    float CornerRad = 0;
    float Param3 = 0;
    float Param4 = 0;
    float Param5 = 0;
    float Param6 = 0;
    float ToolLength = 0; // flute (cutting) length; the overall length is Len1
    float Param7 = 0;
    std::int16_t LengthMode = 0;               // 0 none, 1 "LENGTH/", 2 "LENGTH2/", 3 "LENGTH3/"
    std::array<float, LengthValueCount> Len{}; // Len[0] is Len1 ... Len[5] is Len6
    std::int16_t ArborMode = 0;                // 0 none, 1 "ARBOR", 2 "ARBOR2", 3 "ARBOR3"
    ArborSections Arbor;
    std::array<std::int16_t, OptFeedLetterCount> OptFeedOn{};
    std::array<std::array<float, OptFeedPointCount>, OptFeedLetterCount> OptFeedPos{};
    std::array<std::array<float, OptFeedValueCount>, OptFeedLetterCount> OptFeedVal{};
    std::string ToolComment; // bytes as read from the file, any encoding
    std::int16_t PenNo = 0;
    std::int16_t ShiftOn = 0;
    float ShiftValue = 0;
    std::uint8_t LimitFlags = 0;
    std::array<float, 4> LimitValues{};

    bool HasTool() const { return ToolKind >= 0; }
    bool operator==(const ToolSlot &) const = default;
};

// The contents of the tool changer's magazine plus the file-level arbor.
// Slot index = magazine number - 1.
struct ToolTable
{
    std::int16_t MagazineMax = 0;
    std::int16_t InitialMagazine = 0;
    std::int16_t CurrentSlot = 0;
    bool ForeignFile = false;
    std::int16_t DefaultArborType = 0; // 0 none, 1 "ARBOR", 2 "ARBOR2", 3 "ARBOR3"
    ArborSections DefaultArbor;
    std::vector<ToolSlot> Slots;

    // Filled once at start-up from the catalogue. KindNames[ToolKind + 1];
    // KindNames[0] is the word for a position without a tool.
    std::array<std::string, KindCount + 1> KindNames;
    std::array<std::string, 4> ArborTypeNames;
};

// Sizes the table to `magazineMax` empty slots, discarding any content.
void SizeToolTable(ToolTable &table, std::int16_t magazineMax);

// Empties one slot; slots outside the table are ignored.
void ClearSlot(ToolTable &table, int slot);

// Empties every slot and the file-level arbor.
void ClearToolTable(ToolTable &table);

// The default new tool: a ball end mill of diameter 10, corner radius 5,
// flute length 20, Len1 50, Len2 10, Len3 50.
ToolSlot DefaultNewTool();

// Puts the default new tool into the slot.
void NewDataSet(ToolTable &table, int slot);

// The index of the first slot without a tool, or -1 when the table is full.
int FirstFreeSlot(const ToolTable &table);

} // namespace qor
