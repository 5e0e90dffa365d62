#include "CheckReport.h"

#include <QMap>

#include <algorithm>

namespace rostrum {
namespace {

struct Use
{
    int calls = 0;
    int failures = 0;

    void Count(A_Err result)
    {
        ++calls;
        failures += result != A_Err_NONE;
    }
};

struct SuiteUse
{
    Use acquired;
    QMap<QByteArray, Use> functions;
};

QByteArray Quoted(const QByteArray &text)
{
    return '"' + text + '"';
}

QByteArray Times(int count)
{
    return count == 1 ? QByteArray("once") : QByteArray::number(count) + " times";
}

QByteArray FailuresText(const Use &use)
{
    return use.failures ? ", " + QByteArray::number(use.failures) + " answered an error"
                        : QByteArray();
}

QMap<QByteArray, SuiteUse> UsesBySuite(const Trace &trace)
{
    QMap<QByteArray, SuiteUse> suites;
    for (const TraceEntry &entry : trace.Entries()) {
        const QByteArray function(entry.function);
        if (function == "AcquireSuite")
            suites[entry.arguments].acquired.Count(entry.result);
        else if (function != "ReleaseSuite") // what was not released is among the findings
            suites[QByteArray(entry.suite) + ' ' + QByteArray::number(entry.version)]
                .functions[function]
                .Count(entry.result);
    }
    return suites;
}

int LongestName(const QMap<QByteArray, SuiteUse> &suites)
{
    int longest = 0;
    for (const SuiteUse &suite : suites) {
        for (auto use = suite.functions.cbegin(); use != suite.functions.cend(); ++use)
            longest = qMax(longest, use.key().size());
    }
    return longest;
}

QByteArray PanelText(const PanelSeen &panel)
{
    if (!panel.isMade)
        return Quoted(panel.name) + ", never made";
    QByteArrayList sizes;
    for (const A_LPoint &size : panel.snapSizes)
        sizes << QByteArray::number(size.x) + " x " + QByteArray::number(size.y);
    QByteArrayList entries;
    for (const FlyoutItem &item : panel.flyout) {
        if (!item.text.isEmpty())
            entries << Quoted(item.text);
    }
    QByteArray text = Quoted(panel.name) + ", made";
    if (!sizes.isEmpty())
        text += ", snap sizes " + sizes.join(", ");
    if (!entries.isEmpty())
        text += ", flyout " + entries.join(", ");
    return text;
}

} // namespace

QByteArrayList Section(const char *title, const QByteArrayList &lines)
{
    QByteArrayList section{ "  " + QByteArray(title) };
    for (const QByteArray &line : lines)
        section << "    " + line;
    if (lines.isEmpty())
        section << "    none";
    return section;
}

QByteArrayList Joined(const QByteArrayList &lines)
{
    QByteArrayList joined;
    for (const QByteArray &line : lines) {
        if (!joined.contains(line))
            joined << line;
    }
    for (QByteArray &line : joined) {
        const auto count = lines.count(line);
        if (count > 1)
            line += ", " + Times(static_cast<int>(count));
    }
    return joined;
}

QByteArrayList HookLines(const Trace &trace)
{
    static const QMap<QByteArray, QByteArray> kinds{ { "AEGP_RegisterCommandHook", "command" },
        { "AEGP_RegisterIdleHook", "idle" }, { "AEGP_RegisterUpdateMenuHook", "update menu" },
        { "AEGP_RegisterDeathHook", "death" }, { "AEGP_RegisterCreatePanelHook", "create panel" } };
    QByteArrayList lines;
    for (const TraceEntry &entry : trace.Entries()) {
        const QByteArray kind = kinds.value(entry.function);
        if (kind.isEmpty() || entry.result != A_Err_NONE)
            continue;
        const QByteArray command = entry.arguments.split(',').value(/*i=*/2).trimmed();
        if (kind != "command")
            lines << kind;
        else
            lines << (command == "0" ? QByteArray("command, all commands")
                                     : "command, number " + command);
    }
    return Joined(lines);
}

QByteArrayList MenuItemLines(const HostDriver &driver)
{
    QByteArrayList lines;
    for (const MenuItem &item : driver.MenuItems()) {
        const QByteArray menu = item.menu == AEGP_Menu_WINDOW
            ? QByteArray("the Window menu")
            : "menu " + QByteArray::number(item.menu);
        lines << Quoted(item.text) + " in " + menu + ", command "
                + QByteArray::number(item.command);
    }
    return lines;
}

QByteArrayList PanelLines(const QVector<PanelSeen> &panels)
{
    QByteArrayList lines;
    for (const PanelSeen &panel : panels)
        lines << PanelText(panel);
    return lines;
}

QByteArrayList CallLines(const Trace &trace)
{
    constexpr int kCountWidth = 6; // characters
    const QMap<QByteArray, SuiteUse> suites = UsesBySuite(trace);
    const int nameWidth = LongestName(suites);
    QByteArrayList lines;
    for (auto suite = suites.cbegin(); suite != suites.cend(); ++suite) {
        const Use &acquired = suite->acquired;
        lines << suite.key() + ", acquired " + Times(acquired.calls) + FailuresText(acquired);
        for (auto use = suite->functions.cbegin(); use != suite->functions.cend(); ++use) {
            lines << "  " + use.key().leftJustified(nameWidth)
                    + QByteArray::number(use->calls).rightJustified(kCountWidth)
                    + FailuresText(*use);
        }
    }
    return lines;
}

/// All that the host has to tell against a plug-in now.
QByteArrayList FindingLog::Told(const Host &host) const
{
    QByteArrayList told;
    for (const QByteArray &line : host.Complaints())
        told << "rule broken: " + line;
    for (const QByteArray &line : host.RefusedSuites())
        told << "no such suite: " + line;
    for (const QByteArray &line : host.UnexpectedCalls())
        told << "not offered by this host: " + line;
    for (const QByteArray &line : host.Account())
        told << "left open: " + firstNames.value(line, line);
    return told;
}

void FindingLog::Look(const Host &host, const QByteArray &step)
{
    const QByteArrayList told = Told(host);
    QHash<QByteArray, int> counts;
    for (const QByteArray &what : told)
        ++counts[what];
    for (Finding &finding : findings) {
        if (!finding.step.isEmpty())
            finding.count = counts.take(finding.what);
    }
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                       [](const Finding &finding) { return finding.count == 0; }),
        findings.end());
    for (const QByteArray &what : told) { // in the host's order
        if (const int count = counts.take(what))
            findings.append({ what, step, count });
    }
}

void FindingLog::Add(const QByteArray &what)
{
    findings.append({ what, /*step=*/{}, /*count=*/1 });
}

void FindingLog::KeepNames(const QByteArrayList &openBefore, const QByteArrayList &openNow)
{
    for (int i = 0; i < qMin(openBefore.size(), openNow.size()); ++i)
        firstNames.insert(openNow[i], openBefore[i]);
}

QByteArrayList FindingLog::Lines() const
{
    QByteArrayList lines;
    for (const Finding &finding : findings) {
        const QByteArray count = finding.count > 1 ? ", " + Times(finding.count) : QByteArray();
        const QByteArray step
            = finding.step.isEmpty() ? QByteArray() : "; first seen during " + finding.step;
        lines << finding.what + count + step;
    }
    return lines;
}

} // namespace rostrum
