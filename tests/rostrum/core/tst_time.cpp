#include "CoreTest.h"

#include "core/Time.h"

#include <limits>
#include <random>

using rostrum::Rate;
using rostrum::Time;

Q_DECLARE_METATYPE(rostrum::Time)
Q_DECLARE_METATYPE(rostrum::Rate)

class TestTime : public QObject
{
    Q_OBJECT

private slots:
    void timesAreEqualAsFractions_data();
    void timesAreEqualAsFractions();
    void timesAreOrderedAsFractions_data();
    void timesAreOrderedAsFractions();
    void aSumKeepsTheCommonScale_data();
    void aSumKeepsTheCommonScale();
    void aDifferenceUndoesASum();
    void theSmallestValueIsTakenAwayExactly();
    void aSumThatDoesNotFitIsTakenToLowestTerms();
    void aSumThatDoesNotFitInLowestTermsIsRoundedToTheNearest();
    void aSumBeyondAnyTimeStaysAtTheLimit();
    void randomTimesCompareLikeWideFractions_data();
    void randomTimesCompareLikeWideFractions();
    void randomSumsAreExactOrTheNearest_data();
    void randomSumsAreExactOrTheNearest();
    void ratesAreEqualAsFractions();
    void theTimeOfAFrameIsAFractionOfItsRate();
    void aFrameComesBackFromItsTime_data();
    void aFrameComesBackFromItsTime();
    void aTimeWithinAFrameIsThatFrame_data();
    void aTimeWithinAFrameIsThatFrame();
    void theFrameOfATimeStaysWithinItsLimits();
    void randomTimesLieInTheirFrame_data();
    void randomTimesLieInTheirFrame();
};

namespace {

__extension__ using Wide = __int128;

constexpr qint32 kMax = std::numeric_limits<qint32>::max();
constexpr qint32 kMin = std::numeric_limits<qint32>::min();
constexpr quint32 kMaxScale = std::numeric_limits<quint32>::max();

/// A number of up to 32 bits, small and large ones equally often, and the limits now and then.
qint32 RandomValue(std::mt19937 &random)
{
    const auto bits = static_cast<quint32>(random());
    switch (random() % 16) {
    case 0:
        return kMax;
    case 1:
        return kMin;
    case 2:
        return 0;
    default:
        return static_cast<qint32>(bits) >> (random() % 32);
    }
}

quint32 RandomScale(std::mt19937 &random)
{
    static constexpr quint32 kUsual[] = { 1, 24, 25, 50, 600, 30000, 90000, kMaxScale };
    if (random() % 2)
        return kUsual[random() % 8];
    const auto bits = static_cast<quint32>(random());
    return qMax(1u, bits >> (random() % 32));
}

/// Seeds by name, so that a failure names the one that it needs.
void AddSeeds()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : { 1u, 25u, 2147483659u })
        QTest::addRow("seed %u", seed) << seed;
}

Wide Size(Wide value)
{
    return value < 0 ? -value : value;
}

} // namespace

void TestTime::timesAreEqualAsFractions_data()
{
    QTest::addColumn<Time>("a");
    QTest::addColumn<Time>("b");
    QTest::addColumn<bool>("equal");
    QTest::newRow("one scale") << Time{ 7, 25 } << Time{ 7, 25 } << true;
    QTest::newRow("twice the scale") << Time{ 1, 25 } << Time{ 2, 50 } << true;
    QTest::newRow("one frame on") << Time{ 1, 25 } << Time{ 2, 25 } << false;
    QTest::newRow("nothing on any scale") << Time{ 0, 1 } << Time{ 0, kMaxScale } << true;
    QTest::newRow("before 0") << Time{ -1, 25 } << Time{ -24, 600 } << true;
    QTest::newRow("the sign counts") << Time{ -1, 25 } << Time{ 1, 25 } << false;
    QTest::newRow("the largest apart by one scale")
        << Time{ kMax, kMaxScale } << Time{ kMax, kMaxScale - 1 } << false;
    QTest::newRow("the smallest apart by one scale")
        << Time{ kMin, kMaxScale } << Time{ kMin, kMaxScale - 1 } << false;
    QTest::newRow("a scale beyond 31 bits") << Time{ 1, 2 } << Time{ 1 << 30, 1u << 31 } << true;
    QTest::newRow("value and scale swapped") << Time{ 24, 25 } << Time{ 25, 24 } << false;
}

