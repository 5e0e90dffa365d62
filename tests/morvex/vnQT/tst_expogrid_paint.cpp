#include "GridRobot.h"
#include "RecordingGrid.h"
#include "support/vnPalette.h"
#include "testing/TestMain.h"

#include <QBitmap>
#include <QDir>
#include <QHeaderView>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTemporaryDir>

namespace {

const QColor kPlain(69, 69, 69); // of the dark set
const QColor kLit(180, 135, 30);
const QColor kWindow(88, 88, 88);

/// The key mark: a bar over x 36 to 43 at y 8 and 9, one over x 39 and 40 at y 5 to 12.
bool IsInPlus(int x, int y)
{
    return (x >= 36 && x <= 43 && (y == 8 || y == 9)) || (x >= 39 && x <= 40 && y >= 5 && y <= 12);
}

/// Compares a cell's picture with a field and a plus of these colours.
/// @return where they differ first, empty when they do not
QString Difference(QTableWidget &grid, int row, int col, const QColor &field, const QColor &plus)
{
    const QImage picture = grid.viewport()->grab().toImage();
    const QRect cell = grid.visualItemRect(grid.item(row, col));
    if (cell.width() < 44 || cell.height() < 13)
        return QStringLiteral("the cell is too small");
    for (int y = 0; y < cell.height(); ++y) {
        for (int x = 0; x < cell.width(); ++x) {
            const QColor wanted = IsInPlus(x, y) ? plus : field;
            const QColor found = picture.pixelColor(cell.topLeft() + QPoint(x, y));
            if (found != wanted)
                return QStringLiteral("%1,%2: %3 for %4")
                    .arg(x)
                    .arg(y)
                    .arg(found.name(), wanted.name());
        }
    }
    return QString();
}

QStringList warnings;

void KeepWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtWarningMsg)
        warnings << text;
}

/// Collects the Qt messages while it stands.
class WarningCatcher
{
public:
    WarningCatcher() : before(qInstallMessageHandler(KeepWarning)) { warnings.clear(); }
    ~WarningCatcher() { qInstallMessageHandler(before); }
    WarningCatcher(const WarningCatcher &) = delete;
    WarningCatcher &operator=(const WarningCatcher &) = delete;

private:
    QtMessageHandler before;
};

/// Notes what is painted of the widgets that it watches.
class PaintWatcher : public QObject
{
public:
    void Watch(QWidget *widget)
    {
        painted.insert(widget, QRegion());
        widget->installEventFilter(this);
    }
    QRegion Taken(QWidget *widget) { return painted.value(widget); }
    void Forget()
    {
        for (QRegion &region : painted)
            region = QRegion();
    }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted[static_cast<QWidget *>(object)] += static_cast<QPaintEvent *>(event)->region();
        return false;
    }

private:
    QHash<QWidget *, QRegion> painted;
};

/// 3 columns by 8 rows; the keys of the middle column are on rows 2 and 5. Blank, so that no number
/// is painted over the mark.
void FillSheet(MemoryGrid &grid)
{
    grid.SetSize(3, 8);
    grid.SetKey(1, 2, true);
    grid.SetKey(1, 5, true);
}

QBrush Background(const QTableWidget &grid, int row, int col)
{
    return grid.item(row, col)->background();
}

int RowHeight(const QTableWidget &grid, int row)
{
    return grid.rowHeight(row); // the grid's own field of this name hides the function
}

} // namespace

