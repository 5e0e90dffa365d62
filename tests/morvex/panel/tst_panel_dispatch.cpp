#include "PanelFixture.h"

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_Var.h"
#include "core/EffectCatalogue.h"
#include "panel/WinGridDataAE.h"

/// What each editor and button of the dashboard does to the host: every field is edited through its
/// own editor, by keys and mouse, and read back from the host's project.
class TestPanelDispatch : public QObject
{
    Q_OBJECT

private slots:
    void aNumberTypedIntoItsEditorStandsInTheHost_data();
    void aNumberTypedIntoItsEditorStandsInTheHost();
    void changingScaleOnAFrameWritesBothComponents();
    void aBoxAddsAKeyAtTheFrameAndTakesItAway_data();
    void aBoxAddsAKeyAtTheFrameAndTakesItAway();
    void tickingOneOfTheTwoKeyPosBoxesAddsTheKeyAndRepaintsBoth();
    void aNumberOnAKeyedStreamGoesToTheFramesKey();
    void onlyTheKeysUpdateTheSheet_data();
    void onlyTheKeysUpdateTheSheet();
    void aChangeOfAnOptionRunsNoHostOperation_data();
    void aChangeOfAnOptionRunsNoHostOperation();
    void noVariableAndOneOfAnotherOwnerDoNothing();
    void theReservedRoutesRun_data();
    void theReservedRoutesRun();
    void theTraceNamesTheCellOnTheLogPage();
    void withoutACurrentColumnAnEditChangesNothing();
    void anEditIsOneUndoStep();
    void aLayerWithoutTheEffectGetsItAtTheFirstValue();
};

namespace {

using rostrum::Layer;
using rostrum::Stream;

constexpr int kCol = 0; // "jump"
constexpr int kRow = 5;

const Stream *StreamOf(const Layer &layer, int number)
{
    const Stream *streams[]
        = { nullptr, &layer.position, &layer.scale, &layer.rotation, &layer.opacity };
    return streams[number];
}

double EffectValue(const Layer &layer, const char *matchName, int param)
{
    for (const auto &effect : layer.effects) {
        if (effect.key == rostrum::FindEffect(matchName)->key)
            return effect.params[param].Constant()[0];
    }
    return -777; // no such effect
}

/// The panel on a cell of the first column.
class OnACell : public PanelFixture
{
public:
    OnACell()
    {
        OpenOnCompo();
        ClickCell(kCol, kRow);
        TakeLog();
    }
    const Layer &Current() const { return LayerOf(kCol); }
};

} // namespace

Q_DECLARE_METATYPE(qint32 Doc::*)
Q_DECLARE_METATYPE(bool Doc::*)
using ReadHost = std::function<double(const rostrum::Layer &)>;
Q_DECLARE_METATYPE(ReadHost)

void TestPanelDispatch::aNumberTypedIntoItsEditorStandsInTheHost_data()
{
    QTest::addColumn<QByteArray>("tab");
    QTest::addColumn<qint32 Doc::*>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<ReadHost>("read");
    const auto row = [](const char *name, const char *tab, qint32 Doc::*field, const char *typed,
                         const ReadHost &read) {
        QTest::newRow(name) << QByteArray(tab) << field << QString::fromLatin1(typed) << read;
    };
    const auto stream = [](int number, std::size_t component) -> ReadHost {
        return [=](const Layer &layer) { return StreamOf(layer, number)->Constant()[component]; };
    };
    const auto efx = [](const char *matchName, int param) -> ReadHost {
        return [=](const Layer &layer) { return EffectValue(layer, matchName, param); };
    };
    row("Pos. X", "Transform", &Doc::posX, "-41", stream(1, 0));
    row("Pos. Y", "Transform", &Doc::posY, "42", stream(1, 1));
    row("Scale", "Transform", &Doc::scale, "43", stream(2, 0));
    row("Rotation", "Transform", &Doc::rotation, "-944", stream(3, 0));
    row("Opacity", "Effect", &Doc::opacity, "45", stream(4, 0));
    row("Blur", "Effect", &Doc::blur, "46", efx(rostrum::kGaussianBlur, 0));
    row("Hue", "Effect", &Doc::hue, "-47", efx(rostrum::kColorBalance, 0));
    row("Lightness", "Effect", &Doc::lightness, "48", efx(rostrum::kColorBalance, 1));
    row("Saturation", "Effect", &Doc::saturation, "-49", efx(rostrum::kColorBalance, 2));
}

