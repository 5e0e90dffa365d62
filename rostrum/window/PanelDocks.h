// The windows of the plug-ins' panels: a dock for each, with a native widget in it that is handed to
// the plug-in as its container.
//
// A container is made when its panel is first shown. It is hidden when the panel is closed and used
// again; nothing of it is destroyed before the window is. The dock is there from the beginning, so
// that a kept layout finds it.
#pragma once

#include "window/Session.h"

#include <QDockWidget>
#include <QHash>
#include <QMainWindow>

QT_FORWARD_DECLARE_CLASS(QMenu)
QT_FORWARD_DECLARE_CLASS(QToolButton)

namespace rostrum {

/// A dock with a title bar of its own: the name, the panel's flyout menu, float, close.
class PanelDock : public QDockWidget
{
    Q_OBJECT

public:
    PanelDock(Session &session, const QByteArray &matchName, QWidget *parent);

    const QByteArray &MatchName() const { return matchName; }
    /// @return null before MakeContainer
    QWidget *Container() const { return container; }
    QWidget *MakeContainer();
    /// Not behind another tab.
    bool IsFrontmost() const { return !isHidden() && frontmost; }

private:
    void MakeTitle();
    void ShowFlyout();
    void FillFlyout(QMenu *menu);

    Session &session;
    const QByteArray matchName;
    QWidget *container = nullptr;
    QToolButton *flyoutButton = nullptr;
    bool frontmost = false;
};

class PanelDocks : public QObject
{
    Q_OBJECT

public:
    PanelDocks(Session &session, QMainWindow *window);
    ~PanelDocks() override;

    /// Makes the docks of all panels that plug-ins have registered, hidden.
    void MakeDocks();
    /// Shows the panels whose docks a kept layout has made visible.
    void ShowRestored();
    PanelDock *Find(const QByteArray &matchName) const { return docks.value(matchName); }

private:
    AEGP_PlatformViewRef Make(const QByteArray &matchName);
    void Show(const QByteArray &matchName);
    void SetFirstSize(PanelDock *dock);

    Session &session;
    QMainWindow *window;
    QHash<QByteArray, PanelDock *> docks;
};

} // namespace rostrum