class TestExpoGridPaint : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theBitmapsAreAsDrawn_data();
    void theBitmapsAreAsDrawn();
    void aPlainCellIsTheFieldAlone();
    void aPlainCellWithAKeyShowsADarkGreyPlus();
    void aCellOfTheCurrentRowIsLit();
    void aLitCellWithAKeyHasAClearPlus();
    void theCurrentCellItselfIsLit();
    void theSelectionIsPaintedOverTheHighlight();
    void modesAndKeys_data();
    void modesAndKeys();
    void paintCellAsksForTheModeAndTheKey();
    void paintCellLeavesAMissingItemAlone();
    void theColumnArmFollowsItsSwitch();
    void markOffKeepsTheKeysMark();
    void markColoursTheHeaderSections();
    void aRebuildGivesTextsLabelsAndSizes();
    void aRebuildFollowsTheSheetsSize();
    void aSheetOfNothingRebuilds();
    void aRebuildTakesTheApplicationsColoursOfTheMoment();
    void aRebuildWritesItsTraceLines();
    void theTestPictureChangesNothing();
    void aKeyThatMovesTheCurrentCellPaintsTwoRowsAndTheirHeaders_data();
    void aKeyThatMovesTheCurrentCellPaintsTwoRowsAndTheirHeaders();
    void aMoveInAScrolledSheetPaintsTheRightHeaders();
    void aRebuildWithNothingChangedPaintsNothing();
};

void TestExpoGridPaint::initTestCase()
{
    QPalette dark = QApplication::palette();
    ApplyColorSet(dark, /*set=*/1, /*range=*/1.0);
    QApplication::setPalette(dark);
    QCOMPARE(dark.color(QPalette::AlternateBase), kPlain);
    QCOMPARE(dark.color(QPalette::BrightText), kLit);
    QCOMPARE(dark.color(QPalette::Window), kWindow);
}

void TestExpoGridPaint::theBitmapsAreAsDrawn_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QRgb>("field");
    QTest::addColumn<QRgb>("plus");
    QTest::newRow("plain") << QStringLiteral(":/Resources/cell_key_1.bmp") << qRgb(255, 255, 255)
                           << qRgb(0, 0, 0);
    QTest::newRow("inverse") << QStringLiteral(":/Resources/cell_key_1_inv.bmp") << qRgb(0, 0, 0)
                             << qRgb(255, 255, 255);
}

void TestExpoGridPaint::theBitmapsAreAsDrawn()
{
    const MemoryGrid grid; // which brings the resources
    QFETCH(QString, path);
    QFETCH(QRgb, field);
    QFETCH(QRgb, plus);
    const QImage image(path, "BMP");
    QCOMPARE(image.size(), QSize(48, 18));
    QCOMPARE(image.depth(), 1);
    QCOMPARE(image.colorTable(), (QVector<QRgb>{ qRgb(255, 255, 255), qRgb(0, 0, 0) }));
    for (int y = 0; y < 18; ++y) {
        for (int x = 0; x < 48; ++x)
            QCOMPARE(image.pixel(x, y), IsInPlus(x, y) ? plus : field);
    }
}

void TestExpoGridPaint::aPlainCellIsTheFieldAlone()
{
    MemoryGrid grid;
    FillSheet(grid);
    const GridRobot robot(grid);
    QCOMPARE(Difference(grid, 4, 1, kPlain, kPlain), QString());
}

void TestExpoGridPaint::aPlainCellWithAKeyShowsADarkGreyPlus()
{
    MemoryGrid grid;
    FillSheet(grid);
    const GridRobot robot(grid);
    QCOMPARE(Difference(grid, 2, 1, kPlain, QColor(Qt::darkGray)), QString());
}

void TestExpoGridPaint::aCellOfTheCurrentRowIsLit()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 2);
    QCOMPARE(Difference(grid, 2, 2, kLit, kLit), QString());
    QCOMPARE(Difference(grid, 3, 2, kPlain, kPlain), QString());
}

void TestExpoGridPaint::aLitCellWithAKeyHasAClearPlus()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 2);
    QCOMPARE(Difference(grid, 2, 1, kLit, kPlain), QString()); // the empty area shows through

    robot.Click(0, 4);
    QCOMPARE(Difference(grid, 2, 1, kPlain, QColor(Qt::darkGray)), QString());
}

