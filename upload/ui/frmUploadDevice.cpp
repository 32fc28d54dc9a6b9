#include "upload/ui/frmUploadDevice.h"

#include "localisation/ui/WindowTexts.h"
#include "shell/model/RuntimeError.h"
#include "shell/ui/MainWindowOwner.h"
#include "upload/model/UploadDeviceForm.h"

#include <QCloseEvent>
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
    connect(scan, &QAction::triggered, this, [this] {
        CommandScope scope(QStringLiteral("mnscan_Click"));
        mnscan_Click();
        mirrorModel();
    });

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
    m_cbCom = ports;
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
    m_frDevice = device;
    m_lbDeviceSerial = serial;
    m_cmdGetFiles = makeButton(device, "cmdGetFiles", "Get Files");
    m_cmdStop = makeButton(device, "cmdStop", "Stop");
    grid->addWidget(m_cmdGetFiles, 1, 0, 1, 2);
    grid->addWidget(m_cmdStop, 1, 2, 1, 2);
    connect(m_cmdGetFiles, &QPushButton::clicked, this, [this] {
        CommandScope scope(QStringLiteral("cmdGetFiles_Click"));
        cmdGetFiles_Click();
        mirrorModel();
    });
    connect(m_cmdStop, &QPushButton::clicked, this, [this] {
        CommandScope scope(QStringLiteral("cmdStop_Click"));
        cmdStop_Click();
        mirrorModel();
    });
    m_lbFilestransfert = makeLabel(device, "lbFilestransfert", "----/----");
    grid->addWidget(m_lbFilestransfert, 2, 0, 1, 2);
    QLabel* percent = makeLabel(device, "lbTransfertPurcent", "0%");
    m_lbTransfertPurcent = percent;
    percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(percent, 2, 2, 1, 2);
    auto* progress = new QProgressBar(device);
    progress->setObjectName(QStringLiteral("pbTransfertFiles"));
    progress->setTextVisible(false);
    progress->setValue(0);
    grid->addWidget(progress, 3, 0, 1, 4);
    m_pbTransfertFiles = progress;
    m_lbSucces = makeLabel(device, "lbSucces", "-------");
    m_lbFail = makeLabel(device, "lbFail", "-------");
    grid->addWidget(makeLabel(device, "lbtxtsucces", "Succes:"), 4, 0);
    grid->addWidget(m_lbSucces, 4, 1);
    grid->addWidget(makeLabel(device, "lbtxtfail", "Retry:"), 4, 2);
    grid->addWidget(m_lbFail, 4, 3);
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
    m_lbPrintMessage = message;
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
    connect(m_timer, &QTimer::timeout, this, &frmUploadDevice::tick);

    resize(380, 400);
}

void frmUploadDevice::bringUp()
{
    if (!m_loaded)
        Form_Load();
    showModalOver(&mainWindow());
}

void frmUploadDevice::Form_Load()
{
    if (!uploadDeviceForm().loaded)
        UploadDevice_Form_Load();
    mirrorModel();
}

void frmUploadDevice::tick()
{
    // The timer stands still for the length of a tick: a slow step, the
    // port drain or the closing message box never starts a second one.
    m_timer->stop();
    CommandScope scope(QStringLiteral("tmrStateMachine_Timer"));
    tmrStateMachine_Timer();
    mirrorModel();
}

void frmUploadDevice::mirrorModel()
{
    const UploadDeviceForm& f = uploadDeviceForm();
    m_loaded = f.loaded;
    m_lbPrintMessage->setText(f.lbPrintMessage);
    m_lbDeviceSerial->setText(f.lbDeviceSerial);
    m_lbFilestransfert->setText(f.lbFilestransfert);
    m_lbTransfertPurcent->setText(f.lbTransfertPurcent);
    m_lbSucces->setText(f.lbSucces);
    m_lbFail->setText(f.lbFail);
    m_panel1->setText(f.statusPanel1);
    m_panel2->setText(f.statusPanel2);

    m_frDevice->setVisible(f.frDeviceVisible);
    m_cmdGetFiles->setEnabled(f.cmdGetFilesEnabled);
    m_cmdStop->setEnabled(f.cmdStopEnabled);
    m_lbTransfertPurcent->setVisible(f.lbTransfertPurcentVisible);
    m_lbFilestransfert->setVisible(f.lbFilestransfertVisible);
    m_pbTransfertFiles->setVisible(f.pbTransfertFilesVisible);
    m_lbSucces->setVisible(f.lbSuccesVisible);
    m_lbFail->setVisible(f.lbFailVisible);
    m_pbTransfertFiles->setMaximum(f.pbTransfertFilesMax);
    m_pbTransfertFiles->setValue(f.pbTransfertFilesValue);

    QStringList shown;
    for (int i = 0; i < m_cbCom->count(); ++i)
        shown << m_cbCom->itemText(i);
    if (shown != f.cbComItems) {
        m_cbCom->clear();
        m_cbCom->addItems(f.cbComItems);
    }
    if (m_cbCom->currentIndex() != f.cbComListIndex)
        m_cbCom->setCurrentIndex(f.cbComListIndex);

    // Interval 0 is the model's way of holding the timer during a tick.
    if (f.timerEnabled && f.timerInterval > 0) {
        if (!m_timer->isActive())
            m_timer->start(f.timerInterval);
    } else {
        m_timer->stop();
    }
}

void frmUploadDevice::showEvent(QShowEvent* event)
{
    uploadDeviceForm().shown = true;
    ModalWindow::showEvent(event);
}

void frmUploadDevice::hideEvent(QHideEvent* event)
{
    uploadDeviceForm().shown = false;
    ModalWindow::hideEvent(event);
}

void frmUploadDevice::closeEvent(QCloseEvent* event)
{
    // Closing unloads the window: the timer stops and the port closes; the
    // next opening loads it afresh.
    {
        CommandScope scope(QStringLiteral("Form_QueryUnload"));
        UploadDevice_Form_QueryUnload();
        UploadDevice_Form_Unload();
    }
    mirrorModel();
    QMainWindow::closeEvent(event);
}

QLabel* frmUploadDevice::statusPanel(int panel) const
{
    return panel == 1 ? m_panel1 : panel == 2 ? m_panel2 : nullptr;
}

void frmUploadDevice::FillTextsUploadDevice()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsUploadDevice"));
    // The message line is the model's text too; the next display starts from it.
    uploadDeviceForm().lbPrintMessage = m_lbPrintMessage->text();
}

} // namespace quenby
