#include "PanelStage.h"

#include <QTemporaryDir>

using namespace rostrum;
using testing::PanelStage;

namespace {

constexpr int kWalk = PanelStage::kWalk, kRun = PanelStage::kRun, kSky = PanelStage::kSky,
              kCel = PanelStage::kCel;

} // namespace

/// The dashboard's editors and buttons, from the keyboard to the host and back.
class TestPanelDashboard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { stage = std::make_unique<PanelStage>(); }
    void cleanupTestCase() { stage.reset(); }
    void init() { stage->OpenProject(); }
    void cleanup();

    void theTabsStandInTheirOrder();
    void aNumberIsWrittenAndReadBack_data();
    void aNumberIsWrittenAndReadBack();
    void aNumberOnAStreamWithKeysWritesAKey();
    void aChangedScaleWritesBothComponents();
    void anUnevenScaleShowsItsFirstComponent();
    void aKeyBoxAddsAndDeletesAKey_data();
    void aKeyBoxAddsAndDeletesAKey();
    void bothKeyPosBoxesShowOneKey();
    void theBoxesFollowTheFrame();
    void theOptionsRunNoHostOperation_data();
    void theOptionsRunNoHostOperation();
    void withNoCurrentCellAnEditChangesNothing();

    void aNewColumnIsMadeFromItsFields_data();
    void aNewColumnIsMadeFromItsFields();
    void aNewColumnThatCannotBeMadeChangesNothing_data();
    void aNewColumnThatCannotBeMadeChangesNothing();
    void aNewColumnOfAnUnsavedProjectSaysToSaveFirst();

    void aBlockOfColumnsMovesLeft();
    void aBlockOfColumnsMovesRight();
    void atTheEdgeNothingMoves_data();
    void atTheEdgeNothingMoves();
    void severalRangesDoNotMove();
    void theUpdateButtonReloadsTheSheet();

private:
    QStringList ColumnNames() const;

    std::unique_ptr<PanelStage> stage;
};

void TestPanelDashboard::cleanup()
{
    stage->host.GetTrace().Stop();
    QCOMPARE(stage->Open(), QByteArrayList());
    QCOMPARE(stage->host.Complaints(), QByteArrayList());
    QCOMPARE(stage->TakeBoxes(), QStringList());
}

/// As the sheet's header shows them.
QStringList TestPanelDashboard::ColumnNames() const
{
    QStringList names;
    for (int col = 0; col < stage->Sheet()->columnCount(); ++col)
        names << stage->Sheet()->horizontalHeaderItem(col)->text();
    return names;
}

void TestPanelDashboard::theTabsStandInTheirOrder()
{
    QStringList titles;
    for (int tab = 0; tab < stage->Dock()->count(); ++tab)
        titles << stage->Dock()->tabText(tab);
    QCOMPARE(titles,
        QStringList(
            { QStringLiteral("Layer"), QStringLiteral("NewCol"), QStringLiteral("Transform"),
                QStringLiteral("Effect"), QStringLiteral("Setup"), QStringLiteral("Board") }));
    for (const QString &title : qAsConst(titles))
        QVERIFY2(stage->ClickTab(title), qPrintable(title));
}

void TestPanelDashboard::aNumberIsWrittenAndReadBack_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<int>("stream");
    QTest::addColumn<int>("component");
    QTest::addColumn<QByteArray>("effect");
    QTest::addColumn<int>("value");

    const auto stream = [](const char *label, int number, int component, int value) {
        QTest::newRow(label) << QByteArray(label) << number << component << QByteArray() << value;
    };
    const auto effect = [](const char *label, const char *name, int param, int value) {
        QTest::newRow(label) << QByteArray(label) << -1 << param << QByteArray(name) << value;
    };
    stream("Pos. X", kPosition, 0, 123);
    stream("Pos. Y", kPosition, 1, -45);
    stream("Scale", kScale, 0, 150);
    stream("Rotation", kRotation, 0, -90);
    stream("Opacity", kOpacity, 0, 35);
    effect("Blur", kGaussianBlur, 0, 12);
    effect("Hue", kColorBalance, 0, 90);
    effect("Lightness", kColorBalance, 1, 20);
    effect("Saturation", kColorBalance, 2, -30);
}