void TestPanelDispatch::aNumberTypedIntoItsEditorStandsInTheHost()
{
    QFETCH(QByteArray, tab);
    QFETCH(qint32 Doc::*, field);
    QFETCH(QString, typed);
    QFETCH(ReadHost, read);
    OnACell shown;
    const Layer before = shown.Current();
    const Layer other = shown.LayerOf(2);
    shown.PickTab(tab.constData());
    shown.Type(&(GetDoc()->*field), typed);
    QCOMPARE(read(shown.Current()), typed.toDouble());
    QCOMPARE(shown.TextOf(&(GetDoc()->*field)), typed);
    QVERIFY(shown.LayerOf(2) == other);
    QVERIFY(shown.Current().timeRemap == before.timeRemap);
    for (int number = 1; number <= 4; ++number)
        QVERIFY(!StreamOf(shown.Current(), number)->HasKeys());

    GetDoc()->*field = 0; // what the next update reads is what was typed
    shown.panel->OnUpdate(UpdCurrent, nullptr);
    QCOMPARE(GetDoc()->*field, typed.toInt());
}

void TestPanelDispatch::changingScaleOnAFrameWritesBothComponents()
{
    OnACell shown;
    shown.Change(shown.layers[kCol], [](Layer &layer) { layer.scale = Stream({ 70, 130, 55 }); });
    shown.panel->OnUpdate(UpdCurrent, nullptr);
    shown.PickTab("Transform");
    QCOMPARE(shown.TextOf(&GetDoc()->scale), QStringLiteral("70"));
    shown.Type(&GetDoc()->scale, QStringLiteral("85"));
    const rostrum::StreamValue scale = shown.Current().scale.Constant();
    QCOMPARE(scale[0], 85.0);
    QCOMPARE(scale[1], 85.0);
}

void TestPanelDispatch::aBoxAddsAKeyAtTheFrameAndTakesItAway_data()
{
    QTest::addColumn<bool Doc::*>("field");
    QTest::addColumn<int>("stream");
    QTest::addColumn<int>("editor");
    QTest::newRow("Key Pos, the upper one") << &Doc::keyPos << 1 << 0;
    QTest::newRow("Key Pos, the lower one") << &Doc::keyPos << 1 << 1;
    QTest::newRow("Key Scale") << &Doc::keyScale << 2 << 0;
    QTest::newRow("Key Rotation") << &Doc::keyRotation << 3 << 0;
}

void TestPanelDispatch::aBoxAddsAKeyAtTheFrameAndTakesItAway()
{
    QFETCH(bool Doc::*, field);
    QFETCH(int, stream);
    QFETCH(int, editor);
    OnACell shown;
    shown.PickTab("Transform");
    const QBrush unmarked = shown.Grid().item(kRow, kCol)->background();
    shown.Tick(&(GetDoc()->*field), editor);
    for (int number = 1; number <= 4; ++number)
        QCOMPARE(StreamOf(shown.Current(), number)->KeyCount(), number == stream ? 1 : 0);
    QVERIFY(StreamOf(shown.Current(), stream)->KeyAt(0).time == (rostrum::Time{ kRow, 25 }));
    QVERIFY(shown.Grid().item(kRow, kCol)->background() != unmarked); // the key's mark
    shown.Tick(&(GetDoc()->*field), editor);
    QCOMPARE(StreamOf(shown.Current(), stream)->KeyCount(), 0);
    QVERIFY(!(GetDoc()->*field));
    QVERIFY(shown.Grid().item(kRow, kCol)->background() == unmarked);
}

void TestPanelDispatch::tickingOneOfTheTwoKeyPosBoxesAddsTheKeyAndRepaintsBoth()
{
    for (const int ticked : { 0, 1 }) {
        OnACell shown;
        shown.PickTab("Transform");
        const bool *field = &GetDoc()->keyPos;
        shown.Tick(field, ticked);
        QCOMPARE(shown.TextOf(field, 0), QStringLiteral("on"));
        QCOMPARE(shown.TextOf(field, 1), QStringLiteral("on"));
        QVERIFY(GetDoc()->keyPosBis);
        QCOMPARE(shown.Current().position.KeyCount(), 1);
        shown.Tick(field, 1 - ticked);
        QCOMPARE(shown.TextOf(field, 0), QStringLiteral("off"));
        QCOMPARE(shown.TextOf(field, 1), QStringLiteral("off"));
        QVERIFY(!GetDoc()->keyPosBis);
        QCOMPARE(shown.Current().position.KeyCount(), 0);
    }
}

void TestPanelDispatch::aNumberOnAKeyedStreamGoesToTheFramesKey()
{
    OnACell shown;
    shown.Change(shown.layers[kCol], [](Layer &layer) {
        layer.rotation.InsertKey({ 2, 25 }, { 10 });
    });
    shown.PickTab("Transform");
    shown.Type(&GetDoc()->rotation, QStringLiteral("8"));
    const Stream &rotation = shown.Current().rotation;
    QCOMPARE(rotation.KeyCount(), 2);
    QCOMPARE(rotation.KeyAt(0).value[0], 10.0);
    QVERIFY(rotation.KeyAt(1).time == (rostrum::Time{ kRow, 25 }));
    QCOMPARE(rotation.KeyAt(1).value[0], 8.0);
}

