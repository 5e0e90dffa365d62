#include "panel/Version.h"

#include "testing/TestMain.h"

/// The texts of a build that was told when it happens: SOURCE_DATE_EPOCH names 1 December 2015,
/// 13:16 (see CMakeLists.txt).
class TestVersion : public QObject
{
    Q_OBJECT

private slots:
    void theBuildIsDatedByTheEnvironment();
};

void TestVersion::theBuildIsDatedByTheEnvironment()
{
    QCOMPARE(QByteArray(Version::Name()), QByteArray("morvex v1.0"));
    QCOMPARE(QByteArray(Version::BuildDate()), QByteArray("Dec  1 2015"));
    QCOMPARE(QByteArray(Version::BuildTime()), QByteArray("13:16:00"));
    QVERIFY(QByteArray(Version::GuideAddress()).contains("://"));
}

VN_TEST_MAIN(TestVersion)
#include "tst_version.moc"
