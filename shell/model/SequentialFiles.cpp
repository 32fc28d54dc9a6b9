#include "shell/model/SequentialFiles.h"

#include "shell/model/RuntimeError.h"
#include "shell/model/ShellSession.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace quenby {

namespace {
// Reads take the file a block at a time; a test file or a language file fits
// in one block.
constexpr qint64 ChunkSize = 64 * 1024;

constexpr auto isLineEnd = [](char c) { return c == '\r' || c == '\n'; };
constexpr auto isItemEnd = [](char c) { return c == ',' || c == '\r' || c == '\n'; };
constexpr auto isQuote = [](char c) { return c == '"'; };
} // namespace

struct SequentialFiles::File
{
    QFile handle;
    Mode mode = Mode::Input;
    CodePage page = CodePage::Windows1252;
    QByteArray buffer;
    qsizetype next = 0;     // index of the next unread byte in buffer
    qint64 bufferStart = 0; // file offset of buffer[0]

    // The next byte, or -1 at the end of the file.
    int peek()
    {
        if (next >= buffer.size() && !refill())
            return -1;
        return static_cast<unsigned char>(buffer[next]);
    }
    // The next block into the buffer, which keeps its memory: a block, or
    // what is left of the file when that is less (a device without a size
    // gets whole blocks). False at the end.
    bool refill()
    {
        bufferStart += buffer.size();
        next = 0;
        const qint64 left = handle.isSequential() ? ChunkSize : handle.size() - handle.pos();
        const qint64 want = std::clamp<qint64>(left, 1, ChunkSize);
        buffer.resize(want);
        const qint64 got = handle.read(buffer.data(), want);
        buffer.resize(std::max<qint64>(got, 0));
        return !buffer.isEmpty();
    }
    // Consumes the bytes up to the first one that `isStop` accepts, or to the
    // end of the file, and gives them decoded; the stop byte stays unread. A
    // run that lies inside the block is decoded straight from it.
    template <class IsStop> QString takeUntil(IsStop isStop)
    {
        QByteArray carried; // the part of a run that lay in earlier blocks
        while (peek() >= 0) {
            const char* begin = buffer.constData() + next;
            const char* end = buffer.constData() + buffer.size();
            const char* stop = std::find_if(begin, end, isStop);
            next += stop - begin;
            if (stop != end && carried.isEmpty())
                return decodeText(QByteArrayView(begin, stop), page);
            carried.append(begin, stop - begin);
            if (stop != end)
                break;
        }
        return decodeText(carried, page);
    }
    // Consumes the bytes up to the first one that `isStop` accepts, or to the
    // end of the file; the stop byte stays unread.
    template <class IsStop> void skipUntil(IsStop isStop)
    {
        while (peek() >= 0) {
            const char* begin = buffer.constData() + next;
            const char* end = buffer.constData() + buffer.size();
            const char* stop = std::find_if(begin, end, isStop);
            next += stop - begin;
            if (stop != end)
                return;
        }
    }
    // Consumes the end of a line if one stands next: CR LF, CR or LF.
    void skipLineEnd()
    {
        const int c = peek();
        if (c == '\r') {
            ++next;
            if (peek() == '\n')
                ++next;
        } else if (c == '\n') {
            ++next;
        }
    }
    qint64 offset() const { return bufferStart + next; }
};

// The service of the shell session in force; the session makes it, and a
// session that has none gets one here.
SequentialFiles& SequentialFiles::instance()
{
    std::unique_ptr<SequentialFiles>& files = shellSession().files;
    if (!files)
        files = std::make_unique<SequentialFiles>();
    return *files;
}

SequentialFiles::SequentialFiles() = default;
SequentialFiles::~SequentialFiles() = default;

Int16 SequentialFiles::freeFile() const
{
    for (Int16 n = 1; n <= MaxFileNumber; ++n)
        if (!m_files.count(n))
            return n;
    raiseRuntimeError(err::TooManyFiles);
}

