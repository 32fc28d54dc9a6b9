// What the KVX road and report ask of the report window, frmKVXCondensedReport.
// The window implements it and the application installs it; a test installs a
// scripted one. Asking when none is installed is an error.
#pragma once

#include "shell/model/Session.h"

#include <QString>

namespace quenby {

class KvxReportWindow
{
public:
    virtual ~KvxReportWindow() = default;
    // FillTextsKvxCondensedReport: the language texts on the controls.
    virtual void fillReportTexts() = 0;
    // The report's model changed: the window mirrors it.
    virtual void mirrorReport() = 0;
    // A plain show: the report goes back into the modal wait it was shown in.
    virtual void showReport() = 0;
    virtual void hideReport() = 0;
    // Focus if the report is visible, else a modal show over the main window.
    virtual void bringUpReport() = 0;
    // Puts the logo file on imgLogo, its box's top left corner at the given
    // place in twips.
    virtual void loadLogo(const QString& path, double left, double top) = 0;
};

inline KvxReportWindow& kvxReportWindow()
{
    return Slot<KvxReportWindow>::current();
}

} // namespace quenby
