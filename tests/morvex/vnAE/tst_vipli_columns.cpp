#include "LibrarySheet.h"
#include "support/vnLog.h"
#include "vnAE/hostErrors.h"

#include <QDir>
#include <QTemporaryDir>

#include <functional>

/// Columns made, moved and timed: the layer stack behind the sheet.
class TestVipLiColumns : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aNewSeriesColumnTakesItsStepsInOrder();
    void aNewFixeColumnTakesItsStepsInOrder();
    void aNewSeriesColumnIsBlankOverTheWholeSheet();
    void aNewFixeColumnLastsAsLongAsTheSheet();
    void theNewColumnsLayerIsCurrentAndSelected();
    void withReversedColumnsTheNewLayerLiesOnTop();
    void aCompositionOf0FramesGetsAColumnOf0Frames();
    void withoutCompoTheDurationReadIs0();
    void aDurationBetweenTwoFramesBecomesWhole();
    void aSeriesWithoutABlankIsShiftedByOnePlace();
    void oneUndoGroupIsOneEntryAndUndoneExactly_data();
    void oneUndoGroupIsOneEntryAndUndoneExactly();

    void withoutItsCompositionNoColumnIsAdded();
    void anEmptyPathAddsNothing();
    void whatCannotBeImportedAddsNoColumn();
    void afterAFailureTheNextTryReusesTheFootage();
    void aCountThatCannotBeReadLeavesTheOtherColumnsAlone();

    void movingALayer_data();
    void movingALayer();
    void aLayerThatIsGoneCannotBeMoved();

    void inAndOutPointsAreCut_data();
    void inAndOutPointsAreCut();
    void settingInAndOutPoints_data();
    void settingInAndOutPoints();
    void aLengthBelow0IsTheHostsErrorAndTheOffsetStays();
    void whatIsSetIsRead();
    void withoutCompoOrLayerNothingReachesTheHost();

    void settingTheDuration_data();
    void settingTheDuration();
    void aDurationThatFailsIsNotTold();

    void footageIsAlignedLeftAndBottom_data();
    void footageIsAlignedLeftAndBottom();
    void otherSourcesAreNotAligned();
    void aKeyedPositionGetsItsKeyAtFrame0();
    void aligningStopsAtAHostErrorAndLayerStaysThere();
    void withoutCompoNothingIsAligned();

private:
    QByteArray PathOf(const char *fileName) const
    {
        return folder->path().toUtf8() + '/' + fileName;
    }
    void Write(const char *stem, int first, int count)
    {
        testing::WriteSeries(
            folder->path(), QString::fromUtf8(stem), first, count, /*digits=*/4, QSize(13, 7));
    }

    QTemporaryDir *folder = nullptr;
};

namespace {

using LayerIds = QVector<rostrum::LayerId>;

QByteArray Log()
{
    return vnLog::Instance()->Text();
}

bool IsOneErrorLine(const QByteArray &log, char kind)
{
    return log.startsWith(QByteArray("\r\n-ERR ") + kind + "- line ") && log.count("-ERR") == 1
        && log.endsWith(", file(morvex/vnAE/vipLi_columns.cpp)<END>");
}

/// The calls of a trace that change something, with their arguments.
QByteArrayList Changes(LibrarySheet &sheet)
{
    QByteArrayList changes;
    for (const rostrum::TraceEntry &entry : sheet.host.GetTrace().Entries()) {
        const QByteArray function(entry.function);
        if (function.startsWith("AEGP_Set") || function.startsWith("AEGP_Add")
            || function.startsWith("AEGP_Reorder") || function.startsWith("AEGP_Insert"))
            changes << function.mid(5) + '(' + entry.arguments + ')';
    }
    return changes;
}

template <typename Handle>
QByteArray Text(Handle handle)
{
    return rostrum::HandleText(rostrum::TakeApart(handle));
}

rostrum::Composition &EditCompo(LibrarySheet &sheet)
{
    return *sheet.EditProject().EditComposition(sheet.composition);
}

/// The layers from the top of the stack down.
LayerIds Stack(LibrarySheet &sheet)
{
    LayerIds ids;
    for (const rostrum::LayerPtr &each :
        sheet.host.GetProject().FindComposition(sheet.composition)->layers)
        ids << each->id;
    return ids;
}

const rostrum::Layer &Bottom(LibrarySheet &sheet)
{
    return sheet.Find(Stack(sheet).last());
}

QVector<double> Place(const rostrum::Stream &stream)
{
    return { stream.Constant()[0], stream.Constant()[1] };
}

} // namespace

