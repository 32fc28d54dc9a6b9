#include "shell/ui/frmGeneralSetting.h"

#include "localisation/ui/WindowTexts.h"
#include "shell/model/DataFolders.h"
#include "shell/ui/MainWindowOwner.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace quenby {

frmGeneralSetting& frmGeneralSetting::instance()
{
    static frmGeneralSetting* window = new frmGeneralSetting; // owned by frmMain
    return *window;
}

frmGeneralSetting::frmGeneralSetting() : QDialog(&mainWindow())
{
    // Every control shows its own name until the language fills it.
    setObjectName(QStringLiteral("frmGeneralSetting"));
    setWindowTitle(objectName());

    auto* layout = new QGridLayout(this);
    layout->addWidget(addLabel("lbKVXFilesPath"), 0, 0, 1, 2);
    m_kvxFolder = addLabel("txtCurrentKVXFilesPath");
    m_kvxFolder->setFrameShape(QFrame::Panel);
    m_kvxFolder->setFrameShadow(QFrame::Sunken);
    layout->addWidget(m_kvxFolder, 1, 0);
    QPushButton* changeKvx = addButton("btChangeKVXFilePath");
    layout->addWidget(changeKvx, 1, 1);

    layout->addWidget(addLabel("lbZBLFilesPath"), 2, 0, 1, 2);
    m_zblFolder = addLabel("txtCurrentZBLFilesPath");
    m_zblFolder->setFrameShape(QFrame::Panel);
    m_zblFolder->setFrameShadow(QFrame::Sunken);
    layout->addWidget(m_zblFolder, 3, 0);
    QPushButton* changeZbl = addButton("btChangeZBLFilePath");
    layout->addWidget(changeZbl, 3, 1);

    QLabel* information = addLabel("lbInfomationOldPath");
    information->setWordWrap(true);
    layout->addWidget(information, 4, 0, 1, 2);
    QLabel* oldPath = addLabel("lbOldPath");
    oldPath->setWordWrap(true);
    layout->addWidget(oldPath, 5, 0, 1, 2);

    QPushButton* ok = addButton("btOk");
    layout->addWidget(ok, 6, 1);

    // Two labels that only hold texts: the question asked before a change,
    // and a message that nothing shows.
    m_question = addLabel("MessageBox_AreYouSureToChange");
    m_question->hide();
    addLabel("MessageBox_NoDirData")->hide();

    layout->setColumnStretch(0, 1);
    setMinimumWidth(520);

    connect(changeKvx, &QPushButton::clicked, this,
            [] { generalSetting().btChangeKVXFilePath_Click(); });
    connect(changeZbl, &QPushButton::clicked, this,
            [] { generalSetting().btChangeZBLFilePath_Click(); });
    connect(ok, &QPushButton::clicked, this, [] { generalSetting().btOk_Click(); });

    mirrorModel();
}

QLabel* frmGeneralSetting::addLabel(const char* name)
{
    auto* label = new QLabel(QString::fromLatin1(name), this);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QPushButton* frmGeneralSetting::addButton(const char* name)
{
    auto* button = new QPushButton(QString::fromLatin1(name), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

void frmGeneralSetting::FillTextsGeneralSetting()
{
    fillWindowTexts(*this, QStringLiteral("FillTextsGeneralSetting"));
    // The question lives in the model, which asks it.
    generalSetting().setMessageBox_AreYouSureToChange(m_question->text());
    // The notes of a language may wrap onto more lines: the window takes
    // the height they need.
    adjustSize();
}

void frmGeneralSetting::mirrorModel()
{
    const GeneralSettingModel& model = generalSetting();
    m_kvxFolder->setText(model.txtCurrentKVXFilesPath());
    m_zblFolder->setText(model.txtCurrentZBLFilesPath());
    m_question->setText(model.MessageBox_AreYouSureToChange());
}

void frmGeneralSetting::bringUp()
{
    if (isVisible()) {
        raise();
        activateWindow();
        return;
    }
    adjustSize();
    exec();
}

OwnerWindow frmGeneralSetting::folderPickerOwner()
{
    return &mainWindow();
}

} // namespace quenby
