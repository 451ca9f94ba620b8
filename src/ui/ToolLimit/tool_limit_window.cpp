#include "tool_limit_window.h"

#include "feed_limit_forms.h"
#include "field_entry.h"
#include "leave_checker.h"
#include "numeric_box.h"
#include "numeric_text.h"
#include "settings_fonts.h"
#include "window_look.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace qor {
namespace {

QString Qs(const std::string &text)
{
    return QString::fromStdString(text);
}

void ShowList(QComboBox &list, const ListBox &state)
{
    if (list.currentIndex() != state.Index) {
        list.setCurrentIndex(state.Index);
    }
    list.setEnabled(state.Enabled);
}

} // namespace

ToolLimitWindow::ToolLimitWindow(Workspace &workspace, EditorForm &form, MessageService &messages,
                                 QWidget *parent)
    : QWidget(parent, Qt::Tool), m_ws(workspace), m_form(form), m_messages(messages)
{
    setObjectName(QStringLiteral("ToolLimit"));
    m_checker = new LeaveChecker(this);
    BuildControls();
    BuildLayout();
    SetCaptions();
    UseBoxColours(*this);
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
        auto *box = new NumericBox(this);
        box->setObjectName(QStringLiteral("tbLimVal_%1").arg(i));
        box->setAlignment(Qt::AlignRight);
        box->setMaximumWidth(110);
        box->SetKeyFilter([this](int key) {
            if (NumKey(key) == 0) {
                m_messages.Beep();
                return false;
            }
            return true;
        });
        box->SetPasteFilter([this](const QString &text) {
            for (const QChar c : text) {
                if (NumKey(c.unicode()) == 0 || c.unicode() == KeyBackspace) {
                    m_messages.Beep();
                    return false;
                }
            }
            return true;
        });
        label->setBuddy(box);
        m_tbLimVal[static_cast<std::size_t>(i)] = box;
        m_checker->Watch(box, [this, i] { return ValueLeft(i); });
    }
    m_closeB = new QPushButton(this);
    m_closeB->setObjectName(QStringLiteral("CloseB"));
    m_closeB->setAutoDefault(false);
    ApplySettingsFont(*m_closeB, m_ws.Globals.ButtonFontSize, m_ws.Globals.ButtonFontBold);
    m_checker->DeferFor(m_closeB);
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
    // Activation may reach another window only after passing through none.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (now != nullptr && now->window() != this && isVisible()) {
            QTimer::singleShot(0, this, &ToolLimitWindow::HideUnlessActive);
        }
    });
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
    connect(m_closeB, &QPushButton::clicked, this, [this] {
        m_checker->DropPending();
        hide();
    });
}

void ToolLimitWindow::frmLimitSet()
{
    const LimitForm &limit = m_form.Limit;
    ShowList(*m_cbLimKind, limit.LimKind);
    ShowList(*m_cbOutType, limit.OutType);
    ShowList(*m_cbSetKind, limit.SetKind);
    for (std::size_t i = 0; i < 4; ++i) {
        m_tbLimVal[i]->ShowText(Qs(limit.Values[i].Text));
        m_tbLimVal[i]->setEnabled(limit.Values[i].Enabled);
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
    if (ToSingle(m_tbLimVal[static_cast<std::size_t>(i)]->text().toStdString())) {
        return true;
    }
    m_messages.Show(m_ws.Text("MSG", "MSG1"), MessageIcon::Exclamation, MessageButtons::Ok);
    return false;
}

void ToolLimitWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        QTimer::singleShot(0, this, &ToolLimitWindow::HideUnlessActive);
    }
}

void ToolLimitWindow::HideUnlessActive()
{
    if (isVisible() && !m_checker->Busy() && AnotherWindowTookOver(*this)) {
        hide();
    }
}

void ToolLimitWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        m_checker->DropPending();
        hide();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace qor
