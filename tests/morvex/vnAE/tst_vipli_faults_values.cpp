#include "FaultSweep.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

// Drawings on disk, made anew for each run of an operation.

const QTemporaryDir &Folder()
{
    static const QTemporaryDir folder;
    return folder;
}

QByteArray PathOf(const char *fileName)
{
    return Folder().path().toUtf8() + '/' + fileName;
}

void WriteDrawings(LibrarySheet &)
{
    QFile::remove(QString::fromUtf8(PathOf("jump0000.png"))); // the blank of the run before
    testing::WriteSeries(Folder().path(), QStringLiteral("jump"), 1, 2);
}

/// The project has a series of another folder; the one that is asked for lies behind it.
void ImportDrawings(LibrarySheet &sheet)
{
    WriteDrawings(sheet);
    AEGP_ItemH item = nullptr;
    GetVipLi()->ImportCells(kSequence, PathOf("jump0001.png"), item, /*makeZero=*/true);
}

// Effects of the layer.

constexpr qint32 kBlurRadius = 0; // parameter

qint32 BlurKey()
{
    return rostrum::FindEffect(QByteArray(rostrum::kGaussianBlur))->key;
}

/// A blur behind another effect.
void AddBlur(LibrarySheet &sheet)
{
    for (const char *name : { rostrum::kFill, rostrum::kGaussianBlur })
        sheet.EditProject().ApplyEffect(
            sheet.composition, sheet.layer, rostrum::FindEffect(QByteArray(name))->key);
    sheet.EditLayer().effects[1].params[kBlurRadius].SetConstant({ 7, 0, 0, 0 });
}

/// What an effect operation leaves open when a call of the host failed: all that was opened so far
/// for the value. The effects that were only looked at are given back.
QByteArrayList OpenAtFailure(LibrarySheet &sheet, const QByteArray &failed)
{
    const QByteArray layer
        = "layer " + QByteArray::number(sheet.layer) + " \"walk[0000-0039].png\"";
    const QVector<rostrum::LayerEffect> &effects = sheet.Find(sheet.layer).effects;
    const auto effect = [&](int index) {
        return "effect " + QByteArray::number(effects[index].id) + " of " + layer;
    };
    if (effects.size() > 1 && failed == "AEGP_DisposeEffect#1")
        return { effect(0) }; // it was looked at only, and could not be given back

    const QByteArray function = failed.left(failed.indexOf('#'));
    const bool hasValue
        = function == "AEGP_SetStreamValue" || function == "AEGP_DisposeStreamValue";
    const bool hasStream
        = hasValue || function == "AEGP_GetNewStreamValue" || function == "AEGP_DisposeStream";
    const bool hasEffect = hasStream || function == "AEGP_GetEffectNumParamStreams"
        || function == "AEGP_GetNewEffectStreamByIndex" || function == "AEGP_DisposeEffect";
    QByteArrayList open;
    if (hasStream)
        open << "parameter 1 of an effect of " + layer;
    if (hasValue)
        open << "value of stream 0";
    if (hasEffect)
        open << effect(effects.size() - 1);
    return open;
}

/// Gives back what GetLayerEffect handed over. @return its answer and whether there was an effect
QByteArray Taken(bool found, AEGP_EffectRefH effect)
{
    if (effect)
        testing::Suite<AEGP_EffectSuite3>()->AEGP_DisposeEffect(effect);
    return Bool(found) + ' ' + Bool(effect);
}

QVector<SweptOperation> ValueOperations()
{
    vipLi *lib = GetVipLi();
    const auto addKey = [](LibrarySheet &sheet) {
        sheet.EditLayer().position.InsertKey({ 8, 25 }, { 1, 2, 0, 0 });
    };
    const auto write
        = [=] { return Bool(lib->SetStreamValue(AEGP_LayerStream_POSITION, 5, 33, 1)); };
    return {
        { "SetStreamValue: without keys", write, "false", {}, {}, {}, {},
            { "AEGP_DisposeStream" } },
        { "SetStreamValue: with keys", write, "false", {}, addKey, {}, {},
            { "AEGP_DisposeStream" } },
        { "GetStreamValue",
            [=] {
                qint32 first = 7, second = 8;
                const bool read = lib->GetStreamValue(AEGP_LayerStream_POSITION, 5, first, second);
                return Text(read, first) + ' ' + QByteArray::number(second);
            },
            "false -1 -1", {}, {} },
    };
}

