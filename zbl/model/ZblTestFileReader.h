// The ZBL test file reader: fills the ZBL test record from the open test file
// and decides what goes into the cells of the basic report.
//
// The open command calls, in this order: ClearZBLChannelTables,
// ClearZBLCompensedColumns, ClearZBLRowLines, ClearZBLCompensedColumns again,
// ReadZBLFile, FillZBLHeaderControls; then, once the report's rows are set
// up, ParseZBLTableLines, FillZBLTapControls, SetZBLCompensationFromFile("ZBL").
//
// The reader is forgiving about layout (rows are cut at blanks, not by
// columns) and trusts the file in everything else. Bad input ends the read
// with the run-time failure (RuntimeError) where it is met, and whatever was
// filled before stays: reading past the end (62) when no line holds "Date",
// when the file stops inside the header or before the three lines after it,
// or when the key search meets a file of one line; an empty header line (5);
// a table line of more than 13 words (9); a current whose digits exceed 32767
// (6). The file's path is in the failure's where(), the offending text, where
// there is one, in its detail().
//
// Lines are whole lines of the sequential file service, so a comma inside a
// header value or behind a key is text.
#pragma once

#include "shell/model/Checked.h"
#include "zbl/model/ZblBasicReportModel.h"
#include "zbl/model/ZblTestRecord.h"

#include <QString>

#include <array>

namespace quenby {

// The marker the line readers give when no line is left. It never stands in
// a file; a line of just these words would end the table read all the same.
inline const QString ZblEndOfFileMarker = QStringLiteral("Fin de Fichier");
// What the record holds for a compensation key the file does not have.
inline const QString ZblNoValue = QStringLiteral("NAV");
inline const QString ZblCompensationFactorKey = QStringLiteral("TEMP COMPENSATION FACTOR:");
inline const QString ZblCompensedTempKey = QStringLiteral("TEMP COMPENSED:");
// The two material names a stored compensation is recognised by, whatever
// the language of the report's box.
inline const QString ZblCopperName = QStringLiteral("Copper (TK=234.5)");
inline const QString ZblAluminiumName = QStringLiteral("Alluminium (TK=225)");

// The tokens of one table line, index 0 to 12; unused ones stay "0".
using ZblRowTokens = std::array<QString, 13>;

// Everything the reader writes outside its record: the head and the table of
// the basic report, its compensation box, and the three texts of the
// compensation dialog. The report side implements it over its cell models.
class ZblReportTarget
{
public:
    virtual ~ZblReportTarget() = default;

    // Head of the report.
    virtual QString& lbTexteFileName1() = 0;      // lbTexteFileName(1)
    virtual QString& lbTexteDate1() = 0;          // lbTexteDate(1)
    virtual QString& lbTexteCompensedTemp1() = 0; // lbTexteCompensedTemp(1)
    virtual QString& txtXFRSerialNumber() = 0;
    virtual QString& txtCompany() = 0;
    virtual QString& txtStation() = 0;
    virtual QString& txtDesignator() = 0;
    virtual QString& txtManufacturer() = 0;
    virtual QString& txtOperator() = 0;
    virtual QString& txtTemperature() = 0;
    virtual QString& txtNotes() = 0;
    // The text shown by the compensation box (not its list index).
    virtual QString& cbCompensationText() = 0;

    // Table cell (column, i), i from 0 to 121.
    virtual QString& cell(ZblReportColumn column, int i) = 0;

    // txtTK, txtTS and txtTM of frmCompensedResistanceSetting.
    virtual QString& txtTK() = 0;
    virtual QString& txtTS() = 0;
    virtual QString& txtTM() = 0;
    // Refills both compensated columns from the resistance columns.
    virtual void FillZBLBasicReportConpensedResistance() = 0;
};

// Plain storage of every cell the reader writes, for tests, the dump tool and
// any caller that wants the result without the report.
class ZblReportFill final : public ZblReportTarget
{
public:
    struct Head
    {
        QString lbTexteFileName1;
        QString lbTexteDate1;
        QString lbTexteCompensedTemp1;
        QString txtXFRSerialNumber;
        QString txtCompany;
        QString txtStation;
        QString txtDesignator;
        QString txtManufacturer;
        QString txtOperator;
        QString txtTemperature;
        QString txtNotes;
        QString cbCompensationText;
    };
    struct Dialog
    {
        QString txtTK;
        QString txtTS;
        QString txtTM;
    };

