#include "localisation/model/LanguageLookup.h"

#include "shell/model/TextRules.h"

#include "shell/model/AppState.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/FileSystem.h"
#include "shell/model/MainWindowState.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "shell/model/Session.h"

#include <algorithm>
#include <optional>

namespace quenby {

void setStatusText(const QString& key)
{
    mainWindowState().statusText = GetLanguageText(key);
}

namespace {

// The name of a file behind its last separator, whichever separator the path
// was built with.
QString fileNameOf(const QString& path)
{
    const qsizetype cut = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return path.mid(cut + 1);
}

// Closes the lookup's file number however the scan ends.
class FileNumberGuard
{
public:
    explicit FileNumberGuard(Int16 fileNo) : m_fileNo(fileNo) {}
    ~FileNumberGuard() { SequentialFiles::instance().close(m_fileNo); }
    FileNumberGuard(const FileNumberGuard&) = delete;
    FileNumberGuard& operator=(const FileNumberGuard&) = delete;

private:
    Int16 m_fileNo;
};

} // namespace

QString TrimSpacesAndTabs(const QString& text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && (text.at(first) == u' ' || text.at(first) == u'\t'))
        ++first;
    while (last > first && (text.at(last - 1) == u' ' || text.at(last - 1) == u'\t'))
        --last;
    return text.mid(first, last - first);
}

CodePage languageFileCodePage(const QString& file)
{
    // File names compare without case, as they do on the target system.
    const QString name = fileNameOf(file);
    if (name.compare(u"polish.lng", Qt::CaseInsensitive) == 0 ||
        name.compare(u"oem-polish.lng", Qt::CaseInsensitive) == 0)
        return CodePage::Windows1250;
    return CodePage::Windows1252;
}

LanguageFilesRead::LanguageFilesRead()
{
    if (Slot<Files>::installed())
        return;
    m_files = std::make_unique<Files>();
    m_installed.emplace(*m_files);
}

LanguageFilesRead::~LanguageFilesRead() = default;

namespace {

// One line of a language file as a lookup sees it: the key before its first
// comma and the text after it, both trimmed, the text's "\n" made line breaks.
struct KeyLine
{
    explicit KeyLine(const QString& rawLine) : line(trimBlanks(rawLine)), comma(line.indexOf(u','))
    {
    }
    bool hasKey() const { return comma >= 0; }
    QString key() const { return TrimSpacesAndTabs(line.left(comma)); }
    QString text() const
    {
        QString text = TrimSpacesAndTabs(line.mid(comma + 1));
        text.replace(QStringLiteral("\\n"), QStringLiteral("\r\n"));
        return text;
    }

