#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace qor {

// A read-only text in a fixed-pitch font with a Close button, for reports
// that are too long for a message box (the comparison of the table with a
// file). It is not modal, so the user can keep it open beside the list.
class TextReportDialog final : public QDialog
{
    Q_OBJECT

public:
    TextReportDialog(const QString &caption, const QString &text, const QString &closeText,
                     QWidget *parent);

    QString Text() const;

private:
    QPlainTextEdit *m_text = nullptr;
};

} // namespace qor
