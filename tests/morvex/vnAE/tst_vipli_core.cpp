#include "LibrarySheet.h"
#include "support/vnLog.h"

#include <QBrush>
#include <QDir>

/// The current composition, columns, frames and times.
class TestVipLiCore : public QObject
{
    Q_OBJECT

private slots:
    void theLibraryStartsWithItsDefaultsAndCallsNoHost();
    void framesFromTimes_data();
    void framesFromTimes();

    void anEmptyCompoNameIsNoCompoWithoutAnyHostCall();
    void aRenamedCompositionIsNotFoundAndCompoKeepsItsHandle();
    void ofTwoCompositionsOfOneNameTheFirstInTheWalkWins();
    void compositionsAreFoundAtAnyDepthByBytesAndCase();
    void namesOf31AndMoreBytes();
    void aNameIsComparedWithTheCompositionsOnShow();
    void aCompositionAtAnotherRateIsReadAt25();
    void activeItems();

    void currentFrame();
    void theCurrentTimeIsWrittenUnlessItStandsThereInTheseNumbers();

    void columnsCountEveryKindOfLayer();
    void exactly30001LayersAre30000Columns();
    void currentColumn();
    void selectingAColumn();
    void aSelectionOfSeveralStaysWhenTheColumnIsTheActiveOne();
    void reversedColumns();
    void layerAtAnIndex();
    void activeColumn();

    void columnNames_data();
    void columnNames();
    void kindsAndLastImages();
    void aFootageOfOneImageIsFixe();
    void sourcePaths();
    void aPathBeyondTheBufferIsNone();
    void labels_data();
    void labels();
    void theLabelIsThatOfTheCurrentColumnWhateverIsPassed();

    void undoGroupsArePassedOn();
    void commandsAreRun();
};

void TestVipLiCore::theLibraryStartsWithItsDefaultsAndCallsNoHost()
{
    const vipLi library;
    QCOMPARE(library.Fps, 25);
    QVERIFY(!library.ReverseColumns);
    QVERIFY(!library.Project && !library.Compo && !library.Layer && !library.BasicSuite);
    QCOMPARE(library.CompoName, "");
    QCOMPARE(library.EfxKeyBlur, -1);
    QCOMPARE(library.EfxKeyFiltre, -1);
    QVERIFY(GetVipLi() == GetVipLi());
}

void TestVipLiCore::framesFromTimes_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<uint>("scale");
    QTest::addColumn<int>("frame");
    QTest::newRow("half a frame rounds up") << 1 << 50u << 1;
    QTest::newRow("12.25 frames") << 49 << 100u << 12;
    QTest::newRow("a frame") << 7 << 25u << 7;
    QTest::newRow("zero") << 0 << 1u << 0;
    QTest::newRow("just below half a frame back is frame 0") << -1 << 1000u << 0;
    QTest::newRow("-1.48 frames is frame 0") << -592 << 10000u << 0;
    QTest::newRow("-1.52 frames is frame -1") << -608 << 10000u << -1;
    QTest::newRow("the largest value") << 2147483647 << 1u << 2147483647;
    QTest::newRow("the largest scale, taken as unsigned") << 2147483647 << 4294967295u << 12;
    QTest::newRow("a scale of 0 stays inside 32 bits") << 5 << 0u << 2147483647;
    QTest::newRow("0 over 0 is frame 0") << 0 << 0u << 0;
}

void TestVipLiCore::framesFromTimes()
{
    QFETCH(int, value);
    QFETCH(uint, scale);
    QTEST(GetVipLi()->TimeToFrame({ value, scale }), "frame");
}

void TestVipLiCore::anEmptyCompoNameIsNoCompoWithoutAnyHostCall()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->CompoName[0] = '\0';
    sheet.host.GetTrace().Start();
    QVERIFY(!GetVipLi()->HasCompo());
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
}

void TestVipLiCore::aRenamedCompositionIsNotFoundAndCompoKeepsItsHandle()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const AEGP_CompH before = GetVipLi()->Compo;
    QVERIFY(before);
    sheet.EditProject().Edit(sheet.composition)->name = "another";
    QVERIFY(!GetVipLi()->FindCompo());
    QCOMPARE(GetVipLi()->Compo, before);
    QVERIFY(GetVipLi()->HasCompo()); // it does not look while there is one
    QCOMPARE(GetVipLi()->GetCompoName(before), QByteArray("another"));
}

