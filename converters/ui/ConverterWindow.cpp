#include "converters/ui/ConverterWindow.h"

#include "kvx/model/KneeGraph.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
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
    setWindowTitle(kind.hasStandard ? QStringLiteral("Convert KVX test files to PDF")
                                    : QStringLiteral("Convert ZBL test files to CSV"));

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
    form->addRow(QStringLiteral("Test files folder:"),
                 folderRow(m_testFolder, "txtTestFolder", QStringLiteral("Test files folder")));
    form->addRow(QStringLiteral("Output folder:"),
                 folderRow(m_outputFolder, "txtOutputFolder", QStringLiteral("Output folder")));
    if (kind.hasStandard) {
        m_standard = new QComboBox(this);
        m_standard->setObjectName(QStringLiteral("cbStandard"));
        m_standard->addItems({QString::fromLatin1(KneeStandardIeee30),
                              QString::fromLatin1(KneeStandardIeee45),
                              QString::fromLatin1(KneeStandardIec1050)});
        form->addRow(QStringLiteral("Knee standard:"), m_standard);
    }

    m_convert = new QPushButton(QStringLiteral("Convert"), this);
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
    const QString chosen = QFileDialog::getExistingDirectory(this, title, box->text());
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
