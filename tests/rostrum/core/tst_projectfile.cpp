#include "core/ProjectFile.h"

#include "CoreTest.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <functional>
#include <limits>

using namespace rostrum;

namespace {

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void Put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// A layer whose every member differs from its start.
void Fill(Layer *layer)
{
    layer->name = "calque é";
    layer->inPoint = Time{ -3, 25 };
    layer->duration = Time{ 17, 24 };
    layer->offset = Time{ 1001, 30000 };
    layer->anchorPoint.SetConstant({ 1.5, -2.25, 3, 4 });
    layer->position.InsertKey(Time{ 1, 25 }, { 0.1, 0.2, 0.3, 0 });
    layer->position.InsertKey(Time{ 7, 50 }, { 1e300, -5e-324, 1.0 / 3, 0 });
    layer->position.SetKeyInterpolation(0, Interpolation::Bezier, Interpolation::Hold);
    layer->scale.SetConstant({ 120, 80, 100, 0 });
    layer->rotation.SetConstant({ -720.125, 0, 0, 0 });
    layer->opacity.InsertKey(Time{ -2147483647 - 1, 4294967295U }, { 50, 0, 0, 0 });
    layer->opacity.InsertKey(Time{ 2147483647, 1 }, { 51, 0, 0, 0 });
    for (int image = 0; image < 30; ++image) {
        const int key = layer->timeRemap.InsertKey(Time{ image, 25 }, { image / 25.0, 0, 0, 0 });
        layer->timeRemap.SetKeyInterpolation(key, Interpolation::Hold, Interpolation::Hold);
    }
}

/// A project with every kind of item, layer, stream and effect.
Project MakeProject(const QString &drawings)
{
    Project project;
    const ItemId folder = project.AddFolder("plans");
    const ItemId inner = project.AddFolder("décors", folder);
    Footage series = Series(4);
    series.folder = drawings;
    series.numbers = { 0, 1, 1, 12 }; // a gap, and two files of one number
    series.rate = Rate{ 24000, 1001 };
    Footage still = Still();
    still.folder = drawings + QStringLiteral("/fonds été");
    const ItemId seriesItem = project.AddFootage("walk[0-3].png", series, inner);
    const ItemId stillItem = project.AddFootage("decor", still);
    project.Edit(stillItem)->label = 16;
    Solid solid;
    solid.size = QSize(33, 21);
    solid.color = Color{ 0.1, 0.7, 1 };
    const ItemId solidItem = project.AddSolid("noir", solid, folder);
    const ItemId nested = project.AddComposition("nested", Comp(12), inner);
    project.AddLayer(seriesItem, nested);
    Composition made = Comp(100, QSize(641, 479));
    made.rate = Rate{ 30000, 1001 };
    made.background = Color{ 0.25, 1.0 / 3, 0 };
    const ItemId scene = project.AddComposition("scene", made);
    const LayerId lowest = project.AddLayer(stillItem, scene);
    project.AddLayer(solidItem, scene);
    project.AddLayer(nested, scene);
    const LayerId drawn = project.AddLayer(seriesItem, scene);
    for (const LayerKind kind : { LayerKind::Camera, LayerKind::Light, LayerKind::Text })
        project.AddLayerWithoutSource(kind, "other", scene);
    project.SetParent(scene, drawn, lowest);
    for (const EffectInfo &effect : InstalledEffects())
        project.ApplyEffect(scene, drawn, effect.key);
    Layer *layer = project.EditLayer(scene, drawn);
    Fill(layer);
    layer->label = 7;
    layer->effects[1].params[2].InsertKey(Time{ 2, 25 }, { -12.5, 0, 0, 0 });
    layer->effects[3].params[0].SetConstant({ 7, 0, 0, 0 });
    return project;
}

} // namespace

class TestProjectFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void anEmptyProjectComesBack();
    void everyKindOfThingComesBackAsItWas();
    void savedAgainTheBytesAreTheSame();
    void newThingsGetTheIdsTheyWouldHaveGot();
    void aNameComesBackByteForByte_data();
    void aNameComesBackByteForByte();
    void footageIsFoundBesideAMovedProject();
    void footageAtTheRootOfTheDiskComesBack();
    void aMissingDrawingKeepsItsPlace();
    void aValueThatIsNoNumberIsNotSaved_data();
    void aValueThatIsNoNumberIsNotSaved();
    void aFileNameThatIsNoTextIsNotSaved();
    void aFileThatCannotBeWrittenIsTold();
    void whatIsNoProjectIsRefused_data();
    void whatIsNoProjectIsRefused();
    void aMissingFileIsTold();
    void aFolderIsNoProject();
    void aHugeFileIsRefusedUnread();
    void aNewerVersionIsRefused();
    void everyCutFileIsRefused();
    void noChangedByteDoesHarm();
    void damageIsToldWithItsPlace_data();
    void damageIsToldWithItsPlace();
    void whatANewerWriterAddsIsPassedOver();

private:
    QString PathOf(const char *name) const { return folder->filePath(QLatin1String(name)); }

    QScopedPointer<QTemporaryDir> folder;
};

void TestProjectFile::init()
{
    folder.reset(new QTemporaryDir);
}

void TestProjectFile::anEmptyProjectComesBack()
{
    QCOMPARE(SaveProject(Project(), PathOf("a.rostrum")), QString());
    const LoadedProject loaded = LoadProject(PathOf("a.rostrum"));
    QCOMPARE(loaded.error, QString());
    QVERIFY(loaded.project == Project());
}

void TestProjectFile::everyKindOfThingComesBackAsItWas()
{
    const Project project = MakeProject(PathOf("drawings"));
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    const LoadedProject loaded = LoadProject(PathOf("a.rostrum"));
    QCOMPARE(loaded.error, QString());
    QVERIFY(loaded.project == project);
}

void TestProjectFile::savedAgainTheBytesAreTheSame()
{
    QCOMPARE(SaveProject(MakeProject(PathOf("drawings")), PathOf("a.rostrum")), QString());
    const LoadedProject loaded = LoadProject(PathOf("a.rostrum"));
    QCOMPARE(SaveProject(loaded.project, PathOf("b.rostrum")), QString());
    QCOMPARE(Content(PathOf("b.rostrum")), Content(PathOf("a.rostrum")));
}

void TestProjectFile::newThingsGetTheIdsTheyWouldHaveGot()
{
    Project project = MakeProject(PathOf("drawings"));
    project.RemoveItem(project.AddFolder("gone")); // its id must not come back
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    Project loaded = LoadProject(PathOf("a.rostrum")).project;
    QCOMPARE(loaded.AddFolder("new"), project.AddFolder("new"));
}

void TestProjectFile::aNameComesBackByteForByte_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("none") << QByteArray("");
    QTest::newRow("beyond ASCII") << QByteArray("été 動画 🎨");
    QTest::newRow("no UTF-8") << QByteArray("\xe9t\xe9");
    QTest::newRow("cut in the middle of a character") << QByteArray("caf\xc3");
    QTest::newRow("a byte order mark") << QByteArray("\xef\xbb\xbfname");
    QTest::newRow("a zero inside") << QByteArray("a\0b", 3);
    QTest::newRow("what JSON escapes") << QByteArray("\"\\/\b\n\t{}[]");
    QTest::newRow("longer than any host allows") << QByteArray(5000, 'n');
}

void TestProjectFile::aNameComesBackByteForByte()
{
    QFETCH(QByteArray, name);
    Project project;
    const ItemId item = project.AddComposition(name, Comp(10));
    project.AddLayerWithoutSource(LayerKind::Text, name, item);
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    const LoadedProject loaded = LoadProject(PathOf("a.rostrum"));
    QCOMPARE(loaded.error, QString());
    QCOMPARE(loaded.project.Find(item)->name, name);
    QCOMPARE(loaded.project.FindComposition(item)->layers[0]->name, name);
}