void TestVipLiColumns::init()
{
    folder = new QTemporaryDir;
    QVERIFY(folder->isValid());
}

void TestVipLiColumns::cleanup()
{
    delete folder;
}

// New columns.

void TestVipLiColumns::aNewSeriesColumnTakesItsStepsInOrder()
{
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/37);
    sheet.AddSeries("run", 8);
    Write("jump", 1, 3);
    sheet.host.GetTrace().Start();
    QVERIFY(GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));

    const QByteArrayList first = sheet.host.GetTrace().Functions().mid(0, 3);
    QCOMPARE(first,
        QByteArrayList({ "AEGP_GetItemFromComp", "AEGP_GetItemDuration", // before all else
            "AEGP_GetProjectByIndex" }));
    const rostrum::ItemId item = Bottom(sheet).source;
    const QByteArray comp = Text(sheet.Comp()), layer = Text(GetVipLi()->Layer);
    const QByteArrayList writesHoldKey{ "SetKeyframeValue(stream 0, 0, &)",
        "SetKeyframeInterpolation(stream 0, 0, 3, 3)" };
    QCOMPARE(Changes(sheet),
        QByteArrayList({ "AddFootageToProject(footage 0, item 1, &)",
            "AddLayer(" + Text(sheet.host.ItemHandle(item)) + ", " + comp + ", &)",
            "ReorderLayer(" + layer + ", 2)",
            "SetLayerInPointAndDuration(" + layer + ", 1, 0/100, 37/25)",
            "SetLayerOffset(" + layer + ", 0/100)", "SetSelection(" + comp + ", collection 0)",
            "SetCompDuration(" + comp + ", 37/25)", "SetLayerOffset(" + layer + ", 0/1)",
            "SetLayerInPointAndDuration(" + layer + ", 1, 0/25, 37/25)",
            "InsertKeyframe(stream 0, 1, 0/25, &)" })
            + writesHoldKey + writesHoldKey);
}

void TestVipLiColumns::aNewFixeColumnTakesItsStepsInOrder()
{
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/37);
    Write("house", 7, 2);
    sheet.host.GetTrace().Start();
    QVERIFY(GetVipLi()->AddFixeColumn(PathOf("house0007.png")));

    const rostrum::ItemId item = Bottom(sheet).source;
    const QByteArray comp = Text(sheet.Comp()), layer = Text(GetVipLi()->Layer);
    QCOMPARE(Changes(sheet),
        QByteArrayList({ "AddFootageToProject(footage 0, item 1, &)",
            "AddLayer(" + Text(sheet.host.ItemHandle(item)) + ", " + comp + ", &)",
            "ReorderLayer(" + layer + ", 1)",
            "SetLayerInPointAndDuration(" + layer + ", 1, 0/100, 37/25)",
            "SetLayerOffset(" + layer + ", 0/100)", "SetSelection(" + comp + ", collection 0)",
            "SetLayerOffset(" + layer + ", 0/1)",
            "SetLayerInPointAndDuration(" + layer + ", 1, 0/25, 37/25)" }));
}

void TestVipLiColumns::aNewSeriesColumnIsBlankOverTheWholeSheet()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 5, 2 } }, /*frames=*/24);
    Write("jump", 1, 3);
    QVERIFY(GetVipLi()->AddSequenceColumn(PathOf("jump0002.png")));

    QCOMPARE(Stack(sheet).size(), 2);
    const rostrum::Layer &made = Bottom(sheet);
    QCOMPARE(sheet.RemapKeys(made.id), Keys({ { 0, 0 } }));
    const rostrum::Key &key = made.timeRemap.KeyAt(0);
    QCOMPARE(key.value[0], 0.0);
    QCOMPARE(int(key.in), int(rostrum::Interpolation::Hold));
    QCOMPARE(int(key.out), int(rostrum::Interpolation::Hold));
    QCOMPARE(sheet.Column(24), QVector<int>(24, 0));
    QCOMPARE(made.inPoint, (rostrum::Time{ 0, 25 }));
    QCOMPARE(made.duration, (rostrum::Time{ 24, 25 }));
    QCOMPARE(made.offset, rostrum::Time{});
    QCOMPARE(GetVipLi()->GetCurrentCompoDuration(), 24);
    QCOMPARE(GetVipLi()->GetColumnKind(), kSequence);
    QCOMPARE(GetVipLi()->GetSourceLastFrame(), 3); // the blank and three drawings
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { 5, 2 } })); // the other column's cells stay
    QCOMPARE(sheet.host.Account(), QByteArrayList());
}