void TestPanelDashboard::aNumberIsWrittenAndReadBack()
{
    QFETCH(const QByteArray, label);
    QFETCH(const int, stream);
    QFETCH(const int, component);
    QFETCH(const QByteArray, effect);
    QFETCH(const int, value);
    const auto inHost = [&](int col) {
        return effect.isEmpty() ? stage->StreamAt(col, stream, 7, component)
                                : stage->EffectAt(col, effect, component);
    };
    stage->ClickCell(kRun, 7);
    const double other = inHost(kWalk);
    const int before = stage->Number(label);
    QCOMPARE(double(before), effect.isEmpty() ? double(int(inHost(kRun))) : 0.0);

    stage->SetNumber(label, value);
    QCOMPARE(inHost(kRun), double(value));
    QCOMPARE(inHost(kWalk), other);
    QVERIFY(!stage->UndoNames().isEmpty());

    stage->ClickCell(kWalk, 7); // elsewhere it shows another layer's value
    QCOMPARE(stage->Number(label), before);
    stage->ClickCell(kRun, 3);
    QCOMPARE(stage->Number(label), value);

    while (!stage->UndoNames().isEmpty())
        stage->Run(kHostCommandUndo);
    stage->WaitForTimers();
    stage->ClickCell(kRun, 7);
    QCOMPARE(stage->Number(label), before);
}

void TestPanelDashboard::aNumberOnAStreamWithKeysWritesAKey()
{
    stage->ClickCell(kRun, 0);
    stage->Tick("Key Rotation", true);
    stage->ClickCell(kRun, 10);
    stage->SetNumber("Rotation", 90);
    QCOMPARE(stage->StreamAt(kRun, kRotation, 0), 0.0);
    QCOMPARE(stage->StreamAt(kRun, kRotation, 5), 45.0);
    QCOMPARE(stage->StreamAt(kRun, kRotation, 10), 90.0);
    QCOMPARE(stage->LayerAt(kRun).rotation.KeyCount(), 2);
    stage->ClickCell(kRun, 5);
    QCOMPARE(stage->Number("Rotation"), 45);
    QVERIFY(!stage->IsTicked("Key Rotation"));
    stage->ClickCell(kRun, 10);
    QVERIFY(stage->IsTicked("Key Rotation"));
}

void TestPanelDashboard::aChangedScaleWritesBothComponents()
{
    stage->ClickCell(kRun, 4);
    stage->SetNumber("Scale", 60);
    QCOMPARE(stage->StreamAt(kRun, kScale, 4, 0), 60.0);
    QCOMPARE(stage->StreamAt(kRun, kScale, 4, 1), 60.0);
}

void TestPanelDashboard::anUnevenScaleShowsItsFirstComponent()
{
    stage->Edit()
        .EditLayer(stage->composition, stage->layers[kRun])
        ->scale.SetConstant({ 80, 20, 100, 0 });
    stage->CloseChange();
    stage->ClickCell(kRun, 4);
    QCOMPARE(stage->Number("Scale"), 80);
    stage->SetNumber("Scale", 81);
    QCOMPARE(stage->StreamAt(kRun, kScale, 4, 0), 81.0);
    QCOMPARE(stage->StreamAt(kRun, kScale, 4, 1), 81.0);
}

void TestPanelDashboard::aKeyBoxAddsAndDeletesAKey_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("stream");
    QTest::newRow("Key Pos beside X") << QByteArray("Key Pos") << 0 << int(kPosition);
    QTest::newRow("Key Pos beside Y") << QByteArray("Key Pos") << 1 << int(kPosition);
    QTest::newRow("Key Scale") << QByteArray("Key Scale") << 0 << int(kScale);
    QTest::newRow("Key Rotation") << QByteArray("Key Rotation") << 0 << int(kRotation);
}

