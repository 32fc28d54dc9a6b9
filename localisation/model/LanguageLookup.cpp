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

QString FindKeyInLanguageFile(const QString& key, const QString& file)
{
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
    if (FileExistsApi(oemFile) != False16) {
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

    LanguageWindows& windows = languageWindows();
    windows.setLanguageMenuEnabled(false);
    for (const QString& name : languageFillOrder())
        windows.fillTexts(name);
    windows.loadUploadDevice();
    windows.setLanguageMenuEnabled(true);
}

} // namespace quenby
