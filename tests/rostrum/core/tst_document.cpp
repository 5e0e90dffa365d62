#include "CoreTest.h"

#include "core/Document.h"

#include <random>

using rostrum::Composition;
using rostrum::Document;
using rostrum::Footage;
using rostrum::Item;
using rostrum::ItemId;
using rostrum::Layer;
using rostrum::LayerId;
using rostrum::LayerKind;
using rostrum::LayerPtr;
using rostrum::Project;
using rostrum::Stream;
using rostrum::Time;

using Names = QVector<QByteArray>;

class TestDocument : public QObject
{
    Q_OBJECT

private slots:
    void aNewDocumentHasNothingToUndo();
    void aGroupIsOneEntry();
    void groupsNestAndTheOutermostNamesTheEntry();
    void endingAGroupThatWasNotStartedIsRefused();
    void aGroupThatChangesNothingLeavesNoEntry_data();
    void aGroupThatChangesNothingLeavesNoEntry();
    void aGroupThatChangesNothingKeepsWhatCanBeRedone();
    void aChangeForgetsWhatCouldBeRedone();
    void looseChangesFormOneEntryNamedAfterTheFirst();
    void aLooseChangeThatChangesNothingLeavesNoEntry();
    void aGroupClosesTheLooseChangesBeforeIt();
    void aLooseChangeAfterAGroupIsAnEntryOfItsOwn();
    void aGroupLeftOpenIsClosedAndNamed();
    void undoIsRefusedInsideAGroup();
    void undoClosesLooseChangesFirst();
    void undoAndRedoGoBackAndForth();
    void anIdThatWasUndoneIsNeverUsedAgain_data();
    void anIdThatWasUndoneIsNeverUsedAgain();
    void undoLeavesTheViewAlone();
    void historyVersionChangesWithTheListsAlone();
    void replaceForgetsTheHistory();
    void aDocumentMayBeReplacedByItsOwnProject();
    void anEntrySharesTheLayersThatStayed();
    void randomChangesAreUndoneAndRedoneExactly_data();
    void randomChangesAreUndoneAndRedoneExactly();
};

namespace {

/// A document with a composition of 8 seconds, made before its history begins.
struct Opened
{
    Document document;
    ItemId composition = 0;
    ItemId series = 0;

    Opened()
    {
        Project project;
        composition = project.AddComposition("scene", Comp(200));
        series = project.AddFootage("walk", Series(24));
        document.Replace(project);
    }
    const Project &Shown() const { return document.GetProject(); }
    LayerId AddLayer(const QByteArray &what = "add")
    {
        return document.Edit(what).AddLayer(series, composition);
    }
    void Rename(const QByteArray &name, const QByteArray &what = "rename")
    {
        document.Edit(what).Edit(composition)->name = name;
    }
    QByteArray Name() const { return Shown().Find(composition)->name; }
};

/// A copy that shares nothing, so that it stays as it is whatever happens to the original.
Project DeepCopy(const Project &project)
{
    const auto own = [](Stream &stream) {
        for (int i = 0; i < stream.KeyCount(); ++i)
            stream.SetKeyValue(i, rostrum::StreamValue(stream.KeyAt(i).value));
    };
    Project copy = project;
    for (ItemId id = copy.RootFolder(); id; id = copy.NextInWalk(id)) {
        Item *item = copy.Edit(id);
        item->name.detach();
        if (rostrum::Folder *folder = item->AsFolder())
            folder->children.detach();
        Composition *composition = item->AsComposition();
        if (!composition)
            continue;
        for (LayerPtr &layer : composition->layers) {
            layer->name.detach();
            for (const qint32 number : { 0, 1, 2, 3, 4, 7 })
                own(*layer->FindStream(number));
            for (rostrum::LayerEffect &effect : layer->effects) {
                for (Stream &param : effect.params)
                    own(param);
            }
        }
    }
    return copy;
}

/// Changes a project at random; about one change in four changes nothing that can be seen.
class RandomChanges
{
public:
    explicit RandomChanges(quint32 seed) : random(seed) { }