void TestPanelDashboard::aKeyBoxAddsAndDeletesAKey()
{
    QFETCH(const QByteArray, label);
    QFETCH(const int, number);
    QFETCH(const int, stream);
    stage->ClickCell(kRun, 6);
    QVERIFY(!stage->IsTicked(label, number));
    const auto marked = [this](int row) {
        return !stage->Sheet()->item(row, kRun)->background().texture().isNull();
    };
    QVERIFY(!marked(6));

    stage->Tick(label, true, number);
    const Stream *keys = stage->LayerAt(kRun).FindStream(stream);
    QCOMPARE(keys->KeyCount(), 1);
    QVERIFY(keys->KeyAt(0).time == (Time{ 6, 25 }));
    QVERIFY(stage->IsTicked(label, number));
    QVERIFY(marked(6)); // the sheet shows it at once
    QVERIFY(!marked(7));
    stage->ClickCell(kRun, 7);
    QVERIFY(!stage->IsTicked(label, number));
    stage->ClickCell(kRun, 6);
    QVERIFY(stage->IsTicked(label, number));

    stage->Tick(label, false, number);
    QCOMPARE(stage->LayerAt(kRun).FindStream(stream)->KeyCount(), 0);
    QVERIFY(!marked(6));
}

void TestPanelDashboard::bothKeyPosBoxesShowOneKey()
{
    stage->ClickCell(kRun, 6);
    for (const int first : { 0, 1 }) {
        stage->Tick("Key Pos", true, first);
        QVERIFY(stage->IsTicked("Key Pos", 0) && stage->IsTicked("Key Pos", 1));
        QCOMPARE(stage->LayerAt(kRun).position.KeyCount(), 1);
        stage->Tick("Key Pos", false, 1 - first);
        QVERIFY(!stage->IsTicked("Key Pos", 0) && !stage->IsTicked("Key Pos", 1));
        QCOMPARE(stage->LayerAt(kRun).position.KeyCount(), 0);
    }
}

void TestPanelDashboard::theBoxesFollowTheFrame()
{
    Layer &layer = *stage->Edit().EditLayer(stage->composition, stage->layers[kWalk]);
    layer.position.InsertKey({ 3, 25 }, { 10, 20, 0, 0 });
    layer.position.InsertKey({ 5, 25 }, { 30, 60, 0, 0 });
    stage->CloseChange();
    const int x[] = { 10, 10, 20, 30 };
    const int y[] = { 20, 20, 40, 60 };
    for (int row = 2; row <= 5; ++row) {
        stage->ClickCell(kWalk, row);
        QCOMPARE(stage->IsTicked("Key Pos"), row == 3 || row == 5);
        QCOMPARE(stage->Number("Pos. X"), x[row - 2]);
        QCOMPARE(stage->Number("Pos. Y"), y[row - 2]);
    }
    QCOMPARE(stage->UndoNames().size(), 1); // looking at a value writes none
}

void TestPanelDashboard::theOptionsRunNoHostOperation_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::newRow("column") << QByteArray("Sync Column with AE");
    QTest::newRow("frame") << QByteArray("Sync Ima with AE");
}

void TestPanelDashboard::theOptionsRunNoHostOperation()
{
    QFETCH(const QByteArray, label);
    stage->ClickCell(kRun, 6);
    stage->ClickTab(QStringLiteral("Setup"));
    for (const bool on : { true, false }) {
        stage->host.GetTrace().Start();
        stage->Tick(label, on);
        // It makes the column the library's current one, by reading, and that is all.
        QCOMPARE(stage->host.GetTrace().Functions(),
            QByteArrayList({ "AEGP_GetCompNumLayers", "AEGP_GetCompLayerByIndex" }));
    }
}

void TestPanelDashboard::withNoCurrentCellAnEditChangesNothing()
{
    stage->Document().view.activeItem = stage->footage; // and back: nothing is current then
    stage->Idle();
    stage->Document().view.activeItem = stage->composition;
    stage->Idle();
    const Project before = stage->host.GetProject();
    stage->SetNumber("Opacity", 12);
    stage->SetNumber("Blur", 3);
    stage->Tick("Key Scale", true);
    QVERIFY(stage->host.GetProject() == before);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
}