void TestPanelDispatch::onlyTheKeysUpdateTheSheet_data()
{
    QTest::addColumn<int>("place"); // of the variable in the document
    QTest::addColumn<bool>("updates");
    const struct
    {
        const char *name;
        const void *field;
        bool updates;
    } rows[] = {
        { "Pos. X", &GetDoc()->posX, false },
        { "Pos. Y", &GetDoc()->posY, false },
        { "Key Pos", &GetDoc()->keyPos, true },
        { "Scale", &GetDoc()->scale, false },
        { "Key Scale", &GetDoc()->keyScale, true },
        { "Rotation", &GetDoc()->rotation, false },
        { "Key Rotation", &GetDoc()->keyRotation, true },
        { "Opacity", &GetDoc()->opacity, false },
        { "Blur", &GetDoc()->blur, false },
        { "Hue", &GetDoc()->hue, false },
        { "Lightness", &GetDoc()->lightness, false },
        { "Saturation", &GetDoc()->saturation, false },
    };
    for (const auto &row : rows) {
        const auto offset = static_cast<const char *>(row.field)
            - reinterpret_cast<const char *>(static_cast<const void *>(GetDoc()));
        QTest::newRow(row.name) << static_cast<int>(offset) << row.updates;
    }
}

void TestPanelDispatch::onlyTheKeysUpdateTheSheet()
{
    QFETCH(int, place);
    QFETCH(bool, updates);
    OnACell shown;
    T_Var *var
        = shown.Editor(reinterpret_cast<const char *>(static_cast<const void *>(GetDoc())) + place)
              .GetVar();
    const int posX = GetDoc()->posX;
    shown.Change(shown.layers[kCol], [](Layer &layer) { layer.position = Stream({ 9, 9 }); });
    shown.panel->OnSpinChanged(var);
    // An update reads the mirror anew; without one it keeps what it had.
    QCOMPARE(GetDoc()->posX, updates ? 9 : posX);
}

void TestPanelDispatch::aChangeOfAnOptionRunsNoHostOperation_data()
{
    QTest::addColumn<bool Doc::*>("field");
    QTest::newRow("Sync Column with AE") << &Doc::syncColumn;
    QTest::newRow("Sync Ima with AE") << &Doc::syncIma;
}

void TestPanelDispatch::aChangeOfAnOptionRunsNoHostOperation()
{
    QFETCH(bool Doc::*, field);
    OnACell shown;
    shown.PickTab("Setup");
    const int changes = shown.host.ChangeCount();
    const QVector<rostrum::LayerId> selection = shown.Selection();
    shown.host.GetTrace().Start();
    shown.Tick(&(GetDoc()->*field));
    // The current column's layer is looked up for every editor alike; nothing else is asked.
    QCOMPARE(shown.host.GetTrace().Functions(),
        QByteArrayList({ "AEGP_GetCompNumLayers", "AEGP_GetCompLayerByIndex" }));
    QVERIFY(GetDoc()->*field);
    QCOMPARE(shown.host.ChangeCount(), changes);
    QCOMPARE(shown.Selection(), selection);
    QCOMPARE(shown.HostFrame(), 0);
}

void TestPanelDispatch::noVariableAndOneOfAnotherOwnerDoNothing()
{
    OnACell shown;
    const rostrum::Project before = shown.host.GetProject();
    bool elsewhere = true;
    T_Var other(TV_BOUTON, QStringLiteral("other"), &elsewhere, TG_DEFAULT);
    T_Var mark(TV_ONGLET, QStringLiteral("mark"), nullptr, TG_TAB);
    for (T_Var *var : { static_cast<T_Var *>(nullptr), &other, &mark })
        shown.panel->OnSpinChanged(var);
    QVERIFY(shown.host.GetProject() == before);
    QCOMPARE(shown.TakeLog(),
        QStringList({ QStringLiteral("OnSpinNotify : col= 0  row= 5"),
            QStringLiteral("OnSpinNotify : col= 0  row= 5"),
            QStringLiteral("OnSpinNotify : col= 0  row= 5") }));
}