void TestExpoGridPaint::theCurrentCellItselfIsLit()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 5);
    grid.clearSelection();
    grid.clearFocus(); // its frame is the style's
    QCOMPARE(Difference(grid, 5, 1, kLit, kPlain), QString());
}

void TestExpoGridPaint::theSelectionIsPaintedOverTheHighlight()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Drag(0, 3, 0, 5);
    const QColor selected = grid.palette().color(QPalette::Highlight);
    QCOMPARE(Difference(grid, 4, 0, selected, selected), QString());
}

void TestExpoGridPaint::modesAndKeys_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("key");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<bool>("isMarked");
    QTest::newRow("plain") << 0 << 0 << kPlain << false;
    QTest::newRow("plain, a key") << 0 << 1 << QColor(Qt::darkGray) << true;
    QTest::newRow("plain, the highest flag") << 0 << 255 << QColor(Qt::darkGray) << true;
    QTest::newRow("current") << 1 << 0 << kLit << false;
    QTest::newRow("current, a key") << 1 << 1 << kLit << true;
    QTest::newRow("current row") << 2 << 0 << kLit << false;
    QTest::newRow("current row, a key") << 2 << 7 << kLit << true;
    QTest::newRow("current column, its arm off") << 3 << 0 << kPlain << false;
    QTest::newRow("current column, its arm off, a key") << 3 << 1 << QColor(Qt::darkGray) << true;
}

void TestExpoGridPaint::modesAndKeys()
{
    QFETCH(int, mode);
    QFETCH(int, key);
    QFETCH(bool, isMarked);
    MemoryGrid grid;
    FillSheet(grid);
    grid.RefreshGrid();
    grid.PaintCell(4, 0, mode, key);
    QTEST(Background(grid, 4, 0).color(), "color");
    QCOMPARE(Background(grid, 4, 0).style(), isMarked ? Qt::TexturePattern : Qt::SolidPattern);

    grid.PaintCell(4, 0, mode, /*key=*/-2); // as it is
    QTEST(Background(grid, 4, 0).color(), "color");
    QCOMPARE(!QBitmap(Background(grid, 4, 0).texture()).isNull(), isMarked);
}

void TestExpoGridPaint::paintCellAsksForTheModeAndTheKey()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 5);
    grid.PaintCell(5, 1, /*mode=*/0, /*key=*/0);
    grid.calls.clear();

    grid.PaintCell(5, 1, /*mode=*/-1, /*key=*/-1);

    QCOMPARE(grid.calls,
        (QStringList{ QStringLiteral("LoadColKeys(1)"), QStringLiteral("GetCellKey(1,5)") }));
    QCOMPARE(Difference(grid, 5, 1, kLit, kPlain), QString());
    grid.PaintCell(4, 0, /*mode=*/-1, /*key=*/-1); // in the current column
    QCOMPARE(Background(grid, 4, 0), QBrush(kPlain));
}

void TestExpoGridPaint::paintCellLeavesAMissingItemAlone()
{
    RecordingGrid grid;
    FillSheet(grid);
    grid.RefreshGrid();
    delete grid.takeItem(4, 1);
    grid.calls.clear();
    grid.PaintCell(4, 1, /*mode=*/-1, /*key=*/-1);
    grid.PaintCell(-1, -1, /*mode=*/-1, /*key=*/-1);
    grid.PaintCell(40, 1, /*mode=*/0, /*key=*/1);
    QVERIFY(!grid.item(4, 1));
    QCOMPARE(grid.calls, QStringList());
}

void TestExpoGridPaint::theColumnArmFollowsItsSwitch()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 3);
    QCOMPARE(Background(grid, 6, 1), QBrush(kPlain));

    grid.markColumn = true;
    robot.Click(0, 4);
    QCOMPARE(Background(grid, 6, 0), QBrush(kLit));
    QCOMPARE(Background(grid, 6, 1), QBrush(kPlain));
    grid.RefreshGrid();
    QCOMPARE(Background(grid, 6, 0), QBrush(kLit));
    robot.Click(1, 3);
    QCOMPARE(Background(grid, 6, 0), QBrush(kPlain));
    QCOMPARE(Difference(grid, 5, 1, kLit, kPlain), QString()); // its key's mark stays
}

