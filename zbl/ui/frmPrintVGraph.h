// The print twin of the V graph: a page that is never shown, filled in step
// with frmZBLVGraph and printed as a whole. It is never zoomed, so the paper
// always shows the whole curve.
#pragma once

#include "localisation/ui/WindowTexts.h"
#include "zbl/model/VGraph.h"
#include "zbl/ui/ZblPageParts.h"

#include <QWidget>

namespace quenby {

class frmPrintVGraph final : public QWidget, public WindowTextReceiver
{
    Q_OBJECT

public:
    // The logo's box and the head label it centres on.
    LogoTarget& logoTarget() { return m_pageLogo; }
    // The window if it has been made, else none.
    static frmPrintVGraph* existing();
    // The one instance, made on first touch; it stays hidden.
    static frmPrintVGraph& instance();

    void FillTextsPrintVGraph();
    void applyWindowText(const WindowTextEntry& entry, const QString& text) override;

    const VGraphChart& CWGraph1() const { return m_graph; }

    // Shows what the model holds for the print twin: head, channel, plot and
    // axes. The paper carries no cursor.
    void mirror(const VGraphForm& form);

private:
    frmPrintVGraph();

    VGraphChart m_graph;
    DesignedLogo m_pageLogo;
};

} // namespace quenby
