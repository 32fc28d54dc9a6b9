#include "localisation/model/LanguageLookup.h"
#include "tests/support/ScriptedLanguageWindows.h"

#include "shell/model/AppState.h"
#include "shell/model/CodePage.h"
#include "shell/model/CommonDialog.h"
#include "shell/model/Platform.h"
#include "shell/model/RuntimeError.h"
#include "shell/model/SequentialFiles.h"
#include "tests/support/Failure.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

QByteArray linesIn(const QStringList& lines, CodePage page)
{
    QByteArray out;
    for (const QString& line : lines) {
        out += encodeText(line, page);
        out += "\r\n";
    }
    return out;
}

// Each test runs with the program's folder pointed at a fresh temporary
// folder, and leaves the shared language state as it found it.
class LanguageLookupTest : public ::testing::Test
{
protected:
    ScriptedLanguageWindows windows;

protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        savedLangFilePath = appState().LangFilePath;
        savedDialogFileName = CommonDialog1().FileName;
        openBefore = SequentialFiles::instance().openCount();
        setAppPathOverride(dir.path());
    }

    void TearDown() override
    {
        // Every lookup closes its file, whichever way it ended.
        EXPECT_EQ(SequentialFiles::instance().openCount(), openBefore);
        setAppPathOverride(QString());
        appState().LangFilePath = savedLangFilePath;
        CommonDialog1().FileName = savedDialogFileName;
    }

    // A language file in the program's folder; its path.
    QString writeLang(const QString& name, const QByteArray& bytes)
    {
        const QString path = AppPath() + pathSep() + name;
        writeBytes(path, bytes);
        return path;
    }
    QString writeLang(const QString& name, const QStringList& lines,
                      CodePage page = CodePage::Windows1252)
    {
        return writeLang(name, linesIn(lines, page));
    }
    // Makes `name` in the program's folder the current language file.
    void useLanguage(const QString& name)
    {
        appState().LangFilePath = AppPath() + pathSep() + name;
    }

    QTemporaryDir dir;
    QString savedLangFilePath;
    QString savedDialogFileName;
    int openBefore = 0;
};

} // namespace

// --- Line format ---------------------------------------------------------

TEST_F(LanguageLookupTest, FirstCommaSeparatesKeyFromText)
{
    const QString file = writeLang("en.lng", QStringList{"a,b,c"});
    EXPECT_EQ(FindKeyInLanguageFile("a", file), "b,c");
    EXPECT_EQ(FindKeyInLanguageFile("a,b", file), "");
}

TEST_F(LanguageLookupTest, KeyAndTextLoseBlanksAndTabsAtBothEnds)
{
    const QString file = writeLang("en.lng", QStringList{"  frmX.Caption ,\tHello  "});
    EXPECT_EQ(FindKeyInLanguageFile("frmX.Caption", file), "Hello");
}

TEST_F(LanguageLookupTest, TabsAroundTheKeyAreIgnoredAndTabsInsideTheTextKept)
{
    const QString file = writeLang(
        "en.lng", QStringList{"\tfrmX.Caption\t,\t Left\tRight \t", "\t\tfrmY.Caption,y"});
    EXPECT_EQ(FindKeyInLanguageFile("frmX.Caption", file), "Left\tRight");
    EXPECT_EQ(FindKeyInLanguageFile("frmY.Caption", file), "y");
}

TEST_F(LanguageLookupTest, OnlyBlanksAndTabsAreTrimmedNotOtherWhiteSpace)
{
    // 0xA0 is a non-breaking space: it belongs to the key or the text.
    const QString file = writeLang("en.lng", QByteArray("k\xA0,first\r\nk,v\xA0\r\n"));
    EXPECT_EQ(FindKeyInLanguageFile("k", file), QString::fromUtf8("v\u00A0"));
    EXPECT_EQ(FindKeyInLanguageFile(QString::fromUtf8("k\u00A0"), file), "first");
}

