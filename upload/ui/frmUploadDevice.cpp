#include "upload/ui/frmUploadDevice.h"

#include "localisation/ui/WindowTexts.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace quenby {

namespace {

QLabel* makeLabel(QWidget* parent, const char* name, const char* text)
{
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QPushButton* makeButton(QWidget* parent, const char* name, const char* text)
{
    auto* button = new QPushButton(QString::fromLatin1(text), parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

} // namespace

frmUploadDevice& frmUploadDevice::instance()
{
    static frmUploadDevice* window = new frmUploadDevice; // lives until the process ends
    return *window;
}

frmUploadDevice::frmUploadDevice()
{
    setObjectName(QStringLiteral("frmUploadDevice"));
    setWindowTitle(QStringLiteral("Upload KVX-ZBL"));

    // Scan is a command of the menu bar itself, with nothing under it.
    auto* scan = new QAction(QStringLiteral("Scan Device"), this);
    scan->setObjectName(QStringLiteral("mnscan"));
    menuBar()->addAction(scan);

    auto* central = new QWidget(this);
    auto* lines = new QVBoxLayout(central);
    lines->setSpacing(10);

    auto* portFrame = new QGroupBox(QStringLiteral("Communication Port Found"), central);
    portFrame->setObjectName(QStringLiteral("Frame1"));
    auto* portLine = new QHBoxLayout(portFrame);
    auto* ports = new QComboBox(portFrame);
    ports->setObjectName(QStringLiteral("cbCom"));
    // A drop-down list: it shows its design text only while nothing is picked.
    ports->setPlaceholderText(QStringLiteral("Combo1"));
    portLine->addWidget(ports);
    lines->addWidget(portFrame);

    auto* device = new QGroupBox(QStringLiteral("Device Connected"), central);
    device->setObjectName(QStringLiteral("frDevice"));
    auto* grid = new QGridLayout(device);
    grid->setVerticalSpacing(6);
    QLabel* serial = makeLabel(device, "lbDeviceSerial", "?????");
    QFont bold = serial->font();
    bold.setBold(true);
    serial->setFont(bold);
    grid->addWidget(serial, 0, 0, 1, 4);
    grid->addWidget(makeButton(device, "cmdGetFiles", "Get Files"), 1, 0, 1, 2);
    grid->addWidget(makeButton(device, "cmdStop", "Stop"), 1, 2, 1, 2);
    grid->addWidget(makeLabel(device, "lbFilestransfert", "----/----"), 2, 0, 1, 2);
    QLabel* percent = makeLabel(device, "lbTransfertPurcent", "0%");
    percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(percent, 2, 2, 1, 2);
    auto* progress = new QProgressBar(device);
    progress->setObjectName(QStringLiteral("pbTransfertFiles"));
    progress->setTextVisible(false);
    progress->setValue(0);
    grid->addWidget(progress, 3, 0, 1, 4);
    grid->addWidget(makeLabel(device, "lbtxtsucces", "Succes:"), 4, 0);
    grid->addWidget(makeLabel(device, "lbSucces", "-------"), 4, 1);
    grid->addWidget(makeLabel(device, "lbtxtfail", "Retry:"), 4, 2);
    grid->addWidget(makeLabel(device, "lbFail", "-------"), 4, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    lines->addWidget(device);

    lines->addWidget(makeLabel(central, "lbDeviceStatus", "Device status"));
    QLabel* message = makeLabel(central, "lbPrintMessage", "No Device Found!");
    QFont big = message->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.2);
    message->setFont(big);
    message->setAlignment(Qt::AlignCenter);
    message->setWordWrap(true);
    message->setMinimumHeight(40);
    lines->addWidget(message);
    lines->addStretch(1);
    setCentralWidget(central);

    auto* bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("sbStatusDevice"));
    m_panel1 = new QLabel(bar);
    m_panel1->setObjectName(QStringLiteral("sbStatusDevice.Panels(1)"));
    m_panel2 = new QLabel(bar);
    m_panel2->setObjectName(QStringLiteral("sbStatusDevice.Panels(2)"));
    bar->addWidget(m_panel1, 1);
    bar->addWidget(m_panel2, 1);
    setStatusBar(bar);

    // The one live loop of the program; it runs only while an upload is open.
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("tmrStateMachine"));
    m_timer->setInterval(TickMilliseconds);

    resize(380, 400);
}

QLabel* frmUploadDevice::statusPanel(int panel) const
{
    return panel == 1 ? m_panel1 : panel == 2 ? m_panel2 : nullptr;
}

void frmUploadDevice::FillTextsUploadDevice()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsUploadDevice"));
}

} // namespace quenby
