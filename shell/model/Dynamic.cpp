#include "shell/model/Dynamic.h"

#include "shell/model/NumberText.h"

namespace quenby {

QString Dynamic::toText() const
{
    if (const auto* t = std::get_if<QString>(&m_value))
        return *t;
    if (const auto* n = std::get_if<double>(&m_value))
        return numberText(*n);
    return {};
}

double Dynamic::toNumber() const
{
    if (const auto* t = std::get_if<QString>(&m_value))
        return strictNumber(*t);
    if (const auto* n = std::get_if<double>(&m_value))
        return *n;
    return 0.0;
}

} // namespace quenby
