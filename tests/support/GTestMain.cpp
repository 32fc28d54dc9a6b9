// The main of every model test: each test runs with fresh platform services
// and a fresh shell session, so that no test sees what another left behind.
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class FreshSessions final : public ::testing::EmptyTestEventListener
{
public:
    void OnTestStart(const ::testing::TestInfo&) override
    {
        m_services = std::make_unique<quenby::OwnedSession<quenby::Services>>();
        m_shell = std::make_unique<quenby::OwnedSession<quenby::ShellSession>>();
    }
    void OnTestEnd(const ::testing::TestInfo&) override
    {
        m_shell.reset();
        m_services.reset();
    }

private:
    std::unique_ptr<quenby::OwnedSession<quenby::Services>> m_services;
    std::unique_ptr<quenby::OwnedSession<quenby::ShellSession>> m_shell;
};

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new FreshSessions);
    return RUN_ALL_TESTS();
}
