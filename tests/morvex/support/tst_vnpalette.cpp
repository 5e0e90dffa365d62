#include "support/vnPalette.h"
#include "testing/TestMain.h"

#include <QPalette>

namespace {

const QList<QPalette::ColorGroup> kGroups{ QPalette::Active, QPalette::Inactive,
    QPalette::Disabled };

/// A palette in which every role of every group has a colour of its own.
QPalette Distinct()
{
    QPalette palette;
    for (const QPalette::ColorGroup group : kGroups) {
        for (int role = 0; role < QPalette::NColorRoles; ++role)
            palette.setColor(
                group, static_cast<QPalette::ColorRole>(role), QColor(role + 1, 7 * role, group));
    }
    return palette;
}

struct Row
{
    const char *name;
    QPalette::ColorRole role;
    QRgb darkLow, darkHigh; // "Dark AE" at range 0 and 1
    QRgb lightLow, lightHigh; // "Light AE"
    QRgb test; // "Color Test"
};

constexpr QRgb Rgb(int red, int green, int blue)
{
    return qRgb(red, green, blue);
}

constexpr QRgb Grey(int level)
{
    return qRgb(level, level, level);
}

constexpr Row kRows[] = {
    { "Window", QPalette::Window, Grey(38), Grey(88), Grey(130), Grey(242), Rgb(0, 255, 128) },
    { "WindowText", QPalette::WindowText, Grey(165), Grey(255), Grey(0), Grey(75),
        Rgb(255, 128, 0) },
    { "Button", QPalette::Button, Grey(38), Grey(88), Grey(130), Grey(242), Rgb(0, 255, 0) },
    { "ButtonText", QPalette::ButtonText, Grey(165), Grey(255), Grey(0), Grey(75),
        Rgb(25, 128, 200) },
    { "Text", QPalette::Text, Grey(165), Grey(255), Grey(0), Grey(75), Rgb(255, 28, 70) },
    { "Light", QPalette::Light, Rgb(210, 154, 0), Rgb(210, 154, 0), Rgb(210, 154, 0),
        Rgb(210, 154, 0), Rgb(210, 0, 0) },
    { "Base", QPalette::Base, Grey(13), Grey(69), Grey(104), Grey(203), Rgb(255, 0, 0) },
    { "AlternateBase", QPalette::AlternateBase, Grey(13), Grey(69), Grey(104), Grey(203),
        Rgb(127, 128, 30) },
    { "Highlight", QPalette::Highlight, Grey(158), Grey(205), Grey(75), Grey(140),
        Rgb(75, 0, 140) },
    { "HighlightedText", QPalette::HighlightedText, Grey(25), Grey(25), Grey(232), Grey(255),
        Rgb(232, 0, 255) },
    { "Mid", QPalette::Mid, Grey(38), Grey(88), Grey(130), Grey(242), Rgb(100, 100, 190) },
    { "Shadow", QPalette::Shadow, Grey(0), Grey(0), Grey(0), Grey(0), Rgb(0, 34, 200) },
    { "BrightText", QPalette::BrightText, Rgb(180, 135, 30), Rgb(180, 135, 30), Rgb(28, 52, 96),
        Rgb(40, 135, 220), Rgb(28, 52, 96) },
};

constexpr int kDark = 1, kLight = 2, kColorTest = 3;

QRgb Applied(QPalette::ColorRole role, int set, double range)
{
    QPalette palette = Distinct();
    ApplyColorSet(palette, set, range);
    return palette.color(QPalette::Active, role).rgb();
}

} // namespace

class TestVnPalette : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void systemIsWhatStoodAtTheFirstCall_data();
    void systemIsWhatStoodAtTheFirstCall();
    void systemIsTheSameAtEveryRange();
    void eachRoleTakesItsColourAtBothEnds_data();
    void eachRoleTakesItsColourAtBothEnds();
    void theRangeWalksAlongTheBand_data();
    void theRangeWalksAlongTheBand();
    void aColourIsCutTowardZero();
    void aRangeOutsideTheBandIsNotLimited();
    void aSetThatDoesNotExistDoesNothing_data();
    void aSetThatDoesNotExistDoesNothing();
    void sevenRolesAreLoudInEverySet_data();
    void sevenRolesAreLoudInEverySet();
    void everyGroupTakesTheColourAndAllIsOpaque();
    void theOneRoleLeftAloneKeepsItsColour();

private:
    QPalette found = Distinct(); // what the application wore at the first call
};

/// The first call takes the application's colours; the palette that is set behind it is none of its
/// business, and neither is the palette that is passed in.
void TestVnPalette::initTestCase()
{
    QApplication::setPalette(found);
    QPalette palette;
    ApplyColorSet(palette, kDark, 1.0);
    QApplication::setPalette(palette);
}

void TestVnPalette::systemIsWhatStoodAtTheFirstCall_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < 13; ++i)
        QTest::newRow(kRows[i].name) << i;
}

void TestVnPalette::systemIsWhatStoodAtTheFirstCall()
{
    QFETCH(int, row);
    const QPalette::ColorRole role = kRows[row].role;
    const QRgb expected
        = role == QPalette::Button ? Grey(216) : found.color(QPalette::Active, role).rgb();
    QCOMPARE(Applied(role, /*set=*/0, 0.3), expected);
}