void TestProjectFile::footageIsFoundBesideAMovedProject()
{
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("one/cut")));
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("two")));
    Project project;
    Footage beside = Series(2), below = Series(3);
    beside.folder = PathOf("drawings");
    below.folder = PathOf("one/cut/dessins é");
    const ItemId besideItem = project.AddFootage("beside", beside);
    const ItemId belowItem = project.AddFootage("below", below);
    QCOMPARE(SaveProject(project, PathOf("one/a.rostrum")), QString());
    QVERIFY(!Content(PathOf("one/a.rostrum")).contains(folder->path().toUtf8()));

    QVERIFY(QFile::rename(PathOf("one/a.rostrum"), PathOf("two/a.rostrum")));

    const LoadedProject moved = LoadProject(PathOf("two/a.rostrum"));
    QCOMPARE(moved.error, QString());
    QCOMPARE(moved.project.Find(besideItem)->AsFootage()->folder, PathOf("drawings"));
    QCOMPARE(moved.project.Find(belowItem)->AsFootage()->folder, PathOf("two/cut/dessins é"));
}

void TestProjectFile::footageAtTheRootOfTheDiskComesBack()
{
    Project project;
    Footage footage = Still();
    footage.folder = QDir::rootPath();
    const ItemId item = project.AddFootage("root", footage);
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    const LoadedProject loaded = LoadProject(PathOf("a.rostrum"));
    QCOMPARE(loaded.project.Find(item)->AsFootage()->PathOf(0),
        QDir::rootPath() + QStringLiteral("decor.psd"));
}

void TestProjectFile::aMissingDrawingKeepsItsPlace()
{
    Project project;
    Footage footage = Series(3);
    footage.folder = folder->path();
    Put(PathOf("walk0.png"), "0");
    Put(PathOf("walk2.png"), "2"); // walk1.png is not there
    const ItemId item = project.AddFootage("walk", footage);
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    const LoadedProject loaded = LoadProject(PathOf("a.rostrum"));
    QCOMPARE(loaded.error, QString());
    QCOMPARE(loaded.project.Find(item)->AsFootage()->PathOf(1), PathOf("walk1.png"));
    QCOMPARE(loaded.project.Find(item)->AsFootage()->PathOf(2), PathOf("walk2.png"));
}

void TestProjectFile::aValueThatIsNoNumberIsNotSaved_data()
{
    QTest::addColumn<double>("value");
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
}

void TestProjectFile::aValueThatIsNoNumberIsNotSaved()
{
    QFETCH(double, value);
    Project project;
    const ItemId scene = project.AddComposition("scene", Comp(10));
    const LayerId layer = project.AddLayerWithoutSource(LayerKind::Text, "text", scene);
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    const QByteArray before = Content(PathOf("a.rostrum"));
    project.EditLayer(scene, layer)->rotation.SetConstant({ value, 0, 0, 0 });

    const QString error = SaveProject(project, PathOf("a.rostrum"));

    QVERIFY2(
        error.contains(QStringLiteral("items[1].layers[0].rotation.value")), qPrintable(error));
    QCOMPARE(Content(PathOf("a.rostrum")), before);
}

void TestProjectFile::aFileNameThatIsNoTextIsNotSaved()
{
    Project project;
    QCOMPARE(SaveProject(project, PathOf("a.rostrum")), QString());
    const QByteArray before = Content(PathOf("a.rostrum"));
    Footage footage = Series(2);
    footage.files[1] = QStringLiteral("walk") + QChar(0xd800); // half of a surrogate pair
    project.AddFootage("walk", footage);

    const QString error = SaveProject(project, PathOf("a.rostrum"));

    QVERIFY2(error.contains(QStringLiteral("items[1].files[1]: it is no text")), qPrintable(error));
    QCOMPARE(Content(PathOf("a.rostrum")), before);
}

void TestProjectFile::aFileThatCannotBeWrittenIsTold()
{
    const QString path = PathOf("no such folder/a.rostrum");
    const QString start = QStringLiteral("The file \"%1\" cannot be written: ").arg(path);
    const QString error = SaveProject(Project(), path);
    QVERIFY2(error.startsWith(start) && error.size() > start.size(), qPrintable(error));
}

