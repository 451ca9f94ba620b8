#pragma once

#include "editor_form.h"
#include "message_service.h"
#include "workspace.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace qor {

// The rules of the tool editor window, applied to its form and the
// workspace: choosing a kind, loading a slot, the defaults of a new tool and
// the switches. The window owns the form and one EditorRules over it; it
// hands user actions to the rules and shows what the form then holds.
//
// Redraws: a rule that changes what the picture shows ends with
// RequestRedraw(). The request reaches the redraw handler only while none of
// the workspace's DrawSuppressed, EditorBusy and DrawHold is set. Every write
// of a rule into the form happens while it holds one of them (DrawHold for a
// kind change and the switches, EditorBusy for a load, DrawSuppressed for
// the arbor), so that change handlers those writes trigger draw nothing; the
// rule then requests one redraw at the end.
//
// Change notification: every write of a rule into the form is reported to
// the change listener at once, while the rule's guards are still held. The
// window refreshes that widget. It may let the widget's change signal run
// BoxChanged (the guards then refuse the redraw) or block it; either way a
// kind change and a load draw exactly once. User input should reach the rules
// through the user-only signals (activated, clicked, textEdited), so that the
// window's own refreshes do not run a handler a second time.
class EditorRules
{
public:
    // Draws the tool from the form: the drawing's redraw entry.
    using RedrawHandler = std::function<void()>;
    using ChangeListener = std::function<void(FormField)>;

    EditorRules(EditorForm &form, Workspace &workspace);

    EditorForm &Form() { return m_form; }
    const EditorForm &Form() const { return m_form; }
    Workspace &Ws() { return m_ws; }
    const Workspace &Ws() const { return m_ws; }

    void SetRedrawHandler(RedrawHandler handler) { m_redraw = std::move(handler); }
    void SetChangeListener(ChangeListener listener) { m_changed = std::move(listener); }

    // Hands the request to the redraw handler unless a guard is set; true
    // when it was handed on.
    bool RequestRedraw();

    // The common change rule of a box the user typed into (its text is
    // already in the form): a numeric text redraws; Pen never redraws.
    void BoxChanged(FormField field);

    // For the rules kept beside this class (field entry, length definition,
    // arbor sections): writes the text of a box (see FormBox) and reports
    // it when it changed; reports a write made straight into the form.
    void WriteBox(FormField field, std::string text);
    void Report(FormField field) { Notify(field); }

    // Chooses a kind list position and runs ToolClick. A position the list
    // does not offer (the tenth kind while it is not offered, anything
    // outside 0..9) leaves no kind chosen.
    void SelectKind(int position);

    // Applies the chosen kind: enabled boxes, zeroed values, scribing mode,
    // the kind's derived defaults, captions and tooltips, then one redraw.
    // With no kind chosen it only hides the kind-9 note and redraws.
    void ToolClick();

    // Enables Para(i) where character i of the mask is set.
    void showPara(std::string_view mask);

    // Writes "0" into Para(i) where character i of the mask is clear.
    void ParaDefVal(std::string_view mask);

    // Scribing mode: on locks Arbor, LenDef, Check1 and Command1 and clears
    // the length definition and the shift; off unlocks them and restores
    // nothing.
    void Kegaki(bool on);

    // The length-definition list: chooses a position and enables the length
    // boxes it uses; then redraws.
    void SelectLengthDefinition(int position);

    // The arbor list: chooses an arbor type; the arbor-editing controls are
    // enabled while an arbor is chosen and the list is enabled. Then redraws.
    void SelectArbor(int position);

    // Enables or disables the arbor-editing controls.
    void ArbEdit(bool on);

    // Cancel: the working arbor sections go back to the saved copy.
    void RestoreSavedSections();

    void SelectViewScale(int position);

    // Writes the magazine box and runs MagNoChange.
    void SetMagNo(std::string text);

    // The list hands a position to the editor: like SetMagNo, but writing
    // the number already shown is no change, so the user's unsaved edits
    // stay, unless the table no longer holds what the editor loaded from it
    // (a read, a store, a delete): then the window shows the table again.
    void ShowMagazine(std::string text);

    // Reloads the window for the magazine box's whole value n, from the
    // table's current slot. Unless n is 1001 the option feed copy and the
    // limit state are reloaded first. n = 0 loads no tool; with the
    // workspace's ArborEdit set it loads the file-level arbor into the arbor
    // list and the working sections instead, for keepB to store back. A
    // slot load draws once at the end, unless ArborOnlyMode is set.
    void MagNoChange();

    // The defaults of a new tool. Also empties the tool name, so that a new
    // tool does not inherit the comment of the one shown before.
    void DataIniSet();

    // Moves the editor to the first free position with the defaults of a new
    // tool and an empty option feed and limit, and draws once. Returns its
    // magazine number; when every position is used, shows "MSG14" and
    // returns nothing, leaving everything as it was.
    std::optional<int> NewB(MessageService &messages);

    // The shift switch: cleared, Shift becomes "0" and is disabled.
    void Check1Click(bool checked);

    // The pen switch: cleared, Pen is only disabled and keeps its text.
    void Check2Click(bool checked);

private:
    template <typename T> void Assign(T &target, T value, FormField field);
    void WriteText(TextBox &box, FormField field, std::string text);
    void Notify(FormField field);
    void SetKindPosition(int position);
    void ApplyArbor();
    void ApplyLengthDefinition();
    void SetCaptions(int kind);
    void LoadSlot(const ToolSlot &slot);
    void LoadFileArbor();
    void ClearFeedAndLimit();

    // What the last load showed: the magazine number, and the slot or the
    // file's arbor it was loaded from.
    struct Loaded
    {
        std::string MagNo;
        bool ArborEdit = false;
        ToolSlot Slot;
        std::int16_t ArborType = 0;
        ArborSections Arbor;
        bool operator==(const Loaded &) const = default;
    };
    Loaded WhatTableHolds() const;

    EditorForm &m_form;
    Workspace &m_ws;
    std::optional<Loaded> m_loaded;
    RedrawHandler m_redraw;
    ChangeListener m_changed;
};

// The text box a field names: MagNo, Para(i), a length box, ToolName,
// Shift or Pen; nullptr for anything else or an index out of range.
TextBox *FormBox(EditorForm &form, FormField field);
const TextBox *FormBox(const EditorForm &form, FormField field);

// The numeric value of a box as the rules read it: 0 for a text that is not
// numeric (empty, a lone "-" or ".").
float BoxValue(const TextBox &box);

// What loading the slot into the editor shows, for drawing a slot without a
// window: a fresh form loaded through MagNoChange with the slot as the
// current slot. The workspace is left as it was (current slot and flags).
EditorForm FillFormFromSlot(Workspace &workspace, int slot);

} // namespace qor
