// The KVX test file reader: turns the open KVX test file into the KVX test
// record (header lines and values, the result table in its ten tap slots, the
// excitation curves), and writes the insulation test voltage of slot 1 into
// the head of the condensed report's insulation column.
//
// The reader trusts the file: a line holding "Serial" is all it looks for, and
// the 15 lines after it are taken as header. Bad input ends the read with the
// run-time failure (RuntimeError) at the point where it is met: reading past
// the end (62), a reference number that is no number (13), too many pieces in
// a row or a point line, or a point number outside 0 to 119 (9), a line count
// beyond 16 bits (6). The record keeps whatever was filled before; nothing is
// rolled back. The file's path is in the failure's where(); the offending
// text, where there is one, in its detail().
//
// Up to the table a "line" is a whole line; from the curve blocks on, a
// "field" is what the delimited reader yields (leading blanks skipped, ended
// by a comma or the line end).
#pragma once

#include "kvx/model/KvxTestRecord.h"
#include "shell/model/Checked.h"

#include <QString>
#include <QStringList>

#include <array>

namespace quenby {

// The 15 fields of a table row, index 0 to 14; index 14 is never written.
using KvxSplitRow = std::array<QString, 15>;
// The pieces of one curve point line: number, volts, current, and room for
// three more.
using KvxPointTokens = std::array<QString, 6>;

// Reads the file of appState().KvxTestFileNo from its first byte to its end
// into kvxTestRecord() and repairs the curves. The file stays open.
void ReadKvxTestFile();

// Raw header lines to header values. Does nothing while no path is set.
void ParseKvxHeaderFields();
// Every run of exactly 8 blanks becomes 3 blanks.
QString ReduceDateTimeGap(const QString& text);

// Empties the ten tap names, then dispatches the ten table rows in order.
void ParseKvxTapRows();
// Fills the slot of the row's tap pair (characters 5 to 13); a row with any
// other pair is ignored.
void DispatchKvxTapRow(const QString& row);
// The row's fields: columns decide which fields exist, blanks decide what
// they hold. A row whose two counts differ gives all fields empty.
KvxSplitRow SplitKvxTapRow(const QString& row);
// Where each of the 14 columns starts, counted from 1.
std::array<Int16, 14> InitTapRowColumns();
// Splits the row into the tap result of `slot` (1 to 10).
void FillKvxTapFields(const QString& row, int slot);

// From the current line on, reads fields until one begins with `text`. The
// current line is left cut to the length of `text`; `tail` gets the last two
// characters of the last field read. False when the file ends first.
bool FindLineBeginning(Int16 fileNo, QString& line, const QString& text, QString& tail);
// Stores a point for the block "Ref Test #nn" (or "Ref Test # n"): the block
// picks table row n, whose tap pair picks the curve.
void StoreKvxCurveLine(const QString& blockName, const KvxPointTokens& tokens);
void StoreKvxCurvePoint(const KvxPointTokens& tokens, KvxTapCurve& curve);

// The line counter of the read's first pass, as its text.
QString countKvxLines(Int16 fileNo);
// The non-empty pieces of `text` split at single blanks; more than
// `maxPieces` pieces is Subscript out of range.
QStringList splitKvxPieces(const QString& text, int maxPieces);

} // namespace quenby