void TestVipLiColumns::aNewFixeColumnLastsAsLongAsTheSheet()
{
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/24);
    Write("house", 7, 2);
    QVERIFY(GetVipLi()->AddFixeColumn(PathOf("house0007.png")));

    const rostrum::Layer &made = Bottom(sheet);
    QCOMPARE(sheet.host.GetProject().Find(made.source)->name, QByteArray("house0007.png"));
    QCOMPARE(made.timeRemap.KeyCount(), 0);
    QCOMPARE(made.inPoint, rostrum::Time{});
    QCOMPARE(made.duration, (rostrum::Time{ 24, 25 }));
    QCOMPARE(made.offset, rostrum::Time{});
    QCOMPARE(GetVipLi()->GetColumnKind(), kFixe);
    QCOMPARE(QDir(folder->path()).entryList(QDir::Files).size(), 2); // no blank
}

void TestVipLiColumns::theNewColumnsLayerIsCurrentAndSelected()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Write("jump", 1, 3);
    for (const bool series : { true, false }) {
        QVERIFY(series ? GetVipLi()->AddSequenceColumn(PathOf("jump0001.png"))
                       : GetVipLi()->AddFixeColumn(PathOf("jump0002.png")));
        const rostrum::LayerId made = Stack(sheet).last();
        QCOMPARE(GetVipLi()->Layer, sheet.LayerH(made));
        QCOMPARE(sheet.host.GetDocument().view.selections[sheet.composition], LayerIds{ made });
        QCOMPARE(GetVipLi()->GetActiveColumnIndex(), Stack(sheet).size() - 1);
    }
    QCOMPARE(Stack(sheet).first(), sheet.layer);
}

void TestVipLiColumns::withReversedColumnsTheNewLayerLiesOnTop()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.AddSeries("run", 8);
    GetVipLi()->ReverseColumns = true;
    Write("jump", 1, 3);
    const LayerIds before = Stack(sheet);
    QVERIFY(GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QCOMPARE(Stack(sheet).mid(1), before);
    QCOMPARE(GetVipLi()->Layer, sheet.LayerH(Stack(sheet).first()));
    QCOMPARE(sheet.RemapKeys(Stack(sheet).first()), Keys({ { 0, 0 } }));
    QVERIFY(GetVipLi()->SetCurrentColumn(2)); // the sheet's right end
    QCOMPARE(GetVipLi()->Layer, sheet.LayerH(Stack(sheet).first()));
}

void TestVipLiColumns::aCompositionOf0FramesGetsAColumnOf0Frames()
{
    for (const bool series : { true, false }) {
        LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/0);
        Write("jump", 1, 3);
        sheet.host.GetTrace().Start();
        QVERIFY(series ? GetVipLi()->AddSequenceColumn(PathOf("jump0001.png"))
                       : GetVipLi()->AddFixeColumn(PathOf("jump0001.png")));
        QCOMPARE(Bottom(sheet).duration, rostrum::Time{});
        QByteArrayList ranges;
        for (const QByteArray &change : Changes(sheet)) {
            if (change.startsWith("SetLayerInPointAndDuration"))
                ranges << change;
        }
        QCOMPARE(ranges.size(), 2);
        QVERIFY(ranges[0].endsWith("0/100, 0/25)"));
        QVERIFY(ranges[1].endsWith("0/25, 0/25)"));
        QCOMPARE(GetVipLi()->GetCurrentCompoDuration(), 0);
    }
}

void TestVipLiColumns::withoutCompoTheDurationReadIs0()
{
    // The duration is read before the composition is looked for: a caller finds it beforehand.
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/24);
    Write("jump", 1, 3);
    GetVipLi()->Compo = nullptr;
    QVERIFY(GetVipLi()->AddFixeColumn(PathOf("jump0001.png")));
    QCOMPARE(GetVipLi()->Compo, sheet.Comp());
    QCOMPARE(Bottom(sheet).duration, rostrum::Time{});
    QCOMPARE(GetVipLi()->GetCurrentCompoDuration(), 24);
}

