// TraceLinesOff: keeps the lines that every rebuild prints from burying the verdict of a test that
// rebuilds some thousand times. All other messages are judged as ever.
#pragma once

#include <QString>
#include <QtGlobal>

class TraceLinesOff
{
public:
    TraceLinesOff() : before(qInstallMessageHandler(Filter)) { passOn = before; }
    ~TraceLinesOff() { qInstallMessageHandler(before); }
    TraceLinesOff(const TraceLinesOff &) = delete;
    TraceLinesOff &operator=(const TraceLinesOff &) = delete;

private:
    static void Filter(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const bool isTrace = text.startsWith(QLatin1String("x y "))
            || text == QLatin1String("setText2")
            || text.startsWith(QLatin1String("This plugin does not support"));
        if (!isTrace)
            passOn(type, context, text);
    }

    inline static QtMessageHandler passOn = nullptr;
    QtMessageHandler before;
};
