#include "BoundSheet.h"
#include "panel/Doc.h"
#include "support/vnLog.h"

#include <QBitmap>

/// The sheet over a composition: what it shows and takes, kind of column by kind of column. Column
/// 0 of most sheets is "walk", a blank series of 9 images; "run" is one that is not blank.
class TestSheet : public QObject
{
    Q_OBJECT

private slots:
    void aNewSheetIsEmptyAndReadsNoHost();
    void aCompositionWithoutLayersHasItsRowsAndNoColumns();
    void withoutACompositionTheSheetEmptiesItself();
    void columnNames_data();
    void columnNames();
    void aSeriesShowsItsRuns();
    void theFirstRowNeverShowsATilde();
    void aFixeColumnShowsItsSpanAlone();
    void everyKindOfLayerIsAColumn();
    void aRampMadeByHandReadsBackFrameByFrame();
    void numbersThatNoDrawingHasReadByTheLoadsRule();
    void theRowLabelIsThereForWhoAsks();
    void labelsColour();

    void typedNumbers_data();
    void typedNumbers();
    void typedTexts_data();
    void typedTexts();
    void typingIntoTheLastRowWritesOneKey();
    void typingBetweenWritesTwoKeys();
    void aRunThatBeginsFurtherDownKeepsItsRows();
    void aKeyBeyondTheLastImageStaysWhenACellAboveItIsWritten();
    void numbersOfFiveDigitsAreNoDrawing();
    void aTypedFixeCellChangesNothingAndIsAnnounced();
    void noCommandReachesAFixeColumnButTheExpos();

    void exposOfEachKind_data();
    void exposOfEachKind();
    void endExpoOnTheLastRowChangesNoCell();
    void aSpanThatTheHostRefusesIsShownUntilTheReload();
    void exposOfTwoColumnsAtOnce();

    void swappedColumns();
    void aSwapOutOfTheSheetDoesNothing();

    void keyMarksStandInTheirColumn();
    void clickingMovesTheDocumentAndNotTheHost();
    void theDocumentMovesTheTable();
    void typingSelectsTheColumnsLayer();
    void afterAReloadTheLastColumnIsTheCurrentOne();

    void aLargeCompositionIsShownClipped_data();
    void aLargeCompositionIsShownClipped();
    void theClippedSheetKeepsToItsRows();
    void cellsOutOfTheTableAreZeroAndTakeNothing();
};

namespace {

const int kRows = 12;

/// Blank, 9 images: 4 on rows 0 to 2, 7 on rows 3 to 11.
ColumnPlan Walk()
{
    return SeriesColumn("walk", 9, { { 0, 4 }, { 3, 7 } });
}

/// Not blank, 9 images: 2 on rows 0 to 4, 5 on rows 5 to 11.
ColumnPlan Run()
{
    return SeriesColumn("run", 9, { { 0, 2 }, { 5, 5 } }, QStringLiteral("psd"));
}

QStringList Repeated(const QString &text, int times)
{
    QStringList texts;
    for (int i = 0; i < times; ++i)
        texts << text;
    return texts;
}

const QString kTilde = QStringLiteral(" ~ ");

/// Layers of a sheet as the layer was before a change of another name.
void Rename(BoundSheet &sheet, int col, const QString &name)
{
    sheet.EditLayerOf(col, "by hand").name = name.toUtf8();
    sheet.Doc().CloseLooseEnds();
}

QVector<rostrum::LayerId> Selection(BoundSheet &sheet)
{
    return sheet.Doc().view.selections.value(sheet.composition);
}

} // namespace

void TestSheet::aNewSheetIsEmptyAndReadsNoHost()
{
    BoundSheet sheet({ Walk() }, kRows);
    sheet.host.GetTrace().Start();
    WinGridDataAE grid;
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(grid.GetNbc(), 0);
    QCOMPARE(grid.GetNbl(), 0);
    QCOMPARE(grid.GetCellValue(0, 0), 0);
    QVERIFY(!grid.IsBusy());
    QCOMPARE(grid.GetEmptyValue(0), 0);
    QCOMPARE(grid.GetColWidth(), 48);
}

void TestSheet::aCompositionWithoutLayersHasItsRowsAndNoColumns()
{
    BoundSheet sheet({}, 7);
    sheet.host.GetTrace().Start();
    sheet.Show();
    QCOMPARE(sheet.grid.GetNbc(), 0);
    QCOMPARE(sheet.grid.GetNbl(), 7);
    QCOMPARE(sheet.grid.columnCount(), 0);
    QCOMPARE(sheet.grid.rowCount(), 7);
    QVERIFY(sheet.host.GetTrace().Text().contains("AEGP_SetCompDuration(composition "));
    QVERIFY(sheet.host.GetTrace().Text().contains(", 7/25) = 0"));
    sheet.Robot().Key(Qt::Key_Insert); // no cell, no selection
    QCOMPARE(
        sheet.Robot().TakeBoxes(), QStringList{ QStringLiteral("Warning: Select only One Bloc") });
}