TEST_F(LanguageLookupTest, BackslashNBecomesALineBreak)
{
    const QString file = writeLang("en.lng", QStringList{R"(frmX.lbNote.Caption,one\ntwo)"});
    EXPECT_EQ(FindKeyInLanguageFile("frmX.lbNote.Caption", file), "one\r\ntwo");
}

TEST_F(LanguageLookupTest, EveryBackslashNIsReplaced)
{
    const QString file = writeLang("en.lng", QStringList{R"(frmAbout.lbAddress,a\nb\n\nc)"});
    EXPECT_EQ(FindKeyInLanguageFile("frmAbout.lbAddress", file), "a\r\nb\r\n\r\nc");
}

TEST_F(LanguageLookupTest, FirstOfTwoLinesWithTheSameKeyWins)
{
    const QString file = writeLang("en.lng", QStringList{"k,first", "k,second"});
    EXPECT_EQ(FindKeyInLanguageFile("k", file), "first");
}

TEST_F(LanguageLookupTest, KeysCompareWithTheirCase)
{
    const QString file =
        writeLang("en.lng", QStringList{"frmX.caption,lower", "frmX.Caption,Upper"});
    EXPECT_EQ(FindKeyInLanguageFile("frmX.Caption", file), "Upper");
    EXPECT_EQ(FindKeyInLanguageFile("FRMX.CAPTION", file), "");
}

TEST_F(LanguageLookupTest, LinesWithoutCommaAndBlankLinesAreSkipped)
{
    const QString file =
        writeLang("en.lng", QStringList{"A comment line", "     ", "", "\t", "k,found"});
    EXPECT_EQ(FindKeyInLanguageFile("k", file), "found");
}

TEST_F(LanguageLookupTest, KeyOnTheLastLineWithoutLineEndIsFound)
{
    const QString file = writeLang("en.lng", QByteArray("x,1\r\nlast.Key,the end"));
    EXPECT_EQ(FindKeyInLanguageFile("last.Key", file), "the end");
}

TEST_F(LanguageLookupTest, KeyMissingFromTheFileGivesEmpty)
{
    const QString file = writeLang("en.lng", QStringList{"x,1", "y,2"});
    EXPECT_EQ(FindKeyInLanguageFile("z", file), "");
}

TEST_F(LanguageLookupTest, KeyPassedWithBlanksIsTrimmedBeforeComparing)
{
    const QString file = writeLang("en.lng", QStringList{"k,v"});
    EXPECT_EQ(FindKeyInLanguageFile("  k ", file), "v");
}

TEST_F(LanguageLookupTest, EmptyKeyGivesUpAfterTheFirstLineThatDoesNotMatch)
{
    // A second line with an empty key would match if the scan went on.
    const QString file = writeLang("en.lng", QStringList{"not a text line", ",found late"});
    EXPECT_EQ(FindKeyInLanguageFile("", file), "");
    useLanguage("en.lng");
    QString key;
    EXPECT_EQ(GetLanguageText(key), "");
}

TEST_F(LanguageLookupTest, EmptyKeyMatchesAFirstLineWithAnEmptyKey)
{
    const QString file = writeLang("en.lng", QStringList{" ,first", "k,v"});
    EXPECT_EQ(FindKeyInLanguageFile("", file), "first");
}

// --- Code pages ----------------------------------------------------------

TEST_F(LanguageLookupTest, PolishFilesAreReadAsWindows1250)
{
    // 0xB3 is "ł" in Windows-1250 and "³" in Windows-1252.
    writeLang("polish.lng", QByteArray("k,Wy\xB3\xB9"
                                       "cz\r\n"));
    writeLang("en.lng", QByteArray("k,Wy\xB3\xB9"
                                   "cz\r\n"));
    useLanguage("polish.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), QString::fromUtf8("Wyłącz"));
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), QString::fromUtf8("Wy³¹cz"));
}

TEST_F(LanguageLookupTest, OemPolishFileIsReadAsWindows1250)
{
    writeLang("polish.lng", QStringList{"k,Zamknij"}, CodePage::Windows1250);
    const QString oem = writeLang("oem-polish.lng", QByteArray("k,Za\xB3\xF3\xBF\r\n"));
    useLanguage("polish.lng");
    const QString text = GetLanguageText(QStringLiteral("k"));
    EXPECT_EQ(text, QString::fromUtf8("Załóż"));
    // And back to the very bytes of the file.
    EXPECT_EQ(encodeText(text, languageFileCodePage(oem)), QByteArray("Za\xB3\xF3\xBF"));
}

