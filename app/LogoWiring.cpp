#include "app/Wiring.h"

#include "app/frmMain.h"
#include "kvx/ui/frmKVXCondensedReport.h"
#include "logo/ui/frmProcessLogo.h"
#include "zbl/ui/frmPrintVGraph.h"
#include "zbl/ui/frmPrintZBLBasicReport.h"
#include "zbl/ui/frmZBLBasicReport.h"
#include "zbl/ui/frmZBLVGraph.h"

namespace quenby {

std::vector<LogoTarget*> madeLogoTargets()
{
    std::vector<LogoTarget*> targets;
    const auto add = [&targets](auto* window) {
        if (window)
            targets.push_back(&window->logoTarget());
    };
    add(frmKVXCondensedReport::existing());
    add(frmZBLBasicReport::existing());
    add(frmZBLVGraph::existing());
    add(frmPrintZBLBasicReport::existing());
    add(frmPrintVGraph::existing());
    return targets;
}

void installLogoViews(frmMain& main)
{
    frmProcessLogo& processing = frmProcessLogo::instance();
    // A window made later takes the logo at its own load.
    processing.setTargets(&madeLogoTargets);
    main.installView<LogoProcessing>(processing);
}

} // namespace quenby