void TestVipLiColumns::aDurationBetweenTwoFramesBecomesWhole()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    EditCompo(sheet).duration = { 101, 100 }; // 25.25 frames
    EditCompo(sheet).rate = { 30, 1 };
    Write("jump", 1, 3);
    QVERIFY(GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QCOMPARE(EditCompo(sheet).duration, (rostrum::Time{ 25, 25 }));
    QCOMPARE(Bottom(sheet).duration, (rostrum::Time{ 25, 25 }));
}

void TestVipLiColumns::aSeriesWithoutABlankIsShiftedByOnePlace()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Write("jump", 1, 3);
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("jump0000.png"))); // in the blank's way
    QVERIFY(GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QVERIFY(QByteArray(ImportMessage).startsWith("Echec ecriture image Zero ["));
    QCOMPARE(GetVipLi()->GetSourceLastFrame(), 2); // three drawings, of which the first is image 0
    const rostrum::Item *source = sheet.host.GetProject().Find(Bottom(sheet).source);
    QCOMPARE(source->AsFootage()->files.first(), QStringLiteral("jump0001.png"));
    QCOMPARE(sheet.RemapKeys(Bottom(sheet).id), Keys({ { 0, 0 } }));
}

void TestVipLiColumns::oneUndoGroupIsOneEntryAndUndoneExactly_data()
{
    QTest::addColumn<int>("command");
    QTest::newRow("a new series column") << 0;
    QTest::newRow("a new fixe column") << 1;
    QTest::newRow("a moved column") << 2;
    QTest::newRow("start and end of the exposure") << 3;
    QTest::newRow("footage aligned") << 4;
    QTest::newRow("the sheet's length") << 5;
}

void TestVipLiColumns::oneUndoGroupIsOneEntryAndUndoneExactly()
{
    QFETCH(int, command);
    LibrarySheet sheet(Keys{ { 0, 1 }, { 5, 2 } });
    sheet.AddSeries("run", 8);
    Write("jump", 1, 3);
    const std::function<bool(vipLi &)> commands[] = {
        [&](vipLi &library) { return library.AddSequenceColumn(PathOf("jump0001.png")); },
        [&](vipLi &library) { return library.AddFixeColumn(PathOf("jump0001.png")); },
        [](vipLi &library) { return library.MoveLayer(library.Layer, -1); },
        [](vipLi &library) { return library.SetLayerInOut(3, 11); },
        [](vipLi &library) { return library.CenterFootageLayers(); },
        [](vipLi &library) {
            library.SetCompoDuration(99);
            return true;
        },
    };
    const rostrum::Project before = sheet.host.GetProject();
    GetVipLi()->StartUndoGroup(QStringLiteral("morvex:Command"));
    QVERIFY(commands[command](*GetVipLi()));
    GetVipLi()->EndUndoGroup();

    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>{ "morvex:Command" });
    const rostrum::Project after = sheet.host.GetProject();
    QVERIFY(after != before);
    QVERIFY(sheet.host.GetDocument().Undo());
    QVERIFY(sheet.host.GetProject() == before);
    QVERIFY(sheet.host.GetDocument().Redo());
    QVERIFY(sheet.host.GetProject() == after);
}

// Columns that are not added.

void TestVipLiColumns::withoutItsCompositionNoColumnIsAdded()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Write("jump", 1, 3);
    sheet.EditProject().Edit(sheet.composition)->name = "another";
    const rostrum::Project before = sheet.host.GetProject();
    for (const bool series : { true, false }) {
        vnLog::Instance()->Clear();
        QVERIFY(!(series ? GetVipLi()->AddSequenceColumn(PathOf("jump0001.png"))
                         : GetVipLi()->AddFixeColumn(PathOf("jump0001.png"))));
        QVERIFY2(IsOneErrorLine(Log(), 'B'), Log().constData());
        QVERIFY(sheet.host.GetProject() == before);
    }
    QCOMPARE(QDir(folder->path()).entryList(QDir::Files).size(), 3); // no blank was written
}

