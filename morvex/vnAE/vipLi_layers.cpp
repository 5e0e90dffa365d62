// Columns of the sheet as layers of the current composition.

#include "hostErrors.h"
#include "hostScopes.h"
#include "vipLi.h"

#include "support/vnLog.h"

#include <QBrush>
#include <QRegExp>

#include <cstring>

namespace {

// The host writes a layer's two names here; it counts on buffers of this size.
char layerName[vipLi::kNameBytes];
char sourceName[vipLi::kNameBytes];

constexpr AEGP_MemSize kPathMemoryBytes = 520; // a path of 260 bytes as UTF-16

Qt::GlobalColor LabelColor(qint32 label)
{
    switch (label) {
    case 1:
        return Qt::red;
    case 2:
        return Qt::yellow;
    case 3:
        return Qt::darkCyan;
    case 4:
        return Qt::magenta;
    case 9:
        return Qt::green;
    case 15:
        return Qt::darkYellow;
    default:
        return label >= 5 && label <= 14 ? Qt::cyan : Qt::white;
    }
}

} // namespace

qint32 vipLi::GetColumnCount()
{
    if (!Compo)
        return 0;
    SuiteHandler suites(BasicSuite);
    A_long count = 0;
    // unchecked: a host that fails leaves the count 0
    LastHostError = suites.Layer10()->AEGP_GetCompNumLayers(Compo, &count);
    return qMin(count, kMaxColumns);
}

qint32 vipLi::GetActiveColumnIndex()
{
    if (!Compo)
        return 0;
    SuiteHandler suites(BasicSuite);
    AEGP_LayerH active = nullptr;
    LastHostError = suites.Layer10()->AEGP_GetActiveLayer(&active); // unchecked: none is active
    if (!active)
        return 0;
    A_long index = 0;
    LastHostError = suites.Layer10()->AEGP_GetLayerIndex(active, &index); // unchecked: stays 0
    return index;
}

qint32 vipLi::GetLayerIndex(AEGP_LayerH layer)
{
    if (!layer)
        return 0;
    SuiteHandler suites(BasicSuite);
    A_long index = 0;
    LastHostError = suites.Layer10()->AEGP_GetLayerIndex(layer, &index); // unchecked: stays 0
    return index;
}

AEGP_LayerH vipLi::GetLayerAt(AEGP_CompH compo, qint32 index)
{
    if (!compo || !Compo || index < 0)
        return nullptr;
    SuiteHandler suites(BasicSuite);
    A_long count = 0;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetCompNumLayers(Compo, &count)) || index >= count)
        return nullptr;
    AEGP_LayerH layer = nullptr;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetCompLayerByIndex(compo, index, &layer)))
        return nullptr;
    return layer;
}

qint32 vipLi::HostIndex(qint32 column)
{
    return ReverseColumns ? GetColumnCount() - column - 1 : column;
}

bool vipLi::ReadLayerAt(qint32 index, AEGP_LayerH &layer)
{
    SuiteHandler suites(BasicSuite);
    layer = nullptr;
    qint32 count = 0;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetCompNumLayers(Compo, &count)))
        return false;
    if (index < 0 || index >= count)
        return true;
    AEGP_LayerH read = nullptr;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetCompLayerByIndex(Compo, index, &read)))
        return false;
    layer = read;
    return true;
}

bool vipLi::SetCurrentColumn(qint32 column)
{
    const qint32 index = HostIndex(column);
    if (!HasCompo())
        return false;
    AEGP_LayerH found = nullptr;
    if (!ReadLayerAt(index, found))
        return false;
    Layer = found;
    return Layer != nullptr;
}

bool vipLi::SelectColumn(qint32 column)
{
    if (column < 0)
        return true;
    const qint32 index = HostIndex(column);
    if (!HasCompo())
        return false;
    AEGP_LayerH found = nullptr;
    if (!ReadLayerAt(index, found) || !found)
        return false;
    Layer = found;
    return SelectInHost(Layer);
}

bool vipLi::SelectInHost(AEGP_LayerH layer)
{
    SuiteHandler suites(BasicSuite);
    AEGP_LayerH active = nullptr;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetActiveLayer(&active)))
        return false;
    if (active == layer)
        return true;
    Collection selection(suites, PluginId);
    if (VN_HOST_FAILED(selection.Error()) || VN_HOST_FAILED(selection.Add(layer)))
        return false;
    return !VN_HOST_FAILED(suites.Comp14()->AEGP_SetSelection(Compo, selection.Handle()));
}