void TestPanelDispatch::theReservedRoutesRun_data()
{
    QTest::addColumn<bool Doc::*>("field");
    QTest::addColumn<bool>("reloads");
    QTest::addColumn<bool>("reshows");
    QTest::addColumn<QByteArray>("calls");
    QTest::newRow("btRefresh") << &Doc::btRefresh << true << false << QByteArray();
    QTest::newRow("btRefreshBis") << &Doc::btRefreshBis << true << false << QByteArray();
    QTest::newRow("btShowA") << &Doc::btShowA << false << true << QByteArray();
    QTest::newRow("btShowB") << &Doc::btShowB << false << true << QByteArray();
    QTest::newRow("btLoadExpo") << &Doc::btLoadExpo << false << false << QByteArray();
    QTest::newRow("btCenter") << &Doc::btCenter << false << false
                              << QByteArray("AEGP_GetItemDimensions");
    QTest::newRow("btProjectFolder")
        << &Doc::btProjectFolder << false << false << QByteArray("AEGP_GetProjectPath");
}

void TestPanelDispatch::theReservedRoutesRun()
{
    QFETCH(bool Doc::*, field);
    QFETCH(bool, reloads);
    QFETCH(bool, reshows);
    QFETCH(QByteArray, calls);
    OnACell shown;
    GetDoc()->posX = 77;
    T_Var button(TV_BOUTON, QStringLiteral("button"), &(GetDoc()->*field), TG_DEFAULT);
    shown.host.GetTrace().Start();
    shown.panel->OnSpinChanged(&button);
    QCOMPARE(shown.host.GetTrace().Count("AEGP_StartUndoGroup"), reloads ? 1 : 0);
    QCOMPARE(shown.TextOf(&GetDoc()->posX) == QLatin1String("77"), reshows);
    if (!calls.isEmpty())
        QVERIFY2(shown.host.GetTrace().Count(calls) > 0, shown.host.GetTrace().Text().constData());
    else if (!reloads)
        QCOMPARE(shown.host.GetTrace().Functions(),
            QByteArrayList({ "AEGP_GetCompNumLayers", "AEGP_GetCompLayerByIndex" }));
    shown.host.ReturnToEventLoop();
}

void TestPanelDispatch::theTraceNamesTheCellOnTheLogPage()
{
    OnACell shown;
    shown.PickTab("Transform");
    shown.Tick(&GetDoc()->keyScale);
    QCOMPARE(shown.TakeLog(), QStringList{ QStringLiteral("OnSpinNotify : col= 0  row= 5") });
}

void TestPanelDispatch::withoutACurrentColumnAnEditChangesNothing()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    const rostrum::Project before = shown.host.GetProject();
    for (const void *field : std::initializer_list<const void *>{ &GetDoc()->posX, &GetDoc()->posY,
             &GetDoc()->keyPos, &GetDoc()->scale, &GetDoc()->keyScale, &GetDoc()->rotation,
             &GetDoc()->keyRotation, &GetDoc()->opacity, &GetDoc()->blur, &GetDoc()->hue,
             &GetDoc()->lightness, &GetDoc()->saturation }) {
        GetDoc()->keyPos = GetDoc()->keyScale = GetDoc()->keyRotation = true;
        GetDoc()->blur = GetDoc()->hue = 9;
        shown.panel->OnSpinChanged(shown.Editor(field).GetVar());
        QVERIFY(shown.host.GetProject() == before);
    }
    QCOMPARE(shown.host.Complaints(), QByteArrayList());
}

void TestPanelDispatch::anEditIsOneUndoStep()
{
    OnACell shown;
    const rostrum::Project before = shown.host.GetProject();
    const int steps = shown.UndoNames().size();
    shown.PickTab("Transform");
    GetDoc()->scale = 60;
    shown.panel->OnSpinChanged(shown.Editor(&GetDoc()->scale).GetVar());
    shown.host.ReturnToEventLoop();
    QCOMPARE(shown.UndoNames().size(), steps + 1);
    QVERIFY(shown.Document().Undo());
    QVERIFY(shown.host.GetProject() == before);
}

void TestPanelDispatch::aLayerWithoutTheEffectGetsItAtTheFirstValue()
{
    OnACell shown;
    shown.PickTab("Effect");
    QCOMPARE(shown.Current().effects.size(), 0);
    GetDoc()->blur = 0;
    shown.panel->OnSpinChanged(shown.Editor(&GetDoc()->blur).GetVar());
    QCOMPARE(shown.Current().effects.size(), 0);
    shown.Type(&GetDoc()->blur, QStringLiteral("12"));
    QCOMPARE(shown.Current().effects.size(), 1);
    shown.Type(&GetDoc()->hue, QStringLiteral("7"));
    shown.Type(&GetDoc()->saturation, QStringLiteral("8"));
    QCOMPARE(shown.Current().effects.size(), 2);
}

VN_HOST_TEST_MAIN(TestPanelDispatch)
#include "tst_panel_dispatch.moc"
