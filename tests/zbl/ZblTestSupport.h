// Shared set-up for the ZBL model tests: a scratch folder, a fresh record and
// report, and helpers that open and read a ZBL test file the way the open
// command does.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/RuntimeError.h"
#include "tests/support/Failure.h"
#include "tests/support/FreshSessions.h"
#include "zbl/model/ZblSession.h"
#include "zbl/model/ZblTestFileReader.h"
#include "zbl/model/ZblTestRecord.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <ostream>

namespace quenby::testing {

// Every test of the binary starts with a fresh ZBL session.
inline const FreshEachTest<ZblSession> freshZblSession;

// The run-time failure `f` raises, or none.
std::optional<RuntimeError> failureFrom(const std::function<void()>& f);

// The lines of an uploaded file of the given mode text ("Manual", "Timed",
// "Auto T/C"), with `rows` as table rows and the closing rule.
QStringList uploadedLines(const QStringList& rows, const QString& mode = QStringLiteral("Manual"));
// A table row in print zones from its items, "-" first.
QString zonedRow(const QStringList& items);

class ZblFixture : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    QString writeFile(const QString& name, const QByteArray& bytes);
    QString writeLines(const QString& name, const QStringList& lines);
    // Opens `path` under a fresh number and leaves it in the shared state, as
    // the open command does.
    Int16 openZbl(const QString& path);
    // The open command's first half: the clears, ReadZBLFile and
    // FillZBLHeaderControls. Returns the failure number, 0 on success.
    int readZbl(const QString& path);
    // Both halves: the above, then ParseZBLTableLines, FillZBLTapControls and
    // SetZBLCompensationFromFile("ZBL").
    int loadZbl(const QString& path);
    int loadLines(const QStringList& lines, const QString& name = QStringLiteral("test.zbl"));

    ZblTestRecord& record();
    ZblReportFill& report() { return *m_report; }

    QTemporaryDir m_dir;
    std::unique_ptr<ZblReportFill> m_report;
    int m_breaths = 0; // calls of the yield hook
};

} // namespace quenby::testing
