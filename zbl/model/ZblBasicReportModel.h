// The cells of the ZBL basic report, without any screen.
//
// The report window mirrors these cells; the V graph, the save and the
// print-out read them back. This holds the fields that the temperature
// compensation reads and writes; the head and the table of rows join them
// with the ZBL reader.
#pragma once

#include <QString>
#include <QStringList>

namespace quenby {

struct ZblBasicReportModel
{
    QString txtTemperature;
    // The compensation combo box: its list (index 2 is added for a custom
    // conductor constant), its text, and its list index (-1 for no choice).
    QStringList cbCompensationItems{QStringLiteral("Copper (TK=234.5)"),
                                    QStringLiteral("Alluminium (TK=225)")};
    QString cbCompensationText;
    int cbCompensationIndex = -1;
    QString lbTexteCompensedTemp1; // lbTexteCompensedTemp(1)

    // Whether the window is on screen; the window keeps this in step.
    bool shown = false;
};

// The one ZBL basic report of the run.
ZblBasicReportModel& zblBasicReport();

} // namespace quenby
