#include "support/vnPath.h"
#include "testing/TestMain.h"

class TestVnPath : public QObject
{
    Q_OBJECT

private slots:
    void aPathIsTakenApart_data();
    void aPathIsTakenApart();
    void theQtVariantGivesTheExtensionInLowerCase();
    void lowerCasingTouchesAsciiOnly();
    void digitsOnly_data();
    void digitsOnly();
    void twoIntegersAreOrdered();
};

void TestVnPath::aPathIsTakenApart_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("filePart");
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("extension");
    QTest::addColumn<QByteArray>("withoutExtension");
    const auto row = [](const char *name, const char *path, const char *filePart,
                         const char *folder, const char *extension, const char *without) {
        QTest::newRow(name) << QByteArray(path) << QByteArray(filePart) << QByteArray(folder)
                            << QByteArray(extension) << QByteArray(without);
    };
    row("slash", "cut/walk01.png", "walk01.png", "cut", "png", "cut/walk01");
    row("backslash", "c:\\cut\\walk01.PNG", "walk01.PNG", "c:\\cut", "PNG", "c:\\cut\\walk01");
    row("both", "c:/cut\\a/walk.tga", "walk.tga", "c:/cut\\a", "tga", "c:/cut\\a/walk");
    row("a bare name", "walk01.png", "walk01.png", "", "png", "walk01");
    row("nothing", "", "", "", "", "");
    row("a slash at position 0 is none", "/walk.png", "/walk.png", "", "png", "/walk");
    row("a backslash at position 0 is none", "\\walk.png", "\\walk.png", "", "png", "\\walk");
    row("a point at position 0 is none", ".png", ".png", "", "", ".png");
    row("a file name's leading point is none", "cut/.png", ".png", "cut", "", "cut/.png");
    row("a point in the folder", "cut.d/walk", "walk", "cut.d", "", "cut.d/walk");
    row("two points", "a/walk.01.png", "walk.01.png", "a", "png", "a/walk.01");
    row("a point at the end", "a/walk.", "walk.", "a", "", "a/walk");
    row("a separator at the end", "cut/", "", "cut", "", "cut/");
    row("beyond ASCII", "été/dessin.png", "dessin.png", "été", "png", "été/dessin");
}

void TestVnPath::aPathIsTakenApart()
{
    QFETCH(QByteArray, path);
    QTEST(QByteArray(vnPath::FilePart(path.constData())), "filePart");
    QTEST(QByteArray(vnPath::Extension(path.constData())), "extension");
    QByteArray folder(path.constData()); // a copy of its own, to be cut in place
    vnPath::CutFilePart(folder.data());
    QTEST(QByteArray(folder.constData()), "folder");
    QByteArray without(path.constData());
    vnPath::CutExtension(without.data());
    QTEST(QByteArray(without.constData()), "withoutExtension");
}

void TestVnPath::theQtVariantGivesTheExtensionInLowerCase()
{
    QCOMPARE(vnPath::LowerExtension(QStringLiteral("a\\Walk01.PNG")), QStringLiteral("png"));
    QCOMPARE(vnPath::LowerExtension(QStringLiteral("a/walk")), QString());
    QCOMPARE(vnPath::LowerExtension(QStringLiteral(".png")), QString());
}

void TestVnPath::lowerCasingTouchesAsciiOnly()
{
    char text[] = "WALK_Été.PNG";
    vnPath::ToLower(text);
    QCOMPARE(text, "walk_Été.png");
}

void TestVnPath::digitsOnly_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("digits") << QByteArray("0123456789") << true;
    QTest::newRow("one digit") << QByteArray("7") << true;
    QTest::newRow("a sign") << QByteArray("-7") << false;
    QTest::newRow("a letter at the end") << QByteArray("12a") << false;
    QTest::newRow("a blank") << QByteArray(" 1") << false;
    QTest::newRow("nothing") << QByteArray("") << false;
}

void TestVnPath::digitsOnly()
{
    QFETCH(QByteArray, text);
    QTEST(vnPath::IsDigitsOnly(text.constData()), "expected");
}

void TestVnPath::twoIntegersAreOrdered()
{
    int low = 9, high = -4;
    vnPath::OrderInts(low, high);
    QCOMPARE(low, -4);
    QCOMPARE(high, 9);
    vnPath::OrderInts(low, high);
    QCOMPARE(low, -4);
    QCOMPARE(high, 9);
}

VN_TEST_MAIN(TestVnPath)

#include "tst_vnpath.moc"