void TestSheet::withoutACompositionTheSheetEmptiesItself()
{
    BoundSheet sheet({ Walk(), Run() }, kRows);
    sheet.Show();
    QCOMPARE(sheet.grid.columnCount(), 2);
    sheet.SelectCompo("");
    UpdateLevel level = UpdNone;
    void *caller = nullptr;
    connect(
        &sheet.grid, &WExpoGrid::SigSomethingHasChanged, this, [&](UpdateLevel upd, void *from) {
            level = upd;
            caller = from;
        });
    QTest::ignoreMessage(QtWarningMsg, "NoCompoSelected => Init nbc nbl");
    QVERIFY(sheet.grid.UpdateFromCompo());
    QCOMPARE(sheet.grid.columnCount(), 0);
    QCOMPARE(sheet.grid.rowCount(), 0);
    QCOMPARE(level, UpdAll);
    QVERIFY(caller == &sheet.grid);
    QVERIFY(!sheet.Doc().IsGroupOpen());
}

void TestSheet::columnNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyz0123");
    QTest::newRow("30 letters: the first 19") << letters << letters.left(19);
    QTest::newRow("20 letters: the first 19") << letters.left(20) << letters.left(19);
    QTest::newRow("19 letters: all") << letters.left(19) << letters.left(19);
    QTest::newRow("one letter") << QStringLiteral("A") << QStringLiteral("A");
    // Two, three and four bytes a character: 19 bytes end inside of one.
    QTest::newRow("accents: 9 of 15") << QString(15, QChar(0xE9)) << QString(9, QChar(0xE9));
    QTest::newRow("accents behind a letter: 9 of 12") << QLatin1Char('a') + QString(12, QChar(0xE9))
                                                      << QLatin1Char('a') + QString(9, QChar(0xE9));
    QTest::newRow("kanji: 6 of 10") << QString(10, QChar(0x6B69)) << QString(6, QChar(0x6B69));
    const QString dancer = QString::fromUtf8("\xF0\x9F\x92\x83");
    QTest::newRow("pictures: 4 of 7") << dancer.repeated(7) << dancer.repeated(4);
    QTest::newRow("kanji that fit") << QString(6, QChar(0x6B69)) << QString(6, QChar(0x6B69));
}

void TestSheet::columnNames()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    BoundSheet sheet({ Run(), Walk() }, 3);
    Rename(sheet, 1, name);
    sheet.Show();
    QCOMPARE(sheet.grid.horizontalHeaderItem(1)->text(), shown);
    QCOMPARE(sheet.grid.horizontalHeaderItem(0)->text(), QStringLiteral("run"));
}