    int Below(int limit) { return static_cast<int>(random() % static_cast<quint32>(limit)); }
    void Change(Project &project)
    {
        switch (Below(4)) {
        case 0:
            return ChangeItems(project);
        case 1:
            return ChangeStack(project);
        case 2:
            return ChangeLayer(project);
        default:
            return ChangeStream(project);
        }
    }

private:
    /// Any item, the root folder included.
    ItemId AnyItem(const Project &project)
    {
        ItemId item = project.RootFolder();
        for (int steps = Below(project.ItemCount()); steps > 0; --steps)
            item = project.NextInWalk(item);
        return item;
    }
    /// A composition that holds a layer, 0 when a few tries met none.
    ItemId AnyStack(const Project &project)
    {
        for (int i = 0; i < 20; ++i) {
            const ItemId item = AnyItem(project);
            const Composition *composition = project.FindComposition(item);
            if (composition && !composition->layers.isEmpty())
                return item;
        }
        return 0;
    }
    LayerId AnyLayer(const Project &project, ItemId composition)
    {
        const QVector<LayerId> ids = LayerIds(project, composition);
        return ids[Below(ids.size())];
    }
    void ChangeItems(Project &project)
    {
        const ItemId at = AnyItem(project);
        switch (Below(8)) {
        case 0:
            project.AddFolder("folder", at); // refused where it is no folder
            return;
        case 1:
        case 2:
            project.AddComposition("composition", Comp(Below(90)), at);
            return;
        case 3:
            project.AddFootage("series", Series(1 + Below(30)), at);
            return;
        case 4:
            project.AddSolid("solid", { { 1 + Below(9), 7 }, {} }, at);
            return;
        case 5:
            project.RemoveItem(Below(3) ? 0 : at);
            return;
        case 6:
            project.Edit(at)->label = static_cast<qint8>(Below(17));
            return;
        default:
            project.Edit(at)->name = QByteArray::number(Below(3));
        }
    }
    void ChangeStack(Project &project)
    {
        const ItemId stack = AnyStack(project);
        const ItemId into = Below(2) && stack ? stack : AnyItem(project);
        switch (Below(6)) {
        case 0:
        case 1:
            project.AddLayer(AnyItem(project), into);
            return;
        case 2:
            project.AddLayerWithoutSource(LayerKind::Camera, "camera", into);
            return;
        default:
            break;
        }
        if (!stack)
            return;
        const LayerId layer = AnyLayer(project, stack);
        if (Below(2))
            project.MoveLayer(stack, layer, Below(6) - 1);
        else if (Below(2))
            project.SetParent(stack, layer, Below(3) ? AnyLayer(project, stack) : 0);
        else
            project.RemoveLayer(stack, layer);
    }
    void ChangeLayer(Project &project)
    {
        const ItemId stack = AnyStack(project);
        Layer *layer = stack ? project.EditLayer(stack, AnyLayer(project, stack)) : nullptr;
        if (!layer)
            return;
        switch (Below(5)) {
        case 0:
            layer->inPoint = { Below(5), 25 };
            return;
        case 1:
            if (layer->duration.scale < 1000) // the same on another scale is no change
                layer->duration = { 2 * layer->duration.value, 2 * layer->duration.scale };
            else
                layer->duration = { Below(99), 25 };
            return;
        case 2:
            layer->offset = { Below(9) - 4, 24 };
            return;
        case 3:
            project.ApplyEffect(stack, layer->id, 1 + Below(4));
            return;
        default:
            if (!layer->effects.isEmpty())
                layer->effects.removeAt(Below(layer->effects.size()));
        }
    }
    void ChangeStream(Project &project)
    {
        const ItemId stack = AnyStack(project);
        Layer *layer = stack ? project.EditLayer(stack, AnyLayer(project, stack)) : nullptr;
        if (!layer)
            return;
        static constexpr qint32 kNumbers[] = { 0, 1, 2, 3, 4, 7 };
        Stream *stream = layer->FindStream(kNumbers[Below(6)]);
        if (!layer->effects.isEmpty() && Below(3) == 0)
            stream = &layer->effects.first().params.first();
        const int key = stream->HasKeys() ? Below(stream->KeyCount()) : -1;
        if (key < 0 || Below(3) == 0)
            stream->InsertKey({ Below(60), Below(2) ? 25u : 24u }, { Below(4) / 2.0, 1, 0, 0 });
        else if (Below(4) == 0)
            stream->DeleteKey(key);
        else if (Below(2))
            stream->SetKeyValue(key, { Below(4) / 2.0, 2, 0, 0 });
        else
            stream->SetKeyInterpolation(
                key, rostrum::Interpolation::Linear, rostrum::Interpolation::Hold);
    }

