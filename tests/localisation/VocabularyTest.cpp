// Guards the shipped language files against the program itself: every key
// that some part of the program can ask for (the fill routines' tables, the
// main menu, the vocabulary of running routines, and any key literal in the
// program's sources) must have a text in each language, and the files must
// keep the shape and the code page that the lookup reads.
#include "localisation/model/Vocabulary.h"
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/WindowTextKeys.h"
#include "shell/model/CodePage.h"
#include "shell/model/MainMenu.h"
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <vector>

using namespace quenby;
using namespace quenby::testing;

namespace {

const QStringList kLanguageFiles = {QStringLiteral("en.lng"), QStringLiteral("fr.lng"),
                                    QStringLiteral("polish.lng")};

// --- Keys in the program's sources ----------------------------------------

// The contents of the string literals of C++ source text, in order. Comments
// are skipped, so that a comment quoting an example key asks for nothing;
// character literals and digit separators are stepped over so that their
// quotes don't open a string.
QStringList stringLiterals(const QString& s)
{
    QStringList out;
    const qsizetype n = s.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = s.at(i);
        const QChar next = i + 1 < n ? s.at(i + 1) : QChar();
        if (c == u'/' && next == u'/') {
            i = s.indexOf(u'\n', i);
            if (i < 0)
                break;
        } else if (c == u'/' && next == u'*') {
            i = s.indexOf(QStringLiteral("*/"), i + 2);
            if (i < 0)
                break;
            i += 2;
        } else if (c == u'\'') {
            ++i;
            if (i > 1 && s.at(i - 2).isDigit())
                continue; // 1'000
            while (i < n && s.at(i) != u'\'' && s.at(i) != u'\n')
                i += s.at(i) == u'\\' ? 2 : 1;
            ++i;
        } else if (c == u'"' && i > 0 && s.at(i - 1) == u'R') {
            // R"delimiter( ... )delimiter"
            const qsizetype open = s.indexOf(u'(', i);
            if (open < 0)
                break;
            const QString close = u')' + s.mid(i + 1, open - i - 1) + u'"';
            const qsizetype end = s.indexOf(close, open + 1);
            if (end < 0)
                break;
            out << s.mid(open + 1, end - open - 1);
            i = end + close.size();
        } else if (c == u'"') {
            QString literal;
            ++i;
            while (i < n && s.at(i) != u'"' && s.at(i) != u'\n') {
                if (s.at(i) == u'\\' && i + 1 < n)
                    literal += s.at(i++);
                literal += s.at(i++);
            }
            out << literal;
            ++i;
        } else {
            ++i;
        }
    }
    return out;
}

// Folders of the source tree that hold no program code: the tests (whose
// keys are made up on purpose), benchmarks, data, and any build tree.
bool holdsProgramCode(const QFileInfo& folder, bool topLevel)
{
    const QString name = folder.fileName();
    if (name.startsWith(u'.') || QFileInfo::exists(folder.filePath() + "/CMakeCache.txt"))
        return false;
    if (!topLevel)
        return true;
    static const QStringList notCode = {"tests", "bench", "lang", "samples", "cmake"};
    return !notCode.contains(name) && !name.startsWith(QStringLiteral("build"));
}

void collectSources(const QDir& dir, bool topLevel, QStringList& files)
{
    for (const QFileInfo& entry :
         dir.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (entry.isDir()) {
            if (holdsProgramCode(entry, topLevel))
                collectSources(QDir(entry.filePath()), false, files);
        } else if (entry.suffix() == u"cpp" || entry.suffix() == u"h") {
            files << entry.filePath();
        }
    }
}

struct SourceKey
{
    QString key;
    QString file; // relative to the source folder
};

// A literal that reads as a language key: window or module, a point, and the
// rest of the key, with blanks around it that the lookup trims.
const QRegularExpression& keyLiteral()
{
    static const QRegularExpression re(QStringLiteral(
        R"(^[ \t]*((?:frm|DeviceType|md|Mod|fnc)[A-Za-z0-9_]*\.[A-Za-z0-9_.()]+)[ \t]*$)"));
    return re;
}

struct SourceScan
{
    int files = 0;
    std::vector<SourceKey> keys;
};

const SourceScan& sourceScan()
{
    static const SourceScan scan = [] {
        SourceScan result;
        const QDir root(QStringLiteral(QUENBY_SOURCE_DIR));
        QStringList files;
        collectSources(root, true, files);
        for (const QString& path : files) {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly))
                continue;
            ++result.files;
            const QString text = QString::fromUtf8(file.readAll());
            for (const QString& literal : stringLiterals(text)) {
                const QRegularExpressionMatch m = keyLiteral().match(literal);
                if (m.hasMatch())
                    result.keys.push_back({m.captured(1), root.relativeFilePath(path)});
            }
        }
        return result;
    }();
    return scan;
}

// --- Every key the program can ask for ------------------------------------

