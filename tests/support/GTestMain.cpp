// The main of every model test: each test runs with fresh platform services,
// a fresh shell session and fresh copies of whatever sessions its binary
// added, so that no test sees what another left behind.
#include "shell/model/Services.h"
#include "shell/model/Session.h"
#include "shell/model/ShellSession.h"
#include "tests/support/FreshSessions.h"

#include <gtest/gtest.h>

#include <clocale>
#include <memory>
#include <vector>

namespace quenby::testing {

namespace {
std::vector<SessionMaker>& makers()
{
    static std::vector<SessionMaker> all; // filled before main, read by the listener
    return all;
}
} // namespace

void addFreshSession(SessionMaker maker)
{
    makers().push_back(std::move(maker));
}

} // namespace quenby::testing

namespace {

class FreshSessions final : public ::testing::EmptyTestEventListener
{
public:
    void OnTestStart(const ::testing::TestInfo&) override
    {
        m_services = std::make_unique<quenby::OwnedSession<quenby::Services>>();
        m_shell = std::make_unique<quenby::OwnedSession<quenby::ShellSession>>();
        for (const auto& make : quenby::testing::makers())
            m_more.push_back(make());
    }
    void OnTestEnd(const ::testing::TestInfo&) override
    {
        while (!m_more.empty())
            m_more.pop_back();
        m_shell.reset();
        m_services.reset();
    }

private:
    std::unique_ptr<quenby::OwnedSession<quenby::Services>> m_services;
    std::unique_ptr<quenby::OwnedSession<quenby::ShellSession>> m_shell;
    std::vector<std::shared_ptr<void>> m_more;
};

} // namespace

int main(int argc, char** argv)
{
    // The locale of the environment, as the application takes it at start on
    // Unix: the suite also runs under a French and a Polish one.
    std::setlocale(LC_ALL, "");
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new FreshSessions);
    return RUN_ALL_TESTS();
}
