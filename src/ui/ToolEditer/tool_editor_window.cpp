#include "tool_editor_window.h"

#include "arbor_grid.h"
#include "editor_picture.h"
#include "editor_store.h"
#include "field_entry.h"
#include "flag_hold.h"
#include "form_controls.h"
#include "leave_checker.h"
#include "length_definition_choice.h"
#include "numeric_box.h"
#include "numeric_text.h"
#include "qt_text.h"
#include "table_history.h"
#include "tool_drawing.h"
#include "tool_fset_window.h"
#include "tool_limit_window.h"
#include "tool_list_commands.h"
#include "window_look.h"
#include "window_placement.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>

namespace qor {

ToolEditorWindow::ToolEditorWindow(Workspace &workspace, MessageService &messages, QWidget *parent)
    : QDialog(parent), m_ws(workspace), m_messages(messages)
{
    setObjectName(QStringLiteral("ToolEditer"));
    setModal(false);
    setSizeGripEnabled(true);
    m_checker = new LeaveChecker(this);
    BuildControls();
    BuildLayout();
    SetCaptions();
    SetFonts();
    SetTabOrder();
    UseBoxColours(*this);
    Connect();
    m_rules.SetChangeListener([this](FormField field) { Refresh(field); });
    m_rules.SetRedrawHandler([this] { Redraw(); });
    m_view->SetPainter(
        [this](PictureSurface &surface, bool afresh) { PaintPicture(surface, afresh); });
    {
        // Shows the empty form as the list would leave it: no tool yet.
        FlagHold hold(m_ws.DrawSuppressed);
        ArbDataSet(m_rules);
    }
    RefreshAll();
}

ToolEditorWindow::~ToolEditorWindow()
{
    // The companions and the checker work on the form: they go first.
    delete m_optionFeed;
    delete m_limit;
    delete m_checker;
    m_rules.SetChangeListener({});
    m_rules.SetRedrawHandler({});
}

void ToolEditorWindow::Connect()
{
    connect(m_tool, &QComboBox::activated, this, [this](int index) { m_rules.SelectKind(index); });
    connect(m_toolName, &QLineEdit::textEdited, this,
            [this](const QString &text) { m_form.ToolName.Text = text.toStdString(); });
    connect(m_toolName, &QLineEdit::textChanged, this, [this] { RefreshNameCount(); });
    connect(m_lenDef, &QComboBox::activated, this,
            [this](int index) { ChooseLengthDefinition(m_rules, index, m_messages); });
    connect(m_arbor, &QComboBox::activated, this,
            [this](int index) { m_rules.SelectArbor(index); });
    for (int row = 0; row < ArborRowCount; ++row) {
        connect(m_arbFlgB[static_cast<std::size_t>(row)], &QPushButton::clicked, this,
                [this, row] { ArbFlgBClick(m_rules, row); });
    }
    connect(m_vs1, &QScrollBar::valueChanged, this,
            [this](int value) { ScrollArborGrid(m_rules, value); });
    connect(m_check1, &QCheckBox::clicked, this, [this](bool checked) {
        m_rules.Check1Click(checked);
        if (checked) {
            m_shift->setFocus(Qt::OtherFocusReason);
            m_shift->selectAll();
        }
    });
    connect(m_check2, &QCheckBox::clicked, this, [this](bool checked) {
        m_rules.Check2Click(checked);
        if (checked) {
            m_pen->setFocus(Qt::OtherFocusReason);
            m_pen->selectAll();
        }
    });
    connect(m_viewScale, &QComboBox::activated, this,
            [this](int index) { m_rules.SelectViewScale(index); });
    connect(m_newB, &QPushButton::clicked, this, [this] {
        m_checker->DropPending();
        m_rules.NewB(m_messages);
    });
    connect(m_keepB, &QPushButton::clicked, this, [this] { keepB_Click(); });
    connect(m_okB, &QPushButton::clicked, this, [this] { OKB_Click(); });
    connect(m_canB, &QPushButton::clicked, this, [this] { CanB_Click(); });
    connect(m_command1, &QPushButton::clicked, this, [this] { ShowCompanion(m_optionFeed); });
    connect(m_command2, &QPushButton::clicked, this, [this] { ShowCompanion(m_limit); });
}

void ToolEditorWindow::SetCompanions(ToolFSetWindow *optionFeed, ToolLimitWindow *limit)
{
    m_optionFeed = optionFeed;
    m_limit = limit;
    Refresh({FormPart::OptionFeed});
    Refresh({FormPart::Limit});
}

void ToolEditorWindow::BoxEdited(FormField field, const QString &text)
{
    std::string typed = text.toStdString();
    if (TextBox *box = FormBox(m_form, field)) {
        box->Text = std::move(typed);
    } else if (field.Part == FormPart::ArbD) {
        m_form.Grid.ArbD.at(static_cast<std::size_t>(field.Index)) = std::move(typed);
    } else if (field.Part == FormPart::ArbH) {
        m_form.Grid.ArbH.at(static_cast<std::size_t>(field.Index)) = std::move(typed);
    }
    if (BoxTextChanged(m_rules, field, m_messages) == EntryOutcome::Refused) {
        activateWindow(); // back from the message
        if (QWidget *widget = WidgetOf(field)) {
            widget->setFocus(Qt::OtherFocusReason);
        }
    }
}

bool ToolEditorWindow::BoxLeft(FormField field)
{
    return LeaveBox(m_rules, field, m_messages) == EntryOutcome::Accepted;
}

QWidget *ToolEditorWindow::WidgetOf(FormField field) const
{
    const auto index = static_cast<std::size_t>(field.Index);
    switch (field.Part) {
    case FormPart::MagNo:
        return m_magNo;
    case FormPart::Para:
        return index < m_para.size() ? m_para[index] : nullptr;
    case FormPart::Length:
        return index < m_lengths.size() ? m_lengths[index] : nullptr;
    case FormPart::Shift:
        return m_shift;
    case FormPart::Pen:
        return m_pen;
    case FormPart::ArbD:
        return index < m_arbD.size() ? m_arbD[index] : nullptr;
    case FormPart::ArbH:
        return index < m_arbH.size() ? m_arbH[index] : nullptr;
    case FormPart::ToolName:
        return m_toolName;
    default:
        return nullptr;
    }
}

void ToolEditorWindow::Refresh(FormField field)
{
    const auto index = static_cast<std::size_t>(field.Index);
    switch (field.Part) {
    case FormPart::MagNo:
        RefreshMagazine();
        break;
    case FormPart::Tool:
        if (m_tool->currentIndex() != m_form.Tool.Index) {
            m_tool->setCurrentIndex(m_form.Tool.Index);
        }
        break;
    case FormPart::Para:
        if (index < m_para.size()) {
            ShowBox(*m_para[index], m_form.Para[index]);
        }
        break;
    case FormPart::ToolName:
        if (m_toolName->text() != Qs(m_form.ToolName.Text)) {
            m_toolName->setText(Qs(m_form.ToolName.Text));
        }
        break;
    case FormPart::Length:
        if (index < m_lengths.size()) {
            ShowBox(*m_lengths[index], m_form.Lengths[index]);
        }
        break;
    case FormPart::keepLD:
        m_keepLD->setText(Qs(m_form.keepLD));
        break;
    case FormPart::Shift:
        ShowBox(*m_shift, m_form.Shift);
        break;
    case FormPart::Pen:
        ShowBox(*m_pen, m_form.Pen);
        break;
    case FormPart::Arbor:
        ShowList(*m_arbor, m_form.Arbor);
        RefreshArbor();
        break;
    case FormPart::LenDef:
        ShowList(*m_lenDef, m_form.LenDef);
        break;
    case FormPart::Check1:
        m_check1->setChecked(m_form.Check1.Checked);
        m_check1->setEnabled(m_form.Check1.Enabled);
        break;
    case FormPart::Check2:
        m_check2->setChecked(m_form.Check2.Checked);
        m_check2->setEnabled(m_form.Check2.Enabled);
        break;
    case FormPart::Command1:
        RefreshMagazine();
        break;
    case FormPart::Sections:
        RefreshArbor();
        ArbDataSet(m_rules);
        break;
    case FormPart::ArbD:
    case FormPart::ArbH:
    case FormPart::ArbFlgB:
        RefreshGridRow(field.Index);
        break;
    case FormPart::Captions:
        RefreshCaptions();
        break;
    case FormPart::OptionFeed:
        if (m_optionFeed) {
            m_optionFeed->SetfrmFSet();
        }
        break;
    case FormPart::Limit:
        if (m_limit) {
            m_limit->frmLimitSet();
        }
        break;
    }
}

void ToolEditorWindow::RefreshAll()
{
    RefreshNameCount();
    for (const FormPart part :
         {FormPart::MagNo, FormPart::Tool, FormPart::ToolName, FormPart::keepLD, FormPart::Shift,
          FormPart::Pen, FormPart::Arbor, FormPart::LenDef, FormPart::Check1, FormPart::Check2,
          FormPart::Captions}) {
        Refresh({part});
    }
    for (int i = 0; i < ParaCount; ++i) {
        Refresh({FormPart::Para, i});
    }
    for (int k = 0; k < LengthBoxCount; ++k) {
        Refresh({FormPart::Length, k});
    }
    for (int row = 0; row < ArborRowCount; ++row) {
        RefreshGridRow(row);
    }
    m_viewScale->setCurrentIndex(m_form.ViewScale.Index);
}

void ToolEditorWindow::RefreshCaptions()
{
    const auto text = [this](std::string_view key) { return Qs(m_ws.Text("frmEditor", key)); };
    m_label[5]->setText(text(m_form.Label5));
    m_label[8]->setText(text(m_form.Label8));
    m_label[10]->setText(text(m_form.Label10));
    m_label[15]->setText(text(m_form.Label15));
    m_label[25]->setText(text(m_form.ShNLabel));
    m_label[27]->setText(text(m_form.ShNbLabel));
    for (std::size_t i = 0; i < m_para.size(); ++i) {
        m_para[i]->setToolTip(text(m_form.ParaTips[i]));
    }
    m_throwComment->setVisible(m_form.ThrowCommentVisible);
    m_arborFrame->setTitle(text(m_form.ArborFrame));
}

void ToolEditorWindow::RefreshArbor()
{
    const bool on = m_form.ArbEditEnabled;
    const bool flags = ArborFlagsInUse(m_form);
    for (int row = 0; row < ArborRowCount; ++row) {
        const auto r = static_cast<std::size_t>(row);
        m_arbD[r]->setEnabled(on);
        m_arbH[r]->setEnabled(on);
        m_arbFlgB[r]->setEnabled(flags);
    }
    m_vs1->setEnabled(on);
}

void ToolEditorWindow::RefreshGridRow(int row)
{
    if (row < 0 || row >= ArborRowCount) {
        return;
    }
    const auto r = static_cast<std::size_t>(row);
    m_arbD[r]->ShowText(Qs(m_form.Grid.ArbD[r]));
    m_arbH[r]->ShowText(Qs(m_form.Grid.ArbH[r]));
    m_arbFlgB[r]->setText(Qs(ArborFlagCaption(m_ws, m_form, row)));
    m_arbNo[r]->setText(QString::number(m_form.Grid.First + row + 1));
    if (m_vs1->value() != m_form.Grid.First) {
        const QSignalBlocker block(m_vs1);
        m_vs1->setValue(m_form.Grid.First);
    }
}

void ToolEditorWindow::RefreshMagazine()
{
    if (m_magNo->text() != Qs(m_form.MagNo.Text)) {
        m_magNo->setText(Qs(m_form.MagNo.Text));
    }
    // Magazine 0 (or none) edits the file's default arbor: the tool's own
    // fields take no input then.
    const bool tool = MagazineNumber() >= 1;
    for (QWidget *part :
         std::initializer_list<QWidget *>{m_tool, m_toolName, m_toolNameCount, m_shapeFrame,
                                          m_lengthFrame, m_shiftFrame, m_newB, m_command2}) {
        part->setEnabled(tool);
    }
    m_command1->setEnabled(tool && m_form.Command1Enabled);
}

void ToolEditorWindow::RefreshNameCount()
{
    // Counted as the store counts, so the count turns red exactly where the
    // stored name would be cut.
    const std::size_t characters = NameCharacters(m_toolName->text().toStdString());
    const bool cut = characters > CommentCharacters;
    m_toolNameCount->setText(QStringLiteral("%1/%2").arg(characters).arg(CommentCharacters));
    // Red and bold past the limit; greyed like any label while disabled.
    QPalette palette = this->palette();
    if (cut) {
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            palette.setColor(group, QPalette::WindowText, QColor(0xC0, 0x00, 0x00));
        }
    }
    m_toolNameCount->setPalette(palette);
    QFont font = m_toolNameCount->font();
    font.setBold(cut);
    m_toolNameCount->setFont(font);
}

