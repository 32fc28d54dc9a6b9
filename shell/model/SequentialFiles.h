// The sequential file service: numbered files read by line or by delimited
// item and written line by line, with the platform's error numbers.
//
// Test file readers and language lookups take a free number, open a file
// under it and read it with lineInput (a whole line) or input (one
// comma-delimited item). A line ends at CR LF, at a lone CR or at a lone LF;
// the end is not part of the line. Files are decoded and encoded through a
// single-byte code page, so what is read and written is byte-exact.
//
// Failures raise RuntimeError with the file's path: 52 for a number not open,
// 54 for a read on a file open for output, 62 for reading past the end, 53 for
// a missing file, 76 for a missing folder, 75 for any other open failure, 55
// for a number already in use, 67 when all 255 numbers are taken.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/CodePage.h"

#include <QString>
#include <QStringView>

#include <map>
#include <memory>

namespace quenby {

class SequentialFiles
{
public:
    enum class Mode { Input, Output, Append };
    static constexpr Int16 MaxFileNumber = 255;

    // The files of the shell session in force (shellSession().files).
    static SequentialFiles& instance();

    SequentialFiles();
    ~SequentialFiles();
    SequentialFiles(const SequentialFiles&) = delete;
    SequentialFiles& operator=(const SequentialFiles&) = delete;

    // The lowest number not in use.
    Int16 freeFile() const;
    void open(Int16 fileNo, const QString& path, Mode mode, CodePage page = CodePage::Windows1252);
    // Closing a number that is not open does nothing.
    void close(Int16 fileNo);
    void closeAll();
    bool isOpen(Int16 fileNo) const;
    int openCount() const { return static_cast<int>(m_files.size()); }
    QString path(Int16 fileNo) const;
    Mode mode(Int16 fileNo) const;

    QString lineInput(Int16 fileNo);
    // One item as delimited input reads it: leading blanks and tabs skipped; an
    // item in double quotes runs to the closing quote and loses the quotes,
    // whatever follows it up to the next comma or line end being dropped;
    // otherwise the item ends at a comma or at the line end. The delimiter is
    // consumed.
    QString input(Int16 fileNo);
    bool eof(Int16 fileNo);
    // Positions count from 1, as the platform's seek does.
    void seek(Int16 fileNo, qint64 position);
    qint64 position(Int16 fileNo) const;
    void printLine(Int16 fileNo, QStringView text);

private:
    struct File;
    File& file(Int16 fileNo) const;
    File& readable(Int16 fileNo) const;

    std::map<Int16, std::unique_ptr<File>> m_files;
};

} // namespace quenby
