#include "LibrarySheet.h"
#include "support/vnLog.h"

/// Cells of a column as hold keys on its time-remap stream.
class TestVipLiCells : public QObject
{
    Q_OBJECT

private slots:
    void aSheetIsOneKeyARun();
    void writingOneCell_data();
    void writingOneCell();
    void aWrittenKeyHoldsBothWaysAndItsNeighboursKeepTheirs();
    void aRunReachesUpToTheNextKey();
    void theFirstWriteOnAStreamWithoutKeysInsertsTheFirstKey();
    void aFrameBeyondTheCompositionIsNotRefused();
    void aFrameOutsideTheLayersBarIsNotRefused();
    void aHandMadeRampReadsBackRoundedAtEachFrame();
    void keysOfAnotherScaleAreFound();
    void aLayerWithAnOffsetKeepsItsFramesInCompositionTime();

    void roundingOfImage29();
    void numbersWhoseDoubleFallsShort();
    void writing28Over29Shows28();
    void a29BesideIsNotTakenFor28_data();
    void a29BesideIsNotTakenFor28();

    void readingWithoutRemapShowsTheLayersOwnTime();
    void readingAStillIsAnOrdinaryFailure();
    void aStrictHostRefusesToReadWithoutRemap();
    void aStaleLayerGivesFalseAndOneLogLine();
    void withoutLayerNothingReachesTheHost();
    void valuesBeyond32BitsStayInsideThem();

    void clearingLeavesOneKeyAtFrame0_data();
    void clearingLeavesOneKeyAtFrame0();
    void findingKeys_data();
    void findingKeys();
    void keysThatDoNotRiseAreToldInTheLog();
    void keysOnOtherStreams();
    void deletingAKeyThatIsNotThereIsTrue();
    void keyMarks();
    void aKeyOnAFrameAbove1499SetsNoMark();
    void keyMarksDescribeOneColumnAtATime();
};

void TestVipLiCells::aSheetIsOneKeyARun()
{
    LibrarySheet sheet(Keys{});
    const QVector<int> column{ 1, 1, 1, 2, 2, 0 };
    for (int frame = 0; frame < column.size(); ++frame)
        QVERIFY(GetVipLi()->SetCellImage(frame, column[frame]));

    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { 3, 2 }, { 5, 0 } }));
    QCOMPARE(sheet.Column(6), column);
    QCOMPARE(sheet.Remap().KeyAt(0).value[0], 1 / 25.0);
    QCOMPARE(sheet.Remap().KeyAt(1).value[0], 2 / 25.0);
}

void TestVipLiCells::writingOneCell_data()
{
    QTest::addColumn<Keys>("before");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("image");
    QTest::addColumn<Keys>("after");

    QTest::newRow("image 5 at 10 between keys at 0 and 20: one new key")
        << Keys{ { 0, 1 }, { 20, 3 } } << 10 << 5 << Keys{ { 0, 1 }, { 10, 5 }, { 20, 3 } };
    QTest::newRow("equal to the run before, on its own key: that key goes, nothing is written")
        << Keys{ { 0, 1 }, { 3, 2 } } << 3 << 1 << Keys{ { 0, 1 } };
    QTest::newRow("frame 0 over an existing key: rewritten")
        << Keys{ { 0, 1 }, { 4, 2 } } << 0 << 7 << Keys{ { 0, 7 }, { 4, 2 } };
    QTest::newRow("equal to the next run: the two join")
        << Keys{ { 0, 1 }, { 20, 3 } } << 10 << 3 << Keys{ { 0, 1 }, { 10, 3 } };
    QTest::newRow("frame 0 takes the next run's image: the two join")
        << Keys{ { 0, 1 }, { 6, 4 } } << 0 << 4 << Keys{ { 0, 4 } };
    QTest::newRow("between two equal runs: all three are one")
        << Keys{ { 0, 1 }, { 5, 2 }, { 6, 1 } } << 5 << 1 << Keys{ { 0, 1 } };
    QTest::newRow("already there: nothing happens")
        << Keys{ { 0, 1 }, { 20, 3 } } << 12 << 1 << Keys{ { 0, 1 }, { 20, 3 } };
    QTest::newRow("already there on a key: nothing happens")
        << Keys{ { 0, 1 }, { 20, 3 } } << 20 << 3 << Keys{ { 0, 1 }, { 20, 3 } };
    QTest::newRow("blank") << Keys{ { 0, 1 } } << 4 << 0 << Keys{ { 0, 1 }, { 4, 0 } };
    QTest::newRow("over a key of another image: rewritten")
        << Keys{ { 0, 1 }, { 8, 2 }, { 9, 3 } } << 8 << 6 << Keys{ { 0, 1 }, { 8, 6 }, { 9, 3 } };
    QTest::newRow("before the first key")
        << Keys{ { 5, 2 } } << 2 << 4 << Keys{ { 2, 4 }, { 5, 2 } };
}

