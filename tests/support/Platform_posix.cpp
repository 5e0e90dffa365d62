#include "Platform.h"

#include <QFile>

#include <clocale>
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace testing {
namespace {

rlimit fileSizeBefore = {};
uid_t userBefore = 0;

constexpr uid_t kNobody = 65534; // the administrator may write anywhere, a user of fewer rights not

} // namespace

bool LimitFileSize(qint64 bytes)
{
    std::signal(SIGXFSZ, SIG_IGN); // a write past the limit then fails as one to a full disk does
    if (getrlimit(RLIMIT_FSIZE, &fileSizeBefore) != 0)
        return false;
    const rlimit small = { static_cast<rlim_t>(bytes), fileSizeBefore.rlim_max };
    return setrlimit(RLIMIT_FSIZE, &small) == 0;
}

bool LiftFileSize()
{
    const bool isLifted = setrlimit(RLIMIT_FSIZE, &fileSizeBefore) == 0;
    std::signal(SIGXFSZ, SIG_DFL);
    return isLifted;
}

QString LinkName(const QString &name)
{
    return name;
}

int ManyFiles()
{
    return 20000;
}

int LongestName()
{
    return 255;
}

QString SystemLibrary()
{
    return QStringLiteral("libm.so.6");
}

QString PanelStyle()
{
    return QStringLiteral("plastique");
}

WriteProtection::WriteProtection(const QString &folder) : folder(folder)
{
    userBefore = geteuid();
    if (!QFile::setPermissions(folder, QFile::Permissions(0x5555))
        || (userBefore == 0 && seteuid(kNobody) != 0))
        qFatal("the folder cannot be protected");
}

WriteProtection::~WriteProtection()
{
    if ((userBefore == 0 && seteuid(userBefore) != 0)
        || !QFile::setPermissions(folder, QFile::Permissions(0x7755)))
        qFatal("the folder stays protected");
}

void AwaitInterrupt() { } // the signal comes by itself

bool Interrupt(QProcess &child)
{
    return ::kill(static_cast<pid_t>(child.processId()), SIGINT) == 0;
}

void AwaitUnused(const QString &) { } // a folder can be removed at any time

void AnswerAssertion() { } // nothing asks

/// A system has the locales that its user wanted; one with a comma is compiled for the test.
QString SetCommaLocale(const QString &folder)
{
    const QString path = folder + QStringLiteral("/fr_FR.UTF-8");
    QProcess make;
    make.start(QStringLiteral("localedef"),
        { QStringLiteral("-i"), QStringLiteral("fr_FR"), QStringLiteral("-f"),
            QStringLiteral("UTF-8"), path });
    if (!make.waitForStarted())
        return QStringLiteral("localedef cannot be run; install the package libc-bin");
    if (!make.waitForFinished())
        return QStringLiteral("localedef does not come to an end");
    const QString complaint = QString::fromLocal8Bit(make.readAllStandardError().trimmed());
    if (make.exitCode() != 0 || !complaint.isEmpty())
        return QStringLiteral("localedef made no fr_FR; install the package locales: ") + complaint;
    qputenv("LOCPATH", folder.toLocal8Bit());
    return std::setlocale(LC_ALL, "fr_FR.UTF-8") ? QString()
                                                 : QStringLiteral("the locale cannot be set");
}

} // namespace testing
