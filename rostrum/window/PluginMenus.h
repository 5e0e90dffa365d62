// The entries of plug-ins in the menus. Each time a menu is about to be shown the plug-ins are asked
// which of their entries can be chosen and which have a check mark; then they follow the menu's own.
#pragma once

#include "window/Session.h"

QT_FORWARD_DECLARE_CLASS(QAction)
QT_FORWARD_DECLARE_CLASS(QMenu)

namespace rostrum {

class PluginMenus : public QObject
{
    Q_OBJECT

public:
    /// @param activeWindow the kind of window that has the focus
    PluginMenus(Session &session, std::function<AEGP_WindowType()> activeWindow, QObject *parent);

    /// Menus that are not attached have their entries in the Window menu.
    void Attach(QMenu *menu, AEGP_MenuID id);

    // Menus of the host that the window has, by the host's numbers.
    static constexpr AEGP_MenuID kFile = 2;
    static constexpr AEGP_MenuID kEdit = 3;
    static constexpr AEGP_MenuID kComposition = 4;
    static constexpr AEGP_MenuID kLayer = 5;

private:
    void Fill(QMenu *menu, AEGP_MenuID id);
    bool BelongsInto(const MenuItem &item, AEGP_MenuID id) const;

    Session &session;
    std::function<AEGP_WindowType()> activeWindow;
    QVector<AEGP_MenuID> attached;
    QHash<QMenu *, QVector<QAction *>> entries;
};

} // namespace rostrum
