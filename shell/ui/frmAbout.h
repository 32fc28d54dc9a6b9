// The About window: the product logo, the maker's name and contact lines
// from the language file, and the software version. It is made on first touch
// and lays itself out then; its close box unloads it, and the next touch makes
// it anew with its default texts.
#pragma once

#include <QWidget>

class QLabel;
class QPlainTextEdit;

namespace quenby {

struct AboutControls;

class frmAbout final : public QWidget
{
    Q_OBJECT

public:
    // The loaded window, made (and so laid out) if none is loaded.
    static frmAbout& instance();
    static bool isLoaded();

    ~frmAbout() override;

    void FillTextsAbout();
    // The load step: the logo into picLogo, then the layout from the sizes of
    // the controls as they stand.
    void Form_Load();

    // The logo is drawn when the window is first shown or this is asked.
    QLabel* picLogo() const;
    QLabel* lblOrvaneCompany() const { return m_lblOrvaneCompany; }
    QPlainTextEdit* lbAddress() const { return m_lbAddress; }
    QLabel* lbSoftwareVersion() const { return m_lbSoftwareVersion; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    frmAbout();

    // Stacks the texts under the picture and sizes the window around them.
    void stackControls();
    AboutControls controlsInTwips() const;
    // The product logo at the size of picLogo, unless it has it already.
    void drawLogo() const;
    void applyControls(const AboutControls& controls);

    QLabel* m_picLogo = nullptr;
    QLabel* m_lblOrvaneCompany = nullptr;
    QPlainTextEdit* m_lbAddress = nullptr;
    QLabel* m_lbSoftwareVersion = nullptr;
};

// The main window's About command: a plain show of the About window, not
// modal.
void mnuAbout_Click();

} // namespace quenby
