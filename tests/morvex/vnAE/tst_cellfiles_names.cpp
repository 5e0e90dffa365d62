#include "support/vnLog.h"
#include "testing/TestMain.h"
#include "vnAE/CellFiles.h"

#include <QRegularExpression>

namespace {

/// The last line of the log, without the end mark; the source line is replaced by "N".
QByteArray LastLogLine()
{
    QString text = QString::fromUtf8(vnLog::Instance()->Text());
    text.chop(5); // <END>
    text = text.mid(text.lastIndexOf(QLatin1Char('\n')) + 1);
    return text.replace(QRegularExpression(QStringLiteral("line \\d+")), QStringLiteral("line N"))
        .toUtf8();
}

const char kErrorLine[] = "-ERR B- line N, file(morvex/vnAE/CellFiles.cpp)";

QByteArray Filled(int length, char letter = 'w')
{
    return QByteArray(length, letter);
}

CellPathParts Parts(const QByteArray &folder, const QByteArray &root, const QByteArray &digits,
    const QByteArray &extension)
{
    CellPathParts parts;
    qstrncpy(parts.folder, folder.constData(), kCellNameBytes);
    qstrncpy(parts.root, root.constData(), kCellNameBytes);
    qstrncpy(parts.digits, digits.constData(), kCellNameBytes);
    qstrncpy(parts.extension, extension.constData(), kCellNameBytes);
    return parts;
}

} // namespace

class TestCellFilesNames : public QObject
{
    Q_OBJECT

private slots:
    void init() { vnLog::Instance()->Clear(); }

    void aPathIsTakenApart_data();
    void aPathIsTakenApart();
    void aPathIsPutTogether_data();
    void aPathIsPutTogether();
    void aPartThatJustFitsIsTaken();
    void aPartThatDoesNotFitIsRefusedAndLogged_data();
    void aPartThatDoesNotFitIsRefusedAndLogged();
    void aPathThatDoesNotFitIsRefusedAndLogged();
    void aDrawingsNameIsRead_data();
    void aDrawingsNameIsRead();
    void aRootThatDoesNotFitIsNoDrawing();
    void oneSeriesIsRecognised_data();
    void oneSeriesIsRecognised();
    void eachCodeHasItsMessage_data();
    void eachCodeHasItsMessage();
    void aMessageThatDoesNotFitIsRefusedAndLogged();
};

void TestCellFilesNames::aPathIsTakenApart_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QByteArray>("digits");
    QTest::addColumn<QByteArray>("extension");
    const auto row = [](const char *name, const char *path, const char *folder, const char *root,
                         const char *digits, const char *extension) {
        QTest::newRow(name) << QByteArray(path) << QByteArray(folder) << QByteArray(root)
                            << QByteArray(digits) << QByteArray(extension);
    };
    row("slash", "cut/walk0012.png", "cut", "walk", "0012", "png");
    row("backslash, case is kept", "c:\\Cut\\Walk07.PNG", "c:\\Cut", "Walk", "07", "PNG");
    row("both separators", "c:/cut\\a/walk1.tga", "c:/cut\\a", "walk", "1", "tga");
    row("a bare name", "walk12.psd", "", "walk", "12", "psd");
    row("nothing", "", "", "", "", "");
    row("the root folder of a file system", "/walk3.png", "", "walk", "3", "png");
    row("the root folder, backslash", "\\walk3.png", "", "walk", "3", "png");
    row("the root folder of a drive", "D:\\walk3.png", "D:", "walk", "3", "png");
    row("a share", "\\\\server\\cut\\walk3.png", "\\\\server\\cut", "walk", "3", "png");
    row("two slashes at the start", "//walk3.png", "/", "walk", "3", "png");
    row("an empty root", "cut/0042.png", "cut", "", "0042", "png");
    row("no digits", "cut/walk.png", "cut", "walk", "", "png");
    row("the last run of digits alone", "cut/s12_walk_b34.png", "cut", "s12_walk_b", "34", "png");
    row("digits, then a letter", "cut/walk12a.png", "cut", "walk12a", "", "png");
    row("a root that ends in a point", "cut/walk.0012.png", "cut", "walk.", "0012", "png");
    row("a root that ends in a dash", "cut/walk-12.png", "cut", "walk-", "12", "png");
    row("a root of a point", "cut/.12.png", "cut", ".", "12", "png");
    row("a leading point starts no extension", "cut/.12", "cut", ".", "12", "");
    row("a leading point in the root folder", "/.12", "", ".", "12", "");
    row("no extension", "cut/walk12", "cut", "walk", "12", "");
    row("a point at the end", "cut/walk12.", "cut", "walk", "12", "");
    row("a point in the folder", "cut.d/walk12", "cut.d", "walk", "12", "");
    row("digits in extension and folder", "cut7/walk.mp4", "cut7", "walk", "", "mp4");
    row("digits as the extension", "cut/walk.0012", "cut", "walk", "", "0012");
    row("a separator at the end", "cut/a/", "cut/a", "", "", "");
    row("a blank", "my cut/the walk 12.png", "my cut", "the walk ", "12", "png");
    row("beyond ASCII", "Été/Œuvre_é12.png", "Été", "Œuvre_é", "12", "png");
    row("digits of another script are letters", "cut/walk１２.png", "cut", "walk１２", "", "png");
}

