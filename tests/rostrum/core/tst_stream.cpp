#include "CoreTest.h"

#include "core/Stream.h"

#include <map>
#include <random>

using rostrum::Interpolation;
using rostrum::Stream;
using rostrum::StreamValue;
using rostrum::Time;

Q_DECLARE_METATYPE(rostrum::Interpolation)

class TestStream : public QObject
{
    Q_OBJECT

private slots:
    void aStreamWithoutKeysShowsItsConstantAtAnyTime();
    void twoKeysAreSampled_data();
    void twoKeysAreSampled();
    void anEaseTurnsAroundInTheMiddle();
    void allFourComponentsAreInterpolated();
    void aSingleKeyShowsItsValueEverywhere();
    void aNewKeyIsLinearOnBothSides();
    void keysStandInRisingTime();
    void aKeyAtATimeThatHasOneAnswersItsIndexAndChangesNothing();
    void aKeyIsFoundByItsTimeOnAnyScale();
    void keysBeforeATimeAreCounted();
    void deletingAKeyMovesTheLaterOnesDown();
    void withItsLastKeyGoneAStreamShowsItsConstantAgain();
    void streamsAreEqualByConstantAndKeys();
    void copiesShareTheirKeysUntilOneIsChanged();
    void manyKeysBehaveLikeAnOrderedMap_data();
    void manyKeysBehaveLikeAnOrderedMap();
    void aKeptPlaceChangesNoAnswerWhateverItHolds();
};

namespace {

StreamValue Value(double x, double y = 0, double z = 0, double w = 0)
{
    return { x, y, z, w };
}

/// Two keys, of 10 at frame 4 and of 40 at frame 10 of 25.
Stream TwoKeys(Interpolation leftOut, Interpolation rightIn)
{
    Stream stream;
    stream.InsertKey({ 4, 25 }, Value(10));
    stream.InsertKey({ 10, 25 }, Value(40));
    stream.SetKeyInterpolation(0, Interpolation::Linear, leftOut);
    stream.SetKeyInterpolation(1, rightIn, Interpolation::Linear);
    return stream;
}

} // namespace

void TestStream::aStreamWithoutKeysShowsItsConstantAtAnyTime()
{
    const Stream untouched;
    QCOMPARE(untouched.HasKeys(), false);
    QCOMPARE(untouched.ValueAt({ 3, 25 }), Value(0));

    Stream stream(Value(100, 99, 98));
    QCOMPARE(stream.ValueAt({ -3, 25 }), Value(100, 99, 98));
    stream.SetConstant(Value(-7.5));
    QCOMPARE(stream.ValueAt({ 2147483647, 1 }), Value(-7.5));
    QCOMPARE(stream.Constant(), Value(-7.5));
    QCOMPARE(stream.KeyCount(), 0);
}

void TestStream::twoKeysAreSampled_data()
{
    QTest::addColumn<Interpolation>("leftOut");
    QTest::addColumn<Interpolation>("rightIn");
    QTest::addColumn<qint32>("time"); // in 1/100 seconds; the keys are at 16 and 40
    QTest::addColumn<double>("expected");
    const Interpolation hold = Interpolation::Hold;
    const Interpolation linear = Interpolation::Linear;
    const Interpolation bezier = Interpolation::Bezier;
    QTest::newRow("far before the first") << linear << linear << -1000 << 10.0;
    QTest::newRow("just before the first") << linear << linear << 15 << 10.0;
    QTest::newRow("on the first") << linear << linear << 16 << 10.0;
    QTest::newRow("on the last") << linear << linear << 40 << 40.0;
    QTest::newRow("just after the last") << linear << linear << 41 << 40.0;
    QTest::newRow("far after the last") << linear << linear << 100000 << 40.0;
    QTest::newRow("linear, a quarter") << linear << linear << 22 << 17.5;
    QTest::newRow("linear, half") << linear << linear << 28 << 25.0;
    QTest::newRow("hold, a quarter") << hold << linear << 22 << 10.0;
    QTest::newRow("hold, just before the next") << hold << linear << 39 << 10.0;
    QTest::newRow("hold, on the next") << hold << linear << 40 << 40.0;
    QTest::newRow("hold beside an ease") << hold << bezier << 28 << 10.0;
    QTest::newRow("a right side that holds is reached on a line") << linear << hold << 28 << 25.0;
    // 30 times the blend: 3t(1-t)^2 a + 3t^2(1-t) b + t^3, a and b the handles, t a quarter or half
    QTest::newRow("ease both, a quarter") << bezier << bezier << 22 << 10 + 30 * 0.15625;
    QTest::newRow("ease both, half") << bezier << bezier << 28 << 25.0;
    QTest::newRow("ease out alone, a quarter") << bezier << linear << 22 << 10 + 30 * 0.109375;
    QTest::newRow("ease out alone, half") << bezier << linear << 28 << 10 + 30 * 0.375;
    QTest::newRow("ease in alone, half") << linear << bezier << 28 << 10 + 30 * 0.625;
    QTest::newRow("ease in alone, three quarters") << linear << bezier << 34 << 10 + 30 * 0.890625;
}

