// The window a converter shows when it is started without arguments, as the
// main window's batch menu starts it: the folder of tests, the output folder,
// the knee standard (KVX only), a Convert button, a progress bar with the
// file in hand, and the summary of the last run, which lists every file that
// could not be converted with its failure text.
//
// The batch runs on the window's thread; the window lets events run after
// each file, so that it stays drawn, and keeps Convert disabled meanwhile.
#pragma once

#include "converters/model/BatchConversion.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace quenby::converters {

// The conversion of one file for a knee standard ("" for the ZBL converter).
using ConverterFor = std::function<ConvertOne(const QString& standard)>;

class ConverterWindow final : public QWidget
{
    Q_OBJECT

public:
    ConverterWindow(const ConverterKind& kind, ConverterFor converterFor,
                    QWidget* parent = nullptr);

    QLineEdit* txtTestFolder() const { return m_testFolder; }
    QLineEdit* txtOutputFolder() const { return m_outputFolder; }
    // Null for the ZBL converter.
    QComboBox* cbStandard() const { return m_standard; }
    QPushButton* cmdConvert() const { return m_convert; }
    QProgressBar* pbProgress() const { return m_progress; }
    QLabel* lbFile() const { return m_file; }
    QPlainTextEdit* txtSummary() const { return m_summary; }

    // The Convert button: every test file of the test folder into the output
    // folder. Returns what the summary shows.
    BatchSummary convert();

private:
    void browse(QLineEdit* box, const QString& title);

    const ConverterKind& m_kind;
    ConverterFor m_converterFor;
    QLineEdit* m_testFolder = nullptr;
    QLineEdit* m_outputFolder = nullptr;
    QComboBox* m_standard = nullptr;
    QPushButton* m_convert = nullptr;
    QProgressBar* m_progress = nullptr;
    QLabel* m_file = nullptr;
    QPlainTextEdit* m_summary = nullptr;
};

} // namespace quenby::converters