TEST_F(LanguageLookupTest, CodePageFollowsTheFileName)
{
    EXPECT_EQ(languageFileCodePage("/x/polish.lng"), CodePage::Windows1250);
    EXPECT_EQ(languageFileCodePage("C:\\Quenby\\oem-polish.lng"), CodePage::Windows1250);
    EXPECT_EQ(languageFileCodePage("POLISH.LNG"), CodePage::Windows1250);
    EXPECT_EQ(languageFileCodePage("/x/en.lng"), CodePage::Windows1252);
    EXPECT_EQ(languageFileCodePage("/x/fr.lng"), CodePage::Windows1252);
    EXPECT_EQ(languageFileCodePage("/x/oem-fr.lng"), CodePage::Windows1252);
    EXPECT_EQ(languageFileCodePage("/polish.lng/en.lng"), CodePage::Windows1252);
    EXPECT_EQ(languageFileCodePage("/x/notpolish.lng"), CodePage::Windows1252);
}

TEST_F(LanguageLookupTest, FrenchTextsKeepTheirAccents)
{
    writeLang("fr.lng", QByteArray("k,Rapport condens\xE9\r\n"));
    useLanguage("fr.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), QString::fromUtf8("Rapport condensé"));
}

// --- GetLanguageText and the oem- file -----------------------------------

TEST_F(LanguageLookupTest, TextOfAKeyInTheCurrentFile)
{
    writeLang("en.lng", QStringList{"frmMain.Caption,Quenby"});
    writeLang("fr.lng", QStringList{"frmMain.Caption,Quenby FR"});
    useLanguage("fr.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmMain.Caption")), "Quenby FR");
}

TEST_F(LanguageLookupTest, KeyMissingInBothFilesShowsTheKey)
{
    writeLang("en.lng", QStringList{"a,1"});
    writeLang("oem-en.lng", QStringList{"b,2"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmX.Nothing")), "frmX.Nothing");
}

TEST_F(LanguageLookupTest, EmptyTextInTheMainFileShowsTheKey)
{
    writeLang("en.lng", QStringList{"frmX.Caption,   ", "frmY.Caption,"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmX.Caption")), "frmX.Caption");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmY.Caption")), "frmY.Caption");
}

TEST_F(LanguageLookupTest, CallersKeyIsTrimmedOfBlanks)
{
    writeLang("en.lng", QStringList{"frmMain.Caption,Quenby"});
    useLanguage("en.lng");
    QString key = "  frmMain.Caption ";
    EXPECT_EQ(GetLanguageText(key), "Quenby");
    EXPECT_EQ(key, "frmMain.Caption");

    // A missing key comes back trimmed too.
    QString missing = " frmX.Missing  ";
    EXPECT_EQ(GetLanguageText(missing), "frmX.Missing");
    EXPECT_EQ(missing, "frmX.Missing");
}

TEST_F(LanguageLookupTest, OemFileOverridesOneTextAndNoOther)
{
    writeLang("en.lng", QStringList{"frmMain.Caption,Quenby", "frmMain.mnLangue.Caption,Language"});
    writeLang("oem-en.lng", QStringList{"frmMain.Caption,Acme Quenby"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmMain.Caption")), "Acme Quenby");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmMain.mnLangue.Caption")), "Language");
}

TEST_F(LanguageLookupTest, OemTextFillsAKeyTheMainFileLacks)
{
    writeLang("en.lng", QStringList{"a,1"});
    writeLang("oem-en.lng", QStringList{"b,2"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("b")), "2");
}

