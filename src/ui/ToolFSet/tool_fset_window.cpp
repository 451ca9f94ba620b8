#include "tool_fset_window.h"

#include "numeric_box.h"
#include "qt_text.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace qor {
namespace {

constexpr int BoxWidth = 58;
constexpr std::array<const char *, OptFeedLetterCount> LetterNames = {"A", "V", "U", "D"};

QString BoxName(FeedBox box)
{
    return QStringLiteral("F%1%2_%3")
        .arg(QLatin1String(LetterNames[static_cast<std::size_t>(box.Letter)]))
        .arg(box.Value ? QStringLiteral("V") : QString())
        .arg(box.Row);
}

} // namespace

ToolFSetWindow::ToolFSetWindow(Workspace &workspace, EditorForm &form, MessageService &messages,
                               QWidget *parent)
    : AuxiliaryToolWindow(QStringLiteral("ToolFSet"), workspace, messages, parent), m_form(form)
{
    BuildControls();
    BuildLayout();
    SetCaptions();
    Connect();
    SetfrmFSet();
}

void ToolFSetWindow::BuildControls()
{
    m_fMagNo = new QLineEdit(this);
    m_fMagNo->setObjectName(QStringLiteral("fMagNo"));
    m_fMagNo->setReadOnly(true);
    m_fMagNo->setFocusPolicy(Qt::NoFocus);
    m_fMagNo->setFixedWidth(BoxWidth);
    m_fMagNo->setAlignment(Qt::AlignRight);
    m_magNoLabel = new QLabel(this);
    for (std::size_t i = 0; i < m_label.size(); ++i) {
        m_label[i] = new QLabel(this);
        m_label[i]->setObjectName(QStringLiteral("Label%1").arg(i + 1));
    }
    for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
        const auto l = static_cast<std::size_t>(letter);
        m_check[l] = new QCheckBox(this);
        m_check[l]->setObjectName(QStringLiteral("Check1_%1").arg(letter));
        m_scroll[l] = new QScrollBar(Qt::Horizontal, this);
        m_scroll[l]->setObjectName(QStringLiteral("HScF%1").arg(QLatin1String(LetterNames[l])));
        m_scroll[l]->setRange(0, FeedOffsetMax);
        m_scroll[l]->setPageStep(1);
        for (int value = 0; value < 2; ++value) {
            const int rows = value != 0 ? FeedValueBoxes : FeedPositionBoxes;
            for (int row = 0; row < rows; ++row) {
                const FeedBox box{letter, value != 0, row};
                auto *edit = AddNumericBox([this, box] { return BoxLeft(box); });
                edit->setObjectName(BoxName(box));
                edit->setFixedWidth(BoxWidth);
                edit->setAlignment(Qt::AlignRight);
                (value != 0 ? m_val[l][static_cast<std::size_t>(row)]
                            : m_pos[l][static_cast<std::size_t>(row)]) = edit;
            }
        }
        for (int row = 0; row < FeedPositionBoxes; ++row) {
            auto *number = new QLabel(this);
            number->setAlignment(Qt::AlignCenter);
            number->setForegroundRole(QPalette::PlaceholderText);
            m_posNumbers[l][static_cast<std::size_t>(row)] = number;
        }
    }
    m_canB = AddCloseButton(QStringLiteral("CanB"));
}

void ToolFSetWindow::BuildLayout()
{
    auto *top = new QVBoxLayout(this);
    auto *head = new QHBoxLayout;
    head->addWidget(m_magNoLabel);
    head->addWidget(m_fMagNo);
    head->addStretch(1);
    top->addLayout(head);

    QWidget *previous = nullptr;
    for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
        const auto l = static_cast<std::size_t>(letter);
        auto *frame = new QFrame(this);
        frame->setFrameShape(QFrame::StyledPanel);
        auto *grid = new QGridLayout(frame);
        grid->setHorizontalSpacing(2);
        grid->setVerticalSpacing(3);
        auto *title = new QHBoxLayout;
        QFont bold = m_label[l]->font();
        bold.setBold(true);
        m_label[l]->setFont(bold);
        title->addWidget(m_label[l]);
        title->addSpacing(12);
        title->addWidget(m_check[l]);
        title->addStretch(1);
        grid->addLayout(title, 0, 0, 1, 2 * FeedPositionBoxes + 1);
        // Position box j over columns 1 + 2j and 2 + 2j; value box j between
        // positions j and j + 1, as the value lies between them.
        for (int row = 0; row < FeedPositionBoxes; ++row) {
            grid->addWidget(m_posNumbers[l][static_cast<std::size_t>(row)], 1, 1 + 2 * row, 1, 2,
                            Qt::AlignCenter);
            grid->addWidget(m_pos[l][static_cast<std::size_t>(row)], 2, 1 + 2 * row, 1, 2,
                            Qt::AlignCenter);
        }
        for (int row = 0; row < FeedValueBoxes; ++row) {
            grid->addWidget(m_val[l][static_cast<std::size_t>(row)], 3, 2 + 2 * row, 1, 2,
                            Qt::AlignCenter);
        }
        grid->addWidget(m_label[4 + l], 2, 0);
        grid->addWidget(m_label[8 + l], 3, 0);
        grid->addWidget(m_scroll[l], 4, 1, 1, 2 * FeedPositionBoxes);
        top->addWidget(frame);

        // Tab order: the check box, the positions, the values, the bar.
        std::vector<QWidget *> order{m_check[l]};
        order.insert(order.end(), m_pos[l].begin(), m_pos[l].end());
        order.insert(order.end(), m_val[l].begin(), m_val[l].end());
        order.push_back(m_scroll[l]);
        for (QWidget *widget : order) {
            if (previous != nullptr) {
                setTabOrder(previous, widget);
            }
            previous = widget;
        }
    }
    setTabOrder(previous, m_canB);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_canB);
    top->addLayout(buttons);
}

