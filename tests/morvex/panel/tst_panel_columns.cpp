#include "PanelFixture.h"

#include "T_Types/T_Var.h"
#include "panel/WinGridDataAE.h"
#include "support/vnLog.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

/// Columns moved and made from the dashboard.
class TestPanelColumns : public QObject
{
    Q_OBJECT

private slots:
    void moveLeftWithTheFirstColumnInTheSelectionChangesNothing();
    void moveRightWithTheLastColumnInTheSelectionChangesNothing();
    void aSelectionOfSeveralRangesMovesNothing_data();
    void aSelectionOfSeveralRangesMovesNothing();
    void withNothingSelectedNothingMoves();
    void aColumnMovesWithItsCellsAndItsLayer();
    void aBlockMovesOnePlaceOneUndoStepAColumn_data();
    void aBlockMovesOnePlaceOneUndoStepAColumn();
    void aMovedBlockCanBeMovedOn();
    void aMoveThatTheHostRefusesClosesItsGroupEmpty();
    void aMoveOutOfTheSheetDoesNothing_data();
    void aMoveOutOfTheSheetDoesNothing();
    void aNewColumnsPath_data();
    void aNewColumnsPath();
    void aBareNameMakesAColumnOfTheSeriesBesideTheProject();
    void aNameWithAFolderMakesAColumnOfThatFile_data();
    void aNameWithAFolderMakesAColumnOfThatFile();
    void aFixeColumnIsOneFile();
    void anEmptyNameMakesNoColumn_data();
    void anEmptyNameMakesNoColumn();
    void aKindThatTheComboDoesNotOfferIsAskedFor();
    void withoutItsCompositionNoColumnIsMade();
    void aPathThatIsTooLongMakesNoColumn_data();
    void aPathThatIsTooLongMakesNoColumn();
    void aHostThatCannotTellTheProjectsPathMakesNoColumn_data();
    void aHostThatCannotTellTheProjectsPathMakesNoColumn();
    void theProjectsFolderIsReadForNobody();
    void thereIsNothingToLoadYet();
    void centringAnswersForTheLibrary();
};

namespace {

using Layers = QVector<rostrum::LayerId>;

/// The layers of the composition from the top, by the columns of the fixture.
QVector<int> Order(PanelFixture &shown)
{
    QVector<int> order;
    const rostrum::Composition *composition
        = shown.host.GetProject().FindComposition(shown.composition);
    for (const auto &layer : composition->layers)
        order << shown.layers.indexOf(layer->id);
    return order;
}

QString SeriesBeside(PanelFixture &shown, const QTemporaryDir &folder)
{
    shown.Document().path = folder.filePath(QStringLiteral("scene.rostrum"));
    return folder.path();
}

/// The last "-Appel CreateColAnim-" of the log page.
QString AskedPath(const QStringList &log)
{
    const QString mark = QStringLiteral("-Appel CreateColAnim- ");
    for (const QString &line : log) {
        if (line.startsWith(mark))
            return line.mid(mark.size());
    }
    return QStringLiteral("none");
}

int Columns(PanelFixture &shown)
{
    return shown.host.GetProject().FindComposition(shown.composition)->layers.size();
}

/// The four fields of "NewCol", by keys and mouse.
void AskForColumn(PanelFixture &shown, const QString &name, int type, int ext)
{
    shown.PickTab("NewCol");
    shown.Type(&GetDoc()->name, name);
    shown.Choose(&GetDoc()->typeIndex, type);
    shown.Choose(&GetDoc()->extIndex, ext);
    shown.TakeLog();
    shown.Press(&GetDoc()->btNewCol);
}

} // namespace

void TestPanelColumns::moveLeftWithTheFirstColumnInTheSelectionChangesNothing()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.DragCells(0, 2, 1, 4);
    shown.PickTab("Layer");
    shown.Press(&GetDoc()->btMoveLeft);
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2 }));
    QCOMPARE(GetDoc()->GetCol(), 1);
    QVERIFY(!shown.UndoNames().contains("morvex:MoveCol"));
}

