#include "CheckReport.h"

#include <QMap>

namespace rostrum {
namespace {

struct Use
{
    int calls = 0;
    int failures = 0;
};

void AddAll(QByteArrayList &findings, const char *what, const QByteArrayList &lines)
{
    for (const QByteArray &line : lines)
        findings << QByteArray(what) + ": " + line;
}

} // namespace

QByteArray RegisteredText(Host &host)
{
    QByteArray text;
    for (const MenuItem &item : host.Driver().MenuItems()) {
        text += "  menu item \"" + item.text + "\", command " + QByteArray::number(item.command)
            + ", menu " + QByteArray::number(item.menu)
            + (item.enabled ? ", enabled" : ", disabled") + (item.checked ? ", checked\n" : "\n");
    }
    for (const QByteArray &panel : host.Driver().Panels())
        text += "  panel \"" + panel + "\"\n";
    return text.isEmpty() ? QByteArray("  nothing\n") : text;
}

QByteArray HooksText(const Trace &trace)
{
    QByteArray text;
    for (const TraceEntry &entry : trace.Entries()) {
        const QByteArray function(entry.function);
        if (entry.result == A_Err_NONE && function.startsWith("AEGP_Register"))
            text += "  " + function.mid(5) + '(' + entry.arguments + ")\n";
    }
    return text;
}

QByteArray UsedText(const Trace &trace)
{
    QMap<QByteArray, QMap<QByteArray, Use>> bySuite;
    for (const TraceEntry &entry : trace.Entries()) {
        const QByteArray suite = QByteArray(entry.suite) + ' ' + QByteArray::number(entry.version);
        Use &use = bySuite[suite][entry.function];
        ++use.calls;
        use.failures += entry.result != A_Err_NONE;
    }
    QByteArray text;
    for (auto suite = bySuite.cbegin(); suite != bySuite.cend(); ++suite) {
        text += "  " + suite.key() + '\n';
        for (auto use = suite.value().cbegin(); use != suite.value().cend(); ++use) {
            text += "    " + use.key() + "  " + QByteArray::number(use.value().calls);
            if (use.value().failures)
                text += ", " + QByteArray::number(use.value().failures) + " answered an error";
            text += '\n';
        }
    }
    return text;
}

QByteArrayList Findings(const Host &host)
{
    QByteArrayList findings;
    AddAll(findings, "left open", host.Account());
    AddAll(findings, "rule broken", host.Complaints());
    AddAll(findings, "not offered by any host", host.UnexpectedCalls());
    AddAll(findings, "no such suite", host.RefusedSuites());
    return findings;
}

} // namespace rostrum
