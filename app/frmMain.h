// The main window: the shell from which every command starts. It mirrors the
// main window state of the model; its load step runs the start-up sequence.
#pragma once

#include "localisation/model/LanguageLookup.h"
#include "localisation/ui/WindowTexts.h"
#include "shell/model/MainWindowView.h"
#include "shell/ui/MainWindowOwner.h"

#include <QMainWindow>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class QAction;
class QCheckBox;
class QLabel;
class QMenu;

namespace quenby {

class frmMain final : public QMainWindow,
                      public WindowTextReceiver,
                      public MainWindowOwner,
                      public LanguageWindows,
                      public MainWindowView
{
    Q_OBJECT

public:
    // The one instance, made on first touch.
    static frmMain& instance();

    // The load step: start-up in its fixed order, then the window mirrors the
    // model. Ends the program when en.lng is missing.
    void Form_Load();
    // Copies the model's state into the controls.
    void mirrorState();

    QCheckBox* chkKneeType(int index) const
    {
        return m_chkKneeType.at(static_cast<std::size_t>(index));
    }
    QLabel* stBar1Panel1() const { return m_panel1; }
    QMenu* mnLangue() const { return m_mnLangue; }
    // The menu entry of that name; for a sub-menu, the entry that opens it.
    QAction* menuEntry(const QString& name) const;

    void FillTextsMain();
    void applyWindowText(const WindowTextEntry& entry, const QString& text) override;
    // Sets every menu entry's state for the run.
    void TreatVisibleMenu();
    QWidget& mainWidget() override { return *this; }

    // The language loader's view of the windows.
    void fillTexts(const QString& routine) override;
    void setLanguageMenuEnabled(bool enabled) override;
    void loadUploadDevice() override;

    // What the models ask of the main window.
    void mirrorMainWindow() override { mirrorState(); }
    void showProgress(bool show) override;
    void waitForEvents() override;
    void hideReports() override;

    // Puts `window` in force as the view its model asks for, for the rest of
    // the run.
    template <class View> void installView(View& window)
    {
        m_installedViews.push_back(std::make_shared<Installed<View>>(window));
    }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    frmMain();

    std::array<QCheckBox*, 3> m_chkKneeType{};
    QLabel* m_panel1 = nullptr;
    QMenu* m_mnLangue = nullptr;
    std::map<QString, QAction*> m_menuEntries;
    // The windows below find their owner through this from the start.
    Installed<MainWindowOwner> m_asOwner{*this};
    std::vector<std::shared_ptr<void>> m_installedViews;
};

// What the program does before its event loop: the Qt services, the main
// window's load step, and the window shown.
void startMainWindow();
// After the first paint of `mainWindow`, the report pages are made while the
// program is idle.
void makeReportPagesWhenIdle(QWidget& mainWindow);

} // namespace quenby
