// Columns made, moved and timed: what happens to the layer stack behind the sheet.

#include "hostErrors.h"
#include "vipLi.h"

#include "shell/SuiteHandler.h"

bool vipLi::AddColumn(qint32 kind, const QByteArray &path, qint32 frames)
{
    if (VN_FALSE(FindCompo()))
        return false;
    if (path.isEmpty())
        return false;
    AEGP_ItemH item = nullptr;
    if (!ImportCells(kind, path, item, /*makeZero=*/true))
        return false;

    SuiteHandler suites(BasicSuite);
    const AEGP_LayerSuite4 *layers = suites.Layer10();
    AEGP_LayerH layer = nullptr;
    if (VN_HOST_FAILED(layers->AEGP_AddLayer(item, Compo, &layer)))
        return false;
    // The bottom of the stack is the sheet's right end; so is -1, from a count that failed.
    const qint32 place = ReverseColumns ? 0 : GetColumnCount() - 1;
    if (VN_HOST_FAILED(layers->AEGP_ReorderLayer(layer, place)))
        return false;
    const A_Time start{ 0, 100 };
    const A_Time duration = FrameTime(frames);
    if (VN_HOST_FAILED(layers->AEGP_SetLayerInPointAndDuration(
            layer, AEGP_LTimeMode_CompTime, &start, &duration)))
        return false;
    if (VN_HOST_FAILED(layers->AEGP_SetLayerOffset(layer, &start)))
        return false;
    // Makes the new layer Layer. By a count that could not be read, which is 0, no column would be
    // selected, and what follows would go to the column that was current before.
    const qint32 count = GetColumnCount();
    return !VN_FALSE(count > 0 && SelectColumn(count - 1));
}

bool vipLi::AddFixeColumn(const QByteArray &path)
{
    const qint32 frames = GetCurrentCompoDuration();
    return AddColumn(kFixe, path, frames) && SetLayerInOut(0, frames - 1);
}

bool vipLi::AddSequenceColumn(const QByteArray &path)
{
    const qint32 frames = GetCurrentCompoDuration();
    if (!AddColumn(kSequence, path, frames))
        return false;
    SetCompoDuration(frames);
    if (!SetLayerInOut(0, frames - 1))
        return false;
    // A stream that reads image 0 at frame 0 gets no key from the first clearing. The write of image
    // 1 makes that key, and the second clearing sets it to 0. A failure of these three is the log's
    // alone.
    ClearCells(0);
    SetCellImage(0, 1);
    ClearCells(0);
    return true;
}

bool vipLi::MoveLayer(AEGP_LayerH layer, qint32 places)
{
    if (!layer)
        return false;
    SuiteHandler suites(BasicSuite);
    const AEGP_LayerSuite4 *layers = suites.Layer10();
    AEGP_CompH compo = nullptr;
    A_long count = 0;
    A_long index = 0;
    if (VN_HOST_FAILED(layers->AEGP_GetLayerParentComp(layer, &compo))
        || VN_HOST_FAILED(layers->AEGP_GetCompNumLayers(compo, &count))
        || VN_HOST_FAILED(layers->AEGP_GetLayerIndex(layer, &index)))
        return false;
    if ((index < 1 && places < 0) || (index >= count - 1 && places >= 1))
        return false;
    // Behind a move of more than one place there may be no such index, which is the host's to
    // answer; -1 is its word for the bottom. The panel moves by one.
    const qint32 target = ToWhole(double(index) + places);
    return !VN_HOST_FAILED(layers->AEGP_ReorderLayer(layer, target));
}

bool vipLi::GetLayerInOut(qint32 &first, qint32 &last)
{
    if (!Compo || !Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    A_Time in{ 0, 1 };
    A_Time length{ 0, 1 };
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerInPoint(Layer, AEGP_LTimeMode_CompTime, &in))
        || VN_HOST_FAILED(
            suites.Layer10()->AEGP_GetLayerDuration(Layer, AEGP_LTimeMode_CompTime, &length)))
        return false;
    // Cut where TimeToFrame rounds: an in point of 1/50 s is frame 0 here.
    const auto frames
        = [this](const A_Time &time) { return ToWhole(time.value / (double(time.scale) / Fps)); };
    first = frames(in);
    last = ToWhole(double(first) + frames(length) - 1);
    return true;
}

bool vipLi::SetLayerInOut(qint32 first, qint32 last)
{
    if (!Compo || !Layer)
        return false;
    SuiteHandler suites(BasicSuite);
    const A_Time offset{ 0, 1 }; // so that layer time and composition time agree
    const A_Time in = FrameTime(first);
    const A_Time length = FrameTime(ToWhole(double(last) - first + 1));
    return !VN_HOST_FAILED(suites.Layer10()->AEGP_SetLayerOffset(Layer, &offset))
        && !VN_HOST_FAILED(suites.Layer10()->AEGP_SetLayerInPointAndDuration(
            Layer, AEGP_LTimeMode_CompTime, &in, &length));
}

void vipLi::SetCompoDuration(qint32 frames)
{
    if (!FindCompo())
        return;
    SuiteHandler suites(BasicSuite);
    const A_Time duration = FrameTime(frames);
    // unchecked: the next reload shows the duration that the composition has
    LastHostError = suites.Comp14()->AEGP_SetCompDuration(Compo, &duration);
}

bool vipLi::AlignLayer(AEGP_LayerH layer, qint32 width, qint32 height)
{
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH source = nullptr;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerSourceItem(layer, &source)))
        return false;
    if (!source)
        return true;
    AEGP_ItemType type = AEGP_ItemType_NONE;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemType(source, &type)))
        return false;
    if (type != AEGP_ItemType_FOOTAGE)
        return true;
    A_long footageWidth = 0; // plays no part: the left edges lie at 0 in any case
    A_long footageHeight = 0;
    if (VN_HOST_FAILED(
            suites.Item11()->AEGP_GetItemDimensions(source, &footageWidth, &footageHeight)))
        return false;
    Layer = layer;
    // Left edge on the composition's left edge, bottom on its bottom. Halves are cut, not rounded.
    const qint32 anchorY = height / 2 - height + footageHeight;
    return SetStreamValue(AEGP_LayerStream_ANCHORPOINT, 0, width / 2, /*component=*/0)
        && SetStreamValue(AEGP_LayerStream_ANCHORPOINT, 0, anchorY, /*component=*/1)
        && SetStreamValue(AEGP_LayerStream_POSITION, 0, width / 2, /*component=*/0)
        && SetStreamValue(AEGP_LayerStream_POSITION, 0, height / 2, /*component=*/1);
}

bool vipLi::CenterFootageLayers()
{
    if (!Compo)
        return false;
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    A_long width = 0;
    A_long height = 0;
    A_long count = 0;
    if (VN_HOST_FAILED(suites.Comp14()->AEGP_GetItemFromComp(Compo, &item))
        || VN_HOST_FAILED(suites.Item11()->AEGP_GetItemDimensions(item, &width, &height))
        || VN_HOST_FAILED(suites.Layer10()->AEGP_GetCompNumLayers(Compo, &count)))
        return false;
    const AEGP_LayerH remembered = Layer;
    for (qint32 index = 0; index < count; ++index) {
        AEGP_LayerH layer = nullptr;
        if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetCompLayerByIndex(Compo, index, &layer))
            || !AlignLayer(layer, width, height))
            return false;
    }
    Layer = remembered;
    return true;
}

bool vipLi::LoadExpo(const QByteArray & /*path*/, const char * /*filter*/)
{
    return false;
}
