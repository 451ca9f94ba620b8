#include "tool_editor_window.h"

#include "arbor_grid.h"
#include "editor_picture.h"
#include "editor_store.h"
#include "field_entry.h"
#include "flag_hold.h"
#include "form_controls.h"
#include "kind_table.h"
#include "leave_checker.h"
#include "length_definition_choice.h"
#include "numeric_box.h"
#include "numeric_text.h"
#include "qt_text.h"
#include "settings_fonts.h"
#include "tool_drawing.h"
#include "tool_fset_window.h"
#include "tool_limit_window.h"
#include "typed_key_filter.h"
#include "window_look.h"
#include "window_placement.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace qor {
namespace {

constexpr int BoxWidth = 76;

// The label beside each box, by the number of its caption key.
constexpr std::array<int, ParaCount> ParaLabels = {4, 5, 6, 7, 8, 9, 10, 15};
constexpr std::array<int, LengthBoxCount> LengthLabels = {17, 18, 25, 27, 19, 20};
constexpr std::array<const char *, LengthBoxCount> LengthTips = {"Text77", "Text79", "Text87",
                                                                 "Text89", "Text76", "Text91"};

} // namespace

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

NumericBox *ToolEditorWindow::MakeBox(const QString &name, FormField field)
{
    auto *box = new NumericBox(this);
    box->setObjectName(name);
    box->setFixedWidth(BoxWidth);
    box->setAlignment(Qt::AlignRight);
    box->SetKeyFilter(
        [this, field](int key) { return FilterKey(m_form, field, key, m_messages) != 0; });
    box->SetPasteFilter([this, field](const QString &text) {
        return FilterText(m_form, field, text.toStdString(), m_messages);
    });
    connect(box, &QLineEdit::textEdited, this,
            [this, field](const QString &text) { BoxEdited(field, text); });
    m_checker->Watch(box, [this, field] { return BoxLeft(field); });
    return box;
}