void TestExpoGridPaint::markOffKeepsTheKeysMark()
{
    RecordingGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 2);
    grid.calls.clear();

    grid.MarkCurrent(2, 0, /*on=*/false);

    QCOMPARE(grid.calls, QStringList()); // nobody is asked for keys
    QCOMPARE(Background(grid, 2, 1).color(), QColor(Qt::darkGray));
    QCOMPARE(Difference(grid, 2, 1, kPlain, QColor(Qt::darkGray)), QString());
    QCOMPARE(Background(grid, 2, 2), QBrush(kPlain));
}

void TestExpoGridPaint::markColoursTheHeaderSections()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 3);
    QCOMPARE(grid.horizontalHeaderItem(1)->background(), QBrush(kLit));
    QCOMPARE(grid.verticalHeaderItem(3)->background(), QBrush(kLit));
    robot.Click(2, 5);
    QCOMPARE(grid.horizontalHeaderItem(1)->background(), QBrush(kWindow));
    QCOMPARE(grid.verticalHeaderItem(3)->background(), QBrush(kWindow));
    QCOMPARE(grid.horizontalHeaderItem(2)->background(), QBrush(kLit));
    QCOMPARE(grid.verticalHeaderItem(5)->background(), QBrush(kLit));
    grid.RefreshGrid(); // leaves them as they are
    QCOMPARE(grid.verticalHeaderItem(5)->background(), QBrush(kLit));
}

void TestExpoGridPaint::aRebuildGivesTextsLabelsAndSizes()
{
    RecordingGrid grid(3, 8);
    grid.SetColumn(1, { 4, 4, 0, 12 });
    grid.names = QStringList{ QStringLiteral("décor"), QStringLiteral("%1 of two") };
    grid.colWidth = 53;
    GridRobot robot(grid);
    QCOMPARE(robot.Shown(1).mid(0, 4),
        (QStringList{
            QStringLiteral("4"), QStringLiteral(" ~ "), QString(), QStringLiteral("12") }));
    QCOMPARE(grid.horizontalHeaderItem(0)->text(), QStringLiteral("décor"));
    QCOMPARE(grid.horizontalHeaderItem(1)->text(), QStringLiteral("%1 of two"));
    QCOMPARE(grid.verticalHeaderItem(0)->text(), QStringLiteral("1"));
    QCOMPARE(grid.verticalHeaderItem(7)->text(), QStringLiteral("8"));
    for (int row = 0; row < 8; ++row)
        QCOMPARE(RowHeight(grid, row), 18);
    for (int col = 0; col < 3; ++col)
        QCOMPARE(grid.columnWidth(col), 53);

    grid.setRowHeight(4, 31); // by the user's mouse
    grid.setColumnWidth(1, 7);
    grid.colWidth = 20;
    grid.RefreshGrid();
    QCOMPARE(RowHeight(grid, 4), 18);
    QCOMPARE(grid.columnWidth(1), 20);
}

void TestExpoGridPaint::aRebuildFollowsTheSheetsSize()
{
    MemoryGrid grid(3, 8);
    GridRobot robot(grid);
    robot.Click(2, 7);
    grid.SetSize(2, 5);
    grid.RefreshGrid();
    QCOMPARE(QSize(grid.columnCount(), grid.rowCount()), QSize(2, 5));
    grid.SetSize(4, 11);
    grid.RefreshGrid();
    QCOMPARE(QSize(grid.columnCount(), grid.rowCount()), QSize(4, 11));
    QCOMPARE(grid.horizontalHeaderItem(3)->text(), QStringLiteral("Layer 4"));
    QCOMPARE(grid.verticalHeaderItem(10)->text(), QStringLiteral("11"));
    QCOMPARE(RowHeight(grid, 10), 18);
    QVERIFY(grid.item(10, 3));
}