void TestVipLiCore::ofTwoCompositionsOfOneNameTheFirstInTheWalkWins()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.SelectCompo("twice");
    const rostrum::ItemId folder = sheet.EditProject().AddFolder("bin");
    const rostrum::ItemId inner = sheet.EditProject().AddComposition("twice", {}, folder);
    sheet.EditProject().AddComposition("twice", {});
    QVERIFY(GetVipLi()->FindCompo());
    QCOMPARE(GetVipLi()->Compo, sheet.host.CompHandle(inner));
}

void TestVipLiCore::compositionsAreFoundAtAnyDepthByBytesAndCase()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::ItemId folder = sheet.EditProject().RootFolder();
    for (int depth = 0; depth < 5; ++depth)
        folder = sheet.EditProject().AddFolder("bin", folder);
    const rostrum::ItemId deep = sheet.EditProject().AddComposition("plan_été", {}, folder);
    sheet.SelectCompo("plan_été");
    QVERIFY(GetVipLi()->FindCompo());
    QCOMPARE(GetVipLi()->Compo, sheet.host.CompHandle(deep));
    for (const char *other : { "Plan_été", "plan_\xe9t\xe9", "plan_ét", "plan_été " }) {
        sheet.SelectCompo(other);
        QVERIFY(!GetVipLi()->FindCompo());
    }
}

void TestVipLiCore::namesOf31AndMoreBytes()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const QByteArray of31(31, 'n');
    const rostrum::ItemId longName = sheet.EditProject().AddComposition(of31 + "and more", {});
    const AEGP_CompH handle = sheet.host.CompHandle(longName);
    QCOMPARE(GetVipLi()->GetCompoName(handle), of31);
    sheet.SelectCompo(of31);
    QVERIFY(GetVipLi()->FindCompo());
    QCOMPARE(GetVipLi()->Compo, handle);
    sheet.EditProject().Edit(longName)->name = QByteArray(30, 'n') + "é"; // the cut spares it
    QCOMPARE(GetVipLi()->GetCompoName(handle), QByteArray(30, 'n'));
    sheet.EditProject().Edit(longName)->name = "";
    QCOMPARE(GetVipLi()->GetCompoName(handle), QByteArray());
    QCOMPARE(GetVipLi()->GetCompoName(nullptr), QByteArray());
}

void TestVipLiCore::aNameIsComparedWithTheCompositionsOnShow()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    vipLi *library = GetVipLi();
    QVERIFY(library->IsNamedAsCompo(library->Compo));
    QVERIFY(!library->IsNamedAsCompo(nullptr)); // it counts as the empty name
    sheet.EditProject().Edit(sheet.composition)->name = "scene 70";
    QVERIFY(!library->IsNamedAsCompo(sheet.Comp()));
    sheet.SelectCompo("scene 70");
    QVERIFY(library->IsNamedAsCompo(sheet.Comp()));
    sheet.SelectCompo("");
    QVERIFY(!library->IsNamedAsCompo(sheet.Comp()));
    QVERIFY(library->IsNamedAsCompo(nullptr));
}

void TestVipLiCore::aCompositionAtAnotherRateIsReadAt25()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Composition film;
    film.rate = { 24, 1 };
    film.duration = film.rate.FrameTime(48); // two seconds
    const rostrum::ItemId compo = sheet.EditProject().AddComposition("film", film);
    const AEGP_CompH handle = sheet.host.CompHandle(compo);
    QCOMPARE(GetVipLi()->GetCompoDuration(handle), 50);
    QCOMPARE(GetVipLi()->GetCompoDuration(nullptr), 0);
}

void TestVipLiCore::activeItems()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    vipLi *library = GetVipLi();
    QVERIFY(library->HasActiveItem());
    QCOMPARE(library->GetActiveCompo(), sheet.host.CompHandle(sheet.composition));
    sheet.host.GetDocument().view.activeItem = sheet.footage;
    vnLog::Instance()->Clear();
    QVERIFY(library->HasActiveItem());
    QVERIFY(!library->GetActiveCompo());
    sheet.host.GetDocument().view.activeItem = 0;
    QVERIFY(!library->HasActiveItem());
    QVERIFY(!library->GetActiveCompo());
    QCOMPARE(vnLog::Instance()->Text(), "<END>"); // the poll does not fill the log
}

void TestVipLiCore::currentFrame()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->SetCurrentFrame(13);
    QCOMPARE(GetVipLi()->GetCurrentFrame(), 13);
    QVERIFY(sheet.UndoNames().isEmpty());
    GetVipLi()->Compo = nullptr;
    QCOMPARE(GetVipLi()->GetCurrentFrame(), 0);
    GetVipLi()->SetCurrentFrame(5);
    QCOMPARE(
        sheet.host.GetDocument().view.currentTimes[sheet.composition], (rostrum::Time{ 13, 25 }));
}