void TestStream::twoKeysAreSampled()
{
    QFETCH(Interpolation, leftOut);
    QFETCH(Interpolation, rightIn);
    QFETCH(qint32, time);
    const Stream stream = TwoKeys(leftOut, rightIn);
    QTEST(stream.ValueAt({ time, 100 })[0], "expected");
}

void TestStream::anEaseTurnsAroundInTheMiddle()
{
    const Stream stream = TwoKeys(Interpolation::Bezier, Interpolation::Bezier);
    double last = 10;
    for (qint32 time = 161; time <= 400; ++time) {
        const double value = stream.ValueAt({ time, 1000 })[0];
        const double mirrored = stream.ValueAt({ 560 - time, 1000 })[0];
        QVERIFY2(value > last, QByteArray::number(time)); // it only ever rises
        QVERIFY2(qAbs(value + mirrored - 50) < 1e-9, QByteArray::number(time));
        last = value;
    }
}

void TestStream::allFourComponentsAreInterpolated()
{
    Stream stream;
    stream.InsertKey({ 0, 1 }, Value(0, 100, -8, 1));
    stream.InsertKey({ 4, 1 }, Value(40, 0, 8, 1));
    QCOMPARE(stream.ValueAt({ 1, 1 }), Value(10, 75, -4, 1));
}

void TestStream::aSingleKeyShowsItsValueEverywhere()
{
    Stream stream(Value(1));
    stream.InsertKey({ 7, 25 }, Value(2));
    for (const qint32 time : { -7, 0, 7, 8, 700 })
        QCOMPARE(stream.ValueAt({ time, 25 })[0], 2.0);
}

void TestStream::aNewKeyIsLinearOnBothSides()
{
    Stream stream;
    QCOMPARE(stream.InsertKey({ 7, 25 }, Value(2, 3)), 0);
    const rostrum::Key &key = stream.KeyAt(0);
    QCOMPARE(key.time, (Time{ 7, 25 }));
    QCOMPARE(key.value, Value(2, 3));
    QCOMPARE(key.in, Interpolation::Linear);
    QCOMPARE(key.out, Interpolation::Linear);
}

void TestStream::keysStandInRisingTime()
{
    Stream stream;
    QCOMPARE(stream.InsertKey({ 10, 25 }, Value(1)), 0);
    QCOMPARE(stream.InsertKey({ -1, 25 }, Value(2)), 0);
    QCOMPARE(stream.InsertKey({ 20, 25 }, Value(3)), 2);
    QCOMPARE(stream.InsertKey({ 1, 24 }, Value(4)), 1); // a scale of its own, between two others
    QVector<double> values;
    for (int i = 0; i < stream.KeyCount(); ++i)
        values << stream.KeyAt(i).value[0];
    QCOMPARE(values, QVector<double>({ 2, 4, 1, 3 }));
}

void TestStream::aKeyAtATimeThatHasOneAnswersItsIndexAndChangesNothing()
{
    Stream stream = TwoKeys(Interpolation::Hold, Interpolation::Bezier);
    const Stream before = stream;
    QCOMPARE(stream.InsertKey({ 10, 25 }, Value(99)), 1);
    QCOMPARE(stream.InsertKey({ 8, 50 }, Value(99)), 0); // 4 of 25 on another scale
    QCOMPARE(stream, before);
    QCOMPARE(stream.KeyAt(0).time.scale, 25u);
}

void TestStream::aKeyIsFoundByItsTimeOnAnyScale()
{
    Stream stream;
    stream.InsertKey({ 1, 50 }, Value(1));
    stream.InsertKey({ 1, 24 }, Value(2));
    QCOMPARE(stream.FindKey({ 2, 100 }), 0);
    QCOMPARE(stream.FindKey({ 25, 600 }), 1);
    QCOMPARE(stream.FindKey({ 26, 600 }), -1);
    QCOMPARE(stream.FindKey({ 0, 1 }), -1);
    QCOMPARE(stream.FindKey({ 2147483647, 1 }), -1);
    QCOMPARE(Stream().FindKey({ 0, 1 }), -1);
}

void TestStream::keysBeforeATimeAreCounted()
{
    const Stream stream = TwoKeys(Interpolation::Linear, Interpolation::Linear);
    QCOMPARE(stream.KeysBefore({ 0, 1 }), 0);
    QCOMPARE(stream.KeysBefore({ 8, 50 }), 0); // on the first key
    QCOMPARE(stream.KeysBefore({ 9, 50 }), 1);
    QCOMPARE(stream.KeysBefore({ 10, 25 }), 1);
    QCOMPARE(stream.KeysBefore({ 11, 25 }), 2);
}

void TestStream::deletingAKeyMovesTheLaterOnesDown()
{
    Stream stream = TwoKeys(Interpolation::Hold, Interpolation::Linear);
    stream.InsertKey({ 30, 25 }, Value(70));
    stream.DeleteKey(0);
    QCOMPARE(stream.KeyCount(), 2);
    QCOMPARE(stream.KeyAt(0).time, (Time{ 10, 25 }));
    QCOMPARE(stream.KeyAt(1).time, (Time{ 30, 25 }));
    QCOMPARE(stream.ValueAt({ 4, 25 })[0], 40.0);
    stream.DeleteKey(1);
    QCOMPARE(stream.ValueAt({ 30, 25 })[0], 40.0);
}

