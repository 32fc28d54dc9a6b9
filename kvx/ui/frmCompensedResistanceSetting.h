// The temperature compensation dialog, one for both report windows: it takes
// the temperature of the measurement TM, the reference temperature TS and the
// conductor constant TK, with which a report refers its winding resistances
// to TS. The report's compensation box opens it modally; OK computes the
// report's compensated column, Cancel leaves the column as it is.
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace quenby {

class frmCompensedResistanceSetting final : public QDialog
{
    Q_OBJECT

public:
    // The one instance, made on first touch and only hidden afterwards.
    static frmCompensedResistanceSetting& instance();

    void FillTextsCompensedResistance();

    QLineEdit* txtTS() const { return m_ts; }
    QLineEdit* txtTK() const { return m_tk; }
    QLineEdit* txtTM() const { return m_tm; }

private:
    frmCompensedResistanceSetting();

    QLineEdit* m_ts = nullptr;
    QLineEdit* m_tk = nullptr;
    QLineEdit* m_tm = nullptr;
};

} // namespace quenby
