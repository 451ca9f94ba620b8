// Building the tool editor's controls, their layout, captions, fonts and
// tab order; the behaviour is in tool_editor_window.cpp.
#include "arbor_grid.h"
#include "editor_picture.h"
#include "field_entry.h"
#include "kind_table.h"
#include "leave_checker.h"
#include "length_definition_choice.h"
#include "numeric_box.h"
#include "qt_text.h"
#include "settings_fonts.h"
#include "tool_editor_window.h"
#include "typed_key_filter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QScrollBar>
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

} // namespace qor
