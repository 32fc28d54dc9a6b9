#include "shell/model/CodePage.h"

#include <gtest/gtest.h>

using namespace quenby;

TEST(CodePage, MicroIsOneByteInWindows1252)
{
    const QByteArray bytes("12.3 \xB5Ohm");
    const QString text = decodeText(bytes);
    EXPECT_EQ(text, QString::fromUtf8("12.3 µOhm"));
    EXPECT_EQ(encodeText(text), bytes);
}

TEST(CodePage, Windows1252UpperRange)
{
    EXPECT_EQ(decodeText("\x80"), QString(QChar(0x20AC)));
    EXPECT_EQ(decodeText("\xE9"), QString::fromUtf8("é"));
    EXPECT_EQ(encodeText(QString::fromUtf8("déjà €")), QByteArray("d\xE9j\xE0 \x80"));
}

TEST(CodePage, PolishLettersInWindows1250)
{
    const QString text = QString::fromUtf8("Łódź, żółć, ś");
    const QByteArray bytes = encodeText(text, CodePage::Windows1250);
    EXPECT_EQ(bytes, QByteArray("\xA3\xF3\x64\x9F, \xBF\xF3\xB3\xE6, \x9C"));
    EXPECT_EQ(decodeText(bytes, CodePage::Windows1250), text);
}

TEST(CodePage, EveryByteRoundTrips)
{
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(static_cast<char>(b));
    for (CodePage page : {CodePage::Windows1252, CodePage::Windows1250})
        EXPECT_EQ(encodeText(decodeText(all, page), page), all);
}

TEST(CodePage, UnwritableCharactersBecomeQuestionMarks)
{
    EXPECT_EQ(encodeText(QString::fromUtf8("Ω ł")), QByteArray("? ?"));
}
