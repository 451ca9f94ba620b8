#pragma once

#include "auxiliary_tool_window.h"
#include "editor_form.h"

#include <array>

class QComboBox;
class QLabel;
class QPushButton;

namespace qor {

class NumericBox;

// The limit window: the limit kind, output variant, value count and up to
// four values of the tool open in the editor. Its controls are the editor
// form's limit state, which storing the tool reads. Shown by the editor;
// CloseB hides it.
class ToolLimitWindow : public AuxiliaryToolWindow
{
    Q_OBJECT

public:
    ToolLimitWindow(Workspace &workspace, EditorForm &form, MessageService &messages,
                    QWidget *parent = nullptr);

    // Shows the form's limit state: list positions, values, enabled states.
    void frmLimitSet();

    // Puts the focus into value box i (after a store refused its text).
    void FocusValue(int i);

private:
    void BuildControls();
    void BuildLayout();
    void SetCaptions();
    void Connect();
    bool ValueLeft(int i);

    EditorForm &m_form;

    QComboBox *m_cbLimKind = nullptr;
    QComboBox *m_cbOutType = nullptr;
    QComboBox *m_cbSetKind = nullptr;
    std::array<NumericBox *, 4> m_tbLimVal{};
    QLabel *m_lbTitle = nullptr;
    std::array<QLabel *, 4> m_lb{};
    QPushButton *m_closeB = nullptr;
};

} // namespace qor