void ToolFSetWindow::SetCaptions()
{
    const auto text = [this](const char *key) { return Qs(m_ws.Text("frmFSet", key)); };
    setWindowTitle(text("Text0"));
    m_canB->setText(text("Text13"));
    for (std::size_t i = 0; i < m_label.size(); ++i) {
        m_label[i]->setText(Qs(m_ws.Text("frmFSet", "Text" + std::to_string(i + 1))));
    }
    for (QCheckBox *check : m_check) {
        check->setText(text("Text14"));
    }
    m_magNoLabel->setText(Qs(m_ws.Text("frmEditor", "Text1")));
}

void ToolFSetWindow::Connect()
{
    for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
        const auto l = static_cast<std::size_t>(letter);
        connect(m_check[l], &QCheckBox::clicked, this,
                [this, letter](bool checked) { CheckClick(letter, checked); });
        connect(m_scroll[l], &QScrollBar::valueChanged, this,
                [this, letter] { ShowLetter(letter); });
        for (int row = 0; row < FeedPositionBoxes; ++row) {
            connect(m_pos[l][static_cast<std::size_t>(row)], &QLineEdit::textEdited, this,
                    [this, letter, row](const QString &text) {
                        BoxEdited({letter, false, row}, text);
                    });
        }
        for (int row = 0; row < FeedValueBoxes; ++row) {
            connect(m_val[l][static_cast<std::size_t>(row)], &QLineEdit::textEdited, this,
                    [this, letter, row](const QString &text) {
                        BoxEdited({letter, true, row}, text);
                    });
        }
    }
}

int ToolFSetWindow::Offset(int letter) const
{
    return m_scroll.at(static_cast<std::size_t>(letter))->value();
}

NumericBox *ToolFSetWindow::Box(FeedBox box) const
{
    const auto l = static_cast<std::size_t>(box.Letter);
    const auto r = static_cast<std::size_t>(box.Row);
    return box.Value ? m_val[l][r] : m_pos[l][r];
}

void ToolFSetWindow::SetfrmFSet()
{
    m_loading = true;
    m_fMagNo->setText(Qs(m_form.OptionFeed.MagNo));
    for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
        m_check[static_cast<std::size_t>(letter)]->setChecked(
            m_form.OptionFeed.On[static_cast<std::size_t>(letter)]);
        EnableLetter(letter);
        ShowLetter(letter);
    }
    m_loading = false;
}

void ToolFSetWindow::ShowLetter(int letter)
{
    const bool loading = m_loading;
    m_loading = true;
    const int offset = Offset(letter);
    const auto l = static_cast<std::size_t>(letter);
    for (int row = 0; row < FeedPositionBoxes; ++row) {
        const FeedBox box{letter, false, row};
        Box(box)->ShowText(Qs(FeedBoxText(m_form.OptionFeed, box, offset)));
        m_posNumbers[l][static_cast<std::size_t>(row)]->setText(QString::number(offset + row + 1));
    }
    for (int row = 0; row < FeedValueBoxes; ++row) {
        const FeedBox box{letter, true, row};
        Box(box)->ShowText(Qs(FeedBoxText(m_form.OptionFeed, box, offset)));
    }
    m_loading = loading;
}

void ToolFSetWindow::CheckClick(int letter, bool checked)
{
    m_form.OptionFeed.On[static_cast<std::size_t>(letter)] = checked;
    EnableLetter(letter);
}

void ToolFSetWindow::EnableLetter(int letter)
{
    const auto l = static_cast<std::size_t>(letter);
    const bool on = m_check[l]->isChecked();
    for (NumericBox *box : m_pos[l]) {
        box->setEnabled(on);
    }
    for (NumericBox *box : m_val[l]) {
        box->setEnabled(on);
    }
}

void ToolFSetWindow::BoxEdited(FeedBox box, const QString &text)
{
    if (!m_loading) {
        StoreFeedBox(m_form.OptionFeed, box, Offset(box.Letter), text.toStdString());
    }
}

bool ToolFSetWindow::BoxLeft(FeedBox box)
{
    return StoreFeedBox(m_form.OptionFeed, box, Offset(box.Letter),
                        Box(box)->text().toStdString()) ||
           RefuseNumber();
}

} // namespace qor
