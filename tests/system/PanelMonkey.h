// PanelMonkey: a user who does anything: clicks, drags, keys, edits in the dashboard, menus, and by
// hand in the host whatever a host lets its user do. What it does follows from its seed, but for
// what hangs on the panel's own timers.
#pragma once

#include "PanelStage.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

namespace testing {

class PanelMonkey : public QObject
{
public:
    PanelMonkey(PanelStage &stage, quint32 seed);

    /// One action, and what comes between two of them. @return what it was, in words
    QByteArray Act();
    /// Rings out what still hangs: timers, a button that is held.
    void Rest();
    /// @return what is wrong with what the host keeps account of, empty when all is well
    QByteArray HostError();
    /// Reloads the sheet and holds it against the host. @return what is wrong
    QByteArray SheetError();
    /// Columns that were held against the host so far.
    int ColumnsCompared() const { return columnsCompared; }

private:
    using Deed = QByteArray (PanelMonkey::*)();

    bool Chance(int outOf) { return dice.bounded(outOf) == 0; }
    Qt::KeyboardModifiers AnyModifiers();
    QPoint AnyPoint(const QWidget *widget);
    QWidget *AnyWidget();
    void AnswerPopup();

    // In the panel.
    QByteArray ClickAnywhere();
    QByteArray DragAnywhere();
    QByteArray TurnWheel();
    QByteArray PressKey();
    QByteArray RunSheetCommand();
    QByteArray TypeText();
    QByteArray SelectCells();
    QByteArray EditNumber();
    QByteArray TickBox();
    QByteArray PressButton();
    QByteArray NameColumn();
    QByteArray ChangeTab();

    // In the host.
    QByteArray ActivateItem();
    QByteArray MoveHost();
    QByteArray EditLayer();
    QByteArray EditLayers();
    QByteArray EditItems();
    QByteArray RunCommand();
    QByteArray UseFlyout();
    QByteArray TogglePanel();
    QByteArray ResizeContainer();
    QByteArray Idle();
    QByteArray Wait();

    QVector<rostrum::ItemId> Items() const;
    const rostrum::Composition *Content() const;
    rostrum::LayerId AnyLayer();
    QStringList ColumnOf(const rostrum::Layer &layer, int frames) const;

    PanelStage &stage;
    QRandomGenerator dice;
    QTemporaryDir folder; // of the project, with drawings beside it
    QTimer popups;
    int columnsCompared = 0;
};

} // namespace testing
