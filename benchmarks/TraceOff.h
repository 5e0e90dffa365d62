// TraceOff: swallows what the product prints, which would be measured with it and clutter the
// figures.
#pragma once

#include <QString>

#include <cstdio>

namespace bench {

class TraceOff
{
public:
    TraceOff() : before(qInstallMessageHandler(Swallow)) { }
    ~TraceOff() { qInstallMessageHandler(before); }
    TraceOff(const TraceOff &) = delete;
    TraceOff &operator=(const TraceOff &) = delete;

private:
    static void Swallow(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    }

    QtMessageHandler before;
};

} // namespace bench
