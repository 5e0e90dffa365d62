#include "OffScreen.h"

namespace rostrum {

namespace {

constexpr int kFarAway = -20000; // beyond every arrangement of screens

} // namespace

/// A plug-in's panel wants a native window to dock in, so that the ordinary windows are in use.
void KeepOffScreen(QProcessEnvironment *environment)
{
    environment->insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("windows"));
}

void KeepOffScreen(QWidget *window)
{
    window->setWindowFlag(Qt::Tool); // no button in the task bar
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->move(kFarAway, kFarAway);
}

} // namespace rostrum