void TestPanelColumns::moveRightWithTheLastColumnInTheSelectionChangesNothing()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.DragCells(1, 2, 2, 4);
    shown.PickTab("Layer");
    shown.Press(&GetDoc()->btMoveRight);
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2 }));
    QVERIFY(!shown.UndoNames().contains("morvex:MoveCol"));
}

void TestPanelColumns::aSelectionOfSeveralRangesMovesNothing_data()
{
    QTest::addColumn<bool>("left");
    QTest::newRow("left") << true;
    QTest::newRow("right") << false;
}

void TestPanelColumns::aSelectionOfSeveralRangesMovesNothing()
{
    QFETCH(bool, left);
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(1, 2);
    shown.ClickCell(1, 6, Qt::ControlModifier);
    QCOMPARE(shown.Grid().selectedRanges().size(), 2);
    shown.PickTab("Layer");
    shown.Press(left ? &GetDoc()->btMoveLeft : &GetDoc()->btMoveRight);
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2 }));
    QVERIFY(!shown.UndoNames().contains("morvex:MoveCol"));
}

void TestPanelColumns::withNothingSelectedNothingMoves()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.Grid().clearSelection();
    shown.panel->MoveSelectedColsLeft();
    shown.panel->MoveSelectedColsRight();
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2 }));
}

void TestPanelColumns::aColumnMovesWithItsCellsAndItsLayer()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    const QStringList walk = shown.Shown(2);
    const QStringList sky = shown.Shown(1);
    shown.ClickCell(2, 7);
    shown.PickTab("Layer");
    shown.Press(&GetDoc()->btMoveLeft);
    QCOMPARE(Order(shown), QVector<int>({ 0, 2, 1 }));
    QCOMPARE(shown.Shown(1), walk);
    QCOMPARE(shown.Shown(2), sky);
    QCOMPARE(shown.Headers()[1], QStringLiteral("walk"));
    QCOMPARE(GetDoc()->GetCol(), 1);
    QCOMPARE(shown.Grid().currentColumn(), 1);
    QCOMPARE(shown.Grid().currentRow(), 7);
    shown.panel->OnRefresh(); // and the host says the same
    QCOMPARE(shown.Shown(1), walk);
    QVERIFY(shown.Document().Undo());
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2 }));
}

void TestPanelColumns::aBlockMovesOnePlaceOneUndoStepAColumn_data()
{
    QTest::addColumn<bool>("left");
    QTest::addColumn<int>("first");
    QTest::addColumn<QVector<int>>("order");
    QTest::newRow("two columns left") << true << 1 << QVector<int>{ 1, 2, 0, 3 };
    QTest::newRow("two columns right") << false << 1 << QVector<int>{ 0, 3, 1, 2 };
    QTest::newRow("to the left edge") << true << 1 << QVector<int>{ 1, 2, 0, 3 };
    QTest::newRow("from the left edge") << false << 0 << QVector<int>{ 2, 0, 1, 3 };
}

void TestPanelColumns::aBlockMovesOnePlaceOneUndoStepAColumn()
{
    QFETCH(bool, left);
    QFETCH(int, first);
    QFETCH(QVector<int>, order);
    PanelFixture shown;
    shown.layers.prepend(shown.AddSeries("hair", 6, { { 0, 2 } }));
    shown.OpenOnCompo();
    const rostrum::Project before = shown.host.GetProject();
    shown.DragCells(first, 3, first + 1, 8);
    shown.PickTab("Layer");
    shown.Press(left ? &GetDoc()->btMoveLeft : &GetDoc()->btMoveRight);
    QCOMPARE(Order(shown), order);
    QCOMPARE(shown.UndoNames().mid(shown.UndoNames().size() - 2),
        QVector<QByteArray>({ "morvex:MoveCol", "morvex:MoveCol" }));
    int l = -1, r = -1, t = -1, b = -1;
    QVERIFY(shown.Grid().GetSelectedBloc(&l, &r, &t, &b, /*mode=*/3));
    const int moved = first + (left ? -1 : 1);
    QCOMPARE(QVector<int>({ l, r, t, b }), QVector<int>({ moved, moved + 1, 3, 8 }));
    QVERIFY(shown.Document().Undo());
    QVERIFY(shown.host.GetProject() != before);
    QVERIFY(shown.Document().Undo());
    QVERIFY(shown.host.GetProject() == before);
}