    std::mt19937 random;
};

/// The layers of a composition by address, the way a history shares them.
QVector<const Layer *> Addresses(const Project &project, ItemId composition)
{
    QVector<const Layer *> addresses;
    for (const LayerPtr &layer : project.FindComposition(composition)->layers)
        addresses << layer.constData();
    return addresses;
}

bool SameView(const rostrum::View &a, const rostrum::View &b)
{
    return a.activeItem == b.activeItem && a.currentTimes == b.currentTimes
        && a.selections == b.selections;
}

} // namespace

void TestDocument::aNewDocumentHasNothingToUndo()
{
    Document document;
    QCOMPARE(document.GetProject(), Project());
    QCOMPARE(document.Undo(), false);
    QCOMPARE(document.Redo(), false);
    QCOMPARE(document.UndoNames(), Names());
    QCOMPARE(document.RedoNames(), Names());
    QCOMPARE(document.IsGroupOpen(), false);
    QCOMPARE(document.CloseLooseEnds(), QByteArray());
}

void TestDocument::aGroupIsOneEntry()
{
    Opened opened;
    const Project before = DeepCopy(opened.Shown());
    opened.document.StartGroup("morvex:EditCell");
    opened.AddLayer("inside");
    opened.Rename("renamed", "inside, too");
    QCOMPARE(opened.document.UndoNames(), Names()); // not before its end
    QVERIFY(opened.document.EndGroup());
    QCOMPARE(opened.document.UndoNames(), Names({ "morvex:EditCell" }));
    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.Shown(), before);
}

void TestDocument::groupsNestAndTheOutermostNamesTheEntry()
{
    Opened opened;
    opened.document.StartGroup("outer");
    opened.document.StartGroup("inner");
    opened.AddLayer();
    QVERIFY(opened.document.EndGroup());
    QCOMPARE(opened.document.IsGroupOpen(), true);
    opened.document.StartGroup("inner again");
    opened.Rename("renamed");
    opened.document.StartGroup("innermost");
    QVERIFY(opened.document.EndGroup());
    QVERIFY(opened.document.EndGroup());
    QVERIFY(opened.document.EndGroup());
    QCOMPARE(opened.document.IsGroupOpen(), false);
    QCOMPARE(opened.document.UndoNames(), Names({ "outer" }));
}

void TestDocument::endingAGroupThatWasNotStartedIsRefused()
{
    Opened opened;
    QCOMPARE(opened.document.EndGroup(), false);
    opened.Rename("loose", "first");
    QCOMPARE(opened.document.EndGroup(), false); // and closes no loose change
    QCOMPARE(opened.document.UndoNames(), Names());
    opened.document.StartGroup("group");
    QCOMPARE(opened.document.EndGroup(), true);
    QCOMPARE(opened.document.EndGroup(), false);
    QCOMPARE(opened.document.IsGroupOpen(), false);
}

void TestDocument::aGroupThatChangesNothingLeavesNoEntry_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("nothing done") << 0;
    QTest::newRow("changed and changed back") << 1;
    QTest::newRow("the same duration on another scale") << 2;
    QTest::newRow("a layer added and removed") << 3;
    QTest::newRow("a key inserted and deleted") << 4;
    QTest::newRow("an item made and removed") << 5;
    QTest::newRow("written to, with the same value") << 6;
}

