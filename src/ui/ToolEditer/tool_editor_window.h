#pragma once

#include "editor_form.h"
#include "editor_rules.h"
#include "message_service.h"
#include "tool_editor_link.h"
#include "workspace.h"

#include <QDialog>
#include <QPointer>
#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace qor {

class AuxiliaryToolWindow;
class EditorPicture;
class PictureSurface;
class LeaveChecker;
class NumericBox;
class ToolFSetWindow;
class ToolLimitWindow;
class TableHistory;

// The tool editor window: one magazine position of the tool table with its
// kind, shape values, length definition, arbor sections, shift and pen, and
// the tool drawn to scale. Its widgets show one EditorForm, which the rules
// (core/editing) change; the option feed and limit windows edit the same
// form. Created hidden at start-up and from then on only shown and hidden.
//
// Keys: Enter stores and returns to the list (OKB) unless a button has the
// focus, Escape cancels (CanB).
class ToolEditorWindow : public QDialog, public ToolEditorLink
{
    Q_OBJECT

public:
    ToolEditorWindow(Workspace &workspace, MessageService &messages, QWidget *parent = nullptr);
    ~ToolEditorWindow() override;

    EditorForm &Form() { return m_form; }
    EditorRules &Rules() { return m_rules; }

    // The windows this one shows, refreshes and hides; the list window it
    // returns to after OKB.
    void SetCompanions(ToolFSetWindow *optionFeed, ToolLimitWindow *limit);
    void SetListWindow(QWidget *list) { m_list = list; }
    // The table's undo history: stores join it, and an undo or redo of what
    // this window shows loads it again.
    void SetHistory(TableHistory *history);

    void SetMagazineNumber(const std::string &magNo) override;
    void ShowEditor() override;
    void HideEditor() override;

    // The buttons' actions, for the keyboard and for tests. keepB and OKB
    // store only when every box passes its check; true when stored.
    bool keepB_Click();
    bool OKB_Click();
    void CanB_Click();

signals:
    // A tool was stored into the table (keepB or OKB), or, with 0, the
    // file's default arbor (OKB only), or CanB emptied the position that the
    // list had filled with the new tool: the list rebuilds its rows and shows
    // that position.
    void stored(int magazineNumber);
    // The picture was drawn for a change of the tool.
    void redrawn();

protected:
    bool event(QEvent *event) override;
    void reject() override;

private:
    void BuildControls();
    void BuildLayout();
    void SetCaptions();
    void SetFonts();
    void SetTabOrder();
    void Connect();

    NumericBox *MakeBox(const QString &name, FormField field);
    void BoxEdited(FormField field, const QString &text);
    bool BoxLeft(FormField field);
    QWidget *WidgetOf(FormField field) const;

    // Shows what the rules wrote into the form.
    void Refresh(FormField field);
    void RefreshAll();
    void RefreshCaptions();
    void RefreshArbor();
    void RefreshGridRow(int row);
    void RefreshMagazine();
    void RefreshNameCount();

    // The whole value of MagNo; 0 for none.
    int MagazineNumber() const;
    void Redraw();
    void PaintPicture(PictureSurface &surface, bool afresh);
    void FormActivate();
    void ShowCompanion(AuxiliaryToolWindow *window);

    Workspace &m_ws;
    MessageService &m_messages;
    EditorForm m_form;
    EditorRules m_rules{m_form, m_ws};
    LeaveChecker *m_checker = nullptr;
    QPointer<ToolFSetWindow> m_optionFeed;
    QPointer<ToolLimitWindow> m_limit;
    QPointer<QWidget> m_list;
    TableHistory *m_history = nullptr;
    bool m_storing = false; // this window's own store is being recorded

    QLineEdit *m_magNo = nullptr;
    QComboBox *m_tool = nullptr;
    QLineEdit *m_toolName = nullptr;
    QLabel *m_toolNameCount = nullptr; // characters typed / kept by the store
    std::array<NumericBox *, ParaCount> m_para{};
    QComboBox *m_lenDef = nullptr;
    QLineEdit *m_keepLD = nullptr;
    std::array<NumericBox *, LengthBoxCount> m_lengths{};
    QComboBox *m_arbor = nullptr;
    std::array<QLabel *, ArborRowCount> m_arbNo{};
    std::array<NumericBox *, ArborRowCount> m_arbD{};
    std::array<NumericBox *, ArborRowCount> m_arbH{};
    std::array<QPushButton *, ArborRowCount> m_arbFlgB{};
    QScrollBar *m_vs1 = nullptr;
    QCheckBox *m_check1 = nullptr;
    NumericBox *m_shift = nullptr;
    QCheckBox *m_check2 = nullptr;
    NumericBox *m_pen = nullptr;
    EditorPicture *m_view = nullptr;
    QComboBox *m_viewScale = nullptr;
    QLabel *m_throwComment = nullptr;
    QPushButton *m_keepB = nullptr;
    QPushButton *m_okB = nullptr;
    QPushButton *m_canB = nullptr;
    QPushButton *m_newB = nullptr;
    QPushButton *m_command1 = nullptr;
    QPushButton *m_command2 = nullptr;
    QGroupBox *m_shapeFrame = nullptr;
    QGroupBox *m_lengthFrame = nullptr;
    QGroupBox *m_arborFrame = nullptr;
    QGroupBox *m_shiftFrame = nullptr;
    QGroupBox *m_pictureFrame = nullptr;
    // Label<n> shows the text of key Text<n> (or its variant); 0 unused.
    std::array<QLabel *, 51> m_label{};
};

} // namespace qor