void TestPanelColumns::aMovedBlockCanBeMovedOn()
{
    PanelFixture shown;
    shown.layers.prepend(shown.AddSeries("hair", 6, { { 0, 2 } }));
    shown.OpenOnCompo();
    shown.DragCells(2, 3, 3, 8);
    shown.PickTab("Layer");
    shown.Press(&GetDoc()->btMoveLeft);
    shown.Press(&GetDoc()->btMoveLeft);
    QCOMPARE(Order(shown), QVector<int>({ 2, 3, 0, 1 }));
    shown.Press(&GetDoc()->btMoveLeft); // at the edge
    QCOMPARE(Order(shown), QVector<int>({ 2, 3, 0, 1 }));
    shown.Press(&GetDoc()->btMoveRight);
    shown.Press(&GetDoc()->btMoveRight);
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2, 3 }));
}

void TestPanelColumns::aMoveThatTheHostRefusesClosesItsGroupEmpty()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(1, 7);
    const QStringList walk = shown.Shown(2);
    const QVector<QByteArray> steps = shown.UndoNames();
    shown.host.FailNext("AEGP_ReorderLayer");
    shown.panel->MoveCol(2, -1);
    QVERIFY(!shown.Document().IsGroupOpen());
    QCOMPARE(shown.UndoNames(), steps);
    QCOMPARE(Order(shown), QVector<int>({ 0, 1, 2 }));
    QCOMPARE(shown.Shown(2), walk);
    QCOMPARE(GetDoc()->GetCol(), 2); // the column that was to move
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("-ERR I- line "));
}

void TestPanelColumns::aMoveOutOfTheSheetDoesNothing_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<int>("delta");
    QTest::newRow("before the first") << 0 << -1;
    QTest::newRow("behind the last") << 2 << 1;
    QTest::newRow("far behind") << 1 << 1000;
    QTest::newRow("far before") << 1 << -1000;
}

void TestPanelColumns::aMoveOutOfTheSheetDoesNothing()
{
    QFETCH(int, col);
    QFETCH(int, delta);
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.ClickCell(1, 7);
    shown.host.GetTrace().Start();
    shown.panel->MoveCol(col, delta);
    QCOMPARE(shown.host.GetTrace().Entries().size(), 0);
    QCOMPARE(GetDoc()->GetCol(), 1);
}

void TestPanelColumns::aNewColumnsPath_data()
{
    QTest::addColumn<QString>("project");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("ext");
    QTest::addColumn<QString>("path");
    const QString art = QStringLiteral("/art/cut 7/scene.rostrum");
    const auto row = [](const char *title, const QString &project, const char *name, int ext,
                         const char *path) {
        QString expected = QString::fromUtf8(path);
        const QString folder = QFileInfo(project).path(); // which the host names its system's way
        if (expected.startsWith(folder + QLatin1Char('\\')))
            expected.replace(0, folder.size(), QDir::toNativeSeparators(folder));
        QTest::newRow(title) << project << QString::fromUtf8(name) << ext << expected;
    };
    row("a bare name", art, "walk", 0, "/art/cut 7\\walk.png");
    row("the extension that is chosen", art, "walk", 3, "/art/cut 7\\walk.mov");
    row("walk.tga with png", art, "walk.tga", 0, "/art/cut 7\\walk.png");
    row("two points: the last one is the extension's", art, "walk.v2.tga", 0,
        "/art/cut 7\\walk.v2.png");
    row("a point at the start is none", art, ".walk", 1, "/art/cut 7\\.walk.tga");
    row("a project never saved", QString(), "walk", 0, "\\walk.png");
    row("a folder: as it stands", art, "D:\\art\\walk.tga", 0, "D:\\art\\walk.tga");
    row("a folder with the other separator", art, "/other/walk.tga", 0, "/other/walk.tga");
    row("a separator at the start is no folder", art, "/walk", 0, "/art/cut 7\\/walk.png");
    row("letters beyond ASCII", QStringLiteral("/\u00e9t\u00e9/scene.rostrum"),
        "\xC3\xA9l\xC3\xA8ve", 0, "/\xC3\xA9t\xC3\xA9\\\xC3\xA9l\xC3\xA8ve.png");
}

