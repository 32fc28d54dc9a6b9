// Qt implementations of the services that show or wait: message boxes and the
// folder picker. The program installs them at start; tests use scripted ones.
#pragma once

#include "shell/model/Services.h"

namespace quenby {

class QtMessageService final : public MessageService
{
public:
    MsgAnswer show(const QString& text, MsgButtons buttons, MsgIcon icon,
                   const QString& title) override;
};

class QtFolderDialogService final : public FolderDialogService
{
public:
    QString browseForFolder(const QString& title, const QString& startFolder, int flags) override;
};

class QtFileDialogService final : public FileDialogService
{
public:
    QString getOpenFileName(const OpenFileRequest& request) override;
};

// Puts the Qt services in and points the yield hook at the event loop.
void installQtServices();

} // namespace quenby
