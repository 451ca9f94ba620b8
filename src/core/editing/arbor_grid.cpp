#include "arbor_grid.h"

#include "flag_hold.h"
#include "numeric_text.h"

#include <algorithm>

namespace qor {
namespace {

std::size_t SectionOf(const EditorForm &form, int row)
{
    return static_cast<std::size_t>(form.Grid.First + row);
}

bool ValidRow(const EditorForm &form, int row)
{
    return row >= 0 && row < ArborRowCount && SectionOf(form, row) < ArborSectionCount;
}

} // namespace

void ArbDataSet(EditorRules &rules)
{
    EditorForm &form = rules.Form();
    FlagHold hold(rules.Ws().DrawSuppressed);
    form.Grid.First = std::clamp(form.Grid.First, 0, ArborGridLast);
    for (int row = 0; row < ArborRowCount; ++row) {
        const std::size_t section = SectionOf(form, row);
        const auto r = static_cast<std::size_t>(row);
        std::string dia = SingleToText(form.Sections.Dia[section]);
        std::string len = SingleToText(form.Sections.Len[section]);
        if (form.Grid.ArbD[r] != dia) {
            form.Grid.ArbD[r] = std::move(dia);
            rules.Report({FormPart::ArbD, row});
        }
        if (form.Grid.ArbH[r] != len) {
            form.Grid.ArbH[r] = std::move(len);
            rules.Report({FormPart::ArbH, row});
        }
        rules.Report({FormPart::ArbFlgB, row});
    }
}

void ScrollArborGrid(EditorRules &rules, int first)
{
    EditorForm &form = rules.Form();
    form.Grid.First = std::clamp(first, 0, ArborGridLast);
    if (!rules.Ws().DrawSuppressed) {
        ArbDataSet(rules);
    }
}

void ArbFlgBClick(EditorRules &rules, int row)
{
    EditorForm &form = rules.Form();
    if (!ValidRow(form, row) || !ArborFlagsInUse(form)) {
        return;
    }
    std::uint8_t &flag = form.Sections.Flag[SectionOf(form, row)];
    flag = flag != 0 ? 0 : 1;
    rules.Report({FormPart::ArbFlgB, row});
    rules.RequestRedraw();
}

bool ArborFlagsInUse(const EditorForm &form)
{
    return form.ArbEditEnabled && form.Arbor.Index == 3;
}

const std::string &ArborFlagCaption(const Workspace &workspace, const EditorForm &form, int row)
{
    const bool set = ValidRow(form, row) && form.Sections.Flag[SectionOf(form, row)] != 0;
    return workspace.ArborFlagCaptions[set ? 1 : 0];
}

void CancelArborEdits(EditorRules &rules)
{
    rules.RestoreSavedSections();
    ArbDataSet(rules);
}

} // namespace qor