void TestPanelDashboard::aNewColumnIsMadeFromItsFields_data()
{
    QTest::addColumn<QString>("name"); // %1 stands for the project's folder
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("images");

    const QString sequence = QStringLiteral("SEQUENCE"), still = QStringLiteral("FIXE");
    const QString png = QStringLiteral("png"), tga = QStringLiteral("tga");
    const auto text = [](const char *name) { return QString::fromUtf8(name); };
    QTest::newRow("a bare name") << text("ink") << sequence << png << text("ink") << 6;
    QTest::newRow("an extension of its own that gives way")
        << text("ink.tga") << sequence << png << text("ink") << 6;
    QTest::newRow("the other extension") << text("ink") << sequence << tga << text("ink") << 3;
    QTest::newRow("a path with slashes")
        << text("%1/shots/ink0002.png") << sequence << tga << text("ink") << 5;
    QTest::newRow("a path with backslashes")
        << text("%1\\shots\\ink0002.png") << sequence << tga << text("ink") << 5;
    QTest::newRow("a still by its bare name") << text("sun") << still << png << text("sun") << 1;
    QTest::newRow("a still by its path") << text("%1/sun.png") << still << tga << text("sun") << 1;
}

void TestPanelDashboard::aNewColumnIsMadeFromItsFields()
{
    QFETCH(const QString, name);
    QFETCH(const QString, type);
    QFETCH(const QString, extension);
    QFETCH(const QString, shown);
    QFETCH(const int, images);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("shots")));
    testing::WriteSeries(folder.path(), QStringLiteral("ink"), 1, 5);
    testing::WriteSeries(
        folder.path(), QStringLiteral("ink"), 0, 3, 4, QSize(8, 6), QStringLiteral("tga"));
    testing::WriteSeries(folder.filePath(QStringLiteral("shots")), QStringLiteral("ink"), 0, 5);
    QVERIFY(QImage(8, 6, QImage::Format_ARGB32).save(folder.filePath(QStringLiteral("sun.png"))));
    stage->Document().path = folder.filePath(QStringLiteral("scene.rostrum"));

    stage->SetText("Name", name.contains(QLatin1Char('%')) ? name.arg(folder.path()) : name);
    stage->PickEntry("Type", type);
    stage->PickEntry("Ext", extension);
    stage->PressButton("New Col");

    QCOMPARE(stage->host.Messages(), QStringList());
    QCOMPARE(ColumnNames().size(), 5);
    QCOMPARE(ColumnNames().last(), shown); // at the sheet's right end
    const Composition *content = stage->host.GetProject().FindComposition(stage->composition);
    const Layer &added = *content->layers.last();
    const Item *source = stage->host.GetProject().SourceOf(added);
    QCOMPARE(std::get<Footage>(source->content).files.size(), images);
    stage->SetText("Name", QString());
}

void TestPanelDashboard::aNewColumnThatCannotBeMadeChangesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("no such series") << QStringLiteral("nowhere");
    QTest::newRow("no such folder") << QStringLiteral("/nowhere/ink0001.png");
    QTest::newRow("a path of 400 characters")
        << QLatin1Char('/') + QString(400, QLatin1Char('x')) + QStringLiteral("/ink0001.png");
    QTest::newRow("beyond ASCII") << QString::fromUtf8("\xc3\xa9t\xc3\xa9");
    QTest::newRow("a lone point") << QStringLiteral(".");
}

void TestPanelDashboard::aNewColumnThatCannotBeMadeChangesNothing()
{
    QFETCH(const QString, name);
    const QTemporaryDir folder;
    stage->Document().path = folder.filePath(QStringLiteral("scene.rostrum"));
    const Project before = stage->host.GetProject();
    stage->SetText("Name", name);
    QCOMPARE(stage->Editor<QLineEdit>("Name")->text(), name);
    for (const char *type : { "SEQUENCE", "FIXE" }) {
        stage->PickEntry("Type", QString::fromLatin1(type));
        stage->PressButton("New Col");
        QVERIFY(stage->host.GetProject() == before);
        QCOMPARE(ColumnNames().size(), 4);
    }
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
    stage->SetText("Name", QString());
}

void TestPanelDashboard::aNewColumnOfAnUnsavedProjectSaysToSaveFirst()
{
    const Project before = stage->host.GetProject();
    const int told = stage->host.Messages().size();
    stage->SetText("Name", QStringLiteral("ink"));
    stage->PickEntry("Type", QStringLiteral("SEQUENCE"));
    stage->PressButton("New Col");
    QVERIFY(stage->host.GetProject() == before);
    const QStringList messages = stage->host.Messages().mid(told);
    QVERIFY2(messages.value(0).contains(QLatin1String("ave the project first")),
        qPrintable(messages.join(QLatin1Char('|'))));
    stage->SetText("Name", QString());
}

