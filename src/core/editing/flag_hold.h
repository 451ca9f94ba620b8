#pragma once

namespace qor {

// Sets a guard flag for a scope and gives it back its previous value, so
// that nested holds (a kind change inside a load) end in the right order.
class FlagHold
{
public:
    explicit FlagHold(bool &flag) : m_flag(flag), m_previous(flag) { m_flag = true; }
    ~FlagHold() { m_flag = m_previous; }
    FlagHold(const FlagHold &) = delete;
    FlagHold &operator=(const FlagHold &) = delete;

private:
    bool &m_flag;
    bool m_previous;
};

} // namespace qor
