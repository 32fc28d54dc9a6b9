#include "localisation/ui/WindowTexts.h"

#include "localisation/model/LanguageLookup.h"
#include "shell/ui/AppIcon.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWidget>

namespace quenby {

namespace {
QObject* findControl(const QWidget& window, const QString& control)
{
    if (control.isEmpty())
        return const_cast<QWidget*>(&window);
    return window.findChild<QObject*>(control);
}
} // namespace

void KeptControlTexts::makeControls()
{
    if (m_made)
        return;
    m_made = true;
    buildControls();
}

void KeptControlTexts::keep(const QString& control, const QString& text)
{
    for (auto& [name, kept] : m_kept) {
        if (name == control) {
            kept = text;
            return;
        }
    }
    m_kept.emplace_back(control, text);
}

const QString* KeptControlTexts::kept(const QString& control) const
{
    for (const auto& [name, kept] : m_kept)
        if (name == control)
            return &kept;
    return nullptr;
}

void KeptControlTexts::putKeptTexts(QWidget& window)
{
    const auto kept = std::move(m_kept);
    m_kept.clear();
    for (const auto& [control, text] : kept)
        setControlText(window, control, text);
}

bool setControlText(QWidget& window, const QString& control, const QString& text)
{
    QObject* o = findControl(window, control);
    if (!o) {
        auto* later = dynamic_cast<KeptControlTexts*>(&window);
        if (!later || !later->keepsTexts())
            return false;
        later->keep(control, text);
        return true;
    }
    if (o == &window)
        window.setWindowTitle(text);
    else if (auto* a = qobject_cast<QAction*>(o))
        a->setText(text);
    else if (auto* m = qobject_cast<QMenu*>(o))
        m->setTitle(text);
    else if (auto* l = qobject_cast<QLabel*>(o))
        l->setText(text);
    else if (auto* b = qobject_cast<QAbstractButton*>(o))
        b->setText(text);
    else if (auto* g = qobject_cast<QGroupBox*>(o))
        g->setTitle(text);
    else if (auto* e = qobject_cast<QLineEdit*>(o))
        e->setText(text);
    else if (auto* t = qobject_cast<QTextEdit*>(o))
        t->setPlainText(text);
    else if (auto* pt = qobject_cast<QPlainTextEdit*>(o))
        pt->setPlainText(text);
    else if (auto* c = qobject_cast<QComboBox*>(o))
        c->setEditText(text);
    else if (auto* w = qobject_cast<QWidget*>(o))
        w->setWindowTitle(text);
    else
        return false;
    return true;
}

QString controlText(const QWidget& window, const QString& control)
{
    const QObject* o = findControl(window, control);
    if (!o) {
        auto* later = dynamic_cast<KeptControlTexts*>(const_cast<QWidget*>(&window));
        if (!later || !later->keepsTexts())
            return {};
        if (const QString* kept = later->kept(control))
            return *kept;
        // A design text: the page holds it once made.
        later->makeControls();
        o = findControl(window, control);
        if (!o)
            return {};
    }
    if (o == &window)
        return window.windowTitle();
    if (auto* a = qobject_cast<const QAction*>(o))
        return a->text();
    if (auto* m = qobject_cast<const QMenu*>(o))
        return m->title();
    if (auto* l = qobject_cast<const QLabel*>(o))
        return l->text();
    if (auto* b = qobject_cast<const QAbstractButton*>(o))
        return b->text();
    if (auto* g = qobject_cast<const QGroupBox*>(o))
        return g->title();
    if (auto* e = qobject_cast<const QLineEdit*>(o))
        return e->text();
    if (auto* t = qobject_cast<const QTextEdit*>(o))
        return t->toPlainText();
    if (auto* pt = qobject_cast<const QPlainTextEdit*>(o))
        return pt->toPlainText();
    if (auto* c = qobject_cast<const QComboBox*>(o))
        return c->currentText();
    if (auto* w = qobject_cast<const QWidget*>(o))
        return w->windowTitle();
    return {};
}

void fillWindowTexts(QWidget& window, const QString& routine)
{
    const WindowTextTable* table = windowTextTable(routine);
    if (!table)
        return;
    window.setWindowIcon(applicationIcon());
    const LanguageFilesRead read; // each file read once for the whole fill
    auto* receiver = dynamic_cast<WindowTextReceiver*>(&window);
    for (const WindowTextEntry& entry : table->entries) {
        const QString text = GetLanguageText(QString::fromLatin1(entry.key));
        const QString control = QString::fromLatin1(entry.control);
        switch (entry.target) {
        case TextTarget::Text:
        case TextTarget::WindowTitle:
            setControlText(window, control, text);
            break;
        case TextTarget::VersionCaption:
            setControlText(window, control,
                           text + QStringLiteral(" ") + QLatin1String(VersionText));
            break;
        case TextTarget::WelcomeStatus:
        case TextTarget::ListItem0:
        case TextTarget::ListItem1:
        case TextTarget::AxisXCaption:
        case TextTarget::AxisYCaption:
            if (receiver)
                receiver->applyWindowText(entry, text);
            break;
        }
    }
}

} // namespace quenby
