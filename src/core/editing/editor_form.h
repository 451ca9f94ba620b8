#pragma once

#include "length_definition.h"
#include "tool_table.h"

#include <array>
#include <string>
#include <string_view>

namespace qor {

inline constexpr int ParaCount = 8;
inline constexpr int NoListEntry = -1;

// A text box of the editor: what it shows and whether it takes input.
// Enabled boxes are drawn white, disabled ones in the button face colour.
struct TextBox
{
    std::string Text;
    bool Enabled = true;

    bool operator==(const TextBox &) const = default;
};

// A drop-down list: the chosen position (NoListEntry: none).
struct ListBox
{
    int Index = 0;
    bool Enabled = true;

    bool operator==(const ListBox &) const = default;
};

struct CheckBox
{
    bool Checked = false;
    bool Enabled = true;

    bool operator==(const CheckBox &) const = default;
};

// The working copy of the option feed window: the tables it edits and its
// four presence switches, letters in the order A, V, U, D. Positions and
// values are 0-based here: FeedPos[L][0] is position 1 of letter L, and
// FeedVal[L][k] lies between FeedPos[L][k] and FeedPos[L][k + 1].
struct OptionFeedForm
{
    std::string MagNo; // fMagNo: a change reloads the working copy
    std::array<std::array<float, OptFeedPointCount>, OptFeedLetterCount> FeedPos{};
    std::array<std::array<float, OptFeedValueCount>, OptFeedLetterCount> FeedVal{};
    std::array<bool, OptFeedLetterCount> On{}; // Check1(0..3); the letter's boxes follow it

    bool operator==(const OptionFeedForm &) const = default;
};

// The state of the limit window: its controls are the working data.
struct LimitForm
{
    ListBox LimKind{0, true};  // cbLimKind: 0 none, 1 "LIMIT", 2 "LIMITS"
    ListBox OutType{0, false}; // cbOutType: 1 = "P" variant
    ListBox SetKind{0, false}; // cbSetKind: 1 = four values
    std::array<TextBox, 4> Values{{{"0", false}, {"0", false}, {"0", false}, {"0", false}}};

    bool operator==(const LimitForm &) const = default;
};

// Sections shown at a time beside the scroll bar VS1.
inline constexpr int ArborRowCount = 5;

// The arbor-section grid: row j shows working section First + j, its
// diameter in ArbD(j), its length in ArbH(j) and its flag on ArbFlgB(j).
// The texts are what the boxes show; a numeric text typed into a box is
// copied into the working sections at once.
struct ArborGrid
{
    int First = 0; // VS1: 0 .. ArborSectionCount - ArborRowCount
    std::array<std::string, ArborRowCount> ArbD;
    std::array<std::string, ArborRowCount> ArbH;

    bool operator==(const ArborGrid &) const = default;
};

// Everything the tool editor window shows, as a plain value. The Qt window
// binds its widgets to it; the drawing reads it; `ttltool render` fills one
// from a slot. Captions and tooltips are catalogue keys of section
// "frmEditor" (an empty key is an empty text), so the value does not depend
// on the language; the keys always view string literals, so copies are safe.
struct EditorForm
{
    TextBox MagNo;
    ListBox Tool{NoListEntry, true}; // position = kind code 0..9
    std::array<TextBox, ParaCount> Para;
    TextBox ToolName; // UTF-8 for display
    // The comment's bytes as the table held them when the slot was loaded,
    // so that a comment the user did not touch is stored back byte for byte.
    std::string ToolNameBytes;
    std::array<TextBox, LengthBoxCount> Lengths; // indexed by LengthBox
    std::string keepLD = "0";                    // hidden copy of the length mode
    TextBox Shift;
    TextBox Pen;
    ListBox Arbor;               // ArborMode 0..3
    ListBox LenDef;              // LengthMode 0..3
    ListBox ViewScale;           // 0 fit to the picture, 1 true size
    CheckBox Check1;             // shift switch
    CheckBox Check2;             // pen switch
    bool Command1Enabled = true; // opens the option feed window
    bool ArbEditEnabled = false; // ArbD, ArbH, ArbFlgB and the section scroll bar

    std::string_view Label5 = "Text5";   // label of Para(1)
    std::string_view Label8 = "Text8";   // label of Para(4)
    std::string_view Label10 = "Text10"; // label of Para(6)
    std::string_view Label15 = "Text15"; // label of Para(7)
    std::array<std::string_view, ParaCount> ParaTips{"Text78", "Text92", "Text80", "Text81",
                                                     "Text82", "Text83", "Text84", "Text85"};
    std::string_view ShNLabel = "Text25"; // changes with the length definition
    std::string_view ShNbLabel = "Text27";
    std::string_view ArborFrame = "Text51"; // "Text51-2" while the file's arbor is edited
    bool ThrowCommentVisible = false;       // txtT_ThrowComment, kind 9 only

    // The arbor sections being edited and the copy a cancel goes back to.
    ArborSections Sections;
    ArborSections SavedSections;
    ArborGrid Grid;

    // Set while the drawing writes its derived values back into the boxes,
    // so that their change handlers leave those writes alone.
    bool DerivedWrite = false;

    OptionFeedForm OptionFeed;
    LimitForm Limit;

    bool operator==(const EditorForm &) const = default;
};

// Names a part of the form that a rule wrote, for the window to refresh.
enum class FormPart
{
    MagNo,
    Tool,
    Para, // index 0..7
    ToolName,
    Length, // index: LengthBox
    keepLD,
    Shift,
    Pen,
    Arbor,
    LenDef,
    Check1,
    Check2,
    Command1,
    Sections,   // working arbor sections and arbor-editing controls
    ArbD,       // index: grid row
    ArbH,       // index: grid row
    ArbFlgB,    // index: grid row
    Captions,   // labels, tooltips, txtT_ThrowComment
    OptionFeed, // the option feed window's working copy
    Limit,      // the limit window's controls
};

struct FormField
{
    FormPart Part;
    int Index = 0;

    bool operator==(const FormField &) const = default;
};

// Catalogue keys of the fixed list entries.
inline constexpr std::array<std::string_view, 4> ArborListKeys = {"Str14", "Str60", "Str61",
                                                                  "Str62"}; // section "String"
inline constexpr std::array<std::string_view, 4> LenDefListKeys = {"Text70", "Text71", "Text72",
                                                                   "Text73"}; // "frmEditor"
inline constexpr std::array<std::string_view, 2> ViewScaleListKeys = {"Str70", "Str71"}; // "String"

} // namespace qor
