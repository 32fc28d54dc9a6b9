// The windows as the language loader sees them, scripted: every call is
// recorded, and a fill routine may be given something to do.
#pragma once

#include "localisation/model/LanguageLookup.h"
#include "shell/model/Session.h"

#include <QString>

#include <functional>
#include <map>
#include <vector>

namespace quenby::testing {

class ScriptedLanguageWindows final : public LanguageWindows
{
public:
    void fillTexts(const QString& routine) override
    {
        calls.push_back(routine);
        if (const auto it = fillers.find(routine); it != fillers.end())
            it->second();
    }
    void setLanguageMenuEnabled(bool enabled) override
    {
        menuEnabled = enabled;
        calls.push_back(enabled ? QStringLiteral("menu on") : QStringLiteral("menu off"));
    }
    void loadUploadDevice() override
    {
        calls.push_back(QStringLiteral("load frmUploadDevice"));
        if (onLoadUploadDevice)
            onLoadUploadDevice();
    }

    std::vector<QString> calls;
    std::map<QString, std::function<void()>> fillers;
    std::function<void()> onLoadUploadDevice;
    bool menuEnabled = true;

private:
    Installed<LanguageWindows> m_installed{*this};
};

} // namespace quenby::testing