// Key -> the places that ask for it.
std::map<QString, QStringList> requestedKeys()
{
    std::map<QString, QStringList> keys;
    for (const WindowTextTable& table : windowTextTables())
        for (const WindowTextEntry& entry : table.entries)
            keys[TrimSpacesAndTabs(QString::fromUtf8(entry.key))] << table.routine;
    for (const MainMenuEntry& entry : mainMenuEntries()) {
        const QString key = TrimSpacesAndTabs(QString::fromUtf8(entry.key));
        if (!key.isEmpty())
            keys[key] << QStringLiteral("main menu entry ") + entry.name;
    }
    for (const VocabularyKey& entry : vocabularyKeys())
        keys[QString::fromUtf8(entry.key)] << QString::fromUtf8(entry.fetchedBy);
    for (const SourceKey& entry : sourceScan().keys)
        keys[entry.key] << entry.file;
    return keys;
}

// --- The shipped files as the lookup splits them --------------------------

struct FileEntry
{
    QString key;
    QString text;
};

QString decodedFile(const QString& name)
{
    const QString path = langSourcePath(name);
    return decodeText(readBytes(path), languageFileCodePage(path));
}

std::vector<FileEntry> entriesOf(const QString& name)
{
    std::vector<FileEntry> entries;
    for (const QString& raw : decodedFile(name).split(QStringLiteral("\r\n"))) {
        const QString line = raw.trimmed();
        const qsizetype comma = line.indexOf(u',');
        if (comma >= 0)
            entries.push_back(
                {TrimSpacesAndTabs(line.left(comma)), TrimSpacesAndTabs(line.mid(comma + 1))});
    }
    return entries;
}

std::set<QString> keySetOf(const QString& name)
{
    std::set<QString> keys;
    for (const FileEntry& e : entriesOf(name))
        keys.insert(e.key);
    return keys;
}

// Characters from 0x80 to 0x9F: what a byte that the code page leaves
// undefined decodes to, and what text written in another code page leaves.
bool holdsControlCharacters(const QString& text)
{
    for (const QChar c : text)
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9F)
            return true;
    return false;
}

} // namespace

TEST(Vocabulary, KeysStandOnceTrimmedAndNamedWithTheirCaller)
{
    std::set<QString> seen;
    ASSERT_FALSE(vocabularyKeys().empty());
    for (const VocabularyKey& entry : vocabularyKeys()) {
        const QString key = QString::fromUtf8(entry.key);
        EXPECT_TRUE(seen.insert(key).second) << key.toStdString() << " stands twice";
        EXPECT_EQ(key, TrimSpacesAndTabs(key)) << key.toStdString();
        EXPECT_TRUE(keyLiteral().match(key).hasMatch()) << key.toStdString();
        EXPECT_STRNE(entry.fetchedBy, "") << key.toStdString();
    }
}

TEST(Vocabulary, DeviceTypeKeyJoinsThePrefixAndTheType)
{
    EXPECT_EQ(deviceTypeKey("KVX"), QString::fromUtf8(DeviceTypeKeys::Kvx));
    EXPECT_EQ(deviceTypeKey("ZBL"), QString::fromUtf8(DeviceTypeKeys::Zbl));
}

TEST(Vocabulary, LiteralsAreFoundOutsideCommentsOnly)
{
    const QString code =
        QStringLiteral("// \"frmX.InAComment\"\n"
                       "/* \"frmX.InABlock\" */\n"
                       "auto a = 1'000; char q = '\"'; auto b = \"frmMain.Caption\";\n"
                       "auto c = R\"x(frmRaw.Key)x\"; auto d = \"say \\\"hi\\\"\";\n");
    EXPECT_EQ(stringLiterals(code),
              (QStringList{"frmMain.Caption", "frmRaw.Key", "say \\\"hi\\\""}));
}

TEST(ProgramSources, ScanSeesEveryKnownKeyLiteral)
{
    // The tables and the vocabulary are literals in the sources themselves: a
    // scan that misses one of them would miss a key elsewhere too.
    const SourceScan& scan = sourceScan();
    ASSERT_GT(scan.files, 0) << "no source found under " QUENBY_SOURCE_DIR;
    std::set<QString> found;
    for (const SourceKey& k : scan.keys)
        found.insert(TrimSpacesAndTabs(k.key));
    for (const WindowTextTable& table : windowTextTables())
        for (const WindowTextEntry& entry : table.entries)
            EXPECT_TRUE(found.count(TrimSpacesAndTabs(QString::fromUtf8(entry.key)))) << entry.key;
    for (const VocabularyKey& entry : vocabularyKeys())
        EXPECT_TRUE(found.count(QString::fromUtf8(entry.key))) << entry.key;
    for (const SourceKey& k : scan.keys)
        EXPECT_FALSE(k.file.startsWith(QStringLiteral("tests/"))) << k.file.toStdString();
}

