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

class LanguageFilesRead::Installation : public Installed<LanguageFilesRead::Files>
{
public:
    using Installed<LanguageFilesRead::Files>::Installed;
};

LanguageFilesRead::LanguageFilesRead()
{
    if (Slot<Files>::installed())
        return;
    m_files = std::make_unique<Files>();
    m_installed = std::make_unique<Installation>(*m_files);
}

LanguageFilesRead::~LanguageFilesRead() = default;

namespace {

// One line of a language file as a lookup sees it: its key and its text.
struct KeyLine
{
    bool hasComma = false;
    QString key;
    QString text;
};

KeyLine splitKeyLine(const QString& rawLine)
{
    const QString line = trimBlanks(rawLine);
    const qsizetype comma = line.indexOf(u',');
    if (comma < 0)
        return {};
    KeyLine parsed{true, TrimSpacesAndTabs(line.left(comma)),
                   TrimSpacesAndTabs(line.mid(comma + 1))};
    parsed.text.replace(QStringLiteral("\\n"), QStringLiteral("\r\n"));
    return parsed;
}

// The whole file read as the scan reads it, line by line up to its end or to
// the first failure after the open.
LanguageFilesRead::File readLanguageFile(const QString& file)
{
    LanguageFilesRead::File read;
    SequentialFiles& files = SequentialFiles::instance();
    const Int16 fileNo = files.freeFile();
    try {
        files.open(fileNo, file, SequentialFiles::Mode::Input, languageFileCodePage(file));
    } catch (const RuntimeError&) {
        return read; // not kept: each lookup opens it and fails as it always has
    }
    read.opened = true;
    const FileNumberGuard guard(fileNo);
    try {
        for (bool first = true;; first = false) {
            const KeyLine line = splitKeyLine(files.lineInput(fileNo));
            if (first && line.hasComma && line.key.isEmpty()) {
                read.firstLineHasEmptyKey = true;
                read.firstLineText = line.text;
            }
            if (line.hasComma && !read.texts.contains(line.key))
                read.texts.insert(line.key, line.text);
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
    if (it == read.end() || !it->second.opened)
        it = read.insert_or_assign(file, readLanguageFile(file)).first;
    const LanguageFilesRead::File& known = it->second;
    if (!known.opened)
        return std::nullopt;
    // The scan takes a file number for its run, and fails when none is free.
    SequentialFiles::instance().freeFile();
    const QString wanted = trimBlanks(key);
    if (wanted.isEmpty())
        return known.firstLineHasEmptyKey ? known.firstLineText : QString();
    return known.texts.value(wanted);
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
            const QString line = trimBlanks(files.lineInput(fileNo));
            const qsizetype comma = line.indexOf(u',');
            if (comma >= 0 && TrimSpacesAndTabs(line.left(comma)) == wanted) {
                QString text = TrimSpacesAndTabs(line.mid(comma + 1));
                text.replace(QStringLiteral("\\n"), QStringLiteral("\r\n"));
                return text;
            }
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
