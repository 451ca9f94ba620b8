#pragma once

#include "tool_list_rows.h"

#include <string_view>
#include <vector>

namespace qor {

// What the find box above the list holds, taken apart once per keystroke.
// Terms are separated by blanks, and a row is shown when it matches every
// term:
//  - "D<10", "D >= 6", "r=0,5": a condition on the diameter (D) or the
//    corner radius (R) as the list shows them, with <, <=, >, >=, = or !=
//    (also <>), "." or "," as the decimal point; a blank cell fails it;
//  - a number ("12", "6.35"): a number column showing it (magazine number,
//    diameter, corner radius, shift, pen), or the tool name holding it;
//  - any other word: the kind word, whole, or a part of the tool name.
// Letters match in either case, and the full-width forms an input method
// types (Ｄ＜１０) as their plain ones. A condition still waiting for its
// number ("D<") is left out, so that the list does not empty while it is
// typed. A position without a tool matches no term.
class RowFilter
{
public:
    RowFilter() = default;
    explicit RowFilter(std::string_view query);

    // True when the filter shows every row.
    bool Empty() const { return m_terms.empty(); }

    bool Matches(const ToolListRows &rows, int row) const;

    // Matches for every row of the list, by row.
    std::vector<bool> MatchAll(const ToolListRows &rows) const;

private:
    enum class TermKind
    {
        Word,
        Number,
        Condition
    };
    enum class Comparison
    {
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Equal,
        NotEqual
    };
    struct Term
    {
        TermKind kind = TermKind::Word;
        std::string text; // folded: lower case, plain forms
        double value = 0; // Number, Condition
        ListColumn column = ListColumn::ToolDia;
        Comparison comparison = Comparison::Equal;
    };

    static bool TermMatches(const Term &term, const ToolListRows &rows, int row);

    std::vector<Term> m_terms;
};

} // namespace qor