void TestVipLiColumns::anEmptyPathAddsNothing()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::Project before = sheet.host.GetProject();
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->AddSequenceColumn(QByteArray()));
    QVERIFY(!GetVipLi()->AddFixeColumn(""));
    QVERIFY(sheet.host.GetProject() == before);
    QCOMPARE(Log(), QByteArray("<END>"));
}

void TestVipLiColumns::whatCannotBeImportedAddsNoColumn()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::Project before = sheet.host.GetProject();
    const AEGP_LayerH current = GetVipLi()->Layer;
    QVERIFY(!GetVipLi()->AddSequenceColumn(PathOf("ghost0001.png")));
    QVERIFY(!GetVipLi()->AddFixeColumn(PathOf("ghost0001.png")));
    QVERIFY(sheet.host.GetProject() == before);
    QCOMPARE(GetVipLi()->Layer, current);
}

void TestVipLiColumns::afterAFailureTheNextTryReusesTheFootage()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    Write("jump", 1, 3);
    sheet.host.FailNext("AEGP_AddLayer");
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
    QCOMPARE(Stack(sheet).size(), 1);
    const int items = sheet.host.GetProject().ItemCount();

    sheet.host.FailNext("AEGP_SetLayerOffset"); // the layer made so far stays
    QVERIFY(!GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QCOMPARE(Stack(sheet).size(), 2);

    QVERIFY(GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QCOMPARE(Stack(sheet).size(), 3);
    QCOMPARE(sheet.host.GetProject().ItemCount(), items);
}

void TestVipLiColumns::aCountThatCannotBeReadLeavesTheOtherColumnsAlone()
{
    // A new column whose place could not be read was taken for one left of the sheet, which is
    // always found; the column that was current before lost its cells.
    const Keys cells{ { 0, 1 }, { 5, 2 } };
    LibrarySheet sheet(cells);
    Write("jump", 1, 3);
    sheet.host.FailEvery("AEGP_GetCompNumLayers");
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->AddSequenceColumn(PathOf("jump0001.png")));
    QVERIFY2(IsOneErrorLine(Log(), 'B'), Log().constData());
    QCOMPARE(sheet.RemapKeys(), cells);
    QCOMPARE(GetVipLi()->Layer, sheet.LayerH());
}

// Order.

void TestVipLiColumns::movingALayer_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("places");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<QVector<int>>("order"); // of the layers 0 to 3
    const QVector<int> asBefore{ 0, 1, 2, 3 };
    QTest::newRow("down by one") << 1 << 1 << true << QVector<int>{ 0, 2, 1, 3 };
    QTest::newRow("up by one") << 2 << -1 << true << QVector<int>{ 0, 2, 1, 3 };
    QTest::newRow("the first down") << 0 << 1 << true << QVector<int>{ 1, 0, 2, 3 };
    QTest::newRow("the last up") << 3 << -1 << true << QVector<int>{ 0, 1, 3, 2 };
    QTest::newRow("the first left: no place") << 0 << -1 << false << asBefore;
    QTest::newRow("the last right: no place") << 3 << 1 << false << asBefore;
    QTest::newRow("by none") << 1 << 0 << true << asBefore;
    QTest::newRow("the last by none") << 3 << 0 << true << asBefore;
    QTest::newRow("to the other end") << 0 << 3 << true << QVector<int>{ 1, 2, 3, 0 };
    QTest::newRow("beyond the bottom: the host's error") << 1 << 3 << false << asBefore;
    QTest::newRow("beyond the top: the host's error") << 2 << -4 << false << asBefore;
    QTest::newRow("to -1, the host's word for the bottom")
        << 1 << -2 << true << QVector<int>{ 0, 2, 3, 1 };
    QTest::newRow("by the largest number") << 2 << 2147483647 << false << asBefore;
    QTest::newRow("by the smallest number") << 2 << -2147483647 - 1 << false << asBefore;
}

void TestVipLiColumns::movingALayer()
{
    QFETCH(int, index);
    QFETCH(int, places);
    QFETCH(bool, moved);
    QFETCH(QVector<int>, order);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.AddSeries("run", 8);
    sheet.AddStill("house.png");
    sheet.AddCamera("camera");
    const LayerIds before = Stack(sheet);
    vnLog::Instance()->Clear();
    QCOMPARE(GetVipLi()->MoveLayer(sheet.LayerH(before[index]), places), moved);
    LayerIds expected;
    for (const int each : order)
        expected << before[each];
    QCOMPARE(Stack(sheet), expected);
    const bool isHostsError = !moved && qAbs(qint64(places)) > 1;
    QCOMPARE(Log().count("-ERR I-"), isHostsError ? 1 : 0);
}