void TestVipLiCells::writingOneCell()
{
    QFETCH(Keys, before);
    QFETCH(int, frame);
    QFETCH(int, image);
    LibrarySheet sheet(before);
    QVERIFY(GetVipLi()->SetCellImage(frame, image));
    QTEST(sheet.RemapKeys(), "after");
    qint32 read = -1;
    QVERIFY(GetVipLi()->GetCellImage(frame, read));
    QCOMPARE(read, image);
}

void TestVipLiCells::aWrittenKeyHoldsBothWaysAndItsNeighboursKeepTheirs()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 20, 3 } });
    rostrum::Stream &stream = sheet.EditRemap();
    for (int key = 0; key < 2; ++key)
        stream.SetKeyInterpolation(
            key, rostrum::Interpolation::Linear, rostrum::Interpolation::Bezier);

    QVERIFY(GetVipLi()->SetCellImage(10, 5));

    const rostrum::Stream &written = sheet.Remap();
    QCOMPARE(written.KeyCount(), 3);
    QCOMPARE(int(written.KeyAt(0).out), int(rostrum::Interpolation::Bezier));
    QCOMPARE(int(written.KeyAt(1).in), int(rostrum::Interpolation::Hold));
    QCOMPARE(int(written.KeyAt(1).out), int(rostrum::Interpolation::Hold));
    QCOMPARE(int(written.KeyAt(2).in), int(rostrum::Interpolation::Linear));
}

void TestVipLiCells::aRunReachesUpToTheNextKey()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 20, 3 } });
    QVERIFY(GetVipLi()->SetCellImage(10, 5));
    QVector<int> expected(10, 1);
    expected += QVector<int>(10, 5);
    expected += QVector<int>(4, 3);
    QCOMPARE(sheet.Column(24), expected);
}

void TestVipLiCells::theFirstWriteOnAStreamWithoutKeysInsertsTheFirstKey()
{
    LibrarySheet sheet(Keys{});
    QVERIFY(GetVipLi()->SetCellImage(6, 3));
    QCOMPARE(sheet.RemapKeys(), Keys({ { 6, 3 } }));
    // The frames before it show what the host gives before a first key: that key's value.
    QCOMPARE(sheet.Column(8), QVector<int>(8, 3));
}

void TestVipLiCells::aFrameBeyondTheCompositionIsNotRefused()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    const int beyond = sheet.Frames() + 400;
    QVERIFY(GetVipLi()->SetCellImage(beyond, 2));
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { beyond, 2 } }));
}

void TestVipLiCells::aFrameOutsideTheLayersBarIsNotRefused()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditLayer().inPoint = { 5, 25 };
    sheet.EditLayer().duration = { 3, 25 };
    QVERIFY(GetVipLi()->SetCellImage(12, 2));
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { 12, 2 } }));
}