void TestVipLiCore::theCurrentTimeIsWrittenUnlessItStandsThereInTheseNumbers()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Time &now = sheet.host.GetDocument().view.currentTimes[sheet.composition];
    now = { 13, 25 };
    sheet.host.GetTrace().Start();
    GetVipLi()->SetCurrentFrame(13);
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_SetItemCurrentTime"), 0);
    now = { 26, 50 }; // as long, in other numbers
    GetVipLi()->SetCurrentFrame(13);
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_SetItemCurrentTime"), 1);
    QCOMPARE(now.scale, 25u);
}

void TestVipLiCore::columnsCountEveryKindOfLayer()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    QCOMPARE(GetVipLi()->GetColumnCount(), 1);
    sheet.AddStill("house.png");
    rostrum::Project &project = sheet.EditProject();
    project.AddLayer(project.AddSolid("solid", { { 8, 8 }, {} }), sheet.composition);
    project.AddLayer(project.AddComposition("inner", {}), sheet.composition);
    for (const auto kind :
        { rostrum::LayerKind::Camera, rostrum::LayerKind::Light, rostrum::LayerKind::Text })
        project.AddLayerWithoutSource(kind, "plain", sheet.composition);
    QCOMPARE(GetVipLi()->GetColumnCount(), 7);
    GetVipLi()->Compo = nullptr;
    QCOMPARE(GetVipLi()->GetColumnCount(), 0);
}

void TestVipLiCore::exactly30001LayersAre30000Columns()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Composition *compo = sheet.EditProject().EditComposition(sheet.composition);
    while (compo->layers.size() < 30001)
        compo->layers << compo->layers.last();
    QCOMPARE(GetVipLi()->GetColumnCount(), 30000);
}

void TestVipLiCore::currentColumn()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId upper = sheet.AddSeries("run", 8);
    vipLi *library = GetVipLi();
    QVERIFY(library->SetCurrentColumn(0));
    QCOMPARE(library->Layer, sheet.host.LayerHandle(sheet.composition, upper));
    QVERIFY(library->SetCurrentColumn(1));
    QCOMPARE(library->Layer, sheet.host.LayerHandle(sheet.composition, sheet.layer));
    QVERIFY(!library->SetCurrentColumn(2));
    QVERIFY(!library->Layer);
    QVERIFY(library->SetCurrentColumn(1));
    QVERIFY(!library->SetCurrentColumn(-1));
    QVERIFY(!library->Layer);
    QCOMPARE(sheet.host.GetDocument().view.selections[sheet.composition],
        QVector<rostrum::LayerId>{ sheet.layer }); // as it was: nothing is selected by it
}

void TestVipLiCore::selectingAColumn()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId upper = sheet.AddSeries("run", 8);
    vipLi *library = GetVipLi();
    sheet.host.GetDocument().view.selections.clear();
    QVERIFY(library->SelectColumn(1));
    QCOMPARE(sheet.host.GetDocument().view.selections[sheet.composition],
        QVector<rostrum::LayerId>{ sheet.layer });
    const AEGP_LayerH lower = library->Layer;

    QVERIFY(library->SelectColumn(-1)); // true, and nothing changes
    QCOMPARE(library->Layer, lower);
    QVERIFY(!library->SelectColumn(2)); // Layer stays
    QCOMPARE(library->Layer, lower);

    QVERIFY(library->SelectColumn(0)); // the whole selection is replaced
    QCOMPARE(sheet.host.GetDocument().view.selections[sheet.composition],
        QVector<rostrum::LayerId>{ upper });
    QVERIFY(sheet.UndoNames().isEmpty());
}

void TestVipLiCore::aSelectionOfSeveralStaysWhenTheColumnIsTheActiveOne()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId upper = sheet.AddSeries("run", 8);
    QVERIFY(GetVipLi()->SelectColumn(1));
    sheet.host.GetTrace().Start();
    QVERIFY(GetVipLi()->SelectColumn(1));
    QCOMPARE(sheet.host.GetTrace().Count("AEGP_SetSelection"), 0);
    // With two selected no layer is active, so that the selection is replaced.
    sheet.host.GetDocument().view.selections[sheet.composition] = { upper, sheet.layer };
    QVERIFY(GetVipLi()->SelectColumn(1));
    QCOMPARE(sheet.host.GetDocument().view.selections[sheet.composition],
        QVector<rostrum::LayerId>{ sheet.layer });
}

