// Texts that do not fit their boxes. Every shown label, text box, button,
// check box, group box and combo box under a window is measured with its own font
// against the room the control gives its text: a word-wrapped label counts
// its lines, and no single word may be wider than the label.
#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionFrame>
#include <QTextDocument>
#include <QWidget>

#include <algorithm>

namespace quenby::testing {

namespace detail {

inline QString where(const QWidget& control)
{
    QString path = control.objectName();
    for (const QWidget* w = control.parentWidget(); w; w = w->parentWidget())
        if (w->isWindow()) {
            path = w->objectName() + u'.' + path;
            break;
        }
    return path;
}

// A button's text loses its mnemonic marks when drawn.
inline QString shownText(QString text)
{
    text.replace(QLatin1String("&&"), QStringLiteral("\x01"));
    text.remove(u'&');
    text.replace(u'\x01', u'&');
    return text;
}

inline void checkLabel(const QLabel& label, QStringList& cut)
{
    const QString text = label.text();
    if (text.trimmed().isEmpty() || label.textFormat() == Qt::RichText || !label.pixmap().isNull())
        return;
    const QFontMetrics fm(label.font());
    QRect room = label.contentsRect();
    const int margin = label.margin();
    room.adjust(margin, margin, -margin, -margin);
    if (label.indent() > 0)
        room.adjust(label.indent(), 0, 0, 0);
    QStringList faults;
    if (label.wordWrap()) {
        static const QRegularExpression blanks(QStringLiteral("\\s+"));
        for (const QString& word : text.split(blanks, Qt::SkipEmptyParts))
            if (fm.horizontalAdvance(word) > room.width())
                faults << QStringLiteral("the word \"%1\" needs %2 px of %3")
                              .arg(word)
                              .arg(fm.horizontalAdvance(word))
                              .arg(room.width());
        const QRect needed =
            fm.boundingRect(QRect(0, 0, room.width(), 100000),
                            static_cast<int>(label.alignment()) | Qt::TextWordWrap, text);
        if (needed.height() > room.height())
            faults << QStringLiteral("%1 px of lines in %2 px")
                          .arg(needed.height())
                          .arg(room.height());
    } else {
        // Each line takes the font's height and its own advance.
        const QStringList lines = text.split(u'\n');
        int width = 0;
        for (const QString& line : lines)
            width = std::max(width, fm.horizontalAdvance(line));
        const int height = static_cast<int>(lines.size()) * fm.height();
        if (width > room.width())
            faults << QStringLiteral("%1 px wide in %2 px").arg(width).arg(room.width());
        if (height > room.height())
            faults << QStringLiteral("%1 px high in %2 px").arg(height).arg(room.height());
    }
    for (const QString& fault : faults)
        cut << QStringLiteral("%1 \"%2\": %3").arg(where(label), text, fault);
}

// A push button or a check box is cut once its own size hint, which is its
// text with the frame or the indicator, is wider than it is.
inline void checkButton(const QAbstractButton& button, QStringList& cut)
{
    if (button.text().trimmed().isEmpty())
        return;
    const int needed = button.sizeHint().width();
    if (needed > button.width())
        cut << QStringLiteral("%1 \"%2\": %3 px wide in %4 px")
                   .arg(where(button), shownText(button.text()))
                   .arg(needed)
                   .arg(button.width());
}

inline void checkGroupBox(const QGroupBox& box, QStringList& cut)
{
    if (box.title().trimmed().isEmpty())
        return;
    const QFontMetrics fm(box.font());
    // The title sits in the frame's top edge, a little in from each side.
    const int needed = fm.horizontalAdvance(shownText(box.title())) + 2 * fm.averageCharWidth();
    if (needed > box.width())
        cut << QStringLiteral("%1 \"%2\": %3 px wide in %4 px")
                   .arg(where(box), box.title())
                   .arg(needed)
                   .arg(box.width());
}

// A combo box shows its current text beside the arrow; the text of each
// entry the operator can pick must fit there too.
inline void checkComboBox(const QComboBox& box, QStringList& cut)
{
    if (box.isEditable())
        return;
    const QFontMetrics fm(box.font());
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect field = box.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, &box);
    for (int i = 0; i < box.count(); ++i) {
        const QString text = box.itemText(i);
        const int needed = fm.horizontalAdvance(text);
        if (needed > field.width())
            cut << QStringLiteral("%1 entry \"%2\": %3 px wide in %4 px")
                       .arg(where(box), text)
                       .arg(needed)
                       .arg(field.width());
    }
}

// A text box shows its text on one line between its frame and margins.
inline void checkLineEdit(const QLineEdit& box, QStringList& cut)
{
    const QString text = box.displayText();
    if (text.trimmed().isEmpty())
        return;
    QStyleOptionFrame option;
    option.initFrom(&box);
    option.lineWidth = box.hasFrame() ? box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth) : 0;
    QRect room = box.style()->subElementRect(QStyle::SE_LineEditContents, &option, &box);
    room = room.marginsRemoved(box.textMargins());
    const int inset = 2; // the box's own inset on each side of its text
    const int needed = QFontMetrics(box.font()).horizontalAdvance(text.trimmed());
    if (needed > room.width() - 2 * inset)
        cut << QStringLiteral("%1 \"%2\": %3 px wide in %4 px")
                   .arg(where(box), text)
                   .arg(needed)
                   .arg(room.width() - 2 * inset);
}

