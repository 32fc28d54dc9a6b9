// The temperature compensation dialog, one for both report windows: it takes
// the temperature of the measurement TM, the reference temperature TS and the
// conductor constant TK, with which a report refers its winding resistances
// to TS. The report's compensation box opens it modally; OK computes the
// report's compensated column, Cancel leaves the column as it is.
//
// The window mirrors compensationDialog() and hands every edit and button to
// it; it is the dialog's view, which the application installs.
#pragma once

#include "report/model/TemperatureCompensation.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace quenby {

class frmCompensedResistanceSetting final : public QDialog, public CompensationDialogView
{
    Q_OBJECT

public:
    // The one instance, made on first touch and only hidden afterwards.
    static frmCompensedResistanceSetting& instance();

    // The language texts of the controls and the title, which the model
    // keeps as its caption.
    void FillTextsCompensedResistance();
    // Puts the dialog model's texts and caption on the window.
    void mirrorModel();

    QLineEdit* txtTS() const { return m_ts; }
    QLineEdit* txtTK() const { return m_tk; }
    QLineEdit* txtTM() const { return m_tm; }
    QPushButton* cmdOK() const { return m_ok; }
    QPushButton* cmdCancel() const { return m_cancel; }

    // The view of the dialog's model.
    void showDialogModal() override { showModally(); }
    void bringDialogToFront() override;
    void hideDialog() override { hide(); }
    void fillDialogTexts() override { FillTextsCompensedResistance(); }
    void dialogChanged() override { mirrorModel(); }

    // Escape: the same as Cancel.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    frmCompensedResistanceSetting();
    void showModally();

    QLineEdit* m_ts = nullptr;
    QLineEdit* m_tk = nullptr;
    QLineEdit* m_tm = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};

} // namespace quenby