void TestVipLiColumns::aLayerThatIsGoneCannotBeMoved()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.AddSeries("run", 8);
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->MoveLayer(nullptr, 1));
    QCOMPARE(Log(), QByteArray("<END>"));
    sheet.EditProject().RemoveLayer(sheet.composition, sheet.layer);
    QVERIFY(!GetVipLi()->MoveLayer(GetVipLi()->Layer, -1));
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
    QCOMPARE(LastHostError, rostrum::kErrBadHandle);
}

// Exposure.

void TestVipLiColumns::inAndOutPointsAreCut_data()
{
    QTest::addColumn<QVector<qint64>>("times"); // in point and duration, value and scale each
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    using Times = QVector<qint64>;
    QTest::newRow("whole frames") << Times{ 3, 25, 9, 25 } << 3 << 11;
    QTest::newRow("half a frame, where TimeToFrame would give 1")
        << Times{ 1, 50, 4, 25 } << 0 << 3;
    QTest::newRow("12.25 and 7.75 frames") << Times{ 49, 100, 31, 100 } << 12 << 18;
    QTest::newRow("at 30 frames a second") << Times{ 7, 30, 30, 30 } << 5 << 29;
    QTest::newRow("29 frames as 1.16 s") << Times{ 116, 100, 116, 100 } << 29 << 57;
    QTest::newRow("before the composition, toward zero") << Times{ -49, 100, 31, 100 } << -12 << -6;
    QTest::newRow("no length") << Times{ 3, 25, 0, 1 } << 3 << 2;
    QTest::newRow("less than a frame") << Times{ 3, 25, 1, 50 } << 3 << 2;
    QTest::newRow("beyond 32 bits")
        << Times{ 2147483647, 1, 2147483647, 1 } << 2147483647 << 2147483647;
    QTest::newRow("far before the composition")
        << Times{ -2147483647, 1, 0, 1 } << -2147483647 - 1 << -2147483647 - 1;
}

void TestVipLiColumns::inAndOutPointsAreCut()
{
    QFETCH(QVector<qint64>, times);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().inPoint = { qint32(times[0]), quint32(times[1]) };
    sheet.EditLayer().duration = { qint32(times[2]), quint32(times[3]) };
    qint32 first = 77, last = 78;
    QVERIFY(GetVipLi()->GetLayerInOut(first, last));
    QTEST(first, "first");
    QTEST(last, "last");
}

void TestVipLiColumns::settingInAndOutPoints_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("length");
    QTest::newRow("inside") << 3 << 11 << 9;
    QTest::newRow("one frame") << 7 << 7 << 1;
    QTest::newRow("no frame") << 0 << -1 << 0;
    QTest::newRow("before and behind the composition") << -5 << 400 << 406;
    QTest::newRow("beyond 32 bits") << -2147483647 - 1 << 2147483647 << 2147483647;
}

void TestVipLiColumns::settingInAndOutPoints()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, length);
    LibrarySheet sheet(Keys{ { 0, 1 }, { 5, 2 } });
    sheet.EditLayer().offset = { 4, 25 };
    QVERIFY(GetVipLi()->SetLayerInOut(first, last));
    const rostrum::Layer &layer = sheet.Find(sheet.layer);
    QCOMPARE(layer.offset, rostrum::Time{}); // layer time and composition time agree
    QCOMPARE(layer.inPoint, (rostrum::Time{ first, 25 }));
    QCOMPARE(layer.duration, (rostrum::Time{ length, 25 }));
}

void TestVipLiColumns::aLengthBelow0IsTheHostsErrorAndTheOffsetStays()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().offset = { 4, 25 };
    const rostrum::Time before = sheet.Find(sheet.layer).duration;
    vnLog::Instance()->Clear();
    QVERIFY(!GetVipLi()->SetLayerInOut(9, 3));
    QVERIFY2(IsOneErrorLine(Log(), 'I'), Log().constData());
    QCOMPARE(sheet.Find(sheet.layer).duration, before);
    QCOMPARE(sheet.Find(sheet.layer).offset, rostrum::Time{}); // what was written is not undone
}

