#include "tool_limit_window.h"

#include "feed_limit_forms.h"
#include "form_controls.h"
#include "numeric_box.h"
#include "numeric_text.h"
#include "qt_text.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace qor {
ToolLimitWindow::ToolLimitWindow(Workspace &workspace, EditorForm &form, MessageService &messages,
                                 QWidget *parent)
    : AuxiliaryToolWindow(QStringLiteral("ToolLimit"), workspace, messages, parent), m_form(form)
{
    BuildControls();
    BuildLayout();
    SetCaptions();
    Connect();
    frmLimitSet();
}

void ToolLimitWindow::BuildControls()
{
    const auto list = [this](const char *name) {
        auto *box = new QComboBox(this);
        box->setObjectName(QLatin1String(name));
        return box;
    };
    m_cbLimKind = list("cbLimKind");
    m_cbOutType = list("cbOutType");
    m_cbSetKind = list("cbSetKind");
    m_lbTitle = new QLabel(this);
    m_lbTitle->setObjectName(QStringLiteral("lbTitle"));
    QFont bold = m_lbTitle->font();
    bold.setBold(true);
    m_lbTitle->setFont(bold);
    for (int i = 0; i < 4; ++i) {
        auto *label = new QLabel(this);
        label->setObjectName(QStringLiteral("lb%1").arg(i + 1));
        m_lb[static_cast<std::size_t>(i)] = label;
        auto *box = AddNumericBox([this, i] { return ValueLeft(i); });
        box->setObjectName(QStringLiteral("tbLimVal_%1").arg(i));
        box->setAlignment(Qt::AlignRight);
        box->setMaximumWidth(110);
        label->setBuddy(box);
        m_tbLimVal[static_cast<std::size_t>(i)] = box;
    }
    m_closeB = AddCloseButton(QStringLiteral("CloseB"));
}

void ToolLimitWindow::BuildLayout()
{
    auto *top = new QVBoxLayout(this);
    top->addWidget(m_lbTitle);
    auto *lists = new QHBoxLayout;
    lists->addWidget(m_cbLimKind);
    lists->addWidget(m_cbOutType);
    lists->addWidget(m_cbSetKind);
    top->addLayout(lists);
    auto *values = new QFormLayout;
    values->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (int i = 0; i < 4; ++i) {
        values->addRow(m_lb[static_cast<std::size_t>(i)], m_tbLimVal[static_cast<std::size_t>(i)]);
    }
    top->addLayout(values);
    top->addStretch(1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_closeB);
    top->addLayout(buttons);
    setTabOrder(m_cbLimKind, m_cbOutType);
    setTabOrder(m_cbOutType, m_cbSetKind);
    setTabOrder(m_cbSetKind, m_tbLimVal[0]);
    for (std::size_t i = 1; i < 4; ++i) {
        setTabOrder(m_tbLimVal[i - 1], m_tbLimVal[i]);
    }
    setTabOrder(m_tbLimVal[3], m_closeB);
}

void ToolLimitWindow::SetCaptions()
{
    const auto text = [this](int n) {
        return Qs(m_ws.Text("frmLimit", "Text" + std::to_string(n)));
    };
    setWindowTitle(text(1));
    m_lbTitle->setText(text(14));
    for (int i = 0; i < 4; ++i) {
        m_lb[static_cast<std::size_t>(i)]->setText(text(9 + i));
    }
    m_closeB->setText(text(13));
    m_cbLimKind->addItems({text(2), text(3), text(4)});
    m_cbOutType->addItems({text(5), text(6)});
    m_cbSetKind->addItems({text(7), text(8)});
}

void ToolLimitWindow::Connect()
{
    connect(m_cbLimKind, &QComboBox::activated, this, [this](int index) {
        m_form.Limit.LimKind.Index = index;
        LimitKindClick(m_form.Limit);
        frmLimitSet();
    });
    connect(m_cbOutType, &QComboBox::activated, this,
            [this](int index) { m_form.Limit.OutType.Index = index; });
    connect(m_cbSetKind, &QComboBox::activated, this, [this](int index) {
        m_form.Limit.SetKind.Index = index;
        LimitSetKindClick(m_form.Limit);
        frmLimitSet();
    });
    for (int i = 0; i < 4; ++i) {
        connect(m_tbLimVal[static_cast<std::size_t>(i)], &QLineEdit::textEdited, this,
                [this, i](const QString &text) {
                    m_form.Limit.Values[static_cast<std::size_t>(i)].Text = text.toStdString();
                });
    }
}

void ToolLimitWindow::frmLimitSet()
{
    const LimitForm &limit = m_form.Limit;
    ShowList(*m_cbLimKind, limit.LimKind);
    ShowList(*m_cbOutType, limit.OutType);
    ShowList(*m_cbSetKind, limit.SetKind);
    for (std::size_t i = 0; i < 4; ++i) {
        ShowBox(*m_tbLimVal[i], limit.Values[i]);
    }
}

void ToolLimitWindow::FocusValue(int i)
{
    if (i >= 0 && i < 4) {
        m_tbLimVal[static_cast<std::size_t>(i)]->setFocus(Qt::OtherFocusReason);
        m_tbLimVal[static_cast<std::size_t>(i)]->selectAll();
    }
}

bool ToolLimitWindow::ValueLeft(int i)
{
    return ToSingle(m_tbLimVal[static_cast<std::size_t>(i)]->text().toStdString()).has_value() ||
           RefuseNumber();
}

} // namespace qor