int ToolEditorWindow::MagazineNumber() const
{
    return ToInt16(m_form.MagNo.Text).value_or(0);
}

void ToolEditorWindow::Redraw()
{
    m_view->Draw();
}

void ToolEditorWindow::PaintPicture(PictureSurface &surface, bool afresh)
{
    if (afresh) {
        DrawTool(m_ws, m_form, surface);
        return;
    }
    if (RedrawTool(m_ws, m_form, surface, [this](FormField field) { Refresh(field); })) {
        emit redrawn();
    }
}

void ToolEditorWindow::SetMagazineNumber(const std::string &magNo)
{
    m_rules.ShowMagazine(magNo);
    if (MagazineNumber() < 1) {
        // Loading no tool draws nothing; the picture must not go on showing
        // the tool of before under the file's arbor.
        m_rules.RequestRedraw();
    }
}

void ToolEditorWindow::ShowEditor()
{
    show();
    KeepOnScreen(*this);
    raise();
    activateWindow();
}

void ToolEditorWindow::HideEditor()
{
    m_checker->DropPending();
    for (QWidget *companion : std::initializer_list<QWidget *>{m_optionFeed, m_limit}) {
        if (companion != nullptr) {
            companion->hide();
        }
    }
    hide();
}

void ToolEditorWindow::ShowCompanion(AuxiliaryToolWindow *window)
{
    if (window != nullptr) {
        // First beside the editor's buttons, where the user's eyes are.
        window->ShowAt(m_command1->mapToGlobal(QPoint(0, m_command1->height() + 8)));
    }
}

