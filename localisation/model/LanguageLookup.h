// Every text the operator sees comes from a language file beside the program,
// looked up key by key, with an optional "oem-" file that overrides single
// texts. Each lookup opens, scans and closes the file anew, unless a
// LanguageFilesRead is in force.
#pragma once

#include "shell/model/CodePage.h"
#include "shell/model/Session.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

namespace quenby {

// The text of a key in the current language; the key itself when no file has
// a text for it. Trims the caller's key of blanks as a side effect.
QString GetLanguageText(QString& key);
QString GetLanguageText(const QString& key);

// The text behind the first line of `file` whose key equals `key`, or "".
// A file that cannot be opened raises the run-time failure; any failure once
// it is open (an unreadable line) gives "". The file is closed either way.
QString FindKeyInLanguageFile(const QString& key, const QString& file);

// While one is in force, lookups take each language file as it stood when
// they first read it in that time: the file is read once instead of once a
// key, with the same texts, the same first-line rule for an empty key and the
// same failures (a file that cannot be opened is opened again at each lookup
// and fails there). A fill of a window's texts and the language loader keep
// one for their run; inside another, it adds nothing.
class LanguageFilesRead
{
public:
    LanguageFilesRead();
    ~LanguageFilesRead();
    LanguageFilesRead(const LanguageFilesRead&) = delete;
    LanguageFilesRead& operator=(const LanguageFilesRead&) = delete;

    // The read of one file: the text of each key at its first line, and the
    // first line's text when its key is empty.
    struct File
    {
        QHash<QString, QString> texts;
        std::optional<QString> firstLineText;
    };
    struct Files
    {
        std::map<QString, File> files;
        std::map<QString, bool> exists; // oem- files looked for
    };

private:
    std::unique_ptr<Files> m_files; // none when another one is in force
    std::optional<Installed<Files>> m_installed;
};

// Drops blanks and tabs at both ends.
QString TrimSpacesAndTabs(const QString& text);

// The current language file's name up to its first point: "en", "fr", "polish".
QString GetLanguageCode();

// The code page a language file is written in: Windows-1250 for the Polish
// files (and their oem- files), Windows-1252 for the others.
CodePage languageFileCodePage(const QString& file);

// The file of a language word: AppPath + sep + "en.lng" for "ENGLISH",
// "fr.lng" for "FRANCAIS", "polish.lng" for "POLISH"; "" for any other word.
QString languageFilePath(const QString& language);

// What the language loader asks of the windows: the fill routines by name,
// the language menu's enabled state and the load of the upload window. The
// application installs its windows behind it.
class LanguageWindows
{
public:
    virtual ~LanguageWindows() = default;
    // Runs the fill routine `routine` ("FillTextsMain", ...) on its window,
    // which makes the window on first touch.
    virtual void fillTexts(const QString& routine) = 0;
    virtual void setLanguageMenuEnabled(bool enabled) = 0;
    // Loads frmUploadDevice; its load starts the port search.
    virtual void loadUploadDevice() = 0;
};
LanguageWindows& languageWindows();

// Puts the language text of `key` on the main window's status bar.
void setStatusText(const QString& key);

// The fill routines in the order the loader calls them.
const QStringList& languageFillOrder();

// Sets LangFilePath through CommonDialog1's file name and refills every window.
void LoadLanguage(const QString& language);

} // namespace quenby