TEST_F(LanguageLookupTest, OemFileWithAnEmptyTextKeepsTheMainText)
{
    writeLang("en.lng", QStringList{"frmMain.Caption,Quenby"});
    writeLang("oem-en.lng", QStringList{"frmMain.Caption,  \t"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmMain.Caption")), "Quenby");
}

TEST_F(LanguageLookupTest, OemFileBelongsToTheCurrentLanguageOnly)
{
    writeLang("en.lng", QStringList{"k,english"});
    writeLang("fr.lng", QStringList{"k,francais"});
    writeLang("oem-en.lng", QStringList{"k,oem english"});
    useLanguage("fr.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "francais");
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "oem english");
}

TEST_F(LanguageLookupTest, OemFolderInsteadOfAFileIsIgnored)
{
    writeLang("en.lng", QStringList{"k,v"});
    ASSERT_TRUE(QDir(AppPath()).mkdir("oem-en.lng"));
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "v");
}

TEST_F(LanguageLookupTest, EachLookupReadsTheFileAnew)
{
    writeLang("en.lng", QStringList{"k,before"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "before");
    writeLang("en.lng", QStringList{"k,after"});
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "after");
    writeLang("oem-en.lng", QStringList{"k,oem"});
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "oem");
}

TEST_F(LanguageLookupTest, LookupTakesAFreeNumberAndLeavesOtherFilesOpen)
{
    SequentialFiles& files = SequentialFiles::instance();
    const QString other = writeLang("other.txt", QStringList{"line one", "line two"});
    const Int16 busy = files.freeFile();
    files.open(busy, other, SequentialFiles::Mode::Input);
    EXPECT_EQ(files.lineInput(busy), "line one");

    writeLang("en.lng", QStringList{"k,v"});
    writeLang("oem-en.lng", QStringList{"j,w"});
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "v");
    EXPECT_EQ(GetLanguageText(QStringLiteral("j")), "w");

    ASSERT_TRUE(files.isOpen(busy));
    EXPECT_EQ(files.lineInput(busy), "line two");
    files.close(busy);
}

// --- Failures ------------------------------------------------------------

TEST_F(LanguageLookupTest, MissingCurrentFileRaisesFileNotFound)
{
    writeLang("en.lng", QStringList{"k,v"});
    useLanguage("fr.lng");
    RuntimeError raised(0);
    try {
        GetLanguageText(QStringLiteral("k"));
    } catch (const RuntimeError& e) {
        raised = e;
    }
    EXPECT_EQ(raised.number(), err::FileNotFound);
    EXPECT_EQ(raised.where(), AppPath() + pathSep() + "fr.lng");
}

TEST_F(LanguageLookupTest, MissingOemFileIsSimplyIgnored)
{
    writeLang("en.lng", QStringList{"k,v"});
    useLanguage("en.lng");
    ASSERT_FALSE(QFileInfo::exists(AppPath() + pathSep() + "oem-en.lng"));
    EXPECT_EQ(failureOf([] { EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "v"); }), 0);
}

TEST_F(LanguageLookupTest, NoLanguageFileAtAllFailsTheFirstLookup)
{
    // An unknown language word at start leaves the dialog's empty file name.
    CommonDialog1().FileName.clear();
    LoadLanguage("KLINGON");
    EXPECT_EQ(appState().LangFilePath, "");
    EXPECT_NE(failureOf([] { GetLanguageText(QStringLiteral("frmMain.Caption")); }), 0);
}

TEST_F(LanguageLookupTest, EmptyFileGivesEmptyTextAndShowsTheKey)
{
    // Reading the first line already runs past the end: the failure is
    // swallowed like any other after the open.
    const QString file = writeLang("en.lng", QByteArray());
    EXPECT_EQ(FindKeyInLanguageFile("k", file), "");
    useLanguage("en.lng");
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "k");
}

TEST_F(LanguageLookupTest, UnreadableFileGivesUpAndShowsTheKey)
{
#ifdef Q_OS_LINUX
    // This process's memory file opens but fails to read at offset 0.
    const QString unreadable = QStringLiteral("/proc/self/mem");
    ASSERT_TRUE(QFileInfo(unreadable).isFile());
    EXPECT_EQ(FindKeyInLanguageFile("k", unreadable), "");
    appState().LangFilePath = unreadable;
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmX.Caption")), "frmX.Caption");
#else
    GTEST_SKIP() << "needs a file that opens but cannot be read";
#endif
}