    QString line;
    qsizetype comma;
};

// The whole file read as the scan reads it, line by line up to its end or to
// the first failure after the open; nothing when it cannot be opened, so that
// each lookup opens it and fails as it always has.
std::optional<LanguageFilesRead::File> readLanguageFile(const QString& file)
{
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 fileNo = files.freeFile();
    try {
        files.open(fileNo, file, SequentialFiles::Mode::Input, languageFileCodePage(file));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    const FileNumberGuard guard(fileNo);
    LanguageFilesRead::File read;
    try {
        for (bool first = true;; first = false) {
            const KeyLine line(files.lineInput(fileNo));
            if (line.hasKey()) {
                const QString key = line.key();
                if (first && key.isEmpty())
                    read.firstLineText = line.text();
                if (!read.texts.contains(key))
                    read.texts.insert(key, line.text());
            }
            if (files.eof(fileNo))
                break;
        }
    } catch (const RuntimeError&) {
        // The scan gives up the rest of the file here too.
    }
    return read;
}

// The text of `key` in `file` from the read in force, or nothing when no read
// is in force or the file could not be opened.
std::optional<QString> readText(const QString& key, const QString& file)
{
    if (!Slot<LanguageFilesRead::Files>::installed())
        return std::nullopt;
    auto& read = Slot<LanguageFilesRead::Files>::current().files;
    auto it = read.find(file);
    if (it == read.end()) {
        std::optional<LanguageFilesRead::File> made = readLanguageFile(file);
        if (!made)
            return std::nullopt;
        it = read.emplace(file, std::move(*made)).first;
    }
    // The scan takes a file number for its run, and fails when none is free.
    SequentialFiles::instance().freeFile();
    const QString wanted = trimBlanks(key);
    if (wanted.isEmpty())
        return it->second.firstLineText.value_or(QString());
    return it->second.texts.value(wanted);
}

bool oemFileExists(const QString& file)
{
    if (!Slot<LanguageFilesRead::Files>::installed())
        return FileExistsApi(file) != False16;
    auto& known = Slot<LanguageFilesRead::Files>::current().exists;
    const auto it = known.find(file);
    if (it != known.end())
        return it->second;
    const bool exists = FileExistsApi(file) != False16;
    known.emplace(file, exists);
    return exists;
}

} // namespace

QString FindKeyInLanguageFile(const QString& key, const QString& file)
{
    if (std::optional<QString> text = readText(key, file))
        return *text;
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 fileNo = files.freeFile();
    // Deliberately outside the error handling below: a missing language file
    // is fatal rather than a silent fallback to the keys.
    files.open(fileNo, file, SequentialFiles::Mode::Input, languageFileCodePage(file));
    const FileNumberGuard guard(fileNo);

    try {
        const QString wanted = trimBlanks(key);
        for (;;) {
            const KeyLine line(files.lineInput(fileNo));
            if (line.hasKey() && line.key() == wanted)
                return line.text();
            // An empty key gives up after the first line that does not match.
            if (wanted.isEmpty() || files.eof(fileNo))
                return {};
        }
    } catch (const RuntimeError&) {
        // Any failure after the open (an unreadable line, reading past the
        // end) gives up the rest of the file; the caller then shows the key.
        return {};
    }
}

QString GetLanguageText(QString& key)
{
    key = trimBlanks(key);
    const QString langFile = appState().LangFilePath;
    QString text = FindKeyInLanguageFile(key, langFile);

    const QString appPath = AppPath();
    QString relative = langFile;
    if (!appPath.isEmpty())
        relative.remove(appPath);
    if (relative.startsWith(pathSep()))
        relative.remove(0, 1);
    const QString oemFile = appPath + pathSep() + QStringLiteral("oem-") + relative;
    if (oemFileExists(oemFile)) {
        const QString oemText = FindKeyInLanguageFile(key, oemFile);
        if (!oemText.isEmpty())
            text = oemText;
    }
    return text.isEmpty() ? key : text;
}

QString GetLanguageText(const QString& key)
{
    QString copy = key;
    return GetLanguageText(copy);
}

QString GetLanguageCode()
{
    // Cut by position, as the language file always sits in the program's folder.
    const QString name = appState().LangFilePath.mid(AppPath().size() + 1);
    const qsizetype point = name.indexOf(u'.');
    return point >= 0 ? name.left(point) : name;
}

QString languageFilePath(const QString& language)
{
    QString file;
    if (language == u"ENGLISH")
        file = QStringLiteral("en.lng");
    else if (language == u"FRANCAIS")
        file = QStringLiteral("fr.lng");
    else if (language == u"POLISH")
        file = QStringLiteral("polish.lng");
    else
        return {};
    return AppPath() + pathSep() + file;
}

LanguageWindows& languageWindows()
{
    return Slot<LanguageWindows>::current();
}

const QStringList& languageFillOrder()
{
    static const QStringList order = {
        QStringLiteral("FillTextsCompensedResistance"),
        QStringLiteral("FillTextsKvxCondensedReport"),
        QStringLiteral("FillTextsProcessProgress"),
        QStringLiteral("FillTextsUploadDevice"),
        QStringLiteral("FillTextsZblBasicReport"),
        QStringLiteral("FillTextsAbout"),
        QStringLiteral("FillTextsZblVGraph"),
        QStringLiteral("FillTextsMain"),
        QStringLiteral("FillTextsGeneralSetting"),
    };
    return order;
}

void LoadLanguage(const QString& language)
{
    // The main window's open dialog carries the path: an unknown word leaves
    // whatever file name the dialog holds as the language file.
    const QString file = languageFilePath(language);
    if (!file.isEmpty())
        CommonDialog1().FileName = file;
    appState().LangFilePath = CommonDialog1().FileName;

    // Every fill reads the files once.
    const LanguageFilesRead read;
    LanguageWindows& windows = languageWindows();
    windows.setLanguageMenuEnabled(false);
    for (const QString& name : languageFillOrder())
        windows.fillTexts(name);
    windows.loadUploadDevice();
    windows.setLanguageMenuEnabled(true);
}

} // namespace quenby