// A plain text box that does not wrap shows each line whole, all lines in
// its height.
inline void checkPlainTextEdit(const QPlainTextEdit& box, QStringList& cut)
{
    const QString text = box.toPlainText();
    if (text.trimmed().isEmpty())
        return;
    const QFontMetrics fm(box.font());
    const int margin = static_cast<int>(box.document()->documentMargin());
    const QRect room = box.viewport()->rect().adjusted(margin, margin, -margin, -margin);
    const QStringList lines = text.split(u'\n');
    for (const QString& line : lines)
        if (fm.horizontalAdvance(line) > room.width())
            cut << QStringLiteral("%1 line \"%2\": %3 px wide in %4 px")
                       .arg(where(box), line)
                       .arg(fm.horizontalAdvance(line))
                       .arg(room.width());
    const int height = static_cast<int>(lines.size()) * fm.lineSpacing() - fm.leading();
    if (height > room.height())
        cut << QStringLiteral("%1: %2 lines need %3 px of %4 px")
                   .arg(where(box))
                   .arg(lines.size())
                   .arg(height)
                   .arg(room.height());
}

} // namespace detail

// One line a text that does not fit, naming the window, the control, the
// text and the pixels; empty when everything fits.
inline QStringList cutTexts(const QWidget& window)
{
    QStringList cut;
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        if (!control->isVisibleTo(&window) || control->window() != &window)
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(control))
            detail::checkLabel(*label, cut);
        else if (const auto* button = qobject_cast<const QPushButton*>(control))
            detail::checkButton(*button, cut);
        else if (const auto* check = qobject_cast<const QCheckBox*>(control))
            detail::checkButton(*check, cut);
        else if (const auto* group = qobject_cast<const QGroupBox*>(control))
            detail::checkGroupBox(*group, cut);
        else if (const auto* combo = qobject_cast<const QComboBox*>(control))
            detail::checkComboBox(*combo, cut);
        else if (const auto* edit = qobject_cast<const QLineEdit*>(control)) {
            // The edit field of a combo box is measured with the box.
            if (!qobject_cast<const QComboBox*>(edit->parentWidget()))
                detail::checkLineEdit(*edit, cut);
        } else if (const auto* plain = qobject_cast<const QPlainTextEdit*>(control))
            detail::checkPlainTextEdit(*plain, cut);
    }
    return cut;
}

} // namespace quenby::testing
