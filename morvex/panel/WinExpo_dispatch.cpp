// What each editor and button of the dashboard does. An editor is known by the address of the
// document's field that it is bound to, so that two editors of one field are one route.

#include "WinExpo.h"

#include "T_Types/T_Var.h"
#include "panel/Doc.h"
#include "vnAE/vipLi.h"

#include <QDebug>

#include <array>
#include <variant>

struct WinExpo::Dispatch
{
    struct Command
    {
        bool Doc::*field;
        void (*run)(WinExpo &panel);
    };
    struct StreamWrite
    {
        qint32 Doc::*field;
        qint32 streamNumber;
        qint32 firstComponent;
        qint32 lastComponent; // each from the first to the last gets the value
    };
    struct KeyWrite
    {
        bool Doc::*field;
        qint32 streamNumber;
        bool showsTwice; // two editors show the field
    };
    struct EfxWrite
    {
        qint32 Doc::*field;
        qint32 vipLi::*installedKey;
        qint32 param;
    };
    using Route = std::variant<Command, StreamWrite, KeyWrite, EfxWrite>;

    static const std::array<Route, 22> kRoutes;

    bool IsOf(const void *field, const Route &route) const
    {
        return std::visit([&](const auto &kind) { return &(doc.*kind.field) == field; }, route);
    }

    void operator()(const Command &route) const { route.run(panel); }

    // unchecked, here and below: what the host refuses, the next update shows

    void operator()(const StreamWrite &route) const
    {
        for (qint32 component = route.firstComponent; component <= route.lastComponent; ++component)
            library.SetStreamValue(route.streamNumber, frame, doc.*route.field, component);
    }

    /// A key is what the sheet shows of these streams; a plain value leaves the sheet alone.
    void operator()(const KeyWrite &route) const
    {
        if (doc.*route.field)
            library.AddKey(route.streamNumber, frame);
        else
            library.DeleteKey(route.streamNumber, frame);
        if (route.showsTwice)
            panel.RepaintDashboard();
        panel.OnUpdate(UpdCells, &panel);
    }

    void operator()(const EfxWrite &route) const
    {
        library.SetEfxValue(library.*route.installedKey, frame, route.param, doc.*route.field);
    }

    WinExpo &panel;
    Doc &doc;
    vipLi &library;
    qint32 frame;
};

/// The first that fits is run. The routes of fields that have no editor wait for one.
const std::array<WinExpo::Dispatch::Route, 22> WinExpo::Dispatch::kRoutes{ {
    Command{ &Doc::btMoveLeft, [](WinExpo &panel) { panel.MoveSelectedColsLeft(); } },
    Command{ &Doc::btMoveRight, [](WinExpo &panel) { panel.MoveSelectedColsRight(); } },
    Command{ &Doc::btNewCol, [](WinExpo &panel) { panel.OnCreateCol(); } },
    Command{ &Doc::btLoadExpo, [](WinExpo &panel) { panel.OnLoadExpo(); } },
    Command{ &Doc::btRefreshBis, [](WinExpo &panel) { panel.OnRefresh(); } },
    Command{ &Doc::btProjectFolder, [](WinExpo &panel) { panel.GetProjectFolder(); } },
    Command{ &Doc::btCenter, [](WinExpo &panel) { panel.OnCenterLayers(); } },
    StreamWrite{ &Doc::posX, AEGP_LayerStream_POSITION, 0, 0 },
    StreamWrite{ &Doc::posY, AEGP_LayerStream_POSITION, 1, 1 },
    KeyWrite{ &Doc::keyPos, AEGP_LayerStream_POSITION, /*showsTwice=*/true },
    StreamWrite{ &Doc::scale, AEGP_LayerStream_SCALE, 0, 1 }, // the scale stays uniform
    KeyWrite{ &Doc::keyScale, AEGP_LayerStream_SCALE, /*showsTwice=*/false },
    StreamWrite{ &Doc::rotation, AEGP_LayerStream_ROTATION, 0, 0 },
    KeyWrite{ &Doc::keyRotation, AEGP_LayerStream_ROTATION, /*showsTwice=*/false },
    StreamWrite{ &Doc::opacity, AEGP_LayerStream_OPACITY, 0, 0 },
    EfxWrite{ &Doc::blur, &vipLi::EfxKeyBlur, 0 },
    EfxWrite{ &Doc::hue, &vipLi::EfxKeyFiltre, 0 },
    EfxWrite{ &Doc::lightness, &vipLi::EfxKeyFiltre, 1 },
    EfxWrite{ &Doc::saturation, &vipLi::EfxKeyFiltre, 2 },
    Command{ &Doc::btShowA, [](WinExpo &panel) { panel.RepaintDashboard(); } },
    Command{ &Doc::btShowB, [](WinExpo &panel) { panel.RepaintDashboard(); } },
    Command{ &Doc::btRefresh, [](WinExpo &panel) { panel.OnRefresh(); } },
} };

/// A field without a route, the options say, is read where it is used.
void WinExpo::OnSpinChanged(T_Var *var)
{
    const void *field = var ? var->mData : nullptr;
    vipLi *library = GetVipLi();
    Doc *doc = GetDoc();
    library->SetCurrentColumn(doc->GetCol()); // unchecked: without a layer each write fails
    const Dispatch dispatch{ *this, *doc, *library, doc->GetRow() };
    qDebug() << "OnSpinNotify : col=" << doc->GetCol() << " row=" << doc->GetRow();
    for (const Dispatch::Route &route : Dispatch::kRoutes) {
        if (dispatch.IsOf(field, route))
            return std::visit(dispatch, route);
    }
}