void TestDocument::aGroupThatChangesNothingLeavesNoEntry()
{
    QFETCH(int, change);
    Opened opened;
    const LayerId layer = opened.AddLayer();
    opened.document.Edit("d").EditLayer(opened.composition, layer)->duration = { 1, 25 };
    opened.document.CloseLooseEnds();
    const Names names = opened.document.UndoNames();
    const Project before = DeepCopy(opened.Shown());

    opened.document.StartGroup("nothing");
    Project &project = opened.document.Edit("what");
    Layer *edited = change ? project.EditLayer(opened.composition, layer) : nullptr;
    if (change == 1) {
        edited->name = "other";
        edited->name.clear();
    } else if (change == 2) {
        edited->duration = { 2, 50 };
    } else if (change == 3) {
        project.RemoveLayer(
            opened.composition, project.AddLayer(opened.series, opened.composition));
    } else if (change == 4) {
        edited->timeRemap.DeleteKey(edited->timeRemap.InsertKey({ 3, 25 }, {}));
    } else if (change == 5) {
        project.RemoveItem(project.AddFolder("folder"));
    } else if (change == 6) {
        edited->position.SetConstant(edited->position.Constant());
    }
    QVERIFY(opened.document.EndGroup());

    QCOMPARE(opened.document.UndoNames(), names);
    QCOMPARE(opened.Shown(), before);
}

void TestDocument::aGroupThatChangesNothingKeepsWhatCanBeRedone()
{
    Opened opened;
    opened.Rename("renamed", "rename");
    QVERIFY(opened.document.Undo());
    opened.document.StartGroup("nothing");
    opened.Rename("scene"); // it has that name
    QVERIFY(opened.document.EndGroup());
    opened.Rename("scene"); // loose, the same
    opened.document.CloseLooseEnds();
    QCOMPARE(opened.document.RedoNames(), Names({ "rename" }));
    QVERIFY(opened.document.Redo());
    QCOMPARE(opened.Name(), QByteArray("renamed"));
}

void TestDocument::aChangeForgetsWhatCouldBeRedone()
{
    Opened opened;
    opened.Rename("renamed", "rename");
    QVERIFY(opened.document.Undo());
    opened.Rename("another", "rename again");
    opened.document.CloseLooseEnds();
    QCOMPARE(opened.document.RedoNames(), Names());
    QCOMPARE(opened.document.Redo(), false);
    QCOMPARE(opened.document.UndoNames(), Names({ "rename again" }));
}

void TestDocument::looseChangesFormOneEntryNamedAfterTheFirst()
{
    Opened opened;
    opened.Rename("a", "first");
    opened.AddLayer("second");
    opened.Rename("b", "third");
    QCOMPARE(opened.document.CloseLooseEnds(), QByteArray()); // no group was left open
    opened.Rename("c", "fourth");
    opened.document.CloseLooseEnds();
    opened.document.CloseLooseEnds();
    QCOMPARE(opened.document.UndoNames(), Names({ "first", "fourth" }));
    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.Name(), QByteArray("b"));
    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.Name(), QByteArray("scene"));
    QCOMPARE(LayerIds(opened.Shown(), opened.composition), QVector<LayerId>());
}

void TestDocument::aLooseChangeThatChangesNothingLeavesNoEntry()
{
    Opened opened;
    opened.Rename("other", "there");
    opened.Rename("scene", "and back");
    opened.document.CloseLooseEnds();
    QCOMPARE(opened.document.UndoNames(), Names());
}

void TestDocument::aGroupClosesTheLooseChangesBeforeIt()
{
    Opened opened;
    opened.Rename("loose", "loose");
    opened.document.StartGroup("group");
    opened.Rename("grouped", "not used");
    QVERIFY(opened.document.EndGroup());
    QCOMPARE(opened.document.UndoNames(), Names({ "loose", "group" }));
    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.Name(), QByteArray("loose"));
}