void TestExpoGridPaint::aSheetOfNothingRebuilds()
{
    RecordingGrid grid(0, 0);
    grid.RefreshGrid();
    QCOMPARE(QSize(grid.columnCount(), grid.rowCount()), QSize(0, 0));
    grid.MarkCurrent(0, 0, /*on=*/true);
    grid.SetSize(0, 8); // a composition without layers
    grid.RefreshGrid();
    QCOMPARE(QSize(grid.columnCount(), grid.rowCount()), QSize(0, 8));
    grid.SetSize(3, 0);
    grid.RefreshGrid();
    QCOMPARE(QSize(grid.columnCount(), grid.rowCount()), QSize(3, 0));
    QVERIFY(!grid.signalsBlocked());
}

void TestExpoGridPaint::aRebuildTakesTheApplicationsColoursOfTheMoment()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 3);
    const QPalette dark = QApplication::palette();
    QPalette light = dark;
    ApplyColorSet(light, /*set=*/2, /*range=*/1.0);
    QApplication::setPalette(light);
    grid.RefreshGrid();
    const QBrush plain = Background(grid, 4, 0);
    const QBrush lit = Background(grid, 3, 2);
    const QColor litMark = [&] {
        grid.PaintCell(2, 1, /*mode=*/1, /*key=*/1);
        return Background(grid, 2, 1).color();
    }();
    QApplication::setPalette(dark);
    QCOMPARE(plain, QBrush(QColor(203, 203, 203)));
    QCOMPARE(lit, QBrush(QColor(40, 135, 220)));
    QCOMPARE(litMark, QColor(40, 135, 220));
}

void TestExpoGridPaint::aRebuildWritesItsTraceLines()
{
    MemoryGrid grid;
    FillSheet(grid); // two keys
    GridRobot robot(grid);
    const QString sizes = QStringLiteral("x y 48 18");
    const QString mark = QStringLiteral("setText2");

    const WarningCatcher catcher;
    grid.RefreshGrid(); // nothing has changed
    QCOMPARE(warnings, (QStringList{ sizes, mark, mark }));
    warnings.clear();
    robot.Click(0, 2); // lights a row with one key
    QCOMPARE(warnings, QStringList{ mark });
}

void TestExpoGridPaint::theTestPictureChangesNothing()
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(0, 2);
    const QImage without = grid.grab().toImage();

    // Outside Windows this is a folder "c:" of the working folder.
    QVERIFY(QDir().mkpath(QStringLiteral("c:")));
    QImage red(8, 8, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(QStringLiteral("c:/test.bmp")));
    grid.RefreshGrid();
    const QImage with = grid.grab().toImage();

    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(with, without);
}

void TestExpoGridPaint::aKeyThatMovesTheCurrentCellPaintsTwoRowsAndTheirHeaders_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QRect>("cells"); // from one row and column to the other
    QTest::newRow("down") << int(Qt::Key_Down) << QRect(QPoint(1, 3), QPoint(1, 4));
    QTest::newRow("up") << int(Qt::Key_Up) << QRect(QPoint(1, 2), QPoint(1, 3));
    QTest::newRow("right") << int(Qt::Key_Right) << QRect(QPoint(1, 3), QPoint(2, 3));
    QTest::newRow("left") << int(Qt::Key_Left) << QRect(QPoint(0, 3), QPoint(1, 3));
}

