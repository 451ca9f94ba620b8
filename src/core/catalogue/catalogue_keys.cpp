#include "catalogue_keys.h"

namespace qor {

namespace {

class KeyList
{
public:
    KeyList(std::string_view section, std::string_view prefix)
        : m_section(section), m_prefix(prefix)
    {}

    KeyList &Range(int first, int last)
    {
        for (int n = first; n <= last; ++n) {
            Add(std::to_string(n));
        }
        return *this;
    }

    KeyList &One(int n) { return Range(n, n); }

    // Sub-keys first..last of entry n ("Text15-2" ... "Text15-5").
    KeyList &Subs(int n, int first, int last)
    {
        for (int s = first; s <= last; ++s) {
            Add(std::to_string(n) + "-" + std::to_string(s));
        }
        return *this;
    }

    void AppendTo(std::vector<CatalogueKey> &keys) const
    {
        keys.insert(keys.end(), m_keys.begin(), m_keys.end());
    }

private:
    void Add(const std::string &number)
    {
        m_keys.push_back({m_section, std::string(m_prefix) + number});
    }

    std::string_view m_section;
    std::string_view m_prefix;
    std::vector<CatalogueKey> m_keys;
};

std::vector<CatalogueKey> BuildKeys()
{
    std::vector<CatalogueKey> keys;

    KeyList("frmList", "Text").Range(1, 15).Range(21, 29).Range(40, 53).AppendTo(keys);

    KeyList("frmFSet", "Text").Range(0, 14).AppendTo(keys);

    // "Text51-1" and "Text86-1" name the main texts of entries 51 and 86; the
    // editor asks for them in that form, so they are listed in that form.
    KeyList("frmEditor", "Text")
        .Range(0, 10)
        .Subs(5, 2, 3)
        .Subs(8, 2, 2)
        .Subs(10, 2, 2)
        .One(12)
        .Range(15, 27)
        .Subs(15, 2, 5)
        .Range(30, 38)
        .One(50)
        .Subs(51, 1, 2)
        .One(52)
        .Range(70, 92)
        .Subs(82, 2, 2)
        .Subs(84, 2, 2)
        .Subs(85, 2, 4)
        .Subs(86, 1, 1)
        .Subs(92, 2, 3)
        .One(96)
        .AppendTo(keys);

    KeyList("frmInfo", "Text").Range(0, 9).One(11).Range(13, 14).AppendTo(keys);

    KeyList("frmLimit", "Text").Range(1, 14).AppendTo(keys);

    KeyList("Sheet", "Text").Range(1, 12).AppendTo(keys);

    // Kind names 0..9 and 15, arbor type names 10..13, the editor's 14, arbor
    // flag captions 20 and 21, the writer's 31 and 80 (file title), the tool
    // list's parameter texts 40..47, 81..84 and 87..94, the editor's kind list
    // 50..62 and 70, 71.
    KeyList("String", "Str")
        .Range(0, 15)
        .Range(20, 21)
        .One(31)
        .Range(40, 47)
        .Range(50, 62)
        .Range(70, 71)
        .Range(80, 84)
        .Range(87, 94)
        .AppendTo(keys);

    KeyList("MSG", "MSG")
        .Range(1, 3)
        .Range(5, 14)
        .Subs(15, 1, 3)
        .One(16)
        .Subs(17, 1, 2)
        .Range(18, 19)
        .Range(21, 22)
        .Subs(23, 1, 3)
        .Subs(24, 1, 2)
        .Subs(25, 1, 6)
        .Subs(26, 1, 6)
        .Subs(27, 1, 4)
        .Subs(28, 1, 1)
        .Subs(29, 1, 3)
        .Subs(30, 1, 14)
        .Subs(31, 1, 19)
        .Subs(32, 1, 10)
        .Subs(33, 1, 5)
        .Subs(34, 1, 5)
        .Subs(35, 1, 29)
        .Subs(36, 1, 4)
        .Subs(37, 1, 1)
        .Subs(38, 1, 7)
        .AppendTo(keys);

    return keys;
}

} // namespace

const std::vector<CatalogueKey> &CatalogueKeys()
{
    static const std::vector<CatalogueKey> keys = BuildKeys();
    return keys;
}

} // namespace qor