void TestDocument::aLooseChangeAfterAGroupIsAnEntryOfItsOwn()
{
    Opened opened;
    opened.document.StartGroup("group");
    opened.Rename("grouped");
    QVERIFY(opened.document.EndGroup());
    opened.Rename("loose", "loose");
    opened.document.CloseLooseEnds();
    QCOMPARE(opened.document.UndoNames(), Names({ "group", "loose" }));
}

void TestDocument::aGroupLeftOpenIsClosedAndNamed()
{
    Opened opened;
    opened.document.StartGroup("outer");
    opened.document.StartGroup("inner");
    opened.Rename("renamed");
    QCOMPARE(opened.document.CloseLooseEnds(), QByteArray("outer"));
    QCOMPARE(opened.document.IsGroupOpen(), false);
    QCOMPARE(opened.document.UndoNames(), Names({ "outer" }));
    QCOMPARE(opened.document.EndGroup(), false);
    QCOMPARE(opened.document.CloseLooseEnds(), QByteArray());

    opened.document.StartGroup("empty");
    QCOMPARE(opened.document.CloseLooseEnds(), QByteArray("empty")); // told, but no entry
    QCOMPARE(opened.document.UndoNames(), Names({ "outer" }));
}

void TestDocument::undoIsRefusedInsideAGroup()
{
    Opened opened;
    opened.Rename("first", "first");
    opened.document.CloseLooseEnds();
    opened.Rename("second", "second");
    QVERIFY(opened.document.Undo());
    opened.document.StartGroup("group");
    QCOMPARE(opened.document.Undo(), false);
    QCOMPARE(opened.document.Redo(), false);
    QCOMPARE(opened.Name(), QByteArray("first"));
    QCOMPARE(opened.document.IsGroupOpen(), true);
    QVERIFY(opened.document.EndGroup());
    QCOMPARE(opened.document.UndoNames(), Names({ "first" }));
    QCOMPARE(opened.document.RedoNames(), Names({ "second" }));
}

void TestDocument::undoClosesLooseChangesFirst()
{
    Opened opened;
    opened.Rename("loose", "loose");
    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.Name(), QByteArray("scene"));
    QCOMPARE(opened.document.RedoNames(), Names({ "loose" }));
    opened.AddLayer("add"); // a change after an undo: nothing left to redo
    QCOMPARE(opened.document.Redo(), false);
    QCOMPARE(opened.document.UndoNames(), Names({ "add" }));
}

void TestDocument::undoAndRedoGoBackAndForth()
{
    Opened opened;
    for (const char *name : { "one", "two", "three" }) {
        opened.Rename(name, name);
        opened.document.CloseLooseEnds();
    }
    QVERIFY(opened.document.Undo());
    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.Name(), QByteArray("one"));
    QCOMPARE(opened.document.UndoNames(), Names({ "one" }));
    QCOMPARE(opened.document.RedoNames(), Names({ "three", "two" })); // the next one last
    QVERIFY(opened.document.Redo());
    QCOMPARE(opened.Name(), QByteArray("two"));
    QVERIFY(opened.document.Redo());
    QCOMPARE(opened.document.Redo(), false);
    QCOMPARE(opened.Name(), QByteArray("three"));
    QCOMPARE(opened.document.UndoNames(), Names({ "one", "two", "three" }));
}

void TestDocument::anIdThatWasUndoneIsNeverUsedAgain_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::newRow("undo") << QByteArray("U");
    QTest::newRow("undo, redo, undo") << QByteArray("URU");
    QTest::newRow("undone twice over") << QByteArray("UU");
    QTest::newRow("there and back often") << QByteArray("UURRURUU");
}

