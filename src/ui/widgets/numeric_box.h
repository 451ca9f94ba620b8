#pragma once

#include <QLineEdit>
#include <functional>

namespace qor {

// A text box that asks before it takes typed or pasted text. Characters
// reach the box only when the key filter lets them; editing keys (arrows,
// Delete, Home, End, undo, copy, cut) always work. A paste, from the
// keyboard or the context menu, passes only when the whole text does, and
// dropping text onto the box is off.
class NumericBox : public QLineEdit
{
    Q_OBJECT

public:
    // Gets the key code of a typed character (8 for the backspace); true lets
    // it through. The filter beeps itself when it refuses.
    using KeyFilter = std::function<bool(int key)>;
    // Gets the text to be pasted; true lets it through.
    using PasteFilter = std::function<bool(const QString &text)>;

    explicit NumericBox(QWidget *parent = nullptr);

    void SetKeyFilter(KeyFilter filter) { m_keyFilter = std::move(filter); }
    void SetPasteFilter(PasteFilter filter) { m_pasteFilter = std::move(filter); }

    // Sets the text unless it is already shown, so that the cursor and the
    // selection stay where they are.
    void ShowText(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void FilteredPaste();

    KeyFilter m_keyFilter;
    PasteFilter m_pasteFilter;
};

} // namespace qor
