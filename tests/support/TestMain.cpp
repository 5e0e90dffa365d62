#include "TestMain.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdio>

namespace testing {
namespace {

std::function<QString()> endCheck;

/// Lines that the product prints in its ordinary course, so that no test has to announce them. On a
/// real display Qt asks about frames of windows that the window manager has just taken down. Windows
/// keeps a window as wide as its title needs, and not larger than the screen.
bool IsTraceLine(const QByteArray &line)
{
    static const QRegularExpression trace(QStringLiteral(
        "NewHook |setText2|\\bx y |This plugin does not support (propagateSizeHints|raise|lower|"
        "setParent|grabbing the keyboard)|"
        "qt\\.qpa\\.xcb: QXcbConnection: XCB error: 3 \\(BadWindow\\)|"
        "setGeometry: Unable to set geometry|"
        "QPixmap::fromWinHICON\\(\\), failed to GetIconInfo")); // Wine has no icon for a message box
    return trace.match(QString::fromUtf8(line)).hasMatch();
}

/// Qt Test prints a message as "QWARN  : Class::function() text", and leaves out those that
/// QTest::ignoreMessage announced. A message's later lines are indented by the same log.
QList<QByteArray> UnexpectedMessages(const QString &logPath)
{
    QFile log(logPath);
    QList<QByteArray> found;
    if (!log.open(QIODevice::ReadOnly))
        return { "the test log cannot be read" };
    while (!log.atEnd()) {
        const QByteArray line = log.readLine().trimmed();
        const bool isMessage = line.startsWith("QWARN") || line.startsWith("QDEBUG")
            || line.startsWith("QINFO") || line.startsWith("QCRITICAL")
            || line.startsWith("QSYSTEM");
        if (isMessage && !IsTraceLine(line))
            found << line;
    }
    return found;
}

} // namespace

void SetEndCheck(std::function<QString()> check)
{
    endCheck = std::move(check);
}

int RunTests(QObject &tests, int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // they have no widgets to work
    const QTemporaryDir folder;
    const QString logPath = folder.filePath(QStringLiteral("log.txt"));
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    arguments << QStringLiteral("-maxwarnings") << QStringLiteral("0") << QStringLiteral("-o")
              << QStringLiteral("-,txt") << QStringLiteral("-o")
              << logPath + QStringLiteral(",txt");

    int status = QTest::qExec(&tests, arguments);
    for (const QByteArray &message : UnexpectedMessages(logPath)) {
        std::fprintf(stderr, "FAIL   : unexpected message: %s\n", message.constData());
        status = status ? status : 1;
    }
    const QString leftOver = endCheck ? endCheck() : QString();
    if (!leftOver.isEmpty()) {
        std::fprintf(stderr, "FAIL   : left over at the end: %s\n", qPrintable(leftOver));
        status = status ? status : 1;
    }
    return status;
}

} // namespace testing