void TestCellFilesNames::aPathIsTakenApart()
{
    QFETCH(QByteArray, path);
    CellPathParts parts;
    QVERIFY(SplitCellPath(path.constData(), parts));
    QTEST(QByteArray(parts.folder), "folder");
    QTEST(QByteArray(parts.root), "root");
    QTEST(QByteArray(parts.digits), "digits");
    QTEST(QByteArray(parts.extension), "extension");

    CellName text;
    QVERIFY(GetCellRoot(path.constData(), text));
    QTEST(QByteArray(text), "root");
    QVERIFY(GetCellDigits(path.constData(), text));
    QTEST(QByteArray(text), "digits");
    QVERIFY(GetFileStem(path.constData(), text));
    QFETCH(QByteArray, root);
    QFETCH(QByteArray, digits);
    QCOMPARE(QByteArray(text), root + digits);
    QCOMPARE(vnLog::Instance()->Text(), "<END>");
}

void TestCellFilesNames::aPathIsPutTogether_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("extension");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("in a folder") << QByteArray("c:\\cut") << QByteArray("PNG")
                                 << QByteArray("c:\\cut/walk_0012.PNG");
    QTest::newRow("in no folder") << QByteArray("") << QByteArray("tga")
                                  << QByteArray("walk_0012.tga");
    QTest::newRow("without an extension the point stays")
        << QByteArray("cut") << QByteArray("") << QByteArray("cut/walk_0012.");
}

void TestCellFilesNames::aPathIsPutTogether()
{
    QFETCH(QByteArray, folder);
    QFETCH(QByteArray, extension);
    CellPath path;
    QVERIFY(MakeCellPath(path, Parts(folder, "walk_", "0012", extension)));
    QTEST(QByteArray(path), "expected");
}

void TestCellFilesNames::aPartThatJustFitsIsTaken()
{
    const QByteArray folder = Filled(255, 'f'), root = Filled(255 - 8),
                     path = folder + '/' + root + "0012.png";
    CellPathParts parts;
    QVERIFY(SplitCellPath(path.constData(), parts));
    QCOMPARE(QByteArray(parts.folder), folder);
    QCOMPARE(QByteArray(parts.root), root);

    CellPath made;
    QVERIFY(MakeCellPath(made, parts));
    QCOMPARE(QByteArray(made), path);
    QCOMPARE(int(sizeof made), path.size() + 1); // the longest folder and name fill the buffer
}

void TestCellFilesNames::aPartThatDoesNotFitIsRefusedAndLogged_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<bool>("root");
    QTest::addColumn<bool>("digits");
    QTest::addColumn<bool>("stem");
    const QByteArray png = ".png";
    QTest::newRow("folder") << Filled(256) + "/walk1.png" << true << true << true;
    QTest::newRow("root") << "cut/" + Filled(256) + "1.png" << false << true << false;
    QTest::newRow("digits") << "cut/walk" + Filled(256, '1') + png << true << false << false;
    QTest::newRow("extension") << "cut/walk1." + Filled(256) << true << true << true;
    QTest::newRow("far too long") << Filled(100000, '1') + png << true << false << false;
}

void TestCellFilesNames::aPartThatDoesNotFitIsRefusedAndLogged()
{
    QFETCH(QByteArray, path);
    CellName text;
    QTEST(GetCellRoot(path.constData(), text), "root");
    QTEST(GetCellDigits(path.constData(), text), "digits");
    QTEST(GetFileStem(path.constData(), text), "stem");

    vnLog::Instance()->Clear();
    CellPathParts parts;
    QVERIFY(!SplitCellPath(path.constData(), parts));
    QCOMPARE(LastLogLine(), QByteArray(kErrorLine));
    QCOMPARE(parts.folder, "");
    QCOMPARE(parts.root, "");
    QCOMPARE(parts.digits, "");
    QCOMPARE(parts.extension, "");
}

