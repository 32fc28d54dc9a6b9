// The compensation dialog's window and the two reports as the dialog sees
// them, scripted for model tests: the window records what is asked of it and
// may play the operator's part inside the modal show; each report delegates
// to the real one and counts its mirrors.
#pragma once

#include "kvx/model/KvxCompensation.h"
#include "report/model/TemperatureCompensation.h"
#include "shell/model/Session.h"
#include "zbl/model/ZblCompensation.h"

#include <functional>

namespace quenby::testing {

class ScriptedCompensationView final : public CompensationDialogView
{
public:
    void showDialogModal() override
    {
        ++shows;
        if (onShowModal)
            onShowModal();
    }
    void bringDialogToFront() override
    {
        ++fronts;
        if (onFront)
            onFront();
    }
    void hideDialog() override
    {
        ++hides;
        if (onHide)
            onHide();
    }
    void fillDialogTexts() override
    {
        if (onFillTexts)
            onFillTexts();
    }
    void dialogChanged() override
    {
        ++mirrors;
        if (onChanged)
            onChanged();
    }

    int shows = 0;
    int fronts = 0;
    int hides = 0;
    int mirrors = 0;
    std::function<void()> onShowModal; // the operator inside the modal show
    std::function<void()> onFront;
    std::function<void()> onHide;
    std::function<void()> onFillTexts;
    std::function<void()> onChanged;
};

// A report as the dialog sees it: the real one, with its mirrors counted.
template <class Slot, class Real> class CountedCompensationReport final : public Slot
{
public:
    QString& txtTemperature() override { return m_real.txtTemperature(); }
    QString& lbTexteCompensedTemp1() override { return m_real.lbTexteCompensedTemp1(); }
    QStringList& cbCompensationItems() override { return m_real.cbCompensationItems(); }
    QString& cbCompensationText() override { return m_real.cbCompensationText(); }
    bool reportShown() const override { return m_real.reportShown(); }
    void fillCompensedColumns() override { m_real.fillCompensedColumns(); }
    void mirrorReport() override { ++mirrors; }

    int mirrors = 0;

private:
    Real m_real;
};

// A fresh dialog model with the scripted window and both counted reports in
// force, for the length of a test.
struct ScriptedCompensation
{
    OwnedSession<CompensationDialogModel> dialog;
    ScriptedCompensationView view;
    CountedCompensationReport<KvxCompensationReport, KvxReportCompensation> kvx;
    CountedCompensationReport<ZblCompensationReport, ZblReportCompensation> zbl;

private:
    Installed<CompensationDialogView> m_view{view};
    Installed<KvxCompensationReport> m_kvx{kvx};
    Installed<ZblCompensationReport> m_zbl{zbl};
};

} // namespace quenby::testing
