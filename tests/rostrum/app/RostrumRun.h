// The program run as a child process, as a user types it.
#pragma once

#include <QProcessEnvironment>
#include <QStringList>

namespace testing {

struct RostrumRun
{
    int status = -1; // -1: it did not come to its end
    QString out;
    QString err;

    /// The lines under a title of the report, without their indent.
    /// @param walk 0 with the host's application object, 1 without
    QStringList Section(int walk, const QString &title) const;
    /// What the plug-in itself wrote during a walk.
    QStringList PluginLines(int walk) const;

private:
    QStringList WalkLines(int walk) const;
};

RostrumRun RunRostrum(const QStringList &words, const QString &folder = {},
    const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

/// The file of one of the plug-ins that are made for the tests.
QString TestPlugin(const QString &name);

} // namespace testing
