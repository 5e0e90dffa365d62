#include "OffScreen.h"

namespace rostrum {

void KeepOffScreen(QProcessEnvironment *environment)
{
    environment->insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
}

void KeepOffScreen(QWidget *) { } // no window of the process is on a screen

} // namespace rostrum