void TestSheet::aSeriesShowsItsRuns()
{
    BoundSheet sheet(
        { Walk(), SeriesColumn("jump", 9, { { 0, 0 }, { 2, 3 }, { 4, 0 } }),
            SeriesColumn("fall", 9, { { 0, 0 }, { 2, 3 }, { 4, 0 } }, QStringLiteral("PSD")) },
        6);
    sheet.Show();
    QCOMPARE(sheet.Shown(0),
        QStringList({ QStringLiteral("4"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
            QStringLiteral("7"), QStringLiteral(" ~ "), QStringLiteral(" ~ ") }));
    QCOMPARE(sheet.Shown(1),
        QStringList({ QString(), QString(), QStringLiteral("3"), QStringLiteral(" ~ "), QString(),
            QString() }));
    QCOMPARE(sheet.Shown(2),
        QStringList({ QStringLiteral("0"), QStringLiteral(" ~ "), QStringLiteral("3"),
            QStringLiteral(" ~ "), QStringLiteral("0"), QStringLiteral(" ~ ") }));
    QVERIFY(sheet.grid.IsBlankCol(1) && !sheet.grid.IsBlankCol(2));
}

void TestSheet::theFirstRowNeverShowsATilde()
{
    for (const QString &extension : { QStringLiteral("TGA"), QStringLiteral("psd") }) {
        BoundSheet sheet({ SeriesColumn("walk", 9, { { 0, 6 } }, extension) }, 3);
        sheet.Show();
        QCOMPARE(sheet.Shown(0),
            QStringList({ QStringLiteral("6"), QStringLiteral(" ~ "), QStringLiteral(" ~ ") }));
    }
}

void TestSheet::aFixeColumnShowsItsSpanAlone()
{
    BoundSheet sheet({ Walk(), StillColumn("sky.png") }, 8);
    rostrum::Layer &sky = sheet.EditLayerOf(1, "by hand");
    sky.inPoint = { 3, 25 };
    sky.duration = { 3, 25 };
    sheet.Doc().CloseLooseEnds();
    sheet.Show();
    QCOMPARE(sheet.Shown(1),
        QStringList({ QString(), QString(), QString(), QStringLiteral(" - "), QStringLiteral(" - "),
            QStringLiteral(" - "), QString(), QString() }));
    QVERIFY(!sheet.grid.IsBlankCol(1)); // a still's extension makes no blank column
}

void TestSheet::everyKindOfLayerIsAColumn()
{
    ColumnPlan solid, camera;
    solid.source = Source::Solid;
    solid.name = "red";
    camera.source = Source::Camera;
    camera.name = "eye";
    BoundSheet sheet({ solid, Walk(), camera, StillColumn("sky.png"),
                         SeriesColumn("one", /*images=*/1, { { 0, 0 } }) },
        4);
    sheet.Show();
    const QStringList bar = Repeated(QStringLiteral(" - "), 4);
    QCOMPARE(sheet.Shown(0), bar);
    QCOMPARE(sheet.Shown(1),
        QStringList({ QStringLiteral("4"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
            QStringLiteral("7") }));
    QCOMPARE(sheet.Shown(2), bar);
    QCOMPARE(sheet.Shown(3), bar);
    QCOMPARE(sheet.Shown(4), bar); // a series of one image has nothing to time
}

void TestSheet::aRampMadeByHandReadsBackFrameByFrame()
{
    ColumnPlan ramp = SeriesColumn("ramp", 30, { { 0, 1 }, { 8, 25 } });
    ramp.linear = { 0 };
    BoundSheet sheet({ ramp, SeriesColumn("none", 30, {}) }, 10);
    sheet.Show();
    QCOMPARE(sheet.Table(0), QVector<int>({ 1, 4, 7, 10, 13, 16, 19, 22, 25, 25 }));
    QCOMPARE(sheet.Table(1), QVector<int>({ 0, 1, 2, 3, 4, 5, 6, 7, 8, 9 })); // its own time
}

void TestSheet::numbersThatNoDrawingHasReadByTheLoadsRule()
{
    const Keys keys{ { 0, 8 }, { 1, 9 }, { 2, -3 }, { 3, 9999 }, { 4, 10001 }, { 5, 7 } };
    BoundSheet sheet(
        { SeriesColumn("walk", 9, keys), SeriesColumn("run", 9, keys, QStringLiteral("psd")) }, 6);
    sheet.Show();
    QCOMPARE(sheet.Table(0), QVector<int>({ 8, 0, 0, 0, 0, 7 }));
    QCOMPARE(sheet.Table(1), QVector<int>({ 8, 8, 0, 8, 0, 7 })); // five digits are no number
}

void TestSheet::theRowLabelIsThereForWhoAsks()
{
    BoundSheet sheet({ Walk() }, kRows);
    sheet.Show();
    QCOMPARE(sheet.grid.GetCellText(-1, 0), QStringLiteral("  1"));
    QCOMPARE(sheet.grid.GetCellText(-1, 11), QStringLiteral(" 12"));
    QCOMPARE(sheet.grid.GetCellText(-1, 1233), QStringLiteral("1234"));
}

void TestSheet::labelsColour()
{
    BoundSheet sheet({ Walk(), Run() }, kRows);
    const rostrum::ItemId source = sheet.LayerOf(1).source;
    sheet.EditProject().Edit(source)->label = 2;
    sheet.Doc().CloseLooseEnds();
    sheet.Show();
    sheet.grid.LoadColKeys(1);
    QCOMPARE(sheet.grid.GetColBrush(1), QBrush(Qt::yellow));
}

void TestSheet::typedNumbers_data()
{
    QTest::addColumn<int>("col"); // 0 is blank, 1 is not; both have drawings up to 8
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a drawing, blank") << 0 << QStringLiteral("6") << 6 << QStringLiteral("6");
    QTest::newRow("the last drawing, blank")
        << 0 << QStringLiteral("8") << 8 << QStringLiteral("8");
    QTest::newRow("above the last one, blank: empty")
        << 0 << QStringLiteral("12") << 0 << QStringLiteral("");
    QTest::newRow("above the last one: the last")
        << 1 << QStringLiteral("12") << 8 << QStringLiteral("8");
    QTest::newRow("0, blank: shows nothing") << 0 << QStringLiteral("0") << 0 << QStringLiteral("");
    QTest::newRow("0: a drawing") << 1 << QStringLiteral("0") << 0 << QStringLiteral("0");
    QTest::newRow("as above, blank") << 0 << QStringLiteral("4") << 4 << QStringLiteral(" ~ ");
    QTest::newRow("as above") << 1 << QStringLiteral("2") << 2 << QStringLiteral(" ~ ");
}

void TestSheet::typedNumbers()
{
    QFETCH(int, col);
    QFETCH(QString, typed);
    BoundSheet sheet({ SeriesColumn("walk", 9, { { 0, 4 }, { 1, 7 } }),
                         SeriesColumn("run", 9, { { 0, 2 }, { 1, 5 } }, QStringLiteral("psd")) },
        kRows);
    sheet.Show();
    sheet.Robot().Click(col, 1);
    sheet.Robot().Type(typed);
    QTEST(sheet.grid.GetCellValue(col, 1), "value");
    QTEST(sheet.Shown(col)[1], "shown");
    QCOMPARE(sheet.HostColumn(col), sheet.Table(col));
    QCOMPARE(sheet.HostImages(col), sheet.Table(col)); // what was clamped went to the host clamped
    sheet.Robot().Click(col, 2);
    sheet.Robot().Type(QStringLiteral("0"));
    QCOMPARE(sheet.Shown(col)[2],
        col == 0                              ? QString()
            : sheet.grid.GetCellValue(col, 1) ? QStringLiteral("0")
                                              : kTilde);
}

void TestSheet::typedTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("none") << QByteArray("") << 0;
    QTest::newRow("one digit") << QByteArray("7") << 7;
    QTest::newRow("four digits") << QByteArray("1234") << 1234;
    QTest::newRow("leading zeros") << QByteArray("0012") << 12;
    QTest::newRow("below zero") << QByteArray("-1") << 0;
    QTest::newRow("a letter behind") << QByteArray("12a") << 0;
    QTest::newRow("five digits") << QByteArray("12345") << 0;
    QTest::newRow("five digits of a small number") << QByteArray("00012") << 0;
    QTest::newRow("a blank before") << QByteArray(" 12") << 0;
    QTest::newRow("a sign") << QByteArray("+12") << 0;
    QTest::newRow("the longest") << QByteArray(5000, '9') << 0;
}

void TestSheet::typedTexts()
{
    QFETCH(QByteArray, text);
    QFETCH(int, value);
    BoundSheet sheet({ Run(), SeriesColumn("long", 2000, { { 0, 3 } }) }, kRows);
    sheet.Show();
    const rostrum::Project before = sheet.Doc().GetProject();
    QVERIFY(sheet.grid.SetCellFromText(/*col=*/1, /*row=*/5, text.constData(), /*push=*/false));
    QCOMPARE(sheet.grid.GetCellValue(1, 5), value);
    QVERIFY(sheet.Doc().GetProject() == before); // not pushed
}

void TestSheet::typingIntoTheLastRowWritesOneKey()
{
    BoundSheet sheet({ Walk() }, kRows);
    sheet.Show();
    sheet.Robot().Click(0, kRows - 1);
    sheet.Robot().Type(QStringLiteral("5"));
    QCOMPARE(sheet.RemapKeys(sheet.layers[0]), Keys({ { 0, 4 }, { 3, 7 }, { kRows - 1, 5 } }));
    QCOMPARE(sheet.Doc().UndoNames(), QVector<QByteArray>{ "morvex:EditCell" });
}

void TestSheet::typingBetweenWritesTwoKeys()
{
    BoundSheet sheet({ Walk() }, kRows);
    sheet.Show();
    sheet.Robot().Click(0, 5);
    sheet.Robot().Type(QStringLiteral("1"));
    QCOMPARE(sheet.RemapKeys(sheet.layers[0]), Keys({ { 0, 4 }, { 3, 7 }, { 5, 1 }, { 6, 7 } }));
}

void TestSheet::aRunThatBeginsFurtherDownKeepsItsRows()
{
    // 7 typed on row 1 swallowed the key of the run of 7 at row 3, and 4 on row 2 swallowed that run.
    BoundSheet sheet({ Walk() }, kRows);
    sheet.Show();
    sheet.Robot().Click(0, 1);
    sheet.Robot().Type(QStringLiteral("7"));
    QCOMPARE(sheet.RemapKeys(sheet.layers[0]), Keys({ { 0, 4 }, { 1, 7 }, { 2, 4 }, { 3, 7 } }));
    QCOMPARE(sheet.HostImages(0), sheet.Table(0));
}

void TestSheet::aKeyBeyondTheLastImageStaysWhenACellAboveItIsWritten()
{
    BoundSheet sheet({ SeriesColumn("run", 9, { { 0, 2 }, { 6, 40 } }, QStringLiteral("psd")) }, 8);
    sheet.Show();
    QCOMPARE(sheet.Table(0), QVector<int>({ 2, 2, 2, 2, 2, 2, 8, 8 }));
    sheet.Robot().Click(0, 3);
    sheet.Robot().Type(QStringLiteral("5"));
    QCOMPARE(sheet.HostImages(0), QVector<int>({ 2, 2, 2, 5, 2, 2, 40, 40 }));
}

void TestSheet::numbersOfFiveDigitsAreNoDrawing()
{
    BoundSheet sheet({ SeriesColumn("long", 10010, { { 0, 1 } }) }, 6);
    sheet.Show();
    sheet.Robot().Click(0, 1);
    sheet.Robot().Type(QStringLiteral("9998"));
    sheet.Robot().Key(Qt::Key_Return);
    sheet.Robot().Click(0, 1);
    sheet.Robot().Key(Qt::Key_G, Qt::ControlModifier);
    QCOMPARE(sheet.Table(0), QVector<int>({ 1, 9998, 9999, 0, 0, 0 }));
    QCOMPARE(sheet.HostImages(0), sheet.Table(0));
}

void TestSheet::aTypedFixeCellChangesNothingAndIsAnnounced()
{
    BoundSheet sheet({ StillColumn("sky.png"), Walk() }, kRows);
    sheet.Show();
    const rostrum::Project before = sheet.Doc().GetProject();
    int announced = 0;
    connect(&sheet.grid, &WExpoGrid::SigSomethingHasChanged, this,
        [&](UpdateLevel level) { announced += level == UpdCells; });
    sheet.Robot().Click(0, 5);
    sheet.Robot().Type(QStringLiteral("3"));
    QCOMPARE(announced, 1);
    QVERIFY(sheet.Doc().GetProject() == before);
    QCOMPARE(sheet.grid.GetCellValue(0, 5), 0);
    QCOMPARE(sheet.Doc().UndoNames().size(), 0);
    QCOMPARE(sheet.Shown(0)[5], QStringLiteral("3")); // no rebuild: it stands there until the next
    sheet.grid.RefreshGrid();
    QCOMPARE(sheet.Shown(0)[5], QStringLiteral(" - "));
}

void TestSheet::noCommandReachesAFixeColumnButTheExpos()
{
    BoundSheet sheet({ StillColumn("sky.png"), Walk() }, kRows);
    sheet.Show();
    GridRobot &robot = sheet.Robot();
    const rostrum::Project before = sheet.Doc().GetProject();
    sheet.host.GetTrace().Start();
    robot.Click(0, 4);
    robot.Key(Qt::Key_Return);
    robot.Key(Qt::Key_G, Qt::ControlModifier);
    robot.Key(Qt::Key_H, Qt::ControlModifier);
    robot.Key(Qt::Key_C, Qt::ControlModifier);
    robot.Key(Qt::Key_V, Qt::ControlModifier);
    robot.Key(Qt::Key_X, Qt::ControlModifier);
    robot.Key(Qt::Key_Insert);
    robot.Key(Qt::Key_Delete);
    robot.Key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(robot.TakeBoxes(), QStringList());
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_StartUndoGroup"), 8); // all but Copy
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_EndUndoGroup"), 8);
    QVERIFY(sheet.Doc().GetProject() == before);
    QCOMPARE(sheet.Doc().UndoNames().size(), 0);
    QCOMPARE(sheet.Shown(0), Repeated(QStringLiteral(" - "), kRows));

    // What it copies is what the table holds for it: nothing but zeros.
    robot.Drag(0, 2, 0, 3);
    robot.Key(Qt::Key_C, Qt::ControlModifier);
    robot.Click(1, 1);
    robot.Key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(sheet.Table(1).mid(0, 4), QVector<int>({ 4, 0, 0, 7 }));
}

void TestSheet::exposOfEachKind_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("first"); // of the layer
    QTest::addColumn<int>("last");
    QTest::addColumn<QStringList>("shown");
    const QString bar = QStringLiteral(" - ");
    const int home = Qt::Key_Home;
    const int end = Qt::Key_End;
    QTest::newRow("StartExpo, blank: the layer keeps its span")
        << 0 << home << 0 << 6
        << QStringList({ QString(), QString(), QStringLiteral("4"), QStringLiteral("7"),
               QStringLiteral(" ~ "), QStringLiteral(" ~ "), QStringLiteral(" ~ ") });
    QTest::newRow("EndExpo, blank")
        << 0 << end << 0 << 6
        << QStringList({ QStringLiteral("4"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
               QString(), QString(), QString(), QString() });
    QTest::newRow("StartExpo, not blank: the layer, and the cells too")
        << 1 << home << 2 << 6
        << QStringList({ QStringLiteral("0"), QStringLiteral(" ~ "), QStringLiteral("2"),
               QStringLiteral(" ~ "), QStringLiteral(" ~ "), QStringLiteral("5"),
               QStringLiteral(" ~ ") });
    QTest::newRow("EndExpo, not blank")
        << 1 << end << 0 << 2
        << QStringList({ QStringLiteral("2"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
               QStringLiteral("0"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
               QStringLiteral(" ~ ") });
    QTest::newRow("StartExpo, FIXE: the layer")
        << 2 << home << 2 << 6 << QStringList({ QString(), QString(), bar, bar, bar, bar, bar });
    QTest::newRow("EndExpo, FIXE")
        << 2 << end << 0 << 2
        << QStringList({ bar, bar, bar, QString(), QString(), QString(), QString() });
}

void TestSheet::exposOfEachKind()
{
    QFETCH(int, col);
    QFETCH(int, key);
    BoundSheet sheet({ Walk(), Run(), StillColumn("sky.png") }, 7);
    sheet.Show();
    sheet.Robot().Click(col, 2);
    sheet.Robot().Key(key);
    QCOMPARE(sheet.Doc().UndoNames(),
        QVector<QByteArray>{ key == Qt::Key_Home ? "morvex:StartExpo" : "morvex:EndExpo" });
    for (int time = 0; time < 2; ++time) {
        QTEST(sheet.Shown(col), "shown");
        const rostrum::Layer &layer = sheet.LayerOf(col);
        const rostrum::Rate rate{ 25, 1 };
        const int first = rate.FrameAt(layer.inPoint);
        QTEST(first, "first");
        QTEST(first + rate.FrameAt(layer.duration) - 1, "last");
        QVERIFY(sheet.grid.UpdateFromCompo()); // and the same after a reload
    }
}

void TestSheet::endExpoOnTheLastRowChangesNoCell()
{
    BoundSheet sheet({ Walk(), Run(), StillColumn("sky.png") }, kRows);
    sheet.Show();
    const rostrum::Project before = sheet.Doc().GetProject();
    sheet.Robot().Drag(0, kRows - 1, 2, kRows - 1);
    sheet.Robot().Key(Qt::Key_End);
    QCOMPARE(sheet.Robot().TakeBoxes(), QStringList());
    QVERIFY(sheet.Doc().GetProject() == before);
    QCOMPARE(sheet.Table(0), sheet.HostImages(0));
    QCOMPARE(sheet.Table(1), sheet.HostImages(1));
}

void TestSheet::aSpanThatTheHostRefusesIsShownUntilTheReload()
{
    BoundSheet sheet({ StillColumn("sky.png") }, 6);
    sheet.Show();
    GridRobot &robot = sheet.Robot();
    robot.Click(0, 1);
    robot.Key(Qt::Key_End); // rows 0 and 1
    robot.Click(0, 4);
    robot.Key(Qt::Key_Home); // behind the end: a length below 0
    QCOMPARE(sheet.Shown(0), Repeated(QString(), 6));
    QVERIFY(sheet.grid.UpdateFromCompo());
    QCOMPARE(sheet.Shown(0),
        QStringList({ QStringLiteral(" - "), QStringLiteral(" - "), QString(), QString(), QString(),
            QString() }));
    robot.Click(0, 2);
    robot.Key(Qt::Key_Home); // one behind the end: a length of 0, which is one
    QVERIFY(sheet.grid.UpdateFromCompo());
    QCOMPARE(sheet.Shown(0), Repeated(QString(), 6));
}

void TestSheet::exposOfTwoColumnsAtOnce()
{
    BoundSheet sheet({ Walk(), Run(), StillColumn("sky.png") }, 7);
    sheet.Show();
    sheet.Robot().Drag(1, 3, 2, 3);
    sheet.Robot().Key(Qt::Key_Home);
    QCOMPARE(sheet.LayerOf(1).inPoint, (rostrum::Time{ 3, 25 }));
    QCOMPARE(sheet.LayerOf(2).inPoint, (rostrum::Time{ 3, 25 }));
    QCOMPARE(sheet.LayerOf(0).inPoint, (rostrum::Time{ 0, 25 }));
    QCOMPARE(sheet.Doc().UndoNames().size(), 1);
}

void TestSheet::swappedColumns()
{
    BoundSheet sheet({ Walk(), StillColumn("sky.png"), Run() }, 7);
    sheet.Show();
    const QStringList walk = sheet.Shown(0);
    const QStringList sky = sheet.Shown(1);
    const QStringList run = sheet.Shown(2);
    sheet.grid.SwapCols(0, 2);
    QCOMPARE(sheet.Shown(0), run);
    QCOMPARE(sheet.Shown(1), sky);
    QCOMPARE(sheet.Shown(2), walk);
    QCOMPARE(sheet.grid.horizontalHeaderItem(2)->text(), QStringLiteral("walk"));
    QVERIFY(sheet.grid.IsBlankCol(2) && !sheet.grid.IsBlankCol(0));
    sheet.grid.SwapCols(2, 1);
    QCOMPARE(sheet.Shown(1), walk);
    QCOMPARE(sheet.Shown(2), sky);
    sheet.grid.SwapCols(1, 1);
    QCOMPARE(sheet.Shown(1), walk);
}

void TestSheet::aSwapOutOfTheSheetDoesNothing()
{
    BoundSheet sheet({ Walk(), Run(), StillColumn("sky.png") }, 7);
    sheet.Show();
    const QStringList walk = sheet.Shown(0);
    const QStringList run = sheet.Shown(1);
    for (const int other : { 3, -1, 50, 5000 })
        sheet.grid.SwapCols(1, other); // 3 is as many as there are
    for (const int other : { -1, 50, 5000 })
        sheet.grid.SwapCols(other, 1);
    QCOMPARE(sheet.Shown(0), walk);
    QCOMPARE(sheet.Shown(1), run);
    QCOMPARE(sheet.grid.GetColName(1), QStringLiteral("run"));
    QCOMPARE(sheet.grid.GetColName(-1), QString());
}

void TestSheet::keyMarksStandInTheirColumn()
{
    BoundSheet sheet({ Run(), Walk(), StillColumn("sky.png") }, kRows);
    sheet.EditLayerOf(1, "by hand").position.InsertKey({ 4, 25 }, { 1, 2, 0, 0 });
    sheet.EditLayerOf(2, "by hand").rotation.InsertKey({ 9, 25 }, { 30, 0, 0, 0 });
    sheet.Doc().CloseLooseEnds();
    sheet.Show();
    for (int col = 0; col < 3; ++col) {
        for (int row = 0; row < kRows; ++row) {
            const bool isMarked
                = !QBitmap(sheet.grid.item(row, col)->background().texture()).isNull();
            QCOMPARE(isMarked, (col == 1 && row == 4) || (col == 2 && row == 9));
        }
    }
    sheet.grid.LoadColKeys(1);
    QCOMPARE(int(sheet.grid.GetCellKey(1, 4)), 1);
    sheet.grid.LoadColKeys(2);
    QCOMPARE(int(sheet.grid.GetCellKey(2, 9)), 4);
    QCOMPARE(int(sheet.grid.GetCellKey(2, 4)), 0);
    QCOMPARE(int(sheet.grid.GetCellKey(2, 1500)), 0);
}

void TestSheet::clickingMovesTheDocumentAndNotTheHost()
{
    BoundSheet sheet({ Run(), Walk() }, kRows);
    sheet.Show();
    const QVector<rostrum::LayerId> selection = Selection(sheet);
    QVector<UpdateLevel> levels;
    connect(&sheet.grid, &WExpoGrid::SigSomethingHasChanged, this,
        [&](UpdateLevel level) { levels << level; });
    sheet.Robot().Click(1, 5);
    QCOMPARE(GetDoc()->GetCol(), 1);
    QCOMPARE(GetDoc()->GetRow(), 5);
    QCOMPARE(levels, QVector<UpdateLevel>{ UpdCurrent });
    QCOMPARE(Selection(sheet), selection);
    QVERIFY(sheet.Doc().view.currentTimes.isEmpty());
    QVERIFY(!sheet.grid.SetCurrentCell(/*row=*/5, /*col=*/1)); // it is there already
    QVERIFY(sheet.grid.SetCurrentCell(/*row=*/6, /*col=*/1));
    QCOMPARE(GetDoc()->GetRow(), 6);
}

void TestSheet::theDocumentMovesTheTable()
{
    BoundSheet sheet({ Run(), Walk() }, kRows);
    sheet.Show();
    GetDoc()->SetCol(1);
    GetDoc()->SetRow(7);
    sheet.grid.OnUpdate(UpdCurrent, this);
    QCOMPARE(sheet.grid.currentColumn(), 1);
    QCOMPARE(sheet.grid.currentRow(), 7);
    int col = 1, row = 7;
    QVERIFY(!sheet.grid.GetCurrentCell(&col, &row));
    col = 7;
    QVERIFY(sheet.grid.GetCurrentCell(&col, &row));
    QCOMPARE(col, 1);
}

void TestSheet::typingSelectsTheColumnsLayer()
{
    BoundSheet sheet({ Run(), Walk(), StillColumn("sky.png") }, kRows);
    sheet.Show();
    sheet.Robot().Click(1, 5);
    sheet.Robot().Type(QStringLiteral("3"));
    QCOMPARE(Selection(sheet), QVector<rostrum::LayerId>{ sheet.layers[1] });
}

void TestSheet::afterAReloadTheLastColumnIsTheCurrentOne()
{
    BoundSheet sheet({ Run(), Walk(), StillColumn("sky.png") }, kRows);
    sheet.Show();
    sheet.Robot().Click(0, 5);
    QVERIFY(sheet.grid.UpdateFromCompo());
    QCOMPARE(Selection(sheet), QVector<rostrum::LayerId>{ sheet.layers[2] });
    QCOMPARE(GetVipLi()->GetLayerIndex(GetVipLi()->Layer), 2);
}

void TestSheet::aLargeCompositionIsShownClipped_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QByteArray>("line"); // in the log; empty for none
    QTest::newRow("as large as can be") << 50 << 1500 << QByteArray();
    QTest::newRow("a column more")
        << 51 << 8 << QByteArray("The sheet shows 50 of 51 columns and 8 of 8 frames");
    QTest::newRow("a frame more") << 2 << 1501
                                  << QByteArray(
                                         "The sheet shows 2 of 2 columns and 1500 of 1501 frames");
    QTest::newRow("both") << 60 << 1600
                          << QByteArray("The sheet shows 50 of 60 columns and 1500 of 1600 frames");
}

void TestSheet::aLargeCompositionIsShownClipped()
{
    QFETCH(int, columns);
    QFETCH(int, frames);
    QFETCH(QByteArray, line);
    BoundSheet sheet(SheetPlan(columns, Walk()), frames);
    // Not whole, so that the reload has to write it.
    sheet.EditProject().EditComposition(sheet.composition)->duration = { frames * 40 + 13, 1000 };
    sheet.Doc().CloseLooseEnds();
    vnLog::Instance()->Clear();
    sheet.Show();
    QCOMPARE(sheet.grid.columnCount(), qMin(columns, 50));
    QCOMPARE(sheet.grid.rowCount(), qMin(frames, 1500));
    QCOMPARE(sheet.Shown(sheet.grid.columnCount() - 1).mid(0, 4),
        QStringList({ QStringLiteral("4"), QStringLiteral(" ~ "), QStringLiteral(" ~ "),
            QStringLiteral("7") }));
    QCOMPARE(QByteArray(vnLog::Instance()->Text()),
        (line.isEmpty() ? line : "\r\n" + line) + "<END>"); // once, and nothing else
    QVERIFY(sheet.host.GetProject().FindComposition(sheet.composition)->duration
        == (rostrum::Time{ frames, 25 }));
}

void TestSheet::theClippedSheetKeepsToItsRows()
{
    const Keys keys{ { 0, 1 }, { 1490, 2 }, { 1503, 5 } };
    BoundSheet sheet({ SeriesColumn("walk", 9, keys) }, 1510);
    sheet.Show();
    GridRobot &robot = sheet.Robot();
    robot.Click(0, 1400);
    robot.Key(Qt::Key_Insert);
    robot.Key(Qt::Key_Delete, Qt::ControlModifier);
    robot.Key(Qt::Key_End); // a blank column: its rows below are emptied
    const QVector<int> images = sheet.HostImages(0);
    QCOMPARE(images[1400], 1);
    QCOMPARE(images[1401], 0);
    QCOMPARE(images[1502], 0); // the last row's drawing holds on behind the sheet
    QCOMPARE(images[1503], 5); // up to a key that the sheet does not show
    QCOMPARE(sheet.RemapKeys(sheet.layers[0]), Keys({ { 0, 1 }, { 1401, 0 }, { 1503, 5 } }));
}

void TestSheet::cellsOutOfTheTableAreZeroAndTakeNothing()
{
    BoundSheet sheet({ Walk(), Run() }, kRows);
    sheet.Show();
    const rostrum::Project before = sheet.Doc().GetProject();
    struct Place
    {
        int col, row;
    };
    for (const Place place :
        { Place{ -1, 2 }, Place{ 50, 2 }, Place{ 0, -1 }, Place{ 0, 1500 }, Place{ 5000, 5000 } }) {
        QCOMPARE(sheet.grid.GetCellValue(place.col, place.row), 0);
        QVERIFY(sheet.grid.SetCellValue(place.row, place.col, 3));
        sheet.grid.StoreCell(place.col, place.row, 3);
        sheet.grid.SetStartExpo(place.col, place.row);
        sheet.grid.SetEndExpo(place.col, place.row);
    }
    sheet.grid.SetColName(50, "out");
    sheet.grid.SetColName(-1, "out");
    sheet.grid.StoreCell(0, kRows, 3); // behind the sheet's last row
    QCOMPARE(sheet.grid.GetCellValue(0, kRows), 0);
    QVERIFY(sheet.Doc().GetProject() == before);
    QCOMPARE(sheet.grid.GetCellText(50, 0), QString());
    QCOMPARE(sheet.grid.GetCellText(7, 0), QString()); // inside the table, behind the columns
}

VN_HOST_TEST_MAIN(TestSheet)
#include "tst_sheet.moc"
