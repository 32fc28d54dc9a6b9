#include "shell/model/MainMenu.h"

#include <gtest/gtest.h>

#include <set>

using namespace quenby;

TEST(MainMenu, TreeInMenuOrder)
{
    const auto& entries = mainMenuEntries();
    ASSERT_EQ(entries.size(), 71u);
    EXPECT_STREQ(entries.front().name, "mnFiles");
    EXPECT_STREQ(entries.back().name, "mnuAbout");
    EXPECT_STREQ(entries.back().defaultCaption, "\xC3\x80 propos...");
    // Depth never jumps by more than one level, and only sub-menus hold entries.
    int previousDepth = 0;
    bool previousIsMenu = true;
    for (const MainMenuEntry& e : entries) {
        EXPECT_LE(e.depth, previousDepth + 1) << e.name;
        if (e.depth > previousDepth) {
            EXPECT_TRUE(previousIsMenu) << e.name;
        }
        previousDepth = e.depth;
        previousIsMenu = e.subMenu;
    }
    std::set<std::string> names;
    for (const MainMenuEntry& e : entries)
        EXPECT_TRUE(names.insert(e.name).second) << "twice: " << e.name;
}

TEST(MainMenu, OddKeysAndCaptionsAreKept)
{
    std::map<std::string, const MainMenuEntry*> byName;
    for (const MainMenuEntry& e : mainMenuEntries())
        byName[e.name] = &e;
    EXPECT_STREQ(byName["mnFiles"]->key, "frmMain.mnfiles.Caption");
    EXPECT_STREQ(byName["mnSRFKVX"]->key, "frmMain.mnOpen.Caption");
    EXPECT_STREQ(byName["mnTool"]->key, "frmMain.mnuTool.Caption");
    EXPECT_STREQ(byName["mnRepair"]->key, "frmMain.mnuRepair.Caption");
    EXPECT_STREQ(byName["mnuPolish"]->key, "");
    EXPECT_STREQ(byName["mnKVXFiles"]->defaultCaption, "KVX  test Files");
    EXPECT_STREQ(byName["mnUplad"]->defaultCaption, "Up-Load Data");
    EXPECT_STREQ(byName["mnuIP"]->defaultCaption, "?");
}

TEST(MainMenu, NoConverterHidesTheBatchMenu)
{
    auto st = TreatVisibleMenu(false, false);
    EXPECT_FALSE(st["mnBatchConvert"].visible);
    EXPECT_FALSE(st["mnBatchConvertKvxPDF"].enabled);
    EXPECT_FALSE(st["mnBatchConvertZblCsv"].enabled);
}

TEST(MainMenu, OneConverterGreysTheOther)
{
    auto st = TreatVisibleMenu(true, false);
    EXPECT_TRUE(st["mnBatchConvert"].visible);
    EXPECT_TRUE(st["mnBatchConvertKvxPDF"].enabled);
    EXPECT_FALSE(st["mnBatchConvertZblCsv"].enabled);
    st = TreatVisibleMenu(false, true);
    EXPECT_TRUE(st["mnBatchConvert"].visible);
    EXPECT_FALSE(st["mnBatchConvertKvxPDF"].enabled);
    EXPECT_TRUE(st["mnBatchConvertZblCsv"].enabled);
}

TEST(MainMenu, StatesForTheRun)
{
    auto st = TreatVisibleMenu(false, false);
    EXPECT_TRUE(st["mnKVXFiles"].enabled && st["mnKVXFiles"].visible);
    EXPECT_FALSE(st["mnZBLRefFile"].enabled);
    EXPECT_TRUE(st["mnZBLRefFile"].visible);
    EXPECT_FALSE(st["mnKVXCR"].visible);
    EXPECT_TRUE(st["mnKVXCRIEEE30"].enabled); // enabled, under a hidden parent
    EXPECT_FALSE(st["mnZBLBR"].visible);
    EXPECT_FALSE(st["mnWord"].visible);
    EXPECT_FALSE(st["mnTool"].visible);
    EXPECT_TRUE(st["mnuPolish"].visible && st["mnuPolish"].enabled);
    EXPECT_TRUE(st["mnLangue"].enabled);
    EXPECT_FALSE(st["mnPrint"].enabled);
}