void SequentialFiles::open(Int16 fileNo, const QString& path, Mode mode, CodePage page)
{
    if (fileNo < 1 || fileNo > MaxFileNumber)
        raiseRuntimeError(err::BadFileNameOrNumber, path);
    if (m_files.count(fileNo))
        raiseRuntimeError(err::FileAlreadyOpen, path);
    auto f = std::make_unique<File>();
    f->mode = mode;
    f->page = page;
    f->handle.setFileName(path);
    const QFileInfo info(path);
    if (path.isEmpty())
        raiseRuntimeError(err::BadFileNameOrNumber, path);
    if (mode == Mode::Input) {
        if (!info.exists())
            raiseRuntimeError(err::FileNotFound, path);
        // Reads go straight into the file's own buffer.
        if (info.isDir() || !f->handle.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            raiseRuntimeError(err::PathFileAccessError, path);
    } else {
        if (!info.absoluteDir().exists())
            raiseRuntimeError(err::PathNotFound, path);
        const auto flags = mode == Mode::Output ? QIODevice::WriteOnly | QIODevice::Truncate
                                                : QIODevice::WriteOnly | QIODevice::Append;
        if (info.isDir() || !f->handle.open(flags))
            raiseRuntimeError(err::PathFileAccessError, path);
    }
    m_files.emplace(fileNo, std::move(f));
}

void SequentialFiles::close(Int16 fileNo)
{
    m_files.erase(fileNo);
}

void SequentialFiles::closeAll()
{
    m_files.clear();
}

bool SequentialFiles::isOpen(Int16 fileNo) const
{
    return m_files.count(fileNo) != 0;
}

SequentialFiles::File& SequentialFiles::file(Int16 fileNo) const
{
    const auto it = m_files.find(fileNo);
    if (it == m_files.end())
        raiseRuntimeError(err::BadFileNameOrNumber, QStringLiteral("file #%1").arg(fileNo));
    return *it->second;
}

SequentialFiles::File& SequentialFiles::readable(Int16 fileNo) const
{
    File& f = file(fileNo);
    if (f.mode != Mode::Input)
        raiseRuntimeError(err::BadFileMode, f.handle.fileName());
    return f;
}

QString SequentialFiles::path(Int16 fileNo) const
{
    return file(fileNo).handle.fileName();
}

SequentialFiles::Mode SequentialFiles::mode(Int16 fileNo) const
{
    return file(fileNo).mode;
}

QString SequentialFiles::lineInput(Int16 fileNo)
{
    File& f = readable(fileNo);
    if (f.peek() < 0)
        raiseRuntimeError(err::InputPastEndOfFile, f.handle.fileName());
    QString line = f.takeUntil(isLineEnd);
    f.skipLineEnd();
    return line;
}

QString SequentialFiles::input(Int16 fileNo)
{
    File& f = readable(fileNo);
    int c = f.peek();
    while (c == ' ' || c == '\t') {
        ++f.next;
        c = f.peek();
    }
    if (c < 0)
        raiseRuntimeError(err::InputPastEndOfFile, f.handle.fileName());
    QString item;
    if (c == '"') {
        ++f.next;
        item = f.takeUntil(isQuote);
        if (f.peek() == '"')
            ++f.next;
        // Whatever stands between the closing quote and the delimiter is dropped.
        f.skipUntil(isItemEnd);
    } else {
        item = f.takeUntil(isItemEnd);
    }
    if (f.peek() == ',')
        ++f.next;
    else
        f.skipLineEnd();
    return item;
}

bool SequentialFiles::eof(Int16 fileNo)
{
    File& f = file(fileNo);
    if (f.mode != Mode::Input)
        return true;
    return f.peek() < 0;
}

void SequentialFiles::seek(Int16 fileNo, qint64 position)
{
    File& f = file(fileNo);
    if (position < 1)
        raiseRuntimeError(err::BadRecordNumber, f.handle.fileName());
    f.handle.seek(position - 1);
    f.buffer.resize(0);
    f.next = 0;
    f.bufferStart = position - 1;
}

qint64 SequentialFiles::position(Int16 fileNo) const
{
    File& f = file(fileNo);
    return (f.mode == Mode::Input ? f.offset() : f.handle.pos()) + 1;
}

void SequentialFiles::printLine(Int16 fileNo, QStringView text)
{
    File& f = file(fileNo);
    if (f.mode == Mode::Input)
        raiseRuntimeError(err::BadFileMode, f.handle.fileName());
    QByteArray bytes = encodeText(text, f.page);
    bytes.append("\r\n", 2);
    if (f.handle.write(bytes) != bytes.size() || !f.handle.flush())
        raiseRuntimeError(err::DeviceIoError, f.handle.fileName());
}

} // namespace quenby
