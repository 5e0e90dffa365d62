// Which frame is due, by a clock that the test winds.
#include "testing/TestMain.h"
#include "window/PlayClock.h"

Q_DECLARE_METATYPE(rostrum::Rate)

using namespace rostrum;

namespace {

constexpr qint64 kMilli = 1000000;

}

class TestPlayClock : public QObject
{
    Q_OBJECT

private slots:
    void framesComeAtTheRate();
    void lateFramesAreSkippedAndCounted();
    void loopGoesOnFromTheFirst();
    void withoutALoopTheLastFrameIsTheEnd();
    void aClockThatGoesBackChangesNothing();
    void aDayAtAnOddRateIsExact();
    void nextIsNeverTooEarly_data();
    void nextIsNeverTooEarly();
    void timecodes_data();
    void timecodes();
};

void TestPlayClock::framesComeAtTheRate()
{
    PlayClock clock;
    clock.Start(3, 100, Rate(), 5 * kMilli);
    QVERIFY(!clock.At(44 * kMilli).isNew);
    const PlayClock::Due due = clock.At(45 * kMilli);
    QVERIFY(due.isNew);
    QCOMPARE(due.frame, 4);
    QVERIFY(!clock.At(46 * kMilli).isNew);
    QCOMPARE(clock.At(85 * kMilli).frame, 5);
    QCOMPARE(clock.Dropped(), qint64(0));
}

void TestPlayClock::lateFramesAreSkippedAndCounted()
{
    PlayClock clock;
    clock.Start(0, 100, Rate(), 0);
    QCOMPARE(clock.At(170 * kMilli).frame, 4); // 1, 2 and 3 came too late
    QCOMPARE(clock.Dropped(), qint64(3));
    QCOMPARE(clock.At(200 * kMilli).frame, 5);
    QCOMPARE(clock.Dropped(), qint64(3));
}

void TestPlayClock::loopGoesOnFromTheFirst()
{
    PlayClock clock;
    clock.Start(8, 10, Rate(), 0);
    QCOMPARE(clock.At(40 * kMilli).frame, 9);
    QCOMPARE(clock.At(80 * kMilli).frame, 0);
    QVERIFY(!clock.At(80 * kMilli).isEnd);
    QCOMPARE(clock.At(25 * 40 * kMilli).frame, 3);
}

void TestPlayClock::withoutALoopTheLastFrameIsTheEnd()
{
    PlayClock clock;
    clock.SetLoop(false);
    clock.Start(7, 10, Rate(), 0);
    QVERIFY(!clock.At(40 * kMilli).isEnd);
    const PlayClock::Due due = clock.At(3600 * 1000 * kMilli);
    QCOMPARE(due.frame, 9);
    QVERIFY(due.isEnd);
    QCOMPARE(clock.Dropped(), qint64(0)); // 8 was shown, 9 is: what lies behind the end is no frame
}

void TestPlayClock::aClockThatGoesBackChangesNothing()
{
    PlayClock clock;
    clock.Start(2, 10, Rate(), 1000 * kMilli);
    const PlayClock::Due due = clock.At(0);
    QCOMPARE(due.frame, 2);
    QVERIFY(!due.isNew);
}

void TestPlayClock::aDayAtAnOddRateIsExact()
{
    PlayClock clock;
    clock.Start(0, 2000000000, Rate{ 30000, 1001 }, 0);
    const qint64 day = qint64(86400) * 1000 * kMilli;
    QCOMPARE(clock.At(day).frame, 2589410); // 86400 * 30000 / 1001 = 2589410.58
}

void TestPlayClock::nextIsNeverTooEarly_data()
{
    QTest::addColumn<int>("num");
    QTest::addColumn<int>("den");
    QTest::newRow("24") << 24 << 1;
    QTest::newRow("25") << 25 << 1;
    QTest::newRow("29.97") << 30000 << 1001;
    QTest::newRow("one in ten seconds") << 1 << 10;
    QTest::newRow("the fastest there can be") << 2147483647 << 1;
}

void TestPlayClock::nextIsNeverTooEarly()
{
    QFETCH(int, num);
    QFETCH(int, den);
    PlayClock clock;
    clock.Start(0, 1000000, Rate{ num, den }, 7);
    for (int frame = 1; frame < 50; ++frame) {
        const qint64 next = clock.NextAt();
        if (num < 1000000)
            QVERIFY(!clock.At(next - 1).isNew);
        QVERIFY(clock.At(next).isNew);
    }
}

void TestPlayClock::timecodes_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<Rate>("rate");
    QTest::addColumn<QString>("text");
    QTest::newRow("start") << 0 << Rate() << QStringLiteral("0:00:00:00");
    QTest::newRow("one frame before a second") << 24 << Rate() << QStringLiteral("0:00:00:24");
    QTest::newRow("an hour and more") << (3725 * 25 + 3) << Rate() << QStringLiteral("1:02:05:03");
    QTest::newRow("24") << 24 << Rate{ 24, 1 } << QStringLiteral("0:00:01:00");
    QTest::newRow("29.97 counts to 30")
        << 29 << Rate{ 30000, 1001 } << QStringLiteral("0:00:00:29");
    QTest::newRow("before the start") << -26 << Rate() << QStringLiteral("-0:00:01:01");
    QTest::newRow("slower than one a second") << 3 << Rate{ 1, 10 } << QStringLiteral("0:00:03:00");
    QTest::newRow("faster than hundred") << 119 << Rate{ 120, 1 } << QStringLiteral("0:00:00:119");
}

void TestPlayClock::timecodes()
{
    QFETCH(int, frame);
    QFETCH(Rate, rate);
    QTEST(Timecode(frame, rate), "text");
}

VN_TEST_MAIN(TestPlayClock)
#include "tst_playclock.moc"