/// The project's drawings are on no disk; what counts is the path that the library is asked with.
void TestPanelColumns::aNewColumnsPath()
{
    QFETCH(QString, project);
    QFETCH(QString, name);
    QFETCH(int, ext);
    QFETCH(QString, path);
    PanelFixture shown;
    shown.Document().path = project;
    shown.OpenOnCompo();
    AskForColumn(shown, name, /*type=*/0, ext);
    const QStringList log = shown.TakeLog();
    QCOMPARE(AskedPath(log), path);
    QVERIFY(log.contains(QStringLiteral("-OnCreateCol- ") + name));
    const bool isBeside = path.contains(QLatin1Char('\\')) && path != name;
    QCOMPARE(log.contains(QStringLiteral("TEST2 ") + name), isBeside);
    QCOMPARE(shown.host.HeldByRule().size(), isBeside ? 1 : 0); // the memory that reading it loses
    QCOMPARE(Columns(shown), 3);
    QCOMPARE(shown.host.Complaints(), QByteArrayList());
}

void TestPanelColumns::aBareNameMakesAColumnOfTheSeriesBesideTheProject()
{
    const QTemporaryDir folder;
    PanelFixture shown;
    SeriesBeside(shown, folder);
    testing::WriteSeries(folder.path(), QStringLiteral("run"), /*first=*/1, /*count=*/5);
    shown.OpenOnCompo();
    shown.ClickCell(1, 4);
    AskForColumn(shown, QStringLiteral("run"), /*type=*/0, /*ext=*/0);
    QCOMPARE(Columns(shown), 4);
    QCOMPARE(shown.Headers().size(), 4);
    QCOMPARE(shown.Headers().last(), QStringLiteral("run"));
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("run0000.png")))); // the blank drawing
    shown.ClickCell(3, 2);
    shown.TypeCell(QStringLiteral("3"));
    QCOMPARE(shown.Shown(3)[2], QStringLiteral("3"));
    shown.TakeLog();
}

void TestPanelColumns::aNameWithAFolderMakesAColumnOfThatFile_data()
{
    QTest::addColumn<QChar>("separator");
    QTest::newRow("/") << QChar(QLatin1Char('/'));
    QTest::newRow("\\") << QChar(QLatin1Char('\\'));
}

void TestPanelColumns::aNameWithAFolderMakesAColumnOfThatFile()
{
    QFETCH(QChar, separator);
    const QTemporaryDir folder;
    const QString first
        = testing::WriteSeries(folder.path(), QStringLiteral("run"), /*first=*/1, /*count=*/5);
    PanelFixture shown;
    shown.OpenOnCompo();
    QString name = first;
    name.replace(QLatin1Char('/'), separator);
    AskForColumn(shown, name, /*type=*/0, /*ext=*/1); // "Ext" does not matter
    QCOMPARE(Columns(shown), 4);
    QCOMPARE(AskedPath(shown.TakeLog()), name);
}

void TestPanelColumns::aFixeColumnIsOneFile()
{
    const QTemporaryDir folder;
    PanelFixture shown;
    SeriesBeside(shown, folder);
    QImage(8, 6, QImage::Format_ARGB32).save(folder.filePath(QStringLiteral("sky2.png")));
    shown.OpenOnCompo();
    AskForColumn(shown, QStringLiteral("sky2"), /*type=*/1, /*ext=*/0);
    QCOMPARE(Columns(shown), 4);
    QCOMPARE(shown.Shown(3)[0], QStringLiteral(" - "));
    QCOMPARE(AskedPath(shown.TakeLog()), QStringLiteral("none"));
}