void TestProjectFile::whatIsNoProjectIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    const QString damaged = QStringLiteral("is damaged at ");
    const QString foreign = QStringLiteral("is no project of Rostrum");
    QTest::newRow("nothing") << QByteArray() << QStringLiteral("is empty");
    QTest::newRow("a text") << QByteArray("this is no project\n") << damaged;
    QTest::newRow("zeros") << QByteArray(1000, '\0') << damaged;
    QTest::newRow("another list") << QByteArray("[1, 2, 3]") << foreign;
    QTest::newRow("another object") << QByteArray("{\"a\": 1}") << foreign;
    QTest::newRow("another format") << QByteArray("{\"format\": \"other\"}") << foreign;
    QTest::newRow("a text in its place") << QByteArray("\"rostrum project\"") << damaged;
    QTest::newRow("too deep") << QByteArray(100000, '[') << damaged;
    QTest::newRow("nothing but its name")
        << QByteArray("{\"format\": \"rostrum project\"}") << damaged;
    QTest::newRow("no items") << QByteArray(
        "{\"format\": \"rostrum project\", \"version\": 1, \"nextId\": 2}")
                              << damaged + QStringLiteral("items: it is missing");
}

void TestProjectFile::whatIsNoProjectIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);
    const QString path = PathOf("a.rostrum");
    Put(path, bytes);
    const LoadedProject loaded = LoadProject(path);
    const QString start = QStringLiteral("The project file \"%1\" ").arg(path);
    QVERIFY2(loaded.error.startsWith(start + expected), qPrintable(loaded.error));
    QVERIFY(loaded.project == Project());
}

void TestProjectFile::aMissingFileIsTold()
{
    const QString path = PathOf("dessin é.rostrum");
    QCOMPARE(
        LoadProject(path).error, QStringLiteral("The project file \"%1\" is not there").arg(path));
}

void TestProjectFile::aFolderIsNoProject()
{
    QCOMPARE(LoadProject(folder->path()).error,
        QStringLiteral("The project file \"%1\" is not there").arg(folder->path()));
}

void TestProjectFile::aHugeFileIsRefusedUnread()
{
    const QString path = PathOf("a.rostrum");
    QCOMPARE(SaveProject(Project(), path), QString());
    QFile file(path);
    QVERIFY(file.resize(kLargestProjectFile + 1)); // takes no room on the disk
    QCOMPARE(LoadProject(path).error,
        QStringLiteral("The project file \"%1\" is too large: it has 67108865 bytes, and 67108864 "
                       "are the most")
            .arg(path));
}

void TestProjectFile::aNewerVersionIsRefused()
{
    const QString path = PathOf("a.rostrum");
    Put(path, "{\"format\": \"rostrum project\", \"version\": 2, \"things\": []}");
    QCOMPARE(LoadProject(path).error,
        QStringLiteral("The project file \"%1\" was written by a newer Rostrum: it has version 2, "
                       "this one reads up to version 1")
            .arg(path));
}

void TestProjectFile::everyCutFileIsRefused()
{
    const QString path = PathOf("a.rostrum");
    QCOMPARE(SaveProject(MakeProject(PathOf("drawings")), path), QString());
    const QByteArray whole = Content(path);
    QVERIFY(whole.size() > 3000);
    for (int size = 0; size < whole.size() - 1; ++size) { // the last byte is but a line's end
        const LoadedProject loaded = ParseProject(whole.left(size), path);
        QVERIFY2(!loaded.Ok(), qPrintable(QString::number(size)));
        QVERIFY(loaded.project == Project());
    }
}

void TestProjectFile::noChangedByteDoesHarm()
{
    const QString path = PathOf("a.rostrum");
    QCOMPARE(SaveProject(MakeProject(PathOf("drawings")), path), QString());
    const QByteArray whole = Content(path);
    int refused = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const char other : { '0', '"', '\xff' }) {
            QByteArray changed = whole;
            changed[at] = other;
            const LoadedProject loaded = ParseProject(changed, path);
            refused += loaded.Ok() ? 0 : 1;
            // What is taken in is a project like any other.
            if (loaded.Ok() && at % 101 == 0) // a save waits for the disk
                QCOMPARE(SaveProject(loaded.project, PathOf("b.rostrum")), QString());
        }
    }
    QVERIFY2(refused > whole.size(), qPrintable(QString::number(refused)));
}