void TestTime::timesAreEqualAsFractions()
{
    QFETCH(Time, a);
    QFETCH(Time, b);
    QFETCH(bool, equal);
    QCOMPARE(a == b, equal);
    QCOMPARE(b == a, equal);
    QCOMPARE(a != b, !equal);
}

void TestTime::timesAreOrderedAsFractions_data()
{
    QTest::addColumn<Time>("earlier");
    QTest::addColumn<Time>("later");
    QTest::newRow("one scale") << Time{ 3, 25 } << Time{ 4, 25 };
    QTest::newRow("a larger value on a finer scale") << Time{ 30, 600 } << Time{ 2, 25 };
    QTest::newRow("across 0") << Time{ -1, 25 } << Time{ 0, 1 };
    QTest::newRow("before 0") << Time{ -5, 24 } << Time{ -5, 25 };
    QTest::newRow("limits") << Time{ kMin, 1 } << Time{ kMax, 1 };
    QTest::newRow("a hair apart") << Time{ kMax, kMaxScale } << Time{ kMax, kMaxScale - 1 };
}

void TestTime::timesAreOrderedAsFractions()
{
    QFETCH(Time, earlier);
    QFETCH(Time, later);
    QCOMPARE(earlier < later, true);
    QCOMPARE(later < earlier, false);
    QCOMPARE(earlier <= later, true);
    QCOMPARE(later <= earlier, false);
    QCOMPARE(later < later, false);
    QCOMPARE(later <= later, true);
}

void TestTime::aSumKeepsTheCommonScale_data()
{
    QTest::addColumn<Time>("a");
    QTest::addColumn<Time>("b");
    QTest::addColumn<Time>("sum");
    QTest::newRow("one scale") << Time{ 7, 25 } << Time{ 4, 25 } << Time{ 11, 25 };
    QTest::newRow("one scale, not shortened") << Time{ 20, 25 } << Time{ 5, 25 } << Time{ 25, 25 };
    QTest::newRow("two scales") << Time{ 1, 24 } << Time{ 1, 25 } << Time{ 49, 600 };
    QTest::newRow("one scale within the other")
        << Time{ 3, 25 } << Time{ 7, 600 } << Time{ 79, 600 };
    QTest::newRow("before 0") << Time{ 1, 25 } << Time{ -3, 50 } << Time{ -1, 50 };
    QTest::newRow("nothing added keeps the scale")
        << Time{ 7, 25 } << Time{ 0, 90000 } << Time{ 7, 25 };
}

void TestTime::aSumKeepsTheCommonScale()
{
    QFETCH(Time, a);
    QFETCH(Time, b);
    QFETCH(Time, sum);
    QCOMPARE((a + b).value, sum.value);
    QCOMPARE((a + b).scale, sum.scale);
}

void TestTime::aDifferenceUndoesASum()
{
    const Time a{ 11, 24 };
    const Time b{ 7, 25 };
    QCOMPARE(a + b - b, a);
    QCOMPARE(b - a, (Time{ -107, 600 }));
    QCOMPARE((Time{ 0, 1 } - Time{ kMax, 25 }), (Time{ -kMax, 25 }));
}

// A layer that began at the earliest time of all seemed to begin at the latest.
void TestTime::theSmallestValueIsTakenAwayExactly()
{
    QCOMPARE((Time{ 58, 1 } - Time{ kMin, 76668 }), (Time{ 537982598, 19167 }));
    QCOMPARE((Time{ 0, 7 } - Time{ kMin, 50 }), (Time{ 1 << 30, 25 }));
}

void TestTime::aSumThatDoesNotFitIsTakenToLowestTerms()
{
    const Time sum = Time{ kMax, 50 } + Time{ 1, 50 }; // 2^31 / 50 is 2^30 / 25
    QCOMPARE(sum.value, 1 << 30);
    QCOMPARE(sum.scale, 25u);
}