// --- One read for a whole fill --------------------------------------------

namespace {
// Files that test every rule of the scan, and the keys to ask of them.
const std::vector<QByteArray>& trickyFiles()
{
    static const std::vector<QByteArray> files = {
        QByteArray("a,b,c\r\n  k ,\tv  \r\nk,second\r\n\r\nno comma\r\n\tt\t,x\\ny\r\n"),
        QByteArray(",first line empty key\r\nk,v\r\n"),
        QByteArray("k,v\r\n,empty key later\r\n"),
        QByteArray("no comma first\r\n,empty\r\n"),
        QByteArray("k\xA0,nbsp\r\nK,upper\r\nk,last without line end"),
        QByteArray(),
        QByteArray("\r\n\r\n"),
        QByteArray("only,one"),
    };
    return files;
}
const QStringList trickyKeys = {"",     "a",  "a,b",      "k",       " k ",
                                "K",    "t",  "no comma", "missing", QString::fromUtf8("k\u00A0"),
                                "only", "\tk"};
} // namespace

TEST_F(LanguageLookupTest, ReadOnceGivesWhatEachScanGives)
{
    for (std::size_t f = 0; f < trickyFiles().size(); ++f) {
        const QString file = writeLang("en.lng", trickyFiles()[f]);
        for (const QString& key : trickyKeys) {
            const QString scanned = FindKeyInLanguageFile(key, file);
            const LanguageFilesRead read;
            EXPECT_EQ(FindKeyInLanguageFile(key, file), scanned)
                << "file " << f << " key '" << key.toStdString() << "'";
        }
    }
}

TEST_F(LanguageLookupTest, ReadOnceGivesEveryTextOfTheProgramsLanguageFiles)
{
    for (const char* name : {"en.lng", "fr.lng", "polish.lng"}) {
        const QString file = QStringLiteral(QUENBY_LANG_DIR "/") + QLatin1String(name);
        SequentialFiles& files = SequentialFiles::instance();
        QStringList keys;
        const Int16 no = files.freeFile();
        files.open(no, file, SequentialFiles::Mode::Input, languageFileCodePage(file));
        while (!files.eof(no)) {
            const QString line = files.lineInput(no);
            keys << line.left(line.indexOf(u','));
        }
        files.close(no);
        ASSERT_GT(keys.size(), 200) << name;
        QStringList scanned;
        for (const QString& key : keys)
            scanned << FindKeyInLanguageFile(key, file);
        const LanguageFilesRead read;
        for (qsizetype i = 0; i < keys.size(); ++i)
            EXPECT_EQ(FindKeyInLanguageFile(keys[i], file), scanned[i]) << name << " " << i;
    }
}

TEST_F(LanguageLookupTest, ReadOnceKeepsTheFileAsItStoodUntilItEnds)
{
    writeLang("en.lng", QStringList{"k,before"});
    useLanguage("en.lng");
    {
        const LanguageFilesRead read;
        EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "before");
        writeLang("en.lng", QStringList{"k,after"});
        writeLang("oem-en.lng", QStringList{"k,oem"});
        EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "before");
    }
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "oem");
}

TEST_F(LanguageLookupTest, ReadOnceInsideAnotherAddsNothing)
{
    writeLang("en.lng", QStringList{"k,before"});
    useLanguage("en.lng");
    const LanguageFilesRead outer;
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "before");
    {
        const LanguageFilesRead inner;
        writeLang("en.lng", QStringList{"k,after"});
        EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "before");
    }
    // The outer one is still in force.
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "before");
}

TEST_F(LanguageLookupTest, ReadOnceStillFailsAtEachLookupOfAMissingFile)
{
    writeLang("en.lng", QStringList{"k,v"});
    useLanguage("fr.lng");
    const LanguageFilesRead read;
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(failureOf([] { GetLanguageText(QStringLiteral("k")); }), err::FileNotFound);
    // The file appears: the next lookup reads it.
    writeLang("fr.lng", QStringList{"k,fr"});
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "fr");
}

