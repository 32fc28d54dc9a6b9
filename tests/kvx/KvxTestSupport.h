// Shared set-up for the KVX model tests: a scratch folder with a language file
// that holds the insulation head's text, a fresh record and report, and
// helpers that open and read a KVX test file the way the open command does.
#pragma once

#include "kvx/model/KvxSession.h"
#include "kvx/model/KvxTestRecord.h"
#include "shell/model/Checked.h"
#include "tests/support/Failure.h"
#include "tests/support/FreshSessions.h"
#include "tools/kvxsamples/KvxSampleWriter.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace quenby::testing {

// Every test of the binary starts with a fresh KVX session.
inline const FreshEachTest<KvxSession> freshKvxSession;

// The text the test language file gives the insulation head's key.
inline const QString InsulationHeadText = QStringLiteral("Insulation (Ohms)");

// A small file of two taps, X1-X2 and X1-X3, with five-point curves.
samples::KvxSampleFile smallSample();

class KvxFixture : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // Writes `bytes` into the scratch folder and returns the path.
    QString writeFile(const QString& name, const QByteArray& bytes);
    QString writeLines(const QString& name, const QStringList& lines);
    // Opens `path` under a fresh number and leaves it in the shared state, as
    // the open command does.
    Int16 openKvx(const QString& path);
    // The open command's order: open, flush the curves, clear the record,
    // read. Returns the failure number, 0 on success.
    int readKvx(const QString& path);
    int readLines(const QStringList& lines, const QString& name = QStringLiteral("test.txt"));

    KvxTestRecord& record();
    const KvxTapResult& slot(int n);
    const KvxTapCurve& curve(int n);
    QString insulationHead();

    QTemporaryDir m_dir;
    int m_breaths = 0; // calls of the yield hook
};

// Index of the first line equal to `text`, or of the first starting with it.
qsizetype indexOfLine(const QStringList& lines, const QString& text);
qsizetype indexOfLineStarting(const QStringList& lines, const QString& start);

} // namespace quenby::testing