    Head head;
    Dialog dialog;
    // Calls of FillZBLBasicReportConpensedResistance.
    int compensedColumnFills = 0;

    QString& lbTexteFileName1() override { return head.lbTexteFileName1; }
    QString& lbTexteDate1() override { return head.lbTexteDate1; }
    QString& lbTexteCompensedTemp1() override { return head.lbTexteCompensedTemp1; }
    QString& txtXFRSerialNumber() override { return head.txtXFRSerialNumber; }
    QString& txtCompany() override { return head.txtCompany; }
    QString& txtStation() override { return head.txtStation; }
    QString& txtDesignator() override { return head.txtDesignator; }
    QString& txtManufacturer() override { return head.txtManufacturer; }
    QString& txtOperator() override { return head.txtOperator; }
    QString& txtTemperature() override { return head.txtTemperature; }
    QString& txtNotes() override { return head.txtNotes; }
    QString& cbCompensationText() override { return head.cbCompensationText; }
    QString& cell(ZblReportColumn column, int i) override;
    const QString& cell(ZblReportColumn column, int i) const;
    QString& txtTK() override { return dialog.txtTK; }
    QString& txtTS() override { return dialog.txtTS; }
    QString& txtTM() override { return dialog.txtTM; }
    void FillZBLBasicReportConpensedResistance() override { ++compensedColumnFills; }

private:
    std::array<std::array<QString, ZblRowsUsed>, ZblReportColumnCount> m_cells;
};

// Elements 0 to 121 of both graph tables to 0.
void ClearZBLChannelTables();
// Both compensated columns of rows 0 to 121 to "---".
void ClearZBLCompensedColumns(ZblReportTarget& report);
// RowLine(0) to RowLine(121) to "".
void ClearZBLRowLines();

// Reads the file of appState().ZblTestFileNo into the record: the ten header
// lines and their values, up to 122 raw lines behind the table head, and the
// two compensation values found by key search. FilePath becomes
// appState().ZblTestFilePath. The file stays open.
void ReadZBLFile();
// The next line of `fileNo`, or ZblEndOfFileMarker when none is left.
QString GetNextLineOrEnd(Int16 fileNo);
// The header values from the raw header lines, and FileName. Does nothing
// while FilePath is empty.
void ParseZBLHeaderLines();
// Opens `path` anew, skips its first line and gives the rest of the first
// trimmed line that starts with `key`, less one comma right behind the key,
// trimmed; ZblEndOfFileMarker when no line starts with it. `key` comes back
// trimmed. The extra file number is closed again.
QString FindValueOfKeyInFile(const QString& path, QString& key);

// Cuts RowLine(0) to RowLine(121) into the row arrays.
void ParseZBLTableLines();
// The non-empty pieces of `line` split at blanks, in a token array; a 14th
// piece is Subscript out of range.
ZblRowTokens SplitZBLRowTokens(const QString& line);
// The one match of "(\d+)\s*([a-zA-Z]*)" in `text`: "100mA" gives 100 and
// "mA". No match, or more than one ("1.5"), gives all fields empty.
ValueWithUnit SplitValueAndUnit(const QString& text);

// Header values onto the report head; the compensated temperature is emptied.
void FillZBLHeaderControls(ZblReportTarget& report);
// Tap, winding, resistance and total time of rows 0 to 121 onto the table.
void FillZBLTapControls(ZblReportTarget& report);
// Applies the compensation stored in the file to the report and the dialog.
// Only `instrument` "ZBL" does anything.
void SetZBLCompensationFromFile(const QString& instrument, ZblReportTarget& report);

} // namespace quenby