QVector<SweptOperation> EffectOperations()
{
    vipLi *lib = GetVipLi();
    const auto find = [=](bool apply) {
        AEGP_EffectRefH effect = nullptr;
        const bool found = lib->GetLayerEffect(BlurKey(), apply, effect);
        return Taken(found, effect);
    };
    const auto read = [=] {
        qint32 value = 77;
        // After a host error the value is what had been read until then.
        return lib->GetEfxValue(BlurKey(), 3, kBlurRadius, value) ? Text(true, value) : Bool(false);
    };
    const auto write
        = [=](qint32 value) { return Bool(lib->SetEfxValue(BlurKey(), 3, kBlurRadius, value)); };
    const QByteArrayList all{ "AEGP_DisposeStreamValue", "AEGP_DisposeStream",
        "AEGP_DisposeEffect" };
    return {
        { "FindEfxKeys", [=] { return Bool(lib->FindEfxKeys()); }, "false", {}, {} },
        { "GetLayerEffect: behind another", [=] { return find(false); }, "false false", {}, AddBlur,
            {}, {}, { "AEGP_DisposeEffect#1" } }, // #2 is the test's own
        { "GetLayerEffect: not there", [=] { return find(false); }, "false false", {}, {} },
        { "GetLayerEffect: applied", [=] { return find(true); }, "false false", {}, {} },
        { "GetEfxValue", read, "false", {}, AddBlur, {}, {}, all, OpenAtFailure },
        { "GetEfxValue: no such effect", read, "false", {}, {} },
        { "SetEfxValue", [=] { return write(5); }, "false", {}, AddBlur, {}, {}, all,
            OpenAtFailure },
        { "SetEfxValue: 0", [=] { return write(0); }, "false", {}, AddBlur, {}, {}, all,
            OpenAtFailure },
        { "SetEfxValue: applied", [=] { return write(5); }, "false", {}, {}, {}, {}, all,
            OpenAtFailure },
        { "SetEfxValue: 0 without the effect", [=] { return write(0); }, "false", {}, {} },
    };
}

QVector<SweptOperation> ImportOperations()
{
    vipLi *lib = GetVipLi();
    const auto import = [=](qint32 kind) {
        AEGP_ItemH item = nullptr;
        return Bool(lib->ImportCells(kind, PathOf("jump0001.png"), item, /*makeZero=*/true));
    };
    return {
        { "ImportCells: a series", [=] { return import(kSequence); }, "false", {}, WriteDrawings },
        { "ImportCells: a still", [=] { return import(kFixe); }, "false", {}, WriteDrawings },
        { "ImportCells: in the project", [=] { return import(kSequence); }, "false", {},
            ImportDrawings },
    };
}

/// Reading the duration, and the count that places the layer.
const QByteArrayList kColumnUnchecked{ "AEGP_GetItemFromComp", "AEGP_GetItemDuration",
    "AEGP_GetCompNumLayers#1" };

/// Beyond those, setting the composition's duration and the writing of keys, as in SetCellImage.
const QByteArrayList kSeriesUnchecked = kColumnUnchecked
    + QByteArrayList{ "AEGP_SetCompDuration", "AEGP_InsertKeyframe", "AEGP_SetKeyframeValue",
          "AEGP_SetKeyframeInterpolation", "AEGP_GetStreamNumKFs#2", "AEGP_GetStreamNumKFs#3",
          "AEGP_GetStreamNumKFs#4", "AEGP_GetKeyframeTime#1", "AEGP_GetKeyframeTime#2" };

/// Finding the composition whose duration is set, and reading the keys that are cleared.
const QByteArrayList kSeriesToldOnly{ "AEGP_GetProjectByIndex#3", "AEGP_GetProjectRootFolder#3",
    "AEGP_GetNextProjItem#5", "AEGP_GetItemType#5", "AEGP_GetItemName#2", "AEGP_GetNewLayerStream",
    "AEGP_GetLayerStreamValue", "AEGP_GetStreamNumKFs#1", "AEGP_GetStreamNumKFs#5",
    "AEGP_GetKeyframeTime#3" };

QVector<SweptOperation> ColumnOperations()
{
    vipLi *lib = GetVipLi();
    return {
        { "AddSequenceColumn", [=] { return Bool(lib->AddSequenceColumn(PathOf("jump0001.png"))); },
            "false", kSeriesUnchecked, WriteDrawings, kSeriesToldOnly },
        { "AddFixeColumn", [=] { return Bool(lib->AddFixeColumn(PathOf("jump0001.png"))); },
            "false", kColumnUnchecked, WriteDrawings },
        { "MoveLayer", [=] { return Bool(lib->MoveLayer(lib->Layer, -1)); }, "false", {},
            [](LibrarySheet &sheet) { sheet.AddSeries("run", 8); } },
        { "GetLayerInOut",
            [=] {
                qint32 first = 77, last = 78;
                const bool read = lib->GetLayerInOut(first, last);
                return Text(read, first) + ' ' + QByteArray::number(last);
            },
            "false 77 78", {}, {} },
        { "SetLayerInOut", [=] { return Bool(lib->SetLayerInOut(3, 9)); }, "false", {}, {} },
        { "SetCompoDuration",
            [=] {
                lib->SetCompoDuration(9);
                return QByteArray();
            },
            "", { "AEGP_SetCompDuration" }, {} },
        { "CenterFootageLayers", [=] { return Bool(lib->CenterFootageLayers()); }, "false", {},
            [](LibrarySheet &sheet) {
                sheet.AddStill("house.png");
                sheet.AddCamera("camera");
                sheet.EditLayer().position.InsertKey({ 8, 25 }, { 1, 2, 0, 0 });
            },
            {}, {}, { "AEGP_DisposeStream" } },
    };
}

} // namespace

/// Transform and effect values, the import of drawings, and columns made, moved and timed.
class TestVipLiFaultsValues : public FaultSweep
{
    Q_OBJECT

protected:
    QVector<SweptOperation> Operations() const override
    {
        return ValueOperations() + EffectOperations() + ImportOperations() + ColumnOperations();
    }
};

VN_HOST_TEST_MAIN(TestVipLiFaultsValues)

#include "tst_vipli_faults_values.moc"