void TestVipLiCore::reversedColumns()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId upper = sheet.AddSeries("run", 8);
    vipLi *library = GetVipLi();
    library->ReverseColumns = true;
    QVERIFY(library->SetCurrentColumn(0));
    QCOMPARE(library->Layer, sheet.host.LayerHandle(sheet.composition, sheet.layer));
    QVERIFY(library->SelectColumn(1));
    QCOMPARE(library->Layer, sheet.host.LayerHandle(sheet.composition, upper));
    QVERIFY(!library->SetCurrentColumn(2));
    library->ReverseColumns = false;
}

void TestVipLiCore::layerAtAnIndex()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId upper = sheet.AddSeries("run", 8);
    vipLi *library = GetVipLi();
    const AEGP_CompH compo = library->Compo;
    QCOMPARE(library->GetLayerAt(compo, 0), sheet.host.LayerHandle(sheet.composition, upper));
    QCOMPARE(library->GetLayerAt(compo, 1), sheet.host.LayerHandle(sheet.composition, sheet.layer));
    QCOMPARE(library->GetLayerIndex(library->GetLayerAt(compo, 1)), 1);
    QVERIFY(!library->GetLayerAt(compo, 2));
    QVERIFY(!library->GetLayerAt(compo, -1));
    QVERIFY(!library->GetLayerAt(nullptr, 0));
}

void TestVipLiCore::activeColumn()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.AddSeries("run", 8);
    sheet.host.GetDocument().view.selections.clear();
    QCOMPARE(GetVipLi()->GetActiveColumnIndex(), 0); // none is active
    QVERIFY(GetVipLi()->SelectColumn(1));
    QCOMPARE(GetVipLi()->GetActiveColumnIndex(), 1);
    GetVipLi()->Compo = nullptr;
    QCOMPARE(GetVipLi()->GetActiveColumnIndex(), 0);
}

void TestVipLiCore::columnNames_data()
{
    QTest::addColumn<QByteArray>("layerName");
    QTest::addColumn<QByteArray>("sourceName");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a series is cut at its bracket")
        << QByteArray() << QByteArray("walk[0001-0040].png") << QStringLiteral("walk");
    QTest::newRow("a file is cut at its point, its digits stay")
        << QByteArray() << QByteArray("walk0001.png") << QStringLiteral("walk0001");
    QTest::newRow("the user's own name keeps its point")
        << QByteArray("walk.v2[a]") << QByteArray("walk.png") << QStringLiteral("walk.v2[a]");
    QTest::newRow("no point, no bracket")
        << QByteArray() << QByteArray("plain") << QStringLiteral("plain");
    QTest::newRow("a leading point") << QByteArray() << QByteArray(".png") << QString();
    QTest::newRow("UTF-8") << QByteArray("décor") << QByteArray("x") << QStringLiteral("décor");
    QTest::newRow("Latin-1 where it is no UTF-8") << QByteArray("d\xe9"
                                                                "cor")
                                                  << QByteArray("x") << QStringLiteral("décor");
    QTest::newRow("more than 31 bytes")
        << QByteArray(40, 'w') << QByteArray("x") << QString(31, QLatin1Char('w'));
}

void TestVipLiCore::columnNames()
{
    QFETCH(QByteArray, layerName);
    QFETCH(QByteArray, sourceName);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().name = layerName;
    sheet.EditProject().Edit(sheet.footage)->name = sourceName;
    QTEST(GetVipLi()->GetColumnName(), "expected");
    GetVipLi()->Layer = nullptr;
    QCOMPARE(GetVipLi()->GetColumnName(), QString());
}

void TestVipLiCore::kindsAndLastImages()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    vipLi *library = GetVipLi();
    QCOMPARE(library->GetSourceLastFrame(), sheet.Images() - 1);
    QCOMPARE(library->GetColumnKind(), kSequence);

    sheet.AddStill("house.png");
    QVERIFY(library->SetCurrentColumn(0));
    QCOMPARE(library->GetSourceLastFrame(), -1); // a still lasts 0, less 1
    QCOMPARE(library->GetColumnKind(), kFixe);

    rostrum::Project &project = sheet.EditProject();
    project.AddLayer(project.AddComposition("inner", {}), sheet.composition);
    QVERIFY(library->SetCurrentColumn(0));
    QCOMPARE(library->GetSourceLastFrame(), 0);
    QCOMPARE(library->GetColumnKind(), kFixe);

    project.AddLayerWithoutSource(rostrum::LayerKind::Camera, "cam", sheet.composition);
    QVERIFY(library->SetCurrentColumn(0));
    QCOMPARE(library->GetSourceLastFrame(), -1);
    QCOMPARE(library->GetColumnKind(), kFixe);

    library->Layer = nullptr;
    QCOMPARE(library->GetSourceLastFrame(), -1);
    QCOMPARE(library->GetColumnKind(), kFixe);
}

