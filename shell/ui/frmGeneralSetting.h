// The general settings window: the two data folder roots, each with its
// change button, and an OK button that hides the window. It mirrors the
// GeneralSettingModel of the shell model, which holds the label texts and the
// logic of the buttons; the window only shows, hides and fills texts.
#pragma once

#include "shell/model/DataFolders.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace quenby {

class frmGeneralSetting final : public QDialog, public GeneralSettingView
{
    Q_OBJECT

public:
    // The one instance, made on first touch and only hidden afterwards.
    static frmGeneralSetting& instance();

    void FillTextsGeneralSetting() override;
    // Gives the window the focus if it is visible, else shows it modally,
    // owned by the main window; returns when it is hidden again.
    void bringUp() override;
    void hideWindow() override { hide(); }
    // Copies the model's texts into the labels.
    void mirrorModel() override;
    OwnerWindow folderPickerOwner() override;

private:
    frmGeneralSetting();

    QLabel* addLabel(const char* name);
    QPushButton* addButton(const char* name);

    QLabel* m_kvxFolder = nullptr;
    QLabel* m_zblFolder = nullptr;
    QLabel* m_question = nullptr;
};

} // namespace quenby