void ToolEditorWindow::SetHistory(TableHistory *history)
{
    m_history = history;
    connect(
        history, &TableHistory::applied, this, [this](const TableChange &change, ChangeDirection) {
            if (m_storing || m_form.MagNo.Text.empty()) {
                return;
            }
            const int magazine = MagazineNumber();
            const std::vector<int> touched = ChangedSlots(change);
            const bool shown =
                magazine == 0 ? change.Arbor.has_value()
                              : std::binary_search(touched.begin(), touched.end(), magazine - 1);
            if (shown && magazine >= 0) {
                // What the table holds now, edits of this window included.
                m_rules.SetMagNo(std::to_string(magazine));
            }
        });
}

bool ToolEditorWindow::keepB_Click()
{
    if (!m_checker->CommitFocused()) {
        return false;
    }
    const StoreOutcome outcome = StoreForm(m_form, m_ws, m_messages);
    if (!outcome.Stored) {
        if (outcome.Refused && outcome.Refused->Part == FormPart::Limit) {
            ShowCompanion(m_limit);
            if (m_limit) {
                m_limit->FocusValue(outcome.Refused->Index);
            }
        } else if (outcome.Refused) {
            if (QWidget *widget = WidgetOf(*outcome.Refused)) {
                widget->setFocus(Qt::OtherFocusReason);
            }
        }
        return false;
    }
    if (outcome.Change && m_history != nullptr) {
        m_storing = true;
        m_history->Push(*outcome.Change);
        m_storing = false;
    }
    // The list answers by choosing the stored row, which loads it into this
    // window; the file's arbor has no row, so the list hears of it only when
    // the editor closes.
    if (const int magazine = MagazineNumber(); magazine >= 1) {
        emit stored(magazine);
    }
    return true;
}

