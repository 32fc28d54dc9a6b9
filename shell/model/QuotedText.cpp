#include "shell/model/QuotedText.h"

namespace quenby {

QString quoted(const QString& text)
{
    QString out = QStringLiteral("\"");
    for (QChar c : text) {
        switch (c.unicode()) {
        case u'\\':
            out += QStringLiteral("\\\\");
            break;
        case u'"':
            out += QStringLiteral("\\\"");
            break;
        case u'\r':
            out += QStringLiteral("\\r");
            break;
        case u'\n':
            out += QStringLiteral("\\n");
            break;
        case u'\t':
            out += QStringLiteral("\\t");
            break;
        default:
            if (c.unicode() < 0x20 || c.unicode() == 0x7f)
                out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += u'"';
    return out;
}

} // namespace quenby
