// What the ZBL road and report ask of the report window, frmZBLBasicReport.
// The window implements it and the application installs it; a test installs a
// scripted one. Asking when none is installed is an error.
#pragma once

#include "shell/model/Session.h"

#include <QString>

namespace quenby {

class ZblReportWindow
{
public:
    virtual ~ZblReportWindow() = default;
    // FillTextsZblBasicReport and FillTextsPrintZblBasicReport.
    virtual void fillReportTexts() = 0;
    // The report's model changed: the window mirrors it.
    virtual void mirrorReport() = 0;
    // Focus if the report is visible, else a modal show over the main window.
    virtual void bringUpReport() = 0;
    // mnuOk and closing.
    virtual void hideReport() = 0;
    // Puts the logo file on imgLogo, its box's top left corner at the given
    // place in twips.
    virtual void loadLogo(const QString& path, double left, double top) = 0;
};

inline ZblReportWindow& zblReportWindow()
{
    return Slot<ZblReportWindow>::current();
}

} // namespace quenby
