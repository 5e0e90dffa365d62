#include "PluginIdle.h"

#include <QApplication>

namespace rostrum {
namespace {

constexpr int kTicksPerSecond = 60; // of a hook's sleep
constexpr int kBusyWait = 100; // ms until the next look while something runs

} // namespace

PluginIdle::PluginIdle(Session &session, QObject *parent) : QObject(parent), session(session)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &PluginIdle::OnTimer);
}

bool PluginIdle::IsBusy()
{
    return QApplication::activeModalWidget() || QApplication::activePopupWidget()
        || QApplication::mouseButtons() != Qt::NoButton;
}

void PluginIdle::OnTimer()
{
    if (IsBusy()) {
        timer.start(kBusyWait);
        return;
    }
    const int sleep = session.Driver().CallIdle();
    session.Look();
    timer.start(sleep * 1000 / kTicksPerSecond);
}

} // namespace rostrum