void ToolEditorWindow::BuildControls()
{
    for (const int n :
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15, 16, 17, 18, 19, 20, 22, 23, 24, 25, 26, 27, 38, 50}) {
        auto *label = new QLabel(this);
        label->setObjectName(QStringLiteral("Label%1").arg(n));
        m_label[static_cast<std::size_t>(n)] = label;
    }
    const auto button = [this](const char *name) {
        auto *b = new QPushButton(this);
        b->setObjectName(QLatin1String(name));
        return b;
    };
    const auto list = [this](const char *name) {
        auto *b = new QComboBox(this);
        b->setObjectName(QLatin1String(name));
        return b;
    };

    m_magNo = new QLineEdit(this);
    m_magNo->setObjectName(QStringLiteral("MagNo"));
    m_magNo->setReadOnly(true); // the list and NewB choose the position
    m_magNo->setFocusPolicy(Qt::NoFocus);
    // Shown, never typed into: the button face marks it as such.
    QPalette shown = m_magNo->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        shown.setColor(group, QPalette::Base, shown.color(group, QPalette::Button));
    }
    m_magNo->setPalette(shown);
    m_magNo->setFixedWidth(BoxWidth);
    m_magNo->setAlignment(Qt::AlignRight);
    m_tool = list("Tool");
    for (const std::string &kind : KindListTexts(m_ws)) {
        m_tool->addItem(Qs(kind));
    }
    m_toolName = new QLineEdit(this);
    m_toolName->setObjectName(QStringLiteral("ToolName"));
    new TypedKeyFilter(m_toolName, [this](int key) {
        return FilterKey(m_form, {FormPart::ToolName}, key, m_messages) != 0;
    });
    m_checker->Watch(m_toolName, [this] { return BoxLeft({FormPart::ToolName}); });
    m_toolNameCount = new QLabel(this);
    m_toolNameCount->setObjectName(QStringLiteral("ToolNameCount"));
    m_toolNameCount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont countFont = m_toolNameCount->font();
    countFont.setBold(true);
    // Wide enough for three digits, so that typing does not move the box.
    m_toolNameCount->setMinimumWidth(
        QFontMetrics(countFont).horizontalAdvance(QStringLiteral("000/00")));
    for (int i = 0; i < ParaCount; ++i) {
        m_para[static_cast<std::size_t>(i)] =
            MakeBox(QStringLiteral("Para_%1").arg(i), {FormPart::Para, i});
        m_label[static_cast<std::size_t>(ParaLabels[static_cast<std::size_t>(i)])]->setBuddy(
            m_para[static_cast<std::size_t>(i)]);
    }
    m_throwComment = new QLabel(this);
    m_throwComment->setObjectName(QStringLiteral("txtT_ThrowComment"));
    m_throwComment->setWordWrap(true);

    m_lenDef = list("LenDef");
    for (const std::string_view key : LenDefListKeys) {
        m_lenDef->addItem(Qs(m_ws.Text("frmEditor", key)));
    }
    m_keepLD = new QLineEdit(this);
    m_keepLD->setObjectName(QStringLiteral("keepLD"));
    m_keepLD->hide();
    for (int k = 0; k < LengthBoxCount; ++k) {
        m_lengths[static_cast<std::size_t>(k)] = MakeBox(
            QLatin1String(LengthBoxNames[static_cast<std::size_t>(k)]), {FormPart::Length, k});
        m_label[static_cast<std::size_t>(LengthLabels[static_cast<std::size_t>(k)])]->setBuddy(
            m_lengths[static_cast<std::size_t>(k)]);
    }

    m_arbor = list("Arbor");
    for (const std::string_view key : ArborListKeys) {
        m_arbor->addItem(Qs(m_ws.Text("String", key)));
    }
    for (int row = 0; row < ArborRowCount; ++row) {
        const auto r = static_cast<std::size_t>(row);
        m_arbNo[r] = new QLabel(this);
        m_arbNo[r]->setObjectName(QStringLiteral("ArbNo_%1").arg(row));
        m_arbNo[r]->setAlignment(Qt::AlignCenter);
        m_arbD[r] = MakeBox(QStringLiteral("ArbD_%1").arg(row), {FormPart::ArbD, row});
        m_arbH[r] = MakeBox(QStringLiteral("ArbH_%1").arg(row), {FormPart::ArbH, row});
        m_arbFlgB[r] = new QPushButton(this);
        m_arbFlgB[r]->setObjectName(QStringLiteral("ArbFlgB_%1").arg(row));
        m_arbFlgB[r]->setAutoDefault(false);
    }
    m_vs1 = new QScrollBar(Qt::Vertical, this);
    m_vs1->setObjectName(QStringLiteral("VS1"));
    m_vs1->setRange(0, ArborGridLast);
    m_vs1->setPageStep(ArborRowCount);

    m_check1 = new QCheckBox(this);
    m_check1->setObjectName(QStringLiteral("Check1"));
    m_shift = MakeBox(QStringLiteral("Shift"), {FormPart::Shift});
    m_check2 = new QCheckBox(this);
    m_check2->setObjectName(QStringLiteral("Check2"));
    m_pen = MakeBox(QStringLiteral("Pen"), {FormPart::Pen});

    m_view = new EditorPicture(this);
    m_view->setObjectName(QStringLiteral("View"));
    m_viewScale = list("ViewScale");
    for (const std::string_view key : ViewScaleListKeys) {
        m_viewScale->addItem(Qs(m_ws.Text("String", key)));
    }

    m_keepB = button("keepB");
    m_okB = button("OKB");
    m_canB = button("CanB");
    m_newB = button("NewB");
    m_command1 = button("Command1");
    m_command2 = button("Command2");
    m_okB->setDefault(true);
    // A message popping up under the mouse must not swallow these clicks;
    // they decide about the box that was left themselves.
    for (QAbstractButton *decides : std::initializer_list<QAbstractButton *>{
             m_keepB, m_okB, m_canB, m_newB, m_check1, m_check2}) {
        m_checker->DeferFor(decides);
    }
}

