#include "info_window.h"

#include "catalogue_choice.h"

#include <QEvent>
#include <QFileDialog>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace qor {

namespace {

QFrame *Rule(QWidget *parent)
{
    auto *line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

InfoWindow::InfoWindow(Workspace &workspace, MessageService &messages, QWidget *parent)
    : QDialog(parent), m_ws(workspace), m_messages(messages)
{
    m_loading = true;
    setObjectName("Info");
    setModal(false);
    auto text = [this](const char *key) {
        return QString::fromStdString(m_ws.Text("frmInfo", key));
    };
    setWindowTitle(text("Text0"));

    for (std::size_t i = 0; i < m_label.size(); ++i) {
        m_label[i] = new QLabel(this);
        m_label[i]->setObjectName(QString("Label%1").arg(i + 1));
        m_label[i]->setWordWrap(true);
        m_label[i]->setTextFormat(Qt::PlainText);
    }
    m_label[0]->setText(text("Text1"));
    m_label[1]->setText(text("Text2"));
    m_label[2]->setText(text("Text3") + " " + text("Text5"));
    m_label[3]->setText(text("Text4") + " " + text("Text6"));
    for (std::size_t i = 4; i < 8; ++i) {
        m_label[i]->hide(); // spare labels of the form, not used by this layout
    }
    m_label[8]->setText(text("Text9"));
    m_label[8]->setWordWrap(false);
    m_label[9]->setText(text("Text7"));
    m_label[10]->setText(text("Text11"));
    m_label[11]->setText(text("Text8"));

    QFont titleFont = m_label[0]->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
    titleFont.setBold(true);
    m_label[0]->setFont(titleFont);

    m_version = new QLabel(QString("Version ") + ProgramVersion, this);
    m_version->setObjectName("Version");

    m_rangage = new QLabel(this);
    m_rangage->setObjectName("Rangage");
    m_rangage->setTextFormat(Qt::PlainText);
    m_rangage->setFrameShape(QFrame::StyledPanel);
    m_rangage->setFrameShadow(QFrame::Sunken);
    m_rangage->setMinimumWidth(fontMetrics().horizontalAdvance(QString(24, 'M')) / 2);
    m_rangage->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_rangage->setText(QString::fromStdString(FileOfPath(m_ws.Globals.MsgPath)));

    m_rangB = new QPushButton(text("Text13"), this);
    m_rangB->setObjectName("RangB");
    m_rangB->setAutoDefault(false);

    // Takes the focus so that no visible control shows a focus frame.
    m_dummy = new QLineEdit(this);
    m_dummy->setObjectName("Dummy");
    m_dummy->setReadOnly(true);
    m_dummy->setFrame(false);
    m_dummy->setFixedSize(1, 1);
    m_dummy->move(0, 0);

    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->addWidget(m_label[0]);
    layout->addWidget(m_label[1]);
    layout->addWidget(m_version);
    layout->addSpacing(6);
    layout->addWidget(Rule(this));
    layout->addWidget(m_label[2]);
    layout->addWidget(m_label[3]);
    layout->addWidget(Rule(this));
    auto *language = new QGridLayout;
    language->addWidget(m_label[8], 0, 0);
    language->addWidget(m_rangage, 0, 1);
    language->addWidget(m_rangB, 0, 2);
    language->setColumnStretch(1, 1);
    layout->addLayout(language);
    layout->addWidget(m_label[9]);
    layout->addWidget(m_label[10]);
    layout->addWidget(m_label[11]);
    for (QLabel *label : m_label) {
        label->setMinimumWidth(420);
    }
    m_label[8]->setMinimumWidth(0);

    m_chooseFile = [this](const QString &title, const QString &filter, const QString &start) {
        return QFileDialog::getOpenFileName(this, title, start, filter);
    };
    connect(m_rangB, &QPushButton::clicked, this, &InfoWindow::OnRangB);
    m_loading = false;
}

bool InfoWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        m_dummy->setFocus(Qt::OtherFocusReason);
    }
    return QDialog::event(event);
}

void InfoWindow::OnRangB()
{
    const QString title = QString::fromStdString(m_ws.Text("frmInfo", "Text14"));
    const QString filter = QString::fromStdString(m_ws.Text("frmInfo", "Text13")) + " (*.msg)";
    const QString start = QString::fromStdString(m_ws.Globals.AppDir) + m_rangage->text().trimmed();
    const QString chosen = m_chooseFile ? m_chooseFile(title, filter, start) : QString();
    if (!chosen.isEmpty()) {
        SetRangage(QString::fromStdString(FileOfPath(chosen.toStdString())));
    }
    m_dummy->setFocus(Qt::OtherFocusReason);
}

void InfoWindow::SetRangage(const QString &name)
{
    m_rangage->setText(name);
    if (m_loading) {
        return;
    }
    const std::string shown = ChooseCatalogue(m_ws, m_messages, name.toStdString());
    m_loading = true;
    m_rangage->setText(QString::fromStdString(shown));
    m_loading = false;
}

} // namespace qor