void TestPanelDashboard::aBlockOfColumnsMovesLeft()
{
    const QStringList start{ QStringLiteral("walk"), QStringLiteral("run"), QStringLiteral("sky"),
        QStringLiteral("cel") };
    QCOMPARE(ColumnNames(), start);
    stage->DragCells(kRun, 2, kSky, 4);
    stage->PressButton("<< (move left)");
    QCOMPARE(ColumnNames(), QStringList({ start[1], start[2], start[0], start[3] }));
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>(2, "morvex:MoveCol"));
    const QList<QTableWidgetSelectionRange> ranges = stage->Sheet()->selectedRanges();
    QCOMPARE(ranges.size(), 1);
    QCOMPARE(QRect(QPoint(ranges[0].leftColumn(), ranges[0].topRow()),
                 QPoint(ranges[0].rightColumn(), ranges[0].bottomRow())),
        QRect(QPoint(0, 2), QPoint(1, 4)));

    stage->Run(kHostCommandUndo);
    stage->WaitForTimers();
    QCOMPARE(ColumnNames(), QStringList({ start[1], start[0], start[2], start[3] }));
    stage->Run(kHostCommandUndo);
    stage->WaitForTimers();
    QCOMPARE(ColumnNames(), start);
    for (const int col : { kWalk, kRun, kCel })
        QCOMPARE(stage->Shown(col), stage->SheetOf(col));
}

void TestPanelDashboard::aBlockOfColumnsMovesRight()
{
    const QStringList start = ColumnNames();
    stage->DragCells(kWalk, 2, kRun, 4);
    stage->PressButton(">> (move right)");
    QCOMPARE(ColumnNames(), QStringList({ start[2], start[0], start[1], start[3] }));
    stage->PressButton(">> (move right)"); // the selection went along
    QCOMPARE(ColumnNames(), QStringList({ start[2], start[3], start[0], start[1] }));
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>(4, "morvex:MoveCol"));
    QCOMPARE(stage->Shown(2), stage->SheetOf(kWalk)); // the cells went with their names
    QCOMPARE(stage->Shown(3), stage->SheetOf(kRun));
}

void TestPanelDashboard::atTheEdgeNothingMoves_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("left") << kWalk << kRun << QByteArray("<< (move left)");
    QTest::newRow("right") << kSky << kCel << QByteArray(">> (move right)");
    QTest::newRow("all to the left") << kWalk << kCel << QByteArray("<< (move left)");
    QTest::newRow("all to the right") << kWalk << kCel << QByteArray(">> (move right)");
}

void TestPanelDashboard::atTheEdgeNothingMoves()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QByteArray, button);
    const Project before = stage->host.GetProject();
    stage->DragCells(from, 2, to, 4);
    stage->PressButton(button);
    QVERIFY(stage->host.GetProject() == before);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
}

void TestPanelDashboard::severalRangesDoNotMove()
{
    const Project before = stage->host.GetProject();
    stage->ClickCell(kRun, 2);
    stage->ClickCell(kSky, 9, Qt::ControlModifier);
    stage->PressButton("<< (move left)");
    stage->PressButton(">> (move right)");
    QVERIFY(stage->host.GetProject() == before);
    QCOMPARE(stage->UndoNames(), QVector<QByteArray>());
    stage->TakeBoxes(); // what the user is told of it is the sheet's
}

void TestPanelDashboard::theUpdateButtonReloadsTheSheet()
{
    stage->ClickCell(kWalk, 2);
    stage->Edit()
        .EditLayer(stage->composition, stage->layers[kWalk])
        ->timeRemap.SetKeyValue(0, { 9 / 25.0, 0, 0, 0 });
    stage->CloseChange();
    stage->Idle();
    QCOMPARE(stage->Shown(kWalk).value(0), QStringLiteral("1"));
    stage->Click(stage->Panel()->findChild<QWidget *>(QStringLiteral("pbRefresh")));
    stage->Settle();
    QCOMPARE(stage->Shown(kWalk), stage->SheetOf(kWalk));
    QCOMPARE(stage->Shown(kWalk).value(0), QStringLiteral("9"));
}

VN_HOST_TEST_MAIN(TestPanelDashboard)
#include "tst_panel_dashboard.moc"