void TestDocument::anIdThatWasUndoneIsNeverUsedAgain()
{
    QFETCH(QByteArray, way);
    Opened opened;
    opened.AddLayer("kept or not");
    opened.document.CloseLooseEnds();
    opened.document.StartGroup("gone");
    const LayerId stale = opened.AddLayer();
    const ItemId staleItem = opened.document.Edit("i").AddFolder("folder");
    const auto staleEffect = opened.document.Edit("e").ApplyEffect(opened.composition, stale, 1);
    QVERIFY(opened.document.EndGroup());
    for (const char step : way)
        QVERIFY(step == 'U' ? opened.document.Undo() : opened.document.Redo());

    const LayerId fresh = opened.AddLayer();
    const ItemId freshItem = opened.document.Edit("i").AddFolder("folder");
    const auto freshEffect = opened.document.Edit("e").ApplyEffect(opened.composition, fresh, 1);
    for (const qint32 made : { fresh, freshItem, freshEffect })
        QVERIFY(made > staleEffect && made > staleItem && made > stale);
    QVERIFY(!opened.Shown().FindLayer(opened.composition, stale));
    QVERIFY(!opened.Shown().Find(staleItem));
    QVERIFY(!opened.Shown().FindLayer(opened.composition, fresh)->FindEffect(staleEffect));
}

void TestDocument::historyVersionChangesWithTheListsAlone()
{
    Opened opened;
    Document &document = opened.document;
    int last = document.HistoryVersion();
    const auto moved = [&] { return std::exchange(last, document.HistoryVersion()) != last; };

    document.StartGroup("nothing");
    document.EndGroup();
    QVERIFY(!moved());
    QVERIFY(!document.Undo());
    QVERIFY(!document.Redo());
    QVERIFY(!moved());
    opened.Rename("other");
    QVERIFY(!moved()); // the entry stands once the change is closed
    document.CloseLooseEnds();
    QVERIFY(moved());
    QVERIFY(document.Undo());
    QVERIFY(moved());
    QVERIFY(document.Redo());
    QVERIFY(moved());
    document.Replace(Project());
    QVERIFY(moved());
}

void TestDocument::undoLeavesTheViewAlone()
{
    Opened opened;
    const LayerId layer = opened.AddLayer("add");
    opened.document.CloseLooseEnds();
    opened.document.view.activeItem = opened.composition;
    opened.document.view.currentTimes[opened.composition] = { 7, 25 };
    opened.document.view.selections[opened.composition] = { layer };
    opened.document.CloseLooseEnds();
    QCOMPARE(opened.document.UndoNames(), Names({ "add" })); // looking is no change

    QVERIFY(opened.document.Undo());
    QCOMPARE(opened.document.view.activeItem, opened.composition);
    QCOMPARE(opened.document.view.currentTimes.value(opened.composition), (Time{ 7, 25 }));
    const QVector<LayerId> selected = opened.document.view.selections.value(opened.composition);
    QCOMPARE(selected, QVector<LayerId>({ layer }));
    QVERIFY(!opened.Shown().FindLayer(opened.composition, selected[0])); // stale, and no crash
    QVERIFY(opened.document.Redo());
    QVERIFY(opened.Shown().FindLayer(opened.composition, selected[0]));
}

void TestDocument::replaceForgetsTheHistory()
{
    Opened opened;
    opened.Rename("one", "one");
    opened.document.CloseLooseEnds();
    opened.Rename("two", "two");
    QVERIFY(opened.document.Undo());
    opened.document.StartGroup("left open");
    opened.document.view.activeItem = opened.composition;
    opened.document.path = QStringLiteral("/cut/scene.rostrum");

    Project other;
    other.AddFolder("other");
    opened.document.Replace(other);
    QCOMPARE(opened.Shown(), other);
    QCOMPARE(opened.document.UndoNames(), Names());
    QCOMPARE(opened.document.RedoNames(), Names());
    QCOMPARE(opened.document.IsGroupOpen(), false);
    QCOMPARE(opened.document.Undo(), false);
    QCOMPARE(opened.document.view.activeItem, 0);
    QCOMPARE(opened.document.path, QString());
}

