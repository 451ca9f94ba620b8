#pragma once

#include "message_service.h"
#include "workspace.h"

#include <QDialog>
#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace qor {

// The information window: the program's version and the catalogue (language
// file) in use, and the choice of another catalogue from the program's
// folder for the next start. Modeless; Escape closes it. Opening it writes
// nothing.
class InfoWindow : public QDialog
{
    Q_OBJECT

public:
    // Asks for a file: title, filter, start path; empty when cancelled.
    using FileChooser =
        std::function<QString(const QString &title, const QString &filter, const QString &start)>;

    InfoWindow(Workspace &workspace, MessageService &messages, QWidget *parent = nullptr);

    void SetFileChooser(FileChooser chooser) { m_chooseFile = std::move(chooser); }

protected:
    bool event(QEvent *event) override;

private:
    void OnRangB();
    // Shows a catalogue name; unless the window is filling itself, that is
    // the user's choice and is checked and stored.
    void SetRangage(const QString &name);

    Workspace &m_ws;
    MessageService &m_messages;
    FileChooser m_chooseFile;
    bool m_loading = false;

    QLabel *m_version = nullptr;
    QLabel *m_rangage = nullptr;
    QPushButton *m_rangB = nullptr;
    QLineEdit *m_dummy = nullptr;
    std::array<QLabel *, 12> m_label{}; // Label1 .. Label12
};

} // namespace qor
