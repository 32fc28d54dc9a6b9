// A dynamic value: a cell that holds nothing, a text or a number, whichever was
// last put in. Read as a text, a number gives its number text; read as a
// number, a text goes through the strict conversion (Type mismatch if it is no
// number) and nothing gives 0.
#pragma once

#include <QString>

#include <variant>

namespace quenby {

class Dynamic
{
public:
    Dynamic() = default;
    Dynamic(const QString& text) : m_value(text) {}
    Dynamic(const char* text) : m_value(QString::fromUtf8(text)) {}
    Dynamic(double number) : m_value(number) {}
    Dynamic(int number) : m_value(static_cast<double>(number)) {}

    bool isEmpty() const { return std::holds_alternative<std::monostate>(m_value); }
    bool isText() const { return std::holds_alternative<QString>(m_value); }
    bool isNumber() const { return std::holds_alternative<double>(m_value); }

    QString toText() const;
    double toNumber() const;

    bool operator==(const Dynamic& other) const = default;

private:
    std::variant<std::monostate, QString, double> m_value;
};

} // namespace quenby
