#pragma once

#include <QString>
#include <string>

namespace qor {

// The core's text (UTF-8) as Qt text.
inline QString Qs(const std::string &text)
{
    return QString::fromStdString(text);
}

} // namespace qor
