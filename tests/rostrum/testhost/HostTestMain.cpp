#include "HostTestMain.h"

namespace testing {
namespace {

QByteArrayList &Failures()
{
    static QByteArrayList failures;
    return failures;
}

QByteArrayList &Expected()
{
    static QByteArrayList expected;
    return expected;
}

void Add(const QByteArray &line)
{
    const char *function = QTest::currentTestFunction();
    Failures() << QByteArray(function ? function : "outside any test") + ": " + line;
}

void OnHostEnd(const QByteArrayList &lines)
{
    QByteArrayList expected = std::exchange(Expected(), {});
    for (const QByteArray &line : lines) {
        if (!expected.removeOne(line))
            Add(line);
    }
    for (const QByteArray &line : qAsConst(expected))
        Add("did not come: " + line);
}

QString Verdict()
{
    const QString place
        = rostrum::Host::Instance() ? QStringLiteral("\na host that never ended") : QString();
    return QString::fromUtf8(Failures().join('\n')) + place;
}

} // namespace

void CollectHostEnds()
{
    rostrum::Host::SetEndHandler(OnHostEnd);
    SetEndCheck(Verdict);
}

void ExpectAtEnd(const QByteArrayList &lines)
{
    Expected() << lines;
}

} // namespace testing
