#include "shell/model/CFile.h"

#include "shell/model/NumberText.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"

#include <QDir>
#include <QStringList>

#include <limits>

namespace quenby {

namespace {

SequentialFiles& files()
{
    return SequentialFiles::instance();
}

// Tap and winding texts become single tokens, so that a reader can split a
// row on white space.
QString blanksToUnderscores(const QString& text)
{
    QString out = text;
    out.replace(u' ', u'_');
    return out;
}

void dashIfEmpty(QString& field)
{
    if (field.isEmpty())
        field = QStringLiteral("---");
}

} // namespace

void CFile::MakeDirectory(QString& path)
{
    const QString sep = pathSep();
    const QStringList parts = path.split(sep);
    // The text behind the last separator is a file name, or "" when the path
    // ends in a separator: it is never made. An absolute Unix path starts with
    // an empty part, whose stage is the root "/".
    QString stage;
    for (qsizetype i = 0; i + 1 < parts.size(); ++i) {
        stage += parts[i] + sep;
        if (FolderExists(stage) == False16) {
            // A relative stage is taken from the current folder, which the
            // FolderExists calls keep moving; callers therefore pass absolute
            // paths.
            if (!QDir().mkdir(stage))
                raiseRuntimeError(err::PathFileAccessError, stage);
        }
    }
}

Bool16 CFile::FolderExists(QString& path)
{
    // Changing into the folder is the test, and the process's current folder
    // stays there afterwards. Nothing in the system depends on the current
    // folder (every path it opens is absolute), so the move is left in place.
    return toBool16(QDir::setCurrent(path));
}

Int16 CFile::OpenFile(QString& fileName, Bool16 writeMode)
{
    int error = 0;
    try {
        m_fileNo = files().freeFile();
        m_writeMode = writeMode;
        files().open(m_fileNo, fileName,
                     writeMode != False16 ? SequentialFiles::Mode::Output
                                          : SequentialFiles::Mode::Input);
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    if (error != 0)
        CloseFile();
    return static_cast<Int16>(error);
}

void CFile::CloseFile()
{
    try {
        files().close(m_fileNo);
    } catch (const RuntimeError&) {
        // Closing is best effort: a file that is not open is already closed.
    }
}

Int16 CFile::GetLineQtyFromFile(Int16& count)
{
    count = 0;
    qint64 position = 0;
    try {
        position = files().position(m_fileNo);
        files().seek(m_fileNo, 1);
        while (!files().eof(m_fileNo)) {
            files().input(m_fileNo);
            // The count is 16-bit: past its maximum it stays there, silently.
            if (count < std::numeric_limits<Int16>::max())
                ++count;
        }
    } catch (const RuntimeError&) {
        // The count is all the caller asks for: failures are not reported.
    }
    try {
        if (position > 0)
            files().seek(m_fileNo, position);
    } catch (const RuntimeError&) {
    }
    return count;
}

Int16 CFile::GetNextLine(QString& line)
{
    int error = 0;
    try {
        // At the end of the file the line keeps its text and the result stays
        // 0, not an end-of-file error: callers stop on their own test of the
        // file's end and must not take the end for a failure.
        if (!files().eof(m_fileNo))
            line = files().input(m_fileNo);
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    return static_cast<Int16>(error);
}

Int16 CFile::GetLineNo(Int16 lineNo, QString& line)
{
    int error = 0;
    try {
        files().seek(m_fileNo, 1);
        for (Int16 i = 1; i <= lineNo && !files().eof(m_fileNo); ++i)
            line = files().input(m_fileNo);
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    return static_cast<Int16>(error);
}

Int16 CFile::PrintLineToFile(QString& line)
{
    if (m_writeMode == False16)
        return 1;
    int error = 0;
    try {
        files().printLine(m_fileNo, line);
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    return static_cast<Int16>(error);
}

Int16 CFile::PrintLineToFileZBL(QString& tapA, QString& windingA, QString& resistanceA,
                                QString& tapB, QString& windingB, QString& resistanceB,
                                QString& current, Dynamic& interval, QString& total)
{
    int error = 0;
    try {
        // The placeholder goes into the caller's own texts, which it goes on
        // using after the row is written.
        dashIfEmpty(tapA);
        dashIfEmpty(windingA);
        dashIfEmpty(resistanceA);
        dashIfEmpty(tapB);
        dashIfEmpty(windingB);
        dashIfEmpty(resistanceB);
        dashIfEmpty(current);
        if (interval.isEmpty() || (interval.isText() && interval.toText().isEmpty()))
            interval = Dynamic(QStringLiteral("---"));
        dashIfEmpty(total);

        // The instrument gives the current in milliamperes. Only the four
        // ranges it knows get a label, by exact equality; any other value,
        // "---" (which reads as 0) included, is written as it came, leading
        // blank and all. The label replaces the caller's text too.
        const double milliamperes = leadingNumber(current);
        if (milliamperes == 10000.0)
            current = QStringLiteral("10A");
        else if (milliamperes == 1000.0)
            current = QStringLiteral("1A");
        else if (milliamperes == 100.0)
            current = QStringLiteral("100mA");
        else if (milliamperes == 10.0)
            current = QStringLiteral("10mA");

        if (m_writeMode == False16)
            return 1;

        // The resistance fields keep their blank between number and unit,
        // which a reader expects as two tokens.
        ZonedLine row;
        row.add(QStringLiteral("-"));
        row.add(blanksToUnderscores(tapA));
        row.add(blanksToUnderscores(windingA));
        row.add(resistanceA);
        row.add(blanksToUnderscores(tapB));
        row.add(blanksToUnderscores(windingB));
        row.add(resistanceB);
        row.add(current);
        row.add(interval.toText());
        row.add(total);
        files().printLine(m_fileNo, row.text());
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    return static_cast<Int16>(error);
}

} // namespace quenby