// A sum near the limits came out a third too large: value and scale were halved apart.
void TestTime::aSumThatDoesNotFitInLowestTermsIsRoundedToTheNearest()
{
    const Time sum = Time{ kMax, 3 } + Time{ kMax - 1, 3 }; // 4294967293 / 3
    QCOMPARE(sum.scale, 1u);
    QCOMPARE(sum.value, 1431655764);
    const Time below = Time{ -kMax, 3 } - Time{ kMax - 1, 3 };
    QCOMPARE(below.scale, 1u);
    QCOMPARE(below.value, -1431655764);
}

void TestTime::aSumBeyondAnyTimeStaysAtTheLimit()
{
    QCOMPARE((Time{ kMax, 1 } + Time{ 1, 1 }), (Time{ kMax, 1 }));
    QCOMPARE((Time{ kMin + 1, 1 } - Time{ kMax, 1 }), (Time{ -kMax, 1 }));
    QCOMPARE((Time{ kMin, 1 } + Time{ 0, 1 }), (Time{ kMin, 1 }));
}

void TestTime::randomTimesCompareLikeWideFractions_data()
{
    AddSeeds();
}

void TestTime::randomTimesCompareLikeWideFractions()
{
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 100000; ++i) {
        const Time a{ RandomValue(random), RandomScale(random) };
        const Time b{ RandomValue(random), RandomScale(random) };
        const Wide left = Wide(a.value) * b.scale;
        const Wide right = Wide(b.value) * a.scale;
        QCOMPARE(a == b, left == right);
        QCOMPARE(a < b, left < right);
        QCOMPARE(a <= b, left <= right);
    }
}

void TestTime::randomSumsAreExactOrTheNearest_data()
{
    AddSeeds();
}

void TestTime::randomSumsAreExactOrTheNearest()
{
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    int exact = 0;
    int rounded = 0;
    int limited = 0;
    for (int i = 0; i < 100000; ++i) {
        const Time a{ RandomValue(random), RandomScale(random) };
        const Time b{ RandomValue(random), RandomScale(random) };
        const bool minus = random() % 2;
        const Time sum = minus ? a - b : a + b;

        // The sum as value / scale, and what separates it from the answer, over both scales.
        const Wide other = Wide(b.value) * a.scale;
        const Wide value = Wide(a.value) * b.scale + (minus ? -other : other);
        const Wide scale = Wide(a.scale) * b.scale;
        const Wide error = Size(value * sum.scale - sum.value * scale);
        const QByteArray what = QByteArray::number(a.value) + '/' + QByteArray::number(a.scale)
            + (minus ? " - " : " + ") + QByteArray::number(b.value) + '/'
            + QByteArray::number(b.scale) + " is not " + QByteArray::number(sum.value) + '/'
            + QByteArray::number(sum.scale);
        if (error == 0) {
            ++exact;
        } else if (Size(value) > kMax * scale) {
            ++limited;
            QVERIFY2(sum == (Time{ value < 0 ? -kMax : kMax, 1 }), what.constData());
        } else {
            ++rounded;
            const bool isFinest
                = sum.scale == kMaxScale || Size(value) * (Wide(sum.scale) + 1) > kMax * scale;
            QVERIFY2(isFinest, what.constData());
            QVERIFY2(2 * error <= scale, what.constData());
        }
    }
    QVERIFY(exact > 1000); // the three ways were all gone
    QVERIFY(rounded > 1000);
    QVERIFY(limited > 0);
}

void TestTime::ratesAreEqualAsFractions()
{
    QCOMPARE((Rate{ 25, 1 } == Rate{ 50, 2 }), true);
    QCOMPARE((Rate{ 24, 1 } == Rate{ 24000, 1001 }), false);
    QCOMPARE((Rate{ 24, 1 } != Rate{ 24000, 1001 }), true);
    QCOMPARE((Rate{ kMax, kMax - 1 } == Rate{ kMax - 1, kMax - 2 }), false);
    QCOMPARE((Rate{ 30000, 1001 }.PerSecond()), 30000.0 / 1001.0);
}