TEST_F(LanguageLookupTest, ReadOnceOfAnEmptyOrUnreadableFileShowsTheKey)
{
    writeLang("en.lng", QByteArray());
    useLanguage("en.lng");
    {
        const LanguageFilesRead read;
        EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "k");
    }
#ifdef Q_OS_LINUX
    appState().LangFilePath = QStringLiteral("/proc/self/mem");
    const LanguageFilesRead read;
    EXPECT_EQ(GetLanguageText(QStringLiteral("frmX.Caption")), "frmX.Caption");
#endif
}

TEST_F(LanguageLookupTest, ReadOnceStillNeedsAFreeFileNumber)
{
    writeLang("en.lng", QStringList{"k,v"});
    useLanguage("en.lng");
    const LanguageFilesRead read;
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "v");
    SequentialFiles& files = SequentialFiles::instance();
    const QString other = writeLang("other.txt", QStringList{"x"});
    std::vector<Int16> taken;
    for (;;) {
        Int16 no = 0;
        try {
            no = files.freeFile();
        } catch (const RuntimeError&) {
            break;
        }
        files.open(no, other, SequentialFiles::Mode::Input);
        taken.push_back(no);
    }
    const int failure = failureOf([] { GetLanguageText(QStringLiteral("k")); });
    for (Int16 no : taken)
        files.close(no);
    EXPECT_EQ(failure, err::TooManyFiles);
}

TEST_F(LanguageLookupTest, LoadLanguageReadsEachFileOnceForAllItsFills)
{
    writeLang("en.lng", QStringList{"k,before"});
    CommonDialog1().FileName.clear();
    QStringList seen;
    for (const QString& routine : languageFillOrder()) {
        windows.fillers[routine] = [&seen, this] {
            seen << GetLanguageText(QStringLiteral("k"));
            // A fill that changes the file does not change what the next ones read.
            writeLang("en.lng", QStringList{"k,after"});
        };
    }
    LoadLanguage("ENGLISH");
    ASSERT_EQ(seen.size(), languageFillOrder().size());
    EXPECT_EQ(seen.count("before"), seen.size());
    EXPECT_EQ(GetLanguageText(QStringLiteral("k")), "after");
}

// --- TrimSpacesAndTabs ---------------------------------------------------

TEST_F(LanguageLookupTest, TrimSpacesAndTabsDropsBlanksAndTabsAtBothEndsOnly)
{
    EXPECT_EQ(TrimSpacesAndTabs(" \t a \t b\t "), "a \t b");
    EXPECT_EQ(TrimSpacesAndTabs("\t\t"), "");
    EXPECT_EQ(TrimSpacesAndTabs(""), "");
    EXPECT_EQ(TrimSpacesAndTabs("plain"), "plain");
    // Other white space is text.
    EXPECT_EQ(TrimSpacesAndTabs("\r\nx\r\n"), "\r\nx\r\n");
}

// --- Language words, code and loading ------------------------------------

TEST_F(LanguageLookupTest, EachWordNamesItsFileBesideTheProgram)
{
    const QString base = AppPath() + pathSep();
    EXPECT_EQ(languageFilePath("ENGLISH"), base + "en.lng");
    EXPECT_EQ(languageFilePath("FRANCAIS"), base + "fr.lng");
    EXPECT_EQ(languageFilePath("POLISH"), base + "polish.lng");
    EXPECT_EQ(languageFilePath("english"), "");
    EXPECT_EQ(languageFilePath("GERMAN"), "");
    EXPECT_EQ(languageFilePath(""), "");
}

TEST_F(LanguageLookupTest, LanguageCodeIsTheFileStem)
{
    LoadLanguage("ENGLISH");
    EXPECT_EQ(GetLanguageCode(), "en");
    LoadLanguage("FRANCAIS");
    EXPECT_EQ(GetLanguageCode(), "fr");
    LoadLanguage("POLISH");
    EXPECT_EQ(GetLanguageCode(), "polish");
    appState().LangFilePath = AppPath() + pathSep() + "oem.custom.lng";
    EXPECT_EQ(GetLanguageCode(), "oem");
}