void TestVipLiCore::aFootageOfOneImageIsFixe()
{
    LibrarySheet sheet(Keys{ { 0, 1 } }, /*frames=*/24, /*images=*/1);
    QCOMPARE(GetVipLi()->GetSourceLastFrame(), 0);
    QCOMPARE(GetVipLi()->GetColumnKind(), kFixe);
}

void TestVipLiCore::sourcePaths()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Footage &footage = sheet.EditFootage();
    footage.folder = QStringLiteral("/cut/été");
    footage.files[0] = QStringLiteral("walk0001.png");
    QCOMPARE(GetVipLi()->GetSourcePath(),
        QDir::toNativeSeparators(QStringLiteral("/cut/t/walk0001.png")));
    QCOMPARE(sheet.host.OpenHandles(), 0);
    sheet.EditProject().AddLayerWithoutSource(rostrum::LayerKind::Text, "title", sheet.composition);
    QVERIFY(GetVipLi()->SetCurrentColumn(0));
    QCOMPARE(GetVipLi()->GetSourcePath(), QString());
}

void TestVipLiCore::aPathBeyondTheBufferIsNone()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    rostrum::Footage &footage = sheet.EditFootage();
    footage.files[0] = QStringLiteral("a.png");
    footage.folder = QLatin1Char('/') + QString(252, QLatin1Char('f')); // 259 bytes in all
    QCOMPARE(GetVipLi()->GetSourcePath().size(), 259);
    vnLog::Instance()->Clear();
    footage.folder += QLatin1Char('f');
    QCOMPARE(GetVipLi()->GetSourcePath(), QString());
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("-ERR B- line "));
    QCOMPARE(sheet.host.OpenHandles(), 0);
}

void TestVipLiCore::labels_data()
{
    QTest::addColumn<int>("label");
    QTest::addColumn<QColor>("color");
    const QVector<QPair<int, Qt::GlobalColor>> colors{ { 1, Qt::red }, { 2, Qt::yellow },
        { 3, Qt::darkCyan }, { 4, Qt::magenta }, { 5, Qt::cyan }, { 6, Qt::cyan }, { 7, Qt::cyan },
        { 8, Qt::cyan }, { 9, Qt::green }, { 10, Qt::cyan }, { 14, Qt::cyan },
        { 15, Qt::darkYellow }, { 16, Qt::white }, { 0, Qt::white }, { -1, Qt::white } };
    for (const auto &row : colors)
        QTest::newRow(QByteArray::number(row.first).constData()) << row.first << QColor(row.second);
}

void TestVipLiCore::labels()
{
    QFETCH(int, label);
    QFETCH(QColor, color);
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditProject().Edit(sheet.footage)->label = static_cast<qint8>(label);
    QCOMPARE(GetVipLi()->GetLayerLabel(nullptr), label);
    QBrush brush;
    GetVipLi()->GetLabelBrush(brush, nullptr);
    QCOMPARE(brush, QBrush(color, Qt::SolidPattern));
}

void TestVipLiCore::theLabelIsThatOfTheCurrentColumnWhateverIsPassed()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const rostrum::LayerId still = sheet.AddStill("house.png");
    sheet.EditProject().Edit(sheet.footage)->label = 4;
    const AEGP_LayerH other = sheet.host.LayerHandle(sheet.composition, still);
    QVERIFY(GetVipLi()->SetCurrentColumn(1));
    QCOMPARE(GetVipLi()->GetLayerLabel(other), 4);
}

void TestVipLiCore::undoGroupsArePassedOn()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->StartUndoGroup(QStringLiteral("morvex:Réglage"));
    QVERIFY(GetVipLi()->SetCellImage(3, 2));
    GetVipLi()->EndUndoGroup();
    QCOMPARE(sheet.UndoNames(), QVector<QByteArray>{ "morvex:R\xe9glage" });
}

void TestVipLiCore::commandsAreRun()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->StartUndoGroup(QStringLiteral("morvex:EditCell"));
    QVERIFY(GetVipLi()->SetCellImage(3, 2));
    GetVipLi()->EndUndoGroup();
    GetVipLi()->DoCommand(kHostCommandUndo);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 } }));
    GetVipLi()->DoCommand(kHostCommandRedo);
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { 3, 2 } }));
    vnLog::Instance()->Clear();
    GetVipLi()->DoCommand(987654); // no such command
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("-ERR I- line "));
}

VN_HOST_TEST_MAIN(TestVipLiCore)

#include "tst_vipli_core.moc"
