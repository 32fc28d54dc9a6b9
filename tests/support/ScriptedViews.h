// The main window and the two report windows as the models see them,
// scripted for model tests: each call runs the test's callback when it set
// one, and is otherwise taken without effect. ScriptedWindows installs all
// three for the length of a test.
#pragma once

#include "kvx/model/KvxReportWindow.h"
#include "shell/model/MainWindowView.h"
#include "shell/model/Session.h"
#include "shell/model/YieldHook.h"
#include "zbl/model/ZblReportWindow.h"

#include <functional>

namespace quenby::testing {

namespace detail {
inline void run(const std::function<void()>& f)
{
    if (f)
        f();
}
} // namespace detail

class ScriptedMainWindow final : public MainWindowView
{
public:
    void mirrorMainWindow() override { detail::run(onMirror); }
    void showProgress(bool show) override
    {
        if (onProgress)
            onProgress(show);
    }
    void waitForEvents() override
    {
        if (onWait)
            onWait();
        else
            letSystemBreathe();
    }
    void hideReports() override { detail::run(onHideReports); }

    std::function<void()> onMirror;
    std::function<void(bool)> onProgress;
    std::function<void()> onWait; // the operator's turn while the model waits
    std::function<void()> onHideReports;
};

class ScriptedKvxReport final : public KvxReportWindow
{
public:
    void fillReportTexts() override { detail::run(onFillTexts); }
    void mirrorReport() override { detail::run(onMirror); }
    void showReport() override { detail::run(onShow); }
    void hideReport() override { detail::run(onHide); }
    void bringUpReport() override { detail::run(onBringUp); }
    void loadLogo(const QString& path, double left, double top) override
    {
        if (onLoadLogo)
            onLoadLogo(path, left, top);
    }

    std::function<void()> onFillTexts;
    std::function<void()> onMirror;
    std::function<void()> onShow;
    std::function<void()> onHide;
    std::function<void()> onBringUp;
    std::function<void(const QString&, double, double)> onLoadLogo;
};

class ScriptedZblReport final : public ZblReportWindow
{
public:
    void fillReportTexts() override { detail::run(onFillTexts); }
    void mirrorReport() override { detail::run(onMirror); }
    void bringUpReport() override { detail::run(onBringUp); }
    void hideReport() override { detail::run(onHide); }
    void loadLogo(const QString& path, double left, double top) override
    {
        if (onLoadLogo)
            onLoadLogo(path, left, top);
    }

    std::function<void()> onFillTexts;
    std::function<void()> onMirror;
    std::function<void()> onBringUp;
    std::function<void()> onHide;
    std::function<void(const QString&, double, double)> onLoadLogo;
};

// The three scripted windows, in force while this lives.
struct ScriptedWindows
{
    ScriptedMainWindow main;
    ScriptedKvxReport kvx;
    ScriptedZblReport zbl;

private:
    Installed<MainWindowView> m_main{main};
    Installed<KvxReportWindow> m_kvx{kvx};
    Installed<ZblReportWindow> m_zbl{zbl};
};

} // namespace quenby::testing
