#pragma once

#include "editor_form.h"
#include "message_service.h"
#include "option_feed_rows.h"
#include "workspace.h"

#include <QWidget>
#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace qor {

class LeaveChecker;
class NumericBox;

// The option feed window: the four option feed tables (letters A, V, U, D)
// of the tool open in the editor, each through ten position boxes and nine
// value boxes that its scroll bar moves along the table. It edits the
// editor form's working copy, which storing the tool reads. A small tool
// window, shown by the editor and hidden by CanB, Escape, or as soon as
// another window is activated.
class ToolFSetWindow : public QWidget
{
    Q_OBJECT

public:
    ToolFSetWindow(Workspace &workspace, EditorForm &form, MessageService &messages,
                   QWidget *parent = nullptr);

    // Shows the working copy: magazine number, check boxes, the boxes at
    // their scroll positions.
    void SetfrmFSet();

    int Offset(int letter) const;

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

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
    void HideUnlessActive();

    Workspace &m_ws;
    EditorForm &m_form;
    MessageService &m_messages;
    LeaveChecker *m_checker = nullptr;
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
