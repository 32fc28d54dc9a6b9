#include "tests/support/ScriptedServices.h"

namespace quenby::testing {

namespace {
// The next queued answer of a dialog that gives a name; none left: cancel.
QString nextAnswer(std::deque<QString>& answers)
{
    if (answers.empty())
        return {};
    QString a = answers.front();
    answers.pop_front();
    return a;
}
} // namespace

MsgAnswer ScriptedMessages::show(const QString& text, MsgButtons buttons, MsgIcon icon,
                                 const QString& title)
{
    shown.push_back({text, buttons, icon, title});
    if (answers.empty())
        return MsgAnswer::Ok;
    const MsgAnswer a = answers.front();
    answers.pop_front();
    return a;
}

QString ScriptedFolders::browseForFolder(const QString& title, const QString& startFolder,
                                         int flags)
{
    requests.push_back({title, startFolder, flags});
    return nextAnswer(answers);
}

QString ScriptedFiles::getOpenFileName(const OpenFileRequest& request)
{
    requests.push_back(request);
    return nextAnswer(answers);
}

QString ScriptedFiles::getSaveFileName(const SaveFileRequest& request)
{
    saveRequests.push_back(request);
    return nextAnswer(saveAnswers);
}

PrintAnswer ScriptedPrinter::showPrinter(const PrintRequest& request)
{
    requests.push_back(request);
    if (answers.empty())
        return {};
    PrintAnswer a = answers.front();
    answers.pop_front();
    if (!a.cancelled)
        a.pdfFile = pdfFile;
    return a;
}

void ScriptedPrinter::accept(int copies, int fromPage, int toPage)
{
    PrintAnswer answer;
    answer.cancelled = false;
    answer.copies = copies;
    answer.fromPage = fromPage;
    answer.toPage = toPage;
    answers.push_back(answer);
}

QDateTime ScriptedClock::now()
{
    ++reads;
    if (times.empty())
        return QDateTime(QDate(2014, 3, 9), QTime(14, 5, 7));
    QDateTime t = times.front();
    if (times.size() > 1)
        times.pop_front();
    return t;
}

ScriptedServices::ScriptedServices() : m_saved(services())
{
    services().clock = &clock;
    services().messages = &messages;
    services().folders = &folders;
    services().files = &files;
    services().printers = &printer;
    services().program = &program;
}

ScriptedServices::~ScriptedServices()
{
    services() = m_saved;
}

} // namespace quenby::testing