TEST_F(LanguageLookupTest, LoadLanguageCarriesThePathThroughTheDialog)
{
    LoadLanguage("FRANCAIS");
    const QString fr = AppPath() + pathSep() + "fr.lng";
    EXPECT_EQ(CommonDialog1().FileName, fr);
    EXPECT_EQ(appState().LangFilePath, fr);
}

TEST_F(LanguageLookupTest, UnknownWordTakesTheDialogsCurrentFileName)
{
    LoadLanguage("ENGLISH");
    const QString chosen = AppPath() + pathSep() + "KVX_0001.txt";
    CommonDialog1().FileName = chosen; // a test file picked since
    LoadLanguage("Francais");
    EXPECT_EQ(appState().LangFilePath, chosen);
    EXPECT_EQ(CommonDialog1().FileName, chosen);
}

TEST_F(LanguageLookupTest, LoadLanguageFillsInOrderBetweenTheMenuHooks)
{
    LoadLanguage("ENGLISH");
    const std::vector<QString>& calls = windows.calls;

    const std::vector<QString> expected = {
        "menu off",
        "FillTextsCompensedResistance",
        "FillTextsKvxCondensedReport",
        "FillTextsProcessProgress",
        "FillTextsUploadDevice",
        "FillTextsZblBasicReport",
        "FillTextsAbout",
        "FillTextsZblVGraph",
        "FillTextsMain",
        "FillTextsGeneralSetting",
        "load frmUploadDevice",
        "menu on",
    };
    EXPECT_EQ(calls, expected);
}

TEST(LanguageLoader, LoadingWithoutWindowsBehindTheLoaderIsAnError)
{
    // No window was installed as the loader's view: that is a fault of the
    // program, never a silent load.
    EXPECT_THROW(LoadLanguage("ENGLISH"), std::logic_error);
}

TEST_F(LanguageLookupTest, FillRoutinesSeeTheNewLanguageWithTheMenuDisabled)
{
    writeLang("en.lng", QStringList{"frmMain.Caption,Quenby"});
    writeLang("polish.lng", QStringList{QString::fromUtf8("frmMain.mnLangue.Caption,Język")},
              CodePage::Windows1250);
    LoadLanguage("ENGLISH");

    QString seen;
    bool menuWasEnabledDuringFill = true;
    windows.fillers["FillTextsMain"] = [&] {
        menuWasEnabledDuringFill = windows.menuEnabled;
        seen = GetLanguageText(QStringLiteral("frmMain.mnLangue.Caption"));
    };

    LoadLanguage("POLISH");
    EXPECT_EQ(seen, QString::fromUtf8("Język"));
    EXPECT_FALSE(menuWasEnabledDuringFill);
    EXPECT_TRUE(windows.menuEnabled);
}

TEST_F(LanguageLookupTest, FillingWithAMissingLanguageFileEndsInTheRunTimeError)
{
    writeLang("en.lng", QStringList{"frmMain.Caption,Quenby"});
    windows.fillers["FillTextsMain"] = [] { GetLanguageText(QStringLiteral("frmMain.Caption")); };
    EXPECT_EQ(failureOf([] { LoadLanguage("ENGLISH"); }), 0);
    EXPECT_EQ(failureOf([] { LoadLanguage("FRANCAIS"); }), err::FileNotFound);
}

// --- The shipped language files ------------------------------------------

namespace {

QStringList keysOf(const QString& file)
{
    const QString text = decodeText(readBytes(file), languageFileCodePage(file));
    QStringList keys;
    for (const QString& line : text.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        const qsizetype comma = line.indexOf(u',');
        if (comma >= 0)
            keys << TrimSpacesAndTabs(line.left(comma).trimmed());
    }
    return keys;
}

} // namespace

