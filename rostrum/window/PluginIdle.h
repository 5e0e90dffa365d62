// Calls the plug-ins' idle hooks while nothing else runs: no menu or dialog is open, no mouse button
// is down. A hook names the longest time that it wants to sleep.
#pragma once

#include "window/Session.h"

#include <QTimer>

namespace rostrum {

class PluginIdle : public QObject
{
    Q_OBJECT

public:
    explicit PluginIdle(Session &session, QObject *parent = nullptr);

    void Start() { OnTimer(); }
    void Stop() { timer.stop(); }

private:
    static bool IsBusy();
    void OnTimer();

    Session &session;
    QTimer timer;
};

} // namespace rostrum
