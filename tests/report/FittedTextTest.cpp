// The text fitting of the report pages: fonts that give way a pixel at a
// time, and words broken with a hyphen only where no line could hold them.
#include "report/ui/FittedText.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

using namespace quenby;

class FittedTextTest : public QObject
{
    Q_OBJECT

private:
    static QFont pixels(int size)
    {
        QFont font = QApplication::font();
        font.setPixelSize(size);
        return font;
    }

    static int width(const QString& text, int size)
    {
        return QFontMetrics(pixels(size)).horizontalAdvance(text);
    }

private Q_SLOTS:
    void aTextThatFitsKeepsTheLargestSize()
    {
        const QString text = QStringLiteral("Tap");
        QCOMPARE(fittingPixelSize(pixels(11), text, width(text, 11), 11, 8, false), 11);
    }

    void theSizeGivesWayUntilTheTextFits()
    {
        const QString text = QStringLiteral("Compensated resistance");
        const int room = width(text, 9);
        const int size = fittingPixelSize(pixels(11), text, room, 11, 6, false);
        QVERIFY(size <= 9);
        QVERIFY(width(text, size) <= room);
        // One pixel more would not fit.
        QVERIFY(width(text, size + 1) > room);
    }

    void theSmallestSizeIsTheFloorEvenWhenNothingFits()
    {
        QCOMPARE(fittingPixelSize(pixels(11), QStringLiteral("Przesunięcie"), 5, 11, 8, false), 8);
    }

    void byWordOnlyTheWidestWordCounts()
    {
        const QString text = QStringLiteral("Nameplate ratio");
        const int room = width(QStringLiteral("Nameplate"), 10);
        QCOMPARE(fittingPixelSize(pixels(10), text, room, 10, 8, true), 10);
        QVERIFY(fittingPixelSize(pixels(10), text, room, 10, 8, false) < 10);
        QVERIFY(everyWordFits(text, QFontMetrics(pixels(10)), room));
        QVERIFY(!everyWordFits(text, QFontMetrics(pixels(10)), room - 1));
    }

    void wordsThatFitAreWrappedAtBlanksOnly()
    {
        const QFontMetrics metrics(pixels(10));
        const QString text = QStringLiteral("Winding resistance");
        const int room = metrics.horizontalAdvance(QStringLiteral("resistance"));
        QCOMPARE(hyphenatedLines(text, metrics, room), QStringLiteral("Winding\nresistance"));
        // Room for the whole text leaves it on one line.
        QCOMPARE(hyphenatedLines(text, metrics, metrics.horizontalAdvance(text)), text);
    }

    void aWordTooWideIsBrokenWithAHyphenAndEveryLineFits()
    {
        const QFontMetrics metrics(pixels(10));
        const QString word = QStringLiteral("d'enroulement");
        const int room = metrics.horizontalAdvance(word) * 2 / 3;
        const QString lines = hyphenatedLines(QStringLiteral("Résistance ") + word, metrics, room);
        const QStringList split = lines.split(u'\n');
        QVERIFY2(split.size() >= 3, qPrintable(lines));
        for (const QString& line : split)
            QVERIFY2(metrics.horizontalAdvance(line) <= room, qPrintable(line));
        // The letters are all there, in order, once the hyphens are taken out.
        QString joined = lines;
        joined.replace(QLatin1String("-\n"), QString());
        joined.replace(u'\n', u' ');
        QCOMPARE(joined, QStringLiteral("Résistance ") + word);
        // No line under a broken word is shorter than three letters.
        QVERIFY(split.last().size() >= 3);
    }

    void oneLineControlsGiveWayAndComeBack()
    {
        QLabel title(QStringLiteral("Mesure de résistance d'enroulement ZBL"));
        title.setFont(pixels(20));
        const int room = width(title.text(), 20) / 2;
        fitOneLine(title, room, 8);
        QVERIFY(QFontMetrics(title.font()).horizontalAdvance(title.text()) <= room);
        // A shorter text takes the size the label was made with again.
        title.setText(QStringLiteral("ZBL"));
        fitOneLine(title, room, 8);
        QCOMPARE(QFontInfo(title.font()).pixelSize(), 20);

        QLineEdit box(QStringLiteral("694.48 mOhm"));
        box.setFont(pixels(11));
        fitOneLine(box, width(box.text(), 10), 8);
        QVERIFY(QFontInfo(box.font()).pixelSize() <= 10);
    }
};

QTEST_MAIN(FittedTextTest)
#include "FittedTextTest.moc"
