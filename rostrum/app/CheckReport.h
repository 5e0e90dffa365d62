// What a walk has seen of a plug-in, in words: lists of lines, each under its title.
#pragma once

#include "suites/Host.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QVector>

namespace rostrum {

/// A panel as the walk met it.
struct PanelSeen
{
    QByteArray name; // the match name
    bool isMade = false;
    QVector<A_LPoint> snapSizes;
    QVector<FlyoutItem> flyout; // as it was first shown
};

/// A title and its lines, indented; "none" when there are no lines.
QByteArrayList Section(const char *title, const QByteArrayList &lines);

/// Equal lines as one, in order of their first: "suite "A" 1, 3 times".
QByteArrayList Joined(const QByteArrayList &lines);

/// The hooks that were registered.
QByteArrayList HookLines(const Trace &trace);

QByteArrayList MenuItemLines(const HostDriver &driver);

QByteArrayList PanelLines(const QVector<PanelSeen> &panels);

/// Each suite that was asked for, with how often, and its functions that were called, with how
/// often, failures apart. Sorted by name.
QByteArrayList CallLines(const Trace &trace);

/// All that is wrong, in order of coming up.
class FindingLog
{
public:
    /// To be called after each step. What was left open before and has been given back is dropped.
    void Look(const Host &host, const QByteArray &step);
    /// What the host does not tell.
    void Add(const QByteArray &what);
    /// What is open keeps the name that it came up with, though the host now has another for it.
    void KeepNames(const QByteArrayList &openBefore, const QByteArrayList &openNow);
    bool IsEmpty() const { return findings.isEmpty(); }
    /// "left open: collection of 2 layers, 3 times; first seen during the idle calls"
    QByteArrayList Lines() const;

private:
    struct Finding
    {
        QByteArray what;
        QByteArray step; // empty for what the host does not tell
        int count = 1;
    };

    QByteArrayList Told(const Host &host) const;

    QVector<Finding> findings;
    QHash<QByteArray, QByteArray> firstNames; // by what the host calls it now
};

} // namespace rostrum