void TestPanelColumns::anEmptyNameMakesNoColumn_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("SEQUENCE") << 0;
    QTest::newRow("FIXE") << 1;
}

void TestPanelColumns::anEmptyNameMakesNoColumn()
{
    QFETCH(int, type);
    PanelFixture shown;
    shown.Document().path = QStringLiteral("/art/scene.rostrum");
    shown.OpenOnCompo();
    shown.PickTab("NewCol");
    shown.Choose(&GetDoc()->typeIndex, type);
    shown.TakeLog();
    QVERIFY(!shown.panel->OnCreateCol());
    QCOMPARE(Columns(shown), 3);
    QCOMPARE(shown.TakeLog(),
        type == 0 ? QStringList{ QStringLiteral("-Appel CreateColAnim- ") } : QStringList());
    QCOMPARE(shown.host.HeldByRule(), QByteArrayList()); // the project's path was not read
}

void TestPanelColumns::aKindThatTheComboDoesNotOfferIsAskedFor()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->name = QStringLiteral("/art/walk.png");
    for (const int type : { 2, -1 }) {
        GetDoc()->typeIndex = type;
        QString told;
        QTimer answer;
        connect(&answer, &QTimer::timeout, this, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                told = box->windowTitle() + QStringLiteral(": ") + box->text();
                QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
            }
        });
        answer.start(0);
        QVERIFY(!shown.panel->OnCreateCol());
        QCOMPARE(told, QStringLiteral("Info: Selectionnez le type de la colonne"));
        QCOMPARE(Columns(shown), 3);
    }
    GetDoc()->typeIndex = 0;
    shown.TakeLog();
}

void TestPanelColumns::withoutItsCompositionNoColumnIsMade()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    GetDoc()->name = QStringLiteral("walk");
    shown.SelectCompo("another scene");
    vnLog::Instance()->Clear();
    QVERIFY(!shown.panel->OnCreateCol());
    const QByteArray log = vnLog::Instance()->Text();
    QVERIFY2(log.startsWith("\r\n-ERR B- line "), log.constData());
    QVERIFY2(log.endsWith("morvex/panel/WinExpo_columns.cpp)<END>"), log.constData());
    QCOMPARE(shown.TakeLog(), QStringList());
}

void TestPanelColumns::aPathThatIsTooLongMakesNoColumn_data()
{
    QTest::addColumn<QString>("project");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("fits");
    const QString scene = QStringLiteral("/scene.rostrum");
    const auto letters = [](int count) { return QString(count, QLatin1Char('a')); };
    QTest::newRow("259 bytes") << QLatin1Char('/') + letters(200) + scene << letters(53) << true;
    QTest::newRow("260 bytes") << QLatin1Char('/') + letters(200) + scene << letters(54) << false;
    QTest::newRow("259 bytes with a folder")
        << scene << QLatin1String("/a/") + letters(256) << true;
    QTest::newRow("260 bytes with a folder")
        << scene << QLatin1String("/a/") + letters(257) << false;
    QTest::newRow("a project of 259 bytes")
        << QLatin1Char('/') + letters(244) + scene << letters(2) << true;
    QTest::newRow("a project of 260 bytes")
        << QLatin1Char('/') + letters(245) + scene << letters(1) << false;
    QTest::newRow("letters of two bytes")
        << scene << QLatin1String("/a/") + QString(129, QChar(0xE9)) << false;
}