bool ToolEditorWindow::OKB_Click()
{
    if (!keepB_Click()) {
        return false;
    }
    const bool fileArbor = MagazineNumber() < 1;
    HideEditor();
    if (fileArbor) {
        emit stored(0);
    }
    if (m_list) {
        m_list->show();
        m_list->raise();
        m_list->activateWindow();
    }
    return true;
}

void ToolEditorWindow::CanB_Click()
{
    m_checker->DropPending();
    CancelArborEdits(m_rules);
    // A position that the list filled with the new tool for this edit is
    // empty again.
    const std::optional<int> emptied = CancelNewTool(m_ws);
    if (emptied && m_history != nullptr) {
        m_history->TakeBackNewTool(*emptied);
    }
    // The table still holds the tool as it was: show it again, so that the
    // discarded edits never come back.
    if (MagazineNumber() >= 1) {
        m_rules.SetMagNo(std::to_string(m_ws.Table.CurrentSlot + 1));
    }
    HideEditor();
    if (emptied) {
        emit stored(*emptied + 1);
    }
    if (m_list) {
        m_list->activateWindow();
    }
}

void ToolEditorWindow::reject()
{
    CanB_Click();
}

bool ToolEditorWindow::event(QEvent *event)
{
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate) {
        FormActivate();
    }
    return handled;
}

void ToolEditorWindow::FormActivate()
{
    if (m_checker->Busy()) {
        return;
    }
    // A row being typed into keeps its text, even one that is not a number.
    QWidget *focus = focusWidget();
    const bool typingInGrid = std::find(m_arbD.begin(), m_arbD.end(), focus) != m_arbD.end() ||
                              std::find(m_arbH.begin(), m_arbH.end(), focus) != m_arbH.end();
    if (!typingInGrid) {
        ArbDataSet(m_rules);
    }
    m_rules.RequestRedraw();
}

} // namespace qor