void TestStream::withItsLastKeyGoneAStreamShowsItsConstantAgain()
{
    Stream stream(Value(5));
    const Stream before = stream;
    stream.InsertKey({ 3, 25 }, Value(8));
    QVERIFY(stream != before);
    stream.DeleteKey(0);
    QCOMPARE(stream.HasKeys(), false);
    QCOMPARE(stream.ValueAt({ 3, 25 })[0], 5.0);
    QCOMPARE(stream, before);
}

void TestStream::streamsAreEqualByConstantAndKeys()
{
    const Stream stream = TwoKeys(Interpolation::Hold, Interpolation::Linear);
    Stream rescaled;
    rescaled.InsertKey({ 8, 50 }, Value(10));
    rescaled.InsertKey({ 240, 600 }, Value(40));
    QVERIFY(rescaled != stream); // the way out of the first key
    rescaled.SetKeyInterpolation(0, Interpolation::Linear, Interpolation::Hold);
    QCOMPARE(rescaled, stream);

    Stream other = stream;
    other.SetKeyValue(1, Value(40, 0.5));
    QVERIFY(other != stream);
    other = stream;
    other.SetKeyInterpolation(1, Interpolation::Bezier, Interpolation::Linear);
    QVERIFY(other != stream);
    other = stream;
    other.SetConstant(Value(1));
    QVERIFY(other != stream);
    QVERIFY(Stream(Value(1)) != Stream(Value(2)));
}

void TestStream::copiesShareTheirKeysUntilOneIsChanged()
{
    Stream stream = TwoKeys(Interpolation::Linear, Interpolation::Linear);
    const Stream copy = stream;
    QCOMPARE(&copy.KeyAt(0), &qAsConst(stream).KeyAt(0));

    stream.InsertKey({ 10, 25 }, Value(1)); // one stands there: nothing to copy for
    QCOMPARE(&copy.KeyAt(0), &qAsConst(stream).KeyAt(0));

    stream.SetKeyValue(0, Value(11));
    QVERIFY(&copy.KeyAt(0) != &qAsConst(stream).KeyAt(0));
    QCOMPARE(copy.KeyAt(0).value[0], 10.0);
    QCOMPARE(stream.KeyAt(0).value[0], 11.0);
}

void TestStream::manyKeysBehaveLikeAnOrderedMap_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : { 3u, 4000000007u })
        QTest::addRow("seed %u", seed) << seed;
}

void TestStream::manyKeysBehaveLikeAnOrderedMap()
{
    QFETCH(quint32, seed);
    std::mt19937 random(seed);
    Stream stream;
    std::map<int, double> expected; // by time in 1/600 seconds
    const auto indexOf = [&](int time) {
        return static_cast<int>(std::distance(expected.begin(), expected.lower_bound(time)));
    };
    for (int i = 0; i < 8000; ++i) {
        const int time = static_cast<int>(random() % 20000) - 10000;
        const int scaled = static_cast<int>(1 + random() % 9);
        const Time sameTime{ time * scaled, 600u * static_cast<quint32>(scaled) };
        if (random() % 8 == 0 && expected.count(time)) {
            stream.DeleteKey(stream.FindKey(sameTime));
            expected.erase(time);
            continue;
        }
        expected.emplace(time, i); // keeps the value of a key that stands
        QCOMPARE(stream.InsertKey(sameTime, Value(i)), indexOf(time));
    }
    QCOMPARE(stream.KeyCount(), static_cast<int>(expected.size()));
    QVERIFY(stream.KeyCount() > 5000);
    int index = 0;
    for (const auto &[time, value] : expected) {
        QCOMPARE(stream.KeyAt(index).time, (Time{ time, 600 }));
        QCOMPARE(stream.ValueAt({ time, 600 })[0], value);
        QCOMPARE(stream.FindKey({ time, 600 }), index++);
    }
}

void TestStream::aKeptPlaceChangesNoAnswerWhateverItHolds()
{
    std::mt19937 random(11);
    Stream stream;
    for (int key = 0; key < 200; ++key)
        stream.InsertKey({ static_cast<int>(random() % 1000), 25 }, Value(key));
    int place = -5;
    for (int i = 0; i < 20000; ++i) {
        if (random() % 16
            == 0) // the keys may have changed since, or the place was another stream's
            place = static_cast<int>(random() % 400) - 100;
        // Mostly on from the last time, as a sheet reads.
        const int frame = random() % 4 == 0 ? static_cast<int>(random() % 1100) - 50 : i % 1000;
        const Time time{ frame, 25 };
        QCOMPARE(stream.KeysBefore(time, &place), stream.KeysBefore(time));
        QCOMPARE(stream.ValueAt(time, &place), stream.ValueAt(time));
    }
}

VN_TEST_MAIN(TestStream)

#include "tst_stream.moc"