void TestVipLiCells::aHandMadeRampReadsBackRoundedAtEachFrame()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 24, 25 } });
    rostrum::Stream &stream = sheet.EditRemap();
    for (int key = 0; key < 2; ++key)
        stream.SetKeyInterpolation(
            key, rostrum::Interpolation::Linear, rostrum::Interpolation::Linear);
    QVector<int> expected;
    for (int frame = 0; frame <= 24; ++frame)
        expected << frame + 1;
    QCOMPARE(sheet.Column(25), expected);
}

void TestVipLiCells::keysOfAnotherScaleAreFound()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditRemap().InsertKey({ 24, 50 }, { 3 / 25.0, 0, 0, 0 }); // frame 12
    sheet.EditRemap().SetKeyInterpolation(
        1, rostrum::Interpolation::Hold, rostrum::Interpolation::Hold);
    sheet.EditRemap().SetKeyInterpolation(
        0, rostrum::Interpolation::Hold, rostrum::Interpolation::Hold);
    QVERIFY(GetVipLi()->SetCellImage(12, 8));
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { 12, 8 } }));
}

void TestVipLiCells::aLayerWithAnOffsetKeepsItsFramesInCompositionTime()
{
    LibrarySheet sheet(Keys{});
    sheet.EditLayer().offset = { 4, 25 };
    QVERIFY(GetVipLi()->SetCellImage(0, 1));
    QVERIFY(GetVipLi()->SetCellImage(10, 5));
    QCOMPARE(sheet.Remap().KeyAt(1).time, (rostrum::Time{ 6, 25 })); // in layer time
    QCOMPARE(sheet.Column(12), QVector<int>({ 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 5, 5 }));
    QVERIFY(GetVipLi()->HasKey(AEGP_LayerStream_TIME_REMAP, 10));
}

void TestVipLiCells::roundingOfImage29()
{
    LibrarySheet sheet(Keys{ { 0, 29 } });
    QCOMPARE(sheet.Remap().KeyAt(0).value[0], 29 / 25.0);
    qint32 sampled = -1;
    QVERIFY(GetVipLi()->GetCellImage(3, sampled));
    QCOMPARE(sampled, 29);
    qint32 held = -1;
    const StreamHandle stream(AEGP_LayerStream_TIME_REMAP);
    QVERIFY(GetVipLi()->GetKeyImage(stream.Handle(), 0, held));
    QCOMPARE(held, 28);
}

void TestVipLiCells::numbersWhoseDoubleFallsShort()
{
    // The cut reading of these keys is one below the image, of all others up to 255 it is the image.
    const QVector<int> shortOnes{ 29, 57, 58, 113, 114, 115, 116, 201, 203, 205, 207, 226, 228, 230,
        232, 251, 253, 255 };
    for (int image = 0; image <= 255; ++image) {
        LibrarySheet sheet(Keys{ { 0, image } });
        const StreamHandle stream(AEGP_LayerStream_TIME_REMAP);
        qint32 held = -1;
        QVERIFY(GetVipLi()->GetKeyImage(stream.Handle(), 0, held));
        QCOMPARE(held, shortOnes.contains(image) ? image - 1 : image);

        // Writing such an image again inserts a key; the cells shown are right all the same.
        QVERIFY(GetVipLi()->SetCellImage(7, image));
        QCOMPARE(sheet.Remap().KeyCount(), shortOnes.contains(image) ? 2 : 1);
        QCOMPARE(sheet.Column(9), QVector<int>(9, image));
    }
}

void TestVipLiCells::writing28Over29Shows28()
{
    LibrarySheet sheet(Keys{ { 0, 29 } });
    QVERIFY(GetVipLi()->SetCellImage(4, 28));
    QCOMPARE(sheet.Column(6), QVector<int>({ 29, 29, 29, 29, 28, 28 }));
}

