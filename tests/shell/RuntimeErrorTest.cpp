#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"

#include <gtest/gtest.h>

using namespace quenby;

TEST(RuntimeError, CarriesNumberTextAndPlace)
{
    const RuntimeError e(err::InputPastEndOfFile, "/data/test.txt");
    EXPECT_EQ(e.number(), 62);
    EXPECT_EQ(e.text(), "Input past end of file");
    EXPECT_EQ(e.where(), "/data/test.txt");
    EXPECT_STREQ(e.what(), "Run-time error '62': Input past end of file (/data/test.txt)");
}

TEST(RuntimeError, DescriptionFollowsPlaceAndValue)
{
    RuntimeError e(err::TypeMismatch);
    e.setDetail("X1");
    e.setWhere("/data/t.txt");
    EXPECT_STREQ(e.what(), "Run-time error '13': Type mismatch \"X1\" (/data/t.txt)");
}

TEST(RuntimeError, PlatformTexts)
{
    EXPECT_EQ(runtimeErrorText(6), "Overflow");
    EXPECT_EQ(runtimeErrorText(9), "Subscript out of range");
    EXPECT_EQ(runtimeErrorText(13), "Type mismatch");
    EXPECT_EQ(runtimeErrorText(5), "Invalid procedure call or argument");
    EXPECT_EQ(runtimeErrorText(11), "Division by zero");
    EXPECT_EQ(runtimeErrorText(52), "Bad file name or number");
    EXPECT_EQ(runtimeErrorText(53), "File not found");
    EXPECT_EQ(runtimeErrorText(75), "Path/File access error");
    EXPECT_EQ(runtimeErrorText(12345), "Application-defined or object-defined error");
}

TEST(RuntimeError, RaiseThrows)
{
    EXPECT_THROW(raiseRuntimeError(err::Overflow), RuntimeError);
}

TEST(CommandScope, InnermostCommandWinsAndScopesUnwind)
{
    EXPECT_EQ(CommandScope::current(), "");
    {
        CommandScope outer("mnKVXFiles_Click");
        EXPECT_EQ(CommandScope::current(), "mnKVXFiles_Click");
        {
            CommandScope inner("ReadKvxTestFile");
            EXPECT_EQ(CommandScope::current(), "ReadKvxTestFile");
        }
        EXPECT_EQ(CommandScope::current(), "mnKVXFiles_Click");
    }
    EXPECT_EQ(CommandScope::current(), "");
}

TEST(YieldHook, CallsTheHookSetByTheShell)
{
    int calls = 0;
    letSystemBreathe(); // no hook: nothing happens
    setYieldHook([&] { ++calls; });
    letSystemBreathe();
    letSystemBreathe();
    setYieldHook({});
    letSystemBreathe();
    EXPECT_EQ(calls, 2);
}