void ToolEditorWindow::BuildLayout()
{
    const auto label = [this](int n) { return m_label[static_cast<std::size_t>(n)]; };
    const auto frame = [this](const char *name) {
        auto *box = new QGroupBox(this);
        box->setObjectName(QLatin1String(name));
        return box;
    };

    auto *head = new QGridLayout;
    head->addWidget(label(1), 0, 0);
    head->addWidget(m_magNo, 0, 1);
    head->addWidget(label(2), 0, 2, Qt::AlignRight);
    head->addWidget(m_tool, 0, 3);
    head->addWidget(m_newB, 0, 4);
    head->addWidget(label(3), 1, 0);
    auto *name = new QHBoxLayout;
    name->addWidget(m_toolName, 1);
    name->addWidget(m_toolNameCount);
    head->addLayout(name, 1, 1, 1, 4);
    head->setColumnStretch(3, 1);

    m_shapeFrame = frame("Frame12");
    auto *shape = new QGridLayout(m_shapeFrame);
    for (int i = 0; i < ParaCount; ++i) {
        const int column = i < 4 ? 0 : 3;
        const int row = i % 4;
        QLabel *caption = label(ParaLabels[static_cast<std::size_t>(i)]);
        shape->addWidget(caption, row, column);
        shape->addWidget(m_para[static_cast<std::size_t>(i)], row, column + 1);
    }
    shape->setColumnMinimumWidth(2, 24);
    shape->setColumnStretch(2, 1);
    shape->addWidget(m_throwComment, 4, 0, 1, 5);

    // The list's own label names this part; a frame title would repeat it.
    m_lengthFrame = frame("Frame16");
    auto *lengths = new QGridLayout(m_lengthFrame);
    lengths->addWidget(label(16), 0, 0);
    lengths->addWidget(m_lenDef, 0, 1, 1, 4);
    for (int k = 0; k < LengthBoxCount; ++k) {
        const int column = k % 2 == 0 ? 0 : 3;
        const int row = 1 + k / 2;
        lengths->addWidget(label(LengthLabels[static_cast<std::size_t>(k)]), row, column);
        lengths->addWidget(m_lengths[static_cast<std::size_t>(k)], row, column + 1);
    }
    lengths->setColumnMinimumWidth(2, 24);
    lengths->setColumnStretch(2, 1);
    lengths->setRowStretch(4, 1);

    m_arborFrame = frame("Frame51");
    auto *arbor = new QGridLayout(m_arborFrame);
    arbor->addWidget(label(50), 0, 0);
    arbor->addWidget(m_arbor, 0, 1, 1, 3);
    arbor->addWidget(label(26), 1, 0, Qt::AlignCenter);
    arbor->addWidget(label(22), 1, 1, Qt::AlignCenter);
    arbor->addWidget(label(23), 1, 2, Qt::AlignCenter);
    arbor->addWidget(label(24), 1, 3, Qt::AlignCenter);
    for (int row = 0; row < ArborRowCount; ++row) {
        const auto r = static_cast<std::size_t>(row);
        arbor->addWidget(m_arbNo[r], 2 + row, 0);
        arbor->addWidget(m_arbD[r], 2 + row, 1);
        arbor->addWidget(m_arbH[r], 2 + row, 2);
        arbor->addWidget(m_arbFlgB[r], 2 + row, 3);
    }
    arbor->addWidget(m_vs1, 2, 4, ArborRowCount, 1);
    arbor->setColumnStretch(3, 1);

    m_shiftFrame = frame("Frame52");
    auto *shift = new QHBoxLayout(m_shiftFrame);
    shift->addWidget(m_check1);
    shift->addWidget(m_shift);
    shift->addSpacing(24);
    shift->addWidget(m_check2);
    shift->addWidget(m_pen);
    shift->addStretch(1);

    auto *lower = new QHBoxLayout;
    lower->addWidget(m_lengthFrame, 1);
    lower->addWidget(m_arborFrame, 1);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_command1);
    buttons->addWidget(m_command2);
    buttons->addStretch(1);
    buttons->addWidget(m_keepB);
    buttons->addWidget(m_okB);
    buttons->addWidget(m_canB);

    auto *left = new QVBoxLayout;
    left->addLayout(head);
    left->addWidget(m_shapeFrame);
    left->addLayout(lower);
    left->addWidget(m_shiftFrame);
    left->addStretch(1);
    left->addLayout(buttons);

    m_pictureFrame = frame("Frame21");
    auto *picture = new QVBoxLayout(m_pictureFrame);
    picture->addWidget(m_view, 1);
    auto *scale = new QHBoxLayout;
    scale->addStretch(1);
    scale->addWidget(label(38));
    scale->addWidget(m_viewScale);
    picture->addLayout(scale);

    // The boxes keep their natural width; the picture takes the rest.
    auto *leftPanel = new QWidget(this);
    leftPanel->setLayout(left);
    left->setContentsMargins(0, 0, 0, 0);
    leftPanel->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    auto *top = new QHBoxLayout(this);
    top->addWidget(leftPanel);
    top->addWidget(m_pictureFrame, 1);
}

