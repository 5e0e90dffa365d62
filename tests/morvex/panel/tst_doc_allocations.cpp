#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Undo.h"
#include "panel/Doc.h"
#include "testing/AllocationCount.h"
#include "testing/TestMain.h"

#include <QLineEdit>

/// The panel refreshes its dashboard whenever the host has moved on, mostly with few values new or
/// none: what is shown already is compared where it stands.
class TestDocAllocations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { T_Undo::SetEnabled(false); }
    void theCounterCounts();
    void updateAllWithNothingChangedAllocatesNothing_data();
    void updateAllWithNothingChangedAllocatesNothing();
    void updateAllWithAChangeAllocates();
};

namespace {

struct Dashboard
{
    explicit Dashboard(const QString &name) : dock(nullptr, /*rows=*/2)
    {
        doc.name = name;
        doc.posX = 120;
        doc.typeIndex = 1;
        doc.keyScale = true;
        dock.SetStructs(&doc);
        dock.show();
        QCoreApplication::processEvents();
        dock.UpdateAll();
    }

    /// Blocks that one UpdateAll asks for.
    long Count()
    {
        const long before = testing::AllocationCount();
        dock.UpdateAll();
        return testing::AllocationCount() - before;
    }

    Doc doc;
    KDockPannel dock; // goes before the document
};

} // namespace

void TestDocAllocations::theCounterCounts()
{
    const long before = testing::AllocationCount();
    const QVector<int> block(100, 7);
    QCOMPARE(testing::AllocationCount(), before + 1);
    QCOMPARE(block.last(), 7);
}

void TestDocAllocations::updateAllWithNothingChangedAllocatesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("an empty name") << QString();
    QTest::newRow("a name") << QStringLiteral("walk");
}

void TestDocAllocations::updateAllWithNothingChangedAllocatesNothing()
{
    QFETCH(QString, name);
    Dashboard shown(name);
    for (int tab = 0; tab < shown.dock.count(); ++tab) {
        shown.dock.setCurrentIndex(tab);
        QCoreApplication::processEvents();
        QCOMPARE(shown.Count(), 0L);
    }
}

void TestDocAllocations::updateAllWithAChangeAllocates()
{
    Dashboard shown(QStringLiteral("walk"));
    shown.doc.posX = 121;
    shown.doc.name = QStringLiteral("run");
    QVERIFY(shown.Count() > 0);
    QStringList texts;
    for (const QLineEdit *line : shown.dock.findChildren<QLineEdit *>())
        texts << line->text();
    QVERIFY(texts.contains(QStringLiteral("run")));
    QVERIFY(texts.contains(QStringLiteral("121"))); // the line of its spin box
    QCOMPARE(shown.Count(), 0L);
}

VN_TEST_MAIN(TestDocAllocations)

#include "tst_doc_allocations.moc"