void TestVipLiCells::a29BesideIsNotTakenFor28_data()
{
    QTest::addColumn<Keys>("before");
    QTest::addColumn<int>("frame");
    QTest::addColumn<Keys>("after");
    QTest::newRow("before: the key at the frame stays")
        << Keys{ { 0, 29 }, { 3, 2 } } << 3 << Keys{ { 0, 29 }, { 3, 28 } };
    QTest::newRow("after: the next key stays")
        << Keys{ { 0, 1 }, { 6, 29 } } << 3 << Keys{ { 0, 1 }, { 3, 28 }, { 6, 29 } };
}

void TestVipLiCells::a29BesideIsNotTakenFor28()
{
    QFETCH(Keys, before);
    QFETCH(int, frame);
    LibrarySheet sheet(before);
    QVERIFY(GetVipLi()->SetCellImage(frame, 28));
    QTEST(sheet.RemapKeys(), "after");
}

void TestVipLiCells::readingWithoutRemapShowsTheLayersOwnTime()
{
    LibrarySheet sheet(Keys{});
    QCOMPARE(sheet.Column(4), QVector<int>({ 0, 1, 2, 3 }));
}

void TestVipLiCells::readingAStillIsAnOrdinaryFailure()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.AddStill("house.png");
    QVERIFY(GetVipLi()->SetCurrentColumn(0));
    qint32 image = 77;
    QVERIFY(!GetVipLi()->GetCellImage(2, image));
    QCOMPARE(image, 77);
    QVERIFY(!GetVipLi()->SetCellImage(2, 5));
    QVERIFY(sheet.host.Complaints().isEmpty());
}

void TestVipLiCells::aStrictHostRefusesToReadWithoutRemap()
{
    LibrarySheet sheet(Keys{});
    sheet.host.strictTimeRemap = true;
    qint32 image = 77;
    QVERIFY(!GetVipLi()->GetCellImage(2, image));
    QCOMPARE(image, 77);
    QVERIFY(!GetVipLi()->SetCellImage(2, 5));
    QCOMPARE(sheet.Remap().KeyCount(), 0);
}

void TestVipLiCells::aStaleLayerGivesFalseAndOneLogLine()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    sheet.EditProject().RemoveLayer(sheet.composition, sheet.layer);
    vnLog::Instance()->Clear();
    qint32 image = 77;
    QVERIFY(!GetVipLi()->GetCellImage(2, image));
    QCOMPARE(image, 77);
    QCOMPARE(QByteArray(vnLog::Instance()->Text()).count("-ERR I- line "), 1);
    QVERIFY(QByteArray(vnLog::Instance()->Text()).contains("file(morvex/vnAE/vipLi_cells.cpp)"));
    QVERIFY(!GetVipLi()->SetCellImage(2, 5));
    QVERIFY(!GetVipLi()->HasKey(AEGP_LayerStream_POSITION, 2));
}

void TestVipLiCells::withoutLayerNothingReachesTheHost()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    GetVipLi()->Layer = nullptr;
    vnLog::Instance()->Clear();
    sheet.host.GetTrace().Start();
    qint32 image = 77;
    QVERIFY(!GetVipLi()->GetCellImage(2, image));
    QVERIFY(!GetVipLi()->SetCellImage(2, 5));
    GetVipLi()->ClearCells(0);
    QVERIFY(!GetVipLi()->AddKey(1, 3));
    QVERIFY(!GetVipLi()->DeleteKey(1, 3));
    QVERIFY(!GetVipLi()->HasKey(1, 3));
    QVERIFY(!GetVipLi()->MarkStreamKeys(1, 1));
    QCOMPARE(sheet.host.GetTrace().Entries().size(), 0);
    QCOMPARE(vnLog::Instance()->Text(), "<END>");
}

void TestVipLiCells::valuesBeyond32BitsStayInsideThem()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    qint32 image = 0;
    sheet.EditRemap().SetKeyValue(0, { 1e300, 0, 0, 0 });
    QVERIFY(GetVipLi()->GetCellImage(2, image));
    QCOMPARE(image, 2147483647);
    sheet.EditRemap().SetKeyValue(0, { -1e300, 0, 0, 0 });
    QVERIFY(GetVipLi()->GetCellImage(2, image));
    QCOMPARE(image, -2147483647 - 1);
    sheet.EditRemap().SetKeyValue(0, { qQNaN(), 0, 0, 0 });
    QVERIFY(GetVipLi()->GetCellImage(2, image));
    QCOMPARE(image, 0);
}

