#include "report/ui/frmCompensedResistanceSetting.h"

#include "localisation/ui/WindowTexts.h"
#include "report/model/TemperatureCompensation.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

namespace quenby {

namespace {

QLabel* makeLabel(QWidget* parent, const char* name, const char* text)
{
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

// Each edit goes straight into the model's text of the same name.
QLineEdit* makeTextBox(QWidget* parent, const char* name, QString CompensationDialogModel::*field)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setMaximumWidth(110);
    QObject::connect(box, &QLineEdit::textEdited,
                     [field](const QString& text) { compensationDialog().*field = text; });
    return box;
}

QPushButton* makeButton(QWidget* parent, const char* name, const char* text)
{
    auto* button = new QPushButton(QString::fromLatin1(text), parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

void setTextIfChanged(QLineEdit* box, const QString& text)
{
    // Only when it differs: setting a text moves the operator's cursor.
    if (box->text() != text)
        box->setText(text);
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

    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(16, 16, 16, 12);
    lines->setSpacing(12);

    // Reference temperature first: it is the one the operator chooses; the
    // other two come from the report and its compensation box.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(0, 1);
    m_ts = makeTextBox(this, "txtTS", &CompensationDialogModel::txtTS);
    m_tk = makeTextBox(this, "txtTK", &CompensationDialogModel::txtTK);
    m_tm = makeTextBox(this, "txtTM", &CompensationDialogModel::txtTM);
    grid->addWidget(makeLabel(this, "lbTexteTS", "Reference temperature TS (C):"), 0, 0);
    grid->addWidget(m_ts, 0, 1);
    grid->addWidget(makeLabel(this, "lbTexteTK", "Conductor constant TK:"), 1, 0);
    grid->addWidget(m_tk, 1, 1);
    grid->addWidget(makeLabel(this, "lbTexteTM", "Measured temperature TM (C):"), 2, 0);
    grid->addWidget(m_tm, 2, 1);
    lines->addLayout(grid);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    m_ok = makeButton(this, "cmdOK", "OK");
    m_ok->setDefault(true);
    buttons->addWidget(m_ok);
    m_cancel = makeButton(this, "cmdCancel", "Cancel");
    buttons->addWidget(m_cancel);
    lines->addLayout(buttons);
    connect(m_ok, &QPushButton::clicked, [] { compensationDialog().cmdOK_Click(); });
    connect(m_cancel, &QPushButton::clicked, [] { compensationDialog().cmdCancel_Click(); });

    setMinimumWidth(340);

    mirrorModel();
}

void frmCompensedResistanceSetting::bringDialogToFront()
{
    raise();
    activateWindow();
}

void frmCompensedResistanceSetting::FillTextsCompensedResistance()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsCompensedResistance"));
    compensationDialog().caption = windowTitle();
}

void frmCompensedResistanceSetting::mirrorModel()
{
    const CompensationDialogModel& model = compensationDialog();
    setTextIfChanged(m_ts, model.txtTS);
    setTextIfChanged(m_tk, model.txtTK);
    setTextIfChanged(m_tm, model.txtTM);
    setWindowTitle(model.caption);
}

void frmCompensedResistanceSetting::showModally()
{
    // Owned by the window in front, which is the report that opened it.
    QWidget* owner = QApplication::activeWindow();
    if (owner && owner != this) {
        winId(); // the native window must exist to be given an owner
        if (QWindow* handle = windowHandle())
            handle->setTransientParent(owner->windowHandle());
    }
    exec();
}

void frmCompensedResistanceSetting::reject()
{
    compensationDialog().cmdCancel_Click();
}

void frmCompensedResistanceSetting::closeEvent(QCloseEvent* event)
{
    // Not the base class's, which would run Cancel: the frame only empties
    // the two boxes, and the accepted close hides the dialog.
    compensationDialog().closeByFrame();
    event->accept();
}

void frmCompensedResistanceSetting::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        compensationDialog().shown = true;
}

void frmCompensedResistanceSetting::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
    if (!event->spontaneous())
        compensationDialog().shown = false;
}

} // namespace quenby
