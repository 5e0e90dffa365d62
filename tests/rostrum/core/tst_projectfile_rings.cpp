// Projects on disk in which something holds, carries or shows itself.
#include "core/ProjectFile.h"

#include "CoreTest.h"

#include <QFile>
#include <QTemporaryDir>

using namespace rostrum;

class TestProjectFileRings : public QObject
{
    Q_OBJECT

private slots:
    void aRingIsRefused_data();
    void aRingIsRefused();
    void manyLayersOfOneCompositionAreNoRing();
    void aLongChainOfParentsIsNoRing();
};

namespace {

QByteArray ItemText(int id, int parent, const QByteArray &rest)
{
    return "{\"id\":" + QByteArray::number(id) + ",\"parent\":" + QByteArray::number(parent)
        + ",\"name\":\"\",\"label\":0," + rest + "}";
}

QByteArray FolderText(int id, int parent, const QByteArray &children)
{
    return ItemText(id, parent, "\"kind\":\"folder\",\"children\":[" + children + "]");
}

QByteArray CompositionText(int id, const QByteArray &layers)
{
    return ItemText(id, 1,
        "\"kind\":\"composition\",\"size\":[8,6],\"rate\":[25,1],\"duration\":[9,25],"
        "\"background\":[0,0,0],\"layers\":["
            + layers + "]");
}

QByteArray LayerText(int id, int source, int parent = 0)
{
    QByteArray text = "{\"id\":" + QByteArray::number(id) + ",\"kind\":\"source\",\"source\":"
        + QByteArray::number(source) + ",\"parent\":" + QByteArray::number(parent)
        + ",\"name\":\"\",\"label\":0,\"in\":[0,1],\"duration\":[9,25],\"offset\":[0,1],"
          "\"effects\":[]";
    for (const char *stream :
        { "anchorPoint", "position", "scale", "rotation", "opacity", "timeRemap" })
        text += QByteArray(",\"") + stream + "\":{\"value\":[0,0,0,0]}";
    return text + "}";
}

QByteArray ProjectText(const QByteArray &items)
{
    return "{\"format\":\"rostrum project\",\"version\":1,\"nextId\":100,\"items\":[" + items
        + "]}";
}

LoadedProject Load(const QByteArray &text)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.rostrum"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
    file.close();
    return LoadProject(path);
}

} // namespace

void TestProjectFileRings::aRingIsRefused_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QString>("told"); // as the end of the message
    const QByteArray solid = ItemText(9, 1, "\"kind\":\"solid\",\"size\":[1,1],\"color\":[0,0,0]");
    QTest::newRow("two folders in each other") << FolderText(1, 0, "") + "," + FolderText(2, 3, "3")
            + "," + FolderText(3, 2, "2") << QStringLiteral("the folder holds itself");
    QTest::newRow("a folder in itself") << FolderText(1, 0, "") + "," + FolderText(2, 2, "2")
                                        << QStringLiteral("items[1]: the folder holds itself");
    QTest::newRow("the root in a folder") << FolderText(1, 2, "2") + ","
            + FolderText(2, 1, "1") << QStringLiteral("items[1].children: item 1 cannot be in it");
    QTest::newRow("an item in no folder")
        << FolderText(1, 0, "") + "," + FolderText(2, 0, "")
        << QStringLiteral("items[1].parent: the item is not in this folder");
    QTest::newRow("a layer that is its own parent")
        << FolderText(1, 0, "4,9") + "," + CompositionText(4, LayerText(10, 9, 10)) + "," + solid
        << QStringLiteral("items[1].layers[0]: the layer is its own parent");
    QTest::newRow("two layers carry each other") << FolderText(1, 0, "4,9") + ","
            + CompositionText(4, LayerText(10, 9, 11) + "," + LayerText(11, 9, 10)) + ","
            + solid << QStringLiteral("the layer is its own parent");
    QTest::newRow("a composition shows itself")
        << FolderText(1, 0, "4") + "," + CompositionText(4, LayerText(10, 4))
        << QStringLiteral("items[1]: the composition shows itself");
    QTest::newRow("by way of two others")
        << FolderText(1, 0, "4,5,6") + "," + CompositionText(4, LayerText(10, 5)) + ","
            + CompositionText(5, LayerText(11, 6) + "," + LayerText(12, 6)) + ","
            + CompositionText(6, LayerText(13, 4))
        << QStringLiteral("items[1]: the composition shows itself");
}

void TestProjectFileRings::aRingIsRefused()
{
    QFETCH(QByteArray, items);
    QFETCH(QString, told);
    const LoadedProject loaded = Load(ProjectText(items));
    QVERIFY(!loaded.Ok());
    QVERIFY2(loaded.error.endsWith(told), qPrintable(loaded.error));
    QVERIFY(loaded.project == Project());
}

void TestProjectFileRings::manyLayersOfOneCompositionAreNoRing()
{
    const QByteArray items = FolderText(1, 0, "4,5,6") + ","
        + CompositionText(4, LayerText(10, 5) + "," + LayerText(11, 6) + "," + LayerText(12, 5))
        + "," + CompositionText(5, LayerText(13, 6)) + "," + CompositionText(6, "");
    const LoadedProject loaded = Load(ProjectText(items));
    QCOMPARE(loaded.error, QString());
    QCOMPARE(loaded.project.FindComposition(4)->layers.size(), 3);
}

void TestProjectFileRings::aLongChainOfParentsIsNoRing()
{
    QByteArray layers;
    for (int i = 0; i < 80; ++i)
        layers += (i ? "," : "") + LayerText(10 + i, 9, i < 79 ? 11 + i : 0);
    const LoadedProject loaded
        = Load(ProjectText(FolderText(1, 0, "4,9") + "," + CompositionText(4, layers) + ","
            + ItemText(9, 1, "\"kind\":\"solid\",\"size\":[1,1],\"color\":[0,0,0]")));
    QCOMPARE(loaded.error, QString());
    QCOMPARE(loaded.project.FindComposition(4)->layers.size(), 80);
}

VN_TEST_MAIN(TestProjectFileRings)

#include "tst_projectfile_rings.moc"
