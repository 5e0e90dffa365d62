#include "MessageLog.h"

#include <QTime>

namespace rostrum {
namespace {

constexpr int kMostLines = 1000;

} // namespace

MessageLog::MessageLog(QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("messages"));
    setReadOnly(true);
    setMaximumBlockCount(kMostLines);
}

void MessageLog::Add(const QString &message)
{
    appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")) + message);
}

} // namespace rostrum
