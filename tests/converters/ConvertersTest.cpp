// The two converters as the operator and a script meet them: the window that
// the batch menu opens (its folders, standard, progress and summary) and the
// built programs run on the samples and on a file that the readers reject.
// A rejected file is listed with its failure, gives a non-zero exit status
// and leaves no output; every good test gives a one-page PDF whose text holds
// the test's texts, or a CSV.
#include "converters/model/BatchConversion.h"
#include "converters/model/TestConversions.h"
#include "converters/ui/ConverterWindow.h"
#include "converters/ui/KvxPdfConversion.h"
#include "kvx/model/KvxReportWindow.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "shell/model/AppState.h"
#include "shell/model/DataFolders.h"
#include "shell/model/Services.h"
#include "shell/model/SettingsStore.h"
#include "tests/support/PdfReadBack.h"
#include "tests/support/ScriptedServices.h"
#include "tests/support/TestFiles.h"
#include "tools/ToolSessions.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace quenby;
using namespace quenby::converters;
using quenby::testing::pdfPages;
using quenby::testing::pdfText;
using quenby::testing::readBytes;
using quenby::testing::samplePath;
using quenby::testing::writeBytes;

namespace {

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run runProgram(const QString& program, const QStringList& arguments,
               const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString langFile()
{
    return quenby::testing::langSourcePath(QStringLiteral("en.lng"));
}

void copySample(const QString& name, const QString& folder)
{
    QVERIFY(QFile::copy(samplePath(name), folder + u'/' + name));
}

} // namespace

class ConvertersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_sessions = std::make_unique<tools::ToolSessions>();
        m_settings = std::make_unique<QtSettingsStore>(m_dir.filePath(QStringLiteral("settings")));
        services().settings = m_settings.get();
        appState().LangFilePath = langFile();
        loadZblReportForExport();
        QVERIFY(m_dir.isValid());
    }
    void cleanup()
    {
        m_settings.reset();
        m_sessions.reset();
    }

    void windowStartsInTheDataFolderOfTheSettings()
    {
        m_settings->SaveSetting(QString::fromLatin1(SettingsAppData),
                                QString::fromLatin1(SectionUserFileTransfert),
                                QStringLiteral("ZBL"), QStringLiteral("/data/root"));
        ConverterWindow window(zblConverterKind(),
                               [](const QString&) -> ConvertOne { return &convertZblTestToCsv; });
        QCOMPARE(QDir::fromNativeSeparators(window.txtTestFolder()->text()),
                 QStringLiteral("/data/root/ZBL/Files"));
        QCOMPARE(window.txtOutputFolder()->text(), window.txtTestFolder()->text());
        QVERIFY(window.cbStandard() == nullptr);
    }

    void windowSpeaksTheLanguageAndAsksForFoldersThroughTheService()
    {
        appState().LangFilePath = quenby::testing::langSourcePath(QStringLiteral("fr.lng"));
        quenby::testing::ScriptedFolders folders;
        folders.answers.push_back(QStringLiteral("/chosen/tests"));
        services().folders = &folders;
        ConverterWindow window(kvxConverterKind(),
                               [](const QString&) -> ConvertOne { return &convertZblTestToCsv; });
        QCOMPARE(window.windowTitle(), QStringLiteral("Convertir des fichiers d'essai KVX en PDF"));
        QCOMPARE(window.findChild<QPushButton*>(QStringLiteral("cmdConvert"))->text(),
                 QStringLiteral("Convertir"));
        window.findChild<QPushButton*>(QStringLiteral("txtTestFolderBrowse"))->click();
        services().folders = nullptr;
        QCOMPARE(folders.requests.size(), std::size_t(1));
        QCOMPARE(folders.requests[0].title, QStringLiteral("Dossier des fichiers d'essai"));
        QCOMPARE(QDir::fromNativeSeparators(window.txtTestFolder()->text()),
                 QStringLiteral("/chosen/tests"));
        // With QUENBY_PICTURES_DIR set, the window is saved there as it stands.
        if (const QString folder = qEnvironmentVariable("QUENBY_PICTURES_DIR"); !folder.isEmpty()) {
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QVERIFY(window.grab().save(
                QDir(folder).filePath(QStringLiteral("kvx_report_converter-french.png"))));
            window.hide();
        }
        BatchSummary summary;
        summary.total = 3;
        summary.converted = {QStringLiteral("a"), QStringLiteral("b")};
        QCOMPARE(summary.text(), QStringLiteral("2 fichiers d'essai convertis sur 3.\n"));
    }

    void zblWindowConvertsTheFolderAndListsTheRejectedFile()
    {
        const QString tests = m_dir.filePath(QStringLiteral("tests"));
        const QString out = m_dir.filePath(QStringLiteral("out"));
        QVERIFY(QDir().mkpath(tests));
        copySample(QStringLiteral("zbl-manual-19-rows.zbl"), tests);
        copySample(QStringLiteral("zbl-saved-compensated.zbl"), tests);
        writeBytes(tests + QStringLiteral("/broken.zbl"), QByteArray());

        ConverterWindow window(zblConverterKind(),
                               [](const QString&) -> ConvertOne { return &convertZblTestToCsv; });
        window.txtTestFolder()->setText(QDir::toNativeSeparators(tests));
        window.txtOutputFolder()->setText(QDir::toNativeSeparators(out));
        QTest::mouseClick(window.cmdConvert(), Qt::LeftButton);

        const QString summary = window.txtSummary()->toPlainText();
        QVERIFY2(summary.startsWith(QStringLiteral("Converted 2 of 3 test files.\n")),
                 qPrintable(summary));
        QVERIFY2(summary.contains(tests + QStringLiteral("/broken.zbl: Run-time error '62': "
                                                         "Input past end of file")),
                 qPrintable(summary));
        QCOMPARE(window.pbProgress()->value(), window.pbProgress()->maximum());
        QCOMPARE(window.pbProgress()->maximum(), 3);
        QCOMPARE(window.lbFile()->text(), QString());
        QVERIFY(window.cmdConvert()->isEnabled());
        QCOMPARE(QDir(out).entryList(QDir::Files),
                 (QStringList{QStringLiteral("zbl-manual-19-rows.csv"),
                              QStringLiteral("zbl-saved-compensated.csv")}));
        QVERIFY(readBytes(out + QStringLiteral("/zbl-manual-19-rows.csv"))
                    .contains("1;H1-H2;436.49 mOhm;---;1;X1-X2;"));
    }

    void kvxWindowPrintsUnderTheStandardChosen()
    {
        frmKVXCondensedReport& report = frmKVXCondensedReport::instance();
        const Installed<KvxReportWindow> installed(report);
        report.FillTextsKvxCondensedReport();
        const QString tests = m_dir.filePath(QStringLiteral("kvx"));
        const QString out = m_dir.filePath(QStringLiteral("pdf"));
        QVERIFY(QDir().mkpath(tests));
        copySample(QStringLiteral("kvx-x2-x4-only.txt"), tests);

        ConverterWindow window(
            kvxConverterKind(), [&report](const QString& standard) -> ConvertOne {
                return [&report, standard](const QString& test, const QString& pdf) {
                    convertKvxTestToPdf(report, test, standard, pdf);
                };
            });
        QVERIFY(window.cbStandard() != nullptr);
        QCOMPARE(window.cbStandard()->currentText(), QStringLiteral("IEEE 30"));
        window.cbStandard()->setCurrentText(QStringLiteral("AINSI/IEC10/50"));
        window.txtTestFolder()->setText(tests);
        window.txtOutputFolder()->setText(out);
        QTest::mouseClick(window.cmdConvert(), Qt::LeftButton);

        QCOMPARE(window.txtSummary()->toPlainText(),
                 QStringLiteral("Converted 1 of 1 test files.\n"));
        const QString pdf = out + QStringLiteral("/kvx-x2-x4-only.pdf");
        QCOMPARE(pdfPages(pdf), 1);
        QVERIFY(pdfText(pdf, 1).contains(QStringLiteral("AINSI/IEC10/50")));
        // The window is back as it was after its print form.
        QVERIFY(!report.cbCompensation()->isHidden());
    }

    void zblProgramConvertsTheSamplesAndFailsOnTheRejectedFile()
    {
        const QString bad = m_dir.filePath(QStringLiteral("rejected.zbl"));
        writeBytes(bad, QByteArrayLiteral("not a test\r\n"));
        const QString out = m_dir.filePath(QStringLiteral("csv"));
        const Run run = runProgram(QStringLiteral(QUENBY_ZBL_CONVERTER),
                                   {QStringLiteral(QUENBY_SAMPLES_DIR), bad, QStringLiteral("-o"),
                                    out, QStringLiteral("--lang"), langFile()});
        QCOMPARE(run.exitCode, ExitSomeFailed);
        QVERIFY2(run.out.contains(QStringLiteral("Converted 11 of 12 test files.")),
                 qPrintable(run.out));
        QVERIFY2(run.err.contains(bad + QStringLiteral(": Run-time error")), qPrintable(run.err));
        const QStringList written = QDir(out).entryList(QDir::Files);
        QCOMPARE(written.size(), 11);
        QVERIFY(!written.contains(QStringLiteral("rejected.csv")));
        QVERIFY(!written.contains(QStringLiteral("rejected.csv.part")));
        QCOMPARE(
            readBytes(out + QStringLiteral("/zbl-saved-compensated.csv")),
            readBytes(QStringLiteral(QUENBY_CONVERTERS_DATA_DIR "/zbl-saved-compensated.csv")));
    }

    void kvxProgramWritesOnePagePdfsWithoutADisplay()
    {
        const QString bad = m_dir.filePath(QStringLiteral("rejected.txt"));
        writeBytes(bad, QByteArray());
        const QString out = m_dir.filePath(QStringLiteral("program-pdf"));
        // The program draws offscreen by itself when there is no display.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        const Run run =
            runProgram(QStringLiteral(QUENBY_KVX_CONVERTER),
                       {samplePath(QStringLiteral("kvx-ten-taps.txt")), bad, QStringLiteral("-o"),
                        out, QStringLiteral("--standard"), QStringLiteral("IEEE 45"),
                        QStringLiteral("--lang"), langFile()},
                       environment);
        QCOMPARE(run.exitCode, ExitSomeFailed);
        QVERIFY2(run.err.contains(bad + QStringLiteral(": Run-time error '62'")),
                 qPrintable(run.err));
        QCOMPARE(QDir(out).entryList(QDir::Files), QStringList{QStringLiteral("kvx-ten-taps.pdf")});
        const QString pdf = out + QStringLiteral("/kvx-ten-taps.pdf");
        QCOMPARE(pdfPages(pdf), 1);
        const QString text = pdfText(pdf, 1);
        for (const char* expected :
             {"kvx-ten-taps.txt", "IEEE 45", "Elm Creek 138 kV", "MR-1200-0457", "1200:5"})
            QVERIFY2(text.contains(QString::fromLatin1(expected)), expected);
    }

    void programsTellTheirCommandLine()
    {
        const Run help =
            runProgram(QStringLiteral(QUENBY_KVX_CONVERTER), {QStringLiteral("--help")});
        QCOMPARE(help.exitCode, ExitConverted);
        QVERIFY(help.out.startsWith(QStringLiteral("usage: kvx_report_converter")));
        QVERIFY(help.out.contains(QStringLiteral("--standard")));
        const Run wrong = runProgram(
            QStringLiteral(QUENBY_ZBL_CONVERTER),
            {QStringLiteral("--standard"), QStringLiteral("IEEE 30"), QStringLiteral("x.zbl")});
        QCOMPARE(wrong.exitCode, ExitBadArguments);
        QVERIFY(wrong.err.contains(QStringLiteral("unknown option --standard")));
        const Run nothing =
            runProgram(QStringLiteral(QUENBY_ZBL_CONVERTER), {QStringLiteral("-o"), m_dir.path()});
        QCOMPARE(nothing.exitCode, ExitBadArguments);
    }

    void missingTestFileIsAFailureOfItsOwn()
    {
        const QString gone = m_dir.filePath(QStringLiteral("gone.zbl"));
        const Run run = runProgram(QStringLiteral(QUENBY_ZBL_CONVERTER),
                                   {gone, QStringLiteral("--lang"), langFile()});
        QCOMPARE(run.exitCode, ExitSomeFailed);
        QVERIFY2(run.err.contains(gone + QStringLiteral(": File not found")), qPrintable(run.err));
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<tools::ToolSessions> m_sessions;
    std::unique_ptr<QtSettingsStore> m_settings;
};

QTEST_MAIN(ConvertersTest)
#include "ConvertersTest.moc"
