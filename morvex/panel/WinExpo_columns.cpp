// Columns moved and made from the dashboard.

#include "WinExpo.h"

#include "panel/Doc.h"
#include "panel/WinGridDataAE.h"
#include "support/vnMessage.h"
#include "support/vnPath.h"
#include "vnAE/UndoScope.h"
#include "vnAE/hostErrors.h"
#include "vnAE/hostScopes.h"
#include "vnAE/vipLi.h"

#include <QDebug>

#include <cstring>

namespace {

constexpr AEGP_MemSize kPathMemoryBytes = 520; // 260 characters of UTF-16
constexpr int kAnyBlock = 3; // GetSelectedBloc: one range of any shape

/// The project's path as UTF-8, empty for a project that was never saved.
bool ReadProjectPath(SuiteHandler &suites, AEGP_ProjectH project, QByteArray &path)
{
    // Handed in for a host that fills what it is given. One that puts a handle of its own in this
    // place leaves the first without an owner, and so it stays: which of the two a host does cannot
    // be told, and to free a handle twice would be worse than to lose a small block for a new column.
    AEGP_MemHandle memory = nullptr;
    const A_long pluginId = GetVipLi()->PluginId;
    if (VN_HOST_FAILED(suites.Memory1()->AEGP_NewMemHandle(
            pluginId, /*what=*/nullptr, kPathMemoryBytes, AEGP_MemFlag_NONE, &memory)))
        return false;
    const A_Err error = suites.Proj8()->AEGP_GetProjectPath(project, &memory);
    MemHandle text(suites, memory);
    void *address = nullptr;
    if (VN_HOST_FAILED(error) || VN_HOST_FAILED(text.Lock(&address)))
        return false;
    path = QString::fromUtf16(static_cast<const A_UTF16Char *>(address)).toUtf8();
    return !VN_FALSE(path.size() < vipLi::kPathBytes);
}

/// What is left of a path without its file name; empty where there is no folder in it.
QByteArray FolderOf(QByteArray path)
{
    vnPath::CutFilePart(path.data());
    return path.constData();
}

/// The file beside the project: its folder, the name without an extension of its own, the extension
/// that the user chose.
bool PutBesideProject(SuiteHandler &suites, QByteArray &path)
{
    QByteArray project;
    if (!ReadProjectPath(suites, GetVipLi()->Project, project))
        return false;
    const QByteArray extension = GetDoc()->extList.value(GetDoc()->extIndex).toLatin1();
    qDebug() << "TEST2" << path.constData();
    vnPath::CutExtension(path.data());
    path.truncate(static_cast<int>(std::strlen(path.constData())));
    qDebug() << path.constData();
    path = FolderOf(project) + '\\' + path + '.' + extension;
    return true;
}

bool AddColumn(qint32 typeIndex, const QByteArray &path)
{
    switch (typeIndex) {
    case 0:
        qDebug() << "-Appel CreateColAnim-" << path.constData();
        return GetVipLi()->AddSequenceColumn(path);
    case 1:
        return GetVipLi()->AddFixeColumn(path);
    default:
        vnInfo("Selectionnez le type de la colonne");
        return false;
    }
}

} // namespace

void WinExpo::MoveCol(int col, int delta)
{
    if (!grid || col + delta < 0 || col + delta >= grid->columnCount())
        return;
    Doc *doc = GetDoc();
    doc->SetCol(col);
    UndoScope undo(GetVipLi(), QStringLiteral("morvex:MoveCol"));
    if (GetVipLi()->MoveLayer(doc->GetCurrentLayer(), delta)) {
        doc->SetCol(col + delta);
        grid->SwapCols(col, col + delta);
        grid->SyncCurrentCell();
        OnUpdate(UpdCurrent, this);
    }
    undo.Close();
}

/// Each column goes to the place that its neighbour has just left, so the one ahead goes first.
void WinExpo::MoveSelectedColsLeft()
{
    int left = 0, right = 0, top = 0, bottom = 0;
    if (!grid || !grid->GetSelectedBloc(&left, &right, &top, &bottom, kAnyBlock) || left == 0)
        return;
    for (int col = left; col <= right; ++col)
        MoveCol(col, -1);
    grid->SelectBloc(left - 1, right - 1, top, bottom);
}

void WinExpo::MoveSelectedColsRight()
{
    int left = 0, right = 0, top = 0, bottom = 0;
    if (!grid || !grid->GetSelectedBloc(&left, &right, &top, &bottom, kAnyBlock)
        || right == grid->columnCount() - 1)
        return;
    for (int col = right; col >= left; --col)
        MoveCol(col, 1);
    grid->SelectBloc(left + 1, right + 1, top, bottom);
}

bool WinExpo::OnCreateCol()
{
    vipLi *library = GetVipLi();
    SuiteHandler suites(library->BasicSuite);
    if (VN_FALSE(library->FindCompo()))
        return false;
    QByteArray path = GetDoc()->name.toUtf8();
    if (!path.isEmpty()) {
        qDebug() << "-OnCreateCol-" << path.constData();
        if (FolderOf(path).isEmpty() && !PutBesideProject(suites, path))
            return false;
    }
    if (VN_FALSE(path.size() < vipLi::kPathBytes) || !AddColumn(GetDoc()->typeIndex, path))
        return false;
    ReloadSheet();
    RepaintDashboard();
    return true;
}

/// There is no operation that loads such a file yet. What follows a load stands ready.
bool WinExpo::OnLoadExpo()
{
    if (!GetVipLi()->LoadExpo(/*path=*/QByteArray(), "*.ps;*.xpt;*.zelk"))
        return false;
    OnRefresh();
    GetVipLi()->CenterFootageLayers(); // unchecked: the sheet is loaded all the same
    return true;
}

bool WinExpo::OnCenterLayers()
{
    return GetVipLi()->CenterFootageLayers();
}

bool WinExpo::GetProjectFolder()
{
    vipLi *library = GetVipLi();
    SuiteHandler suites(library->BasicSuite);
    AEGP_ProjectH project = nullptr;
    if (VN_HOST_FAILED(suites.Proj8()->AEGP_GetProjectByIndex(0, &project)))
        return false;
    QByteArray path;
    if (!ReadProjectPath(suites, project, path))
        return false;
    // The command line of the tool beside this one; what is to start it is not settled.
    [[maybe_unused]] const QByteArray argument = '"' + FolderOf(path) + '"';
    [[maybe_unused]] const QByteArray tool("plug-ins\\zelk\\zelkIcon.exe");
    return true;
}
