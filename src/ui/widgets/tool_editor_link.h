#pragma once

#include <string>

namespace qor {

// How the tool list window hands a magazine position over to the tool
// editor window. The editor implements it; the list holds a pointer that is
// null until an editor exists, and then opens nothing.
class ToolEditorLink
{
public:
    virtual ~ToolEditorLink() = default;

    // Puts the text into the editor's magazine box, which loads that
    // position (or, for "0" or "", nothing) without showing the editor.
    virtual void SetMagazineNumber(const std::string &magNo) = 0;

    // Shows the editor window modeless and gives it the focus.
    virtual void ShowEditor() = 0;

    // Hides the editor and the option feed and limit windows.
    virtual void HideEditor() = 0;
};

} // namespace qor
