#include "shell/LibraryLife.h"

#include "support/vnLog.h"
#include "support/vnPalette.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QStyleFactory>

namespace {

bool ownsApplication = false;

/// Qt's own deferred work, timers and repaints depend on it. What it throws must not get into the
/// host's loop.
void DeliverPostedEvents() noexcept
{
    try {
        if (QCoreApplication::instance())
            QCoreApplication::sendPostedEvents(/*receiver=*/nullptr, /*event_type=*/0);
    } catch (...) { // as at every border to the host
    }
}

/// What an event's work throws ends with the event, as at every border to the host: the window
/// system calls Qt in the midst of the host's loop, for a key or for a timer.
class GuardedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (...) { // numbers of the host, failed allocations, anything
            return true;
        }
    }
};

/// A dark host, and widgets that do not stand out in it. The style comes after the palette, which it
/// then takes over.
void DressApplication()
{
    constexpr int kDarkSet = 1;
    constexpr double kLightEnd = 1.0;
    QPalette palette = QApplication::palette();
    ApplyColorSet(palette, kDarkSet, kLightEnd);
    QApplication::setPalette(palette);

    QStyle *style = QStyleFactory::create(QStringLiteral("plastique"));
    if (!style) {
        vnLog::Instance()->Add("the style \"plastique\" is not installed, \"fusion\" is taken");
        style = QStyleFactory::create(QStringLiteral("fusion"));
    }
    QApplication::setStyle(style);
}

/// Qt empties these two caches when the application goes, and does not ask whether they are still
/// there. They come about with the first use, here, so that they go behind the application: with
/// what was made last first, a cache that the panel's own paint had made would go before it.
void MakeCaches()
{
    QImage paper(8, 8, QImage::Format_ARGB32_Premultiplied);
    QPainter(&paper).fillRect(paper.rect(), Qt::Dense4Pattern);
    QIcon::fromTheme(QStringLiteral("none"));
}

} // namespace

void OnLibraryLoad()
{
    if (QCoreApplication::instance())
        return;
    libraryLife::HookMessages(DeliverPostedEvents);
    {
        static int argumentCount = 0; // the application keeps a reference
        const libraryLife::PlatformChoice platform;
        new GuardedApplication(argumentCount, /*argv=*/nullptr); // found by qApp, deleted below
    }
    if (!libraryLife::KeepLoaded())
        vnLog::Instance()->Add("the library's own path is of no use, the host may unload it");
    ownsApplication = true;
    DressApplication();
    MakeCaches();
}

void OnLibraryUnload()
{
    if (!ownsApplication)
        return;
    ownsApplication = false;
    delete QCoreApplication::instance(); // null when somebody else has deleted it
    libraryLife::UnhookMessages();
}
