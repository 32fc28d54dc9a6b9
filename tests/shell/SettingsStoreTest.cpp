#include "shell/model/SettingsStore.h"
#include "tests/support/TestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quenby;
using namespace quenby::testing;

TEST(SettingsStore, AbsentKeyGivesTheDefault)
{
    QTemporaryDir dir;
    QtSettingsStore store(dir.path());
    EXPECT_EQ(store.GetSetting("Quenbey", "Language", "Language"), "");
    EXPECT_EQ(store.GetSetting("Quenby", "UserFileTransfert", "KVX", "fallback"), "fallback");
}

TEST(SettingsStore, OneIniFilePerApplicationName)
{
    QTemporaryDir dir;
    QtSettingsStore store(dir.path());
    store.SaveSetting("Quenbey", "Language", "Language", "FRANCAIS");
    store.SaveSetting("Quenby", "UserFileTransfert", "KVX", "/data/tests, site 2");
    EXPECT_EQ(store.location("Quenbey"), dir.path() + "/Quenbey.ini");
    EXPECT_TRUE(QFile::exists(dir.path() + "/Quenbey.ini"));
    EXPECT_TRUE(QFile::exists(dir.path() + "/Quenby.ini"));

    QtSettingsStore again(dir.path());
    EXPECT_EQ(again.GetSetting("Quenbey", "Language", "Language"), "FRANCAIS");
    EXPECT_EQ(again.GetSetting("Quenby", "UserFileTransfert", "KVX"), "/data/tests, site 2");
    // The two application names are different stores.
    EXPECT_EQ(again.GetSetting("Quenby", "Language", "Language"), "");
}

TEST(SettingsStore, ReadsAHandWrittenIni)
{
    QTemporaryDir dir;
    writeBytes(
        dir.path() + "/Quenby.ini",
        "[FileTransfert]\r\nKVX=C:\\\\Tests\\\\KVX\\\\\r\n[UserFileTransfert]\r\nZBL=/srv/a,b\r\n");
    QtSettingsStore store(dir.path());
    EXPECT_EQ(store.GetSetting("Quenby", "FileTransfert", "KVX"), "C:\\Tests\\KVX\\");
    EXPECT_EQ(store.GetSetting("Quenby", "UserFileTransfert", "ZBL"), "/srv/a,b");
}

TEST(SettingsStore, TheStoreInUseCanBeReplaced)
{
    QTemporaryDir dir;
    QtSettingsStore store(dir.path());
    setSettingsStore(&store);
    settingsStore().SaveSetting("Quenby", "UserFileTransfert", "ZBL", "/x");
    EXPECT_EQ(store.GetSetting("Quenby", "UserFileTransfert", "ZBL"), "/x");
    setSettingsStore(nullptr);
    EXPECT_NE(&settingsStore(), &store);
}
