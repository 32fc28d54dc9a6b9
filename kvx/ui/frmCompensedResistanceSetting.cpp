#include "kvx/ui/frmCompensedResistanceSetting.h"

#include "localisation/ui/WindowTexts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quenby {

namespace {

// Transformer resistances are commonly referred to 75 degrees Celsius; the
// operator's own TS is kept between uses.
constexpr auto DefaultReferenceTemperature = "75";

QLabel* makeLabel(QWidget* parent, const char* name, const char* text)
{
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QLineEdit* makeTextBox(QWidget* parent, const char* name, const QString& text = {})
{
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setMaximumWidth(110);
    return box;
}

QPushButton* makeButton(QWidget* parent, const char* name, const char* text)
{
    auto* button = new QPushButton(QString::fromLatin1(text), parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

frmCompensedResistanceSetting& frmCompensedResistanceSetting::instance()
{
    static auto* dialog = new frmCompensedResistanceSetting; // lives until the process ends
    return *dialog;
}

frmCompensedResistanceSetting::frmCompensedResistanceSetting()
{
    setObjectName(QStringLiteral("frmCompensedResistanceSetting"));
    setWindowTitle(QStringLiteral("Temperature Compensation"));

    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(16, 16, 16, 12);
    lines->setSpacing(12);

    // Reference temperature first: it is the one the operator chooses; the
    // other two come from the report and its compensation box.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(0, 1);
    m_ts = makeTextBox(this, "txtTS", QString::fromLatin1(DefaultReferenceTemperature));
    m_tk = makeTextBox(this, "txtTK");
    m_tm = makeTextBox(this, "txtTM");
    grid->addWidget(makeLabel(this, "lbTexteTS", "Reference temperature TS (C):"), 0, 0);
    grid->addWidget(m_ts, 0, 1);
    grid->addWidget(makeLabel(this, "lbTexteTK", "Conductor constant TK:"), 1, 0);
    grid->addWidget(m_tk, 1, 1);
    grid->addWidget(makeLabel(this, "lbTexteTM", "Measured temperature TM (C):"), 2, 0);
    grid->addWidget(m_tm, 2, 1);
    lines->addLayout(grid);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    QPushButton* ok = makeButton(this, "cmdOK", "OK");
    ok->setDefault(true);
    buttons->addWidget(ok);
    buttons->addWidget(makeButton(this, "cmdCancel", "Cancel"));
    lines->addLayout(buttons);

    setMinimumWidth(340);
}

void frmCompensedResistanceSetting::FillTextsCompensedResistance()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsCompensedResistance"));
}

} // namespace quenby
