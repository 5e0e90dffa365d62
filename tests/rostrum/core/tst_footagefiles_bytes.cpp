#include "core/FootageFiles.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <cstdio>

using rostrum::ImportDrawings;
using rostrum::ImportResult;

/// What only a system has whose names are bytes: names that are no text, as an old system wrote them,
/// and names that differ in case alone.
class TestFootageFilesBytes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aSeriesLeavesThemOut();
    void noTextNamesThem_data();
    void noTextNamesThem();
    void ofTwoCasesTheFirstByNameIsFound();

private:
    QString Path(const char *name) const { return folder->filePath(QString::fromUtf8(name)); }
    QByteArray PathInBytes() const;

    QScopedPointer<QTemporaryDir> folder;
};

namespace {

constexpr char kName[] = "\xe9t\xe9"
                         "2.png";

} // namespace

void TestFootageFilesBytes::init()
{
    folder.reset(new QTemporaryDir);
    QImage drawing(7, 5, QImage::Format_ARGB32);
    drawing.fill(Qt::red);
    QVERIFY(drawing.save(Path("été1.png")));
    QVERIFY(drawing.save(Path("été3.png")));
    QCOMPARE(std::rename(Path("été3.png").toUtf8().constData(), PathInBytes().constData()), 0);
    QVERIFY(drawing.save(Path("été3.png")));
}

/// Qt cannot name it either, to take it away.
void TestFootageFilesBytes::cleanup()
{
    QCOMPARE(std::remove(PathInBytes().constData()), 0);
}

QByteArray TestFootageFilesBytes::PathInBytes() const
{
    return folder->path().toUtf8() + '/' + kName;
}

void TestFootageFilesBytes::aSeriesLeavesThemOut()
{
    const ImportResult result = ImportDrawings(Path("été3.png"), /*series=*/true);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.footage.files,
        QStringList({ QStringLiteral("été1.png"), QStringLiteral("été3.png") }));
}

void TestFootageFilesBytes::noTextNamesThem_data()
{
    QTest::addColumn<bool>("series");
    QTest::newRow("as a series") << true;
    QTest::newRow("as a still") << false;
}

void TestFootageFilesBytes::noTextNamesThem()
{
    QFETCH(bool, series);
    // What a text holds in their place are signs of replacement.
    QCOMPARE(ImportDrawings(Path(kName), series).Ok(), false);
}

/// The listing of a folder comes in any order; a dozen names make luck unlikely.
void TestFootageFilesBytes::ofTwoCasesTheFirstByNameIsFound()
{
    for (int i = 0; i < 12; ++i) {
        const QString name = QStringLiteral("walk%1.png").arg(i);
        for (const QString &made :
            { QString(name).replace(0, 1, QLatin1Char('W')), name.toUpper() })
            QVERIFY(QFile::copy(Path("été1.png"), folder->filePath(made)));
    }
    for (int i = 0; i < 12; ++i) {
        const QString name = QStringLiteral("walk%1.png").arg(i);
        QCOMPARE(rostrum::RealFileName(folder->path(), name), name.toUpper());
        const QString exact = QString(name).replace(0, 1, QLatin1Char('W'));
        QCOMPARE(rostrum::RealFileName(folder->path(), exact), exact);
    }
}

VN_TEST_MAIN(TestFootageFilesBytes)

#include "tst_footagefiles_bytes.moc"