void TestVipLiColumns::whatIsSetIsRead()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    for (const int first : { 0, 1, 29, 57, 1499 }) {
        for (const int length : { 1, 2, 29, 58, 1500 }) {
            QVERIFY(GetVipLi()->SetLayerInOut(first, first + length - 1));
            qint32 readFirst = -1, readLast = -1;
            QVERIFY(GetVipLi()->GetLayerInOut(readFirst, readLast));
            QCOMPARE(readFirst, first);
            QCOMPARE(readLast, first + length - 1);
        }
    }
}

void TestVipLiColumns::withoutCompoOrLayerNothingReachesTheHost()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    for (const bool compo : { true, false }) {
        GetVipLi()->Compo = compo ? sheet.Comp() : nullptr;
        GetVipLi()->Layer = compo ? nullptr : sheet.LayerH();
        qint32 first = 77, last = 78;
        QVERIFY(!GetVipLi()->GetLayerInOut(first, last));
        QCOMPARE(first, 77);
        QCOMPARE(last, 78);
        QVERIFY(!GetVipLi()->SetLayerInOut(2, 5));
    }
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(Log(), QByteArray("<END>"));
}

// The sheet's length.

void TestVipLiColumns::settingTheDuration_data()
{
    QTest::addColumn<int>("frames");
    for (const int frames : { 0, 1, 29, 1500, 2147483647 })
        QTest::addRow("%d frames", frames) << frames;
}

void TestVipLiColumns::settingTheDuration()
{
    QFETCH(int, frames);
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/24);
    EditCompo(sheet).rate = { 24, 1 };
    GetVipLi()->Compo = nullptr; // it is found by its name
    GetVipLi()->SetCompoDuration(frames);
    QCOMPARE(EditCompo(sheet).duration, (rostrum::Time{ frames, 25 }));
    QCOMPARE(GetVipLi()->GetCurrentCompoDuration(), frames);
}

void TestVipLiColumns::aDurationThatFailsIsNotTold()
{
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/24);
    vnLog::Instance()->Clear();
    GetVipLi()->SetCompoDuration(-1); // the host refuses it
    QCOMPARE(GetVipLi()->GetCurrentCompoDuration(), 24);
    sheet.EditProject().Edit(sheet.composition)->name = "another";
    GetVipLi()->SetCompoDuration(7);
    QCOMPARE(GetVipLi()->GetCurrentCompoDuration(), 24);
    QCOMPARE(Log(), QByteArray("<END>"));
}

// Alignment.

void TestVipLiColumns::footageIsAlignedLeftAndBottom_data()
{
    QTest::addColumn<QSize>("compo");
    QTest::addColumn<QSize>("footage");
    QTest::addColumn<QVector<double>>("anchor");
    QTest::addColumn<QVector<double>>("position");
    using Point = QVector<double>;
    QTest::newRow("even sizes") << QSize(640, 360) << QSize(320, 200) << Point{ 320, 20 }
                                << Point{ 320, 180 };
    QTest::newRow("odd sizes") << QSize(719, 577) << QSize(101, 577) << Point{ 359, 288 }
                               << Point{ 359, 288 };
    QTest::newRow("odd in even") << QSize(640, 360) << QSize(33, 201) << Point{ 320, 21 }
                                 << Point{ 320, 180 };
    QTest::newRow("even in odd") << QSize(641, 361) << QSize(32, 200) << Point{ 320, 19 }
                                 << Point{ 320, 180 };
    QTest::newRow("larger than the composition")
        << QSize(640, 360) << QSize(2000, 1000) << Point{ 320, 820 } << Point{ 320, 180 };
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(1, 1) << Point{ 0, 0 } << Point{ 0, 0 };
}