// Replacing by a reference into the document itself left an empty project.
void TestDocument::aDocumentMayBeReplacedByItsOwnProject()
{
    Opened opened;
    opened.AddLayer();
    const Project before = DeepCopy(opened.Shown());
    opened.document.Replace(opened.document.GetProject());
    QCOMPARE(opened.Shown(), before);
    QCOMPARE(opened.document.UndoNames(), Names());
}

void TestDocument::anEntrySharesTheLayersThatStayed()
{
    const int count = 30001;
    Project project;
    const ItemId series = project.AddFootage("walk", Series(24));
    const ItemId composition = project.AddComposition("scene", Comp(200));
    const ItemId aside = project.AddComposition("aside", Comp(50));
    for (int i = 0; i < count; ++i)
        project.AddLayer(series, composition);
    Document document;
    document.Replace(project);
    project = Project();
    const QVector<const Layer *> before = Addresses(document.GetProject(), composition);
    const Item *asideBefore = document.GetProject().Find(aside);
    const int touched = 12345;
    const LayerId layer = before[touched]->id;

    document.StartGroup("key");
    document.Edit("key").EditLayer(composition, layer)->timeRemap.InsertKey({ 3, 25 }, {});
    QVERIFY(document.EndGroup());

    QVector<const Layer *> after = Addresses(document.GetProject(), composition);
    QVERIFY(after[touched] != before[touched]);
    const Layer *changed = after[touched];
    after[touched] = before[touched];
    QVERIFY(after == before); // one layer was copied, the others are the entry's as well
    QCOMPARE(document.GetProject().Find(aside), asideBefore);

    QVERIFY(document.Undo()); // what comes back is the very project that the entry kept
    QVERIFY(Addresses(document.GetProject(), composition) == before);
    QVERIFY(document.Redo());
    QCOMPARE(document.GetProject().FindLayer(composition, layer), changed);
}

void TestDocument::randomChangesAreUndoneAndRedoneExactly_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestDocument::randomChangesAreUndoneAndRedoneExactly()
{
    QFETCH(quint32, seed);
    RandomChanges random(seed);
    Document document;
    document.view.activeItem = 4711;
    document.view.currentTimes[4711] = { 3, 25 };
    document.view.selections[4711] = { 5, 6 };
    const rostrum::View view = document.view;
    QVector<Project> states{ DeepCopy(document.GetProject()) }; // what undo and redo have to show
    Names names;
    int at = 0; // the state that is shown
    int undone = 0;
    int made = 0;

    for (int step = 0; step < 400; ++step) {
        const int kind = random.Below(4);
        if (kind == 0) {
            QCOMPARE(document.Undo(), at > 0);
            at = qMax(0, at - 1);
            ++undone;
        } else if (kind == 1 && random.Below(2)) {
            QCOMPARE(document.Redo(), at + 1 < states.size());
            at = qMin(at + 1, states.size() - 1);
        } else {
            const QByteArray name = QByteArray::number(step);
            const bool group = random.Below(2);
            if (group)
                document.StartGroup(name);
            for (int changes = random.Below(4); changes >= 0; --changes)
                random.Change(document.Edit(name));
            if (group)
                QVERIFY(document.EndGroup());
            document.CloseLooseEnds();
            if (document.GetProject() != states[at]) {
                states.resize(at + 1); // what could be redone is gone
                names.resize(at);
                states << DeepCopy(document.GetProject());
                names << name;
                ++at;
                ++made;
            }
        }
        QCOMPARE(document.GetProject(), states[at]);
        QCOMPARE(document.UndoNames(), names.mid(0, at));
        QCOMPARE(document.RedoNames().size(), names.size() - at);
        QVERIFY(SameView(document.view, view));
    }

    QVERIFY(undone > 50 && made > 50); // it was no idle run
    while (document.Undo())
        QCOMPARE(document.GetProject(), states[--at]);
    QCOMPARE(at, 0);
    while (document.Redo())
        QCOMPARE(document.GetProject(), states[++at]);
    QCOMPARE(at + 1, states.size());
}

VN_TEST_MAIN(TestDocument)

#include "tst_document.moc"
