#include "kind_table.h"

#include "workspace.h"

namespace qor {

bool MaskBit(std::string_view mask, int i)
{
    if (i < 0 || static_cast<std::size_t>(i) >= mask.size()) {
        return false;
    }
    const char c = mask[static_cast<std::size_t>(i)];
    return c >= '1' && c <= '9';
}

int KindEntryCount(const Workspace &workspace)
{
    return workspace.TenthKindOffered ? KindCount : KindCount - 1;
}

std::vector<std::string> KindListTexts(const Workspace &workspace)
{
    std::vector<std::string> texts;
    const int count = KindEntryCount(workspace);
    for (int kind = 0; kind < count; ++kind) {
        texts.push_back(workspace.Text("String", KindRules[static_cast<std::size_t>(kind)].Entry));
    }
    return texts;
}

} // namespace qor
