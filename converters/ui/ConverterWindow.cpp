#include "converters/ui/ConverterWindow.h"

#include "kvx/model/KneeGraph.h"
#include "shell/model/Services.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace quenby::converters {

ConverterWindow::ConverterWindow(const ConverterKind& kind, ConverterFor converterFor,
                                 QWidget* parent)
    : QWidget(parent), m_kind(kind), m_converterFor(std::move(converterFor))
{
    setObjectName(kind.program);
    setWindowTitle(kind.hasStandard
                       ? converterText("frmConverter.Caption.KVX",
                                       QStringLiteral("Convert KVX test files to PDF"))
                       : converterText("frmConverter.Caption.ZBL",
                                       QStringLiteral("Convert ZBL test files to CSV")));
    const QString testFolder =
        converterText("frmConverter.lbTestFolder.Caption", QStringLiteral("Test files folder:"));
    const QString outputFolder =
        converterText("frmConverter.lbOutputFolder.Caption", QStringLiteral("Output folder:"));

    const auto folderRow = [this](QLineEdit*& box, const char* name, const QString& title) {
        auto* row = new QHBoxLayout;
        box = new QLineEdit(this);
        box->setObjectName(QString::fromLatin1(name));
        auto* pick = new QPushButton(QStringLiteral("..."), this);
        pick->setObjectName(QString::fromLatin1(name) + QStringLiteral("Browse"));
        QLineEdit* target = box;
        connect(pick, &QPushButton::clicked, this,
                [this, target, title] { browse(target, title); });
        row->addWidget(box, 1);
        row->addWidget(pick);
        return row;
    };

    auto* form = new QFormLayout;
    // The folder question takes the caption without its colon as its title.
    const auto title = [](QString caption) {
        caption = caption.trimmed();
        if (caption.endsWith(u':'))
            caption.chop(1);
        return caption.trimmed();
    };
    form->addRow(testFolder, folderRow(m_testFolder, "txtTestFolder", title(testFolder)));
    form->addRow(outputFolder, folderRow(m_outputFolder, "txtOutputFolder", title(outputFolder)));
    if (kind.hasStandard) {
        m_standard = new QComboBox(this);
        m_standard->setObjectName(QStringLiteral("cbStandard"));
        m_standard->addItems({QString::fromLatin1(KneeStandardIeee30),
                              QString::fromLatin1(KneeStandardIeee45),
                              QString::fromLatin1(KneeStandardIec1050)});
        form->addRow(
            converterText("frmConverter.lbStandard.Caption", QStringLiteral("Knee standard:")),
            m_standard);
    }

    m_convert = new QPushButton(
        converterText("frmConverter.cmdConvert.Caption", QStringLiteral("Convert")), this);
    m_convert->setObjectName(QStringLiteral("cmdConvert"));
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("pbProgress"));
    m_progress->setRange(0, 1);
    m_progress->setValue(0);
    m_file = new QLabel(this);
    m_file->setObjectName(QStringLiteral("lbFile"));
    m_summary = new QPlainTextEdit(this);
    m_summary->setObjectName(QStringLiteral("txtSummary"));
    m_summary->setReadOnly(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_convert);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(m_progress);
    layout->addWidget(m_file);
    layout->addWidget(m_summary, 1);
    resize(560, 380);

    const QString folder = defaultTestFolder(kind);
    m_testFolder->setText(QDir::toNativeSeparators(folder.isEmpty() ? QDir::homePath() : folder));
    m_outputFolder->setText(m_testFolder->text());

    connect(m_convert, &QPushButton::clicked, this, [this] { convert(); });
}

void ConverterWindow::browse(QLineEdit* box, const QString& title)
{
    // The folder picker is the program's service: Qt's dialog, or a
    // scripted one in tests.
    FolderDialogService* folders = services().folders;
    if (!folders)
        return;
    const QString chosen =
        folders->browseForFolder(title, QDir::fromNativeSeparators(box->text()), browse::NewStyle);
    if (!chosen.isEmpty())
        box->setText(QDir::toNativeSeparators(chosen));
}

BatchSummary ConverterWindow::convert()
{
    m_convert->setEnabled(false);
    m_summary->clear();
    const QString tests = QDir::fromNativeSeparators(m_testFolder->text().trimmed());
    const QString output = QDir::fromNativeSeparators(m_outputFolder->text().trimmed());
    // A file named instead of a folder is converted alone.
    const TestFileList list = collectTestFiles({tests}, m_kind.testSuffix);
    m_progress->setRange(0, std::max(1, static_cast<int>(list.files.size())));
    m_progress->setValue(0);

    const QString standard = m_standard ? m_standard->currentText() : QString();
    const BatchSummary summary =
        runBatch(list, output, m_kind, m_converterFor(standard),
                 [this](int number, int, const QString& file) {
                     m_progress->setValue(number - 1);
                     m_file->setText(QDir::toNativeSeparators(file));
                     QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
                 });
    m_progress->setValue(m_progress->maximum());
    m_file->clear();
    m_summary->setPlainText(summary.text());
    m_convert->setEnabled(true);
    return summary;
}

} // namespace quenby::converters
