#include "text_report_dialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace qor {

TextReportDialog::TextReportDialog(const QString &caption, const QString &text,
                                   const QString &closeText, QWidget *parent)
    : QDialog(parent)
{
    setObjectName("TextReport");
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);

    m_text = new QPlainTextEdit(this);
    m_text->setObjectName("ReportText");
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setPlainText(text);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *close = buttons->addButton(closeText, QDialogButtonBox::RejectRole);
    close->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text, 1);
    layout->addWidget(buttons);

    // Wide enough for a line of the report, never larger than the screen.
    const QFontMetrics metrics(m_text->font());
    QSize size(metrics.horizontalAdvance(QString(72, QLatin1Char('0'))) + 48,
               metrics.lineSpacing() * 28 + 80);
    if (const QScreen *screen = parent ? parent->screen() : QGuiApplication::primaryScreen()) {
        size = size.boundedTo(screen->availableGeometry().size() * 9 / 10);
    }
    resize(size);
    m_text->setFocus();
}

QString TextReportDialog::Text() const
{
    return m_text->toPlainText();
}

} // namespace qor