TEST(ShippedVocabulary, EveryRequestedKeyHasATextInEachLanguage)
{
    const std::map<QString, QStringList> keys = requestedKeys();
    ASSERT_GT(keys.size(), 200u);
    for (const QString& name : kLanguageFiles) {
        const QString file = langSourcePath(name);
        for (const auto& [key, askers] : keys)
            EXPECT_FALSE(FindKeyInLanguageFile(key, file).isEmpty())
                << "\"" << key.toStdString() << "\", asked for by " << askers.first().toStdString()
                << ", has no text in " << name.toStdString();
    }
}

TEST(ShippedVocabulary, EveryKeyOfTheFilesIsAskedFor)
{
    const std::map<QString, QStringList> keys = requestedKeys();
    for (const QString& name : kLanguageFiles)
        for (const FileEntry& e : entriesOf(name))
            EXPECT_TRUE(keys.count(e.key)) << "\"" << e.key.toStdString() << "\" in "
                                           << name.toStdString() << " is asked for by nothing";
}

TEST(ShippedVocabulary, NoKeyStandsTwiceInAFile)
{
    for (const QString& name : kLanguageFiles) {
        std::set<QString> seen;
        for (const FileEntry& e : entriesOf(name))
            EXPECT_TRUE(seen.insert(e.key).second)
                << "\"" << e.key.toStdString() << "\" stands twice in " << name.toStdString();
    }
}

TEST(ShippedVocabulary, AllThreeFilesHoldTheSameKeys)
{
    const std::set<QString> english = keySetOf("en.lng");
    for (const QString& name : {QStringLiteral("fr.lng"), QStringLiteral("polish.lng")}) {
        const std::set<QString> other = keySetOf(name);
        for (const QString& key : english)
            EXPECT_TRUE(other.count(key))
                << "\"" << key.toStdString() << "\" is missing from " << name.toStdString();
        for (const QString& key : other)
            EXPECT_TRUE(english.count(key)) << "\"" << key.toStdString() << "\" of "
                                            << name.toStdString() << " is missing from en.lng";
    }
}

TEST(ShippedVocabulary, LinesEndInCrLfOnly)
{
    for (const QString& name : kLanguageFiles) {
        const QByteArray bytes = readBytes(langSourcePath(name));
        ASSERT_TRUE(bytes.endsWith("\r\n")) << name.toStdString();
        EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n")) << name.toStdString();
        EXPECT_EQ(bytes.count('\r'), bytes.count("\r\n")) << name.toStdString();
        EXPECT_FALSE(bytes.startsWith("\xEF\xBB\xBF")) << name.toStdString();
    }
}

TEST(ShippedVocabulary, PolishFileIsWindows1250WithPolishLetters)
{
    const QString text = decodedFile("polish.lng");
    EXPECT_FALSE(holdsControlCharacters(text));
    for (const char* letter : {"ą", "ć", "ę", "ł", "ń", "ó", "ś", "ź", "ż"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(letter))) << letter;
    EXPECT_EQ(FindKeyInLanguageFile("frmKVXCondensedReport.txtWindingRes.Text",
                                    langSourcePath("polish.lng")),
              QString::fromUtf8("Rezystancja uzwojenia"));
}

TEST(ShippedVocabulary, FrenchFileIsWindows1252WithAccents)
{
    const QString text = decodedFile("fr.lng");
    EXPECT_FALSE(holdsControlCharacters(text));
    for (const char* letter : {"é", "è", "à", "ç", "É"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(letter))) << letter;
    EXPECT_EQ(
        FindKeyInLanguageFile("frmKVXCondensedReport.txtWindingRes.Text", langSourcePath("fr.lng")),
        QString::fromUtf8("Résistance d'enroulement"));
}

TEST(ShippedVocabulary, EnglishFileIsWindows1252)
{
    EXPECT_FALSE(holdsControlCharacters(decodedFile("en.lng")));
}

TEST(ShippedVocabulary, TextsCarryNoMnemonicMarker)
{
    // A menu or a button would take "&" as the mark of its access key.
    for (const QString& name : kLanguageFiles)
        for (const FileEntry& e : entriesOf(name))
            EXPECT_FALSE(e.text.contains(u'&'))
                << "\"" << e.key.toStdString() << "\" in " << name.toStdString();
}

TEST(ShippedVocabulary, AppendedTextsReadWithWhatFollows)
{
    // The status bar puts the version directly behind the welcome text, the
    // About window a blank and the version behind its label.
    const QString en = langSourcePath("en.lng");
    EXPECT_EQ(FindKeyInLanguageFile("frmMain.stBar1.Panels.Text.Welcome", en) + VersionText,
              QStringLiteral("Welcome to Quenby v3.13.1"));
    EXPECT_EQ(FindKeyInLanguageFile("frmAbout.lbSoftwareVersion.Caption", en) + u' ' + VersionText,
              QStringLiteral("Software version: 3.13.1"));
    // The maker's address fills several lines.
    EXPECT_GE(FindKeyInLanguageFile("frmAbout.lbAddress", en).count(QStringLiteral("\r\n")), 2);
}