void TestCellFilesNames::aPathThatDoesNotFitIsRefusedAndLogged()
{
    CellPath path = "before";
    QVERIFY(!MakeCellPath(path, Parts(Filled(255), Filled(255), "1", "png")));
    QCOMPARE(path, "");
    QCOMPARE(LastLogLine(), QByteArray(kErrorLine));
}

void TestCellFilesNames::aDrawingsNameIsRead_data()
{
    QTest::addColumn<QByteArray>("fileName");
    QTest::addColumn<bool>("isDrawing");
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<int>("number");
    const auto good = [](const char *name, const char *fileName, const char *root, int number) {
        QTest::newRow(name) << QByteArray(fileName) << true << QByteArray(root) << number;
    };
    const auto bad = [](const char *name, const char *fileName) {
        QTest::newRow(name) << QByteArray(fileName) << false << QByteArray() << -1;
    };
    good("png", "walk_0012.png", "walk_", 12);
    good("tga", "walk_0012.tga", "walk_", 12);
    good("psd", "walk_0012.psd", "walk_", 12);
    good("upper case", "WALK_0012.PNG", "walk_", 12);
    good("mixed case", "Walk_0012.TgA", "walk_", 12);
    good("in a folder", "cut\\a/Walk12.png", "walk", 12);
    good("an empty root", "0042.png", "", 42);
    good("leading zeros are decimal", "walk0010.png", "walk", 10);
    good("number 0", "walk0000.png", "walk", 0);
    good("the highest number", "walk2147483647.png", "walk", 2147483647);
    good("one beyond it", "walk2147483648.png", "walk", 2147483647);
    good("far beyond it", "walk99999999999999999999999999.png", "walk", 2147483647);
    good("a point before the digits", "walk.12.png", "walk.", 12);
    good("letters beyond ASCII keep their case", "ÉTÉ12.PNG", "ÉtÉ", 12);
    bad("no digits", "walk.png");
    bad("digits not at the end", "walk12b.png");
    bad("another extension", "walk12.jpg");
    bad("part of an extension", "walk12.pn");
    bad("an extension and more", "walk12.pngx");
    bad("no extension", "walk12");
    bad("no name", ".png");
    bad("nothing", "");
    bad("a folder alone", "walk12.png/");
}

void TestCellFilesNames::aDrawingsNameIsRead()
{
    QFETCH(QByteArray, fileName);
    CellName root = "before";
    qint32 number = 77;
    QTEST(ParseCellFileName(fileName.constData(), root, number), "isDrawing");
    QTEST(QByteArray(root), "root");
    QTEST(number, "number");
}

void TestCellFilesNames::aRootThatDoesNotFitIsNoDrawing()
{
    CellName root = "before";
    qint32 number = 77;
    QVERIFY(!ParseCellFileName((Filled(256) + "12.png").constData(), root, number));
    QCOMPARE(root, "");
    QCOMPARE(number, -1);
    QCOMPARE(LastLogLine(), QByteArray(kErrorLine));
}