void TestTime::theTimeOfAFrameIsAFractionOfItsRate()
{
    const Time time = Rate{ 25, 1 }.FrameTime(7);
    QCOMPARE(time.value, 7); // a frame count over the rate, as the host tells a duration
    QCOMPARE(time.scale, 25u);
    QCOMPARE((Rate{ 30000, 1001 }.FrameTime(-3)), (Time{ -3003, 30000 }));
    QCOMPARE((Rate{ 24, 1 }.FrameTime(kMax)), (Time{ kMax, 24 }));
    QCOMPARE((Rate{ 1, kMax }.FrameTime(kMax)), (Time{ kMax, 1 })); // beyond any time
}

void TestTime::aFrameComesBackFromItsTime_data()
{
    QTest::addColumn<Rate>("rate");
    QTest::addColumn<qint32>("limit"); // frames that fit 31 bits as a value
    QTest::newRow("24") << Rate{ 24, 1 } << kMax;
    QTest::newRow("25") << Rate{ 25, 1 } << kMax;
    QTest::newRow("30000/1001") << Rate{ 30000, 1001 } << kMax / 1001;
    QTest::newRow("12.5") << Rate{ 25, 2 } << kMax / 2;
    QTest::newRow("one in seven seconds") << Rate{ 1, 7 } << kMax / 7;
}

void TestTime::aFrameComesBackFromItsTime()
{
    QFETCH(Rate, rate);
    QFETCH(qint32, limit);
    for (qint32 frame = -3000; frame <= 3000; ++frame)
        QCOMPARE(rate.FrameAt(rate.FrameTime(frame)), frame);
    for (qint32 frame = limit; frame > 1; frame = frame / 3 * 2) {
        QCOMPARE(rate.FrameAt(rate.FrameTime(frame)), frame);
        QCOMPARE(rate.FrameAt(rate.FrameTime(-frame)), -frame);
    }
}

void TestTime::aTimeWithinAFrameIsThatFrame_data()
{
    QTest::addColumn<Rate>("rate");
    QTest::addColumn<Time>("time");
    QTest::addColumn<qint32>("frame");
    const Rate film{ 24, 1 };
    const Rate video{ 30000, 1001 };
    QTest::newRow("the last of frame 0") << film << Time{ 4166, 100000 } << 0;
    QTest::newRow("just in frame 1") << film << Time{ 4167, 100000 } << 1;
    QTest::newRow("just before 0") << film << Time{ -1, kMaxScale } << -1;
    QTest::newRow("the start of frame -1") << film << Time{ -1, 24 } << -1;
    QTest::newRow("just before frame -1") << film << Time{ -4167, 100000 } << -2;
    QTest::newRow("a frame of 25 lies in one of 24") << film << Time{ 24, 25 } << 23;
    QTest::newRow("one second of 30000/1001") << video << Time{ 1, 1 } << 29;
    QTest::newRow("1.001 seconds of it") << video << Time{ 1001, 1000 } << 30;
    QTest::newRow("a large time, just below a frame")
        << Rate{ kMax, 1 } << Time{ kMax - 1, static_cast<quint32>(kMax) } << kMax - 1;
}

void TestTime::aTimeWithinAFrameIsThatFrame()
{
    QFETCH(Rate, rate);
    QFETCH(Time, time);
    QTEST(rate.FrameAt(time), "frame");
}

void TestTime::theFrameOfATimeStaysWithinItsLimits()
{
    const Rate rate{ kMax, 1 };
    QCOMPARE(rate.FrameAt({ kMax, 1 }), kMax);
    QCOMPARE(rate.FrameAt({ kMin, 1 }), -kMax);
    QCOMPARE((Rate{ 1, kMax }.FrameAt({ kMin, kMaxScale })), -1);
}

void TestTime::randomTimesLieInTheirFrame_data()
{
    AddSeeds();
}

void TestTime::randomTimesLieInTheirFrame()
{
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 100000; ++i) {
        const Time time{ RandomValue(random), RandomScale(random) };
        const Rate rate{ static_cast<qint32>(1 + random() % 100000),
            static_cast<qint32>(1 + random() % 2000) };
        const Wide above = Wide(time.value) * rate.num;
        const Wide below = Wide(time.scale) * rate.den;
        const Wide frame = rate.FrameAt(time);
        if (Size(above) >= kMax * below)
            continue; // the limits have a test of their own
        QVERIFY(frame * below <= above);
        QVERIFY(above < (frame + 1) * below);
    }
}

VN_TEST_MAIN(TestTime)

#include "tst_time.moc"