void TestVnPalette::systemIsTheSameAtEveryRange()
{
    QPalette low = Distinct(), high = Distinct(), beyond = Distinct();
    ApplyColorSet(low, 0, 0.0);
    ApplyColorSet(high, 0, 1.0);
    ApplyColorSet(beyond, 0, 17.5);
    QVERIFY(low == high);
    QVERIFY(low == beyond);
}

void TestVnPalette::eachRoleTakesItsColourAtBothEnds_data()
{
    systemIsWhatStoodAtTheFirstCall_data();
}

void TestVnPalette::eachRoleTakesItsColourAtBothEnds()
{
    QFETCH(int, row);
    const Row &expected = kRows[row];
    QCOMPARE(Applied(expected.role, kDark, 0.0), expected.darkLow);
    QCOMPARE(Applied(expected.role, kDark, 1.0), expected.darkHigh);
    QCOMPARE(Applied(expected.role, kLight, 0.0), expected.lightLow);
    QCOMPARE(Applied(expected.role, kLight, 1.0), expected.lightHigh);
    QCOMPARE(Applied(expected.role, kColorTest, 0.0), expected.test);
    QCOMPARE(Applied(expected.role, kColorTest, 1.0), expected.test);
}

void TestVnPalette::theRangeWalksAlongTheBand_data()
{
    QTest::addColumn<double>("range");
    QTest::addColumn<int>("level");
    QTest::newRow("the dark end") << 0.0 << 38;
    QTest::newRow("the middle") << 0.5 << 63;
    QTest::newRow("the slider's last step") << 0.99 << 87; // 87.5
    QTest::newRow("the light end") << 1.0 << 88;
}

void TestVnPalette::theRangeWalksAlongTheBand()
{
    QFETCH(double, range);
    QFETCH(int, level);
    QCOMPARE(Applied(QPalette::Window, kDark, range), Grey(level));
}

void TestVnPalette::aColourIsCutTowardZero()
{
    // 28 + 12 * 0.2 = 30.4, 52 + 83 * 0.2 = 68.6, 96 + 124 * 0.2 = 120.8
    QCOMPARE(Applied(QPalette::BrightText, kLight, 0.2), Rgb(30, 68, 120));
}

void TestVnPalette::aRangeOutsideTheBandIsNotLimited()
{
    QCOMPARE(Applied(QPalette::Window, kDark, 2.0), Grey(138)); // beyond the light end
    QCOMPARE(Applied(QPalette::Window, kDark, -0.5), Grey(13)); // before the dark end
    for (const double range : { 10.0, -10.0, 1.0e300 }) {
        QPalette palette = Distinct();
        ApplyColorSet(palette, kDark, range);
        QVERIFY(!palette.color(QPalette::Window).isValid()); // QColor takes no such number
        QCOMPARE(palette.color(QPalette::Shadow).rgb(), Grey(0));
    }
}

void TestVnPalette::aSetThatDoesNotExistDoesNothing_data()
{
    QTest::addColumn<int>("set");
    QTest::newRow("the combo box's fifth item") << 4;
    QTest::newRow("no item at all") << -1;
    QTest::newRow("far beyond") << 1000000;
}

void TestVnPalette::aSetThatDoesNotExistDoesNothing()
{
    QFETCH(int, set);
    QPalette palette = Distinct();
    ApplyColorSet(palette, set, 0.5);
    QVERIFY(palette == Distinct());
}

void TestVnPalette::sevenRolesAreLoudInEverySet_data()
{
    QTest::addColumn<int>("set");
    QTest::newRow("System") << 0;
    QTest::newRow("Dark AE") << kDark;
    QTest::newRow("Light AE") << kLight;
    QTest::newRow("Color Test") << kColorTest;
}

void TestVnPalette::sevenRolesAreLoudInEverySet()
{
    QFETCH(int, set);
    QCOMPARE(Applied(QPalette::Midlight, set, 0.7), Rgb(255, 0, 255));
    QCOMPARE(Applied(QPalette::Dark, set, 0.7), Rgb(128, 0, 128));
    QCOMPARE(Applied(QPalette::Link, set, 0.7), Rgb(255, 0, 0));
    QCOMPARE(Applied(QPalette::LinkVisited, set, 0.7), Rgb(0, 255, 0));
    QCOMPARE(Applied(QPalette::NoRole, set, 0.7), Rgb(0, 0, 255));
    QCOMPARE(Applied(QPalette::ToolTipBase, set, 0.7), Rgb(0, 255, 255));
    QCOMPARE(Applied(QPalette::ToolTipText, set, 0.7), Rgb(255, 255, 0));
}

void TestVnPalette::everyGroupTakesTheColourAndAllIsOpaque()
{
    QPalette palette = Distinct();
    palette.setColor(QPalette::Window, QColor(1, 2, 3, 4));
    ApplyColorSet(palette, kDark, 1.0);
    for (const QPalette::ColorGroup group : kGroups) {
        for (const Row &row : kRows)
            QCOMPARE(palette.color(group, row.role), QColor(row.darkHigh));
        QCOMPARE(palette.color(group, QPalette::Link), QColor(255, 0, 0));
    }
}

void TestVnPalette::theOneRoleLeftAloneKeepsItsColour()
{
    QPalette palette = Distinct();
    ApplyColorSet(palette, kDark, 1.0);
    for (const QPalette::ColorGroup group : kGroups)
        QCOMPARE(palette.color(group, QPalette::PlaceholderText),
            Distinct().color(group, QPalette::PlaceholderText));
}

VN_TEST_MAIN(TestVnPalette)

#include "tst_vnpalette.moc"