void TestVipLiColumns::footageIsAlignedLeftAndBottom()
{
    QFETCH(QSize, compo);
    QFETCH(QSize, footage);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    EditCompo(sheet).size = compo;
    sheet.EditFootage().size = footage;
    sheet.EditLayer().position.SetConstant({ 1, 2, 3, 0 });
    sheet.EditLayer().anchorPoint.SetConstant({ 4, 5, 6, 0 });
    sheet.AddStill("house.png"); // 400 by 300
    QVERIFY(GetVipLi()->SetCurrentColumn(0)); // not the one that is aligned last
    const AEGP_LayerH current = GetVipLi()->Layer;
    QVERIFY(GetVipLi()->CenterFootageLayers());

    const rostrum::Layer &layer = sheet.Find(sheet.layer);
    QTEST(Place(layer.anchorPoint), "anchor");
    QTEST(Place(layer.position), "position");
    QCOMPARE(layer.position.Constant()[2], 3.0); // depth stays
    QCOMPARE(layer.anchorPoint.Constant()[2], 6.0);
    for (const rostrum::LayerId each : Stack(sheet)) {
        const rostrum::Layer &placed = sheet.Find(each);
        const QVector<double> anchor = Place(placed.anchorPoint), at = Place(placed.position);
        const int height = sheet.host.GetProject().Find(placed.source)->Dimensions().height();
        QCOMPARE(at[0] - anchor[0], 0.0); // the left edge
        QCOMPARE(at[1] - anchor[1] + height, double(compo.height())); // the bottom edge
    }
    QCOMPARE(GetVipLi()->Layer, current);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 } }));
}

void TestVipLiColumns::otherSourcesAreNotAligned()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::ItemId inner = sheet.EditProject().AddComposition("inner", {});
    LayerIds others{ sheet.EditProject().AddLayer(inner, sheet.composition),
        sheet.AddCamera("camera") };
    for (const auto kind : { rostrum::LayerKind::Light, rostrum::LayerKind::Text })
        others << sheet.EditProject().AddLayerWithoutSource(kind, "x", sheet.composition);
    const rostrum::LayerId solid = sheet.AddSolid("black"); // 50 pixels high; footage to the host
    QVector<QVector<double>> before;
    for (const rostrum::LayerId other : others)
        before << Place(sheet.Find(other).anchorPoint) << Place(sheet.Find(other).position);

    QVERIFY(GetVipLi()->CenterFootageLayers());
    QVector<QVector<double>> after;
    for (const rostrum::LayerId other : others)
        after << Place(sheet.Find(other).anchorPoint) << Place(sheet.Find(other).position);
    QCOMPARE(after, before);
    QCOMPARE(Place(sheet.Find(solid).anchorPoint), QVector<double>({ 320, 180 - 360 + 50 }));
    QCOMPARE(Place(sheet.Find(sheet.layer).anchorPoint), QVector<double>({ 320, 20 }));
}

void TestVipLiColumns::aKeyedPositionGetsItsKeyAtFrame0()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().position.InsertKey({ 4, 25 }, { 10, 20, 30, 0 });
    QVERIFY(GetVipLi()->CenterFootageLayers());
    const rostrum::Stream &position = sheet.Find(sheet.layer).position;
    QCOMPARE(position.KeyCount(), 2);
    QCOMPARE(position.KeyAt(0).time, rostrum::Time{});
    QCOMPARE(position.KeyAt(0).value, (rostrum::StreamValue{ 320, 180, 30, 0 }));
    QCOMPARE(position.KeyAt(1).value, (rostrum::StreamValue{ 10, 20, 30, 0 }));
}

void TestVipLiColumns::aligningStopsAtAHostErrorAndLayerStaysThere()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId top = sheet.AddSeries("run", 8);
    const QVector<double> before = Place(sheet.Find(sheet.layer).anchorPoint);
    QCOMPARE(GetVipLi()->Layer, sheet.LayerH()); // the lower one
    sheet.host.FailNext("AEGP_SetStreamValue");
    QVERIFY(!GetVipLi()->CenterFootageLayers());
    QCOMPARE(GetVipLi()->Layer, sheet.LayerH(top));
    QCOMPARE(Place(sheet.Find(sheet.layer).anchorPoint), before);
}

void TestVipLiColumns::withoutCompoNothingIsAligned()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::Project before = sheet.host.GetProject();
    GetVipLi()->Compo = nullptr;
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    QVERIFY(!GetVipLi()->CenterFootageLayers());
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(Log(), QByteArray("<END>"));
    QVERIFY(sheet.host.GetProject() == before);
}

VN_HOST_TEST_MAIN(TestVipLiColumns)

#include "tst_vipli_columns.moc"
