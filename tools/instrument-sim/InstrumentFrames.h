// The instrument's side of the wire: the replies and frames that a KVX or a
// ZBL instrument sends, built from a description of its stored tests. Used by
// the instrument simulator and by the tests that need real frames.
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace quenby::sim {

enum class DeviceKind { Kvx, Zbl };

// One test of a stored KVX file (one slot of the data frame).
struct KvxTest
{
    int testNumber = 1;
    QString tap = QStringLiteral("X1-X2");
    int ratioFirst = 100;
    int ratioSecond = 5;
    float phase = 0.0f;
    float calculatedRatio = 20.0f;
    float measuredRatio = 20.0f;
    float ratioError = 0.0f;
    float kneeIeee30 = 0.0f;
    float kneeIeee45 = 0.0f;
    float kneeIec1050 = 0.0f;
    float insulation = 0.0f;        // ohms
    float windingResistance = 0.0f; // ohms
    bool polarityPositive = true;
    bool excitationValid = true;
    bool ratioValid = true;
    bool insulationValid = true;
    bool windingValid = true;
    // Excitation points (volts, amperes); at most 100 travel in a slot.
    std::vector<std::pair<float, float>> points;
    // The point count written in the slot; -1 means points.size().
    int pointCountOverride = -1;
};

// One stored KVX file: its header and its tests (at most 11).
struct KvxStoredFile
{
    int fileNumber = 1;
    int day = 1, month = 1, year = 14; // year minus 2000
    int hour = 0, minute = 0, second = 0;
    // Byte 13 of the header: a value of the instrument's own that the PC
    // reads as the second.
    int value13 = 0;
    QString company, serial, station, designation, manufacturer, operatorName, temperature, ratio,
        voltageRating, accuracyClass, position, phase, notes;
    std::vector<KvxTest> tests;
};

// One reading of a stored ZBL file.
struct ZblReading
{
    int readingNumber = 1;
    QString tapA, windingA1, windingA2, resistanceA; // resistance with unit, "Ω" allowed
    QString tapB, windingB1, windingB2, resistanceB;
    int current = 1000; // milliamperes
    int interval = 5;   // seconds
};

// One stored ZBL file.
struct ZblStoredFile
{
    int fileNumber = 1;
    int testNumber = 1;
    int mode = 0; // 0 manual, 1 timed, 2 automatic with tap changer
    int day = 1, month = 1, year = 14;
    int hour = 0, minute = 0, second = 0;
    QString company, serial, station, designation, manufacturer, operatorName, temperature, notes;
    std::vector<ZblReading> readings;
};

// A whole instrument: its kind, its serial number and its stored files.
struct Instrument
{
    DeviceKind kind = DeviceKind::Kvx;
    // A KVX's serial as text ("KVX1234"); a ZBL's as byte values whose
    // decimal digits make the number shown (12, 0, 7 shows "#1207").
    QString kvxSerial = QStringLiteral("KVX0001");
    std::vector<int> zblSerialBytes{1, 2, 3};
    std::vector<KvxStoredFile> kvxFiles;
    std::vector<ZblStoredFile> zblFiles;

    int fileCount() const
    {
        return static_cast<int>(kind == DeviceKind::Kvx ? kvxFiles.size() : zblFiles.size());
    }
};

// Replies.
QByteArray identifyReply(unsigned char code); // "G", "P", code and a trailing byte
QByteArray serialNumberReply(const Instrument& instrument);
QByteArray fileCountReply(int count);
// "G", "P", code, length, payload, check of code plus payload.
QByteArray framedReply(unsigned char code, const QByteArray& payload);
QByteArray kvxHeaderFrame(const KvxStoredFile& file);
QByteArray kvxDataFrame(const KvxStoredFile& file);
QByteArray zblHeaderFrame(const ZblStoredFile& file);
QByteArray zblDataFrame(const ZblStoredFile& file);

// The reply of an instrument to one command (4 or 5 bytes as the PC writes
// them); empty for a command it does not know or a file it does not hold.
QByteArray replyTo(const Instrument& instrument, const QByteArray& command);

// Big-endian single as the instrument stores it.
void putFloat(QByteArray& bytes, int offset, float value);
// A text as 16-bit big-endian characters from `offset`, at most `chars`
// characters, the rest zero; "Ω" is stored as code 937.
void putText(QByteArray& bytes, int offset, const QString& text, int chars);

} // namespace quenby::sim