TEST(ShippedLanguageFiles, EveryEnglishKeyHasATextInEachLanguage)
{
    const QString en = langSourcePath("en.lng");
    const QStringList keys = keysOf(en);
    ASSERT_FALSE(keys.isEmpty());
    EXPECT_TRUE(keys.contains("frmKVXCondensedReport.txtInsulationRes.Text"));
    EXPECT_TRUE(keys.contains("frmMain.Caption"));
    for (const QString& name :
         {QStringLiteral("en.lng"), QStringLiteral("fr.lng"), QStringLiteral("polish.lng")}) {
        const QString file = langSourcePath(name);
        for (const QString& key : keys)
            EXPECT_FALSE(FindKeyInLanguageFile(key, file).isEmpty())
                << key.toStdString() << " has no text in " << name.toStdString();
    }
}

TEST(ShippedLanguageFiles, OpenWithACommentLineAndUseCrLf)
{
    for (const QString& name :
         {QStringLiteral("en.lng"), QStringLiteral("fr.lng"), QStringLiteral("polish.lng")}) {
        const QByteArray bytes = readBytes(langSourcePath(name));
        ASSERT_FALSE(bytes.isEmpty()) << name.toStdString();
        EXPECT_TRUE(bytes.endsWith("\r\n")) << name.toStdString();
        EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n")) << name.toStdString();
        const QByteArray first = bytes.left(bytes.indexOf("\r\n"));
        EXPECT_FALSE(first.contains(',')) << name.toStdString();
        EXPECT_FALSE(first.isEmpty()) << name.toStdString();
    }
}

TEST(ShippedLanguageFiles, OneMethodHasOneNameAndTheTermsOfTheTrade)
{
    // The 10/50 knee method is called IEC in the menus and on the report
    // alike, never by its French initials.
    const QByteArray french = readBytes(langSourcePath("fr.lng"));
    EXPECT_FALSE(french.contains("CEI"));
    for (const char* key :
         {"frmMain.mnKVXANSIIEC1050.Caption", "frmMain.mnKVXERANSIIEC1050.Caption",
          "frmKVXCondensedReport.txtAINSI1050.Text"})
        EXPECT_TRUE(FindKeyInLanguageFile(key, langSourcePath("fr.lng")).contains("IEC 10/50"))
            << key;
    // The phase error of a current transformer, and the rated ratio.
    EXPECT_EQ(
        FindKeyInLanguageFile("frmKVXCondensedReport.txtPSHIFT", langSourcePath("polish.lng")),
        QString::fromUtf8("Błąd kątowy"));
    EXPECT_EQ(
        FindKeyInLanguageFile("frmKVXCondensedReport.txtNPRATIO.Text", langSourcePath("fr.lng")),
        QString::fromUtf8("Rapport assigné"));
    // "3 plik(ów)" reads wrong; the count takes any of the plural forms.
    EXPECT_TRUE(FindKeyInLanguageFile("frmUploadDevice.lbPrintMessage.FileOnDevice",
                                      langSourcePath("polish.lng"))
                    .startsWith(QString::fromUtf8("plik(i/ów)")));
}

TEST(ShippedLanguageFiles, TextsReadInTheirOwnLanguage)
{
    const QString key = "frmKVXCondensedReport.txtInsulationRes.Text";
    EXPECT_EQ(FindKeyInLanguageFile(key, langSourcePath("en.lng")), "Insulation");
    EXPECT_EQ(FindKeyInLanguageFile(key, langSourcePath("fr.lng")), "Isolement");
    // The column holds a resistance.
    EXPECT_EQ(FindKeyInLanguageFile(key, langSourcePath("polish.lng")),
              QString::fromUtf8("Rez. izolacji"));
    EXPECT_EQ(FindKeyInLanguageFile("frmMain.mnuFrancais.Caption", langSourcePath("fr.lng")),
              QString::fromUtf8("Français"));
    EXPECT_EQ(FindKeyInLanguageFile("frmMain.mnLangue.Caption", langSourcePath("polish.lng")),
              QString::fromUtf8("Język"));
    EXPECT_EQ(FindKeyInLanguageFile("frmKVXCondensedReport.Caption", langSourcePath("polish.lng")),
              QString::fromUtf8("Skrócony raport KVX"));
}