void TestVipLiCells::clearingLeavesOneKeyAtFrame0_data()
{
    QTest::addColumn<Keys>("before");
    QTest::addColumn<int>("image");
    QTest::addColumn<Keys>("after");
    QTest::newRow("keys on a run") << Keys{ { 0, 1 }, { 3, 2 }, { 9, 4 } } << 0 << Keys{ { 0, 0 } };
    QTest::newRow("no key at frame 0") << Keys{ { 3, 2 }, { 9, 4 } } << 5 << Keys{ { 0, 5 } };
    QTest::newRow("frame 0 shows the image through a later key: that key goes as well")
        << Keys{ { 3, 2 } } << 2 << Keys{};
    QTest::newRow("no keys, image 0 is what it shows: still none") << Keys{} << 0 << Keys{};
    QTest::newRow("no keys, another image") << Keys{} << 1 << Keys{ { 0, 1 } };
}

void TestVipLiCells::clearingLeavesOneKeyAtFrame0()
{
    QFETCH(Keys, before);
    QFETCH(int, image);
    LibrarySheet sheet(before);
    GetVipLi()->ClearCells(image);
    QTEST(sheet.RemapKeys(), "after");
}

void TestVipLiCells::findingKeys_data()
{
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<int>("frame");
    QTest::addColumn<QVector<int>>("found"); // at, before, after
    const Keys three{ { 2, 1 }, { 7, 2 }, { 11, 3 } };
    QTest::newRow("no keys") << Keys{} << 4 << QVector<int>{ -1, -1, -1 };
    QTest::newRow("before all") << three << 1 << QVector<int>{ -1, -1, 0 };
    QTest::newRow("on the first") << three << 2 << QVector<int>{ 0, -1, 1 };
    QTest::newRow("between") << three << 9 << QVector<int>{ -1, 1, 2 };
    QTest::newRow("on the second") << three << 7 << QVector<int>{ 1, 0, 2 };
    QTest::newRow("on the last") << three << 11 << QVector<int>{ 2, 1, -1 };
    QTest::newRow("behind all") << three << 50 << QVector<int>{ -1, 2, -1 };
}

void TestVipLiCells::findingKeys()
{
    QFETCH(Keys, keys);
    QFETCH(int, frame);
    LibrarySheet sheet(keys);
    const StreamHandle stream(AEGP_LayerStream_TIME_REMAP);
    qint32 at = 8, before = 8, after = 8;
    QVERIFY(GetVipLi()->FindKeys(stream.Handle(), frame, at, before, after));
    QTEST(QVector<int>({ at, before, after }), "found");
}

void TestVipLiCells::keysThatDoNotRiseAreToldInTheLog()
{
    LibrarySheet sheet(Keys{});
    rostrum::Stream &stream = sheet.EditRemap();
    stream.InsertKey({ -5, 25 }, { 0, 0, 0, 0 }); // below -1, with which the first is compared
    stream.InsertKey({ 299, 1000 }, { 0, 0, 0, 0 }); // rounds to frame 7, like the one after it
    stream.InsertKey({ 7, 25 }, { 0, 0, 0, 0 });
    vnLog::Instance()->Clear();
    const StreamHandle handle(AEGP_LayerStream_TIME_REMAP);
    qint32 at, before, after;
    QVERIFY(GetVipLi()->FindKeys(handle.Handle(), 7, at, before, after));
    QCOMPARE(vnLog::Instance()->Text(), "\r\nCles non sequentielles !!!<END>");
    QCOMPARE(at, 2); // of two keys that round to one frame the later one wins
    QCOMPARE(before, 0);
}

