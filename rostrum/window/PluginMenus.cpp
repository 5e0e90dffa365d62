#include "PluginMenus.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace rostrum {

PluginMenus::PluginMenus(
    Session &session, std::function<AEGP_WindowType()> activeWindow, QObject *parent)
    : QObject(parent), session(session), activeWindow(std::move(activeWindow))
{ }

void PluginMenus::Attach(QMenu *menu, AEGP_MenuID id)
{
    attached << id;
    connect(menu, &QMenu::aboutToShow, this, [this, menu, id] { Fill(menu, id); });
}

bool PluginMenus::BelongsInto(const MenuItem &item, AEGP_MenuID id) const
{
    return item.menu == id || (id == AEGP_Menu_WINDOW && !attached.contains(item.menu));
}

void PluginMenus::Fill(QMenu *menu, AEGP_MenuID id)
{
    QVector<QAction *> &own = entries[menu];
    qDeleteAll(own);
    own.clear();
    session.Driver().CallUpdateMenus(activeWindow());
    session.Look();
    QVector<MenuItem> items;
    for (const MenuItem &item : session.Driver().MenuItems()) {
        if (BelongsInto(item, id))
            items << item;
    }
    std::stable_sort(items.begin(), items.end(), [](const MenuItem &a, const MenuItem &b) {
        return QString::fromUtf8(a.text).localeAwareCompare(QString::fromUtf8(b.text)) < 0;
    });
    if (!items.isEmpty())
        own << menu->addSeparator();
    for (const MenuItem &item : qAsConst(items)) {
        QAction *action = menu->addAction(QString::fromUtf8(item.text));
        action->setEnabled(item.enabled);
        action->setCheckable(item.checked);
        action->setChecked(item.checked);
        connect(action, &QAction::triggered, this,
            [this, command = item.command] { session.RunCommand(command); });
        own << action;
    }
}

} // namespace rostrum