namespace {

using Path = QVector<QVariant>; // member names and indices

/// The value with another one in a place of it.
QJsonValue With(const QJsonValue &value, const Path &path, const QJsonValue &other, int at = 0)
{
    if (at == path.size())
        return other;
    if (path[at].type() == QVariant::Int) {
        QJsonArray list = value.toArray();
        list[path[at].toInt()] = With(list.at(path[at].toInt()), path, other, at + 1);
        return list;
    }
    QJsonObject object = value.toObject();
    const QString name = path[at].toString();
    object[name] = With(object.value(name), path, other, at + 1);
    return object;
}

/// "items[4].layers[0].in" as a path.
Path PathTo(const QString &place)
{
    Path path;
    QString text = place;
    text.replace(QLatin1Char('['), QLatin1Char('.')).remove(QLatin1Char(']'));
    for (const QString &part : text.split(QLatin1Char('.'))) {
        bool isIndex = false;
        const int index = part.toInt(&isIndex);
        path << (isIndex ? QVariant(index) : QVariant(part));
    }
    return path;
}

} // namespace

void TestProjectFile::damageIsToldWithItsPlace_data()
{
    // The project's items in their order: 0 the root folder, 1 "plans" with 2 "décors" and 5 a
    // solid, 3 a series and 4 the nested composition in 2, 6 a still, 7 the scene, with its layers:
    // text, light, camera, series, nested, solid, still.
    QTest::addColumn<QString>("place"); // of what is changed
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("told"); // the place and what is said of it
    const auto row
        = [](const char *name, const char *place, const QJsonValue &value, const char *told) {
              QTest::newRow(name) << QString::fromLatin1(place) << value << QString::fromUtf8(told);
          };
    const QJsonObject empty;
    const QJsonArray pair{ 1, 2 };
    row("no next id", "nextId", QStringLiteral("x"), "nextId: it is no whole number");
    row("a next id that is in use", "nextId", 3, "items[2].id: it is no whole number");
    row("version 0", "version", 0, "version: it is no whole number");
    row("items that are no list", "items", empty, "items: it is no list");
    row("an item that is none", "items[2]", 5, "items[2].id: it is missing");
    row("an id twice", "items[2].id", 2, "items[2].id: the id 2 is there twice");
    row("an id with a fraction", "items[2].id", 2.5, "items[2].id: it is no whole number");
    row("an unknown kind", "items[6].kind", QStringLiteral("film"),
        "items[6].kind: there is no such kind of item");
    row("no root", "items[0].kind", QStringLiteral("solid"), "items[0].size: it is missing");
    row("a child that is not there", "items[1].children[0]", 4711,
        "items[1].children: item 4711 cannot be in it");
    row("a child twice", "items[1].children[1]", 3, "items[1].children: item 3 cannot be in it");
    row("a parent that does not hold it", "items[6].parent", 2,
        "items[6].parent: the item is not in this folder");
    row("a label beyond the last", "items[6].label", 17, "items[6].label: it is no whole number");
    row("a name that is a number", "items[6].name", 3, "items[6].name: it is no text");
    row("a name in no base64", "items[6].name",
        QJsonObject{ { QStringLiteral("base64"), QStringLiteral("=%") } },
        "items[6].name.base64: it is not in base64");
    row("a size of one number", "items[6].size", QJsonArray{ 5 }, "items[6].size: it is no width");
    row("a size below 0", "items[6].size[1]", -1, "items[6].size[1]: it is no whole number");
    row("a rate of 0", "items[7].rate[0]", 0, "items[7].rate[0]: it is no whole number");
    row("a time of scale 0", "items[7].duration[1]", 0, "items[7].duration[1]: it is no whole");
    row("a time beyond 32 bits", "items[7].duration[0]", 2147483648.0,
        "items[7].duration[0]: it is no whole number");
    row("a colour of two parts", "items[7].background", pair, "items[7].background: it is no list");
    row("no files", "items[3].files", QJsonArray(), "items[3].files: a series has some files");
    row("a still of two files", "items[6].files",
        QJsonArray{ QStringLiteral("a"), QStringLiteral("b") }, "items[6].files: a series has");
    row("an empty file name", "items[3].files[2]", QString(), "items[3].files[2]: it names no");
    row("numbers that fall", "items[3].numbers[3]", 0, "items[3].numbers[3]: the numbers do not");
    row("too few numbers", "items[3].numbers", QJsonArray{ 1 }, "items[3].numbers: there are not");
    row("a series that is neither", "items[3].series", 1, "items[3].series: it is neither");
    row("layers that are none", "items[7].layers", 3, "items[7].layers: it is no list");
    row("an unknown kind of layer", "items[7].layers[1].kind", QStringLiteral("sound"),
        "items[7].layers[1].kind: there is no such kind of layer");
    row("a layer of nothing", "items[7].layers[3].source", 0,
        "items[7].layers[3].source: the layer cannot show item 0");
    row("a layer of a folder", "items[7].layers[3].source", 2,
        "items[7].layers[3].source: the layer cannot show item 2");
    row("a text with a source", "items[7].layers[0].source", 4,
        "items[7].layers[0].source: the layer cannot show item 4");
    row("a layer's label beyond the last", "items[7].layers[3].label", 17,
        "items[7].layers[3].label: it is no whole number");
    row("a parent that is not there", "items[7].layers[3].parent", 4,
        "items[7].layers[3].parent: there is no layer 4");
    row("a stream that is none", "items[7].layers[3].rotation", 4,
        "items[7].layers[3].rotation.value: it is missing");
    row("a value of two numbers", "items[7].layers[3].rotation.value", pair,
        "items[7].layers[3].rotation.value: it is no list of 4 numbers");
    row("a value with a text", "items[7].layers[3].rotation.value[2]", QStringLiteral("1"),
        "items[7].layers[3].rotation.value: it is no list of 4 numbers");
    row("a key without a value", "items[7].layers[3].position.keys[1]", pair,
        "items[7].layers[3].position.keys[1]: it is no list of 8 numbers");
    row("a key of scale 0", "items[7].layers[3].position.keys[1][1]", 0,
        "items[7].layers[3].position.keys[1]: it is no key");
    row("a key with a fraction", "items[7].layers[3].position.keys[1][0]", 1.5,
        "items[7].layers[3].position.keys[1]: it is no key");
    row("an unknown interpolation", "items[7].layers[3].position.keys[0][3]", 4,
        "items[7].layers[3].position.keys[0]: it is no key");
    row("two keys at one time", "items[7].layers[3].position.keys[1][0]", 2,
        "items[7].layers[3].position.keys[1]: it does not come after");
    row("an effect that is not installed", "items[7].layers[3].effects[0].effect",
        QStringLiteral("glow"),
        "items[7].layers[3].effects[0].effect: the effect \"glow\" is not installed");
    row("an effect without its parameters", "items[7].layers[3].effects[0].params", QJsonArray(),
        "items[7].layers[3].effects[0].params: the effect has 1 parameters");
}

