// The library itself, the current composition, frames and times.

#include "vipLi.h"

#include "hostErrors.h"
#include "shell/SuiteHandler.h"

#include <QTextCodec>

#include <cstring>
#include <limits>

namespace {

/// The host writes an item's name here; it counts on a buffer of this size.
char itemName[vipLi::kNameBytes];

} // namespace

vipLi *GetVipLi()
{
    static vipLi *const library = new vipLi;
    return library;
}

QString DisplayText(const char *bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const int length = static_cast<int>(std::strlen(bytes));
    static QTextCodec *const utf8 = QTextCodec::codecForName("UTF-8");
    const QString text = utf8->toUnicode(bytes, length, &state);
    const bool valid = state.invalidChars == 0 && state.remainingChars == 0;
    return valid ? text : QString::fromLatin1(bytes);
}

void vipLi::StartUndoGroup(const QString &name)
{
    SuiteHandler suites(BasicSuite);
    // unchecked: without its group a command still does its work
    LastHostError = suites.Utility11()->AEGP_StartUndoGroup(name.toLatin1().constData());
}

void vipLi::EndUndoGroup()
{
    SuiteHandler suites(BasicSuite);
    LastHostError = suites.Utility11()->AEGP_EndUndoGroup(); // unchecked: see StartUndoGroup
}

void vipLi::DoCommand(qint32 command)
{
    SuiteHandler suites(BasicSuite);
    VN_HOST_FAILED(suites.Command1()->AEGP_DoCommand(command));
}

AEGP_CompH vipLi::GetActiveCompo()
{
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetActiveItem(&item)) || !item)
        return nullptr;
    AEGP_CompH compo = nullptr;
    // unchecked: an active footage item or folder is ordinary, and the poll would fill the log
    LastHostError = suites.Comp14()->AEGP_GetCompFromItem(item, &compo);
    return compo;
}

bool vipLi::HasActiveItem()
{
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetActiveItem(&item)))
        return false;
    return item != nullptr;
}

bool vipLi::FindCompo()
{
    SuiteHandler suites(BasicSuite);
    Project = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectByIndex(0, &Project))) {
        Project = nullptr;
        return false;
    }
    AEGP_ItemH item = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectRootFolder(Project, &item)) || !item)
        return false;

    for (;;) {
        AEGP_ItemH next = nullptr;
        if (VN_HOST_FAILED(suites.Item11()->AEGP_GetNextProjItem(Project, item, &next)) || !next)
            return false;
        item = next;
        AEGP_ItemType type = AEGP_ItemType_NONE;
        if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemType(item, &type)))
            return false;
        if (type != AEGP_ItemType_COMP)
            continue;
        itemName[0] = '\0';
        if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemName(item, itemName)))
            return false;
        if (std::strcmp(itemName, CompoName) != 0)
            continue;
        Compo = nullptr;
        if (VN_HOST_FAILED(suites.Comp14()->AEGP_GetCompFromItem(item, &Compo)))
            return false;
        return Compo != nullptr;
    }
}

bool vipLi::HasCompo()
{
    if (CompoName[0] == '\0')
        return false;
    return Compo || FindCompo();
}

const char *vipLi::ReadCompoName(AEGP_CompH compo)
{
    if (!compo)
        return "";
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    if (VN_HOST_FAILED(suites.Comp14()->AEGP_GetItemFromComp(compo, &item)))
        return "";
    itemName[0] = '\0';
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemName(item, itemName)))
        return "";
    return itemName;
}

QByteArray vipLi::GetCompoName(AEGP_CompH compo)
{
    return ReadCompoName(compo);
}

bool vipLi::IsNamedAsCompo(AEGP_CompH compo)
{
    return std::strcmp(ReadCompoName(compo), CompoName) == 0;
}

qint32 vipLi::GetCompoDuration(AEGP_CompH compo)
{
    if (!compo)
        return 0;
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    A_Time duration{ 0, 1 };
    // unchecked: a host that fails leaves the duration 0
    LastHostError = suites.Comp14()->AEGP_GetItemFromComp(compo, &item);
    LastHostError = suites.Item11()->AEGP_GetItemDuration(item, &duration);
    return TimeToFrame(duration);
}

qint32 vipLi::GetCurrentCompoDuration()
{
    return GetCompoDuration(Compo);
}

qint32 vipLi::GetCurrentFrame()
{
    if (!Compo)
        return 0;
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    A_Time now{ 0, 1 };
    // unchecked: a host that fails leaves the frame 0
    LastHostError = suites.Comp14()->AEGP_GetItemFromComp(Compo, &item);
    LastHostError = suites.Item11()->AEGP_GetItemCurrentTime(item, &now);
    return TimeToFrame(now);
}

void vipLi::SetCurrentFrame(qint32 frame)
{
    if (!Compo)
        return;
    SuiteHandler suites(BasicSuite);
    AEGP_ItemH item = nullptr;
    if (VN_HOST_FAILED(suites.Comp14()->AEGP_GetItemFromComp(Compo, &item)))
        return;
    A_Time now{ 0, 0 };
    if (VN_HOST_FAILED(suites.Item11()->AEGP_GetItemCurrentTime(item, &now)))
        return;
    const A_Time wanted = FrameTime(frame);
    // Compared as they stand: an equal time of another scale is written again.
    if (now.value == wanted.value && now.scale == wanted.scale)
        return;
    VN_HOST_FAILED(suites.Item11()->AEGP_SetItemCurrentTime(item, &wanted));
}

qint32 vipLi::TimeToFrame(const A_Time &time) const
{
    const double seconds = static_cast<double>(time.value) / static_cast<double>(time.scale);
    return ToWhole(seconds * Fps + 0.5);
}

qint32 vipLi::ToWhole(double value)
{
    constexpr double low = std::numeric_limits<qint32>::min();
    constexpr double high = std::numeric_limits<qint32>::max();
    if (value != value) // a time of scale 0
        return 0;
    return static_cast<qint32>(qBound(low, value, high));
}

A_Time vipLi::FrameTime(qint32 frame) const
{
    return { frame, static_cast<A_u_long>(Fps) };
}