void TestExpoGridPaint::aKeyThatMovesTheCurrentCellPaintsTwoRowsAndTheirHeaders()
{
    QFETCH(int, key);
    QFETCH(QRect, cells);
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 3);
    PaintWatcher watcher;
    QHeaderView *columns = grid.horizontalHeader();
    QHeaderView *rows = grid.verticalHeader();
    watcher.Watch(grid.viewport());
    watcher.Watch(columns->viewport());
    watcher.Watch(rows->viewport());
    watcher.Watch(&grid);
    QApplication::processEvents();
    watcher.Forget();

    robot.Key(key);
    QApplication::processEvents();

    const QRect bothRows(0, rows->sectionViewportPosition(cells.top()), grid.viewport()->width(),
        18 * cells.height());
    const QRect bothColumns(
        columns->sectionViewportPosition(cells.left()), 0, 48 * cells.width(), columns->height());
    QCOMPARE(watcher.Taken(grid.viewport()).subtracted(bothRows), QRegion());
    QCOMPARE(watcher.Taken(columns->viewport()).subtracted(bothColumns), QRegion());
    QCOMPARE(watcher.Taken(rows->viewport())
                 .subtracted(QRect(0, bothRows.top(), rows->width(), bothRows.height())),
        QRegion());
    QCOMPARE(watcher.Taken(&grid), QRegion());
    // And both are painted: every cell's rectangle, and both sections.
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int col = 0; col < 3; ++col) {
            const QRect cell = grid.visualItemRect(grid.item(row, col));
            QCOMPARE(QRegion(cell).subtracted(watcher.Taken(grid.viewport())), QRegion());
        }
    }
    QCOMPARE(watcher.Taken(columns->viewport()).boundingRect(), bothColumns);
    QCOMPARE(watcher.Taken(rows->viewport()).boundingRect().height(), bothRows.height());
}

void TestExpoGridPaint::aMoveInAScrolledSheetPaintsTheRightHeaders()
{
    MemoryGrid grid(30, 100);
    GridRobot robot(grid);
    grid.resize(400, 300);
    QApplication::processEvents();
    grid.setCurrentCell(60, 15);
    QApplication::processEvents();
    QVERIFY(grid.verticalHeader()->offset() > 0);
    QVERIFY(grid.horizontalHeader()->offset() > 0);
    robot.Key(Qt::Key_Up);
    robot.Key(Qt::Key_Left);
    QApplication::processEvents();

    PaintWatcher watcher;
    watcher.Watch(grid.verticalHeader()->viewport());
    watcher.Watch(grid.horizontalHeader()->viewport());
    grid.MarkCurrent(58, 13, /*on=*/true);
    QApplication::processEvents();
    QCOMPARE(watcher.Taken(grid.verticalHeader()->viewport()).boundingRect().top(),
        grid.verticalHeader()->sectionViewportPosition(58));
    QCOMPARE(watcher.Taken(grid.horizontalHeader()->viewport()).boundingRect().left(),
        grid.horizontalHeader()->sectionViewportPosition(13));
}

void TestExpoGridPaint::aRebuildWithNothingChangedPaintsNothing()
{
    MemoryGrid grid;
    FillSheet(grid);
    GridRobot robot(grid);
    robot.Click(1, 3);
    PaintWatcher watcher;
    watcher.Watch(grid.viewport());
    watcher.Watch(grid.horizontalHeader()->viewport());
    watcher.Watch(grid.verticalHeader()->viewport());
    QApplication::processEvents();
    watcher.Forget();

    grid.RefreshGrid();
    QApplication::processEvents();
    QCOMPARE(watcher.Taken(grid.viewport()), QRegion());
    QCOMPARE(watcher.Taken(grid.horizontalHeader()->viewport()), QRegion());
    QCOMPARE(watcher.Taken(grid.verticalHeader()->viewport()), QRegion());

    grid.SetColumn(2, { 0, 0, 0, 0, 7 });
    grid.RefreshGrid();
    QApplication::processEvents();
    QCOMPARE(watcher.Taken(grid.viewport()), QRegion(grid.visualItemRect(grid.item(4, 2))));
}

VN_TEST_MAIN(TestExpoGridPaint)
#include "tst_expogrid_paint.moc"