void TestProjectFile::damageIsToldWithItsPlace()
{
    QFETCH(QString, place);
    QFETCH(QJsonValue, value);
    QFETCH(QString, told);
    const QString path = PathOf("a.rostrum");
    QCOMPARE(SaveProject(MakeProject(PathOf("drawings")), path), QString());
    const QJsonObject whole = QJsonDocument::fromJson(Content(path)).object();
    Put(path, QJsonDocument(With(whole, PathTo(place), value).toObject()).toJson());

    const LoadedProject loaded = LoadProject(path);

    const QString start
        = QStringLiteral("The project file \"%1\" is damaged at %2").arg(path, told);
    QVERIFY2(loaded.error.startsWith(start), qPrintable(loaded.error));
    QVERIFY(loaded.project == Project());
}

void TestProjectFile::whatANewerWriterAddsIsPassedOver()
{
    const QString path = PathOf("a.rostrum");
    const Project project = MakeProject(PathOf("drawings"));
    QCOMPARE(SaveProject(project, path), QString());
    QJsonObject whole = QJsonDocument::fromJson(Content(path)).object();
    whole = With(whole, PathTo(QStringLiteral("items[7].layers[3].comment")), 7).toObject();
    Put(path, QJsonDocument(whole).toJson(QJsonDocument::Indented));
    const LoadedProject loaded = LoadProject(path);
    QCOMPARE(loaded.error, QString());
    QVERIFY(loaded.project == project);
}

VN_TEST_MAIN(TestProjectFile)

#include "tst_projectfile.moc"