void TestPanelColumns::aPathThatIsTooLongMakesNoColumn()
{
    QFETCH(QString, project);
    QFETCH(QString, name);
    QFETCH(bool, fits);
    PanelFixture shown;
    shown.Document().path = project;
    shown.OpenOnCompo();
    GetDoc()->name = name;
    vnLog::Instance()->Clear();
    QVERIFY(!shown.panel->OnCreateCol()); // there is no such file anyway
    QCOMPARE(AskedPath(shown.TakeLog()) == QLatin1String("none"), !fits);
    const QByteArray log = vnLog::Instance()->Text();
    QCOMPARE(log.contains("morvex/panel/WinExpo_columns.cpp"), !fits);
}

void TestPanelColumns::aHostThatCannotTellTheProjectsPathMakesNoColumn_data()
{
    QTest::addColumn<QByteArray>("function");
    for (const char *function :
        { "AEGP_NewMemHandle", "AEGP_GetProjectPath", "AEGP_LockMemHandle" })
        QTest::newRow(function) << QByteArray(function);
}

void TestPanelColumns::aHostThatCannotTellTheProjectsPathMakesNoColumn()
{
    QFETCH(QByteArray, function);
    PanelFixture shown;
    shown.Document().path = QStringLiteral("/art/scene.rostrum");
    shown.OpenOnCompo();
    GetDoc()->name = QStringLiteral("walk");
    const QByteArrayList open = shown.host.Account();
    for (const bool forColumn : { true, false }) {
        vnLog::Instance()->Clear();
        shown.host.FailNext(function);
        QVERIFY(!(forColumn ? shown.panel->OnCreateCol() : shown.panel->GetProjectFolder()));
        QVERIFY(QByteArray(vnLog::Instance()->Text()).startsWith("\r\n-ERR I- line "));
        QCOMPARE(shown.host.Account(), open);
        QCOMPARE(shown.host.Complaints(), QByteArrayList());
    }
    QCOMPARE(Columns(shown), 3);
    shown.TakeLog();
}

void TestPanelColumns::theProjectsFolderIsReadForNobody()
{
    PanelFixture shown;
    shown.Document().path = QStringLiteral("/art/scene.rostrum");
    shown.OpenOnCompo();
    const rostrum::Project before = shown.host.GetProject();
    const QByteArrayList open = shown.host.Account();
    shown.host.GetTrace().Start();
    QVERIFY(shown.panel->GetProjectFolder());
    QCOMPARE(shown.host.GetTrace().Functions(),
        QByteArrayList({ "AEGP_GetProjectByIndex", "AEGP_NewMemHandle", "AEGP_GetProjectPath",
            "AEGP_LockMemHandle", "AEGP_UnlockMemHandle", "AEGP_FreeMemHandle" }));
    QVERIFY(shown.host.GetTrace().Text().contains(", null, 520, 0, &) = 0"));
    QCOMPARE(shown.host.Account(), open);
    QVERIFY(shown.host.GetProject() == before);

    vnLog::Instance()->Clear();
    shown.host.FailNext("AEGP_GetProjectByIndex");
    QVERIFY(!shown.panel->GetProjectFolder());
    const QByteArray log = vnLog::Instance()->Text();
    QVERIFY(log.startsWith("\r\n-ERR I- line "));
    QVERIFY(log.endsWith("morvex/panel/WinExpo_columns.cpp)<END>"));
}

void TestPanelColumns::thereIsNothingToLoadYet()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.host.GetTrace().Start();
    QVERIFY(!shown.panel->OnLoadExpo());
    QCOMPARE(shown.host.GetTrace().Entries().size(), 0);
}

void TestPanelColumns::centringAnswersForTheLibrary()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    QVERIFY(shown.panel->OnCenterLayers());
    QCOMPARE(shown.LayerOf(0).position.Constant()[0], 320.0);
    QCOMPARE(shown.LayerOf(0).anchorPoint.Constant()[0], 320.0); // left edge on the left edge
    shown.host.FailNext("AEGP_GetItemDimensions");
    QVERIFY(!shown.panel->OnCenterLayers());
    shown.host.ReturnToEventLoop();
}

VN_HOST_TEST_MAIN(TestPanelColumns)
#include "tst_panel_columns.moc"
