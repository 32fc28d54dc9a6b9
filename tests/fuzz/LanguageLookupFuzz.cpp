// The language lookup on any bytes: the input is a language file beside the
// program, and the texts of one window are looked up in it, key by key, as
// its fill routine does. The length of the input picks the window (all of
// them over a run: a lookup scans the file anew, so all of them at once would
// make each input slow) and one of four ways to lay the files out, so that
// both code pages and the override file are reached:
//   0: the input is en.lng;
//   1: the input is polish.lng (Windows-1250);
//   2: the shipped en.lng, the input is oem-en.lng over it;
//   3: the shipped polish.lng, the input is oem-polish.lng over it.
// The same texts are looked up again with the files read once for the whole
// fill, as the windows' fills do, and must come out the same.
#include "localisation/model/LanguageLookup.h"
#include "localisation/model/WindowTextKeys.h"
#include "shell/model/AppState.h"
#include "tests/fuzz/FuzzSupport.h"
#include "tools/ToolSessions.h"

#include <cstddef>
#include <cstdint>
#include <vector>

using namespace quenby;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tools::ToolSessions sessions;
    const fuzz::Scratch scratch;
    const QByteArray input = fuzz::inputBytes(data, size);
    const QString name = size % 2 == 0 ? QStringLiteral("en.lng") : QStringLiteral("polish.lng");
    if (size % 4 < 2) {
        appState().LangFilePath = scratch.write(name, input);
    } else {
        scratch.useShippedLanguage(name);
        scratch.write(QStringLiteral("oem-") + name, input);
    }

    const std::vector<WindowTextTable>& tables = windowTextTables();
    const WindowTextTable& table = tables[size / 4 % tables.size()];
    QStringList scanned;
    fuzz::runRoad([&table, &scanned] {
        for (const WindowTextEntry& entry : table.entries)
            scanned << GetLanguageText(QString::fromLatin1(entry.key));
        GetLanguageCode();
    });
    QStringList readOnce;
    fuzz::runRoad([&table, &readOnce] {
        const LanguageFilesRead read;
        for (const WindowTextEntry& entry : table.entries)
            readOnce << GetLanguageText(QString::fromLatin1(entry.key));
    });
    if (readOnce != scanned)
        __builtin_trap();
    return 0;
}
