#include "change_texts.h"

#include "message_text.h"

namespace qor {

namespace {

std::string Magazine(int slot)
{
    return std::to_string(slot + 1);
}

} // namespace

std::string ChangeText(const Workspace &ws, const TableChange &change)
{
    const std::string from = Magazine(change.Focus.Before);
    const std::string to = Magazine(change.Focus.After);
    switch (change.Kind) {
    case ChangeKind::Store:
        return MessageText(ws.Catalogue, "MSG32-1", {to});
    case ChangeKind::FileArbor:
        return MessageText(ws.Catalogue, "MSG32-2", {});
    case ChangeKind::NewTool:
        return MessageText(ws.Catalogue, "MSG32-3", {to});
    case ChangeKind::Delete:
        return MessageText(ws.Catalogue, "MSG32-4", {to});
    case ChangeKind::Move:
        return MessageText(ws.Catalogue, "MSG32-5", {from, to});
    case ChangeKind::Copy:
        return MessageText(ws.Catalogue, "MSG32-6", {from, to});
    case ChangeKind::Swap:
        return MessageText(ws.Catalogue, "MSG32-7", {from, to});
    case ChangeKind::InitialMagazine:
        return MessageText(ws.Catalogue, "MSG32-8",
                           {std::to_string(change.Initial ? change.Initial->After : 0)});
    case ChangeKind::Restore:
        return MessageText(ws.Catalogue, "MSG32-9", {});
    case ChangeKind::Import:
        return MessageText(ws.Catalogue, "MSG32-10", {});
    }
    return {};
}

std::string TargetQuestionText(const Workspace &ws, ChangeKind kind, int from, int to)
{
    return MessageText(ws.Catalogue, kind == ChangeKind::Copy ? "MSG33-2" : "MSG33-1",
                       {Magazine(from), Magazine(to)});
}

std::array<std::string, 3> TargetAnswerTexts(const Workspace &ws)
{
    return {ws.Text("MSG", "MSG33-3"), ws.Text("MSG", "MSG33-4"), ws.Text("MSG", "MSG33-5")};
}

} // namespace qor
