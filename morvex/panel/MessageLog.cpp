#include "MessageLog.h"

#include <QPointer>
#include <QTextEdit>
#include <QThread>

#include <atomic>

namespace {

/// Lives in the widgets' thread for the rest of the process: a message of another thread is posted
/// to it, never to the page, which may go at any time.
class Receiver : public QObject
{
public:
    void Append(const QString &text)
    {
        if (!page || isAppending)
            return;
        isAppending = true;
        page->append(text);
        isAppending = false;
    }

    QPointer<QTextEdit> page; // its own thread's alone
    std::atomic<bool> hasPage{ false };

private:
    bool isAppending = false;
};

std::atomic<Receiver *> receiver{ nullptr };

void TakeMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    Receiver *to = receiver;
    if (QThread::currentThread() == to->thread())
        to->Append(text);
    else if (to->hasPage)
        QMetaObject::invokeMethod(
            to, [to, text] { to->Append(text); }, Qt::QueuedConnection);
}

} // namespace

void MessageLog::Install()
{
    if (!receiver)
        receiver = new Receiver;
    qInstallMessageHandler(TakeMessage);
}

void MessageLog::SetPage(QTextEdit *page)
{
    Receiver *to = receiver;
    if (!to)
        return;
    to->page = page;
    to->hasPage = page != nullptr;
}

void MessageLog::DropPage(const QTextEdit *page)
{
    if (receiver && receiver.load()->page == page)
        SetPage(nullptr);
}