void TestCellFilesNames::oneSeriesIsRecognised_data()
{
    QTest::addColumn<QByteArray>("inProject");
    QTest::addColumn<QByteArray>("wanted");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("fileCount");
    QTest::addColumn<bool>("same");
    const auto row = [](const char *name, const QByteArray &inProject, const QByteArray &wanted,
                         int kind, int fileCount, bool same) {
        QTest::newRow(name) << inProject << wanted << kind << fileCount << same;
    };
    constexpr int sequence = 1, fixe = 2;
    row("any file of the series", "c:\\cut\\walk0001.png", "c:\\cut\\walk0017.png", sequence, 24,
        true);
    row("the series by its root", "cut/walk0001.png", "cut/walk.png", sequence, 24, true);
    row("another padding", "cut/walk0001.png", "cut/walk7.png", sequence, 24, true);
    row("a series of one file", "cut/walk0001.png", "cut/walk.png", sequence, 1, true);
    row("any case", "C:/CUT/WALK0001.PNG", "c:/cut/Walk2.png", sequence, 24, true);
    row("other separators", "c:/cut\\a/walk1.png", "c:\\cut/a\\walk2.png", sequence, 24, true);
    row("another folder", "c:/cut_a/walk1.png", "c:/cut_b/walk1.png", sequence, 24, false);
    row("a folder below", "c:/cut/a/walk1.png", "c:/cut/walk1.png", sequence, 24, false);
    row("another extension", "cut/walk1.png", "cut/walk1.tga", sequence, 24, false);
    row("another root", "cut/walk_b1.png", "cut/walk_1.png", sequence, 24, false);
    row("beyond ASCII", "été/marché1.png", "été/MARCHé2.png", sequence, 24, true);
    row("an accent composed and not", "cut/marché1.png",
        "cut/marche\xCC\x81"
        "1.png",
        sequence, 24, false);
    row("paths longer than a name buffer", Filled(300, 'F') + "/walk1.png",
        Filled(300, 'f') + "/walk2.png", sequence, 24, true);
    row("a still in the project as one file", "cut/frame12.png", "cut/frame12.png", fixe, 1, true);
    row("a still, any case", "CUT\\FRAME12.PNG", "cut/frame12.png", fixe, 1, true);
    row("a still that is the first of a series there", "cut/frame12.png", "cut/frame12.png", fixe,
        24, false);
    row("a still, two files are several", "cut/frame12.png", "cut/frame12.png", fixe, 2, false);
    row("a still of another number", "cut/frame12.png", "cut/frame13.png", fixe, 1, false);
    row("a still of another padding", "cut/frame12.png", "cut/frame012.png", fixe, 1, false);
    row("a still of another extension", "cut/frame12.png", "cut/frame12.tga", fixe, 1, false);
    row("a still in another folder", "a/frame12.png", "b/frame12.png", fixe, 1, false);
    row("a still of any extension", "cut/film.mov", "cut/film.mov", fixe, 1, true);
    row("a film kind", "cut/film.mov", "cut/film.mov", /*kind=*/3, 1, false);
    row("no kind", "cut/walk1.png", "cut/walk1.png", /*kind=*/0, 1, false);
}

void TestCellFilesNames::oneSeriesIsRecognised()
{
    QFETCH(QByteArray, inProject);
    QFETCH(QByteArray, wanted);
    QFETCH(int, kind);
    QFETCH(int, fileCount);
    QTEST(SameCellSerie(inProject.constData(), wanted.constData(), kind, fileCount), "same");
}

void TestCellFilesNames::eachCodeHasItsMessage_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("known");
    QTest::addColumn<QByteArray>("text");
    const auto good = [](int code, const char *text) {
        QTest::addRow("code %d", code) << code << true << QByteArray(text);
    };
    good(1, "[walk3.png]Aucune images du type c:\\cut/walk[0-9][tga/png]");
    good(11, "Echec ouverture fichier [c:\\cut/walk3.png]");
    good(12, "Extension non reconnue [c:\\cut/walk3.png]");
    good(13, "Mauvais parametres [c:\\cut/walk3.png]");
    good(14, "Echec ouverture image [c:\\cut/walk3.png]");
    good(21, "Echec ecriture image Zero [c:\\cut/walk*]");
    good(22, "Echec ecriture image Zero [c:\\cut/walk*]");
    for (const int code : { -1, 0, 2, 15, 23 })
        QTest::addRow("no message for code %d", code) << code << false << QByteArray();
}

void TestCellFilesNames::eachCodeHasItsMessage()
{
    QFETCH(int, code);
    ImportText text = "before";
    QTEST(FormatImportMessage(text, code, "c:\\cut", "walk", "walk3.png"), "known");
    QTEST(QByteArray(text), "text");
}

void TestCellFilesNames::aMessageThatDoesNotFitIsRefusedAndLogged()
{
    for (const int code : { 1, 11, 12, 13, 14, 21, 22 }) {
        vnLog::Instance()->Clear();
        ImportText text = "before";
        QVERIFY(!FormatImportMessage(text, code, Filled(990).constData(), "walk", "walk3.png"));
        QCOMPARE(text, "");
        QCOMPARE(LastLogLine(), QByteArray(kErrorLine));
    }
    ImportText text;
    const QByteArray longest = Filled(255);
    QVERIFY(FormatImportMessage(text, /*code=*/1, longest.constData(), longest.constData(),
        longest.constData())); // names of full length fit each message
}

VN_TEST_MAIN(TestCellFilesNames)

#include "tst_cellfiles_names.moc"