void TestVipLiCells::keysOnOtherStreams()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    QVERIFY(!GetVipLi()->HasKey(AEGP_LayerStream_POSITION, 6));
    QVERIFY(GetVipLi()->AddKey(AEGP_LayerStream_POSITION, 6));
    QVERIFY(GetVipLi()->HasKey(AEGP_LayerStream_POSITION, 6));
    QVERIFY(!GetVipLi()->HasKey(AEGP_LayerStream_POSITION, 5));
    QVERIFY(!GetVipLi()->HasKey(AEGP_LayerStream_SCALE, 6));
    QVERIFY(GetVipLi()->AddKey(AEGP_LayerStream_POSITION, 6)); // it stands there already
    QCOMPARE(sheet.Find(sheet.layer).position.KeyCount(), 1);
    QVERIFY(GetVipLi()->DeleteKey(AEGP_LayerStream_POSITION, 6));
    QCOMPARE(sheet.Find(sheet.layer).position.KeyCount(), 0);
    QVERIFY(!GetVipLi()->AddKey(/*streamNumber=*/6, 3)); // the host has no such stream
}

void TestVipLiCells::deletingAKeyThatIsNotThereIsTrue()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 4, 2 } });
    QVERIFY(GetVipLi()->DeleteKey(AEGP_LayerStream_TIME_REMAP, 3));
    QCOMPARE(sheet.RemapKeys(), Keys({ { 0, 1 }, { 4, 2 } }));
}

void TestVipLiCells::keyMarks()
{
    LibrarySheet sheet(Keys{ { 0, 1 }, { 4, 2 } });
    vipLi *library = GetVipLi();
    QVERIFY(library->AddKey(AEGP_LayerStream_POSITION, 3));
    QVERIFY(library->AddKey(AEGP_LayerStream_SCALE, 3));
    QVERIFY(library->AddKey(AEGP_LayerStream_ROTATION, 3));
    QVERIFY(library->AddKey(AEGP_LayerStream_SCALE, 9));
    QVERIFY(library->AddKey(AEGP_LayerStream_OPACITY, 11));
    QVERIFY(library->UpdateKeyMarks());
    QCOMPARE(int(library->GetKeyMarks(3)), 7);
    QCOMPARE(int(library->GetKeyMarks(9)), 2);
    QCOMPARE(int(library->GetKeyMarks(4)), 0); // the cells' own keys are not marked
    QCOMPARE(int(library->GetKeyMarks(11)), 0); // nor is opacity
}

void TestVipLiCells::aKeyOnAFrameAbove1499SetsNoMark()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    vipLi *library = GetVipLi();
    QVERIFY(library->AddKey(AEGP_LayerStream_POSITION, 1499));
    QVERIFY(library->AddKey(AEGP_LayerStream_POSITION, 1500));
    sheet.EditLayer().position.InsertKey({ -30, 25 }, { 0, 0, 0, 0 });
    QVERIFY(library->UpdateKeyMarks());
    QCOMPARE(int(library->GetKeyMarks(1499)), 1);
    QCOMPARE(int(library->GetKeyMarks(1500)), 0);
    QCOMPARE(int(library->GetKeyMarks(-30)), 0);
}

void TestVipLiCells::keyMarksDescribeOneColumnAtATime()
{
    LibrarySheet sheet(Keys{ { 0, 1 } });
    vipLi *library = GetVipLi();
    QVERIFY(library->AddKey(AEGP_LayerStream_POSITION, 3));
    library->UpdateKeyMarks();
    sheet.AddSeries("run", 8); // on top: column 0
    QVERIFY(library->SetCurrentColumn(0));
    QCOMPARE(int(library->GetKeyMarks(3)), 1); // stale until it is built again
    library->UpdateKeyMarks();
    QCOMPARE(int(library->GetKeyMarks(3)), 0);
}

VN_HOST_TEST_MAIN(TestVipLiCells)

#include "tst_vipli_cells.moc"
