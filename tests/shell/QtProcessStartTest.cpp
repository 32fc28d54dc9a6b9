// The Qt start of other programs against real processes: a small script
// started with an explicit block writes the environment it got, in the
// folder it runs in, so that both can be read back.
#include "shell/ui/QtProcessStart.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>

using namespace quenby;
using namespace quenby::testing;

class QtProcessStartTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir dir;
    QtProcessStart start;

    // A script that writes its environment and its arguments into the
    // folder it runs in, the file appearing whole once written.
    QString writeScript()
    {
        const QString path = dir.filePath("converter.sh");
        writeBytes(path, "#!/bin/sh\n"
                         "/usr/bin/env > env-out.tmp\n"
                         "echo \"$@\" > args-out.tmp\n"
                         "/bin/mv args-out.tmp args-out.txt\n"
                         "/bin/mv env-out.tmp env-out.txt\n");
        QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    // The lines the script wrote, sorted: the shell orders them its own way.
    QStringList writtenEnvironment()
    {
        QFile out(dir.filePath("env-out.txt"));
        if (!out.open(QIODevice::ReadOnly))
            return {QStringLiteral("<no output>")};
        QStringList lines = QString::fromUtf8(out.readAll()).split('\n', Qt::SkipEmptyParts);
        lines.sort();
        return lines;
    }

    QString block(const QStringList& entries)
    {
        QString b;
        for (const QString& e : entries)
            b += e + QChar(u'\0');
        return b + QChar(u'\0');
    }

private Q_SLOTS:
    void init()
    {
        QFile::remove(dir.filePath("env-out.txt"));
        QFile::remove(dir.filePath("args-out.txt"));
    }

    void environmentEntriesComeInTheProcessOrder()
    {
        qputenv("QUENBY_PROBE_ENTRY", "one=two");
        QStringList entries;
        for (int i = 1;; ++i) {
            const QString e = start.environmentEntry(i);
            if (e.isEmpty())
                break;
            entries.append(e);
        }
        QVERIFY(entries.contains("QUENBY_PROBE_ENTRY=one=two"));
        QCOMPARE(entries.size(), QProcessEnvironment::systemEnvironment().keys().size());
        QCOMPARE(start.environmentEntry(0), QString());
        QCOMPARE(start.environmentEntry(static_cast<int>(entries.size()) + 1), QString());
        qunsetenv("QUENBY_PROBE_ENTRY");
    }

    void theProgramGetsExactlyItsBlockAndFolder()
    {
        ProcessCreation request;
        request.applicationName = writeScript();
        request.commandLine = request.applicationName;
        request.environmentBlock = block({"A=1", "QUENBY_X=two words", "EQ=a=b"});
        request.workingFolder = dir.path();
        QCOMPARE(start.createProcess(request), 1);
        QTRY_VERIFY(QFile::exists(dir.filePath("env-out.txt")));
        // The shell adds the folder it runs in, and nothing of this process
        // (no HOME, no PATH) comes through.
        QCOMPARE(writtenEnvironment(),
                 QStringList({"A=1", "EQ=a=b", "PWD=" + dir.path(), "QUENBY_X=two words"}));
        QFile args(dir.filePath("args-out.txt"));
        QVERIFY(args.open(QIODevice::ReadOnly));
        QCOMPARE(args.readAll(), QByteArray("\n")); // no argument
    }

    void anEmptyBlockIsAnEmptyEnvironment()
    {
        ProcessCreation request;
        request.applicationName = writeScript();
        request.commandLine = request.applicationName;
        request.environmentBlock = QString(QChar(u'\0'));
        request.workingFolder = dir.path();
        QCOMPARE(start.createProcess(request), 1);
        QTRY_VERIFY(QFile::exists(dir.filePath("env-out.txt")));
        QCOMPARE(writtenEnvironment(), QStringList({"PWD=" + dir.path()}));
    }

    void aMissingProgramFailsWithACode()
    {
        ProcessCreation request;
        request.applicationName = dir.filePath("no-such-converter");
        request.commandLine = request.applicationName;
        request.environmentBlock = block({"A=1"});
        request.workingFolder = dir.path();
        QCOMPARE(start.createProcess(request), 0);
        QVERIFY(start.lastError() != 0);
    }

    void messageTextsComeFromTheSystem()
    {
        const QString text = start.formatMessage(ENOENT, 160);
        QVERIFY(!text.isEmpty());
        QCOMPARE(text, qt_error_string(ENOENT));
        // A text that does not fit in the buffer is no text.
        QCOMPARE(start.formatMessage(ENOENT, 4), QString());
        QCOMPARE(start.lastError(), ERANGE);
    }

    void theShellStartsACommandLineWithItsArguments()
    {
        // The shell start runs in the current folder.
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        qputenv("QUENBY_SHELL_PROBE", "1");
        const bool started = start.shellStart(writeScript() + " E:/ /x");
        QDir::setCurrent(before);
        qunsetenv("QUENBY_SHELL_PROBE");
        QVERIFY(started);
        QTRY_VERIFY(QFile::exists(dir.filePath("env-out.txt")));
        QFile args(dir.filePath("args-out.txt"));
        QVERIFY(args.open(QIODevice::ReadOnly));
        QCOMPARE(args.readAll(), QByteArray("E:/ /x\n"));
        // The shell start gives no environment of its own: this process's.
        QVERIFY(writtenEnvironment().contains("QUENBY_SHELL_PROBE=1"));
    }

    void aShellCommandThatCannotStartFails()
    {
        QVERIFY(!start.shellStart("quenby-no-such-disk-check E:\\ /x"));
        QVERIFY(start.lastError() != 0);
        QVERIFY(!start.shellStart(""));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QtProcessStartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "QtProcessStartTest.moc"
