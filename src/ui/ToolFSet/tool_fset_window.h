#pragma once

#include "auxiliary_tool_window.h"
#include "editor_form.h"
#include "option_feed_rows.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace qor {

class NumericBox;

// The option feed window: the four option feed tables (letters A, V, U, D)
// of the tool open in the editor, each through ten position boxes and nine
// value boxes that its scroll bar moves along the table. It edits the
// editor form's working copy, which storing the tool reads. Shown by the
// editor; CanB hides it.
class ToolFSetWindow : public AuxiliaryToolWindow
{
    Q_OBJECT

public:
    ToolFSetWindow(Workspace &workspace, EditorForm &form, MessageService &messages,
                   QWidget *parent = nullptr);

    // Shows the working copy: magazine number, check boxes, the boxes at
    // their scroll positions.
    void SetfrmFSet();

    int Offset(int letter) const;

private:
    void BuildControls();
    void BuildLayout();
    void SetCaptions();
    void Connect();
    void ShowLetter(int letter);
    void CheckClick(int letter, bool checked);
    void EnableLetter(int letter);
    void BoxEdited(FeedBox box, const QString &text);
    bool BoxLeft(FeedBox box);
    NumericBox *Box(FeedBox box) const;

    EditorForm &m_form;
    bool m_loading = false; // the window writes into its own boxes

    QLineEdit *m_fMagNo = nullptr;
    QLabel *m_magNoLabel = nullptr;
    std::array<std::array<NumericBox *, FeedPositionBoxes>, OptFeedLetterCount> m_pos{};
    std::array<std::array<NumericBox *, FeedValueBoxes>, OptFeedLetterCount> m_val{};
    std::array<std::array<QLabel *, FeedPositionBoxes>, OptFeedLetterCount> m_posNumbers{};
    std::array<QScrollBar *, OptFeedLetterCount> m_scroll{};
    std::array<QCheckBox *, OptFeedLetterCount> m_check{};
    std::array<QLabel *, 12> m_label{}; // Label1 .. Label12
    QPushButton *m_canB = nullptr;
};

} // namespace qor