QString vipLi::GetColumnName()
{
    if (!Compo || !Layer)
        return {};
    SuiteHandler suites(BasicSuite);
    layerName[0] = sourceName[0] = '\0';
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerName(Layer, layerName, sourceName)))
        return QStringLiteral("ERR");
    if (layerName[0] != '\0')
        return DisplayText(layerName); // the user's own name is never cut
    const QString source = DisplayText(sourceName);
    return source.left(QRegExp(QStringLiteral("[.[]")).indexIn(source)); // -1 takes it whole
}

bool vipLi::ReadSource(AEGP_ItemH &source)
{
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH read = nullptr;
    if (VN_HOST_FAILED(suites.Layer10()->AEGP_GetLayerSourceItem(Layer, &read)))
        return false;
    source = read;
    return true;
}

qint32 vipLi::GetSourceLastFrame()
{
    if (!Compo || !Layer)
        return -1;
    AEGP_ItemH source = nullptr;
    if (!ReadSource(source))
        return 0;
    if (!source)
        return -1;
    SuiteHandler suites(BasicSuite);
    AEGP_ItemType type = AEGP_ItemType_NONE;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemType(source, &type))
        || type != AEGP_ItemType_FOOTAGE)
        return 0;
    A_Time duration{ 0, 1 };
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemDuration(source, &duration)))
        return 0;
    // The raw value stands for the number of source frames; its scale is left out on purpose.
    return duration.value - 1;
}

qint32 vipLi::GetColumnKind()
{
    const qint32 last = GetSourceLastFrame();
    return last == -1 || last == 0 ? kFixe : kSequence;
}

bool vipLi::ReadFootagePath(SuiteHandler &suites, AEGP_FootageH footage, QByteArray &path)
{
    AEGP_MemHandle memory = nullptr;
    if (VN_HOST_FAILED(suites.Memory1()->AEGP_NewMemHandle(
            PluginId, "morvex path", kPathMemoryBytes, AEGP_MemFlag_CLEAR, &memory)))
        return false;
    const MemHandle first(suites, memory);

    // The host puts a handle of its own in the place of the first; both are given back.
    AEGP_MemHandle text = nullptr;
    if (VN_HOST_FAILED(suites.Footage11()->AEGP_GetFootagePath(
            footage, /*frame=*/0, AEGP_FOOTAGE_MAIN_FILE_INDEX, &text)))
        return false;
    MemHandle second(suites, text);
    void *address = nullptr;
    if (VN_HOST_FAILED(second.Lock(&address)))
        return false;
    path = QString::fromUtf16(static_cast<const A_UTF16Char *>(address)).toUtf8();
    return true;
}

QString vipLi::GetSourcePath()
{
    AEGP_ItemH source = nullptr;
    if (!Compo || !Layer || !ReadSource(source) || !source)
        return {};
    SuiteHandler suites(BasicSuite);
    AEGP_ItemType type = AEGP_ItemType_NONE;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemType(source, &type))
        || type != AEGP_ItemType_FOOTAGE)
        return {};
    AEGP_FootageH footage = nullptr;
    if (VN_HOST_FAILED(suites.Footage11()->AEGP_GetMainFootageFromItem(source, &footage)))
        return {};
    QByteArray path;
    if (!ReadFootagePath(suites, footage, path) || VN_FALSE(path.size() < kPathBytes))
        return {};
    QString ascii;
    for (const char c : qAsConst(path)) {
        if (static_cast<signed char>(c) > 0) // nothing beyond ASCII survives
            ascii += QLatin1Char(c);
    }
    return ascii;
}

qint32 vipLi::GetLayerLabel(AEGP_LayerH /*notUsed*/)
{
    AEGP_ItemH source = nullptr;
    if (!Layer || !ReadSource(source) || !source)
        return 0;
    SuiteHandler suites(BasicSuite);
    AEGP_LabelID label = 0;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemLabel(source, &label)))
        return 0;
    return label;
}

QBrush &vipLi::GetLabelBrush(QBrush &brush, AEGP_LayerH layer)
{
    brush.setStyle(Qt::SolidPattern);
    brush.setColor(LabelColor(GetLayerLabel(layer)));
    return brush;
}
