#pragma once

#include "editor_rules.h"
#include "message_service.h"

namespace qor {

// What the editor's numeric boxes do with a keystroke, a change of their
// text and the focus leaving them. A box is named by its FormField: Para(i),
// a length box (Length, ShD, ShN, ShNb, ShT, ShTb), Shift, Pen, or a row of
// the arbor grid (ArbD(j), ArbH(j)).

// Key codes as the boxes see them: a typed character's code, 8 for the
// backspace.
inline constexpr int KeyBackspace = 8;
inline constexpr int KeyMinus = '-';
inline constexpr int KeyPoint = '.';
inline constexpr int KeyQuote = '"';

// The outcome of a change or leave rule. Refused: a message has been shown
// and the focus belongs back in the box.
enum class EntryOutcome
{
    Accepted,
    Refused
};

// The common keystroke filter: the backspace, "-", "." and the digits pass;
// anything else, the "/" among them, is dropped. Returns the key that
// remains, 0 when dropped. Never beeps; FilterKey does.
int NumKey(int key);

// The tool name's keystroke filter: the double quote is dropped, since the
// tool list file ends a name at it and has no way to hold one inside a name;
// anything else passes. Returns the key that remains, 0 when dropped. Never
// beeps; FilterKey does.
int NameKey(int key);

// The filter of one box: NumKey, then the box's own rule. The minus sign
// passes only in Para(1) of kinds 0 and 4, in ArbD(1) and in Shift; Pen takes
// digits and the backspace only; ToolName takes what NameKey lets through.
// A dropped key beeps. Returns the key that remains, 0 when dropped. Any
// other field drops nothing.
int FilterKey(const EditorForm &form, FormField box, int key, MessageService &messages);

// The whole text passes the numeric box's filter, key by key (for pasting);
// beeps once when it does not. Any other field, ToolName among them, takes
// every paste: its text is checked when the box is left.
bool FilterText(const EditorForm &form, FormField box, std::string_view text,
                MessageService &messages);

// The tool name's length in the characters that the store counts when it
// keeps the first CommentCharacters of them (UTF-8 code points).
std::size_t NameCharacters(std::string_view name);

// The change rule of a box whose new text the window has put into the form.
// A numeric text redraws (Pen never does), an arbor box first copies its
// value into the working sections. Para(4) and Para(5) are angles from 0 to
// below 90: another value shows "MSG19", empties the box and is Refused.
// A kind-7 diameter in Para(0) sets the half width Para(7) to half of it.
// Nothing happens while the parameter-change guard or the drawing's
// derived-write flag is set.
EntryOutcome BoxTextChanged(EditorRules &rules, FormField box, MessageService &messages);

// The check when the focus leaves a box. A text that is not numeric shows
// "MSG1" and is Refused, its text left as it is. Then the box's own rule:
// Pen must be 1 .. SupportPenMax - 1 ("MSG17-1", the highest pen, "MSG17-2");
// Length lowers ShN to itself; ShN raises Length to itself (length
// definitions 0 to 2) or is an angle from 0 to below 90 (definition 3,
// "MSG19"); ShNb is an angle from 0 to 90 at definition 3 ("MSG19"); ShT and
// ShTb raise Length to their sum at definition 3. A rule that writes another
// box redraws once. ToolName must not hold a double quote (a pasted one):
// "MSG28-1", Refused, the text left as it is; nor a character that the code
// page cannot hold (see CommentToStore): UnheldCharacterText, Refused.
EntryOutcome LeaveBox(EditorRules &rules, FormField box, MessageService &messages);

} // namespace qor