void ToolEditorWindow::SetCaptions()
{
    const auto text = [this](const char *key) { return Qs(m_ws.Text("frmEditor", key)); };
    setWindowTitle(text("Text0"));
    for (const int n : {1, 2, 3, 4, 6, 7, 9, 16, 17, 18, 19, 20, 22, 23, 24, 26, 38, 50}) {
        m_label[static_cast<std::size_t>(n)]->setText(
            Qs(m_ws.Text("frmEditor", "Text" + std::to_string(n))));
    }
    m_shapeFrame->setTitle(text("Text12"));
    m_pictureFrame->setTitle(text("Text21"));
    m_shiftFrame->setTitle(text("Text52"));
    m_keepB->setText(text("Text30"));
    m_okB->setText(text("Text31"));
    m_canB->setText(text("Text32"));
    m_newB->setText(text("Text33"));
    m_command1->setText(text("Text34"));
    m_command2->setText(text("Text35"));
    m_check1->setText(text("Text36"));
    m_check2->setText(text("Text37"));
    m_throwComment->setText(text("Text86"));
    m_shift->setToolTip(text("Text74"));
    m_pen->setToolTip(text("Text75"));
    m_toolName->setToolTip(text("Text96"));
    m_toolNameCount->setToolTip(text("Text96"));
    for (int k = 0; k < LengthBoxCount; ++k) {
        m_lengths[static_cast<std::size_t>(k)]->setToolTip(
            text(LengthTips[static_cast<std::size_t>(k)]));
    }
}

void ToolEditorWindow::SetFonts()
{
    for (QPushButton *b : {m_keepB, m_okB, m_canB, m_newB, m_command1, m_command2}) {
        ApplySettingsFont(*b, m_ws.Globals.ButtonFontSize, m_ws.Globals.ButtonFontBold);
    }
}

void ToolEditorWindow::SetTabOrder()
{
    std::vector<QWidget *> order{m_tool, m_toolName};
    order.insert(order.end(), m_para.begin(), m_para.end());
    order.push_back(m_lenDef);
    order.insert(order.end(), m_lengths.begin(), m_lengths.end());
    order.push_back(m_arbor);
    for (int row = 0; row < ArborRowCount; ++row) {
        const auto r = static_cast<std::size_t>(row);
        order.insert(order.end(), {m_arbD[r], m_arbH[r], m_arbFlgB[r]});
    }
    order.insert(order.end(), {m_vs1, m_check1, m_shift, m_check2, m_pen, m_viewScale, m_command1,
                               m_command2, m_newB, m_keepB, m_okB, m_canB});
    for (std::size_t i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
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
    // The table still holds the tool as it was: show it again, so that the
    // discarded edits never come back.
    if (MagazineNumber() >= 1) {
        m_rules.SetMagNo(std::to_string(m_ws.Table.CurrentSlot + 1));
    }
    HideEditor();
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
